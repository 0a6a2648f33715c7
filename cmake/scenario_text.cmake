# embed_scenario(target file): puts the scenario's text into the header "builtin_scenario_text.h", which
# `target` can then include.
function(embed_scenario target file)
  set(source ${PROJECT_SOURCE_DIR}/${file})
  set(folder ${PROJECT_BINARY_DIR}/generated)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  file(CONFIGURE OUTPUT ${folder}/builtin_scenario_text.h @ONLY CONTENT
"#pragma once

constexpr char BuiltinScenarioText[] = R\"a8000(@text@)a8000\";
")
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
