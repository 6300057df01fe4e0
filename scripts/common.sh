# What ./run, ./test and ./windows share: installing what is missing, configuring, building. Sourced, not run.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
mkdir -p build || exit 1

# shellcheck disable=SC2034  # the lists are for those who source this file
# Needed to build the program with its tests and benchmarks.
build_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-svg-dev libqt6svg6 libgl-dev pkg-config
    libgsasl-dev # signing in to mail servers
    qtkeychain-qt6-dev # the system's keyring
    libgtest-dev libgmock-dev libbenchmark-dev
    fp-utils # the compiler of the help file
)
# shellcheck disable=SC2034
# Needed to run the tests besides: real mail servers, a display, the checkers of the packaging.
test_packages=(
    python3 iproute2 postfix dovecot-pop3d openssl
    xvfb xauth fonts-dejavu-core
    desktop-file-utils appstream man-db dpkg-dev file
    clang-format clang-tidy shellcheck pyflakes3
)
# shellcheck disable=SC2034
# Needed to build for Windows besides: the compiler, what unpacks and builds the libraries, the maker of installers.
windows_packages=(g++-mingw-w64-x86-64-posix dpkg-dev ca-certificates python3 googletest nsis fp-utils)
# shellcheck disable=SC2034
# Needed to run what was built: Wine, a display, fonts, what looks into an archive.
windows_test_packages=(wine wine64 xvfb xauth fonts-dejavu-core unzip)
# shellcheck disable=SC2034
# Needed to show the demonstration besides.
demo_packages=(python3 iproute2 postfix dovecot-pop3d openssl fonts-dejavu-core)
# The commands by which another distribution is judged, where packages have other names.
needed_commands=(c++ cmake ninja)

say() { printf '%s\n' "$*"; }
fail() {
    say "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "Packages are missing and only root can install them. Run as root: apt-get install ${missing[*]}"
    fi
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs those of the named packages that are missing; touches nothing when none is.
install_missing() {
    local package command
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        for command in "${needed_commands[@]}"; do
            command -v "$command" >/dev/null ||
                fail "$command is missing. Install it, with the development files of Qt 6.4, GNU SASL and GoogleTest."
        done
        return
    fi
    missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing: ${missing[*]}"
    as_root apt-get update -q || say "The package lists could not be updated; going on with the old ones." >&2
    as_root bash scripts/install-quietly.sh "${missing[@]}" || fail "These packages could not be installed: ${missing[*]}"
}

# Configures; $1 is the preset, the others are arguments of cmake.
configure() {
    local log=build/$1.configure.log
    # A build folder that was copied from another place cannot be configured again: then from the beginning.
    cmake --preset "$@" >"$log" 2>&1 || cmake --fresh --preset "$@" >"$log" 2>&1 || {
        cat "$log" >&2
        fail "The project could not be configured."
    }
}

# Configures and builds; $1 is the preset, the others are targets (everything without any).
build() {
    local preset=$1
    shift
    configure "$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"} || fail "The project could not be built."
}
