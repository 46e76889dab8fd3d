#!/usr/bin/env bash
# check.sh [LIBRARY...]: builds the shell for a vendor's platform, looks at what it links, and runs it with the paths of
# the device. Without libraries it takes the stub, the least that defines the platform. The run has a file system of its
# own, in a private mount namespace; nothing of this machine is changed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
build=build/vendor
program=$PWD/$build/bin/cli

fail() {
    echo "check.sh: $*" >&2
    exit 1
}

build_stub() {
    mkdir -p "$build"
    c++ -std=c++20 -O2 -I. -fno-exceptions -fno-rtti -c tests/vendor/stub_platform.cpp -o "$build/stub_platform.o"
    ar rcs "$build/libstub.a" "$build/stub_platform.o"
}

if [ $# -eq 0 ]; then
    build_stub
    set -- "$PWD/$build/libstub.a"
fi
cmake -G Ninja -S . -B "$build" -DCLI_PLATFORM=vendor -DCLI_VENDOR_LIBS="$(IFS=';' && echo "$*")" -DBUILD_TESTING=OFF \
    -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" >/dev/null || fail "the shell does not build"

# Files, so that no early end of a reader fails the pipe.
needed=$build/needed
readelf -d "$program" | grep NEEDED >"$needed"
! grep -E 'stdc\+\+|libgcc|simulation' "$needed" || fail "the program needs more than readline and the C library"
strings -a "$program" >"$build/strings"
! grep -E 'CLI_SIM_ROOT|[Ss]imulat' "$build/strings" || fail "the program holds a part of the simulation"
nm -C "$program" >"$build/symbols"
! grep -E ' sim[A-Z]| __cxa_(throw|guard|pure|begin)|_Unwind_|operator (new|delete)' "$build/symbols" || fail "the program holds unwanted symbols"

# Root needs no user namespace, and inside a container often gets none.
namespace=(unshare -m)
[ "$(id -u)" -eq 0 ] || namespace=(unshare -rm)
if ! "${namespace[@]}" true 2>/dev/null; then
    echo "check.sh: no private namespace here, so the program was built and looked at but NOT RUN" >&2
    exit 0
fi

root=$(mktemp -d)
trap 'rmdir "$root"' EXIT
"${namespace[@]}" bash tests/vendor/run_device.sh "$program" "$root"
echo "check.sh: the shell builds for a vendor's platform and runs on its paths" >&2
