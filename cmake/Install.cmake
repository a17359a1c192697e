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

# The documents, in which a link to a header leads to where that is installed.
file(GLOB documents RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
  ${PROJECT_SOURCE_DIR}/docs/*.md)
foreach(document IN LISTS documents)
  set(source ${PROJECT_SOURCE_DIR}/${document})
  cmake_path(GET document PARENT_PATH folder)
  set(destination ${CMAKE_INSTALL_DOCDIR}/${folder})
  file(RELATIVE_PATH headers /${destination} /${CMAKE_INSTALL_INCLUDEDIR}/FrameworkBase)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} content)
  string(REGEX REPLACE "\\]\\((\\.\\./)?FrameworkBase/" "](${headers}/" content "${content}")
  file(WRITE ${PROJECT_BINARY_DIR}/documents/${document} "${content}")
  install(FILES ${PROJECT_BINARY_DIR}/documents/${document} DESTINATION ${destination} COMPONENT development)
endforeach()
install(DIRECTORY docs TYPE DOC COMPONENT development FILES_MATCHING PATTERN *.svg)
install(DIRECTORY examples TYPE DOC COMPONENT development PATTERN proof EXCLUDE)
