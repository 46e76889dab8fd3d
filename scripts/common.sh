# shellcheck shell=bash
# Shared by the scripts of this folder. They print their messages to the standard error output, because the standard output
# is that of the programs they run.

# Packages for a build with its tests, and for running the tests.
# shellcheck disable=SC2034 # used by the scripts that source this file
test_packages=(
    atftpd busybox cmake g++ libgtest-dev libncurses-dev libreadline-dev libvterm-dev ninja-build procps python3 strace
)

# The descriptor for the output of apt-get and cmake.
output=2

say() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# apt_get WORDS...: runs apt-get as root, without questions.
apt_get() {
    local -a become=()
    [ "$(id -u)" -eq 0 ] || become=(sudo)
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@" </dev/null >&"$output" 2>&1
}

# install_missing PACKAGE...: installs the packages that are missing.
install_missing() {
    if ! command -v dpkg-query >/dev/null; then
        say "this is not Debian: install these packages yourself: $*"
        return
    fi
    local present package
    local -a missing=()
    present=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
    for package; do
        grep -qxF "$package installed" <<<"$present" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    say "installing ${missing[*]}"
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null || die "run this as root, or install sudo"
    # The package lists may be missing or out of date.
    compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null || apt_get update
    apt_get install -y --no-install-recommends "${missing[@]}" || {
        apt_get update
        apt_get install -y --no-install-recommends "${missing[@]}"
    }
}

# build_preset PRESET [CMAKE OPTION...]: builds the preset. Configures it first if it was not configured.
build_preset() {
    local preset=$1 folder=build/$1
    shift
    if [ ! -f "$folder/build.ninja" ]; then
        say "configuring $folder"
        cmake --preset "$preset" "$@" </dev/null >&"$output" 2>&1
    fi
    # Print nothing if there is nothing to build.
    ninja -C "$folder" -n </dev/null 2>/dev/null | grep -q 'no work to do' && return
    say "building $folder"
    cmake --build "$folder" </dev/null >&"$output" 2>&1
}
