#include "conf/config_tree.h"

#include <cstring>

#include "base/text.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/cw_lists.h"
#include "conf/cw_show.h"
#include "conf/ranges.h"
#include "conf/sys_conf.h"
#include "conf/system_commands.h"
#include "shell/output.h"

namespace
{

/// Sets the item that the fourth word names. The value is the words after it, joined by single blanks.
void setItem(int argc, char** argv)
{
    char words[kMessageSize];
    std::size_t length = 0;
    for (int i = 4; i < argc; ++i)
        length = appendWord(words, length, argv[i]);
    const char* value = words + 1; // after the first blank
    cwConfChange(argv[3], value);
}

void changeList(const CwItem& item, const char* verb, const char* value)
{
    if (std::strcmp(verb, "add") == 0)
        cwConfListAdd(item, value, cwConfig);
    else if (std::strcmp(verb, "del") == 0)
        cwConfListDelete(item, value, cwConfig);
}

/// The handler of a CAPWAP item, which the fourth word names. Four words show the item. Five words set it; if the item
/// is a list, they show its entries. Six or more words change a list, or set the security options, whose value may have
/// several words.
int capwapItemCommand(int argc, char** argv)
{
    const CwItem* item = argc < 4 ? nullptr : cwConfItem(argv[3]);
    if (item == nullptr)
        return 0;
    cwConfRefresh(cwConfig);
    if (argc == 4)
        cwConfShowItem(argv[3], cwConfig);
    else if (argc == 5 && isCwList(*item))
        cwConfShowList(*item, cwConfig);
    else if (argc == 5 || item->kind == &kSecurity)
        setItem(argc, argv);
    else
        changeList(*item, argv[4], argv[5]);
    return 0;
}

/// A row for an item. If the help text names a range or a default that the item does not have, the program does not
/// compile.
consteval cli_node setting(const char* name, const char* help, CliHandler handler = capwapItemCommand)
{
    if (!agreesWithRange(help, name))
        refuseToCompile("the help text names another range or default");
    return command(name, help, handler);
}

constinit cli_node systemTable[] = {
    hidden(command("factorysn", "Factory test SN.", factorysnCommand)),
    command("mgmt-addr", "Management IP address (A.B.C.D/MASK).", mgmtAddrCommand),
    command("hostname", "Hostname of AP.", hostnameCommand),
    command("baudrate", "Serial console baudrate (9600/19200/38400/57600/115200, default = 115200).", baudrateCommand),
    setting("admin-timeout", "Idle timeout range (1 - 480 min, default = 5).", adminTimeoutCommand),
};

constinit cli_node timersTable[] = {
    setting("max-discovery-interval",
            "The maximum time allowed between sending Discovery Request messages (5 - 180 sec, default = 5)."),
    setting("max-failed-dtls-sess-retry",
            "The maximum number of failed DTLS session establishment attempts (1 - 3, default = 3)."),
    setting("statistics-timer",
            "The interval time for AP to communicate its statistics (60 - 120 sec, default = 120)."),
};

constinit cli_node protoTable[] = {
    setting("discovery-type",
            "AC discovery type (0:auto, 1:static, 2:dhcp, 3:dns, 5:broadcast, 6:multicast, 7:quillsky)."),
    setting("idle-timeout", "CAPWAP idle timeout (0 no client-idle check, 20 - 3600 sec, default = 300 sec)."),
    setting("max-discoveries", "The maximum number of discovery request messages (3 - 10, default = 3)."),
    setting("max-retransmit", "The maximum number of retransmissions for tunnel packet. (3 - 5, default = 3)."),
    setting("report-interval",
            "The interval of sending the decryption error message elements (30 - 120 sec, default = 30)."),
};

constinit cli_node acAddressTable[] = {
    setting("add", kAddAcAddressHelp),
    setting("del", kDeleteAcAddressHelp),
};

constinit cli_node acHostnameTable[] = {
    setting("add", kAddAcHostnameHelp),
    setting("del", kDeleteAcHostnameHelp),
};

constinit cli_node wtpTable[] = {
    setting("allow-dflt-https", "Enable/disable default https server (0:Disable / 1:Enable / 2:Controled by AC)."),
    setting("allow-dflt-ssh", "Enable/disable default ssh server (0:Disable / 1:Enable / 2:Controled by AC)."),
    group("ac-ip-addr", "Add/del AC static IP address.", acAddressTable, capwapItemCommand),
    group("ac-hostname", "Add/del AC hostname for AC discovery.", acHostnameTable, capwapItemCommand),
    setting("ac-ctl-port", "CAPWAP ctrl port of AC (1024 - 49150, default = 5246)."),
    setting("plain-ctl", "Enable/disable plain txt in ctrl message (0:Disable / 1:Enable)."),
    setting("dhcp-code", "Dhcp code for AC discovery (128 - 254, default = 138)."),
    setting("multicast-addr", "Multicast address for AC discovery (A.B.C.D)."),
    setting("multicast-ttl", "Multicast ttl (1 - 255, default = 1)."),
    setting("ap-mgmt-vlanid", "Management vlan id (0 - 4094, default = 0)."),
    setting("addr-mode", "AP address mode (static/dhcp)."),
    setting("static-ip-addr", "AP static IP address (A.B.C.D)."),
    setting("static-ip-netmask", "AP static IP netmask (A.B.C.D)."),
    setting("static-ip-gw", "AP static gateway IP address (A.B.C.D)."),
    setting("static-ip-dns", "AP static dns server IP address (A.B.C.D)."),
    setting("data-channel-sec", "Data channel security options (clear, ipsec, or/and dtls)."),
};

constinit cli_node capwapTable[] = {
    group("timers", "CAPWAP protocol timers.", timersTable),
    group("proto", "CAPWAP protocol variables.", protoTable),
    group("wtp", "WTP saved variables.", wtpTable),
};

} // namespace

constinit cli_node configTable[2] = {
    group("system", "System configuration.", systemTable),
    group("capwap", "CAPWAP configuration.", capwapTable),
};

int configPrepare(cli_node*, cli_node*)
{
    cwConfDefault(cwConfig, kShellInstance);
    cwConfLoad(cwConfig);
    sysConfLoad(sysConfig);
    return 0;
}

int showCwConfCommand(int, char**)
{
    cwConfRefresh(cwConfig);
    cwConfShowAll();
    return 0;
}

int showSysConfCommand(int, char**)
{
    sysConfShow(nullptr, sysConfig);
    return 0;
}

int saveCwConfCommand(int, char**)
{
    return cwConfWrite();
}

int dropCwConfCommand(int, char**)
{
    cwConfDrop();
    return 0;
}
