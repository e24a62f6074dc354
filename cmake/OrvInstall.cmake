# What `cmake --install` lays down: the library, its headers, the command, and what other build systems ask for.
include(CMakePackageConfigHelpers)

set(ORV_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/OrvApp")

install(TARGETS OrvAppLibrary EXPORT OrvAppTargets COMPONENT development)
install(EXPORT OrvAppTargets NAMESPACE OrvApp:: DESTINATION "${ORV_PACKAGE_DIR}" COMPONENT development)

write_basic_package_version_file("${PROJECT_BINARY_DIR}/OrvAppConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
file(WRITE "${PROJECT_BINARY_DIR}/OrvAppConfig.cmake"
  "include(\"\${CMAKE_CURRENT_LIST_DIR}/OrvAppTargets.cmake\")\n")
install(FILES "${PROJECT_BINARY_DIR}/OrvAppConfig.cmake" "${PROJECT_BINARY_DIR}/OrvAppConfigVersion.cmake"
  DESTINATION "${ORV_PACKAGE_DIR}" COMPONENT development)

configure_file("${PROJECT_SOURCE_DIR}/cmake/OrvApp.pc.in" "${PROJECT_BINARY_DIR}/OrvApp.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/OrvApp.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
