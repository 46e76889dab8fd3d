#include "conf/sys_conf.h"

#include <cstring>
#include <string_view>

#include "cli/output.h"
#include "conf/conf_file.h"
#include "conf/text.h"
#include "platform/system_library.h"

constinit SysConfig sysConfig{};

namespace
{

constexpr char kFrameLine[] = "#=====================SYS CONF PARAMs========================\n";

} // namespace

int sysConfRead(SysConfig& config)
{
    read_sn(config.hostname, sizeof config.hostname, 0);
    ConfItems items("sysConfRead", kSysConfFile);
    if (!items.isOpen())
        return -1;
    while (items.next())
        sysConfSetItem(items.key(), items.value(), config);
    return 0;
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
    std::uint32_t time;
    if (!confFileTime(kSysConfFile, &time) || time == config.fileTime)
        return;
    sysConfRead(config);
    config.fileTime = time;
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
