#include "conf/cfg.h"

#include <utility>
#include <vector>

#include "tests/conf/conf_test.h"

namespace
{

namespace fs = std::filesystem;

struct Variable {
    const char* name;
    const char* command;
    const char* initial;
};

constexpr Variable kVariables[] = {
    {"BAUD_RATE", "config system baudrate", "115200"},
    {"WTP_NAME", "config system hostname", "ap1"},
    {"ADMIN_TIMEOUT", "config system admin-timeout", "5"},
    {"ADDR_MODE", "config capwap wtp addr-mode", "DHCP"},
    {"AP_IPADDR", "config capwap wtp static-ip-addr", "192.168.1.2"},
    {"AP_NETMASK", "config capwap wtp static-ip-netmask", "255.255.255.0"},
    {"IPGW", "config capwap wtp static-ip-gw", "192.168.1.1"},
    {"DNS_SERVER", "config capwap wtp static-ip-dns", "9.9.9.9"},
    {"AP_MGMT_VLAN_ID", "config capwap wtp ap-mgmt-vlanid", "0"},
    {"ALLOW_HTTPS", "config capwap wtp allow-dflt-https", "0"},
    {"ALLOW_SSH", "config capwap wtp allow-dflt-ssh", "0"},
    {"AC_DISCOVERY_TYPE", "config capwap proto discovery-type", "0"},
    {"AC_IPADDR_1", "config capwap wtp ac-ip-addr add", ""},
    {"AC_IPADDR_2", "config capwap wtp ac-ip-addr add", ""},
    {"AC_IPADDR_3", "config capwap wtp ac-ip-addr add", ""},
    {"AC_HOSTNAME_1", "config capwap wtp ac-hostname add", ""},
    {"AC_HOSTNAME_2", "config capwap wtp ac-hostname add", ""},
    {"AC_HOSTNAME_3", "config capwap wtp ac-hostname add", ""},
    {"AC_DISCOVERY_MC_ADDR", "config capwap wtp multicast-addr", "224.0.1.140"},
    {"AC_DISCOVERY_DHCP_OPTION_CODE", "config capwap wtp dhcp-code", "138"},
    {"AC_CTL_PORT", "config capwap wtp ac-ctl-port", "5246"},
    {"AP_DATA_CHAN_SEC", "config capwap wtp data-channel-sec", "clear,dtls,ipsec"},
};

constexpr char kSysConf[] = "#=====================SYS CONF PARAMs========================\n"
                            "#CONFIG system\n"
                            "hostname=ap1\n"
                            "baudrate=115200\n"
                            "admin-timeout=5\n"
                            "#=====================SYS CONF PARAMs========================\n";

class CfgTest : public ConfTest
{
protected:
    CfgTest()
    {
        for (const Variable& variable : kVariables)
            values_.emplace_back(variable.initial);
        writeFile("/cfg/sys.conf", kSysConf);
        writeFile("/cfg/cw.conf", "");
        EXPECT_EQ(prepare(), "");
    }

    /// Each variable with its expected value, in a listing's form.
    [[nodiscard]] std::string listing(const std::string& before = "", const std::string& between = ":=") const
    {
        std::string text;
        for (std::size_t i = 0; i < values_.size(); ++i)
            text.append(before).append(kVariables[i].name).append(between).append(values_[i]).append("\n");
        return text;
    }

    /// Expects that `cfg -a` makes variables show other values, and says nothing.
    void expectSet(const std::string& assignment, std::initializer_list<std::pair<const char*, const char*>> changes)
    {
        EXPECT_EQ(type("cfg -a " + assignment), "") << assignment;
        for (const auto& [name, value] : changes)
            for (std::size_t i = 0; i < values_.size(); ++i)
                if (std::strcmp(kVariables[i].name, name) == 0)
                    values_[i] = value;
        EXPECT_EQ(type("cfg -s"), listing()) << assignment;
    }

    static std::string usage()
    {
        std::string text = "cfg -h            - output this help\n"
                           "cfg -e            - export variables\n"
                           "cfg -s            - list variables\n"
                           "cfg -x            - resetting to factory defaults\n"
                           "cfg -c            - commit the change to flash\n"
                           "cfg -a var=value  - add or change variables\n\n"
                           "Supported Variable Names:\n";
        for (const Variable& variable : kVariables) {
            Words words(variable.command);
            text +=
                std::string("    ") + variable.name + "\n        " + findNode(words.argc(), words.argv())->help + "\n";
        }
        return text;
    }

