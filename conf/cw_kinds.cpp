#include "conf/cw_kinds.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "base/address.h"
#include "base/text.h"
#include "shell/output.h"

namespace
{

int numberOf(const CwNumber& field, const CwConfig& config)
{
    switch (field.type) {
    case CwNumber::Type::kByte:
        return config.*field.byte;
    case CwNumber::Type::kWord:
        return config.*field.word;
    default:
        return static_cast<int>(config.*field.doubleWord);
    }
}

void store(const CwNumber& field, int number, CwConfig& config)
{
    switch (field.type) {
    case CwNumber::Type::kByte:
        config.*field.byte = static_cast<std::uint8_t>(number);
        break;
    case CwNumber::Type::kWord:
        config.*field.word = static_cast<std::uint16_t>(number);
        break;
    default:
        config.*field.doubleWord = static_cast<std::uint32_t>(number);
        break;
    }
}

void formatNumber(const CwItem& item, const CwConfig& config, int, std::span<char> text)
{
    std::snprintf(text.data(), text.size(), "%d", numberOf(item.field.number, config));
}

bool setStored(const CwItem& item, const char* value, CwConfig& config)
{
    store(item.field.number, numberFrom(value), config);
    return true;
}

bool setChecked(const CwItem& item, const char* value, CwConfig& config)
{
    const int number = numberFrom(value);
    if (!isDigits(value) || number < item.low || number > item.high)
        return false;
    store(item.field.number, number, config);
    return true;
}

bool setIgnored(const CwItem&, const char*, CwConfig&)
{
    return true;
}

bool setVlan(const CwItem& item, const char* value, CwConfig& config)
{
    constexpr int kReserved[2] = {898, 899};
    const int number = numberFrom(value);
    if (number != kReserved[0] && number != kReserved[1])
        return setChecked(item, value, config);
    cli_printf("ERR: vlan id %d and %d are reserved for internal use.\n", kReserved[0], kReserved[1]);
    return true;
}

bool setScanTimers(const CwItem&, const char* value, CwConfig& config)
{
    for (std::uint16_t& timer : config.apScanRptTimer)
        timer = static_cast<std::uint16_t>(numberFrom(value));
    return true;
}

bool setDiscoveryType(const CwItem&, const char* value, CwConfig& config)
{
    struct Word {
        std::string_view keyword;
        std::string_view digit;
        std::uint8_t type;
    };
    static constexpr Word kWords[] = {
        {"auto", "0", 0},      {"static", "1", 1},    {"dhcp", "2", 2},     {"dns", "3", 3},
        {"broadcast", "5", 5}, {"multicast", "6", 6}, {"quillsky", "7", 7},
    };
    for (const Word& word : kWords)
        if (word.keyword == value || word.digit == value) {
            config.discoveryType = word.type;
            return true;
        }
    return false;
}

bool setAddrMode(const CwItem&, const char* value, CwConfig& config)
{
    const std::string_view mode = value;
    if (mode != "dhcp" && mode != "static")
        return false;
    config.addrMode = mode == "dhcp" ? 1 : 0;
    return true;
}

void formatAddrMode(const CwItem&, const CwConfig& config, int, std::span<char> text)
{
    copyText(text, config.addrMode != 0 ? "dhcp" : "static");
}

/// Stores an address. If the value is not an address, prints a message, in which `what` names the kind of address.
void storeAddress(const CwItem& item, const char* value, CwConfig& config, const char* what)
{
    if (!parseIpv4(value, &(config.*item.field.address)))
        cli_printf("    Error: Invalid %s address '%s'\n", what, value);
}

bool setAddress(const CwItem& item, const char* value, CwConfig& config)
{
    storeAddress(item, value, config, "IP");
    return true;
}

bool setMulticast(const CwItem& item, const char* value, CwConfig& config)
{
    storeAddress(item, value, config, "Multicast");
    return true;
}

void formatAddress(const CwItem& item, const CwConfig& config, int, std::span<char> text)
{
    copyText(text, ipv4Text(config.*item.field.address).text);
}

struct SecurityOption {
    std::string_view word;
    std::uint8_t bits;
    std::uint8_t shownBy;
};

constexpr SecurityOption kSecurityOptions[] = {
    {"clear", kSecClear, kSecClearShown},
    {"dtls", kSecDtls, kSecDtls},
    {"ipsec", kSecIpsec, kSecIpsec},
};

const SecurityOption* optionAt(std::string_view text)
{
    for (const SecurityOption& option : kSecurityOptions)
        if (text.starts_with(option.word))
            return &option;
    return nullptr;
}

bool setSecurity(const CwItem&, const char* value, CwConfig& config)
{
    std::uint8_t bits = 0;
    const char* text = value + std::strspn(value, " ");
    while (*text != '\0') {
        const SecurityOption* option = optionAt(text);
        if (option == nullptr) {
            cli_printf("    Error: Invalid option (%s). Options: [clear,dtls,ipsec]\n", value);
            return false;
        }
        bits |= option->bits;
        text += option->word.size();
        text += std::strspn(text, " ,");
    }
    config.dataChannelSec = bits;
    return true;
}

void formatSecurity(const CwItem&, const CwConfig& config, int, std::span<char> text)
{
    text[0] = '\0';
    std::size_t length = 0;
    for (const SecurityOption& option : kSecurityOptions)
        if ((config.dataChannelSec & option.shownBy) != 0)
            length += static_cast<std::size_t>(std::snprintf(text.data() + length, text.size() - length, "%s%s",
                                                             length > 0 ? "," : "", option.word.data()));
}

bool setText(const CwItem& item, const char* value, CwConfig& config)
{
    copyText(item.field.text(config), value);
    return true;
}

void formatTextItem(const CwItem& item, const CwConfig& config, int, std::span<char> text)
{
    copyText(text, item.field.text(const_cast<CwConfig&>(config)).data());
}

bool setVersion(const CwItem& item, const char* value, CwConfig& config)
{
    return cwConfSetVersion(config.*item.field.version, value);
}

void formatVersion(const CwItem& item, const CwConfig& config, int, std::span<char> text)
{
    copyText(text, config.*item.field.version);
}

} // namespace

const CwFieldKind<CwNumber> kStored = {{setStored, formatNumber, nullptr}};
const CwFieldKind<CwNumber> kChecked = {{setChecked, formatNumber, nullptr}};
const CwFieldKind<CwNumber> kIgnored = {{setIgnored, formatNumber, nullptr}};
const CwFieldKind<CwNumber> kVlan = {{setVlan, formatNumber, nullptr}};
const CwFieldKind<CwNumber> kDiscoveryType = {{setDiscoveryType, formatNumber, nullptr}};
const CwFieldKind<CwAddress> kAddress = {{setAddress, formatAddress, nullptr}};
const CwFieldKind<CwAddress> kOwnAddress = {{setAddress, formatAddress, nullptr}};
const CwFieldKind<CwAddress> kMulticast = {{setMulticast, formatAddress, nullptr}};
const CwFieldKind<CwText> kText = {{setText, formatTextItem, nullptr}};
const CwFieldKind<CwText> kPassword = {{nullptr, formatTextItem, nullptr}};
const CwFieldKind<CwVersion> kVersion = {{setVersion, formatVersion, nullptr}};
const CwKind kAddrMode = {setAddrMode, formatAddrMode, nullptr};
const CwKind kSecurity = {setSecurity, formatSecurity, nullptr};
const CwKind kScanTimers = {setScanTimers, nullptr, nullptr};
