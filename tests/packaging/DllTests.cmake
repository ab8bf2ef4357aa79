# SPDX-License-Identifier: MIT
# What programs see of the library of Windows: what they see of the one for Linux, and no symbol but the declared
# ones.

find_program(CXXFILT_PROGRAM NAMES c++filt REQUIRED)
mark_as_advanced(CXXFILT_PROGRAM)
set(lister "${CMAKE_CURRENT_SOURCE_DIR}/list_dll_exports")

# j6_dll_test(<name> <script> <arguments behind the lister and the library>)
function(j6_dll_test name script)
    add_test(NAME ${name}
        COMMAND "${CMAKE_COMMAND}" -E env "OBJDUMP=${CMAKE_OBJDUMP}" "CXXFILT=${CXXFILT_PROGRAM}"
            "${SH_PROGRAM}" "${CMAKE_CURRENT_SOURCE_DIR}/${script}" "${lister}" "$<TARGET_FILE:j6Core>" ${ARGN})
    set_tests_properties(${name} PROPERTIES LABELS packaging)
endfunction()

j6_dll_test(exported_classes check_exported_classes)
j6_dll_test(exported_symbols check_exported_symbols "${PROJECT_SOURCE_DIR}/include")
j6_dll_test(exported_members check_dll_exports "${PROJECT_SOURCE_DIR}/abi/j6Core.symbols")

add_executable(library_unloader library_unloader.cpp)
target_link_libraries(library_unloader PRIVATE Qt5::Core j6_strict)
target_include_directories(library_unloader PRIVATE "${PROJECT_SOURCE_DIR}/tests/support")
add_test(NAME registered_types_outlive_unloading
    COMMAND ${J6CORE_TEST_LAUNCHER} $<TARGET_FILE:library_unloader> "$<TARGET_FILE:j6Core>")
set_tests_properties(registered_types_outlive_unloading PROPERTIES LABELS packaging)
