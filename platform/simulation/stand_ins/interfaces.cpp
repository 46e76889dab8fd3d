#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "base/address.h"
#include "platform/device_file.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/stand_ins/stand_in.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kLoopback[] = "lo";
constexpr int kAddressBits = 32;

/// Parses "A.B.C.D" into host byte order.
std::optional<std::uint32_t> addressFrom(const std::string& text)
{
    std::uint32_t address = 0;
    if (!parseIpv4(text.c_str(), &address) || text != ipv4Text(address).text)
        return std::nullopt;
    return address;
}

std::string pathOf(const std::string& state)
{
    return DeviceFile(("/sim/" + state).c_str()).path();
}

std::string addressFile(const std::string& interface)
{
    return pathOf("interfaces/" + interface + "/address");
}

/// The addresses of an interface, each as "A.B.C.D/BITS".
std::vector<std::string> addressesOf(const std::string& interface)
{
    std::vector<std::string> addresses;
    if (interface == kLoopback)
        addresses.emplace_back("127.0.0.1/8");
    std::ifstream file(addressFile(interface));
    for (std::string line; std::getline(file, line);)
        if (!line.empty())
            addresses.push_back(line);
    return addresses;
}

void setAddress(const std::string& interface, const std::string& address)
{
    simSetInterfaceText(interface.c_str(), "address", address.c_str());
}

void setUp(const std::string& interface, bool up)
{
    simSetInterfaceNumber(interface.c_str(), "up", up ? 1 : 0);
}

void printInet(const std::string& text)
{
    const std::size_t slash = text.find('/');
    const std::uint32_t address = addressFrom(text.substr(0, slash)).value_or(0);
    const int bits = slash != std::string::npos ? std::atoi(text.c_str() + slash + 1) : 0;
    const std::uint32_t host = bits < kAddressBits ? UINT32_MAX >> bits : 0;
    std::printf("          inet addr:%s  Bcast:%s  Mask:%s\n", ipv4Text(address).text, ipv4Text(address | host).text,
                ipv4Text(~host).text);
}

/// Prints the packet and byte counters of an interface. The CAPWAP daemon updates them.
void printTraffic(const std::string& interface)
{
    unsigned long long packets[2]{};
    unsigned long long bytes[2]{};
    std::ifstream file(pathOf("traffic"));
    for (std::string name, rest; file >> name && std::getline(file, rest);)
        if (name == interface)
            std::istringstream(rest) >> packets[0] >> bytes[0] >> packets[1] >> bytes[1];
    std::printf("          RX packets:%llu errors:0 dropped:0 overruns:0 frame:0\n"
                "          TX packets:%llu errors:0 dropped:0 overruns:0 carrier:0\n"
                "          collisions:0 txqueuelen:1000\n"
                "          RX bytes:%llu (%llu MiB)  TX bytes:%llu (%llu MiB)\n\n",
                packets[0], packets[1], bytes[0], bytes[0] >> 20, bytes[1], bytes[1] >> 20);
}

void printInterface(const std::string& interface)
{
    const bool isLoopback = interface == kLoopback;
    const bool runs = simInterfaceRuns(interface.c_str());
    const std::string link = isLoopback ? "Local Loopback" : "Ethernet  HWaddr " + macOf(interface);
    std::printf("%-9s Link encap:%s\n", interface.c_str(), link.c_str());
    for (const std::string& address : addressesOf(interface))
        printInet(address);
    std::printf("          %s  MTU:1500  Metric:1\n", isLoopback        ? "UP LOOPBACK RUNNING"
                                                      : runs            ? "UP BROADCAST RUNNING MULTICAST"
                                                      : isUp(interface) ? "UP BROADCAST MULTICAST"
                                                                        : "BROADCAST MULTICAST");
    printTraffic(interface);
}

