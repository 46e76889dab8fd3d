#include "conf/cfg.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "tests/conf/conf_test.h"

namespace
{

namespace fs = std::filesystem;

/// Each variable: its name, the `config` command behind it and its first value.
constexpr char kVariables[] = R"(
BAUD_RATE system/baudrate 115200 WTP_NAME system/hostname ap1 ADMIN_TIMEOUT system/admin-timeout 5
ADDR_MODE capwap/wtp/addr-mode DHCP AP_IPADDR capwap/wtp/static-ip-addr 192.168.1.2
AP_NETMASK capwap/wtp/static-ip-netmask 255.255.255.0 IPGW capwap/wtp/static-ip-gw 192.168.1.1
DNS_SERVER capwap/wtp/static-ip-dns 9.9.9.9 AP_MGMT_VLAN_ID capwap/wtp/ap-mgmt-vlanid 0
ALLOW_HTTPS capwap/wtp/allow-dflt-https 0 ALLOW_SSH capwap/wtp/allow-dflt-ssh 0
AC_DISCOVERY_TYPE capwap/proto/discovery-type 0 AC_IPADDR_1 capwap/wtp/ac-ip-addr/add -
AC_IPADDR_2 capwap/wtp/ac-ip-addr/add - AC_IPADDR_3 capwap/wtp/ac-ip-addr/add -
AC_HOSTNAME_1 capwap/wtp/ac-hostname/add - AC_HOSTNAME_2 capwap/wtp/ac-hostname/add -
AC_HOSTNAME_3 capwap/wtp/ac-hostname/add - AC_DISCOVERY_MC_ADDR capwap/wtp/multicast-addr 224.0.1.140
AC_DISCOVERY_DHCP_OPTION_CODE capwap/wtp/dhcp-code 138 AC_CTL_PORT capwap/wtp/ac-ctl-port 5246
AP_DATA_CHAN_SEC capwap/wtp/data-channel-sec clear,dtls,ipsec)";

class CfgTest : public ConfTest
{
protected:
    CfgTest()
    {
        std::istringstream words(kVariables);
        for (Variable row; words >> row.name >> row.command >> row.value; variables_.push_back(row)) {
            std::replace(row.command.begin(), row.command.end(), '/', ' ');
            row.value = row.value == "-" ? "" : row.value;
        }
        writeFile("/cfg/sys.conf", "hostname=ap1\nbaudrate=115200\nadmin-timeout=5\n");
        writeFile("/cfg/cw.conf", "");
        EXPECT_EQ(prepare(), "");
    }

    /// Each variable with its expected value, in a listing's form.
    [[nodiscard]] std::string listing(const std::string& before = "", const std::string& between = ":=") const
    {
        std::string text;
        for (const Variable& variable : variables_)
            text += before + variable.name + between + variable.value + "\n";
        return text;
    }

    /// From here on variables are expected to show other values: "NAME=value", separated by slashes.
    void expectValues(const std::string& assignments)
    {
        std::istringstream words(assignments);
        for (std::string word; std::getline(words, word, '/');)
            for (Variable& variable : variables_)
                if (word.starts_with(variable.name + "="))
                    variable.value = word.substr(variable.name.size() + 1);
    }

    [[nodiscard]] std::string usage() const
    {
        std::string text = "cfg -h            - output this help\n"
                           "cfg -e            - export variables\n"
                           "cfg -s            - list variables\n"
                           "cfg -x            - resetting to factory defaults\n"
                           "cfg -c            - commit the change to flash\n"
                           "cfg -a var=value  - add or change variables\n\n"
                           "Supported Variable Names:\n";
        for (const Variable& variable : variables_) {
            Words words("config " + variable.command);
            text += "    " + variable.name + "\n        " + findNode(words.argc(), words.argv())->help + "\n";
        }
        return text;
    }

    struct Variable {
        std::string name;
        std::string command;
        std::string value;
    };

    std::vector<Variable> variables_;
};

