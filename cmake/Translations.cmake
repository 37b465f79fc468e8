# The texts of each floor in other languages. English stands in most sources; those in Chinese have English translations.
find_package(Qt5 5.15 REQUIRED COMPONENTS LinguistTools)
find_package(Python3 COMPONENTS Interpreter)

# pm_translations(TARGET FLOOR): compiles FLOOR/translations/FLOOR_<language>.ts into TARGET, as resources :/translations/FLOOR_<language>.qm of a collection that is called translations_FLOOR.
function(pm_translations target floor)
  set(folder ${PROJECT_SOURCE_DIR}/${floor}/translations)
  set(sources ${folder}/${floor}_en.ts ${folder}/${floor}_zh_CN.ts)
  qt5_add_translation(compiled ${sources} OPTIONS -silent)
  set(entries "")
  foreach(file IN LISTS compiled)
    get_filename_component(name ${file} NAME)
    string(APPEND entries "    <file alias=\"${name}\">${file}</file>\n")
  endforeach()
  set(collection ${CMAKE_CURRENT_BINARY_DIR}/translations_${floor}.qrc)
  file(CONFIGURE OUTPUT ${collection} CONTENT
    "<RCC>\n  <qresource prefix=\"/translations\">\n@entries@  </qresource>\n</RCC>\n" @ONLY)
  qt5_add_resources(resources ${collection})
  set_source_files_properties(${resources} PROPERTIES SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE ${resources})
endfunction()

# Takes new texts of the sources into the .ts files and drops those that are gone.
if(Python3_FOUND)
  add_custom_target(update_translations COMMAND Python3::Interpreter
    ${PROJECT_SOURCE_DIR}/packaging/update-translations $<TARGET_FILE:Qt5::lupdate> VERBATIM)
endif()
