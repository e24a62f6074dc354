// Paths over bent plates of shells, two triangles to an element: across a million elements beside VTK's cutter, which
// goes through the whole surface, and what makes a path longer to compute.

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include "Benchmarks/Claims.h"

#include <vtkCellArray.h>
#include <vtkCutter.h>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

using namespace orv::ug;
using orv::Vec3d;

namespace {

constexpr std::uint32_t length = 1000;

/// So many paths are one piece of work, for the clock's sake.
constexpr int pathCount = 20;

class Plate {
public:
    /// @param slit of so many elements across the middle of the way, from y = 0 on
    /// @param partCount of that width, side by side
    explicit Plate(std::uint32_t width, std::uint32_t slit = 0, std::uint32_t partCount = 1)
        : m_source(new DataSourceMemory(1)), m_model(new UnstructGridModel) {
        m_source->addGeometry();
        for (std::uint32_t i = 0; i < partCount; ++i) {
            fill(m_source->addPart(0, "plate"), width, slit, i * width);
        }
        m_source->addState(StateInfo(1, "", StateInfo::TIME, 0));
        m_result = m_source->addResult(SCALAR, "x", PER_NODE);
        std::vector<double> values(part().nodes()->nodeCount(), 1.0);
        m_source->setValues(1, m_result, 0, 0, values, nullptr);
        m_model->setDataSource(m_source.get());
        m_model->modelSpec().setStateId(1);
        m_model->updateShapes(nullptr);
    }

    const DataPart& part() const {
        return *m_source->state(0)->geometry(0)->part(0);
    }

    /// From near the first corner, a share of the whole length on and of 50 elements to the side.
    void lay(double share) {
        const auto lastX = static_cast<std::uint32_t>(share * length) - 1;
        const auto lastY = static_cast<std::uint32_t>(share * 50) + 20;
        SurfacePathQuery query(m_model.get(), 0, SurfacePathQuery::ELEMENT, {element(0, 20), element(lastX, lastY)});
        std::vector<Vec3d> path;
        std::vector<double> x;
        std::vector<double> y;
        if (!query.generatePath(&path) || !query.getScalarResultValues(m_result.id(), &x, &y)) {
            std::fprintf(stderr, "There is no path.\n");
            std::exit(1);
        }
        m_crossings = path.size() - 2;
    }

    /// Over the middle of the way, 100 elements on each side.
    void layNodes() {
        std::vector<HitItem> items(2);
        for (std::size_t i = 0; i < 2; ++i) {
            items[i].setGeometryIndex(0);
            items[i].setItemIndex(0);
            items[i].setNodeIndex(50 * (length + 1) + length / 2 - 100 + 200 * i);
        }
        std::vector<Vec3d> path;
        if (!SurfacePathQuery(m_model.get(), 0, SurfacePathQuery::NODE, items).generatePath(&path)) {
            std::fprintf(stderr, "There is no path.\n");
            std::exit(1);
        }
    }

    std::size_t crossings() const {
        return m_crossings;
    }

private:
    static void fill(DataPart* part, std::uint32_t width, std::uint32_t slit, double firstY) {
        std::vector<double> coordinates;
        std::vector<std::uint32_t> nodes;
        for (std::uint32_t y = 0; y <= width; ++y) {
            for (std::uint32_t x = 0; x <= length; ++x) {
                coordinates.insert(coordinates.end(), {double(x), firstY + y, 10 * std::sin(0.03 * x)});
                const bool isSlit = x == length / 2 && y < slit;
                if (x < length && y < width && !isSlit) {
                    const std::uint32_t first = y * (length + 1) + x;
                    nodes.insert(nodes.end(), {first, first + 1, first + length + 2, first + length + 1});
                }
            }
        }
        std::vector<ElementType> types(nodes.size() / 4, QUADRILATERAL);
        part->nodes()->set(std::move(coordinates), {});
        part->elements()->set(std::move(types), std::move(nodes), {});
    }

    static HitItem element(std::uint32_t x, std::uint32_t y) {
        HitItem item;
        item.setGeometryIndex(0);
        item.setItemIndex(0);
        item.setElementIndex(y * length + x);
        item.setElementLocalSurfaceIndex(0);
        return item;
    }

    orv::PtrRef<DataSourceMemory> m_source;
    orv::PtrRef<UnstructGridModel> m_model;
    ResultInfo m_result;
    std::size_t m_crossings = 0;
};

/// The same surface in VTK.
vtkNew<vtkPolyData> vtkSurface(const DataPart& part) {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
        const Vec3d node = part.nodes()->node(i);
        points->InsertNextPoint(node.x(), node.y(), node.z());
    }
    vtkNew<vtkCellArray> cells;
    for (std::size_t e = 0; e < part.elements()->elementCount(); ++e) {
        cells->InsertNextCell(4);
        for (const std::uint32_t node : part.elements()->nodeIndexes(e)) {
            cells->InsertCellPoint(node);
        }
    }
    vtkNew<vtkPolyData> surface;
    surface->SetPoints(points);
    surface->SetPolys(cells);
    return surface;
}

void cut(vtkPolyData* surface) {
    vtkNew<vtkPlane> plane;
    plane->SetOrigin(0.5, 20.5, 0);
    plane->SetNormal(-50.0, 999.0, 0);
    vtkNew<vtkCutter> cutter;
    cutter->SetCutFunction(plane);
    cutter->SetInputData(surface);
    cutter->Update();
}

double millisecondsOf(const std::function<void()>& work) {
    const std::clock_t start = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv) {
    Plate million(1000);
    Plate tenth(100);
    std::printf("first path across 1,000,000 elements, finding what meets where: %.1f ms (limit 50)\n",
                millisecondsOf([&] { million.lay(1.0); }));
    std::printf("another one: %.2f ms (limit 50), %zu crossings\n", millisecondsOf([&] { million.lay(1.0); }),
                million.crossings());
    tenth.lay(1.0);
    {
        Plate two(500, 0, 2);
        std::printf("first path across 1,000,000 elements in two parts that touch: %.1f ms\n",
                    millisecondsOf([&] { two.lay(1.0); }));
    }
    {
        Plate slit(1000, 100);
        slit.layNodes();
        std::printf("around a slit of 100 elements, along sides: %.1f ms\n", millisecondsOf([&] { slit.layNodes(); }));
    }
    vtkNew<vtkPolyData> surface = vtkSurface(million.part());

    const auto lay = [](Plate* plate, double share) {
        return orvbench::Claims::Side{[] {},
                                      [plate, share] {
                                          for (int i = 0; i < pathCount; ++i) {
                                              plate->lay(share);
                                          }
                                      }};
    };
    orvbench::Claims claims(5);
    claims.add("20 paths across 1,000,000 elements and one cut by vtkCutter", 0.5, lay(&million, 1.0),
               {[] {}, [&surface] { cut(surface); }});
    claims.add("as many crossings on 1,000,000 elements and on 100,000", 1.3, lay(&million, 1.0), lay(&tenth, 1.0));
    claims.add("a tenth of the crossings and all", 0.15, lay(&million, 0.1), lay(&million, 1.0));
    return claims.run(argc, argv);
}
