# shellcheck shell=bash
# Sourced from the root of the checkout: the shell built for a vendor's platform, and a file system for it to run on.

vendor_build=build/vendor
# shellcheck disable=SC2034 # for those who source this
vendor_program=$PWD/$vendor_build/bin/cli

# build_vendor [LIBRARY...]: without libraries for the stub, the least that defines the platform.
build_vendor() {
    mkdir -p "$vendor_build"
    if [ $# -eq 0 ]; then
        c++ -std=c++20 -O2 -I. -fno-exceptions -fno-rtti -c platform/vendor/stub_platform.cpp -o "$vendor_build/stub.o"
        ar rcs "$vendor_build/libstub.a" "$vendor_build/stub.o"
        set -- "$PWD/$vendor_build/libstub.a"
    fi
    # Anew, as a toolchain that the environment names may be another.
    cmake --fresh -G Ninja -S . -B "$vendor_build" -DCLI_PLATFORM=vendor -DCLI_VENDOR_LIBS="$(IFS=';' && echo "$*")" \
        -DBUILD_TESTING=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$vendor_build" >"$vendor_build/log" || { cat "$vendor_build/log" >&2 && return 1; }
}

# in_namespace WORDS...: runs a command whose mounts end with it, and that reaches neither the network nor the name of this
# machine. False when this machine allows none.
in_namespace() {
    # Root needs no user namespace, and inside a container often gets none.
    local -a unshare=(unshare -mnu)
    [ "$(id -u)" -eq 0 ] || unshare=(unshare -rmnu)
    "${unshare[@]}" "$@"
}

# make_device FOLDER PROGRAM: mounts a device's file system on the empty folder, with the program as "/cli". Its tools, in
# "/tools", are the few of the system's that the shell itself runs. The shared libraries that the lines of
# vendor_libraries name are there too.
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
