// Opens a result file, lists what it holds and reads one result: the smallest useful program.

#include "OrvApp/OrvApp.h"

#include <algorithm>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: first_steps FILE\n";
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
    auto* parts = orv::app::Parts::instance();
    auto* results = orv::app::Results::instance();

    states->setCurrentIndex(states->count() - 1);
    std::cout << "last of " << states->count() << " states: " << states->currentInfo().name().toStdString() << '\n';

    for (size_t i = 0; i < parts->count(); ++i) {
        parts->setCurrentIndex(i);
        const orv::ug::DataPartDisplacement* motion = results->currentDataPartDisplacement("DISP");
        double lowest = 0.0;
        for (size_t node = 0; motion && node < motion->itemCount(); ++node) {
            lowest = std::min(lowest, motion->value(node).z());
        }
        std::cout << parts->currentInfo().name().toStdString() << " goes down by " << -lowest << '\n';
    }
    return 0;
}
