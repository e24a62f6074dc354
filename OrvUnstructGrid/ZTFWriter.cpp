#include "OrvUnstructGrid/ZTFWriter.h"

#include "OrvCore/Defines.h"
#include "OrvCore/FileReplacement_p.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"
#include "OrvUnstructGrid/Progress.h"
#include "OrvUnstructGrid/ResultLoan_p.h"
#include "OrvUnstructGrid/WritePlan_p.h"
#include "OrvUnstructGrid/ZtfReader_p.h"
#include "OrvUnstructGrid/ZtfWords_p.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace orv::ug {
namespace {

/// A list of words as lines. An element has 22 words at most, and stays on one line.
class NumberLines {
public:
    static constexpr std::size_t LONGEST = 24;

    explicit NumberLines(FileReplacement& file) : m_file(file) {}

    ~NumberLines() {
        endLine();
    }

    NumberLines(const NumberLines&) = delete;
    NumberLines& operator=(const NumberLines&) = delete;

    void add(double value) {
        beginWord();
        writeZtfNumber(value, &m_line);
    }

    void add(const std::string& word) {
        beginWord();
        m_line += word;
    }

    void endLine() {
        if (m_count > 0) {
            m_file.write(m_line + "\n");
        }
        m_line.clear();
        m_count = 0;
    }

private:
    void beginWord() {
        if (m_count == LONGEST) {
            endLine();
        }
        m_line += m_count++ == 0 ? "  " : " ";
    }

    FileReplacement& m_file;
    std::string m_line;
    std::size_t m_count = 0;
};

const char* wordOf(ResultType type) {
    return ZTF_TYPES[type - 1];
}

bool areAllUndefined(std::span<const double> values) {
    return std::all_of(values.begin(), values.end(), [](double value) { return value == UNDEFINED_DOUBLE; });
}

/// One writing of one source.
class Writer {
public:
    Writer(DataSource* source, const WritePlan& plan, FileReplacement& file, Progress* progress, Error* error)
        : m_source(source), m_directory(*source->directory()), m_plan(plan), m_ids(idsInFile(plan.results)),
          m_file(file), m_progress(progress), m_error(error) {}

    bool run() {
        m_file.write("ztf 1\n");
        return writeTitle() && writeResults() && writeStates() && writeEnd();
    }

private:
    using Numbers = std::vector<std::string>;

    bool writeTitle() {
        const Str title = m_directory.simulationInfo().title();
        return title.isEmpty() || writeLine({"title", named(title)});
    }

    bool writeResults() {
        for (const ResultInfo& info : m_plan.results) {
            const std::size_t mapping = std::size_t(info.resultMapping()) - 1;
            if (mapping >= std::size(ZTF_MAPPINGS)) {
                return fail(m_error, "Result '" + info.name() + "' cannot be written: its mapping is unknown");
            }
            std::vector<std::string> words = {"result", wordOf(info.type()),
                                              std::to_string(m_ids.at({info.type(), info.id()})), named(info.name()),
                                              ZTF_MAPPINGS[mapping]};
            const auto base = m_ids.find({info.baseResultType(), info.baseResultId()});
            if (base != m_ids.end()) {
                words.insert(words.end(), {"of", wordOf(base->first.first), std::to_string(base->second)});
            }
            if (!writeLine(words)) {
                return false;
            }
        }
        return true;
    }

    bool writeStates() {
        if (m_plan.states.empty()) {
            return writeRecordsOfParts();
        }
        for (const StateInfo& info : m_plan.states) {
            if (!writeState(info)) {
                return false;
            }
            ++m_statesDone;
            if (m_file.hasFailed()) {
                break;
            }
        }
        return true;
    }

    // Without states no mesh can be had.
    bool writeRecordsOfParts() {
        for (std::size_t g = 0; g < m_plan.parts.size(); ++g) {
            m_file.write("\ngeometry " + std::to_string(g + 1) + "\n");
            for (const std::size_t part : m_plan.parts[g]) {
                if (!writePart(m_directory.partInfos(g)[part])) {
                    return false;
                }
            }
        }
        return true;
    }

