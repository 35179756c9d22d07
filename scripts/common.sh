# Shared by ./run, ./test and the other commands: messages, packages, building.
# shellcheck shell=bash disable=SC2034

# What is needed to build and run, by the names of Debian 12.
build_packages=(
    g++ cmake ninja-build ccache pkg-config
    qt6-base-dev libcurl4-openssl-dev libssl-dev libmicrohttpd-dev libqrencode-dev
    libtomlplusplus-dev libvalijson-dev
)
# What the Debian packages are made with.
package_packages=(dpkg-dev file help2man)
# What the tests need besides.
test_packages=(
    libgtest-dev libgmock-dev clang-format-14 shellcheck procps openssl python3 python3-cryptography
    libbenchmark-dev chromium fonts-dejavu-core zbar-tools valgrind cppcheck
    lintian mmdebstrap "${package_packages[@]}"
)
# What the benchmarks need, and the plots of them.
benchmark_packages=(libbenchmark-dev valgrind gnuplot-nox python3)
# A Node.js that is there already may have come from elsewhere, with an npm of its own.
{ command -v node && command -v npm; } >/dev/null || test_packages+=(nodejs npm)

# The test programs of plugin/, view/ and host/.
core_test_programs=(
    host_{core,config,activity,actions,documents,plugins,net,images,ssl}_tests
    view_tests plugin_tests delivery_tests requests_tests thread_tests
)

say() { printf '\033[1m==> %s\033[0m\n' "$*"; }

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 2
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs those of the named packages that are missing; asks for root only then.
install_packages() {
    command -v dpkg-query >/dev/null ||
        die "this needs Debian 12 or a system of its family: there is no dpkg here"
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            die "these packages are missing: ${missing[*]}. As root, run: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq ||
        die "the package lists could not be fetched: is the network up?"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" ||
        die "these packages could not be installed: ${missing[*]}. The lines above say why"
}

# Configures a preset and builds the named targets, or all of it; the compiler's progress is shown.
#   build PRESET TARGET...
build() {
    local preset=$1
    shift
    command -v g++ >/dev/null || die "there is no C++ compiler: install g++"
    say "Building $preset"
    cmake --preset "$preset" --log-level=WARNING || die "the build could not be configured"
    cmake --build --preset "$preset" --target "$@" || die "the build failed: the lines above say where"
}
