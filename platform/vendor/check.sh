#!/usr/bin/env bash
# check.sh [LIBRARY...]: installs missing packages, builds the shell with the vendor's libraries or with the stub, checks
# the linked libraries, and plays the sessions of tests/sessions on a temporary file system. A library may also be a linker
# flag. With libraries, the sessions that show answers of the stub are left out. Changes nothing else of this machine.
set -euo pipefail
libraries=()
for library; do
    [ ! -e "$library" ] || library=$(realpath "$library")
    [[ -e $library || $library = -* ]] || { echo "check.sh: there is no $library" >&2 && exit 1; }
    libraries+=("$library")
done
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. scripts/common.sh
. platform/vendor/device.sh

install_missing cmake g++ libncurses-dev libreadline-dev ninja-build python3

fail() {
    echo "check.sh: $*" >&2
    exit 1
}

for header in platform/{debug_library,message_channel,system_library,wireless_library}.h; do
    cc -std=c11 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -x c "$header"
done
build_vendor "${libraries[@]}" || fail "the shell does not build"

# The output goes to files, because a reader that ends early would make a pipe fail.
readelf -d "$vendor_program" | grep NEEDED >"$vendor_build/needed"
! grep -E 'stdc\+\+|libgcc|simulation' "$vendor_build/needed" || fail "the program needs more than readline and libc"
strings -a "$vendor_program" >"$vendor_build/strings"
! grep -E 'CLI_SIM_ROOT|[Ss]imulat' "$vendor_build/strings" || fail "the program holds a part of the simulation"
nm -C "$vendor_program" >"$vendor_build/symbols"
! grep -E ' sim[A-Z]|__cxa_(throw|guard|pure|begin)|_Unwind_|operator (new|delete)' "$vendor_build/symbols" ||
    fail "the program holds unwanted symbols"

machine_of() {
    readelf -h "$1" | grep Machine
}
not_run() {
    echo "check.sh: built and looked at, but NOT RUN: $*" >&2
    exit 0
}
[ "$(machine_of "$vendor_program")" = "$(machine_of "$(realpath /bin/sh)")" ] || not_run "it is for another machine"
in_namespace true || not_run "that takes a private mount namespace"
mapfile -t sessions < <(find tests/sessions -maxdepth 1 -type f | sort)
if [ $# -gt 0 ]; then
    mapfile -t of_stub < <(grep -l STUB "${sessions[@]}")
    mapfile -t sessions < <(grep -L STUB "${sessions[@]}")
    echo "check.sh: left out, with the stub's serial number: ${of_stub[*]##*/}" >&2
fi
# The shared libraries of the vendor.
linked=$(ldd "$vendor_program")
! grep 'not found' <<<"$linked" || fail "give shared libraries by their paths"
vendor_libraries=$(grep -oE '/[^ ]+' <<<"$linked" | grep -vE '^/(usr|lib)' || true)
export vendor_libraries
in_namespace scripts/play --vendor "$vendor_program" "${sessions[@]}" >&2
echo "check.sh: the shell builds for a vendor's platform and runs on its paths" >&2
