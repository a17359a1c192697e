# What other projects get: the library, its headers and documents, the CMake package and the pkg-config file. Everything
# is found from where it lies, so an installed tree can be moved as a whole.
include(CMakePackageConfigHelpers)

if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR and CMAKE_INSTALL_INCLUDEDIR have to be relative: the package can be moved.")
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/FrameworkBase)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_folder})

configure_package_config_file(cmake/FrameworkBaseConfig.cmake.in ${PROJECT_BINARY_DIR}/FrameworkBaseConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/FrameworkBaseConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/FrameworkBase.pc.in ${PROJECT_BINARY_DIR}/FrameworkBase.pc @ONLY)

install(TARGETS FrameworkBase EXPORT FrameworkBase
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS COMPONENT development
  FILE_SET generated COMPONENT development)
install(EXPORT FrameworkBase NAMESPACE FrameworkBase:: FILE FrameworkBaseTargets.cmake
  DESTINATION ${package_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/FrameworkBaseConfig.cmake ${PROJECT_BINARY_DIR}/FrameworkBaseConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/FrameworkBase.pc DESTINATION ${pkgconfig_folder} COMPONENT development)
install(FILES README.md CHANGELOG.md TYPE DOC COMPONENT development)
install(DIRECTORY docs TYPE DOC COMPONENT development FILES_MATCHING PATTERN *.md PATTERN *.svg)
