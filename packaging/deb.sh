#!/usr/bin/env bash
# Makes the Debian package of these sources in build/package, and has lintian judge it. Arguments go to cmake.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need "${kestrel_packages[@]}" "${kestrel_package_packages[@]}"
# Hardened as the system's packages are, and without the path of this directory. Warnings of another compiler stop nobody.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g
for flags in CPPFLAGS CXXFLAGS LDFLAGS; do export "$flags=$(dpkg-buildflags --get "$flags")"; done
CXXFLAGS+=" $CPPFLAGS -DNDEBUG"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B build/package -G Ninja -DCMAKE_BUILD_TYPE=None -DKESTREL_TESTS=OFF -DCMAKE_INSTALL_PREFIX=/usr \
    "${launcher[@]}" "$@" >/dev/null || fail "the package cannot be configured"
cmake --build build/package || fail "the build failed"
rm -f build/package/*.deb
(cd build/package && cpack -G DEB >cpack.log) || { cat build/package/cpack.log >&2; fail "the package cannot be made"; }
package=$(ls "$PWD"/build/package/*.deb)
lintian --fail-on error,warning --suppress-tags-from-file packaging/lintian_accepted.txt "$package" ||
    fail "lintian found what stands above"
echo "The package: $package"
