#include "OrvImportVtk/VtkMesh.h"

#include "OrvCore/Vec3d.h"
#include "OrvImportVtk/VtkCells.h"
#include "OrvImportVtk/VtkVectorArray.h"

#include <vtkAOSDataArrayTemplate.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellTypes.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkDataSetAttributes.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPointSet.h>
#include <vtkPolyData.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <span>
#include <type_traits>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_NODES = std::numeric_limits<std::uint32_t>::max();

template <class Number>
std::vector<double> convert(const Number* numbers, std::size_t count) {
    return std::vector<double>(numbers, numbers + count);
}

// The mesh may be without them then.
std::vector<double> coordinatesOf(vtkDataSet* mesh) {
    const std::size_t count = std::size_t(mesh->GetNumberOfPoints()) * 3;
    vtkPointSet* set = vtkPointSet::SafeDownCast(mesh);
    vtkDataArray* array = set && set->GetPoints() ? set->GetPoints()->GetData() : nullptr;
    if (auto* places = dynamic_cast<VtkPlaces*>(array)) {
        return places->take();
    }
    if (auto* doubles = vtkAOSDataArrayTemplate<double>::FastDownCast(array)) {
        return convert(doubles->GetPointer(0), count);
    }
    if (auto* floats = vtkAOSDataArrayTemplate<float>::FastDownCast(array)) {
        return convert(floats->GetPointer(0), count);
    }
    std::vector<double> coordinates(count);
    for (vtkIdType i = 0; i < mesh->GetNumberOfPoints(); ++i) {
        mesh->GetPoint(i, &coordinates[std::size_t(i) * 3]);
    }
    return coordinates;
}

template <class Number>
bool copyIds(const Number* numbers, std::vector<int>* ids) {
    for (std::size_t i = 0; i < ids->size(); ++i) {
        if (!(numbers[i] >= 0 && double(numbers[i]) <= std::numeric_limits<int>::max())) {
            return false;
        }
        (*ids)[i] = int(numbers[i]);
    }
    return true;
}

// None when there are none, or one does not fit.
std::vector<int> globalIdsOf(vtkDataSetAttributes* attributes, vtkIdType count) {
    vtkDataArray* array = attributes->GetGlobalIds();
    if (!array || array->GetNumberOfTuples() != count || array->GetNumberOfComponents() != 1 ||
        !array->HasStandardMemoryLayout()) {
        return {};
    }
    std::vector<int> ids(std::size_t(count), 0);
    bool isCopied = false;
    switch (array->GetDataType()) {
        vtkTemplateMacro(isCopied = copyIds(static_cast<const VTK_TT*>(array->GetVoidPointer(0)), &ids));
    }
    return isCopied ? ids : std::vector<int>();
}

// The mesh itself does not find an array that got its name late.
vtkUnsignedCharArray* ghostsOf(vtkDataSet* mesh) {
    return vtkUnsignedCharArray::SafeDownCast(mesh->GetCellData()->GetArray(vtkDataSetAttributes::GhostArrayName()));
}

/// Turns cells into elements, one after the other.
class Elements {
public:
    Elements(vtkDataSet* mesh, vtkIdType pointCount, std::span<const double> coordinates, VtkUnknownCells* unknown)
        : m_mesh(mesh), m_pointCount(pointCount), m_coordinates(coordinates), m_ghosts(ghostsOf(mesh)),
          m_unknown(unknown) {
        m_types.reserve(std::size_t(mesh->GetNumberOfCells()));
    }

    bool convert(ug::Error* error) {
        auto* grid = vtkUnstructuredGrid::SafeDownCast(m_mesh);
        vtkIdType stopped = 0;
        if (grid && grid->GetCells() && grid->GetCellTypesArray()) {
            if (grid->GetCellTypesArray()->GetNumberOfValues() < grid->GetNumberOfCells()) {
                return ug::fail(error, "has no types for all of its cells");
            }
            m_connectivity.reserve(std::size_t(grid->GetCells()->GetNumberOfConnectivityIds()));
            stopped = grid->GetCells()->Visit(GridVisitor{}, this, grid->GetCellTypesArray()->GetPointer(0));
        } else {
            stopped = convertOthers();
        }
        if (m_connectivity.size() > MOST_NODES) {
            return ug::fail(error, "the elements of a part have more than 4294967295 nodes in all");
        }
        return stopped == m_mesh->GetNumberOfCells() ||
               ug::fail(error, Str("cell " + std::to_string(stopped) + " has a point that is not one of the " +
                                   std::to_string(m_pointCount) + " points of its mesh"));
    }

