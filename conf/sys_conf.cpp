#include "conf/sys_conf.h"

#include <cstring>
#include <string_view>

#include "base/text.h"
#include "conf/conf_file.h"
#include "conf/file_watch.h"
#include "platform/system_library.h"
#include "shell/output.h"

constinit SysConfig sysConfig{};

namespace
{

constexpr char kFrameLine[] = "#=====================SYS CONF PARAMs========================\n";

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

/// Has the process's record hold what others have written. False, which is said, when that cannot be read.
bool catchUp()
{
    return sysFile.catchUp([] { return readSysFile(sysConfig); });
}

} // namespace

// The items go to a copy first: a file that cannot be read to its end counts for nothing.
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
    const std::string_view name = key;
    if (name == "factorysn")
        copyText(config.factorysn, value);
    else if (name == "hostname")
        copyText(config.hostname, value);
    else if (name == "baudrate")
        config.baudrate = numberFrom(value);
    else if (name == "admin-timeout")
        config.adminTimeout = numberFrom(value);
    return 0;
}

int sysConfWrite()
{
    ConfText text;
    text.append("%s#CONFIG system\n", kFrameLine);
    if (sysConfig.factorysn[0] != '\0')
        text.append("factorysn=%s\n", sysConfig.factorysn);
    text.append("hostname=%s\n", sysConfig.hostname);
    text.append("baudrate=%d\n", sysConfig.baudrate);
    text.append("admin-timeout=%d\n", sysConfig.adminTimeout);
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
    const GatheredOutput gathered; // printed when the lock is released
    const ConfFolderLock lock;
    const bool isCaughtUp = catchUp();
    sysConfSetItem(key, value, sysConfig);
    return isCaughtUp ? sysConfWrite() : -1;
}

int sysConfCommit()
{
    const GatheredOutput gathered; // printed when the lock is released
    const ConfFolderLock lock;
    return catchUp() ? sysConfWrite() : -1;
}

void sysConfShow(const char* item, SysConfig& config)
{
    sysConfRefresh(config);
    const auto isShown = [item](const char* name) {
        return item == nullptr || std::strcmp(item, name) == 0;
    };
    if (isShown("factorysn") && config.factorysn[0] != '\0')
        cli_printf("    factorysn                : %s\n", config.factorysn);
    if (isShown("hostname"))
        cli_printf("    hostname                 : %s\n", config.hostname);
    if (isShown("mgmt-addr"))
        cli_printf("    static-addr              : %s\n", config.staticAddr);
    if (isShown("baudrate"))
        cli_printf("    baudrate                 : %d\n", config.baudrate);
    if (isShown("admin-timeout"))
        cli_printf("    admin-timeout            : %d\n", config.adminTimeout);
}
