# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the scripts beside it: where things are, which Debian packages each task needs, how to get them.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$root"
jobs=$(nproc)

# tzdata and locales: the tests name time zones and a locale that a minimal system lacks.
packages_build=(g++ cmake ninja-build ccache pkg-config qtbase5-dev qttools5-dev-tools git tzdata locales)
packages_lint=(clang clang-format clang-tidy clazy cppcheck libbenchmark-dev libclang-dev llvm-dev jq)
packages_fuzz=(clang libclang-rt-dev)
packages_coverage=(gcovr)
packages_memcheck=(valgrind)
# The compiler with the threads of C++; wine draws in what runs 64-bit programs.
packages_windows=(g++-mingw-w64-x86-64-posix wine wine64 dpkg-dev make perl)

die()
{
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# missing_packages NAME...: those that are not installed, one per line.
missing_packages()
{
    local name
    for name in "$@"; do
        [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$name" 2>/dev/null) == installed ]] \
            || echo "$name"
    done
}

# require_packages NAME...: installs what is missing, as root or through sudo; otherwise says what to run and
# stops.
require_packages()
{
    if ! command -v dpkg-query >/dev/null; then
        echo "Not a Debian system; please have the counterparts of these installed: $*" >&2
        return
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        command -v sudo >/dev/null || die "packages are missing; please run: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update --quiet=2 </dev/null \
        && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install --quiet=2 --yes --no-install-recommends "${missing[@]}" </dev/null \
        || die "could not install; please run as root: apt-get install ${missing[*]}"
}

# configure_preset PRESET [CMAKE ARGUMENT...]: warnings are errors where CI=true.
configure_preset()
{
    local werror=OFF
    [[ ${CI:-} == true ]] && werror=ON
    cmake --preset "$1" "-DJ6CORE_WERROR=$werror" "${@:2}"
}

# build_preset PRESET [BUILD ARGUMENT...]: configures and builds in build/PRESET.
build_preset()
{
    configure_preset "$1"
    cmake --build --preset "$1" --parallel "$jobs" "${@:2}"
}

# report_skips LOG: names what was skipped, with the reasons. A test of which some functions were skipped
# passes in ctest's eyes.
report_skips()
{
    if [[ -f $1 ]] && grep --quiet --text '^SKIP   : ' "$1"; then
        echo "NOT CHECKED, because these were skipped:"
        sed --quiet 's/^SKIP   : /  /p' "$1"
    fi
}

# run_tests PRESET [CTEST ARGUMENT...]: through the command that a script has put into test_runner, if any.
test_runner=()
run_tests()
{
    local log=build/$1/Testing/Temporary/LastTest.log status=0
    rm -f "$log"
    "${test_runner[@]}" ctest --preset "$1" --parallel "$jobs" "${@:2}" || status=$?
    report_skips "$log"
    return "$status"
}
