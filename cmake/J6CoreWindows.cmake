# SPDX-License-Identifier: MIT
# Programs on Windows find their libraries beside them or along PATH. The project's own are all put into one
# directory; tests that are built elsewhere than on Windows run under Wine, with the other ones in its PATH.

if(NOT WIN32 OR NOT J6CORE_IS_TOP_LEVEL)
    return()
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

# Where the libraries of Qt and of the compiler are.
get_target_property(qmake_program Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_directory "${qmake_program}" DIRECTORY)
set(J6CORE_DLL_DIRECTORIES "${qt_directory}")
get_filename_component(J6CORE_QT_PREFIX "${qt_directory}" DIRECTORY)
if(MINGW)
    foreach(name IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        # The compiler answers with the bare name of a file that it does not find.
        if(NOT IS_ABSOLUTE "${file}" OR NOT EXISTS "${file}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where ${name} is")
        endif()
        get_filename_component(file "${file}" REALPATH)
        get_filename_component(directory "${file}" DIRECTORY)
        list(APPEND J6CORE_COMPILER_DLLS "${file}")
        list(APPEND J6CORE_DLL_DIRECTORIES "${directory}")
    endforeach()
    list(REMOVE_DUPLICATES J6CORE_DLL_DIRECTORIES)
endif()

if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    list(JOIN J6CORE_DLL_DIRECTORIES ":" path)
    # In front of a path of this machine that a test is compiled with: its drive there.
    set(J6CORE_TEST_DRIVE "Z:")
    set(CMAKE_CROSSCOMPILING_EMULATOR
        "${PROJECT_SOURCE_DIR}/scripts/run-in-wine;${CMAKE_RUNTIME_OUTPUT_DIRECTORY}:${path}")
endif()
if(NOT J6CORE_TEST_LAUNCHER)
    set(J6CORE_TEST_LAUNCHER ${CMAKE_CROSSCOMPILING_EMULATOR})
endif()

# j6_install_runtime(): the installed directory of the programs is complete. What they and the library need
# lies beside them, except what belongs to Windows.
function(j6_install_runtime)
    install(FILES $<TARGET_FILE:Qt5::Core> $<TARGET_FILE:Qt5::Network> ${J6CORE_COMPILER_DLLS}
        DESTINATION "${CMAKE_INSTALL_BINDIR}")
endfunction()
