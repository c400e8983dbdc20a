#!/usr/bin/env bash
# Builds the sources as they would be built elsewhere. elsewhere.sh KIND...
#   COMPILER (g++-12, clang++-19, ...)   all programs, warnings as errors, with that compiler
#   i386, s390x                          core, simulator and tools for 32 bits, and for a big-endian machine (emulated):
#                                        all tests of the logic
#   windows                              the same for Windows, cross-compiled and run under Wine
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

build=$PWD/build/elsewhere
common=(-G Ninja -DCMAKE_BUILD_TYPE=Release -DKESTREL_PRECOMPILE=OFF)
command -v ccache >/dev/null && common+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

# with_compiler COMPILER: everything but the tests.
with_compiler() {
    local package=${1/clang++/clang}
    need "${kestrel_packages[@]}" "$package"
    cmake -S . -B "$build/$1" "${common[@]}" -DCMAKE_CXX_COMPILER="$1" -DKESTREL_TESTS=OFF \
        -DKESTREL_WARNINGS_ARE_ERRORS=ON >/dev/null
    cmake --build "$build/$1"
}

# for_system NAME CMAKE-OPTION...: the tests of the logic, with a test framework of that system's own.
for_system() {
    local name=$1 framework=$build/$1/framework
    shift
    cmake -S /usr/src/googletest -B "$framework/build" "${common[@]}" "$@" -DBUILD_GMOCK=OFF \
        -DCMAKE_INSTALL_PREFIX="$framework" >/dev/null
    cmake --build "$framework/build" --target install >/dev/null
    cmake -S . -B "$build/$name/kestrel" "${common[@]}" "$@" -DKESTREL_QT=OFF -DKESTREL_WARNINGS_ARE_ERRORS=ON \
        -DCMAKE_FIND_ROOT_PATH="$framework" -DCMAKE_PREFIX_PATH="$framework" >/dev/null
    cmake --build "$build/$name/kestrel" --target kestrel_core_tests mkindex mklang
    ctest --test-dir "$build/$name/kestrel" --tests-regex '^core$' --output-on-failure
}

one() {
    case $1 in
        i386)
            need googletest g++-i686-linux-gnu libc6-dev-i386-cross
            for_system i386 -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=i686 -DCMAKE_CXX_COMPILER=i686-linux-gnu-g++ \
                -DCMAKE_C_COMPILER=i686-linux-gnu-gcc -DCMAKE_EXE_LINKER_FLAGS=-static
            ;;
        s390x)
            need googletest g++-s390x-linux-gnu libc6-dev-s390x-cross qemu-user
            for_system s390x -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=s390x \
                -DCMAKE_CXX_COMPILER=s390x-linux-gnu-g++ -DCMAKE_C_COMPILER=s390x-linux-gnu-gcc \
                -DCMAKE_EXE_LINKER_FLAGS=-static -DCMAKE_CROSSCOMPILING_EMULATOR=qemu-s390x
            ;;
        windows)
            need googletest g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix wine64 wine
            export WINEDEBUG=-all WINEPREFIX=$build/windows/wine
            for_system windows -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix \
                -DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix -DCMAKE_EXE_LINKER_FLAGS=-static \
                -DCMAKE_CROSSCOMPILING_EMULATOR="$(command -v wine64 || command -v wine)"
            ;;
        g++* | clang++*) with_compiler "$1" ;;
        *) fail "what is \"$1\"?" ;;
    esac
}

[ $# -gt 0 ] || fail 'elsewhere.sh KIND...: a compiler such as clang++-19, i386, s390x or windows'
for kind in "$@"; do
    mkdir -p "$build/$kind"
    (one "$kind") >"$build/$kind/log" 2>&1 || { tail -n 25 "$build/$kind/log" >&2 && fail "$kind: see $build/$kind/log"; }
    ! grep -q 'warning:' "$build/$kind/log" || fail "$kind: warnings, see $build/$kind/log"
    echo "$kind: $(grep -oE '100% tests passed.*' "$build/$kind/log" || echo 'built without a warning')"
done
