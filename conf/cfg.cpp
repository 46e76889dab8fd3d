#include "conf/cfg.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <string_view>

#include "base/text.h"
#include "conf/conf_replace.h"
#include "conf/config_tree.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/sys_conf.h"
#include "platform/device_file.h"
#include "shell/node.h"
#include "shell/output.h"
#include "shell/tools.h"

namespace
{

struct CfgVariable;

struct CfgKind {
    /// Writes the value to `text`, which is empty at the call.
    void (*format)(const CfgVariable& variable, std::span<char> text);
    /// Sets the value. May modify the string that `value` points to.
    void (*set)(CfgVariable& variable, char* value);
};

struct CfgVariable {
    const char* name;
    const char* command; ///< the `config` command that takes the value
    const CfgKind* kind;
    const char* key = nullptr; ///< key of the CAPWAP item that is shown; null for a system item
    int entry = 0;             ///< number of the entry of a list, from 1; 0: no list
    cli_node* node = nullptr;  ///< the node of `command`; null until it was looked up
};

/// The first child whose name is a prefix of `text`, or null.
cli_node* childThatBegins(const char* text, const cli_node& parent)
{
    for (cli_node& child : std::span(parent.children, static_cast<std::size_t>(parent.childCount)))
        if (std::strncmp(text, child.name, std::strlen(child.name)) == 0)
            return &child;
    return nullptr;
}

/// The leaf that a command line leads to, or null.
cli_node* cfgFindNode(const char* line)
{
    const cli_node* parent = &cliRoot;
    for (;;) {
        cli_node* node = childThatBegins(line, *parent);
        if (node == nullptr || node->childCount == 0)
            return node;
        line += std::strcspn(line, " ");
        line += std::strspn(line, " ");
        parent = node;
    }
}

const cli_node* nodeOf(CfgVariable& variable)
{
    if (variable.node == nullptr)
        variable.node = cfgFindNode(variable.command);
    return variable.node;
}

/// Splits a line into words and calls the handler of the variable's command, as the shell does.
void cfgRunCommand(CfgVariable& variable, char* line)
{
    constexpr int kWordLimit = 17;
    const cli_node* node = nodeOf(variable);
    if (node == nullptr || node->handler == nullptr)
        return;
    char* words[kWordLimit];
    int count = 0;
    char* rest = nullptr;
    for (char* word = strtok_r(line, " ", &rest); word != nullptr && count < kWordLimit;
         word = strtok_r(nullptr, " ", &rest))
        words[count++] = word;
    node->handler(count, words);
}

void cfgSetByCommand(CfgVariable& variable, char* value)
{
    char line[kCommandLength + 1];
    if (composeCommand(line, "%s %s", variable.command, value))
        cfgRunCommand(variable, line);
}

void cfgSetNumber(CfgVariable& variable, char* value)
{
    char number[12];
    std::snprintf(number, sizeof number, "%d", numberFrom(value));
    cfgSetByCommand(variable, number);
}

void cfgSetLowerCase(CfgVariable& variable, char* value)
{
    for (char* c = value; *c != '\0'; ++c)
        *c = static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
    cfgSetByCommand(variable, value);
}

/// Sets an entry of a list directly, without calling the list's command.
void cfgSetEntry(CfgVariable& variable, char* value)
{
    cwConfRefresh(cwConfig);
    cwConfListPut(*cwConfItem(variable.key), variable.entry - 1, value, cwConfig);
}

template <std::int32_t SysConfig::*Number>
void cfgFormatSystemNumber(const CfgVariable&, std::span<char> text)
{
    std::snprintf(text.data(), text.size(), "%u", static_cast<unsigned>(sysConfig.*Number));
}

void cfgFormatHostname(const CfgVariable&, std::span<char> text)
{
    copyText(text, sysConfig.hostname);
}

void cfgFormatItem(const CfgVariable& variable, std::span<char> text)
{
    const CwItem& item = *cwConfItem(variable.key);
    item.kind->format(item, cwConfig, 0, text);
}

/// Formats the address 0.0.0.0 as an empty text.
void cfgFormatAddress(const CfgVariable& variable, std::span<char> text)
{
    cfgFormatItem(variable, text);
    if (std::strcmp(text.data(), "0.0.0.0") == 0)
        text[0] = '\0';
}

void cfgFormatUpperCase(const CfgVariable& variable, std::span<char> text)
{
    cfgFormatItem(variable, text);
    for (char* c = text.data(); *c != '\0'; ++c)
        *c = static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
}

void cfgFormatEntry(const CfgVariable& variable, std::span<char> text)
{
    const CwList& list = *cwConfItem(variable.key)->kind->list;
    if (list.count(cwConfig) >= variable.entry)
        list.format(cwConfig, variable.entry - 1, text);
}

template <std::int32_t SysConfig::*Number>
constexpr CfgKind kCfgSystemNumber = {cfgFormatSystemNumber<Number>, cfgSetNumber};
constexpr CfgKind kCfgHostname = {cfgFormatHostname, cfgSetByCommand};
constexpr CfgKind kCfgNumber = {cfgFormatItem, cfgSetNumber};
constexpr CfgKind kCfgAddress = {cfgFormatAddress, cfgSetByCommand};
constexpr CfgKind kCfgAddrMode = {cfgFormatUpperCase, cfgSetLowerCase};
constexpr CfgKind kCfgSecurity = {cfgFormatItem, cfgSetLowerCase};
constexpr CfgKind kCfgEntry = {cfgFormatEntry, cfgSetEntry};

/// A row for a CAPWAP item. The last word of `command` is the key of the item.
consteval CfgVariable itemRow(const char* name, const char* command, const CfgKind& kind)
{
    return {name, command, &kind, std::string_view(command).rfind(' ') + 1 + command};
}

consteval CfgVariable acAddressRow(const char* name, int entry)
{
    return {name, "config capwap wtp ac-ip-addr add", &kCfgEntry, "ac-ip-addr", entry};
}

consteval CfgVariable acHostnameRow(const char* name, int entry)
{
    return {name, "config capwap wtp ac-hostname add", &kCfgEntry, "ac-hostname", entry};
}

constinit CfgVariable variables[] = {
    {"BAUD_RATE", "config system baudrate", &kCfgSystemNumber<&SysConfig::baudrate>},
    {"WTP_NAME", "config system hostname", &kCfgHostname},
    {"ADMIN_TIMEOUT", "config system admin-timeout", &kCfgSystemNumber<&SysConfig::adminTimeout>},
    itemRow("ADDR_MODE", "config capwap wtp addr-mode", kCfgAddrMode),
    itemRow("AP_IPADDR", "config capwap wtp static-ip-addr", kCfgAddress),
    itemRow("AP_NETMASK", "config capwap wtp static-ip-netmask", kCfgAddress),
    itemRow("IPGW", "config capwap wtp static-ip-gw", kCfgAddress),
    itemRow("DNS_SERVER", "config capwap wtp static-ip-dns", kCfgAddress),
    itemRow("AP_MGMT_VLAN_ID", "config capwap wtp ap-mgmt-vlanid", kCfgNumber),
    itemRow("ALLOW_HTTPS", "config capwap wtp allow-dflt-https", kCfgNumber),
    itemRow("ALLOW_SSH", "config capwap wtp allow-dflt-ssh", kCfgNumber),
    itemRow("AC_DISCOVERY_TYPE", "config capwap proto discovery-type", kCfgNumber),
    acAddressRow("AC_IPADDR_1", 1),
    acAddressRow("AC_IPADDR_2", 2),
    acAddressRow("AC_IPADDR_3", 3),
    acHostnameRow("AC_HOSTNAME_1", 1),
    acHostnameRow("AC_HOSTNAME_2", 2),
    acHostnameRow("AC_HOSTNAME_3", 3),
    itemRow("AC_DISCOVERY_MC_ADDR", "config capwap wtp multicast-addr", kCfgAddress),
    itemRow("AC_DISCOVERY_DHCP_OPTION_CODE", "config capwap wtp dhcp-code", kCfgNumber),
    itemRow("AC_CTL_PORT", "config capwap wtp ac-ctl-port", kCfgNumber),
    itemRow("AP_DATA_CHAN_SEC", "config capwap wtp data-channel-sec", kCfgSecurity),
};

struct CfgValue {
    explicit CfgValue(const CfgVariable& variable) { variable.kind->format(variable, std::span(text)); }

