#pragma once

#include <string>

namespace orvtest {

/// The repository's own folder.
std::string sourceFolder();

/// Tests/data: small files checked in for tests.
std::string testDataFolder();

/// Examples/data: the results that come with the examples.
std::string exampleDataFolder();

} // namespace orvtest