    bool writeState(const StateInfo& info) {
        DataState* state = m_source->state(m_source->stateIndex(info.id()));
        Numbers geometries;
        if (!state->readGeometries(m_error) || !writeGeometries(*state, &geometries)) {
            return false;
        }
        const std::size_t reference = std::min(std::size_t(info.referenceType()), std::size(ZTF_REFERENCES) - 1);
        std::string value;
        writeZtfNumber(info.referenceValue(), &value);
        m_file.write("\n");
        if (!writeLine({"state", std::to_string(info.id()), named(info.name()), ZTF_REFERENCES[reference], value})) {
            return false;
        }
        m_file.write("geometries " + std::to_string(geometries.size()) + "\n");
        writeList(geometries);
        return writeFields(state);
    }

    // Those that no earlier state had. A geometry at two places of a state may bear other names at each.
    bool writeGeometries(const DataState& state, Numbers* numbers) {
        for (std::size_t g = 0; g < state.geometryCount(); ++g) {
            const DataGeometry& geometry = *state.geometry(g);
            const auto [found, isNew] =
                m_geometries.try_emplace({geometry.id(), g}, std::to_string(m_geometries.size() + 1));
            numbers->push_back(found->second);
            if (isNew && !writeGeometry(found->second, g, geometry)) {
                return false;
            }
        }
        return true;
    }

    bool writeGeometry(const std::string& number, std::size_t place, const DataGeometry& geometry) {
        m_file.write("\ngeometry " + number + "\n");
        const std::vector<PartInfo> infos = m_directory.partInfos(place);
        for (const std::size_t p : m_plan.parts[place]) {
            const DataPart& part = *geometry.part(p);
            if (!part.isConsistent()) {
                return fail(m_error, "Part '" + infos[p].name() +
                                         "' cannot be written: its elements name nodes that it does not have");
            }
            if (!writePart(infos[p])) {
                return false;
            }
            writeNodes(*part.nodes());
            writeElements(*part.elements());
        }
        return true;
    }

    bool writePart(const PartInfo& info) {
        return writeLine({"part", std::to_string(info.id()), named(info.name())});
    }

    void writeNodes(const DataNodes& nodes) {
        const std::size_t count = nodes.nodeCount();
        const bool hasIds = hasOwnIds(count, [&](std::size_t i) { return nodes.nodeId(i); });
        m_file.write("nodes " + std::to_string(count) + (hasIds ? " numbered\n" : "\n"));
        NumberLines lines(m_file);
        for (std::size_t i = 0; i < count; ++i) {
            if (hasIds) {
                lines.add(std::to_string(nodes.nodeId(i)));
            }
            for (const double coordinate : nodes.coordinates().subspan(3 * i, 3)) {
                lines.add(coordinate);
            }
            lines.endLine();
        }
    }

    void writeElements(const DataElements& elements) {
        const std::size_t count = elements.elementCount();
        const bool hasIds = hasOwnIds(count, [&](std::size_t i) { return elements.elementId(i); });
        m_file.write("elements " + std::to_string(count) + (hasIds ? " numbered\n" : "\n"));
        NumberLines lines(m_file);
        for (std::size_t i = 0; i < count; ++i) {
            if (hasIds) {
                lines.add(std::to_string(elements.elementId(i)));
            }
            lines.add(elementTypeInfo(elements.types()[i]).name);
            for (const std::uint32_t node : elements.nodeIndexes(i)) {
                lines.add(std::to_string(std::uint64_t(node) + 1));
            }
            lines.endLine();
        }
    }

    bool writeFields(DataState* state) {
        ResultLoan loan(m_source, state);
        for (std::size_t i = 0; i < m_plan.results.size(); ++i) {
            const ResultInfo& info = m_plan.results[i];
            if (m_directory.hasResult(state->id(), info)) {
                if (!loan.take(info, m_error)) {
                    return false;
                }
                writeField(*state, info);
            }
            tellProgress(i + 1);
        }
        return true;
    }

