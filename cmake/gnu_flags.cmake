# What gcc and clang are told, by the targets wlanx_options and wlanx_runtime.
target_compile_options(wlanx_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  -fno-exceptions -fno-rtti -ffunction-sections
  # Nothing in the binaries tells where they were built.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
target_link_options(wlanx_options INTERFACE -Wl,--gc-sections $<$<CONFIG:Release,MinSizeRel>:-s>)

if(WIN32)
  # The C runtime is msvcrt.dll: it is a part of every 64-bit Windows, so that a program is one file
  # that needs nothing installed. The toolchain's replacement for its printf family would only add
  # 25 KB; the C++ headers ask for it unless <stdio.h> comes before them.
  target_compile_options(wlanx_runtime INTERFACE -D__USE_MINGW_ANSI_STDIO=0 -include stdio.h)
  target_link_options(wlanx_runtime INTERFACE -static)
  # Wine's debugger reads no later format of symbols.
  target_compile_options(wlanx_options INTERFACE $<$<CONFIG:Debug,RelWithDebInfo>:-gdwarf-4>)
  # Loaded at a random address of the full range, data not executable, no time of the build.
  target_link_options(wlanx_options INTERFACE
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--no-insert-timestamp)
else()
  # In a Windows file each such section of zeros would take its room.
  target_compile_options(wlanx_options INTERFACE -fdata-sections)
endif()

if(WLANX_SANITIZE)
  target_compile_options(wlanx_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(wlanx_options INTERFACE -fsanitize=address,undefined)
endif()
