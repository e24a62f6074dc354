// Nothing but the headers that Tests/CMakeLists.txt precompiles for all tests.
