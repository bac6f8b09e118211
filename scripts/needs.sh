# Sourced by run.sh, test.sh and .ci/run, from the top folder of the tree.
#   need PURPOSE...    installs the Debian packages of these purposes that are missing

# One line a purpose. A new package goes in here and, with its reason, into the table of README.md.
packages_for() {
    case $1 in
    run) echo g++ cmake ninja-build libicu-dev libssl-dev libcli11-dev nlohmann-json3-dev libsimpleini-dev ;;
    test) echo libgtest-dev python3 ;;
    forms) echo qt6-base-dev ;;
    pictures) echo xvfb xauth openbox imagemagick xdotool python3 ;;
    manual) echo cmark-gfm weasyprint fonts-dejavu-core fonts-dejavu-extra ;;
    icons) echo librsvg2-bin icoutils ;;
    browser) echo chromium chromium-driver python3-selenium ;;
    database) echo mariadb-server-core mariadb-client-core ;;
    bench) echo libbenchmark-dev ;;
    checks) echo clang clang-format-14 clang-tidy cppcheck ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    windows) echo g++-mingw-w64-x86-64-posix ;;
    package) echo debootstrap dpkg-dev ;;
    windows_test) echo googletest wine64 ;;
    esac
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=600 "$@"
}

install_packages() {
    local log=build/packages.log
    mkdir -p build
    echo "Installing $* ..."
    # A list that cannot be fetched need not be one of those that are needed here.
    apt_get update >"$log" 2>&1 || echo "apt-get update had trouble, see $log"
    apt_get install -y --no-install-recommends "$@" >>"$log" 2>&1 && return
    tail -n 20 "$log" >&2
    echo "These packages could not be installed: $*. The whole story is in $log." >&2
    return 1
}

need() {
    local purpose package packages=() missing=()
    for purpose; do
        for package in $(packages_for "$purpose"); do packages+=("$package"); done
    done
    if ! command -v apt-get >/dev/null; then
        echo "There is no apt-get here. Needed is what Debian calls ${packages[*]}; going on as if it is there."
        return
    fi
    for package in "${packages[@]}"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "Missing, and neither root nor sudo is at hand to install it: ${missing[*]}; going on without."
        return
    fi
    install_packages "${missing[@]}"
}

if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
