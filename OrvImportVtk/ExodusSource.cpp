#include "OrvImportVtk/ExodusSource.h"

#include "OrvImportVtk/VtkPieces.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCompositeDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkIdTypeArray.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST = std::numeric_limits<int>::max();

std::string inQuotes(const std::string& text) {
    return "'" + text + "'";
}

// Indexes from 0, ascending, of numbers from 1. Small lists of far-away nodes are sorted, others are marked.
std::vector<int> nodesOf(const std::vector<int>& connectivity) {
    const auto [first, last] = std::minmax_element(connectivity.begin(), connectivity.end());
    const auto range = std::size_t(*last - *first) + 1;
    std::vector<int> nodes;
    if (range > 16 * connectivity.size()) {
        nodes = connectivity;
        std::sort(nodes.begin(), nodes.end());
        nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
        std::for_each(nodes.begin(), nodes.end(), [](int& node) { --node; });
        return nodes;
    }
    std::vector<char> isThere(range, 0);
    for (const int number : connectivity) {
        isThere[std::size_t(number - *first)] = 1;
    }
    for (std::size_t i = 0; i < range; ++i) {
        if (isThere[i]) {
            nodes.push_back(int(i) + *first - 1);
        }
    }
    return nodes;
}

vtkSmartPointer<vtkPoints> pointsOf(const std::vector<int>& nodes, const std::vector<double>* axes) {
    const auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetDataTypeToDouble();
    points->SetNumberOfPoints(vtkIdType(nodes.size()));
    auto* to = static_cast<double*>(points->GetVoidPointer(0));
    for (const int node : nodes) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            *to++ = axes[axis].empty() ? 0.0 : axes[axis][std::size_t(node)];
        }
    }
    return points;
}

vtkSmartPointer<vtkDoubleArray> makeArray(const std::string& name, std::size_t itemCount) {
    auto array = vtkSmartPointer<vtkDoubleArray>::New();
    array->SetName(name.c_str());
    array->SetNumberOfValues(vtkIdType(itemCount));
    return array;
}

void setIds(vtkDataSetAttributes* attributes, const std::vector<int>& items, const std::vector<long long>& ids) {
    vtkNew<vtkIdTypeArray> array;
    array->SetName("ids");
    array->SetNumberOfValues(vtkIdType(items.size()));
    std::transform(items.begin(), items.end(), array->GetPointer(0),
                   [&](int item) { return ids.empty() ? vtkIdType(item) + 1 : vtkIdType(ids[std::size_t(item)]); });
    attributes->SetGlobalIds(array);
}

} // namespace

bool ExodusSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    m_file = openNetCdfFile(filename, error);
    if (!m_file) {
        return false;
    }
    m_nodeCount = m_file->length("num_nodes");
    m_elementCount = m_file->length("num_elem");
    if (m_nodeCount == 0 || !(m_file->has("coordx") || m_file->has("coord"))) {
        return ug::fail(error, "is no Exodus II file, or has no nodes");
    }
    if (m_nodeCount > MOST || m_elementCount > MOST) {
        return ug::fail(error, "has more than 2147483647 nodes or elements");
    }
    if (!listBlocks(contents, error) || !listSteps(contents, error) || !listVariables(ug::PER_NODE, contents, error) ||
        !listVariables(ug::PER_ELEMENT, contents, error)) {
        return false;
    }
    contents->title = m_file->text("", "title");
    m_arrays = contents->arrays;
    return true;
}

vtkSmartPointer<vtkDataObject> ExodusSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                  ug::Error* error) {
    Grids grids;
    if (!readMesh(&grids, error)) {
        return nullptr;
    }
    for (const std::size_t array : arrays) {
        if (!(m_arrays[array].mapping == ug::PER_NODE ? addNodeValues(step, array, grids, error)
                                                      : addElementValues(step, array, grids, error))) {
            return nullptr;
        }
    }
    auto output = vtkSmartPointer<vtkMultiBlockDataSet>::New();
    output->SetNumberOfBlocks(unsigned(grids.size()));
    for (unsigned b = 0; b < grids.size(); ++b) {
        output->SetBlock(b, grids[b]);
        output->GetMetaData(b)->Set(vtkCompositeDataSet::NAME(), m_blocks[b].name.c_str());
    }
    return output;
}

