#include "conf/cw_lists.h"

#include <cstdio>
#include <cstring>

#include "base/address.h"
#include "base/text.h"
#include "shell/output.h"

namespace
{

void printTooMany(const CwItem& item, const char* value)
{
    cli_printf("    Error: Too many %s entries, '%s' ignored.\n", item.key.data(), value);
}

void printNotInList(const char* value)
{
    cli_printf("    Failed to find '%s' in list\n", value);
}

template <auto Count>
int countEntries(const CwConfig& config)
{
    return config.*Count;
}

template <auto Entries, auto Count>
void clearEntries(CwConfig& config)
{
    std::memset(config.*Entries, 0, sizeof(config.*Entries));
    config.*Count = 0;
}

/// Removes the entries for which `isWanted` is true and moves the following ones up. Prints a message if there is none.
/// The count decreases during the loop, so if two consecutive entries are equal, one of them stays and an entry after
/// them is lost; the device has always done so. Sets the entries after the last one to zero, so that a record has its
/// old bytes again after an entry was added and removed.
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
        printNotInList(value);
    return found;
}

/// Prints a message and returns false if the text is no address.
bool parseAcAddress(const char* value, std::uint32_t* address)
{
    if (parseIpv4(value, address))
        return true;
    cli_printf("    Error: Invalid AC IP address '%s'\n", value);
    return false;
}

/// Returns false if the list is full.
bool appendAddress(CwConfig& config, std::uint32_t address)
{
    if (config.acAddressCount >= kAcAddressRoom)
        return false;
    config.acAddresses[config.acAddressCount++] = {address, 1, 0};
    return true;
}

bool holdsAddress(const CwConfig& config, std::uint32_t address)
{
    for (int i = 0; i < config.acAddressCount; ++i)
        if (config.acAddresses[i].address == address)
            return true;
    return false;
}

bool setAddressEntry(const CwItem& item, const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseAcAddress(value, &address))
        return false;
    if (!appendAddress(config, address))
        printTooMany(item, value);
    return true;
}

bool addAddress(const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseAcAddress(value, &address))
        return false;
    if (config.acAddressCount >= kAcAddressLimit) {
        cli_print("AC Static IP address reached the upper limit\n");
        return false;
    }
    if (holdsAddress(config, address)) {
        cli_printf("Duplicate AC IP address '%s'\n", value);
        return false;
    }
    return appendAddress(config, address);
}

bool removeAddress(const char* value, CwConfig& config)
{
    std::uint32_t address;
    return parseAcAddress(value, &address) &&
           removeEntries(value, config.acAddresses, config.acAddressCount,
                         [address](const AcAddress& entry) { return entry.address == address; });
}

bool putAddress(int entry, const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseAcAddress(value, &address))
        return false;
    if (entry < config.acAddressCount)
        config.acAddresses[entry] = {address, 1, 0};
    while (config.acAddressCount <= entry)
        appendAddress(config, address);
    return true;
}

void formatAddress(const CwConfig& config, int entry, std::span<char> text)
{
    copyText(text, ipv4Text(config.acAddresses[entry].address).text);
}

void formatAddressEntry(const CwItem&, const CwConfig& config, int index, std::span<char> text)
{
    const AcAddress& entry = config.acAddresses[index];
    std::snprintf(text.data(), text.size(), "%s %d", ipv4Text(entry.address).text, entry.inUse);
}

/// Returns false if the list is full.
bool appendHostname(CwConfig& config, const char* name)
{
    if (config.acHostnameCount >= kAcHostnameLimit)
        return false;
    copyText(config.acHostnames[config.acHostnameCount++], name);
    return true;
}

bool setHostnameEntry(const CwItem& item, const char* value, CwConfig& config)
{
    if (!appendHostname(config, value))
        printTooMany(item, value);
    return true;
}

/// If the list is full, the name is ignored without a message.
bool addHostname(const char* value, CwConfig& config)
{
    appendHostname(config, value);
    return true;
}

bool removeHostname(const char* value, CwConfig& config)
{
    return removeEntries(value, config.acHostnames, config.acHostnameCount,
                         [value](const auto& entry) { return std::strcmp(entry, value) == 0; });
}

bool putHostname(int entry, const char* value, CwConfig& config)
{
    if (entry < config.acHostnameCount)
        copyText(config.acHostnames[entry], value);
    while (config.acHostnameCount <= entry)
        appendHostname(config, value);
    return true;
}

void formatHostname(const CwConfig& config, int entry, std::span<char> text)
{
    copyText(text, config.acHostnames[entry]);
}

void formatHostnameEntry(const CwItem&, const CwConfig& config, int index, std::span<char> text)
{
    formatHostname(config, index, text);
}

constexpr CwList kAddressList = {
    .count = countEntries<&CwConfig::acAddressCount>,
    .clear = clearEntries<&CwConfig::acAddresses, &CwConfig::acAddressCount>,
    .countName = "acStaticIpAddrListCnt",
    .addHelp = kAddAcAddressHelp,
    .deleteHelp = kDeleteAcAddressHelp,
    .add = addAddress,
    .remove = removeAddress,
    .put = putAddress,
    .format = formatAddress,
};

constexpr CwList kHostnameList = {
    .count = countEntries<&CwConfig::acHostnameCount>,
    .clear = clearEntries<&CwConfig::acHostnames, &CwConfig::acHostnameCount>,
    .countName = "acHostNameCnt",
    .addHelp = kAddAcHostnameHelp,
    .deleteHelp = kDeleteAcHostnameHelp,
    .add = addHostname,
    .remove = removeHostname,
    .put = putHostname,
    .format = formatHostname,
};

} // namespace

const CwKind kAcAddresses = {setAddressEntry, formatAddressEntry, &kAddressList};
const CwKind kAcHostnames = {setHostnameEntry, formatHostnameEntry, &kHostnameList};

void cwConfListAdd(const CwItem& item, const char* value, CwConfig& config)
{
    if (item.kind->list == nullptr || item.kind->list->add(value, config))
        config.saved = 0;
}

void cwConfListDelete(const CwItem& item, const char* value, CwConfig& config)
{
    if (item.kind->list == nullptr)
        printNotInList(value);
    else if (item.kind->list->remove(value, config))
        config.saved = 0;
}

void cwConfListPut(const CwItem& item, int entry, const char* value, CwConfig& config)
{
    if (item.kind->list->put(entry, value, config))
        config.saved = 0;
}