    void moveTo(ug::DataElements* elements, VtkPartMap* map) {
        map->cellCount = std::size_t(m_mesh->GetNumberOfCells());
        std::vector<int> ids;
        if (m_isIdentity && m_types.size() == map->cellCount) {
            ids = globalIdsOf(m_mesh->GetCellData(), m_mesh->GetNumberOfCells());
        } else {
            noteCells();
            map->elementCells = std::move(m_cells);
        }
        elements->set(std::move(m_types), std::move(m_connectivity), std::move(ids));
    }

private:
    /// Unstructured grids show their lists, with numbers of 32 or 64 bits.
    struct GridVisitor {
        template <class State>
        vtkIdType operator()(State& state, Elements* elements, const unsigned char* types) const {
            const auto* offsets = state.GetOffsets()->GetPointer(0);
            const auto* points = state.GetConnectivity()->GetPointer(0);
            const vtkIdType pointCount = state.GetConnectivity()->GetNumberOfValues();
            const vtkIdType cellCount = std::min(state.GetNumberOfCells(), elements->m_mesh->GetNumberOfCells());
            auto* indexes = dynamic_cast<VtkIndexes*>(static_cast<vtkDataArray*>(state.GetConnectivity()));
            for (vtkIdType cell = 0; cell < cellCount;) {
                if (const vtkIdType run =
                        elements->copyRun(cell, cellCount, types, offsets, points, pointCount, indexes)) {
                    cell += run;
                    continue;
                }
                const vtkIdType begin = offsets[cell];
                const vtkIdType end = offsets[cell + 1];
                if (begin < 0 || end < begin || end > pointCount ||
                    !elements->convertCell(cell, types[cell], points + begin, end - begin)) {
                    return cell;
                }
                ++cell;
            }
            return cellCount;
        }
    };

    // Cells of one type whose nodes are as VTK has them go in one piece. How many; 0 when that cannot be. `indexes` are
    // the points of all cells if these can be taken.
    template <class Index>
    vtkIdType copyRun(vtkIdType first, vtkIdType cellCount, const unsigned char* types, const Index* offsets,
                      const Index* points, vtkIdType pointCount, VtkIndexes* indexes) {
        const VtkCell* known = findKnown(types[first]);
        if (!known || !m_isSameOrder || m_ghosts || m_hasBadRun || !m_isIdentity ||
            first != vtkIdType(m_types.size())) {
            return 0;
        }
        vtkIdType end = first;
        while (end < cellCount && types[end] == types[first] &&
               std::uint64_t(offsets[end + 1]) - std::uint64_t(offsets[end]) == known->pointCount) {
            ++end;
        }
        const Index begin = offsets[first];
        m_hasBadRun = begin < 0 || offsets[end] > pointCount || !arePoints(points + begin, offsets[end] - begin);
        if (m_hasBadRun) {
            return 0;
        }
        m_types.insert(m_types.end(), std::size_t(end - first), known->elementType);
        if (indexes && begin == 0 && offsets[end] == pointCount) {
            m_connectivity = indexes->take();
        } else {
            m_connectivity.insert(m_connectivity.end(), points + begin, points + offsets[end]);
        }
        return end - first;
    }

    // What it gives is the cell that is wrong, or the number of all.
    vtkIdType convertOthers() {
        vtkNew<vtkIdList> points;
        vtkIdType cell = 0;
        for (; cell < m_mesh->GetNumberOfCells(); ++cell) {
            m_mesh->GetCellPoints(cell, points);
            if (!convertCell(cell, m_mesh->GetCellType(cell), points->GetPointer(0), points->GetNumberOfIds())) {
                break;
            }
        }
        return cell;
    }

    template <class Index>
    bool convertCell(vtkIdType cell, int cellType, const Index* points, vtkIdType count) {
        if (!arePoints(points, count)) {
            return false;
        }
        if (isGhost(cell)) {
            return true;
        }
        if (cellType != m_lastType) {
            m_lastType = cellType;
            m_lastCell = findVtkCell(cellType);
        }
        if (const VtkCell* known = m_lastCell; known && known->mayHave(count)) {
            const bool isTurned = known->turnedOrder && !isUpright(points, known->order);
            addElement(cell, known->elementType, points, isTurned ? known->turnedOrder : known->order);
        } else if (splitVtkCell(cellType, std::size_t(count), &m_pieces)) {
            for (const VtkCellPiece& piece : m_pieces) {
                addElement(cell, piece.elementType, points, piece.points.data());
            }
        } else if (cellType != VTK_EMPTY_CELL || count > 0) {
            ++(*m_unknown)[cellType];
        }
        return true;
    }

    // The highest bit of a point, and of what is left up to the last one, is set in all that are none.
    template <class Index>
    bool arePoints(const Index* points, vtkIdType count) const {
        using Bits = std::make_unsigned_t<Index>;
        constexpr int HIGHEST = std::numeric_limits<Index>::digits;
        const auto last = Bits(std::min<vtkIdType>(m_pointCount - 1, std::numeric_limits<Index>::max()));
        Bits seen = 0;
        for (vtkIdType i = 0; i < count; ++i) {
            seen |= Bits(points[i]) | (last - Bits(points[i]));
        }
        return seen >> HIGHEST == 0;
    }

    const VtkCell* findKnown(int cellType) {
        if (cellType != m_lastType) {
            m_lastType = cellType;
            m_lastCell = findVtkCell(cellType);
            m_isSameOrder = m_lastCell && hasSameOrder(*m_lastCell);
        }
        return m_lastCell;
    }

