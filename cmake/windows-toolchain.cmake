# SPDX-License-Identifier: MIT
# Builds for 64-bit Windows on Debian, with its mingw-w64 and the Qt of scripts/windows-qt, whose directory
# CMAKE_PREFIX_PATH names; scripts/test-windows does all of it.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The compiler that comes with the threads of C++.
set(j6_windows_host x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER ${j6_windows_host}-g++-posix)
set(CMAKE_RC_COMPILER ${j6_windows_host}-windres)

# Programs of this machine, everything else from there.
set(CMAKE_FIND_ROOT_PATH /usr/${j6_windows_host} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
