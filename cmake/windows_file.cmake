# add_version_record(target type description [manifest]): gives a program or a driver its version
# record. A program also gets a manifest; by default it is the one by which the program runs with the
# rights of the user who starts it.
function(add_version_record target file_type description)
  get_target_property(suffix ${target} SUFFIX)
  if(NOT suffix)
    set(suffix .exe)
  endif()
  set(name ${target})
  set(file_name ${target}${suffix})
  set(manifest "")
  set(folder ${PROJECT_BINARY_DIR}/generated)
  if(file_type STREQUAL "VFT_APP")
    # Resource type 24 is a manifest; number 1 is that of the process.
    set(manifest_name wlanx.manifest)
    if(ARGN)
      set(manifest_name ${ARGN})
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/packaging/${manifest_name} ${folder} COPYONLY)
    set(manifest "1 24 \"${manifest_name}\"")
  endif()
  string(REPLACE "." ", " resource_version ${PROJECT_VERSION})
  configure_file(${PROJECT_SOURCE_DIR}/packaging/version.rc.in ${folder}/${target}.rc @ONLY)
  # The resource compiler starts a preprocessor and does not quote the whole command line. So it runs in
  # this folder and gets names without a path.
  add_custom_command(OUTPUT ${folder}/${target}.res.obj
    COMMAND ${CMAKE_RC_COMPILER} -O coff ${target}.rc ${target}.res.obj
    DEPENDS ${folder}/${target}.rc ${PROJECT_SOURCE_DIR}/packaging/wlanx.manifest
      ${PROJECT_SOURCE_DIR}/packaging/a8000ctl.manifest
    WORKING_DIRECTORY ${folder} VERBATIM)
  set_source_files_properties(${folder}/${target}.res.obj PROPERTIES
    EXTERNAL_OBJECT TRUE GENERATED TRUE)
  target_sources(${target} PRIVATE ${folder}/${target}.res.obj)
endfunction()
