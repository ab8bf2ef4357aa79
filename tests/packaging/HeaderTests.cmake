# SPDX-License-Identifier: MIT
# Compiles every public header as the sole include of a translation unit, all warnings being errors: once as a
# user without any of our definitions does and once with them. Built only when the test runs.

get_property(public_headers GLOBAL PROPERTY J6CORE_PUBLIC_HEADERS)
list(APPEND public_headers
    "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_export.h"
    "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_version.h")

# The unit is named for its header, and so is the compiler's or the build tool's failure.
set(header_units)
foreach(header IN LISTS public_headers)
    get_filename_component(name "${header}" NAME)
    set(unit "${CMAKE_CURRENT_BINARY_DIR}/alone/${name}.cpp")
    file(CONFIGURE OUTPUT "${unit}" CONTENT "#include <${name}>\n")
    list(APPEND header_units "${unit}")
endforeach()

# One run names every header that fails, not just the first.
set(keep_going)
if(CMAKE_GENERATOR MATCHES "Ninja")
    set(keep_going -- -k 0)
elseif(CMAKE_GENERATOR MATCHES "Makefiles")
    set(keep_going -- -k)
endif()

# j6_header_test(<name> <library with the flags>)
function(j6_header_test name flags)
    add_library(${name}_units OBJECT EXCLUDE_FROM_ALL ${header_units})
    target_link_libraries(${name}_units PRIVATE j6Core::j6Core ${flags})
    target_compile_options(${name}_units PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-Werror>)
    # One build tool at a time works in the build directory.
    add_test(NAME ${name}
        COMMAND "${CMAKE_COMMAND}" --build "${PROJECT_BINARY_DIR}" --config $<CONFIG> --parallel
            --target ${name}_units ${keep_going})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 LABELS packaging RESOURCE_LOCK build_directory)
endfunction()

j6_header_test(headers_compile_alone j6_warnings)
j6_header_test(headers_compile_alone_strict j6_strict)
