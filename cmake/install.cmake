# `cmake --install` puts into the host's folders: the programs, their users' documents, the completions,
# and the scenarios of the simulated adapter.
include(GNUInstallDirs)
set(programs wlanx wlanx-eng wlanx-json)
if(WIN32)
  list(APPEND programs a8000ctl a8000sim)
else()
  list(APPEND programs a8000redact)
endif()
install(TARGETS ${programs} RUNTIME)

file(GLOB documents CONFIGURE_DEPENDS docs/*.md)
list(FILTER documents EXCLUDE REGEX "/(architecture|testing|performance)\\.md$")  # about the sources
install(FILES CHANGELOG.md LICENSE packaging/LICENSE-nlohmann-json.txt docs/wlanx-json.schema.json
  ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(data ${CMAKE_INSTALL_DATADIR})
install(DIRECTORY simulator/scenarios DESTINATION ${data}/${PROJECT_NAME})
install(FILES completions/wlanx.ps1 completions/wlanx-eng.ps1
  DESTINATION ${data}/${PROJECT_NAME}/completions)
foreach(edition wlanx wlanx-eng)
  # bash looks for a file with the program's name in this folder.
  install(FILES completions/${edition}.bash DESTINATION ${data}/bash-completion/completions
    RENAME ${edition})
endforeach()

set(CPACK_PACKAGE_VENDOR "The WLANX Authors")
set(CPACK_PACKAGE_CONTACT ${CPACK_PACKAGE_VENDOR})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
if(NOT WIN32)
  # packaging/ makes the archives for Windows.
  set(CPACK_GENERATOR TGZ)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  include(CPack)
endif()
