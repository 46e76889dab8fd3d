# shellcheck shell=sh
# Sourced by every stand-in tool: the simulated device's state, one small file for each value below "sim" of its root.

: "${CLI_SIM_ROOT:?must name the folder of a simulated access point}"
# Not in every POSIX shell, but in those that are installed as sh: the same file whatever its spelling.
# shellcheck disable=SC3013
same_file() {
    [ "$1" -ef "$2" ]
}
if [ ! -d "$CLI_SIM_ROOT/bin" ] || same_file "$CLI_SIM_ROOT" /; then
    echo "${0##*/}: $CLI_SIM_ROOT is no simulated access point" >&2
    exit 1
fi
PATH=$CLI_SIM_ROOT/bin:$PATH
LC_ALL=C
export PATH LC_ALL

# value NAME [FALLBACK]: prints a state value.
value() {
    text=
    if IFS= read -r text 2>/dev/null <"$CLI_SIM_ROOT/sim/$1" || [ -n "$text" ]; then
        printf '%s\n' "$text"
    else
        printf '%s\n' "${2-}"
    fi
}

# set_value NAME TEXT...: a reader finds the old lines or the new ones.
set_value() {
    state_file=$CLI_SIM_ROOT/sim/$1
    shift
    [ -d "${state_file%/*}" ] || mkdir -p "${state_file%/*}"
    printf '%s\n' "$@" >"$CLI_SIM_ROOT/tmp/.state.$$" && mv "$CLI_SIM_ROOT/tmp/.state.$$" "$state_file"
}

# config_value FILE KEY: prints the value of a line KEY=VALUE of the device's file.
config_value() {
    sed -n "s/^$2=//p" "$CLI_SIM_ROOT$1" 2>/dev/null
}

# fail TEXT...: ends the tool with a message.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# Whether $1 is a decimal number that the shell's arithmetic takes as one.
is_number() {
    case $1 in
    '' | *[!0-9]* | 0?* | ??????????*) return 1 ;;
    *) return 0 ;;
    esac
}

# Whether $1 reads A.B.C.D.
is_address() {
    octet='(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])'
    printf '%s\n' "$1" | grep -Eqx "($octet\.){3}$octet"
}

# words FILE: the lines of a file with zeros behind them.
words() {
    tr '\0' '\n' 2>/dev/null <"$1"
}

# Prints the device's processes, "PID NAME" a line: shells, the daemon and its supervisor, the stand-in tools that run,
# and the system shell of a console. Everything else on the PC is out of reach.
processes() {
    grep -lsz '^CLI_SIM_ROOT=' /proc/[0-9]*/environ | while IFS=/ read -r _ _ pid _; do
        root=$(words "/proc/$pid/environ" | sed -n 's/^CLI_SIM_ROOT=//p')
        [ "$root" != "${root#/}" ] || root=/proc/$pid/cwd/$root
        same_file "$root" "$CLI_SIM_ROOT" || continue
        IFS= read -r name 2>/dev/null <"/proc/$pid/comm" || continue
        parent=$(sed -n 's/^PPid:[^0-9]*//p' "/proc/$pid/status" 2>/dev/null)
        case $name in
        cli)
            case $(words "/proc/$parent/cmdline" | head -n 1) in
            */bin/sh) echo "$parent sh" ;;
            esac
            ;;
        cwWtpd | cwMonitor) ;;
        *)
            case $(words "/proc/$pid/cmdline" | sed -n 2p) in
            "$CLI_SIM_ROOT"/bin/*) ;;
            *) continue ;;
            esac
            # A tool's subshell is no process of its own.
            ! words "/proc/$parent/cmdline" | grep -qxF "$CLI_SIM_ROOT/bin/$name" || continue
            ;;
        esac
        echo "$pid $name"
    done | sort -un
}

# pids NAME: prints the process ids of the device's programs of that name.
pids() {
    processes | sed -n "s/ $1\$//p"
}

# Reads the options that kill and its kin have: $signal and $operands.
read_signal() {
    signal=TERM
    operands=
    while [ $# -gt 0 ]; do
        case $1 in
        -s | --signal)
            signal=${2-}
            [ $# -eq 1 ] || shift
            ;;
        -[A-Z0-9]*) signal=${1#-} ;;
        -*) ;;
        *) operands="$operands $1" ;;
        esac
        shift
    done
    signal=${signal#SIG}
}

# signal_named [-SIGNAL | -s SIGNAL] NAME...: what killall and pkill do. False when there is no such process.
signal_named() {
    read_signal "$@"
    found=
    for name in $operands; do
        case $name in
        *[!A-Za-z0-9_-]*) continue ;;
        esac
        for pid in $(pids "$name"); do
            kill -s "$signal" "$pid" && found=1
        done
    done
    [ -n "$found" ]
}
