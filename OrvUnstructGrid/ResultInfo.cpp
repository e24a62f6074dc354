#include "OrvUnstructGrid/ResultInfo.h"

#include "OrvUnstructGrid/CustomResultGenerator.h"

namespace orv::ug {

/// What the copies of one ResultInfo share.
class ResultInfoRecord : public RefCountedObject {
public:
    ResultInfoRecord() = default;
    ResultInfoRecord(const ResultInfoRecord&) = default;
    ~ResultInfoRecord() override;

    ResultType type = NO_RESULT_TYPE;
    int id = -1;
    Str name;
    ResultMapping mapping = UNKNOWN_MAPPING;
    int baseResultId = -1;
    ResultType baseResultType = NO_RESULT_TYPE;
    bool isCustom = false;
    std::vector<ResultInfo> arguments;
    PtrRef<const CustomResultGenerator> generator;
};

// Takes the arguments apart one after the other: destructors that call each other would need a stack as deep as the
// expression.
ResultInfoRecord::~ResultInfoRecord() {
    std::vector<ResultInfo> pending;
    pending.swap(arguments);
    while (!pending.empty()) {
        const ResultInfo last = pending.back();
        pending.pop_back();
        const bool isLastHolder = last.m_record->refCount() == 1;
        if (isLastHolder) {
            std::vector<ResultInfo>& inner = last.m_record->arguments;
            pending.insert(pending.end(), inner.begin(), inner.end());
            inner.clear();
        }
    }
}

namespace {

ResultInfoRecord* invalidRecord() {
    static const PtrRef<ResultInfoRecord> record(new ResultInfoRecord);
    return record.get();
}

ResultInfoRecord* newRecord(ResultType type, int id, const Str& name, ResultMapping mapping) {
    ResultInfoRecord* record = new ResultInfoRecord;
    record->type = type;
    record->id = id;
    record->name = name;
    record->mapping = mapping;
    return record;
}

int nextCustomResultId() {
    static int nextId = 1 << 30;
    return nextId++;
}

} // namespace

ResultInfo::ResultInfo() : m_record(invalidRecord()) {}

ResultInfo::ResultInfo(ResultType type, int id, const Str& name, ResultMapping mapping)
    : m_record(newRecord(type, id, name, mapping)) {}

ResultInfo::ResultInfo(ResultType type, const Str& name, ResultMapping mapping, std::vector<ResultInfo>& arguments,
                       const CustomResultGenerator* generator)
    : m_record(newRecord(type, nextCustomResultId(), name, mapping)) {
    m_record->isCustom = true;
    m_record->arguments = arguments;
    m_record->generator = generator;
}

ResultInfo::ResultInfo(const ResultInfo& other) = default;
ResultInfo& ResultInfo::operator=(const ResultInfo& other) = default;
ResultInfo::~ResultInfo() = default;

bool ResultInfo::operator==(const ResultInfo& other) const {
    return type() == other.type() && id() == other.id() && isCustom() == other.isCustom();
}

int ResultInfo::id() const {
    return m_record->id;
}

Str ResultInfo::name() const {
    return m_record->name;
}

ResultType ResultInfo::type() const {
    return m_record->type;
}

ResultMapping ResultInfo::resultMapping() const {
    return m_record->mapping;
}

bool ResultInfo::isValid() const {
    return m_record->id >= 0;
}

bool ResultInfo::isCustom() const {
    return m_record->isCustom;
}

void ResultInfo::setName(const Str& name) {
    m_record = new ResultInfoRecord(*m_record);
    m_record->name = name;
}

int ResultInfo::baseResultId() const {
    return m_record->baseResultId;
}

ResultType ResultInfo::baseResultType() const {
    return m_record->baseResultType;
}

void ResultInfo::setBaseResult(int id, ResultType type) {
    m_record = new ResultInfoRecord(*m_record);
    m_record->baseResultId = id;
    m_record->baseResultType = type;
}

const std::vector<ResultInfo>& ResultInfo::customResultArguments() const {
    return m_record->arguments;
}

const CustomResultGenerator* ResultInfo::customResultGenerator() const {
    return m_record->generator.get();
}

} // namespace orv::ug
