include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/FrameworkBase)

configure_package_config_file(cmake/FrameworkBaseConfig.cmake.in ${PROJECT_BINARY_DIR}/FrameworkBaseConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/FrameworkBaseConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/FrameworkBaseConfig.cmake ${PROJECT_BINARY_DIR}/FrameworkBaseConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)
install(EXPORT FrameworkBase NAMESPACE FrameworkBase:: FILE FrameworkBaseTargets.cmake
  DESTINATION ${package_folder} COMPONENT development)
