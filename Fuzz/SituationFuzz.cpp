// Any bytes as the text of a situation: read, written, read again, and applied to a model and a view.

#include "Fuzz/Fuzzing.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/SituationXml_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvUnstructGrid/Situations.h"
#include "Tests/Support/MemoryModels.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace orv;
using orvfuzz::expect;

namespace {

/// Null when it is refused.
PtrRef<ug::Situation> readFrom(std::string text) {
    const PtrRef<ug::Situation> situation(new ug::Situation);
    ug::Error error;
    const bool isRead = ug::readSituationXml(text, "fuzz", situation.get(), &error);
    expect(isRead == error.isEmpty());
    expect(isRead == (situation->propertyCollection() != nullptr));
    return isRead ? situation : PtrRef<ug::Situation>();
}

std::string written(const ug::Situation& situation) {
    std::string text;
    expect(ug::writeSituationXml(situation, "fuzz", &text, nullptr));
    return text;
}

std::string describedWithoutUnknown(const PtrRef<ug::Situation>& situation) {
    situation->setUnknownXml("");
    return orvtest::described(*situation);
}

void apply(const ug::Situation& situation) {
    static const orvtest::MemoryModel memory;
    const PtrRef<ug::UnstructGridModel> model(new ug::UnstructGridModel);
    model->setDataSource(memory.source.get());
    const PtrRef<vis::View> view(new vis::View);
    ug::Error error;
    expect(situation.applyTo(model.get(), view.get(), &error) == error.isEmpty());
    situation.selection();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const PtrRef<ug::Situation> first = readFrom(std::string(reinterpret_cast<const char*>(data), size));
    if (!first) {
        return 0;
    }
    const PtrRef<ug::Situation> second = readFrom(written(*first));
    expect(second);
    const std::string text = written(*second);
    const PtrRef<ug::Situation> third = readFrom(text);
    expect(third && written(*third) == text);
    expect(describedWithoutUnknown(first) == describedWithoutUnknown(third));
    apply(*first);
    return 0;
}
