# Run by cpack on its finished packages, for what CMake 3.25 has no variable for: that they can be installed for several
# processors at once, that the trigger takes the place of the scripts that call ldconfig, and that the debug symbols
# share the library's documents. The checksums of the debug symbols are wrong as cpack leaves them.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${CPACK_TOPLEVEL_DIRECTORY}/repacked)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${tree}/DEBIAN/control control)
  string(REPLACE "\nPriority:" "\nMulti-Arch: same\nPriority:" control "${control}")
  file(WRITE ${tree}/DEBIAN/control "${control}")
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  if(package MATCHES "/([^/_]+)-dbgsym_")
    file(MAKE_DIRECTORY ${tree}/usr/share/doc)
    file(CREATE_LINK ${CMAKE_MATCH_1} ${tree}/usr/share/doc/${CMAKE_MATCH_1}-dbgsym SYMBOLIC)
  endif()
  execute_process(COMMAND sh -c "find usr -type f -exec md5sum {} + >DEBIAN/md5sums" WORKING_DIRECTORY ${tree}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND dpkg-deb --root-owner-group --build ${tree} ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
