// A module as it should be, with a reader that refuses every file.

#include "OrvCore/Instance.h"
#include "OrvImportCae/CaeModuleEntry.h"

#include <string>

using namespace orv;

namespace {

class RefusingReader : public imp::cae::CaeReader {
public:
    bool open(const Str& filename, imp::cae::CaeContents*, ug::Error* error) override {
        return ug::fail(error, "refused: " + filename);
    }

    void adoptGeometry(const PtrRef<ug::DataGeometry>&) override {}

    bool readResult(const ug::ResultInfo&, int, const ug::ResultInfo&, ug::DataState*, std::vector<Str>*,
                    ug::Error* error) override {
        return ug::fail(error, "no values");
    }
};

} // namespace

unsigned int orvModuleVersion() {
    return Instance::HEADER_VERSION;
}

imp::cae::CaeReader* orvCreateReader(const char* name) {
    return std::string(name) == "Refusing" ? new RefusingReader : nullptr;
}