void setNetmask(const std::string& interface, const char* text)
{
    const std::optional<std::uint32_t> mask = addressFrom(text);
    if (!mask)
        fail("%s: bad netmask", text);
    const std::vector<std::string> addresses = addressesOf(interface);
    if (addresses.empty())
        fail("%s has no address", interface.c_str());
    setAddress(interface, addresses[0].substr(0, addresses[0].find('/')) + "/" + std::to_string(std::popcount(*mask)));
}

/// Replaces all addresses of an interface and brings it up. 0.0.0.0 only removes the addresses.
void changeAddress(const std::string& interface, const std::string& text)
{
    const std::optional<std::uint32_t> address = addressFrom(text);
    if (!address)
        fail("%s: bad address", text.c_str());
    if (*address == 0) {
        std::remove(addressFile(interface).c_str());
        return;
    }
    setAddress(interface, text + "/24");
    setUp(interface, true);
}

std::string lowerCase(std::string digits)
{
    for (char& c : digits)
        c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    return digits;
}

void printAddresses(const std::string& interface, std::size_t number)
{
    const bool isLoopback = interface == kLoopback;
    const std::string link = "ether " + lowerCase(macOf(interface)) + " brd ff:ff:ff:ff:ff:ff";
    std::printf("%zu: %s: <%s> mtu 1500\n    link/%s\n", number, interface.c_str(),
                isLoopback        ? "LOOPBACK,UP,LOWER_UP"
                : isUp(interface) ? "BROADCAST,MULTICAST,UP,LOWER_UP"
                                  : "BROADCAST,MULTICAST",
                isLoopback ? "loopback" : link.c_str());
    for (const std::string& address : addressesOf(interface))
        std::printf("    inet %s scope global %s\n", address.c_str(), interface.c_str());
}

void addAddress(const std::string& interface, const std::string& address)
{
    const std::vector<std::string> present = addressesOf(interface);
    if (std::ranges::find(present, address) != present.end()) {
        std::fputs("RTNETLINK answers: File exists\n", stderr);
        std::exit(2);
    }
    std::ofstream(addressFile(interface), std::ios::app) << address << '\n';
}

/// The argument of `ip addr add` as "A.B.C.D/BITS".
std::string prefixFrom(const std::string& text)
{
    const std::size_t slash = text.find('/');
    const std::string address = text.substr(0, slash);
    const std::string bits = slash != std::string::npos ? text.substr(slash + 1) : std::to_string(kAddressBits);
    if (!addressFrom(address) || !isNumber(bits) || std::stoi(bits) > kAddressBits)
        fail("\"%s\" is not a legal address A.B.C.D[/MASK]", text.c_str());
    return address + "/" + bits;
}

/// Removes the first word and returns it; an empty text if there is none.
std::string takeWord(Words& words)
{
    if (words.empty())
        return "";
    std::string word = words[0];
    words = words.subspan(1);
    return word;
}

} // namespace

std::vector<std::string> interfaceNames()
{
    std::vector<std::string> names;
    for (const auto& folder : std::filesystem::directory_iterator(pathOf("interfaces")))
        names.push_back(folder.path().filename());
    std::ranges::sort(names);
    return names;
}

bool isInterface(const std::string& name)
{
    const std::vector<std::string> names = interfaceNames();
    return std::ranges::find(names, name) != names.end();
}

bool isUp(const std::string& interface)
{
    return interface == kLoopback || simInterfaceNumber(interface.c_str(), "up") != 0;
}

std::string macOf(const std::string& interface)
{
    const std::array<std::uint8_t, 6> mac = simHardwareAddress(interface.c_str());
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
    return text;
}

bool isNumber(const std::string& text)
{
    return !text.empty() && text.size() < 10 && text.find_first_not_of("0123456789") == std::string::npos &&
           (text[0] != '0' || text.size() == 1);
}

