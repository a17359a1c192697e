# Builds for macOS on Linux; see docs/macos.md. On a Mac the system's own compiler is used, without this file.
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
set(sdk ${root}/build/macos-sdk)
execute_process(COMMAND ${root}/scripts/macos-sdk COMMAND_ERROR_IS_FATAL ANY)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
foreach(language IN ITEMS CXX OBJCXX)
  set(CMAKE_${language}_COMPILER ${sdk}/clang++)
  set(CMAKE_${language}_COMPILER_TARGET x86_64-apple-macos)
endforeach()
set(CMAKE_OSX_SYSROOT ${sdk}/MacOSX.sdk CACHE PATH "")
set(CMAKE_OSX_DEPLOYMENT_TARGET 11.0 CACHE STRING "")

find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool llvm-install-name-tool-14 REQUIRED)
find_program(FRAMEWORKBASE_LINKER NAMES ld64.lld ld64.lld-14 REQUIRED)
foreach(target IN ITEMS EXE SHARED MODULE)
  # The version of Apple's linker whose options this one takes.
  set(CMAKE_${target}_LINKER_FLAGS_INIT "--ld-path=${FRAMEWORKBASE_LINKER} -mlinker-version=711")
endforeach()
# CMake knows this of a Mac that it runs on; with it, install names begin with @rpath.
set(CMAKE_SHARED_LIBRARY_RUNTIME_C_FLAG -Wl,-rpath,)

set(CMAKE_FIND_ROOT_PATH ${sdk}/MacOSX.sdk)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