    char text[kCwValueSize]{};
};

void cfgUsage(char**)
{
    cli_print("cfg -h            - output this help\n");
    cli_print("cfg -e            - export variables\n");
    cli_print("cfg -s            - list variables\n");
    cli_print("cfg -x            - resetting to factory defaults\n");
    cli_print("cfg -c            - commit the change to flash\n");
    cli_print("cfg -a var=value  - add or change variables\n\n");
    cli_print("Supported Variable Names:\n");
    for (CfgVariable& variable : variables) {
        cli_printf("    %s\n", variable.name);
        if (const cli_node* node = nodeOf(variable); node != nullptr)
            cli_printf("        %s\n", node->help);
    }
}

void cfgExport(char**)
{
    cwConfRefresh(cwConfig);
    for (const CfgVariable& variable : variables)
        cli_printf("export %s=%s\n", variable.name, CfgValue(variable).text);
}

void cfgList(char**)
{
    cwConfRefresh(cwConfig);
    for (const CfgVariable& variable : variables)
        cli_printf("%s:=%s\n", variable.name, CfgValue(variable).text);
}

void cfgSet(char** argv)
{
    char* const name = argv[2];
    char* const equals = std::strchr(name, '=');
    if (equals == nullptr) {
        cfgUsage(argv);
        return;
    }
    *equals = '\0';
    for (CfgVariable& variable : variables) {
        if (std::strcmp(variable.name, name) == 0) {
            variable.kind->set(variable, equals + 1);
            return;
        }
    }
}

void cfgCommit(char**)
{
    sysConfCommit();
    cwConfWrite();
}

/// Copies with the tool `cp`, which overwrites the old file. After a power cut before the sync, the file may be
/// incomplete.
void copyFactoryFile(const char* from, const char* to)
{
    runCommandf("cp %s %s", DeviceFile(from).path(), DeviceFile(to).path());
    syncConfFile(to);
}

void copyFactoryFiles()
{
    const ConfFolderLock lock;
    copyFactoryFile("/etc/cw.conf", kCwConfFile);
    copyFactoryFile("/etc/sys.conf", kSysConfFile);
}

void cfgFactoryReset(char**)
{
    copyFactoryFiles();
    configPrepare(nullptr, nullptr);
    runCommand("pkill cwWtpd");
}

struct CfgAction {
    const char* option;
    int words; ///< number of words of the whole line
    void (*run)(char** argv);
};

constexpr CfgAction kCfgActions[] = {
    {"-h", 2, cfgUsage},  {"-a", 3, cfgSet},  {"-c", 2, cfgCommit}, {"-x", 2, cfgFactoryReset}, {"-e", 2, cfgExport},
    {"-E", 2, cfgExport}, {"-s", 2, cfgList}, {"-S", 2, cfgList},   {"-sall", 2, cfgList},
};

} // namespace

int cfgCommand(int argc, char** argv)
{
    sysConfLoad(sysConfig);
    for (const CfgAction& action : kCfgActions) {
        if (argc == action.words && std::strcmp(argv[1], action.option) == 0) {
            action.run(argv);
            return 0;
        }
    }
    cfgUsage(argv);
    return 0;
}
