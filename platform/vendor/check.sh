#!/usr/bin/env bash
# check.sh [LIBRARY...]: builds the shell for a vendor's platform, by default the stub, looks at what it links, and plays
# the sessions of tests/sessions on a device's file system; nothing of this machine is changed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. platform/vendor/device.sh

fail() {
    echo "check.sh: $*" >&2
    exit 1
}

build_vendor "$@" || fail "the shell does not build"

# Files, so that no early end of a reader fails the pipe.
readelf -d "$vendor_program" | grep NEEDED >"$vendor_build/needed"
! grep -E 'stdc\+\+|libgcc|simulation' "$vendor_build/needed" || fail "the program needs more than readline and libc"
strings -a "$vendor_program" >"$vendor_build/strings"
! grep -E 'CLI_SIM_ROOT|[Ss]imulat' "$vendor_build/strings" || fail "the program holds a part of the simulation"
nm -C "$vendor_program" >"$vendor_build/symbols"
! grep -E ' sim[A-Z]|__cxa_(throw|guard|pure|begin)|_Unwind_|operator (new|delete)' "$vendor_build/symbols" ||
    fail "the program holds unwanted symbols"

if [ $# -gt 0 ] || ! in_namespace true 2>/dev/null; then
    echo "check.sh: built and looked at, but NOT RUN: that takes the stub and a private mount namespace" >&2
    exit 0
fi
mapfile -t sessions < <(find tests/sessions -maxdepth 1 -type f | sort)
in_namespace scripts/play --vendor "$vendor_program" "${sessions[@]}" >&2
echo "check.sh: the shell builds for a vendor's platform and runs on its paths" >&2
