// Computes results from the results of a file: how close the material comes to yield in each state, and how many
// load cycles like that it would last. The second takes a function of the program's own.

#include "OrvApp/OrvApp.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>

namespace {

constexpr double yieldStress = 235.0; // MPa, of the steel of data/bracket.frd

/// Basquin's law for steel: the number of load cycles to failure by the amplitude of the stress in MPa.
class CyclesToFailure : public orv::app::MathFunctionCallBack {
public:
    CyclesToFailure() : MathFunctionCallBack("cycles") {}

    double evaluate(double amplitude) override {
        constexpr double fatigueStrength = 900.0; // MPa
        constexpr double exponent = -0.1;
        return 0.5 * std::pow(amplitude / fatigueStrength, 1.0 / exponent);
    }
};

/// Prints the worst values of the current state, over all its parts.
void printCurrentState(const orv::ug::ResultInfo& utilisation, const orv::ug::ResultInfo& cycles) {
    auto* parts = orv::app::Parts::instance();
    auto* results = orv::app::Results::instance();
    double highest = 0.0;
    double fewest = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < parts->count(); ++i) {
        parts->setCurrentIndex(i);
        const orv::ug::DataPartScalar* used = results->currentDataPartScalar(utilisation);
        if (used && used->maximum() != orv::UNDEFINED_DOUBLE) {
            highest = std::max(highest, used->maximum());
        }
        const orv::ug::DataPartScalar* left = results->currentDataPartScalar(cycles);
        if (left) {
            // Undefined is the largest number, so it is never the smallest.
            fewest = std::min(fewest, left->minimum());
        }
    }
    std::cout << orv::app::States::instance()->currentInfo().name().toStdString() << ": " << 100 * highest
              << " % of the yield stress, " << fewest << " cycles\n";
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: derived_results FILE\n";
        return 2;
    }

    orv::Instance instance;
    orv::app::AppComponent::initialize(&instance);

    orv::ug::Error error;
    if (!orv::app::Models::instance()->open(argv[1], &error)) {
        std::cerr << error.message().toStdString() << '\n';
        return 1;
    }

    auto* states = orv::app::States::instance();
    auto* results = orv::app::Results::instance();
    states->setCurrentIndex(states->count() - 1);
    const orv::ug::ResultInfo stress = results->tensorInfo("STRESS");
    if (!stress.isValid()) {
        std::cerr << argv[1] << " has no stresses\n";
        return 1;
    }

    // Nothing is computed here: these are descriptions. The stress after von Mises needs no adding of its own.
    CyclesToFailure toFailure;
    const orv::ug::ResultInfo equivalent = vonMises(stress);
    const orv::ug::ResultInfo utilisation = equivalent / yieldStress;
    const orv::ug::ResultInfo cycles = createMathFunctionResult(equivalent, &toFailure);
    results->add(utilisation, "Utilisation");
    results->add(cycles, "Cycles to failure");

    for (size_t i = 0; i < states->count(); ++i) {
        states->setCurrentIndex(i);
        printCurrentState(utilisation, cycles);
    }
    return 0;
}
