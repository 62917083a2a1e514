# The texts of the user interface in the languages of the users: translations/mivora_LANGUAGE.ts is compiled into a
# resource of the program, so that the build tree, an installation and a moved package all find it.
include_guard()

find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)

# English is written by hand: plural forms, and texts of the sources that say it in another platform's words.
set(MIVORA_LANGUAGES de fr)
set(MIVORA_TRANSLATIONS ${CMAKE_SOURCE_DIR}/translations)

set(ts_files ${MIVORA_LANGUAGES})
list(TRANSFORM ts_files REPLACE "(.+)" "${MIVORA_TRANSLATIONS}/mivora_\\1.ts")
set(lupdate_options -silent -no-obsolete -locations none)

# Brings the .ts files in line with the sources. To be run, and its result translated, after a change of texts.
add_custom_target(
    update_translations
    COMMAND Qt6::lupdate ${lupdate_options} src -ts ${ts_files}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    VERBATIM)

# mivora_translations_resource(VARIABLE): puts the source file of the resource ":/translations" into VARIABLE. To be
# called once, by the module that loads the texts. The target mivora_translations makes the .qm files alone.
function(mivora_translations_resource variable)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/translations)
    file(MAKE_DIRECTORY ${folder})
    set(entries "")
    set(qm_files "")
    foreach(language IN LISTS MIVORA_LANGUAGES ITEMS en)
        set(ts ${MIVORA_TRANSLATIONS}/mivora_${language}.ts)
        set(qm ${folder}/mivora_${language}.qm)
        add_custom_command(
            OUTPUT ${qm}
            COMMAND Qt6::lrelease -silent ${ts} -qm ${qm}
            DEPENDS ${ts}
            VERBATIM)
        list(APPEND qm_files ${qm})
        string(APPEND entries "<file>mivora_${language}.qm</file>")
    endforeach()
    file(CONFIGURE OUTPUT ${folder}/mivora_translations.qrc
         CONTENT "<RCC><qresource prefix=\"/translations\">${entries}</qresource></RCC>\n")
    # Not compressed: a translation is then read where it lies in the program's file, and only the pages of the one
    # that is used are ever loaded.
    qt_add_resources(sources ${folder}/mivora_translations.qrc OPTIONS --no-compress)
    add_custom_target(mivora_translations DEPENDS ${qm_files})
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()
