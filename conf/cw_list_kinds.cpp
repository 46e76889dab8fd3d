// The kinds of the two lists of access controllers: static addresses and host names.

#include <cstdio>
#include <cstring>

#include "base/address.h"
#include "base/text.h"
#include "conf/cw_kinds.h"
#include "shell/output.h"

namespace
{

void sayTooMany(const CwItem& item, const char* value)
{
    cli_printf("    Error: Too many %s entries, '%s' ignored.\n", item.key.data(), value);
}

/// Closes the list over the entries that `isWanted` names; says when there is none. The count falls during the walk, so
/// of two equal neighbours the list keeps one and loses what follows. Entries past the count are cleared: a list that
/// was added to and deleted from again is the same bytes.
template <typename Entry, std::size_t Size, typename IsWanted>
bool removeEntries(const char* value, Entry (&entries)[Size], std::uint8_t& count, IsWanted isWanted)
{
    bool found = false;
    for (std::size_t i = 0; i < count; ++i) {
        if (isWanted(entries[i])) {
            found = true;
            --count;
        }
        if (found && i + 1 < Size)
            std::memcpy(&entries[i], &entries[i + 1], sizeof(Entry));
    }
    std::memset(entries + count, 0, (Size - count) * sizeof(Entry));
    if (!found)
        sayNotInList(value);
    return found;
}

bool setAcAddress(const CwItem& item, const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseAcAddress(value, &address))
        return false;
    if (!cwConfAppendAddress(config, address))
        sayTooMany(item, value);
    return true;
}

void renderAcAddress(const CwItem&, const CwConfig& config, int index, std::span<char> text)
{
    const AcAddress& entry = config.acAddresses[index];
    std::snprintf(text.data(), text.size(), "%s %d", ipv4Text(entry.address).text, entry.inUse);
}

int countAcAddresses(const CwConfig& config)
{
    return config.acAddressCount;
}

void clearAcAddresses(CwConfig& config)
{
    std::memset(config.acAddresses, 0, sizeof config.acAddresses);
    config.acAddressCount = 0;
}

bool holdsAcAddress(const CwConfig& config, std::uint32_t address)
{
    for (int i = 0; i < config.acAddressCount; ++i)
        if (config.acAddresses[i].address == address)
            return true;
    return false;
}

bool addAcAddress(const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseAcAddress(value, &address))
        return false;
    if (config.acAddressCount >= kAcAddressLimit) {
        cli_print("AC Static IP address reached the upper limit\n");
        return false;
    }
    if (holdsAcAddress(config, address)) {
        cli_printf("Duplicate AC IP address '%s'\n", value);
        return false;
    }
    return cwConfAppendAddress(config, address);
}

bool removeAcAddress(const char* value, CwConfig& config)
{
    std::uint32_t address;
    return parseAcAddress(value, &address) &&
           removeEntries(value, config.acAddresses, config.acAddressCount,
                         [address](const AcAddress& entry) { return entry.address == address; });
}

bool setAcHostname(const CwItem& item, const char* value, CwConfig& config)
{
    if (!cwConfAppendHostname(config, value))
        sayTooMany(item, value);
    return true;
}

void renderAcHostname(const CwItem&, const CwConfig& config, int index, std::span<char> text)
{
    copyText(text, config.acHostnames[index]);
}

int countAcHostnames(const CwConfig& config)
{
    return config.acHostnameCount;
}

void clearAcHostnames(CwConfig& config)
{
    std::memset(config.acHostnames, 0, sizeof config.acHostnames);
    config.acHostnameCount = 0;
}

/// A surplus name is dropped silently.
bool addAcHostname(const char* value, CwConfig& config)
{
    cwConfAppendHostname(config, value);
    return true;
}

bool removeAcHostname(const char* value, CwConfig& config)
{
    return removeEntries(value, config.acHostnames, config.acHostnameCount,
                         [value](const auto& entry) { return std::strcmp(entry, value) == 0; });
}

constexpr CwList kAddressList = {
    .count = countAcAddresses,
    .clear = clearAcAddresses,
    .countName = "acStaticIpAddrListCnt",
    .addHelp = kAddAcAddressHelp,
    .deleteHelp = kDeleteAcAddressHelp,
    .add = addAcAddress,
    .remove = removeAcAddress,
};

constexpr CwList kHostnameList = {
    .count = countAcHostnames,
    .clear = clearAcHostnames,
    .countName = "acHostNameCnt",
    .addHelp = kAddAcHostnameHelp,
    .deleteHelp = kDeleteAcHostnameHelp,
    .add = addAcHostname,
    .remove = removeAcHostname,
};

} // namespace

const CwKind kAcAddresses = {setAcAddress, renderAcAddress, &kAddressList};
const CwKind kAcHostnames = {setAcHostname, renderAcHostname, &kHostnameList};

bool parseAcAddress(const char* value, std::uint32_t* address)
{
    if (parseIpv4(value, address))
        return true;
    cli_printf("    Error: Invalid AC IP address '%s'\n", value);
    return false;
}

void sayNotInList(const char* value)
{
    cli_printf("    Failed to find '%s' in list\n", value);
}
