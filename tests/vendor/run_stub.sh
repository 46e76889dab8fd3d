#!/usr/bin/env bash
# run_stub.sh FOLDER: runs the shell of the stub platform on a device's file system, mounted on the empty FOLDER. For
# check.sh, which calls it in a mount namespace of its own.
set -euo pipefail
. tests/vendor/device.sh
root=$1
make_device "$root"
mkdir -p "$root/elsewhere/cfg"

# cli [ARGUMENT...]: runs the shell on the device; what it shows, its errors, and an exit status that is not 0.
cli() {
    on_device "$root" CLI_SIM_ROOT="${sim_root-}" /cli "$@" 2>&1 || echo "[$?]"
}

# expect WHAT: compares standard input with what was shown.
expect() {
    local expected
    expected=$(cat)
    [ "$shown" = "$expected" ] && return
    echo "run_stub.sh: $1 shows:" >&2
    diff <(echo "$expected") <(echo "$shown") >&2 || exit 1
}

shown=$(printf 'help | grep ^help\nnosuch\n' | cli)
expect "an empty device" <<'END'
sysConfRead: Could not open conf file /cfg/sys.conf.
STUB0001  # help | grep ^help
help :
STUB0001  # nosuch
Command "nosuch" is not supported.
STUB0001  # [1]
END

printf 'hostname=vendor-ap\nbaudrate=115200\nadmin-timeout=5\n' >"$root/cfg/sys.conf"
printf 'echo-interval=29\nmax-retransmit=4\n' >"$root/cfg/cw.conf"
printf "alias lan='ifconfig eth0'\n" >"$root/etc/profile"
printf 'hostname=wrong\n' >"$root/elsewhere/cfg/sys.conf"
for sim_root in "" /elsewhere /nowhere; do
    shown=$(printf 'show sys_conf\nhelp | grep lan\nlan\nquit\n' | cli)
    expect "a configured device" <<'END'
vendor-ap  # show sys_conf
    hostname                 : vendor-ap
    static-addr              : 
    baudrate                 : 115200
    admin-timeout            : 5
vendor-ap  # help | grep lan
	lan                              alias cmd:ifconfig eth0
vendor-ap  # lan
vendor-ap  # quit
Exit.
END
done
[ -f "$root/tmp/cli_pipe_file" ] || { echo "run_stub.sh: no pipe file in /tmp" >&2 && exit 1; }

rm "$root/etc/calls"
shown=$(
    printf 'config capwap wtp multicast-ttl 7\nsave cw_conf\nconfig system hostname new-name\nquit\n' | cli
    cat "$root/etc/calls"
    grep -E '^(echo-interval|max-retransmit|multicast-ttl)=' "$root/cfg/cw.conf"
    cat "$root/cfg/sys.conf"
    ls "$root/elsewhere/cfg"
)
expect "a device that is configured" <<'END'
vendor-ap  # config capwap wtp multicast-ttl 7
vendor-ap  # save cw_conf
CAPWAP parameter changed, capwap daemon is reloading
vendor-ap  # config system hostname new-name
new-name  # quit
Exit.
pkill cwWtpd
hostname new-name
qln-set-hostname new-name --no-save
echo-interval=29
max-retransmit=4
multicast-ttl=7
#=====================SYS CONF PARAMs========================
#CONFIG system
hostname=new-name
baudrate=115200
admin-timeout=5
#=====================SYS CONF PARAMs========================
sys.conf
END

mount -t tmpfs -o ro tmpfs "$root/tmp"
shown=$(printf 'show | grep cw\nlan\nquit\n' | cli)
expect 'a device with a read-only "/tmp"' <<'END'
new-name  # show | grep cw
    Error: Can not write /tmp/cli_pipe_file.
new-name  # lan
new-name  # quit
Exit.
END
mount -o remount,rw "$root/tmp"
echo 'cw of an earlier line' >"$root/tmp/cli_pipe_file"
mount -o remount,ro "$root/tmp"
shown=$(printf 'show | grep cw\n' | cli)
expect 'a read-only "/tmp" with an old pipe file' <<'END'
new-name  # show | grep cw
    Error: Can not write /tmp/cli_pipe_file.
new-name  # [1]
END
umount "$root/tmp"

shown=$(cli </dev/null && cli <&- && cli run </dev/null)
expect "a shell without input" <<'END'
new-name  # [1]
new-name  # [1]
END
