# add_version_record(target type description): gives a program or a driver its version record;
# programs also get the manifest that lets them run with the rights of whoever starts them.
function(add_version_record target file_type description)
  get_target_property(suffix ${target} SUFFIX)
  if(NOT suffix)
    set(suffix .exe)
  endif()
  set(name ${target})
  set(file_name ${target}${suffix})
  set(manifest "")
  if(file_type STREQUAL "VFT_APP")
    # Resource type 24 is a manifest, number 1 the one of the process.
    set(manifest "1 24 \"${PROJECT_SOURCE_DIR}/packaging/wlanx.manifest\"")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/packaging/version.rc.in
                 ${PROJECT_BINARY_DIR}/generated/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/generated/${target}.rc)
endfunction()
