# shellcheck shell=sh
# Sourced by the tools of the radios in place of device.sh: what a radio's settings come to by the states "bands" and
# "channels/<country>". What is set here is for them.
# shellcheck disable=SC2034
. "${0%/*}/device.sh"

# read_band BAND: sets $mode, $ghz and $full_power. False when it is none.
read_band() {
    while read -r bits mode _ ghz _ _ _ full_power; do
        case $bits in
        [0-9]*) [ $(($1 & bits)) -ne "$bits" ] || return 0 ;;
        esac
    done <"$CLI_SIM_ROOT/sim/bands"
    return 1
}

# read_radio INTERFACE: sets what read_band does, the $radio, its $country, the $channels that it may use and the
# $channel that it is on.
read_radio() {
    radio=${1%%-*}
    read_band "$(value "interfaces/$radio/mib/band" 0)"
    country=$(value "interfaces/$radio/country")
    radar=$(value "interfaces/$radio/radar")
    list=$(value "channels/$country" "$(value channels/default)")
    channels=
    for channel in $list; do
        case " $radar " in
        *" $channel "*) continue ;;
        esac
        [ $((channel > 14 ? 5 : 2)) -ne "${ghz:-0}" ] || channels="${channels:+$channels }$channel"
    done
    channel=$(value "interfaces/$radio/channel")
    may_use "$channel" || channel=${channels%% *}
}

# may_use CHANNEL: whether the radio that was read may.
may_use() {
    is_number "$1" || return 1
    case " $channels " in
    *" $1 "*) ;;
    *) return 1 ;;
    esac
}
