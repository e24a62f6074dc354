# The project's own words for its targets: floors, the one shared library, tests, benchmarks and fuzz targets.

add_library(orv_options INTERFACE)
target_compile_features(orv_options INTERFACE cxx_std_20)
target_include_directories(orv_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(orv_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
  $<$<BOOL:${ORV_WARNINGS_AS_ERRORS}>:-Werror>)
if(ORV_SANITIZE)
  target_compile_options(orv_options INTERFACE
    -fsanitize=${ORV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orv_options INTERFACE -fsanitize=${ORV_SANITIZE})
endif()
if(ORV_BUILD_FUZZERS)
  # The fuzzer finds its way by what the code under test executes.
  target_compile_options(orv_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

set_property(GLOBAL PROPERTY ORV_FLOORS "")

# orv_add_floor(NAME SOURCES ... HEADERS ... [PRIVATE_LIBRARIES ...])
# A folder of the ladder. HEADERS are the public ones, which are installed; private headers (*_p.h) are not named.
# The tests link the archive and so reach what the shared library hides.
function(orv_add_floor name)
  cmake_parse_arguments(FLOOR "" "" "SOURCES;HEADERS;PRIVATE_LIBRARIES" ${ARGN})
  get_property(below GLOBAL PROPERTY ORV_FLOORS)
  add_library(${name} STATIC ${FLOOR_SOURCES})
  set_target_properties(${name} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PUBLIC orv_options ${below} PRIVATE ${FLOOR_PRIVATE_LIBRARIES})
  set_property(GLOBAL APPEND PROPERTY ORV_FLOORS ${name})
  install(FILES ${FLOOR_HEADERS}
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/OrvApp-${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}/${name}"
    COMPONENT development)
endfunction()

# libOrvApp.so holds all floors; OrvApp::OrvApp is what programs, examples and the command link.
function(orv_add_shared_library)
  get_property(floors GLOBAL PROPERTY ORV_FLOORS)
  add_library(OrvAppLibrary SHARED)
  add_library(OrvApp::OrvApp ALIAS OrvAppLibrary)
  foreach(floor IN LISTS floors)
    target_sources(OrvAppLibrary PRIVATE $<TARGET_OBJECTS:${floor}>)
    target_link_libraries(OrvAppLibrary PRIVATE $<BUILD_INTERFACE:${floor}>)
  endforeach()
  target_compile_features(OrvAppLibrary INTERFACE cxx_std_20)
  target_include_directories(OrvAppLibrary INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/OrvApp-${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}>")
  set_target_properties(OrvAppLibrary PROPERTIES
    OUTPUT_NAME OrvApp
    EXPORT_NAME OrvApp
    LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()

# The optimiser gains nothing on test bodies, and takes long for them.
set(ORV_TEST_OPTIONS -O0)

# orv_add_tests(NAME files...): the tests of floor NAME, in the folder Tests/NAME.
function(orv_add_tests name)
  add_executable(${name}Tests ${ARGN})
  set_target_properties(${name}Tests PROPERTIES CXX_EXTENSIONS OFF)
  target_link_libraries(${name}Tests PRIVATE ${name} orv_test_paths GTest::gmock_main)
  target_compile_options(${name}Tests PRIVATE ${ORV_TEST_OPTIONS})
  target_precompile_headers(${name}Tests REUSE_FROM orv_test_headers)
  if(ORV_SANITIZE)
    # Each process of its own would take longer to start than the test takes.
    add_test(NAME ${name} COMMAND ${name}Tests --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200)
  else()
    gtest_discover_tests(${name}Tests TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST
      PROPERTIES TIMEOUT 120)
  endif()
endfunction()

# orv_add_benchmark(NAME FLOOR files...): a Google Benchmark program that may look inside FLOOR.
function(orv_add_benchmark name floor)
  add_executable(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
  target_link_libraries(${name} PRIVATE ${floor} benchmark::benchmark)
  set_property(GLOBAL APPEND PROPERTY ORV_BENCHMARKS ${name})
endfunction()

# orv_add_fuzzer(NAME FLOOR files...): a libFuzzer target that may look inside FLOOR.
function(orv_add_fuzzer name floor)
  add_executable(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE ${floor})
endfunction()

# orv_add_module(NAME SOURCES ... PRIVATE_LIBRARIES ...)
# The folder OrvImport<NAME>: libOrvImport<NAME>.so with readers that stand on a heavy library, beside libOrvApp.so and
# opened by it. The tests and fuzz targets link the archive.
function(orv_add_module name)
  cmake_parse_arguments(MODULE "" "" "SOURCES;PRIVATE_LIBRARIES" ${ARGN})
  set(floor OrvImport${name})
  add_library(${floor} STATIC ${MODULE_SOURCES})
  set_target_properties(${floor} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${floor} PUBLIC OrvApp::OrvApp orv_options PRIVATE ${MODULE_PRIVATE_LIBRARIES})
  if(ORV_BUILD_FUZZERS)
    return() # Clang leaves its sanitizers' functions undefined in modules.
  endif()
  add_library(${floor}Module MODULE $<TARGET_OBJECTS:${floor}>)
  set_target_properties(${floor}Module PROPERTIES
    OUTPUT_NAME ${floor}
    LINKER_LANGUAGE CXX
    LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}"
    INSTALL_RPATH "$ORIGIN")
  target_link_options(${floor}Module PRIVATE -Wl,-z,defs)
  target_link_libraries(${floor}Module PRIVATE OrvApp::OrvApp orv_options ${MODULE_PRIVATE_LIBRARIES})
  install(TARGETS ${floor}Module LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
endfunction()