    void writeField(const DataState& state, const ResultInfo& info) {
        m_file.write(std::string("field ") + wordOf(info.type()) + " " +
                     std::to_string(m_ids.at({info.type(), info.id()})) + "\n");
        for (std::size_t g = 0; g < state.geometryCount(); ++g) {
            const DataGeometry* geometry = state.geometry(g);
            const DataResult* result = state.results(geometry)->find(info);
            for (const std::size_t p : m_plan.parts[g]) {
                const DataPart& part = *geometry->part(p);
                const DataPartValues& values = *result->values(p);
                const bool fits = values.itemCount() == part.itemCount(info.resultMapping());
                if (fits && !areAllUndefined(values.span())) {
                    m_file.write("values " + std::to_string(g + 1) + " " + std::to_string(part.partId()) + "\n");
                    writeValues(values);
                }
            }
        }
    }

    void writeValues(const DataPartValues& values) {
        NumberLines lines(m_file);
        const std::span<const double> all = values.span();
        for (std::size_t i = 0; i < all.size(); ++i) {
            // 6 scalars, 2 vectors or a tensor to a line.
            if (i % 6 == 0) {
                lines.endLine();
            }
            lines.add(all[i]);
        }
    }

    bool writeEnd() {
        for (const StateGroupInfo& group : m_directory.stateGroupInfos()) {
            Numbers ids;
            for (std::size_t i = 0; i < group.stateCount(); ++i) {
                if (isPlanned(group.stateId(i))) {
                    ids.push_back(std::to_string(group.stateId(i)));
                }
            }
            m_file.write("\ngroup " + std::to_string(ids.size()) + "\n");
            writeList(ids);
        }
        m_file.write("\nend\n");
        return true;
    }

    bool isPlanned(int stateId) const {
        return std::any_of(m_plan.states.begin(), m_plan.states.end(),
                           [stateId](const StateInfo& info) { return info.id() == stateId; });
    }

    void writeList(const Numbers& words) {
        NumberLines lines(m_file);
        for (const std::string& word : words) {
            lines.add(word);
        }
    }

    bool writeLine(const std::vector<std::string>& words) {
        std::string line;
        for (const std::string& word : words) {
            line += (line.empty() ? "" : " ") + word;
        }
        if (line.size() >= ZtfLines::LONGEST_LINE) {
            return fail(m_error, "A name of more than " + std::to_string(ZtfLines::LONGEST_LINE) +
                                     " bytes cannot be written to a .ztf file");
        }
        m_file.write(line + "\n");
        return true;
    }

    static std::string named(const Str& name) {
        return quotedZtfText(name);
    }

    template <class IdOf>
    static bool hasOwnIds(std::size_t count, IdOf idOf) {
        for (std::size_t i = 0; i < count; ++i) {
            if (idOf(i) != int(i) + 1) {
                return true;
            }
        }
        return false;
    }

    // 100 is told when all is on the disk.
    void tellProgress(std::size_t resultsDone) {
        const std::size_t resultCount = m_plan.results.size();
        const std::size_t total = m_plan.states.size() * resultCount;
        const int percent = int(99 * (m_statesDone * resultCount + resultsDone) / total);
        if (m_progress && percent != m_percent) {
            m_progress->setPercent(percent);
        }
        m_percent = percent;
    }

    DataSource* m_source;
    const DataSourceDirectory& m_directory;
    const WritePlan& m_plan;
    const ResultIds m_ids;
    FileReplacement& m_file;
    Progress* m_progress;
    Error* m_error;
    std::map<std::pair<int, std::size_t>, std::string> m_geometries; // By id and place: the number in the file.
    std::size_t m_statesDone = 0;
    int m_percent = -1;
};

} // namespace

bool ZTFWriter::write(DataSource* source, const WriteSelection& selection, const Str& filename, Progress* progress,
                      Error* error) {
    if (!source) {
        return fail(error, "cannot write \"" + filename + "\": there is no data source");
    }
    WritePlan plan;
    if (!makeWritePlan(selection, *source->directory(), &plan, error)) {
        return false;
    }
    FileReplacement file;
    Str reason;
    if (!file.open(filename, &reason)) {
        return fail(error, reason);
    }
    if (!Writer(source, plan, file, progress, error).run()) {
        return false;
    }
    if (!file.commit(&reason)) {
        return fail(error, reason);
    }
    if (progress) {
        progress->setPercent(100);
    }
    return true;
}

} // namespace orv::ug
