# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the scripts beside it: where things are, which Debian packages each task needs, and how to get them.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$root"
jobs=$(nproc)

# tzdata and locales: the tests name time zones and a locale that a minimal system lacks.
packages_build=(g++ cmake ninja-build ccache pkg-config qtbase5-dev git tzdata locales)
packages_lint=(clang clang-format clang-tidy clazy cppcheck libbenchmark-dev jq)
packages_coverage=(gcovr)
packages_memcheck=(valgrind)

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
        [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || echo "$name"
    done
}

# require_packages NAME...: installs what is missing, as root or through sudo; otherwise says what to run and stops.
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

# build_preset NAME [CMAKE ARGUMENT...]: configures and builds build/NAME. Warnings are errors where CI=true.
build_preset()
{
    local preset=$1 werror=OFF
    shift
    [[ ${CI:-} == true ]] && werror=ON
    cmake --preset "$preset" "-DJ6CORE_WERROR=$werror" "$@"
    cmake --build --preset "$preset" --parallel "$jobs"
}

# run_tests PRESET [CTEST ARGUMENT...]
run_tests()
{
    local preset=$1
    shift
    ctest --preset "$preset" --parallel "$jobs" "$@"
}
