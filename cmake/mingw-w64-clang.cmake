# Cross build for 64-bit Windows by clang. The headers, the libraries and the linker are those of
# Debian's mingw-w64.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

# clang does not find gcc's own headers and library by itself.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(gcc_folder "${libgcc}" DIRECTORY)
set(headers "${gcc_folder}/include/c++")
set(CMAKE_CXX_FLAGS_INIT "-isystem \"${headers}\" -isystem \"${headers}/x86_64-w64-mingw32\"")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L\"${gcc_folder}\"")

set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
