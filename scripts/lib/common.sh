# shellcheck shell=bash
# What the scripts share; sourced by them, never run. Leaves the shell in the project's folder.

cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit

# Headline of what runs next.
step() {
    printf '\n==> %s\n' "$*"
}

# Runs a command as root, through sudo where that is needed.
asRoot() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

isInstalled() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# Prints those of the Debian packages that are missing, in one line.
missingPackages() {
    local package missing=()
    for package in "$@"; do
        isInstalled "$package" || missing+=("$package")
    done
    echo "${missing[*]-}"
}

# Installs those of the Debian packages that are missing; touches nothing when all are there.
installMissing() {
    local missing
    read -ra missing <<<"$(missingPackages "$@")"
    if [[ ${#missing[@]} -eq 0 ]]; then
        return
    fi
    if ! command -v apt-get >/dev/null || ! { [[ $EUID -eq 0 ]] || command -v sudo >/dev/null; }; then
        echo "Missing packages, and no apt-get or no sudo to install them: ${missing[*]}" >&2
        exit 1
    fi
    step "Installing ${missing[*]}"
    asRoot apt-get update
    asRoot env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}"
}

# Copies the sources, without what builds leave, to a folder that is made anew.
copySources() {
    rm -rf "$1"
    mkdir -p "$1"
    tar --create --exclude-vcs --exclude=./build . | tar --extract --directory="$1"
}

# What a build needs, and what packages and checks need on top of it, named as in Debian 12.
buildTools=(g++ cmake ninja-build libboost-program-options-dev libexpat1-dev libcli11-dev
    rapidjson-dev libfmt-dev)
packageTools=("${buildTools[@]}" dpkg-dev file)
checkTools=("${packageTools[@]}" shellcheck cppcheck clang-14 clang-tidy-14 clang-format-14
    libclang-rt-14-dev llvm-14 libgtest-dev libbenchmark-dev man-db mandoc zsh fish mmdebstrap jq make
    pkgconf python3 python3-jsonschema python3-kaitaistruct gdb abigail-tools)
# Where node and npm come from elsewhere, Debian's packages would be in the way.
command -v node >/dev/null || checkTools+=(nodejs)
command -v npm >/dev/null || checkTools+=(npm)

installBuildTools() {
    installMissing "${buildTools[@]}"
}

installPackageTools() {
    installMissing "${packageTools[@]}"
}

installCheckTools() {
    installMissing "${checkTools[@]}"
}

# Prints the npm packages that are missing below build/npm, in one line: all of the lock file if it
# is another than the one by which they were installed.
missingNpmPackages() {
    cmp --silent examples/python/package-lock.json build/npm/package-lock.json ||
        sed -n 's/^ *"\([a-z-]*\)": "\([0-9.]*\)",*$/\1@\2/p' examples/python/package.json |
        paste --serial --delimiters=' '
}

# Installs them from the registry that npm is set up with. Without one, the tests that need them say
# so.
installMissingNpmPackages() {
    local missing
    missing=$(missingNpmPackages)
    if [[ -z $missing ]]; then
        return
    fi
    step "Installing $missing"
    rm -rf build/npm build/npm.new
    mkdir -p build/npm.new
    cp examples/python/package.json examples/python/package-lock.json build/npm.new
    if npm ci --prefix build/npm.new --ignore-scripts --no-audit --no-fund; then
        mv build/npm.new build/npm
    else
        echo "npm cannot install them" >&2
    fi
}

# Configures a preset; further arguments go to cmake.
configure() {
    step "Configuring preset $1"
    cmake --preset "$@"
}

# Builds a configured preset; further arguments go to cmake --build.
build() {
    step "Building preset $1"
    cmake --build --parallel "$(nproc)" --preset "$@"
}

# Packs a built preset as a Debian package into a folder. What is packed bears the date of the
# package's last change, so the same sources always give the same package.
pack() (
    umask 022 # modes of the parts of the package file
    SOURCE_DATE_EPOCH=$(dpkg-parsechangelog --file packaging/changelog.Debian --show-field Timestamp)
    export SOURCE_DATE_EPOCH
    cpack --config "build/$1/CPackConfig.cmake" -B "$2"
)
