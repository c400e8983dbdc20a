# The packages that building, running and testing need, and their installation. Sourced by ./run, ./test and CI.
# Debian and Ubuntu names.

kestrel_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libqt6svg6 fonts-dejavu-core
    libgtest-dev
    at-spi2-core dbus xvfb
)
kestrel_check_packages=(clang-format clang-tidy desktop-file-utils appstream)
kestrel_package_packages=(dpkg-dev lintian)

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# names_in SUITE PACKAGE...: Ubuntu 22.04 has the toolkit's modules under other names, and one without what it stands on.
names_in() {
    local other='s/$//'
    [ "$1" != jammy ] || other='s/^qt6-(serialport|svg)-dev$/libqt6\16-dev/; s/^qt6-base-dev$/& libgl-dev/'
    printf '%s\n' "${@:2}" | sed -E "$other"
}

# need PACKAGE... installs those that are missing.
need() {
    local missing=()
    command -v dpkg-query >/dev/null || fail "this is no Debian or Ubuntu: please install the like of: $*"
    for package in $(names_in "$(. /etc/os-release && echo "${VERSION_CODENAME:-}")" "$@"); do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "not root and no sudo: please install ${missing[*]}"
        as_root=(sudo)
    fi
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -q &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1; then
        tail -n 5 "$log" >&2
        rm -f "$log"
        fail "these packages could not be installed: ${missing[*]}"
    fi
    rm -f "$log"
}

# build PRESET TARGET... configures the preset when needed and builds the targets.
build() {
    local preset=$1
    shift
    local launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    cmake --preset "$preset" "${launcher[@]}" >/dev/null || fail "the build cannot be configured (preset $preset)"
    cmake --build --preset "$preset" --target "$@" || fail "the build failed (preset $preset)"
}
