# SPDX-License-Identifier: MIT
# One declarative call per thing: j6_subsystem, j6_test, j6_benchmark, j6_fuzzer, j6_tool,
# j6_example.

include(GenerateExportHeader)

set(J6CORE_GENERATED_INCLUDE_DIR "${PROJECT_BINARY_DIR}/include")

# Precompiled: what many sources include of Qt and the standard library; never a header of ours, so that an edit
# compiles again only what includes it. A source still names all that it uses: scripts/lint compiles without.
set(J6CORE_PRECOMPILED_HEADERS
    <QByteArray> <QDataStream> <QDateTime> <QDebug> <QFile> <QLocale> <QMap> <QString> <QStringList> <QVariant>
    <algorithm> <array> <cstring> <limits> <optional>)
set(J6CORE_PRECOMPILED_TEST_HEADERS
    ${J6CORE_PRECOMPILED_HEADERS} <QDir> <QTemporaryDir> <QTest> <QVector> <functional> <memory> <vector>)

# Properties of the library target itself.
function(j6_configure_library target)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        POSITION_INDEPENDENT_CODE ON)
    if(WIN32 AND BUILD_SHARED_LIBS)
        # One name for the library, whatever its compiler calls it by itself.
        set_target_properties(${target} PROPERTIES PREFIX "")
    endif()
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_link_libraries(${target} PUBLIC Qt5::Core Qt5::Network PRIVATE $<BUILD_INTERFACE:j6_every_warning>
        $<BUILD_INTERFACE:j6_strict>)
    target_include_directories(${target}
        PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
            $<BUILD_INTERFACE:${J6CORE_GENERATED_INCLUDE_DIR}>
            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/j6Core>
        PRIVATE
            ${PROJECT_SOURCE_DIR}/src)
    target_precompile_headers(${target} PRIVATE ${J6CORE_PRECOMPILED_HEADERS})
    # Nobody replaces our functions from outside: they call and inline one another directly.
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT WIN32 AND NOT APPLE)
        target_compile_options(${target} PRIVATE -fno-semantic-interposition)
        target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions
            "-Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/j6Core.map"
            # Qt keeps what we register with it: a plugin that uses us may go, we stay.
            -Wl,-z,nodelete)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/j6Core.map")
    endif()
    # The sanitizers' runtime stays undefined in a shared library until a program is linked.
    if(NOT J6CORE_SANITIZE AND NOT WIN32 AND NOT APPLE)
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()

    generate_export_header(${target} EXPORT_FILE_NAME "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_export.h")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/j6Core_version.h.in"
        "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_version.h" @ONLY)
    if(NOT BUILD_SHARED_LIBS)
        target_compile_definitions(${target} PUBLIC J6CORE_STATIC_DEFINE)
    endif()
    set_property(GLOBAL PROPERTY J6CORE_PUBLIC_HEADERS)
endfunction()

# j6_subsystem(HEADERS <public headers, as in include/> SOURCES <files beside the caller>)
function(j6_subsystem)
    cmake_parse_arguments(ARG "" "" "HEADERS;SOURCES" ${ARGN})
    list(TRANSFORM ARG_SOURCES PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    list(TRANSFORM ARG_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/include/")
    target_sources(j6Core PRIVATE ${ARG_SOURCES} ${ARG_HEADERS})
    set_property(GLOBAL APPEND PROPERTY J6CORE_PUBLIC_HEADERS ${ARG_HEADERS})
endfunction()

set(J6CORE_TEST_TIMEOUT 300 CACHE STRING "Seconds that one test may take")
set(J6CORE_TEST_LAUNCHER "" CACHE STRING "Command that runs each test, for example valgrind with its options")

# j6_test(tst_topic [LIBRARIES <more libraries>] [LABELS <labels>]) builds tst_topic.cpp beside the caller and
# registers it as tst_topic. The target <label>_tests builds the tests of a label.
function(j6_test name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES;LABELS" ${ARGN})
    set(moc "${CMAKE_CURRENT_BINARY_DIR}/${name}.moc")
    add_executable(${name} ${name}.cpp "${moc}")
    # One run of moc, where AUTOMOC would start three programs and compile a second, empty source per test.
    qt5_generate_moc(${name}.cpp "${moc}" TARGET ${name})
    target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    target_link_libraries(${name} PRIVATE j6Core::j6Core j6_test_support Qt5::Test j6_strict ${ARG_LIBRARIES})
    target_precompile_headers(${name} REUSE_FROM j6_test_support)
    # Optimised as users of the library are, but the tables of a test, which run once, only so far.
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
    endif()
    add_test(NAME ${name} COMMAND ${J6CORE_TEST_LAUNCHER} $<TARGET_FILE:${name}>)
    # A program that skips all of its tests has not passed.
    set_tests_properties(${name} PROPERTIES TIMEOUT ${J6CORE_TEST_TIMEOUT} LABELS "${ARG_LABELS}"
        SKIP_REGULAR_EXPRESSION "SKIP   : [A-Za-z0-9_]+::initTestCase\\(\\)")
    foreach(label IN LISTS ARG_LABELS)
        if(NOT TARGET ${label}_tests)
            add_custom_target(${label}_tests)
        endif()
        add_dependencies(${label}_tests ${name})
    endforeach()
endfunction()

# j6_benchmark(bench_topic) builds bench_topic.cpp beside the caller.
function(j6_benchmark name)
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE j6Core::j6Core j6_benchmark_support j6_strict)
endfunction()

# j6_fuzzer(topic) builds fuzz_topic: fuzz_main.cpp beside the caller and libFuzzer's main() around the
# traversal of that topic.
function(j6_fuzzer topic)
    add_executable(fuzz_${topic} fuzz_main.cpp)
    target_compile_definitions(fuzz_${topic} PRIVATE J6CORE_FUZZ_TOPIC="${topic}")
    target_link_libraries(fuzz_${topic} PRIVATE j6_traversals j6_strict)
    target_link_options(fuzz_${topic} PRIVATE -fsanitize=fuzzer)
endfunction()

# j6_tool(name <sources>) builds main.cpp beside the caller as an installed command. Everything but main.cpp
# is in the static library <name>_core, so that tests can link it.
function(j6_tool name)
    add_library(${name}_core STATIC ${ARGN})
    target_include_directories(${name}_core PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name}_core PUBLIC j6Core::j6Core PRIVATE j6_every_warning j6_strict)
    target_precompile_headers(${name}_core PRIVATE ${J6CORE_PRECOMPILED_HEADERS})
    add_executable(${name} main.cpp)
    target_link_libraries(${name} PRIVATE ${name}_core j6_every_warning j6_strict)
    install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()

# j6_example(name OUTPUT <regular expression>) builds name.cpp beside the caller and tests that it runs and
# prints that.
function(j6_example name)
    cmake_parse_arguments(ARG "" "OUTPUT" "" ${ARGN})
    add_executable(example_${name} ${name}.cpp)
    target_link_libraries(example_${name} PRIVATE j6Core::j6Core j6_strict)
    add_test(NAME example_${name} COMMAND ${J6CORE_TEST_LAUNCHER} $<TARGET_FILE:example_${name}>)
    # Without a console, a debugger alone sees it on Windows; there it has to run.
    if(NOT WIN32)
        set_tests_properties(example_${name} PROPERTIES PASS_REGULAR_EXPRESSION "^${ARG_OUTPUT}$")
    endif()
endfunction()
