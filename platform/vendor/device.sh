# shellcheck shell=bash
# Sourced from the root of the checkout. Builds the shell for a vendor's platform, and makes a file system for it.

vendor_build=build/vendor
# shellcheck disable=SC2034 # used by the scripts that source this file
vendor_program=$PWD/$vendor_build/bin/cli

# build_vendor [LIBRARY...]: builds the shell with the libraries. Without libraries, uses the stub.
build_vendor() {
    mkdir -p "$vendor_build"
    if [ $# -eq 0 ]; then
        c++ -std=c++20 -O2 -I. -fno-exceptions -fno-rtti -c platform/vendor/stub_platform.cpp -o "$vendor_build/stub.o"
        ar rcs "$vendor_build/libstub.a" "$vendor_build/stub.o"
        set -- "$PWD/$vendor_build/libstub.a"
    fi
    # Configure again, because the environment may name another toolchain.
    cmake --fresh -G Ninja -S . -B "$vendor_build" -DCLI_PLATFORM=vendor -DCLI_VENDOR_LIBS="$(IFS=';' && echo "$*")" \
        -DBUILD_TESTING=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$vendor_build" >"$vendor_build/log" || { cat "$vendor_build/log" >&2 && return 1; }
}

# in_namespace WORDS...: runs a command in a mount namespace of its own, where it cannot reach the network or the host name
# of this machine. False if this machine does not allow that.
in_namespace() {
    # Root needs no user namespace, and often cannot create one inside a container.
    local -a unshare=(unshare -mnu)
    [ "$(id -u)" -eq 0 ] || unshare=(unshare -rmnu)
    "${unshare[@]}" "$@"
}

# make_device FOLDER PROGRAM: mounts the file system of a device on the empty folder, with the program as "/cli". "/tools"
# has the few tools that the shell itself runs, and the shared libraries that vendor_libraries lists.
make_device() {
    local root=$1 node folder tool library
    mount --make-rprivate /
    mount -t tmpfs tmpfs "$root"
    mkdir -p "$root"/{cfg,dev,etc,tmp,tools}
    for node in null zero full ptmx tty; do
        : >"$root/dev/$node"
        mount --bind "/dev/$node" "$root/dev/$node"
    done
    for folder in usr proc bin lib lib64; do
        if [ -L "/$folder" ]; then
            cp -P "/$folder" "$root/"
        elif [ -d "/$folder" ]; then
            mkdir "$root/$folder"
            mount --bind "/$folder" "$root/$folder"
            mount -o remount,bind,ro "$root/$folder"
        fi
    done
    while IFS= read -r library; do
        [ -z "$library" ] || cp "$library" "$root/tools"
    done <<<"${vendor_libraries-}"
    for tool in cat grep rm; do
        ln -s "$(command -v "$tool")" "$root/tools/$tool"
    done
    cp "$2" "$root/cli"
}
