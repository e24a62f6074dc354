#include "OrvUnstructGrid/SelectionKeeper.h"

namespace orv::ug {
namespace {

SelectionKeeper* theKeeper = nullptr;

} // namespace

SelectionKeeper::~SelectionKeeper() = default;

SelectionKeeper* SelectionKeeper::instance() {
    return theKeeper;
}

void SelectionKeeper::setInstance(SelectionKeeper* keeper) {
    theKeeper = keeper;
}

} // namespace orv::ug
