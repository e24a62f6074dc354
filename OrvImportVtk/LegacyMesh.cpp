#include "OrvImportVtk/LegacyMesh.h"

#include "OrvImportVtk/VtkVectorArray.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStructuredGrid.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace orv::imp::cae {
namespace {

using Mesh = vtkSmartPointer<vtkDataSet>;

template <class Array>
vtkSmartPointer<Array> readInto(LegacyInput* input, const LegacyValues& values, int width) {
    auto array = vtkSmartPointer<Array>::New();
    array->SetNumberOfComponents(std::max(width, 1));
    array->SetNumberOfValues(values.count);
    const bool isRead = input->read(values, array->GetPointer(0));
    return isRead ? array : nullptr;
}

vtkSmartPointer<vtkDataArray> readArray(LegacyInput* input, const LegacyValues& values, int width) {
    if (values.type == LegacyType::FLOAT && input->isBinary()) {
        return readInto<vtkFloatArray>(input, values, width);
    }
    if (values.type == LegacyType::UINT8) { // Marks of ghosts have to be such.
        return readInto<vtkUnsignedCharArray>(input, values, width);
    }
    return readInto<vtkDoubleArray>(input, values, width);
}

using Integers = vtkSmartPointer<vtkTypeInt32Array>;

/// Where the nodes of each cell begin and the last one's end, and the nodes.
struct CellNodes {
    Integers offsets;
    Integers nodes;
};

Integers makeIntegers(std::int64_t count) {
    auto array = Integers::New();
    array->SetNumberOfValues(count);
    return array;
}

class MeshReader {
public:
    MeshReader(LegacyInput* input, const LegacyIndex& index) : m_input(*input), m_index(index) {}

    Mesh read() {
        switch (m_index.meshType) {
        case LegacyMeshType::UNSTRUCTURED_GRID:
            return readGrid();
        case LegacyMeshType::POLYDATA:
            return readSurface();
        case LegacyMeshType::STRUCTURED_GRID:
            return readCurvedGrid();
        case LegacyMeshType::STRUCTURED_POINTS:
            return makeImage();
        case LegacyMeshType::RECTILINEAR_GRID:
            return readPlanes();
        }
        return nullptr;
    }

private:
    Mesh readGrid() {
        vtkNew<vtkUnstructuredGrid> grid;
        CellNodes cells;
        if (!readPoints(grid) || !readCells(m_index.cells[LegacyIndex::CELLS], &cells)) {
            return nullptr;
        }
        const vtkSmartPointer<vtkUnsignedCharArray> types = readTypes();
        if (!types) {
            return nullptr;
        }
        emptyPolyhedra(types->GetPointer(0), &cells);
        grid->SetCells(types, makeList(cells), nullptr, nullptr); // With less it would look for polyhedra's faces.
        return grid;
    }

    Mesh readSurface() {
        vtkNew<vtkPolyData> surface;
        CellNodes vertices;
        CellNodes lines;
        CellNodes polygons;
        CellNodes strips;
        if (!readPoints(surface) || !readCells(m_index.cells[LegacyIndex::VERTICES], &vertices) ||
            !readCells(m_index.cells[LegacyIndex::LINES], &lines) ||
            !readCells(m_index.cells[LegacyIndex::POLYGONS], &polygons) ||
            !readCells(m_index.cells[LegacyIndex::TRIANGLE_STRIPS], &strips)) {
            return nullptr;
        }
        surface->SetVerts(makeList(vertices));
        surface->SetLines(makeList(lines));
        surface->SetPolys(makeList(polygons));
        surface->SetStrips(makeList(strips));
        return surface;
    }

    Mesh readCurvedGrid() {
        vtkNew<vtkStructuredGrid> grid;
        setDimensions(grid.Get());
        return readPoints(grid) ? Mesh(grid) : nullptr;
    }

    Mesh makeImage() {
        vtkNew<vtkImageData> image;
        setDimensions(image.Get());
        image->SetOrigin(m_index.origin.data());
        image->SetSpacing(m_index.spacing.data());
        return image;
    }

