#!/usr/bin/env bash
# Builds the sources as they would be built elsewhere. elsewhere.sh KIND...
#   COMPILER (clang++-19, ...)           all programs, warnings as errors, with that compiler
#   i386, s390x                          core, simulator and tools for 32 bits, and for a big-endian machine (emulated):
#                                        all tests of the logic
#   windows                              the same for Windows, cross-compiled and run under Wine
#   SUITE:[COMPILER,...] (trixie:g++-13) all programs in a fresh Debian or Ubuntu of that name, with the toolkit and each of
#                                        these compilers that it has; the tour passes there
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh
. packaging/fresh_system.sh

build=$PWD/build/elsewhere
common=(-G Ninja -DCMAKE_BUILD_TYPE=Release)
command -v ccache >/dev/null && common+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

# with_compiler COMPILER: everything but the tests.
with_compiler() {
    local package=${1/clang++/clang}
    need "${kestrel_packages[@]}" "$package"
    # Without precompiled headers: each source includes what it uses.
    cmake -S . -B "$build/$1" "${common[@]}" -DCMAKE_CXX_COMPILER="$1" -DKESTREL_TESTS=OFF -DKESTREL_PRECOMPILE=OFF \
        -DKESTREL_WARNINGS_ARE_ERRORS=ON >/dev/null
    cmake --build "$build/$1"
}

emulator=() suffix='' # of a program for another system

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
    # By itself and not by ctest, whose time is that of a machine which is not emulated.
    "${emulator[@]}" "$build/$name/kestrel/tests/kestrel_core_tests$suffix" --gtest_brief=1
}

# in_system SUITE [COMPILER...]: everything but the tests, and the tour.
in_system() {
    local suite=$1 mirror=http://deb.debian.org/debian compiler
    shift
    [ "$(id -u)" -eq 0 ] || fail 'only root can make a chroot'
    if grep -qs archive.ubuntu.com "/usr/share/debootstrap/scripts/$suite"; then mirror=https://archive.ubuntu.com/ubuntu; fi
    fresh_system "$suite" "$mirror" || fail 'a fresh system could not be made'
    # Ubuntu has the toolkit there.
    case $mirror in *ubuntu) inside sed -i 's/ main$/ main universe/' /etc/apt/sources.list ;; esac
    inside apt-get update
    inside apt-get install -y --no-install-recommends $(names_in "$suite" "${kestrel_packages[@]}" "${@/clang++/clang}")
    mkdir "$system/kestrel"
    git ls-files -z | xargs -0 cp --parents -t "$system/kestrel"
    for compiler in "${@:-g++}"; do
        inside cmake -S kestrel -B "build-$compiler" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Release \
            -DKESTREL_TESTS=OFF -DKESTREL_WARNINGS_ARE_ERRORS=ON
        inside cmake --build "build-$compiler"
        inside env QT_QPA_PLATFORM=offscreen "build-$compiler/installation/kestrel/kestrel" --demo --tour "tour-$compiler"
        echo "$compiler in $suite: $(inside "$compiler" --version | head -n 1), toolkit $(inside dpkg-query -W -f "\${Version}" qt6-base-dev)"
    done
}

one() {
    case $1 in
        i386)
            need googletest g++-i686-linux-gnu libc6-dev-i386-cross
            # No foreign system to CMake, since this one runs its programs.
            for_system i386 -DCMAKE_CXX_COMPILER=i686-linux-gnu-g++ -DCMAKE_C_COMPILER=i686-linux-gnu-gcc \
                -DCMAKE_EXE_LINKER_FLAGS=-static
            ;;
        s390x)
            need googletest g++-s390x-linux-gnu libc6-dev-s390x-cross qemu-user
            emulator=(qemu-s390x)
            for_system s390x -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=s390x \
                -DCMAKE_CXX_COMPILER=s390x-linux-gnu-g++ -DCMAKE_C_COMPILER=s390x-linux-gnu-gcc \
                -DCMAKE_EXE_LINKER_FLAGS=-static -DCMAKE_CROSSCOMPILING_EMULATOR="${emulator[0]}"
            ;;
        windows)
            need googletest g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix wine64 wine
            export WINEDEBUG=-all WINEPREFIX=$build/windows/wine
            emulator=("$(command -v wine64 || command -v wine)") suffix=.exe
            for_system windows -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix \
                -DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix -DCMAKE_EXE_LINKER_FLAGS=-static \
                -DCMAKE_CROSSCOMPILING_EMULATOR="${emulator[0]}"
            ;;
        g++* | clang++*) with_compiler "$1" ;;
        *:*) in_system "${1%%:*}" $(tr , ' ' <<<"${1#*:}") ;;
        *) fail "what is \"$1\"?" ;;
    esac
}

[ $# -gt 0 ] || fail 'elsewhere.sh KIND...: a compiler such as clang++-19, i386, s390x or windows'
for kind in "$@"; do
    mkdir -p "$build/$kind"
    # Not before "||", which would let it go on after what failed.
    set +e
    (set -e && one "$kind") >"$build/$kind/log" 2>&1
    status=$?
    set -e
    [ "$status" = 0 ] || { tail -n 25 "$build/$kind/log" >&2 && fail "$kind: see $build/$kind/log"; }
    echo "$kind: $(grep -oE 'PASSED  ] [0-9]+ tests' "$build/$kind/log" | sed 's/.*\] //; s/$/ passed/' | grep . || echo 'built without a warning')"
done
