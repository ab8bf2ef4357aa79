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
    target_include_directories(library_unloader PRIVATE "${PROJECT_SOURCE_DIR}/tests/support")
    add_test(NAME registered_types_outlive_unloading
        COMMAND library_unloader "$<TARGET_FILE:j6Core>")
    set_tests_properties(registered_types_outlive_unloading PROPERTIES LABELS packaging)
endif()

get_property(public_headers GLOBAL PROPERTY J6CORE_PUBLIC_HEADERS)
set(includes)
foreach(header IN LISTS public_headers)
    get_filename_component(name "${header}" NAME)
    string(APPEND includes "#include <${name}>\n")
endforeach()
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/abi/all_headers.h" CONTENT "${includes}")

add_library(abi_classes OBJECT EXCLUDE_FROM_ALL public_members.cpp)
target_include_directories(abi_classes PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/abi")
target_link_libraries(abi_classes PRIVATE j6Core::j6Core j6_strict)

# What is inlined, and so is no symbol, depends on compiler and optimisation, and sizes on the processor.
if(NOT BUILD_SHARED_LIBS OR NOT CMAKE_BUILD_TYPE STREQUAL "Release" OR J6CORE_SANITIZE OR J6CORE_COVERAGE
        OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU"
        OR NOT CMAKE_SYSTEM_NAME STREQUAL "Linux" OR NOT CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    message(STATUS "The binary interface is NOT compared with abi/: the lists are those of the shared release "
        "build by GCC for x86-64 Linux.")
    return()
endif()

# Compiling it writes the dump, which a compiler cache would not.
set(class_dump "${CMAKE_CURRENT_BINARY_DIR}/abi/classes.dump")
set_target_properties(abi_classes PROPERTIES EXCLUDE_FROM_ALL FALSE CXX_COMPILER_LAUNCHER "")
target_compile_options(abi_classes PRIVATE "-fdump-lang-class=${class_dump}")

add_test(NAME binary_interface
    COMMAND "${SH_PROGRAM}" "${CMAKE_CURRENT_SOURCE_DIR}/check_abi" "${CMAKE_NM}" "$<TARGET_FILE:j6Core>"
        "${class_dump}" "${PROJECT_SOURCE_DIR}/abi" "${CMAKE_CURRENT_BINARY_DIR}/abi")
set_tests_properties(binary_interface PROPERTIES LABELS packaging)
