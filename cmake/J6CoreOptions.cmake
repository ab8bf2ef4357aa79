# SPDX-License-Identifier: MIT
# How every target of the project is compiled.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# What is longer under -O3 is not faster.
string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# The meta-object compiler reads sources only; it need not wait for the libraries that its target links.
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)

# An installed program finds the library of its own tree, wherever that tree stands.
if(NOT WIN32 AND NOT APPLE)
    file(RELATIVE_PATH J6CORE_LIBDIR_FROM_BINDIR
        "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set(CMAKE_INSTALL_RPATH "$ORIGIN/${J6CORE_LIBDIR_FROM_BINDIR}")
endif()

option(J6CORE_CCACHE "Compile through ccache when it is installed" ON)
find_program(J6CORE_CCACHE_PROGRAM ccache)
mark_as_advanced(J6CORE_CCACHE_PROGRAM)
if(J6CORE_CCACHE AND J6CORE_CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without these, ccache does not touch a source that is compiled with a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${J6CORE_CCACHE_PROGRAM}")
endif()

# Warnings and definitions for our own code; consumers never see them.
add_library(j6_warnings INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(j6_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-align -Wsuggest-override
        # Qt's own macros are called without their optional argument, QSKIP("...") for example.
        $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
        $<$<BOOL:${J6CORE_WERROR}>:-Werror>)
endif()

# What clang can warn of, but for what is no fault here; for the library and the tool, in the preset "clang".
option(J6CORE_EVERY_WARNING "Compile the library and the tool with all warnings of clang" OFF)
add_library(j6_every_warning INTERFACE)
if(J6CORE_EVERY_WARNING)
    target_compile_options(j6_every_warning INTERFACE -Weverything
        # The language is C++17.
        -Wno-c++98-compat -Wno-c++98-compat-pedantic
        # Records are laid out for their users; the layouts are tested.
        -Wno-padded
        # Templates are instantiated once, in a source of the library.
        -Wno-undefined-func-template
        # A default stands for all that need nothing of their own; GCC asks for one behind a full list, too.
        -Wno-switch-enum -Wno-covered-switch-default
        # Constants of Qt's classes, catalogues made at first use, and what registers itself with Qt.
        -Wno-global-constructors -Wno-exit-time-destructors
        # Names that are given, such as _Init and createQDateFrom__DATE__.
        -Wno-reserved-identifier
        # Words of Qt in comments that begin with "@".
        -Wno-documentation-unknown-command
        # Qt::Uninitialized is declared so.
        -Wno-used-but-marked-unused
        # Equality of numbers is meant where it stands.
        -Wno-float-equal)
endif()

add_library(j6_strict INTERFACE)
target_link_libraries(j6_strict INTERFACE j6_warnings)
target_compile_definitions(j6_strict INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS)

# Rounding and scaling are stated as plain binary arithmetic: no fused multiply-add, on whatever processor.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    add_compile_options(-ffp-contract=off)
endif()
if(J6CORE_SANITIZE)
    add_compile_options(-fsanitize=${J6CORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${J6CORE_SANITIZE})
endif()
if(J6CORE_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()
