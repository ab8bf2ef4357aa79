# SPDX-License-Identifier: MIT
# cmake -DSTEP=... -P check_package.cmake: one step of the package tests, called by ctest (see
# PackageTests.cmake).
cmake_minimum_required(VERSION 3.20)

set(PREFIX "${WORK_DIR}/prefix")

# How a project that uses the library is configured.
set(CONFIGURATION -G "${GENERATOR}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
if(TOOLCHAIN_FILE)
    list(APPEND CONFIGURATION "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE}")
else()
    list(APPEND CONFIGURATION "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}")
endif()
set(EXECUTABLE_SUFFIX "")
if(WINDOWS)
    set(EXECUTABLE_SUFFIX ".exe")
endif()

# Runs a command; stops the test with the command's output when it fails.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "Failed (${result}): ${command}\n${output}")
    endif()
endfunction()

# The consumer reports the version it was compiled with and the library's answers; anything else fails.
function(require_consumer_output program)
    # Windows finds libraries beside the program.
    if(WINDOWS AND FLAVOUR STREQUAL "shared")
        get_filename_component(directory "${program}" DIRECTORY)
        file(COPY "${PREFIX}/${BINDIR}/" DESTINATION "${directory}")
    endif()
    execute_process(COMMAND ${ARGN} ${LAUNCHER} "${program}${EXECUTABLE_SUFFIX}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    string(REPLACE "\r\n" "\n" output "${output}")
    if(NOT result EQUAL 0 OR NOT output STREQUAL "j6Core ${VERSION}: UNIT_U16 0..65535 VANTORIS\n")
        message(FATAL_ERROR "${program} (${result}) printed '${output}' '${errors}'")
    endif()
endfunction()

# The build directory of the wanted flavour: this build's own or one with the library alone.
function(build_flavour result)
    if((FLAVOUR STREQUAL "shared" AND BUILT_SHARED) OR (FLAVOUR STREQUAL "static" AND NOT BUILT_SHARED))
        set(${result} "${BUILD_DIR}" PARENT_SCOPE)
        return()
    endif()
    set(other "${WORK_DIR}/build")
    if(BUILT_SHARED)
        set(shared OFF)
    else()
        set(shared ON)
    endif()
    run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${other}" ${CONFIGURATION} "-DCMAKE_PREFIX_PATH=${QT_PREFIX}"
        -DBUILD_SHARED_LIBS=${shared} -DJ6CORE_BUILD_TESTS=OFF -DJ6CORE_BUILD_TOOLS=OFF
        -DJ6CORE_BUILD_BENCHMARKS=OFF)
    run("${CMAKE_COMMAND}" --build "${other}" --config "${BUILD_TYPE}" --parallel)
    set(${result} "${other}" PARENT_SCOPE)
endfunction()

# The prefix holds the library of the wanted flavour and none of the other, so that nothing else can be
# linked.
function(require_flavour_only)
    if(WINDOWS OR NOT CMAKE_HOST_UNIX OR CMAKE_HOST_APPLE)
        return() # other names there
    endif()
    file(GLOB libraries RELATIVE "${PREFIX}/${LIBDIR}" "${PREFIX}/${LIBDIR}/*j6Core*.*")
    list(FILTER libraries EXCLUDE REGEX "\\.(cmake|pc)$")
    list(JOIN libraries " " names)
    string(REGEX MATCH "^[0-9]+" major "${VERSION}")
    set(expected_shared "libj6Core.so libj6Core.so.${major} libj6Core.so.${VERSION}")
    set(expected_static "libj6Core.a")
    if(NOT names STREQUAL expected_${FLAVOUR})
        message(FATAL_ERROR "Installed as ${FLAVOUR}: '${names}' instead of '${expected_${FLAVOUR}}'")
    endif()
endfunction()

# The compiled translations are installed for programs that load them themselves.
function(require_translations)
    foreach(language IN ITEMS de)
        set(file "${PREFIX}/${DATADIR}/j6Core/translations/j6Core_${language}.qm")
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "Not installed: ${file}")
        endif()
    endforeach()
endfunction()

# Installs to a fresh prefix and moves that aside: a package that remembers where it was installed fails
# later.
function(step_install)
    build_flavour(built)
    file(REMOVE_RECURSE "${PREFIX}" "${WORK_DIR}/stage")
    run("${CMAKE_COMMAND}" --install "${built}" --prefix "${WORK_DIR}/stage" --config "${BUILD_TYPE}")
    file(RENAME "${WORK_DIR}/stage" "${PREFIX}")
    require_flavour_only()
    require_translations()
