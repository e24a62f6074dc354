#include "OrvImportVtk/VtkMesh.h"

#include "OrvCore/Vec3d.h"
#include "OrvImportVtk/VtkCells.h"

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
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <limits>
#include <span>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_NODES = std::numeric_limits<std::uint32_t>::max();

template <class Number>
std::vector<double> convert(const Number* numbers, std::size_t count) {
    return std::vector<double>(numbers, numbers + count);
}

std::vector<double> coordinatesOf(vtkDataSet* mesh) {
    const std::size_t count = std::size_t(mesh->GetNumberOfPoints()) * 3;
    vtkPointSet* set = vtkPointSet::SafeDownCast(mesh);
    vtkDataArray* array = set && set->GetPoints() ? set->GetPoints()->GetData() : nullptr;
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

// None when there are none, or one does not fit.
std::vector<int> globalIdsOf(vtkDataSetAttributes* attributes, vtkIdType count) {
    vtkDataArray* array = attributes->GetGlobalIds();
    if (!array || array->GetNumberOfTuples() != count || array->GetNumberOfComponents() != 1) {
        return {};
    }
    std::vector<int> ids(std::size_t(count), 0);
    for (vtkIdType i = 0; i < count; ++i) {
        const double id = array->GetComponent(i, 0);
        if (!(id >= 0 && id <= std::numeric_limits<int>::max())) {
            return {};
        }
        ids[std::size_t(i)] = int(id);
    }
    return ids;
}

/// Turns cells into elements, one after the other.
class Elements {
public:
    Elements(vtkDataSet* mesh, std::span<const double> coordinates, VtkUnknownCells* unknown)
        : m_mesh(mesh), m_grid(vtkUnstructuredGrid::SafeDownCast(mesh)), m_coordinates(coordinates),
          m_ghosts(mesh->GetCellGhostArray()), m_unknown(unknown) {
        m_types.reserve(std::size_t(mesh->GetNumberOfCells()));
        m_cells.reserve(std::size_t(mesh->GetNumberOfCells()));
        if (m_grid && m_grid->GetCells()) {
            m_connectivity.reserve(std::size_t(m_grid->GetCells()->GetNumberOfConnectivityIds()));
        }
    }

    bool convert(ug::Error* error) {
        vtkNew<vtkIdList> buffer;
        for (vtkIdType cell = 0; cell < m_mesh->GetNumberOfCells(); ++cell) {
            vtkIdType count = 0;
            const vtkIdType* points = nullptr;
            findPoints(cell, buffer, &count, &points);
            if (!isWithinMesh(points, count)) {
                return ug::fail(error, Str("cell " + std::to_string(cell) + " has a point that is not one of the " +
                                           std::to_string(m_mesh->GetNumberOfPoints()) + " points of its mesh"));
            }
            if (!isGhost(cell)) {
                add(cell, points, count);
            }
            if (m_connectivity.size() > MOST_NODES) {
                return ug::fail(error, "the elements of a part have more than 4294967295 nodes in all");
            }
        }
        return true;
    }

    void moveTo(ug::DataElements* elements, VtkPartMap* map) {
        map->cellCount = std::size_t(m_mesh->GetNumberOfCells());
        std::vector<int> ids;
        if (m_isIdentity && m_types.size() == map->cellCount) {
            ids = globalIdsOf(m_mesh->GetCellData(), m_mesh->GetNumberOfCells());
        } else {
            map->elementCells = std::move(m_cells);
        }
        elements->set(std::move(m_types), std::move(m_connectivity), std::move(ids));
    }

private:
    // Unstructured grids show their lists, others fill the buffer.
    void findPoints(vtkIdType cell, vtkIdList* buffer, vtkIdType* count, const vtkIdType** points) {
        if (m_grid) {
            m_grid->GetCells()->GetCellAtId(cell, *count, *points);
            return;
        }
        m_mesh->GetCellPoints(cell, buffer);
        *count = buffer->GetNumberOfIds();
        *points = buffer->GetPointer(0);
    }

    bool isWithinMesh(const vtkIdType* points, vtkIdType count) const {
        for (vtkIdType i = 0; i < count; ++i) {
            if (points[i] < 0 || points[i] >= m_mesh->GetNumberOfPoints()) {
                return false;
            }
        }
        return true;
    }

    bool isGhost(vtkIdType cell) const {
        return m_ghosts &&
               (m_ghosts->GetValue(cell) & (vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::HIDDENCELL));
    }

    void add(vtkIdType cell, const vtkIdType* points, vtkIdType count) {
        const int cellType = m_mesh->GetCellType(cell);
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
    }

    // Whether the nodes 0, 1 and 2 of an element run counter-clockwise when they are seen from its node 3.
    bool isUpright(const vtkIdType* points, const std::uint8_t* order) const {
        const auto place = [&](std::size_t node) {
            const double* xyz = &m_coordinates[3 * std::size_t(points[order[node]])];
            return Vec3d(xyz[0], xyz[1], xyz[2]);
        };
        const Vec3d corner = place(0);
        return ((place(1) - corner) ^ (place(2) - corner)) * (place(3) - corner) >= 0;
    }

    template <class Index>
    void addElement(vtkIdType cell, ug::ElementType type, const vtkIdType* points, const Index* order) {
        m_isIdentity = m_isIdentity && cell == vtkIdType(m_types.size());
        m_types.push_back(type);
        m_cells.push_back(cell);
        const std::size_t count = ug::elementTypeInfo(type).nodeCount;
        const std::size_t begin = m_connectivity.size();
        m_connectivity.resize(begin + count);
        for (std::size_t i = 0; i < count; ++i) {
            m_connectivity[begin + i] = std::uint32_t(points[order[i]]);
        }
    }

    vtkDataSet* m_mesh;
    vtkUnstructuredGrid* m_grid; ///< The same, if it is one.
    std::span<const double> m_coordinates;
    vtkUnsignedCharArray* m_ghosts;
    VtkUnknownCells* m_unknown;
    int m_lastType = -1;
    const VtkCell* m_lastCell = nullptr; ///< Of that type.
    bool m_isIdentity = true;            ///< So far each element is the cell of its index.
    std::vector<ug::ElementType> m_types;
    std::vector<std::uint32_t> m_connectivity;
    std::vector<std::int64_t> m_cells;
    std::vector<VtkCellPiece> m_pieces;
};

} // namespace

bool fillVtkPart(vtkDataSet* mesh, ug::DataNodes* nodes, ug::DataElements* elements, VtkPartMap* map,
                 VtkUnknownCells* unknown, ug::Error* error) {
    if (std::size_t(mesh->GetNumberOfPoints()) > MOST_NODES) {
        return ug::fail(error, "a part has more than 4294967295 nodes");
    }
    std::vector<double> coordinates = coordinatesOf(mesh);
    Elements converted(mesh, coordinates, unknown);
    if (!converted.convert(error)) {
        return false;
    }
    map->pointCount = std::size_t(mesh->GetNumberOfPoints());
    nodes->set(std::move(coordinates), globalIdsOf(mesh->GetPointData(), mesh->GetNumberOfPoints()));
    converted.moveTo(elements, map);
    return true;
}

std::string vtkCellTypeText(int cellType) {
    return "VTK cell type " + std::to_string(cellType) + " (" + vtkCellTypes::GetClassNameFromTypeId(cellType) + ")";
}

} // namespace orv::imp::cae
