# The flags of gcc and clang, in the targets wlanx_options and wlanx_runtime.
target_compile_options(wlanx_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  -fno-exceptions -fno-rtti -ffunction-sections
  # The binaries do not name the folder of the build.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
target_link_options(wlanx_options INTERFACE -Wl,--gc-sections $<$<CONFIG:Release,MinSizeRel>:-s>)

if(WIN32)
  # The C runtime is msvcrt.dll, a part of every 64-bit Windows: a program is one file and needs nothing
  # else. The toolchain's own printf family would only add 25 KB. The C++ headers choose it unless
  # <stdio.h> comes before them.
  target_compile_options(wlanx_runtime INTERFACE -D__USE_MINGW_ANSI_STDIO=0 -include stdio.h)
  target_link_options(wlanx_runtime INTERFACE -static)
  # Wine's debugger cannot read a later format of symbols.
  target_compile_options(wlanx_options INTERFACE $<$<CONFIG:Debug,RelWithDebInfo>:-gdwarf-4>)
  # The program is loaded at a random address of the full range, its data cannot be executed, and its
  # file does not hold the time of the build.
  target_link_options(wlanx_options INTERFACE
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--no-insert-timestamp)
else()
  # Not for Windows: there each section of zeros would take room in the file.
  target_compile_options(wlanx_options INTERFACE -fdata-sections)
endif()

if(WLANX_SANITIZE)
  target_compile_options(wlanx_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(wlanx_options INTERFACE -fsanitize=address,undefined)
endif()
