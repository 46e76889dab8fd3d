# shellcheck shell=sh
# Sourced by the simulated tools. The state of the device is in small files below "sim" of its root, one for each value.

: "${CLI_SIM_ROOT:?must name the folder of a simulated access point}"
# Whether two paths name the same file. POSIX does not have -ef, but the common shells do.
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

# set_value NAME TEXT...: replaces a state value. A reader finds the old lines or the new ones.
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

# fail TEXT...: prints a message and ends the tool.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# Whether $1 is a decimal number for the shell's arithmetic: at most nine digits, no leading zero.
is_number() {
    case $1 in
    '' | *[!0-9]* | 0?* | ??????????*) return 1 ;;
    *) return 0 ;;
    esac
}

# Whether $1 has the form A.B.C.D.
is_address() {
    octet='(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])'
    printf '%s\n' "$1" | grep -Eqx "($octet\.){3}$octet"
}

# words FILE: prints the words of a file that end with zero bytes, one a line.
words() {
    tr '\0' '\n' 2>/dev/null <"$1"
}

# Prints the device's processes, one "PID NAME" a line: shells, the daemon and its supervisor, running tools, and the
# system shell of a console. Other processes of the PC cannot be reached.
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
            # Leave out the subshell of a tool.
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

# read_signal WORDS...: reads the options of kill, killall and pkill into $signal and $operands.
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

# signal_named [-SIGNAL | -s SIGNAL] NAME...: signals processes by name, for killall and pkill. False if there is none.
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