// Parts are blocks, in the same order.
bool ExodusSource::readNumber(std::size_t step, std::size_t array, std::size_t part, std::size_t item,
                              double* number) const {
    const Block& block = m_blocks[part];
    const auto readOne = [&](const std::string& name, const NetCdfFile::Shape& place, std::size_t count) {
        const NetCdfFile::Shape shape = m_file->shape(name);
        std::vector<double> numbers;
        if (shape.empty() || shape.back() != count || !m_file->read(name, place, {}, &numbers)) {
            return false;
        }
        *number = numbers[0];
        return true;
    };
    if (m_arrays[array].mapping == ug::PER_NODE) {
        if (item >= block.nodes.size()) {
            return false;
        }
        const std::size_t variable = m_variables[array];
        const std::size_t node = std::size_t(block.nodes[item]);
        return readOne("vals_nod_var" + std::to_string(variable + 1), {step, node}, m_nodeCount) ||
               readOne("vals_nod_var", {step, variable, node}, m_nodeCount);
    }
    const std::string name = elementVariable(array, block);
    if (!m_file->has(name)) {
        *number = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return readOne(name, {step, item}, block.elementCount);
}

// Nothing is kept but which nodes are points.
void ExodusSource::release() {}

// The parts are in the order of the blocks' ids, and the elements are numbered in the order of the file.
bool ExodusSource::listBlocks(VtkContents* contents, ug::Error* error) {
    const std::size_t count = m_file->length("num_el_blk");
    std::vector<long long> ids;
    if (count == 0 || !isPlausible(count) || !m_file->read("eb_prop1", {}, {count}, &ids)) {
        return ug::fail(error, "is no Exodus II file, or has no whole index of its blocks of elements");
    }
    const std::vector<std::string> names = m_file->readTexts("eb_names", count);
    std::size_t elementCount = 0;
    for (std::size_t b = 0; b < count; ++b) {
        Block block;
        block.number = std::to_string(b + 1);
        block.id = ids[b];
        block.name = names.empty() || names[b].empty() ? "Unnamed block ID: " + std::to_string(ids[b]) : names[b];
        block.firstElement = elementCount;
        block.elementCount = m_file->length("num_el_in_blk" + block.number);
        if (block.elementCount > m_elementCount - elementCount) {
            return ug::fail(error, Str("has more elements in its blocks than the " + std::to_string(m_elementCount) +
                                       " that it tells of"));
        }
        elementCount += block.elementCount;
        if (!describeCells(&block, contents, error)) {
            return false;
        }
        m_blocks.push_back(std::move(block));
    }
    std::stable_sort(m_blocks.begin(), m_blocks.end(), [](const Block& a, const Block& b) { return a.id < b.id; });
    VtkNames unique;
    for (Block& block : m_blocks) {
        block.name = unique.makeUnique(block.name);
        contents->parts.push_back(block.name);
    }
    return true;
}

bool ExodusSource::describeCells(Block* block, VtkContents* contents, ug::Error* error) const {
    if (block->elementCount == 0) {
        return true;
    }
    const bool hasFaces = m_file->has("facconn" + block->number);
    const std::string connect = (hasFaces ? "facconn" : "connect") + block->number;
    const std::string type = m_file->text(connect, "elem_type");
    block->shape = m_file->shape(connect);
    const std::size_t rank = block->shape.size();
    if (rank == 0 || rank > 2 || (rank == 2 && block->shape[0] != block->elementCount)) {
        return ug::fail(error, Str("block " + inQuotes(block->name) + " does not tell the nodes of its " +
                                   std::to_string(block->elementCount) + " elements"));
    }
    const std::size_t nodeCount = rank == 2 ? block->shape[1] : 0;
    if (hasFaces || !findExodusCells(type, nodeCount, &block->cells)) {
        contents->warnings.push_back("block " + inQuotes(block->name) + " is left out: its " +
                                     std::to_string(block->elementCount) + " elements are of type " + inQuotes(type) +
                                     (nodeCount > 0 ? " with " + std::to_string(nodeCount) + " nodes" : ""));
        block->elementCount = 0;
    }
    return true;
}

bool ExodusSource::listSteps(VtkContents* contents, ug::Error* error) {
    const NetCdfFile::Shape shape = m_file->shape("time_whole");
    m_stepCount = shape.size() == 1 ? shape[0] : 0;
    if (m_stepCount == 0) {
        contents->steps = {vtkOnlyStep()};
        return true;
    }
    std::vector<double> times;
    if (!isPlausible(m_stepCount) || !m_file->read("time_whole", {}, {m_stepCount}, &times)) {
        return ug::fail(error, Str("does not tell the times of its " + std::to_string(m_stepCount) + " steps"));
    }
    contents->steps = vtkTimeSteps(times);
    return true;
}

bool ExodusSource::listVariables(ug::ResultMapping mapping, VtkContents* contents, ug::Error* error) {
    const bool isNodal = mapping == ug::PER_NODE;
    const std::size_t count = m_stepCount == 0 ? 0 : m_file->length(isNodal ? "num_nod_var" : "num_elem_var");
    if (count == 0) {
        return true;
    }
    const std::vector<std::string> names = isPlausible(count)
                                               ? m_file->readTexts(isNodal ? "name_nod_var" : "name_elem_var", count)
                                               : std::vector<std::string>();
    if (names.empty()) {
        return ug::fail(error, Str("does not tell the names of its " + std::to_string(count) + " variables of " +
                                   (isNodal ? "nodes" : "elements")));
    }
    VtkNames unique;
    for (std::size_t v = 0; v < count; ++v) {
        contents->arrays.push_back({unique.makeUnique(names[v]), mapping, 1});
        m_variables.push_back(v);
    }
    return true;
}

// What takes no less than so many numbers of four bytes, as nothing makes them smaller.
bool ExodusSource::isPlausible(std::size_t count) const {
    return count <= m_file->size() / 4;
}

bool ExodusSource::readMesh(Grids* grids, ug::Error* error) {
    std::vector<double> axes[3];
    if (!readCoordinates(axes, error)) {
        return false;
    }
    const std::vector<long long> nodeIds = readIds("node_num_map", m_nodeCount);
    const std::vector<long long> elementIds = readIds("elem_num_map", m_elementCount);
    std::vector<int> indexes(m_nodeCount, 0);
    for (Block& block : m_blocks) {
        const auto grid = grids->emplace_back(vtkSmartPointer<vtkUnstructuredGrid>::New());
        Connectivity nodes;
        if (block.elementCount == 0) {
            continue;
        }
        if (!readConnectivity(block, &nodes, error)) {
            return false;
        }
        block.nodes = nodesOf(nodes.numbers);
        for (std::size_t i = 0; i < block.nodes.size(); ++i) {
            indexes[std::size_t(block.nodes[i])] = int(i);
        }
        setCells(block, nodes, indexes, grid);
        grid->SetPoints(pointsOf(block.nodes, axes));
        setIds(grid->GetPointData(), block.nodes, nodeIds);
        std::vector<int> elements(block.elementCount);
        std::iota(elements.begin(), elements.end(), int(block.firstElement));
        setIds(grid->GetCellData(), elements, elementIds);
    }
    return true;
}

bool ExodusSource::readCoordinates(std::vector<double>* axes, ug::Error* error) const {
    const std::size_t dimension = m_file->length("num_dim");
    if (dimension == 0 || dimension > 3) {
        return ug::fail(error, Str("has coordinates of " + std::to_string(dimension) + " dimensions"));
    }
    for (std::size_t axis = 0; axis < dimension; ++axis) {
        if (!m_file->read(
                std::string("coord") + "xyz" [axis], {}, {m_nodeCount}, &axes[axis]) &&
            !m_file->read("coord", {axis}, {m_nodeCount}, &axes[axis])) {
            return ug::fail(error, Str("has no coordinates of its " + std::to_string(m_nodeCount) + " nodes"));
        }
    }
    return true;
}

bool ExodusSource::readConnectivity(const Block& block, Connectivity* nodes, ug::Error* error) const {
    if (!m_file->read("connect" + block.number, {}, block.shape, &nodes->numbers) || nodes->numbers.size() > MOST) {
        return ug::fail(error, Str("the nodes of the elements of block " + inQuotes(block.name) + " cannot be read"));
    }
    const auto isOther = [this](int number) { return number < 1 || std::size_t(number) > m_nodeCount; };
    const auto other = std::find_if(nodes->numbers.begin(), nodes->numbers.end(), isOther);
    if (other != nodes->numbers.end()) {
        return ug::fail(error, Str("an element of block " + inQuotes(block.name) + " has the node " +
                                   std::to_string(*other) + ", but there are " + std::to_string(m_nodeCount)));
    }
    if (block.shape.size() == 2) {
        return true;
    }
    const bool isRead = m_file->read("ebepecnt" + block.number, {}, {block.elementCount}, &nodes->counts) &&
                        std::all_of(nodes->counts.begin(), nodes->counts.end(), [](int count) { return count > 0; });
    return (isRead &&
            std::accumulate(nodes->counts.begin(), nodes->counts.end(), std::size_t(0)) == nodes->numbers.size()) ||
           ug::fail(error, Str("block " + inQuotes(block.name) + " does not tell how many nodes each element has"));
}

bool ExodusSource::addNodeValues(std::size_t step, std::size_t array, const Grids& grids, ug::Error* error) const {
    const std::string& name = m_arrays[array].name;
    const std::size_t variable = m_variables[array];
    std::vector<double> values;
    if (!m_file->read("vals_nod_var" + std::to_string(variable + 1), {step}, {m_nodeCount}, &values) &&
        !m_file->read("vals_nod_var", {step, variable}, {m_nodeCount}, &values)) {
        return ug::fail(
            error, Str("has no values of " + inQuotes(name) + " for its " + std::to_string(m_nodeCount) + " nodes"));
    }
    for (std::size_t b = 0; b < m_blocks.size(); ++b) {
        const std::vector<int>& nodes = m_blocks[b].nodes;
        const vtkSmartPointer<vtkDoubleArray> own = makeArray(name, nodes.size());
        std::transform(nodes.begin(), nodes.end(), own->GetPointer(0),
                       [&](int node) { return values[std::size_t(node)]; });
        grids[b]->GetPointData()->AddArray(own);
    }
    return true;
}

// Not all blocks have all variables.
bool ExodusSource::addElementValues(std::size_t step, std::size_t array, const Grids& grids, ug::Error* error) const {
    const std::string& name = m_arrays[array].name;
    for (std::size_t b = 0; b < m_blocks.size(); ++b) {
        const Block& block = m_blocks[b];
        const std::string variable = elementVariable(array, block);
        if (block.elementCount == 0 || !m_file->has(variable)) {
            continue;
        }
        std::vector<double> values;
        if (!m_file->read(variable, {step}, {block.elementCount}, &values)) {
            return ug::fail(error,
                            Str("has no values of " + inQuotes(name) + " for the " +
                                std::to_string(block.elementCount) + " elements of block " + inQuotes(block.name)));
        }
        const vtkSmartPointer<vtkDoubleArray> own = makeArray(name, values.size());
        std::copy(values.begin(), values.end(), own->GetPointer(0));
        grids[b]->GetCellData()->AddArray(own);
    }
    return true;
}

std::string ExodusSource::elementVariable(std::size_t array, const Block& block) const {
    return "vals_elem_var" + std::to_string(m_variables[array] + 1) + "eb" + block.number;
}

// None when there are none; the items are numbered in the order of the file then.
std::vector<long long> ExodusSource::readIds(const char* variable, std::size_t count) const {
    std::vector<long long> ids;
    return m_file->read(variable, {}, {count}, &ids) ? ids : std::vector<long long>();
}

void ExodusSource::setCells(const Block& block, const Connectivity& nodes, const std::vector<int>& indexes,
                            vtkUnstructuredGrid* grid) {
    const ExodusCells& cells = block.cells;
    const std::size_t stride = nodes.numbers.size() / block.elementCount;
    const std::size_t pointCount = cells.pointCount > 0 ? cells.pointCount : stride;
    vtkNew<vtkTypeInt32Array> offsets;
    vtkNew<vtkTypeInt32Array> points;
    offsets->SetNumberOfValues(vtkIdType(block.elementCount) + 1);
    points->SetNumberOfValues(vtkIdType(nodes.counts.empty() ? block.elementCount * pointCount : nodes.numbers.size()));
    int* to = points->GetPointer(0);
    const int* from = nodes.numbers.data();
    for (std::size_t e = 0; e < block.elementCount; ++e) {
        offsets->SetValue(vtkIdType(e), int(to - points->GetPointer(0)));
        const std::size_t own = nodes.counts.empty() ? pointCount : std::size_t(nodes.counts[e]);
        for (std::size_t p = 0; p < own; ++p) {
            *to++ = indexes[std::size_t(from[cells.order ? cells.order[p] : p] - 1)];
        }
        from += nodes.counts.empty() ? stride : own;
    }
    offsets->SetValue(vtkIdType(block.elementCount), int(to - points->GetPointer(0)));
    vtkNew<vtkCellArray> array;
    array->SetData(offsets.Get(), points.Get());
    grid->SetCells(cells.cellType, array);
}

} // namespace orv::imp::cae
