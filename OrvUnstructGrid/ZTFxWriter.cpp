#include "OrvUnstructGrid/ZTFxWriter.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZtfxWriting_p.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orv::ug {

ZTFxWriter::ZTFxWriter() = default;

ZTFxWriter::~ZTFxWriter() = default;

void ZTFxWriter::setPassword(const Str& password) {
    m_password = password;
}

void ZTFxWriter::setCompression(Compression compression, int level) {
    m_deflateLevel = compression == DEFLATED ? std::clamp(level, 1, 9) : 0;
}

bool ZTFxWriter::addCase(int id, const Str& name, DataSource* source, const WriteSelection& selection, Error* error) {
    const bool isTaken =
        std::any_of(m_cases.begin(), m_cases.end(), [id](const ZtfxPlannedCase& other) { return other.id == id; });
    if (id < 0 || isTaken) {
        return fail(error, Str(id < 0 ? "A case cannot have the id %1, it must not be negative"
                                      : "There is a case with the id %1 already")
                               .arg(id));
    }
    WritePlan plan;
    if (!makeWritePlan(selection, *source->directory(), &plan, error)) {
        return false;
    }
    for (const ResultInfo& info : plan.results) {
        if (info.resultMapping() == UNKNOWN_MAPPING) {
            return fail(error, "Result '" + info.name() + "' cannot be written: its mapping is unknown");
        }
    }
    m_cases.push_back({id, name, source, std::move(plan)});
    return true;
}

bool ZTFxWriter::write(const Str& filename, Progress* progress, Error* error) const {
    if (m_cases.empty()) {
        return fail(error, filename + ": there is nothing to write, add a case first");
    }
    if (filename.find("|") != Str::npos) {
        return fail(error,
                    filename + ": the name must not have a bar, behind which opening looks for the id of a case");
    }
    try {
        ZtfxContainer container;
        container.setPassword(m_password.toStdString());
        container.setDeflateLevel(m_deflateLevel);
        ZtfxWriting writing(m_cases, &container, !m_password.isEmpty());
        return writing.addEntries(error) && container.write(filename, progress, error);
    } catch (const std::bad_alloc&) {
        return fail(error, filename + ": there is not enough memory to write it");
    }
}

} // namespace orv::ug