    static constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";

    std::vector<std::string> values_;
};

TEST_F(CfgTest, SetsAndListsEveryVariable)
{
    fs::create_symlink("/dev/ptmx", path("/dev/console"));
    EXPECT_EQ(type("cfg -s"), listing());
    expectSet("BAUD_RATE=9600", {{"BAUD_RATE", "9600"}});
    expectSet("WTP_NAME=ap-2", {{"WTP_NAME", "ap-2"}});
    expectSet("ADMIN_TIMEOUT=480", {{"ADMIN_TIMEOUT", "480"}});
    expectSet("ADDR_MODE=Static", {{"ADDR_MODE", "STATIC"}});
    expectSet("AP_IPADDR=200.0.0.2", {{"AP_IPADDR", "200.0.0.2"}});
    expectSet("AP_NETMASK=255.0.0.0", {{"AP_NETMASK", "255.0.0.0"}});
    expectSet("IPGW=200.0.0.1", {{"IPGW", "200.0.0.1"}});
    expectSet("DNS_SERVER=0.0.0.0", {{"DNS_SERVER", ""}});
    expectSet("AP_MGMT_VLAN_ID=4094x", {{"AP_MGMT_VLAN_ID", "4094"}});
    expectSet("ALLOW_HTTPS=2", {{"ALLOW_HTTPS", "2"}});
    expectSet("ALLOW_SSH=1", {{"ALLOW_SSH", "1"}});
    expectSet("AC_DISCOVERY_TYPE=7", {{"AC_DISCOVERY_TYPE", "7"}});
    expectSet("AC_IPADDR_2=10.0.0.5", {{"AC_IPADDR_1", "10.0.0.5"}, {"AC_IPADDR_2", "10.0.0.5"}});
    expectSet("AC_IPADDR_1=10.0.0.6", {{"AC_IPADDR_1", "10.0.0.6"}});
    expectSet("AC_IPADDR_3=10.0.0.7", {{"AC_IPADDR_3", "10.0.0.7"}});
    expectSet("AC_HOSTNAME_3=a=b", {{"AC_HOSTNAME_1", "a=b"}, {"AC_HOSTNAME_2", "a=b"}, {"AC_HOSTNAME_3", "a=b"}});
    expectSet("AC_HOSTNAME_2=ac.example", {{"AC_HOSTNAME_2", "ac.example"}});
    expectSet("AC_HOSTNAME_1=", {{"AC_HOSTNAME_1", ""}});
    expectSet("AC_DISCOVERY_MC_ADDR=239.0.0.1", {{"AC_DISCOVERY_MC_ADDR", "239.0.0.1"}});
    expectSet("AC_DISCOVERY_DHCP_OPTION_CODE=254", {{"AC_DISCOVERY_DHCP_OPTION_CODE", "254"}});
    expectSet("AC_CTL_PORT=49150", {{"AC_CTL_PORT", "49150"}});
    expectSet("AP_DATA_CHAN_SEC=IPsec,CLEAR", {{"AP_DATA_CHAN_SEC", "clear,ipsec"}});

    EXPECT_EQ(type("cfg -S"), listing());
    EXPECT_EQ(type("cfg -sall"), listing());
    EXPECT_EQ(type("cfg -e"), listing("export ", "="));
    EXPECT_EQ(type("cfg -E"), listing("export ", "="));
    EXPECT_EQ(calls(), "hostname ap-2\nqln-set-hostname ap-2 --no-save\n");
    EXPECT_NE(readFile("/cfg/sys.conf").find("hostname=ap-2\nbaudrate=9600\nadmin-timeout=480\n"), std::string::npos);
    EXPECT_EQ(readFile("/cfg/cw.conf"), "");
}

TEST_F(CfgTest, SaysWhatTheCommandsSay)
{
    const std::string invalid = "    Error: Invalid parameter ";
    const std::pair<std::string, std::string> cases[] = {
        {"cfg", usage()},
        {"cfg -h", usage()},
        {"cfg -a", usage()},
        {"cfg -a WTP_NAME", usage()},
        {"cfg -a AC_HOSTNAME_1=a b", usage()},
        {"cfg -s x", usage()},
        {"cfg -z", usage()},
        {"cfg -a FOO=1", ""},
        {"cfg -a wtp_name=x", ""},
        {"cfg -a =x", ""},
        {"cfg -a AC_IPADDR_4=10.0.0.1", ""},
        {"cfg -a AC_CTL_PORT=abc", invalid + "'0'.\n"},
        {"cfg -a ADMIN_TIMEOUT=99999999999", invalid + "'2147483647'.\n"},
        {"cfg -a ADDR_MODE=BOTH", invalid + "'both'.\n"},
        {"cfg -a AC_IPADDR_1=10.0.0.256", "    Error: Invalid AC IP address '10.0.0.256'\n"},
        {"cfg -a AC_IPADDR_1=", "    Error: Invalid AC IP address ''\n"},
        {"cfg -a WTP_NAME=", "    hostname                 : ap1\n"},
        {"cfg -a WTP_NAME=" + std::string(1010, 'x'), "    Error: Command line too long.\n"},
    };
    for (const auto& [line, said] : cases)
        EXPECT_EQ(type(line), said) << line;
    EXPECT_EQ(type("cfg -s"), listing());
    EXPECT_EQ(cwConfig.saved, 1);
}

TEST_F(CfgTest, ADirectChangeOfAListIsAChange)
{
    for (const char* assignment : {"AC_IPADDR_2=10.0.0.5", "AC_IPADDR_1=10.0.0.5", "AC_HOSTNAME_1=ac"}) {
        cwConfig.saved = 1;
        EXPECT_FALSE(type("show cw_conf").ends_with(kChanged));
        EXPECT_EQ(type(std::string("cfg -a ") + assignment), "");
        EXPECT_TRUE(type("show cw_conf").ends_with(kChanged)) << assignment;
    }
    EXPECT_EQ(valueOf("ac-ip-addr"), "10.0.0.5 1 10.0.0.5 1 ");
    type("cfg -a AC_HOSTNAME_1=" + std::string(300, 'h'));
    EXPECT_EQ(valueOf("ac-hostname"), std::string(255, 'h') + " ");
}

TEST_F(CfgTest, CommitsWhatDiffers)
{
    writeFile("/cfg/sys.conf", "hostname=ap3\n");
    EXPECT_EQ(type("cfg -c"), "");
    EXPECT_NE(readFile("/cfg/sys.conf").find("hostname=ap3\nbaudrate=115200\n"), std::string::npos);
    EXPECT_EQ(readFile("/cfg/cw.conf"), "");
    EXPECT_EQ(calls(), "");

    type("cfg -a AC_IPADDR_1=10.0.0.5");
    EXPECT_EQ(type("cfg -c"), "CAPWAP parameter changed, capwap daemon is reloading\n");
    EXPECT_NE(readFile("/cfg/cw.conf").find("ac-ip-addr=10.0.0.5 1\n"), std::string::npos);
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
}

// The factory's files are read even where they are as old as those that they replace.
TEST_F(CfgTest, RestoresTheFactoryFiles)
{
    writeFile("/etc/cw.conf", "ac-ctl-port=6000\nac-hostname=factory\n");
    writeFile("/etc/sys.conf", "hostname=factory\nbaudrate=9600\nadmin-timeout=6\n");
    plantTool("cp", "PATH=/bin:/usr/bin; cp \"$@\" && touch -r \"$1\" \"$2\"");
    const auto time = fs::last_write_time(path("/cfg/cw.conf"));
    for (const char* file : {"/etc/cw.conf", "/etc/sys.conf", "/cfg/cw.conf", "/cfg/sys.conf"})
        fs::last_write_time(path(file), time);
    prepare();
    type("cfg -a AC_IPADDR_1=10.0.0.5");
    type("cfg -a AC_DISCOVERY_TYPE=7");

    EXPECT_EQ(type("cfg -x"), "");
    EXPECT_STREQ(sysConfig.hostname, "factory");
    EXPECT_EQ(readFile("/cfg/cw.conf"), readFile("/etc/cw.conf"));
    EXPECT_EQ(readFile("/cfg/sys.conf"), readFile("/etc/sys.conf"));
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
    values_[0] = "9600";
    values_[1] = values_[15] = "factory";
    values_[2] = "6";
    values_[20] = "6000";
    EXPECT_EQ(type("cfg -s"), listing());
    EXPECT_EQ(type("cfg -c"), "") << "the snapshot is the record";
}

} // namespace
