# What other teams get besides the library and its headers: the CMake package, the pkg-config file, and an archive and
# Debian packages of all of it (`cpack`, in the build folder). Everything is found from where it lies, so an installed
# tree can be moved as a whole.
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

install(FILES ${PROJECT_BINARY_DIR}/FrameworkBaseConfig.cmake ${PROJECT_BINARY_DIR}/FrameworkBaseConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)
install(EXPORT FrameworkBase NAMESPACE FrameworkBase:: FILE FrameworkBaseTargets.cmake
  DESTINATION ${package_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/FrameworkBase.pc DESTINATION ${pkgconfig_folder} COMPONENT development)

if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME FrameworkBase-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_VENDOR "Tolvex")
set(CPACK_PACKAGE_CONTACT "FrameworkBase team <framework-base@tolvex.invalid>")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageOptions.cmake)

# Three Debian packages: the stripped library, what is needed to build against it, and the debug symbols. The first
# tells packages of programs that link the library what they depend on.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  list(APPEND CPACK_GENERATOR DEB)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(runtime_package libframeworkbase${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The library that programs load.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libframeworkbase-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package and pkg-config file.")
include(CPack)
