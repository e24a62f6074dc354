#include "OrvApp/NodeToElementResultGenerator.h"

#include "OrvApp/GeneratorWalk_p.h"
#include "OrvApp/MappingAverages_p.h"

namespace orv::app {

using ug::PER_ELEMENT;
using ug::PER_NODE;

namespace {

bool convert(const GeneratorPart& part) {
    if (part.output.values) {
        const ItemsToAverage nodeItems = {part.input.values[0], part.input.dimensions[0], part.output.dimension};
        if (part.input.counts[0] < part.part->nodes()->nodeCount() || nodeItems.stride < nodeItems.dimension) {
            return false;
        }
        const ug::DataElements* elements = part.part->elements();
        averageNodesOfElements({elements->offsets(), elements->connectivity()}, nodeItems, part.output.values);
    }
    part.refreshRange();
    return true;
}

} // namespace

NodeToElementResultGenerator::NodeToElementResultGenerator(unsigned long argumentCount)
    : CustomResultGenerator(argumentCount) {}

bool NodeToElementResultGenerator::generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
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
    RVF_ASSERT_MSG(argInfo.resultMapping() == PER_NODE,
                   "Node to element conversion is only valid from node-mapped results");
    RVF_ASSERT_MSG(result.resultMapping() == PER_ELEMENT,
                   "Node to element conversion is only valid to element-mapped results");
    RVF_ASSERT_MSG(result.type() == argInfo.type(),
                   "Node to element conversion is only valid if input and output have the same result type (scalar, "
                   "vector, displacement or symmetric tensor)");
    const auto countElements = [](const ug::DataPart& part, const InputValueData&) {
        return part.elements()->elementCount();
    };
    return GeneratorWalk(result, arguments).forEachPart(*this, state, countElements, convert);
}

} // namespace orv::app
