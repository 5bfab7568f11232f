# shellcheck shell=bash
# What the scripts share; sourced by them with the project's root as the working folder.

step() {
    printf '\n== %s\n' "$*"
}

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# read_qt ARGUMENT...: takes "--qt 5" or "--qt 6" off the front of the arguments. Leaves the others in
# the array arguments, and in qt what the names of presets, groups of packages and built files end in:
# nothing for Qt 5, 6 for Qt 6.
# shellcheck disable=SC2034 # for the scripts
read_qt() {
    qt=
    if [ "${1:-}" = --qt ]; then
        case "${2:-}" in
            5) ;;
            6) qt=6 ;;
            *) fail "--qt takes 5 or 6" ;;
        esac
        shift 2
    fi
    arguments=("$@")
}

# install_missing GROUP...: installs the packages of these groups that are not installed yet.
install_missing() {
    local missing=() package
    while read -r package; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done < <(awk -v groups=" $* " '!/^#/ && NF && index(groups, " " $1 " ") { print $2 }' \
        scripts/packages | sort -u)
    [ ${#missing[@]} -gt 0 ] || return 0

    step "Installing what is missing: ${missing[*]}"
    command -v apt-get >/dev/null || fail "This needs Debian's apt-get. Install by hand: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "Installing needs root: run this as root or install sudo."
        root=(sudo)
    fi
    "${root[@]}" apt-get update -q \
        || fail "apt-get update failed; the packages above could not be installed."
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" \
        || fail "apt-get install failed; the packages above could not be installed."
}

# build PRESET [TARGET...]: configures and builds; what is up to date is left alone.
build() {
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    step "Building (preset $preset)"
    # A second clone, or a second build after cleaning, is quick where ccache is installed.
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
        export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
        # Without this it leaves alone whatever uses a precompiled header.
        export CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
    cmake --preset "$preset" || return 1
    cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
}
