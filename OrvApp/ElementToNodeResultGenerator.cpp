#include "OrvApp/ElementToNodeResultGenerator.h"

#include "OrvApp/GeneratorWalk_p.h"
#include "OrvApp/MappingAverages_p.h"

namespace orv::app {

using ug::PER_ELEMENT;
using ug::PER_NODE;

namespace {

bool convert(const GeneratorPart& part) {
    if (part.output.values) {
        const ug::DataElements* elements = part.part->elements();
        const ItemsToAverage elementItems = {part.input.values[0], part.input.dimensions[0], part.output.dimension};
        if (part.input.counts[0] < elements->elementCount() || elementItems.stride < elementItems.dimension) {
            return false;
        }
        averageElementsAroundNodes({elements->offsets(), elements->connectivity()}, elementItems,
                                   part.part->nodes()->nodeCount(), part.output.values);
    }
    part.refreshRange();
    return true;
}

} // namespace

ElementToNodeResultGenerator::ElementToNodeResultGenerator(unsigned long argumentCount)
    : CustomResultGenerator(argumentCount) {}

bool ElementToNodeResultGenerator::generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
                                            const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) {
    if (!GeneratorWalk::begin(*this, dataSource, arguments, state)) {
        return false;
    }
    const ug::DataSourceDirectory* directory = GeneratorWalk::directoryOf(dataSource);
    RVF_ASSERT(directory);
    if (arguments.empty()) {
        return false;
    }
    const ug::ResultInfo& argInfo = arguments[0];
    RVF_ASSERT_MSG(argInfo.resultMapping() == PER_ELEMENT,
                   "Element to node conversion is only valid from element-mapped results");
    RVF_ASSERT_MSG(result.resultMapping() == PER_NODE,
                   "Element to node conversion is only valid to node-mapped results");
    RVF_ASSERT_MSG(result.type() == argInfo.type(),
                   "Element to node conversion is only valid if input and output have the same result type (scalar, "
                   "vector, displacement or symmetric tensor)");
    const auto countNodes = [](const ug::DataPart& part, const InputValueData&) { return part.nodes()->nodeCount(); };
    return GeneratorWalk(result, arguments).forEachPart(*this, state, countNodes, convert);
}

} // namespace orv::app
