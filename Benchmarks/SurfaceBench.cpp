// The surface of a million hexahedra, beside VTK's faster filter for it with one thread. Both sides make their output
// anew in each run.

#include "OrvUnstructGrid/DataPart.h"
#include "OrvUnstructGrid/PartSurface_p.h"

#include "Benchmarks/Claims.h"

#include <SMP/Common/vtkSMPToolsAPI.h>
#include <vtkCellArray.h>
#include <vtkCellType.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>
#include <vector>

using namespace orv::ug;

namespace {

constexpr std::uint32_t cubesPerEdge = 100;
constexpr std::uint32_t nodesPerEdge = cubesPerEdge + 1;
constexpr std::uint32_t nodeTotal = nodesPerEdge * nodesPerEdge * nodesPerEdge;

std::vector<double> gridCoordinates() {
    std::vector<double> coordinates;
    for (std::uint32_t i = 0; i < nodeTotal; ++i) {
        const std::uint32_t x = i % nodesPerEdge;
        const std::uint32_t y = i / nodesPerEdge % nodesPerEdge;
        const std::uint32_t z = i / nodesPerEdge / nodesPerEdge;
        coordinates.insert(coordinates.end(), {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)});
    }
    return coordinates;
}

std::vector<std::uint32_t> gridConnectivity() {
    constexpr std::uint32_t up = nodesPerEdge * nodesPerEdge;
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t i = 0; i < cubesPerEdge * cubesPerEdge * cubesPerEdge; ++i) {
        const std::uint32_t x = i % cubesPerEdge;
        const std::uint32_t y = i / cubesPerEdge % cubesPerEdge;
        const std::uint32_t z = i / cubesPerEdge / cubesPerEdge;
        const std::uint32_t n = (z * nodesPerEdge + y) * nodesPerEdge + x;
        nodes.insert(nodes.end(), {n, n + 1, n + nodesPerEdge + 1, n + nodesPerEdge});
        nodes.insert(nodes.end(), {n + up, n + up + 1, n + up + nodesPerEdge + 1, n + up + nodesPerEdge});
    }
    return nodes;
}

/// The same grid with nodes and elements numbered at random, which no memory is near to.
void shuffle(std::vector<double>* coordinates, std::vector<std::uint32_t>* connectivity) {
    std::mt19937 engine(4);
    std::vector<std::uint32_t> numbers(nodeTotal);
    std::iota(numbers.begin(), numbers.end(), 0U);
    std::shuffle(numbers.begin(), numbers.end(), engine);
    std::vector<double> moved(coordinates->size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::copy_n(coordinates->begin() + 3 * i, 3, moved.begin() + 3 * numbers[i]);
    }
    *coordinates = moved;
    std::vector<std::uint32_t> order(connectivity->size() / 8);
    std::iota(order.begin(), order.end(), 0U);
    std::shuffle(order.begin(), order.end(), engine);
    std::vector<std::uint32_t> elements;
    for (const std::uint32_t element : order) {
        for (std::size_t i = 0; i < 8; ++i) {
            elements.push_back(numbers[(*connectivity)[8 * std::size_t(element) + i]]);
        }
    }
    *connectivity = elements;
}

/// One mesh for both.
class Comparison {
public:
    Comparison(const std::vector<double>& coordinates, const std::vector<std::uint32_t>& nodes) {
        m_part.nodes()->set(coordinates, {});
        m_part.elements()->set(std::vector<ElementType>(nodes.size() / 8, HEXAHEDRON), nodes, {});
        vtkNew<vtkPoints> points;
        points->SetDataTypeToDouble();
        for (std::size_t i = 0; i < coordinates.size(); i += 3) {
            points->InsertNextPoint(coordinates.data() + i);
        }
        vtkNew<vtkCellArray> cells;
        for (std::size_t i = 0; i < nodes.size(); i += 8) {
            const std::vector<vtkIdType> ids(nodes.begin() + i, nodes.begin() + i + 8);
            cells->InsertNextCell(8, ids.data());
        }
        m_grid->SetPoints(points);
        m_grid->SetCells(VTK_HEXAHEDRON, cells);
        m_filter->SetInputData(m_grid);
        m_filter->DelegationOff(); // To vtkGeometryFilter, which takes several times as long with one thread.
        m_filter->PassThroughCellIdsOff();
        m_filter->PassThroughPointIdsOff();
    }

    void addTo(orvbench::Claims* claims, const std::string& name) {
        m_filter->Update();
        const PartSurface ours = surfaceOf(m_part);
        if (static_cast<std::size_t>(m_filter->GetOutput()->GetNumberOfPolys()) != ours.faceElements.size()) {
            std::fprintf(stderr, "%s: VTK finds another number of faces\n", name.c_str());
            std::exit(1);
        }
        claims->add(name, 1.0, {[] {}, [this] { benchmark::DoNotOptimize(surfaceOf(m_part)); }},
                    {[this] { m_grid->Modified(); }, [this] { m_filter->Update(); }});
    }

private:
    DataPart m_part{1};
    vtkNew<vtkUnstructuredGrid> m_grid;
    vtkNew<vtkDataSetSurfaceFilter> m_filter;
};

} // namespace

int main(int argc, char** argv) {
    // What vtkSMPTools calls; its own header is no C++20.
    vtk::detail::smp::vtkSMPToolsAPI::GetInstance().SetBackend("Sequential");
    vtk::detail::smp::vtkSMPToolsAPI::GetInstance().Initialize(1);
    std::vector<double> coordinates = gridCoordinates();
    std::vector<std::uint32_t> connectivity = gridConnectivity();
    Comparison inOrder(coordinates, connectivity);
    shuffle(&coordinates, &connectivity);
    Comparison atRandom(coordinates, connectivity);
    orvbench::Claims claims;
    inOrder.addTo(&claims, "surface(1M hexahedra)");
    atRandom.addTo(&claims, "surface(1M hexahedra, numbered at random)");
    return claims.run(argc, argv);
}