/// ifconfig [-a] [INTERFACE [up | down | A.B.C.D] [netmask A.B.C.D]]
void ifconfig(Words words)
{
    const bool listsAll = words.size() == 1 && std::strcmp(words[0], "-a") == 0;
    if (words.empty() || listsAll) {
        for (const std::string& interface : interfaceNames())
            if (listsAll || isUp(interface))
                printInterface(interface);
        return;
    }
    const std::string interface = takeWord(words);
    if (!isInterface(interface))
        fail("%s: error fetching interface information: Device not found", interface.c_str());
    if (words.empty())
        printInterface(interface);
    while (!words.empty()) {
        const std::string word = takeWord(words);
        if (word == "up" || word == "down")
            setUp(interface, word == "up");
        else if (word == "netmask")
            setNetmask(interface, takeWord(words).c_str());
        else
            changeAddress(interface, word);
    }
}

/// ip addr [show [dev INTERFACE] | add A.B.C.D[/MASK] dev INTERFACE | flush dev INTERFACE]
void ip(Words words)
{
    const std::string object = takeWord(words);
    if (object.empty() || !std::string("address").starts_with(object))
        fail("only \"ip addr [show|add|flush]\" is simulated");
    const std::string action = words.empty() ? "show" : takeWord(words);
    const std::string address = action == "add" ? prefixFrom(takeWord(words)) : "";
    std::string interface;
    if (!words.empty() && std::strcmp(words[0], "dev") == 0) {
        takeWord(words);
        interface = takeWord(words);
        if (!isInterface(interface))
            fail("Cannot find device \"%s\"", interface.c_str());
    }
    if (!words.empty())
        fail("\"%s\" is not understood", words[0]);

    if (std::string("show").starts_with(action) || action == "list") {
        std::size_t number = 0;
        for (const std::string& name : interfaceNames())
            if (++number; interface.empty() || interface == name)
                printAddresses(name, number);
        return;
    }
    if (action != "add" && action != "flush")
        fail("\"addr %s\" is not understood", action.c_str());
    if (interface.empty())
        fail("\"dev INTERFACE\" is required");
    if (action == "add")
        addAddress(interface, address);
    else
        std::remove(addressFile(interface).c_str());
}

/// brctl show: prints the bridge "br0". Its ports are "eth0" and the interfaces with local bridging that are up.
void brctl(Words words)
{
    if (words.empty() || std::strcmp(words[0], "show") != 0)
        fail("only \"brctl show\" is simulated");
    std::string identifier = lowerCase(macOf("br0"));
    std::erase(identifier, ':');
    std::printf("bridge name\tbridge id\t\tSTP enabled\tinterfaces\nbr0\t\t8000.%s\tno\t\teth0\n", identifier.c_str());
    for (const std::string& interface : interfaceNames())
        if (isUp(interface) && simInterfaceNumber(interface.c_str(), "local_bridging") != 0)
            std::printf("\t\t\t\t\t\t\t%s\n", interface.c_str());
}

void printMac(Words words)
{
    if (!words.empty())
        std::printf("%s\n", macOf(words[0]).c_str());
}

void printInterfaces(Words)
{
    for (const std::string& interface : interfaceNames())
        std::printf("%s\n", interface.c_str());
}

void endUnlessUp(Words words)
{
    if (words.empty() || !isUp(words[0]))
        std::exit(EXIT_FAILURE);
}

/// Exits with 1 if an address does not answer. The device's own addresses always answer. The controller does not answer
/// if the state file "daemon/controller" is "none". Other addresses answer if eth0 is up and has an address.
void endUnlessReached(Words words)
{
    const std::string address = takeWord(words);
    if (address.starts_with("127.") || address == "::1")
        return;
    char controller[32];
    char presence[32];
    simReadText("network/controller", controller, sizeof controller, "");
    simReadText("daemon/controller", presence, sizeof presence, "");
    if (address == controller && std::strcmp(presence, "none") == 0)
        std::exit(EXIT_FAILURE);
    const auto isOwn = [&address](const std::string& interface) {
        return std::ranges::any_of(addressesOf(interface),
                                   [&address](const std::string& own) { return own.starts_with(address + "/"); });
    };
    if (!std::ranges::any_of(interfaceNames(), isOwn) && (!isUp("eth0") || addressesOf("eth0").empty()))
        std::exit(EXIT_FAILURE);
}
