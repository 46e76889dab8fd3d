#include "conf/sys_conf.h"

#include <cstdio>
#include <span>
#include <string_view>

#include "base/text.h"
#include "conf/conf_replace.h"
#include "conf/file_watch.h"
#include "platform/system_library.h"
#include "shell/output.h"

constinit SysConfig sysConfig{};

namespace
{

constexpr char kFrameLine[] = "#=====================SYS CONF PARAMs========================\n";

/// One item. Its value is a text if `text` is set, otherwise a number.
struct SysItem {
    std::string_view key; ///< in the file and in the commands
    const char* label;    ///< in the display
    std::span<char> (*text)(SysConfig& config) = nullptr;
    std::int32_t SysConfig::*number = nullptr;
    bool isInFile = true;
    bool isLeftOutIfEmpty = false;
};

template <auto Field>
std::span<char> textOf(SysConfig& config)
{
    return config.*Field;
}

/// All items, in the order of the file and of the display.
constexpr SysItem kSystemItems[] = {
    {.key = "factorysn", .label = "factorysn", .text = textOf<&SysConfig::factorysn>, .isLeftOutIfEmpty = true},
    {.key = "hostname", .label = "hostname", .text = textOf<&SysConfig::hostname>},
    {.key = "mgmt-addr", .label = "static-addr", .text = textOf<&SysConfig::staticAddr>, .isInFile = false},
    {.key = "baudrate", .label = "baudrate", .number = &SysConfig::baudrate},
    {.key = "admin-timeout", .label = "admin-timeout", .number = &SysConfig::adminTimeout},
};

struct SysValue {
    SysValue(const SysItem& item, SysConfig& config)
    {
        if (item.text != nullptr)
            copyText(text, item.text(config).data());
        else
            std::snprintf(text, sizeof text, "%d", config.*item.number);
    }

    char text[sizeof SysConfig::hostname];
};

/// Calls `line(item, value)` for every item with a value.
template <typename Line>
void forEachItem(SysConfig& config, Line line)
{
    for (const SysItem& item : kSystemItems)
        if (const SysValue value(item, config); value.text[0] != '\0' || !item.isLeftOutIfEmpty)
            line(item, value.text);
}

constinit FileWatch sysFile(kSysConfFile);

void setSerialNumber(SysConfig& config)
{
    read_sn(config.hostname, sizeof config.hostname, 0);
}

bool readSysFile(SysConfig& config)
{
    const bool isRead = sysFile.read([&config] { return sysConfRead(config) == 0; });
    if (isRead)
        config.fileTime = sysFile.seconds();
    return isRead;
}

/// Reads the file into the process's record if another shell has changed it. Prints a message and returns false if it
/// cannot be read.
bool catchUp()
{
    return sysFile.catchUp([] { return readSysFile(sysConfig); });
}

} // namespace

// Reads into a copy, so that a file that cannot be read to its end changes nothing.
int sysConfRead(SysConfig& config)
{
    ConfItems items("sysConfRead", kSysConfFile);
    SysConfig fresh = config;
    setSerialNumber(fresh);
    while (items.next())
        sysConfSetItem(items.key(), items.value(), fresh);
    if (!items.failed()) {
        config = fresh;
        return 0;
    }
    if (!items.isOpen() || config.hostname[0] == '\0')
        setSerialNumber(config);
    return -1;
}

int sysConfSetItem(const char* key, const char* value, SysConfig& config)
{
    for (const SysItem& item : kSystemItems) {
        if (!item.isInFile || item.key != key)
            continue;
        if (item.text != nullptr)
            copyText(item.text(config), value);
        else
            config.*item.number = numberFrom(value);
    }
    return 0;
}

int sysConfWrite()
{
    ConfText text;
    text.append("%s#CONFIG system\n", kFrameLine);
    forEachItem(sysConfig, [&text](const SysItem& item, const char* value) {
        if (item.isInFile)
            text.append("%s=%s\n", item.key.data(), value);
    });
    text.append("%s", kFrameLine);
    if (replaceConfFile(kSysConfFile, text) != 0)
        return -1;
    sysConfig.saved = 1;
    return 0;
}

void sysConfRefresh(SysConfig& config)
{
    if (sysFile.hasChanged())
        readSysFile(config);
}

void sysConfLoad(SysConfig& config)
{
    readSysFile(config);
}

int sysConfChange(const char* key, const char* value)
{
    const GatheredOutput gathered; // prints messages after the lock is released
    const ConfFolderLock lock;
    const bool isCaughtUp = catchUp();
    sysConfSetItem(key, value, sysConfig);
    return isCaughtUp ? sysConfWrite() : -1;
}

int sysConfCommit()
{
    const GatheredOutput gathered; // prints messages after the lock is released
    const ConfFolderLock lock;
    return catchUp() ? sysConfWrite() : -1;
}

void sysConfShow(const char* item, SysConfig& config)
{
    sysConfRefresh(config);
    forEachItem(config, [item](const SysItem& row, const char* value) {
        if (item == nullptr || row.key == item)
            cli_printf("    %-25s: %s\n", row.label, value);
    });
}
