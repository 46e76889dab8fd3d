#include "conf/cw_lists.h"

#include <cstddef>
#include <cstring>

#include "base/address.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/messages.h"
#include "shell/output.h"

namespace
{

bool holdsAddress(const CwConfig& config, std::uint32_t address)
{
    for (int i = 0; i < config.acAddressCount; ++i)
        if (config.acAddresses[i].address == address)
            return true;
    return false;
}

bool parseListAddress(const char* value, std::uint32_t* address)
{
    if (parseIpv4(value, address))
        return true;
    cli_printf(kInvalidAcAddress, value);
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

int cwConfListAdd(const CwItem& item, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    if (item.kind == &kAcAddresses && !addAddress(value, config))
        return -1;
    if (item.kind == &kAcHostnames)
        cwConfAppendHostname(config, value);
    config.saved = 0;
    return 0;
}

int cwConfListDelete(const CwItem& item, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    bool found = false;
    if (item.kind == &kAcAddresses) {
        std::uint32_t address;
        if (!parseListAddress(value, &address))
            return -1;
        found = removeAddress(address, config);
    } else if (item.kind == &kAcHostnames) {
        found = removeHostname(value, config);
    }
    if (!found) {
        cli_printf("    Failed to find '%s' in list\n", value);
        return -1;
    }
    config.saved = 0;
    return 0;
}