    Mesh readPlanes() {
        vtkNew<vtkRectilinearGrid> grid;
        setDimensions(grid.Get());
        std::array<vtkSmartPointer<vtkDataArray>, 3> planes;
        for (std::size_t axis = 0; axis < planes.size(); ++axis) {
            planes[axis] = readArray(&m_input, m_index.planes[axis], 1);
            if (!planes[axis]) {
                return nullptr;
            }
        }
        grid->SetXCoordinates(planes[0]);
        grid->SetYCoordinates(planes[1]);
        grid->SetZCoordinates(planes[2]);
        return grid;
    }

    template <class Grid>
    void setDimensions(Grid* grid) {
        const std::array<std::int64_t, 3>& dimensions = m_index.dimensions;
        grid->SetDimensions(int(dimensions[0]), int(dimensions[1]), int(dimensions[2]));
    }

    bool readPoints(vtkPointSet* mesh) {
        const vtkSmartPointer<vtkDataArray> places = readPlaces();
        if (places) {
            vtkNew<vtkPoints> points;
            points->SetData(places);
            mesh->SetPoints(points);
        }
        return places;
    }

    vtkSmartPointer<vtkDataArray> readPlaces() {
        if (m_index.points.type == LegacyType::FLOAT && m_input.isBinary()) {
            return readArray(&m_input, m_index.points, 3);
        }
        const auto places = VtkPlaces::make(3, std::size_t(m_index.points.count));
        return m_input.read(m_index.points, places->GetPointer(0)) ? places : nullptr;
    }

    bool readCells(const LegacyCells& list, CellNodes* cells) {
        constexpr std::int64_t MOST = std::numeric_limits<std::int32_t>::max();
        if (list.nodes.count > MOST) {
            return m_input.fail("expected at most " + std::to_string(MOST) + " numbers of " + list.nodes.what +
                                ", found " + std::to_string(list.nodes.count));
        }
        cells->nodes = VtkIndexes::make(1, std::size_t(list.nodes.count));
        if (!m_input.read(list.nodes, cells->nodes->GetPointer(0))) {
            return false;
        }
        if (!list.offsets) {
            return takeRunsApart(list, cells);
        }
        cells->offsets = readInto<vtkTypeInt32Array>(&m_input, *list.offsets, 1);
        return cells->offsets && checkOffsets(list, cells);
    }

    bool checkOffsets(const LegacyCells& list, CellNodes* cells) {
        if (list.offsets->count == 0) {
            cells->offsets->InsertNextValue(0);
        }
        const auto* begin = cells->offsets->GetPointer(0);
        const auto* end = begin + cells->offsets->GetNumberOfValues();
        return (*begin == 0 && end[-1] == list.nodes.count && std::is_sorted(begin, end)) ||
               m_input.fail("expected offsets from 0 to " + std::to_string(list.nodes.count) + " of " +
                            list.nodes.what + ", found others");
    }

    // Each cell has the number of its nodes in front of them, which are moved together.
    bool takeRunsApart(const LegacyCells& list, CellNodes* cells) {
        const std::int64_t size = list.nodes.count;
        cells->offsets = makeIntegers(std::min(list.count, size) + 1);
        auto* offset = cells->offsets->GetPointer(0);
        auto* const nodes = cells->nodes->GetPointer(0);
        auto* node = nodes;
        std::int64_t at = 0;
        for (std::int64_t i = 0; i < list.count; ++i) {
            const std::int64_t count = at < size ? nodes[at] : -1;
            if (count < 0 || count >= size - at) {
                return m_input.fail("expected " + std::to_string(list.count) + " cells in " + std::to_string(size) +
                                    " numbers of " + list.nodes.what + ", found " + std::to_string(i));
            }
            *offset++ = int(node - nodes);
            node = std::copy_n(nodes + at + 1, count, node);
            at += count + 1;
        }
        *offset = int(node - nodes);
        cells->nodes->SetNumberOfValues(node - nodes);
        return at == size || m_input.fail("expected " + std::to_string(size) + " numbers of " + list.nodes.what +
                                          ", found cells in " + std::to_string(at) + " of them");
    }