endfunction()

function(configure_consumer version result output)
    execute_process(
        COMMAND "${CMAKE_COMMAND}"
            -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${WORK_DIR}/consumer-${version}"
            ${CONFIGURATION} "-DCMAKE_PREFIX_PATH=${PREFIX};${QT_PREFIX}" -DREQUESTED_VERSION=${version}
        RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE text)
    set(${result} "${status}" PARENT_SCOPE)
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(step_cmake)
    file(REMOVE_RECURSE "${WORK_DIR}/consumer-1.0")
    configure_consumer(1.0 result output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "find_package(j6Core 1.0) failed:\n${output}")
    endif()
    file(STRINGS "${WORK_DIR}/consumer-1.0/CMakeCache.txt" found REGEX "^j6Core_DIR:")
    if(NOT found MATCHES "=${PREFIX}/")
        message(FATAL_ERROR "Found another j6Core than the one just installed: ${found}")
    endif()
    run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer-1.0" --config "${BUILD_TYPE}")
    require_consumer_output("${WORK_DIR}/consumer-1.0/consumer")
endfunction()

function(step_refusal)
    file(REMOVE_RECURSE "${WORK_DIR}/consumer-2.0")
    configure_consumer(2.0 result output)
    if(result EQUAL 0)
        message(FATAL_ERROR "find_package(j6Core 2.0) accepted version ${VERSION}")
    endif()
    # Refused for its version, not for some other reason. The message is folded at some width.
    string(REGEX REPLACE "[ \n]+" " " reason "${output}")
    if(NOT reason MATCHES "compatible with requested version \"2\\.0\""
            OR NOT reason MATCHES "version: ${VERSION} ")
        message(FATAL_ERROR "find_package(j6Core 2.0) failed in another way:\n${output}")
    endif()
endfunction()

function(step_pkgconfig)
    set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
    if(TOOLCHAIN_FILE)
        set(ENV{PKG_CONFIG_LIBDIR} "${QT_PREFIX}/lib/pkgconfig")
    endif()
    execute_process(COMMAND "${PKG_CONFIG}" --modversion j6Core
        OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(NOT version STREQUAL VERSION)
        message(FATAL_ERROR "pkg-config gives version '${version}'")
    endif()
    execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs j6Core
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(FLAVOUR STREQUAL "static" AND NOT flags MATCHES "-DJ6CORE_STATIC_DEFINE")
        message(FATAL_ERROR "The static library's flags do not say so: ${flags}")
    endif()
    separate_arguments(flags UNIX_COMMAND "${flags}")
    separate_arguments(own_flags UNIX_COMMAND "${CXX_FLAGS}")
    file(MAKE_DIRECTORY "${WORK_DIR}/pkgconfig-consumer")
    run("${CXX_COMPILER}" -std=c++17 ${own_flags} "${CMAKE_CURRENT_LIST_DIR}/consumer/main.cpp"
        -o "${WORK_DIR}/pkgconfig-consumer/consumer" ${flags})
    require_consumer_output("${WORK_DIR}/pkgconfig-consumer/consumer"
        "${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${PREFIX}/${LIBDIR}")
endfunction()

# An installed program finds its library without help from the environment.
function(step_tool)
    if(WINDOWS)
        run_unpacked_tool()
    else()
        run("${CMAKE_COMMAND}" -E env --unset=LD_LIBRARY_PATH "${PREFIX}/${BINDIR}/j6tool" help)
    endif()
endfunction()

# What an archive of the programs' directory holds is all that a machine needs.
function(run_unpacked_tool)
    set(place "${WORK_DIR}/unpacked")
    file(REMOVE_RECURSE "${place}")
    file(COPY "${PREFIX}/${BINDIR}" DESTINATION "${place}")
    set(launcher ${LAUNCHER})
    if(launcher)
        # Nothing but Windows is along the path.
        list(GET LAUNCHER 0 script)
        set(launcher "${script}" ":")
    endif()
    run(${launcher} "${place}/${BINDIR}/j6tool.exe" help)
    run(${launcher} "${place}/${BINDIR}/j6tool.exe" crc "file=${place}/${BINDIR}/j6tool.exe")
endfunction()

if(STEP STREQUAL "install")
    step_install()
elseif(STEP STREQUAL "cmake")
    step_cmake()
elseif(STEP STREQUAL "pkgconfig")
    step_pkgconfig()
elseif(STEP STREQUAL "refusal")
    step_refusal()
elseif(STEP STREQUAL "tool")
    step_tool()
else()
    message(FATAL_ERROR "Unknown step '${STEP}'")
endif()
