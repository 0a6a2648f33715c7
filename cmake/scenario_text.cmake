# embed_scenario(target file): makes the scenario's text a header that `target` can include as
# "builtin_scenario_text.h".
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