TEST_F(CfgTest, SetsAndListsEveryVariable)
{
    // What is set, and behind a slash what is shown where that is something else.
    std::istringstream sets(
        "BAUD_RATE=9600 WTP_NAME=ap-2 ADMIN_TIMEOUT=480 ADDR_MODE=Static/ADDR_MODE=STATIC AP_IPADDR=200.0.0.2 "
        "AP_NETMASK=255.0.0.0 IPGW=200.0.0.1 DNS_SERVER=0.0.0.0/DNS_SERVER= AP_MGMT_VLAN_ID=4094x/AP_MGMT_VLAN_ID=4094 "
        "ALLOW_HTTPS=2 ALLOW_SSH=1 AC_DISCOVERY_TYPE=7 AC_IPADDR_2=10.0.0.5/AC_IPADDR_1=10.0.0.5/AC_IPADDR_2=10.0.0.5 "
        "AC_IPADDR_1=10.0.0.6 AC_IPADDR_3=10.0.0.7 AC_DISCOVERY_MC_ADDR=239.0.0.1 AC_DISCOVERY_DHCP_OPTION_CODE=254 "
        "AC_HOSTNAME_3=a=b/AC_HOSTNAME_1=a=b/AC_HOSTNAME_2=a=b/AC_HOSTNAME_3=a=b AC_HOSTNAME_2=ac.example "
        "AC_HOSTNAME_1= AC_CTL_PORT=49150 AP_DATA_CHAN_SEC=IPsec,CLEAR/AP_DATA_CHAN_SEC=clear,ipsec");
    fs::create_symlink("/dev/ptmx", path("/dev/console"));
    EXPECT_EQ(type("cfg -s"), listing());
    for (std::string word; sets >> word;) {
        const std::size_t slash = word.find('/');
        cwConfig.saved = 1;
        EXPECT_EQ(type("cfg -a " + word.substr(0, slash)), "") << word;
        expectValues(slash == std::string::npos ? word : word.substr(slash + 1));
        EXPECT_EQ(type("cfg -s"), listing()) << word;
        const bool isOfSystem = word.starts_with("B") || word.starts_with("W") || word.starts_with("ADMIN");
        EXPECT_EQ(cwConfig.saved, isOfSystem ? 1 : 0) << word;
    }
    EXPECT_EQ(type("cfg -S") + type("cfg -sall"), listing() + listing());
    EXPECT_EQ(type("cfg -e") + type("cfg -E"), listing("export ", "=") + listing("export ", "="));
    EXPECT_EQ(calls(), "hostname ap-2\nqln-set-hostname ap-2 --no-save\n");
    EXPECT_NE(readFile("/cfg/sys.conf").find("hostname=ap-2\nbaudrate=9600\nadmin-timeout=480\n"), std::string::npos);
    EXPECT_EQ(readFile("/cfg/cw.conf"), "");
    type("cfg -a AC_HOSTNAME_1=" + std::string(300, 'h'));
    EXPECT_TRUE(valueOf("ac-hostname").starts_with(std::string(255, 'h') + " "));
}

TEST_F(CfgTest, SaysWhatTheCommandsSay)
{
    for (const char* line : {"", " -h", " -a", " -a WTP_NAME", " -a AC_HOSTNAME_1=a b", " -s x", " -z"})
        EXPECT_EQ(type(std::string("cfg") + line), usage()) << line;
    expectTranscript(R"(> cfg -a FOO=1; cfg -a wtp_name=x; cfg -a =x; cfg -a AC_IPADDR_4=10.0.0.1
> cfg -a AC_CTL_PORT=abc
    Error: Invalid parameter '0'.
> cfg -a ADMIN_TIMEOUT=99999999999
    Error: Invalid parameter '2147483647'.
> cfg -a ADDR_MODE=BOTH
    Error: Invalid parameter 'both'.
> cfg -a AC_IPADDR_1=10.0.0.256
    Error: Invalid AC IP address '10.0.0.256'
> cfg -a AC_IPADDR_1=
    Error: Invalid AC IP address ''
> cfg -a WTP_NAME=
    hostname                 : ap1
)");
    EXPECT_EQ(type("cfg -a WTP_NAME=" + std::string(1010, 'x')), "    Error: Command line too long.\n");
    EXPECT_EQ(type("cfg -s"), listing());
    EXPECT_EQ(cwConfig.saved, 1);
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
    for (const char* file : {"/etc/cw.conf", "/etc/sys.conf", "/cfg/cw.conf", "/cfg/sys.conf"})
        writeAt(0, file, readFile(file));
    prepare();
    expectTranscript("> cfg -a AC_IPADDR_1=10.0.0.5; cfg -a AC_DISCOVERY_TYPE=7\n");
    EXPECT_EQ(type("cfg -x"), "");
    EXPECT_STREQ(sysConfig.hostname, "factory");
    EXPECT_EQ(readFile("/cfg/cw.conf"), readFile("/etc/cw.conf"));
    EXPECT_EQ(readFile("/cfg/sys.conf"), readFile("/etc/sys.conf"));
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
    expectValues("BAUD_RATE=9600/WTP_NAME=factory/AC_HOSTNAME_1=factory/ADMIN_TIMEOUT=6/AC_CTL_PORT=6000");
    EXPECT_EQ(type("cfg -s"), listing());
    EXPECT_EQ(type("cfg -c"), "") << "the snapshot is the record";
}

} // namespace