    static bool hasSameOrder(const VtkCell& cell) {
        std::size_t node = 0;
        while (node < ug::elementTypeInfo(cell.elementType).nodeCount && cell.order[node] == node) {
            ++node;
        }
        return node == cell.pointCount && !cell.turnedOrder;
    }

    bool isGhost(vtkIdType cell) const {
        return m_ghosts && cell < m_ghosts->GetNumberOfValues() &&
               (m_ghosts->GetValue(cell) & (vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::HIDDENCELL));
    }

    // Whether the nodes 0, 1 and 2 of an element run counter-clockwise when they are seen from its node 3.
    template <class Index>
    bool isUpright(const Index* points, const std::uint8_t* order) const {
        const auto place = [&](std::size_t node) {
            const double* xyz = &m_coordinates[3 * std::size_t(points[order[node]])];
            return Vec3d(xyz[0], xyz[1], xyz[2]);
        };
        const Vec3d corner = place(0);
        return ((place(1) - corner) ^ (place(2) - corner)) * (place(3) - corner) >= 0;
    }

    template <class Index, class Order>
    void addElement(vtkIdType cell, ug::ElementType type, const Index* points, const Order* order) {
        if (m_isIdentity && cell != vtkIdType(m_types.size())) {
            noteCells();
            m_isIdentity = false;
        }
        if (!m_isIdentity) {
            m_cells.push_back(cell);
        }
        m_types.push_back(type);
        const std::size_t count = ug::elementTypeInfo(type).nodeCount;
        std::uint32_t nodes[MOST_ELEMENT_NODES];
        for (std::size_t i = 0; i < count; ++i) {
            nodes[i] = std::uint32_t(points[order[i]]);
        }
        m_connectivity.insert(m_connectivity.end(), nodes, nodes + count);
    }

    // As long as each element is the cell of its index, nothing has been noted.
    void noteCells() {
        if (m_isIdentity) {
            m_cells.resize(m_types.size());
            std::iota(m_cells.begin(), m_cells.end(), std::int64_t(0));
        }
    }

    static constexpr std::size_t MOST_ELEMENT_NODES = 20;

    vtkDataSet* m_mesh;
    vtkIdType m_pointCount;
    std::span<const double> m_coordinates;
    vtkUnsignedCharArray* m_ghosts;
    VtkUnknownCells* m_unknown;
    int m_lastType = -1;
    const VtkCell* m_lastCell = nullptr; ///< Of that type.
    bool m_isSameOrder = false;          ///< All of its points are the element's nodes, in our order.
    bool m_hasBadRun = false;            ///< Some cell is wrong, which is to be found.
    bool m_isIdentity = true;            ///< So far each element is the cell of its index.
    std::vector<ug::ElementType> m_types;
    std::vector<std::uint32_t> m_connectivity;
    std::vector<std::int64_t> m_cells; ///< Of each element, unless that is its index.
    std::vector<VtkCellPiece> m_pieces;
};

// Whether a list of cells of a surface fits together, and has no empty cells, which VTK cannot find again.
bool isWhole(vtkCellArray* cells) {
    if (!cells->IsValid()) {
        return false;
    }
    for (vtkIdType cell = 0; cell < cells->GetNumberOfCells(); ++cell) {
        if (cells->GetCellSize(cell) == 0) {
            return false;
        }
    }
    return true;
}

bool hasWholeLists(vtkDataSet* mesh) {
    auto* surface = vtkPolyData::SafeDownCast(mesh);
    return !surface || (isWhole(surface->GetVerts()) && isWhole(surface->GetLines()) && isWhole(surface->GetPolys()) &&
                        isWhole(surface->GetStrips()));
}

} // namespace

bool fillVtkPart(vtkDataSet* mesh, ug::DataNodes* nodes, ug::DataElements* elements, VtkPartMap* map,
                 VtkUnknownCells* unknown, ug::Error* error) {
    if (std::size_t(mesh->GetNumberOfPoints()) > MOST_NODES) {
        return ug::fail(error, "a part has more than 4294967295 nodes");
    }
    if (!hasWholeLists(mesh)) {
        return ug::fail(error, "has lists of cells that do not fit together");
    }
    const vtkIdType pointCount = mesh->GetNumberOfPoints();
    std::vector<double> coordinates = coordinatesOf(mesh);
    Elements converted(mesh, pointCount, coordinates, unknown);
    if (!converted.convert(error)) {
        return false;
    }
    map->pointCount = std::size_t(pointCount);
    nodes->set(std::move(coordinates), globalIdsOf(mesh->GetPointData(), pointCount));
    converted.moveTo(elements, map);
    return true;
}

std::string vtkCellTypeText(int cellType) {
    return "VTK cell type " + std::to_string(cellType) + " (" + vtkCellTypes::GetClassNameFromTypeId(cellType) + ")";
}

} // namespace orv::imp::cae
