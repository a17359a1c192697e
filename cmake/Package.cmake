# The archive, or in a build for /usr the Debian packages, of all that is installed: `cpack`, in the build folder.
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME FrameworkBase-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_VENDOR "Tolvex")
set(CPACK_PACKAGE_CONTACT "FrameworkBase team <framework-base@tolvex.invalid>")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)

# Three packages: the stripped library, what is needed to build against it, and the debug symbols. From the
# first, packages of programs that link the library learn what they depend on.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND NOT APPLE)
  set(runtime_package libframeworkbase${PROJECT_VERSION_MAJOR})
  set(CPACK_GENERATOR DEB)
  set(CPACK_STRIP_FILES OFF) # cpack takes the debug symbols out itself
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/cmake/debian/symbols ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
  set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
  set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The library that programs load.")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libframeworkbase-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
  set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, documents, CMake package and pkg-config file.")
  set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Repack.cmake)

  configure_file(cmake/debian/changelog.in changelog @ONLY)
  execute_process(COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/changelog COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION share/doc/${runtime_package} COMPONENT runtime)
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION share/doc/libframeworkbase-dev COMPONENT development)
endif()
include(CPack)
