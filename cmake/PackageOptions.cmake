# Read by cpack for each kind of package.
if(CPACK_GENERATOR STREQUAL "TGZ")
  # The Debian generator takes the debug symbols into a package of their own; its build id is this library's too.
  set(CPACK_STRIP_FILES ON)
endif()
