#include "Tests/Support/TestPaths.h"

namespace orvtest {

std::string sourceFolder() {
    return ORV_SOURCE_DIR;
}

std::string testDataFolder() {
    return sourceFolder() + "/Tests/data";
}

std::string exampleDataFolder() {
    return sourceFolder() + "/Examples/data";
}

} // namespace orvtest
