#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "platform/simulation/interface_state.h"
#include "platform/simulation/radio_state.h"
#include "platform/simulation/stand_ins/stand_in.h"
#include "platform/simulation/state.h"

namespace
{

constexpr int kNoLimit = -1;

bool isRadio(const std::string& interface)
{
    return interface.starts_with("wlan");
}

std::string textOf(const std::string& interface, const std::string& setting, const char* fallback = "")
{
    char text[128];
    simReadText(("interfaces/" + interface + "/" + setting).c_str(), text, sizeof text, fallback);
    return text;
}

/// A setting of the driver and its state file. Settings that the wireless library does not read are in the folder "mib"
/// of the interface.
struct Setting {
    std::string_view name;
    const char* place;
    bool isOfRadio; ///< a VAP has the setting of its radio
    int most;       ///< the largest number; kNoLimit: any text
};

constexpr Setting kSettings[] = {
    {"channel", "channel", true, kNoLimit},
    {"band", "mib/band", true, kNoLimit},
    {"use40M", "mib/use40M", true, 2},
    {"coexist", "coexist", true, 1},
    {"bcnint", "beacon_interval", true, 65535},
    {"ssid", "ssid", false, kNoLimit},
    {"dtimperiod", "dtim_period", false, 255},
    {"rtsthres", "rts_threshold", false, 2347},
    {"fragthres", "frag_threshold", false, 2346},
    {"authtype", "auth_type", false, 4},
    {"hiddenAP", "broadcast_ssid", false, 1},
};

struct Place {
    std::string interface;
    std::string setting;
    int most;
};

Place placeOf(const std::string& interface, const std::string& name)
{
    constexpr char kCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    if (name.empty())
        fail("the name of a setting is missing");
    for (const Setting& row : kSettings)
        if (row.name == name)
            return {row.isOfRadio ? interface.substr(0, interface.find('-')) : interface, row.place, row.most};
    if (name.find_first_not_of(kCharacters) != std::string::npos)
        fail("%s: no such setting", name.c_str());
    return {interface, "mib/" + name, kNoLimit};
}

/// The driver stores whether the SSID is broadcast; the setting hiddenAP is the opposite.
std::string inverted(const std::string& number)
{
    return std::atoi(number.c_str()) == 0 ? "1" : "0";
}

bool mayUse(const RadioRecord& record, unsigned channel)
{
    const auto isIn = [channel](const ChannelMap& map) {
        return channel / 8 < std::size(map) && (map[channel / 8] >> channel % 8 & 1) != 0;
    };
    return isIn(record.allowedChannels) && !isIn(record.nonOccupancyChannels);
}

std::string usableChannels(const RadioRecord& record)
{
    std::string list;
    for (unsigned channel = 0; channel < 8 * sizeof record.allowedChannels; ++channel)
        if (mayUse(record, channel))
            list.append(" ").append(std::to_string(channel));
    return list;
}

void getSetting(const std::string& interface, const std::string& name)
{
    const Place place = placeOf(interface, name);
    std::string text = textOf(place.interface, place.setting, "0");
    if (name == "channel")
        text = std::to_string(simRadio(interface.c_str()).record.channel);
    else if (name == "hiddenAP")
        text = inverted(text);
    std::printf("%-9s get_mib:%s\n", interface.c_str(), text.c_str());
}

/// Ends the tool with a message if the driver does not accept the value.
void check(const std::string& interface, const std::string& assignment, const std::string& name,
           const std::string& text)
{
    const SimRadio radio = simRadio(interface.c_str());
    const int most = placeOf(interface, name).most;
    const char* shown = assignment.c_str();
    if (most != kNoLimit && (!isNumber(text) || std::stoi(text) > most))
        fail("%s: not a number from 0 to %d", shown, most);
    if (name == "band" && (!isNumber(text) || !simIsBand(std::stoi(text))))
        fail("%s: no such band", shown);
    if (name == "channel" && (!isNumber(text) || !mayUse(radio.record, static_cast<unsigned>(std::stoi(text)))))
        fail("%s: in %s wlan%d may use%s", shown, radio.record.operatingCountry, radio.record.id,
             usableChannels(radio.record).c_str());
    if (name == "ssid" && text.size() > 32)
        fail("%s: longer than 32 characters", shown);
}

void setSetting(const std::string& interface, const std::string& assignment)
{
    const std::size_t equals = assignment.find('=');
    const std::string name = assignment.substr(0, equals);
    const Place place = placeOf(interface, name);
    if (equals == std::string::npos)
        fail("set_mib %s: a value is missing", name.c_str());
    std::string text = assignment.substr(equals + 1);
    check(interface, assignment, name, text);
    if (name == "hiddenAP")
        text = inverted(text);
    simSetInterfaceText(place.interface.c_str(), place.setting.c_str(), text.c_str());
    // If the new band does not contain the current channel, the radio moves to another one. Store that channel.
    if (name == "band")
        simSetInterfaceNumber(place.interface.c_str(), "channel", simRadio(interface.c_str()).record.channel);
}

void printRadio(const std::string& interface)
{
    if (!isRadio(interface)) {
        std::printf("%-9s no wireless extensions.\n\n", interface.c_str());
        return;
    }
    const SimRadio radio = simRadio(interface.c_str());
    const std::string_view mode = radio.mode;
    const int channel = radio.record.channel;
    const int frequency = channel > 14 ? 5000 + 5 * channel : channel == 14 ? 2484 : 2407 + 5 * channel;
    const bool runs = simInterfaceRuns(interface.c_str());
    std::printf("%-9s IEEE 802.%.*s  ESSID:\"%s\"\n", interface.c_str(),
                static_cast<int>(std::min(mode.find('_'), mode.size())), radio.mode, textOf(interface, "ssid").c_str());
    std::printf("          Mode:Master  Frequency:%d.%03d GHz  Access Point: %s\n", frequency / 1000, frequency % 1000,
                runs ? macOf(interface).c_str() : "Not-Associated");
    std::printf("          Tx-Power=%d dBm   RTS thr:%s B   Fragment thr:%s B\n\n",
                (radio.record.txPower * radio.maximumPower + 50) / 100, textOf(interface, "rts_threshold").c_str(),
                textOf(interface, "frag_threshold").c_str());
}

} // namespace

/// iwconfig [INTERFACE]: the radios as the wireless tools show them.
void iwconfig(Words words)
{
    if (words.size() > 1)
        fail("setting is done with iwpriv");
    if (!words.empty() && !isInterface(words[0]))
        fail("%s: No such device", words[0]);
    for (const std::string& interface : interfaceNames())
        if (words.empty() || interface == words[0])
            printRadio(interface);
}

/// iwpriv [INTERFACE [get_mib NAME | set_mib NAME=VALUE]]: the driver's settings.
void iwpriv(Words words)
{
    if (words.empty()) {
        for (std::string interface : interfaceNames()) {
            char* name = interface.data();
            iwpriv({&name, 1});
            std::putchar('\n');
        }
        return;
    }
    const std::string interface = words[0];
    const std::string action = words.size() > 1 ? words[1] : "";
    const std::string setting = words.size() > 2 ? words[2] : "";
    if (!isInterface(interface))
        fail("%s: No such device", interface.c_str());
    if (!isRadio(interface))
        std::printf("%-9s no private ioctls.\n", interface.c_str());
    else if (action.empty())
        std::printf("%-9s Available private ioctls :\n          get_mib, set_mib\n", interface.c_str());
    else if (action == "get_mib")
        getSetting(interface, setting);
    else if (action == "set_mib")
        setSetting(interface, setting);
    else
        fail("Invalid command : %s", action.c_str());
}
