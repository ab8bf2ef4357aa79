# SPDX-License-Identifier: MIT
# What programs and the loader see of the shared library: no symbol but the declared ones in any build, exactly
# the committed lists in the build that they were made from (scripts/abi --update makes them anew).

if(BUILD_SHARED_LIBS)
    add_test(NAME exported_symbols
        COMMAND "${SH_PROGRAM}" "${CMAKE_CURRENT_SOURCE_DIR}/check_exported_symbols" "${CMAKE_NM}"
            "$<TARGET_FILE:j6Core>" "${PROJECT_SOURCE_DIR}/include")
    set_tests_properties(exported_symbols PROPERTIES LABELS packaging)

    add_executable(library_unloader library_unloader.cpp)
    target_link_libraries(library_unloader PRIVATE Qt5::Core j6_strict)
    add_test(NAME registered_types_outlive_unloading
        COMMAND library_unloader "$<TARGET_FILE:j6Core>")
    set_tests_properties(registered_types_outlive_unloading PROPERTIES LABELS packaging)
endif()

# What is inlined, and so is no symbol, depends on compiler and optimisation, and sizes on the processor.
set(lists_apply FALSE)
if(BUILD_SHARED_LIBS AND CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT J6CORE_SANITIZE AND NOT J6CORE_COVERAGE
        AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"
        AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    set(lists_apply TRUE)
endif()
if(NOT lists_apply)
    message(STATUS "The binary interface is NOT compared with abi/: the lists are those of the shared release "
        "build by GCC for x86-64 Linux.")
    return()
endif()

get_property(public_headers GLOBAL PROPERTY J6CORE_PUBLIC_HEADERS)
set(includes)
foreach(header IN LISTS public_headers)
    get_filename_component(name "${header}" NAME)
    string(APPEND includes "#include <${name}>\n")
endforeach()
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/abi/all_headers.h" CONTENT "${includes}")

# Compiling it writes the dump, which a compiler cache would not.
set(class_dump "${CMAKE_CURRENT_BINARY_DIR}/abi/classes.dump")
add_library(abi_classes OBJECT public_members.cpp)
set_target_properties(abi_classes PROPERTIES CXX_COMPILER_LAUNCHER "")
target_include_directories(abi_classes PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/abi")
target_link_libraries(abi_classes PRIVATE j6Core::j6Core j6_strict)
target_compile_options(abi_classes PRIVATE "-fdump-lang-class=${class_dump}")

add_test(NAME binary_interface
    COMMAND "${SH_PROGRAM}" "${CMAKE_CURRENT_SOURCE_DIR}/check_abi" "${CMAKE_NM}" "$<TARGET_FILE:j6Core>"
        "${class_dump}" "${PROJECT_SOURCE_DIR}/abi" "${CMAKE_CURRENT_BINARY_DIR}/abi")
set_tests_properties(binary_interface PROPERTIES LABELS packaging)
