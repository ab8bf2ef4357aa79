# SPDX-License-Identifier: MIT
# Installs both flavours of the library below the build directory and uses each from outside: through
# find_package and through pkg-config. The flavour that this build does not make is built beside it, the
# library alone.

find_program(PKG_CONFIG_PROGRAM NAMES pkg-config pkgconf)
mark_as_advanced(PKG_CONFIG_PROGRAM)
set(package_steps cmake)
if(PKG_CONFIG_PROGRAM)
    list(APPEND package_steps pkgconfig)
else()
    message(WARNING "No pkg-config here: j6Core.pc is not tested.")
endif()

# j6_package_test(<name> STEP <step> FLAVOUR <shared|static>) runs one step of check_package.cmake.
function(j6_package_test name)
    cmake_parse_arguments(ARG "" "STEP;FLAVOUR" "" ${ARGN})
    add_test(NAME ${name}
        COMMAND "${CMAKE_COMMAND}"
            "-DSTEP=${ARG_STEP}"
            "-DFLAVOUR=${ARG_FLAVOUR}"
            "-DBUILT_SHARED=${BUILD_SHARED_LIBS}"
            "-DSOURCE_DIR=${PROJECT_SOURCE_DIR}"
            "-DBUILD_DIR=${PROJECT_BINARY_DIR}"
            "-DWORK_DIR=${CMAKE_CURRENT_BINARY_DIR}/${ARG_FLAVOUR}"
            "-DVERSION=${PROJECT_VERSION}"
            "-DLIBDIR=${CMAKE_INSTALL_LIBDIR}"
            "-DBINDIR=${CMAKE_INSTALL_BINDIR}"
            "-DDATADIR=${CMAKE_INSTALL_DATADIR}"
            "-DGENERATOR=${CMAKE_GENERATOR}"
            "-DCXX_COMPILER=${CMAKE_CXX_COMPILER}"
            "-DCXX_FLAGS=${CMAKE_CXX_FLAGS}"
            "-DBUILD_TYPE=$<CONFIG>"
            "-DPKG_CONFIG=${PKG_CONFIG_PROGRAM}"
            "-DWINDOWS=${WIN32}"
            "-DLAUNCHER=${J6CORE_TEST_LAUNCHER}"
            "-DTOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}"
            "-DQT_PREFIX=${J6CORE_QT_PREFIX}"
            -P "${CMAKE_CURRENT_SOURCE_DIR}/check_package.cmake")
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 LABELS packaging)
endfunction()

foreach(flavour IN ITEMS shared static)
    j6_package_test(package_install_${flavour} STEP install FLAVOUR ${flavour})
    set_tests_properties(package_install_${flavour} PROPERTIES FIXTURES_SETUP package_${flavour})
    foreach(step IN LISTS package_steps)
        j6_package_test(package_${step}_${flavour} STEP ${step} FLAVOUR ${flavour})
        set_tests_properties(package_${step}_${flavour} PROPERTIES FIXTURES_REQUIRED package_${flavour})
    endforeach()
endforeach()

j6_package_test(package_refuses_other_major STEP refusal FLAVOUR shared)
set_tests_properties(package_refuses_other_major PROPERTIES FIXTURES_REQUIRED package_shared)

# The tool is installed beside the flavour that this build makes.
if(TARGET j6tool)
    if(BUILD_SHARED_LIBS)
        set(own_flavour shared)
    else()
        set(own_flavour static)
    endif()
    j6_package_test(package_tool_runs STEP tool FLAVOUR ${own_flavour})
    set_tests_properties(package_tool_runs PROPERTIES FIXTURES_REQUIRED package_${own_flavour})
endif()