    vtkSmartPointer<vtkUnsignedCharArray> readTypes() {
        const auto types = readInto<vtkUnsignedCharArray>(&m_input, m_index.cellTypes, 1);
        if (!types) {
            return nullptr;
        }
        const unsigned char* begin = types->GetPointer(0);
        const unsigned char* end = begin + types->GetNumberOfValues();
        const auto isUnknown = [](unsigned char type) { return type >= VTK_NUMBER_OF_CELL_TYPES; };
        const unsigned char* unknown = std::find_if(begin, end, isUnknown);
        if (unknown != end) {
            m_input.fail("expected types of cells, found " + std::to_string(*unknown));
            return nullptr;
        }
        return types;
    }

    // What they have are lists of faces, which would be taken for nodes.
    static void emptyPolyhedra(const unsigned char* types, CellNodes* cells) {
        const vtkIdType count = cells->offsets->GetNumberOfValues() - 1;
        if (std::find(types, types + count, VTK_POLYHEDRON) == types + count) {
            return;
        }
        auto* offsets = cells->offsets->GetPointer(0);
        auto* nodes = cells->nodes->GetPointer(0);
        auto* node = nodes;
        for (vtkIdType i = 0; i < count; ++i) {
            const std::int64_t begin = std::exchange(offsets[i], int(node - nodes));
            if (types[i] != VTK_POLYHEDRON) {
                node = std::copy(nodes + begin, nodes + offsets[i + 1], node);
            }
        }
        offsets[count] = int(node - nodes);
        cells->nodes->SetNumberOfValues(node - nodes);
    }

    static vtkSmartPointer<vtkCellArray> makeList(const CellNodes& cells) {
        auto list = vtkSmartPointer<vtkCellArray>::New();
        list->SetData(cells.offsets.Get(), cells.nodes.Get());
        return list;
    }

    LegacyInput& m_input;
    const LegacyIndex& m_index;
};

vtkDataSetAttributes* attributesOf(vtkDataSet* mesh, ug::ResultMapping mapping) {
    return mapping == ug::PER_NODE ? static_cast<vtkDataSetAttributes*>(mesh->GetPointData()) : mesh->GetCellData();
}

// From 0 to 255, as VTK has them.
void spreadColours(vtkDataArray* array) {
    auto* values = static_cast<double*>(array->GetVoidPointer(0));
    std::transform(values, values + array->GetNumberOfValues(), values,
                   [](double value) { return std::floor(255.0 * value + 0.5); });
}

bool addArray(LegacyInput* input, const LegacyArray& array, vtkDataSet* mesh) {
    const vtkSmartPointer<vtkDataArray> values = readArray(input, array.values, array.array.componentCount);
    if (!values) {
        return false;
    }
    if (array.isColour) {
        spreadColours(values);
    }
    values->SetName(array.array.name.c_str());
    vtkDataSetAttributes* attributes = attributesOf(mesh, array.array.mapping);
    attributes->AddArray(values);
    if (array.isGlobalIds) {
        attributes->SetGlobalIds(values);
    }
    return true;
}

} // namespace

vtkSmartPointer<vtkDataSet> readLegacyMesh(CaeFile* file, const LegacyIndex& index, std::span<const std::size_t> arrays,
                                           ug::Error* error) {
    LegacyInput input(file, index.isBinary, error);
    const Mesh mesh = MeshReader(&input, index).read();
    const auto add = [&](const LegacyArray& array) { return addArray(&input, array, mesh); };
    const bool isRead = mesh && std::all_of(index.meshArrays.begin(), index.meshArrays.end(), add) &&
                        std::all_of(arrays.begin(), arrays.end(), [&](std::size_t a) { return add(index.arrays[a]); });
    return isRead ? mesh : nullptr;
}

} // namespace orv::imp::cae
