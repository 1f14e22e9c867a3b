# shellcheck shell=bash disable=SC2034
# Installs what a script needs on Debian and leaves apt alone when nothing is missing. Sourced, not run.

productPackages=(cmake ninja-build g++ g++-multilib)
demoPackages=("${productPackages[@]}" libcli11-dev libstb-dev)
testPackages=("${demoPackages[@]}" googletest libxml2-utils python3 locales)
benchmarkPackage=libbenchmark-dev:i386
# A package that could not be had is asked for once; remove the folder to ask again.
refusedPackages=build/refused-packages

say() { printf '%s\n' "$*" >&2; }

isInstalled() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missingPackages() {
    local package
    for package in "$@"; do
        isInstalled "$package" || printf '%s\n' "$package"
    done
}

asRoot() {
    if [ "$(id -u)" -eq 0 ]; then
        DEBIAN_FRONTEND=noninteractive "$@"
    elif command -v sudo >/dev/null; then
        sudo DEBIAN_FRONTEND=noninteractive "$@"
    else
        say "Neither root nor sudo: '$*' has to be run by hand."
        return 1
    fi
}

# One architecture's index can be out of step with its mirror while the packages themselves can be had.
refreshPackageIndex() {
    asRoot apt-get update -q </dev/null >&2 || say "The package index was not refreshed completely; going on with what there is."
}

installPackages() {
    asRoot apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=120 "$@" </dev/null >&2
}

# Ends the script when a package is missing and cannot be installed.
needPackages() {
    local missing
    if ! command -v dpkg-query >/dev/null; then
        say "This is not Debian: going on in the hope that these are there: $*"
        return
    fi
    mapfile -t missing < <(missingPackages "$@")
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing ${missing[*]}"
    refreshPackageIndex
    if ! installPackages "${missing[@]}"; then
        say "These packages are needed and could not be installed: ${missing[*]}"
        exit 1
    fi
}

# Installs a package if it can be had, adding its architecture where it is a second one; what needs it is left out
# otherwise.
tryPackage() {
    local package=$1 architecture=${1##*:}
    command -v dpkg-query >/dev/null || return 0
    { isInstalled "$package" || [ -e "$refusedPackages/$package" ]; } && return
    say "Trying to install $package"
    { dpkg --print-architecture && dpkg --print-foreign-architectures; } | grep -qx "$architecture" ||
        asRoot dpkg --add-architecture "$architecture"
    refreshPackageIndex
    installPackages "$package" && return
    say "$package cannot be had here; what needs it is left out. Remove $refusedPackages to try again."
    mkdir -p "$refusedPackages"
    : >"$refusedPackages/$package"
}
