// Results computed from results, loaded as a program loads them, beside the bare loops that a caller would write over
// buffers that are warm, and beside VTK's calculator. Ours has to find and check the arguments, to look for undefined
// values and to refresh the range; the values are dropped before each run, as they are when the state changes.

#include "OrvApp/Models.h"
#include "OrvApp/ResultOperators.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include "Benchmarks/Claims.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathTensor.h"

#include <vtkArrayCalculator.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>
#include <vector>

using namespace orv::ug;

namespace {

constexpr std::size_t scalarCount = 10'000'000;
constexpr std::size_t tensorCount = 2'000'000;
constexpr int chainLength = 1000;

std::vector<double> randomNumbers(std::size_t count, unsigned int seed) {
    std::mt19937 engine(seed);
    std::vector<double> numbers(count);
    for (double& number : numbers) {
        number = static_cast<double>(engine()) / 4294967296.0 * 200 - 100;
    }
    return numbers;
}

const std::vector<double> a = randomNumbers(scalarCount, 1);
const std::vector<double> b = randomNumbers(scalarCount, 2);
const std::vector<double> tensors = randomNumbers(6 * tensorCount, 3);
std::vector<double> c(scalarCount);

/// Numbers as results on the nodes of one part, named "a" and "b".
class Model {
public:
    Model(std::size_t nodeCount, ResultType type, const std::vector<const std::vector<double>*>& values)
        : m_source(new DataSourceMemory(1)) {
        m_source->addGeometry();
        m_source->addPart(0, "part")->nodes()->set(std::vector<double>(3 * nodeCount), {});
        m_source->addState(StateInfo(1, "state", StateInfo::TIME, 0));
        for (const std::vector<double>* numbers : values) {
            arguments.push_back(m_source->addResult(type, std::string(1, "ab"[arguments.size()]), PER_NODE));
            m_source->setValues(1, arguments.back(), 0, 0, *numbers, nullptr);
        }
        orv::PtrRef<UnstructGridModel> model = new UnstructGridModel;
        model->setDataSource(m_source.get());
        orv::app::Models::instance()->add(model.get());
    }

    /// Loading a result of the model; the first time is here.
    orvbench::Claims::Side loadingOf(const ResultInfo& info) {
        m_source->directory()->setCustomResultInfo(info);
        auto drop = [this, info] { m_source->state(0)->removeResult(info); };
        auto load = [this, info] {
            DataStateSpec spec;
            spec.setResultIds({info});
            Error error;
            if (!m_source->loadDataState(1, spec, &error)) {
                std::fprintf(stderr, "%s\n", error.message().toStdString().c_str());
                std::exit(1);
            }
        };
        load();
        return {drop, load};
    }

    std::vector<ResultInfo> arguments;

private:
    orv::PtrRef<DataSourceMemory> m_source;
};

void nothing() {}

void bareSum() {
    const double* first = a.data();
    const double* second = b.data();
    double* sum = c.data();
    for (std::size_t i = 0; i < scalarCount; ++i) {
        sum[i] = first[i] + second[i];
    }
    benchmark::DoNotOptimize(c.data());
    benchmark::ClobberMemory();
}

/// Missing values included.
void bareVonMises() {
    const double* d = tensors.data();
    for (std::size_t i = 0; i < tensorCount; ++i, d += 6) {
        bool undefined = false;
        for (int k = 0; k < 6; ++k) {
            undefined = undefined || !(d[k] < 1e308);
        }
        c[i] = undefined
                   ? orv::UNDEFINED_DOUBLE
                   : std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2] - (d[0] * d[1] + d[1] * d[2] + d[0] * d[2]) +
                               3 * (d[3] * d[3] + d[4] * d[4] + d[5] * d[5]));
    }
}

void barePrincipals() {
    for (std::size_t i = 0; i < tensorCount; ++i) {
        c[i] = VTComputePrincipal(tensors.data() + 6 * i, 6, 0);
    }
}

void bareDirections() {
    for (std::size_t i = 0; i < tensorCount; ++i) {
        VTVector vectors[3];
        VTComputePrincipals3D(tensors.data() + 6 * i, nullptr, vectors);
        c[3 * i] = vectors[0].x;
        c[3 * i + 1] = vectors[0].y;
        c[3 * i + 2] = vectors[0].z;
    }
}

class Calculator {
public:
    Calculator() {
        // One thread for all. The header that would say so does not compile as C++20.
        setenv("VTK_SMP_MAX_THREADS", "1", 1);
        vtkNew<vtkPolyData> data;
        vtkNew<vtkPoints> points;
        points->SetNumberOfPoints(scalarCount);
        data->SetPoints(points);
        add(data, "a", a);
        add(data, "b", b);
        m_calculator->SetInputData(data);
        m_calculator->AddScalarArrayName("a");
        m_calculator->AddScalarArrayName("b");
        m_calculator->SetFunction("a+b");
        m_calculator->SetResultArrayName("c");
    }

    void run() {
        m_calculator->Modified();
        m_calculator->Update();
        vtkDataArray* sums = m_calculator->GetPolyDataOutput()->GetPointData()->GetArray("c");
        if (!sums || sums->GetTuple1(scalarCount - 1) != a.back() + b.back()) {
            std::fprintf(stderr, "the calculator has computed something else\n");
            std::exit(1);
        }
    }

private:
    static void add(vtkPolyData* data, const char* name, const std::vector<double>& values) {
        vtkNew<vtkDoubleArray> array;
        array->SetName(name);
        array->SetArray(const_cast<double*>(values.data()), static_cast<vtkIdType>(values.size()), 1);
        data->GetPointData()->AddArray(array);
    }

    vtkNew<vtkArrayCalculator> m_calculator;
};

/// The time of one operator while an expression of a thousand is built, beside a limit in milliseconds.
void reportExpression(const ResultInfo& first) {
    const std::clock_t start = std::clock();
    ResultInfo chain = first;
    for (int i = 0; i < chainLength; ++i) {
        chain = chain + first;
    }
    const double milliseconds = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / chainLength;
    std::printf("ratio one operator of %d: %.4f ms/1 ms = %.2f (limit 1.00)\n", chainLength, milliseconds,
                milliseconds);
}

} // namespace

int main(int argc, char** argv) {
    c.assign(scalarCount, 1.0);
    Model scalars(scalarCount, SCALAR, {&a, &b});
    Model stresses(tensorCount, SYMMETRIC_TENSOR, {&tensors});
    Calculator calculator;
    orvbench::Claims claims(7);
    const ResultInfo sum = scalars.arguments[0] + scalars.arguments[1];
    claims.add("a+b(10M)", 1 / 0.6, scalars.loadingOf(sum), {nothing, bareSum});
    claims.add("a+b(10M),vtkArrayCalculator", 0.05, scalars.loadingOf(sum), {nothing, [&] { calculator.run(); }});
    const ResultInfo& stress = stresses.arguments[0];
    const std::vector<ResultInfo> principal = principals(stress);
    claims.add("vonMises(2M)", 1.3, stresses.loadingOf(vonMises(stress)), {nothing, bareVonMises});
    claims.add("principals(2M)", 1.3, stresses.loadingOf(principal[3]), {nothing, barePrincipals});
    claims.add("principals(2M)directions", 1.3, stresses.loadingOf(principal[0]), {nothing, bareDirections});
    const int result = claims.run(argc, argv);
    reportExpression(scalars.arguments[0]);
    return result;
}
