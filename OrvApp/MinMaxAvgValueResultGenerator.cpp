#include "OrvApp/MinMaxAvgValueResultGenerator.h"

#include "OrvApp/GeneratorWalk_p.h"
#include "OrvCore/Defines.h"

#include <limits>

namespace orv::app {
namespace {

class RunningFigures {
public:
    void add(const double* values, std::size_t valueCount) {
        // A copy, which the values cannot alias, stays in registers.
        RunningFigures held = *this;
        for (std::size_t i = 0; i < valueCount; ++i) {
            if (values[i] != UNDEFINED_DOUBLE) {
                held.add(values[i]);
            }
        }
        *this = held;
    }

    void write(int operation, double* out, std::size_t valueCount) const {
        switch (operation) {
        case 0:
            std::fill_n(out, valueCount, m_minimum);
            break;
        case 1:
            std::fill_n(out, valueCount, m_maximum);
            break;
        case 2:
            std::fill_n(out, valueCount, m_count > 0 ? m_sum / static_cast<double>(m_count) : m_sum);
            break;
        }
    }

private:
    // In this form a NaN takes the place of what is held, and is itself replaced by what follows.
    void add(double value) {
        m_minimum = m_minimum < value ? m_minimum : value;
        m_maximum = m_maximum > value ? m_maximum : value;
        m_sum += value;
        ++m_count;
    }

    double m_minimum = std::numeric_limits<double>::max();
    // Not the lowest double, as the header tells.
    double m_maximum = std::numeric_limits<double>::min();
    double m_sum = 0.0;
    std::size_t m_count = 0;
};

void add(const GeneratorPart& part, RunningFigures* figures) {
    if (part.output.values) {
        figures->add(part.input.values[0], part.input.counts[0] * part.input.dimensions[0]);
    }
}

void write(const GeneratorPart& part, int operation, const RunningFigures& figures) {
    if (part.output.values) {
        figures.write(operation, part.output.values, part.input.counts[0] * part.output.dimension);
    }
    part.refreshRange();
}

unsigned long countInputItems(const ug::DataPart&, const ug::CustomResultGenerator::InputValueData& input) {
    return input.counts[0];
}

} // namespace

MinMaxAvgValueResultGenerator::MinMaxAvgValueResultGenerator(unsigned long argumentCount, int operation, bool perPart)
    : CustomResultGenerator(argumentCount), m_operation(operation), m_perPart(perPart) {}

bool MinMaxAvgValueResultGenerator::generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
                                             const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) {
    if (!GeneratorWalk::begin(*this, dataSource, arguments, state)) {
        return false;
    }
    const std::size_t argCount = arguments.size();
    RVF_ASSERT_MSG(argCount == 1, "Computation of min, max or average value only accepts one argument.");
    const ug::DataSourceDirectory* directory = GeneratorWalk::directoryOf(dataSource);
    RVF_ASSERT(directory);
    if (arguments.empty()) {
        return false;
    }
    const ug::ResultInfo& argInfo = arguments[0];
    // The two blanks in the first message stay: it is the text that people search their logs for.
    RVF_ASSERT_MSG(result.type() == argInfo.type(),
                   "Computation of min, max or average value  is only valid if input and output have the same result "
                   "type (scalar, vector, displacement or symmetric tensor)");
    RVF_ASSERT_MSG(result.resultMapping() == argInfo.resultMapping(),
                   "Computation of min, max or average value is only valid if input and output have the same mapping");
    const GeneratorWalk walk(result, arguments);
    return m_perPart ? generatePerPart(walk, state) : generateOverAllParts(walk, state);
}

bool MinMaxAvgValueResultGenerator::generatePerPart(const GeneratorWalk& walk, ug::DataState* state) const {
    return walk.forEachPart(*this, state, countInputItems, [this](const GeneratorPart& part) {
        RunningFigures figures;
        add(part, &figures);
        write(part, m_operation, figures);
        return true;
    });
}

bool MinMaxAvgValueResultGenerator::generateOverAllParts(const GeneratorWalk& walk, ug::DataState* state) const {
    RunningFigures figures;
    const auto read = [&figures](const GeneratorPart& part) {
        add(part, &figures);
        return true;
    };
    const auto writeAll = [this, &figures](const GeneratorPart& part) {
        write(part, m_operation, figures);
        return true;
    };
    return walk.forEachPart(*this, state, countInputItems, read) &&
           walk.forEachPart(*this, state, countInputItems, writeAll);
}

} // namespace orv::app
