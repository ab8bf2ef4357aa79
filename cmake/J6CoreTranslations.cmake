# SPDX-License-Identifier: MIT
# The translations of the library's texts, translations/j6Core_<language>.ts, are compiled by lrelease. They
# are installed as files and compiled into the library as resources below ":/j6Core/translations".

set(J6CORE_LANGUAGES de)
set(J6CORE_INSTALL_TRANSLATIONDIR "${CMAKE_INSTALL_DATADIR}/j6Core/translations")

# Qt's own tools lie beside its qmake; a wrapper of the same name elsewhere may lead to another Qt.
get_target_property(qmake_program Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_tools_dir "${qmake_program}" DIRECTORY)
foreach(tool IN ITEMS lrelease lupdate)
    string(TOUPPER "${tool}" variable)
    find_program(${variable}_PROGRAM NAMES ${tool} ${tool}-qt5 HINTS "${qt_tools_dir}")
    mark_as_advanced(${variable}_PROGRAM)
endforeach()
if(NOT LRELEASE_PROGRAM)
    message(FATAL_ERROR
        "lrelease compiles the translations and was not found. It is part of Qt Linguist's tools (Debian: "
        "qttools5-dev-tools); set LRELEASE_PROGRAM where it lies elsewhere.")
endif()

# j6_translations(<language>...) compiles each language and makes it part of the library and its installation.
function(j6_translations)
    set(compiled_dir "${PROJECT_BINARY_DIR}/translations")
    set(resources)
    foreach(language IN LISTS ARGN)
        set(name "j6Core_${language}")
        set(source "${PROJECT_SOURCE_DIR}/translations/${name}.ts")
        set(compiled "${compiled_dir}/${name}.qm")
        add_custom_command(OUTPUT "${compiled}"
            COMMAND "${LRELEASE_PROGRAM}" -silent "${source}" -qm "${compiled}"
            DEPENDS "${source}"
            COMMENT "Compiling ${name}.ts"
            VERBATIM)
        target_sources(j6Core PRIVATE "${compiled}")
        install(FILES "${compiled}" DESTINATION "${J6CORE_INSTALL_TRANSLATIONDIR}")
        string(APPEND resources "    <file>${name}.qm</file>\n")
    endforeach()
    set(collection "${compiled_dir}/j6CoreTranslations.qrc")
    file(CONFIGURE OUTPUT "${collection}" @ONLY CONTENT
        "<RCC>\n  <qresource prefix=\"/j6Core/translations\">\n@resources@  </qresource>\n</RCC>\n")
    set_target_properties(j6Core PROPERTIES AUTORCC ON)
    target_sources(j6Core PRIVATE "${collection}")
endfunction()

j6_translations(${J6CORE_LANGUAGES})

# Brings the .ts files up to date with the sources: new texts appear in them as unfinished.
if(LUPDATE_PROGRAM AND J6CORE_IS_TOP_LEVEL)
    list(TRANSFORM J6CORE_LANGUAGES PREPEND "${PROJECT_SOURCE_DIR}/translations/j6Core_"
        OUTPUT_VARIABLE translation_files)
    list(TRANSFORM translation_files APPEND ".ts")
    add_custom_target(update_translations
        COMMAND "${LUPDATE_PROGRAM}" -locations none -no-obsolete
            "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/include" -ts ${translation_files}
        COMMENT "Reading the texts of the sources"
        VERBATIM)
endif()
