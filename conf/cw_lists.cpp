#include "conf/cw_lists.h"

#include <cstddef>
#include <cstring>

#include "cli/output.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/text.h"

namespace
{

bool isAddressList(const char* key)
{
    return std::strcmp(key, "ac-ip-addr") == 0;
}

bool isHostnameList(const char* key)
{
    return std::strcmp(key, "ac-hostname") == 0;
}

bool holdsAddress(const CwConfig& config, std::uint32_t address)
{
    for (int i = 0; i < config.acAddressCount; ++i)
        if (config.acAddresses[i].address == address)
            return true;
    return false;
}

bool parseListAddress(const char* value, std::uint32_t* address)
{
    if (parseAddress(value, address))
        return true;
    cli_printf("    Error: Invalid AC IP address '%s'\n", value);
    return false;
}

bool addAddress(const char* value, CwConfig& config)
{
    std::uint32_t address;
    if (!parseListAddress(value, &address))
        return false;
    if (config.acAddressCount >= kAcAddressLimit) {
        cli_print("AC Static IP address reached the upper limit\n");
        return false;
    }
    if (holdsAddress(config, address)) {
        cli_printf("Duplicate AC IP address '%s'\n", value);
        return false;
    }
    return cwConfAppendAddress(config, address);
}

/// Closes the list over the entries that `isWanted` names. The count falls during the walk, so of two equal neighbours
/// the list keeps one and loses what follows. Entries past the count are cleared: a list that was added to and deleted
/// from again is the same bytes.
template <typename Entry, std::size_t Size, typename IsWanted>
bool removeEntries(Entry (&entries)[Size], std::uint8_t& count, IsWanted isWanted)
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
    return found;
}

bool removeAddress(std::uint32_t address, CwConfig& config)
{
    return removeEntries(config.acAddresses, config.acAddressCount,
                         [address](const AcAddress& entry) { return entry.address == address; });
}

bool removeHostname(const char* name, CwConfig& config)
{
    return removeEntries(config.acHostnames, config.acHostnameCount,
                         [name](const auto& entry) { return std::strcmp(entry, name) == 0; });
}

} // namespace

bool cwConfAppendAddress(CwConfig& config, std::uint32_t address)
{
    if (config.acAddressCount >= kAcAddressRoom)
        return false;
    config.acAddresses[config.acAddressCount++] = {address, 1, 0};
    return true;
}

bool cwConfAppendHostname(CwConfig& config, const char* name)
{
    if (config.acHostnameCount >= kAcHostnameLimit)
        return false;
    copyText(config.acHostnames[config.acHostnameCount++], name);
    return true;
}

void cwConfClearLists(CwConfig& config)
{
    std::memset(config.acAddresses, 0, sizeof config.acAddresses);
    std::memset(config.acHostnames, 0, sizeof config.acHostnames);
    config.acAddressCount = 0;
    config.acHostnameCount = 0;
}

int cwConfListAdd(const char* key, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    if (isAddressList(key) && !addAddress(value, config))
        return -1;
    if (isHostnameList(key))
        cwConfAppendHostname(config, value);
    config.saved = 0;
    return 0;
}

int cwConfListDelete(const char* key, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    bool found = false;
    if (isAddressList(key)) {
        std::uint32_t address;
        if (!parseListAddress(value, &address))
            return -1;
        found = removeAddress(address, config);
    } else if (isHostnameList(key)) {
        found = removeHostname(value, config);
    }
    if (!found) {
        cli_printf("    Failed to find '%s' in list\n", value);
        return -1;
    }
    config.saved = 0;
    return 0;
}

int cwConfListShow(const char* key, CwConfig& config)
{
    cwConfRefresh(config);
    if (isAddressList(key))
        cli_printf("    acStaticIpAddrListCnt        : %d\n", config.acAddressCount);
    else if (isHostnameList(key))
        cli_printf("    acHostNameCnt                : %d\n", config.acHostnameCount);
    else
        return -1;
    forEachValue(*cwConfItem(key), config,
                 [](const char* name, const char* value) { cli_printf("    %-29s: %s\n", name, value); });
    return 0;
}
