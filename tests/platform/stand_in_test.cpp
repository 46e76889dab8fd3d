// The laid out device and its stand-in tools, and that both agree with the libraries.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/simulation/interface_state.h"
#include "platform/system_library.h"
#include "platform/wireless_library.h"
#include "tests/support/device.h"

namespace
{

class StandInTest : public DeviceTest
{
protected:
    void SetUp() override { ASSERT_EQ(layOut(""), 0); }

    /// Exit status of a command line.
    static int run(const std::string& command)
    {
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    [[nodiscard]] int layOut(const std::string& option) const
    {
        return run(SOURCE_FOLDER "/platform/simulation/lay_out " + option + " " + path(""));
    }

    /// What a command line prints, on both channels.
    static std::string output(const std::string& command)
    {
        return outputOf([&] { run("{ " + command + "; } 2>&1"); });
    }

    /// Starts a process named `program` that believes it runs on the device `root`, and lasts.
    [[nodiscard]] pid_t start(const std::string& program, const std::string& root) const
    {
        const std::string file = path("/tmp/" + program);
        std::filesystem::copy_file("/bin/sleep", file, std::filesystem::copy_options::skip_existing);
        const pid_t child = fork();
        if (child == 0) {
            setenv("CLI_SIM_ROOT", root.c_str(), 1);
            execl(file.c_str(), file.c_str(), "60", nullptr);
            _exit(127);
        }
        // The tools look at the command line, which is there a moment after the program.
        const std::string commandLine = "/proc/" + std::to_string(child) + "/cmdline";
        for (std::string name; name != file; usleep(1000))
            std::getline(std::ifstream(commandLine), name, '\0');
        writeFile("/tmp/cwWtpd.pid", std::to_string(child) + "\n");
        return child;
    }

    /// Ends the process; whether it was running until now.
    static bool wasRunning(pid_t child)
    {
        int status = 0;
        bool running = true;
        for (int i = 0; running && i < 100; ++i) {
            usleep(2000);
            running = waitpid(child, &status, WNOHANG) == 0;
        }
        if (running) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
        }
        return running;
    }
};

TEST_F(StandInTest, LayingOutKeepsWhatAUserChanged)
{
    EXPECT_EQ(readFile("/cfg/cw.conf"), readFile("/etc/cw.conf"));
    EXPECT_EQ(readFile("/cfg/sys.conf"), "#=====================SYS CONF PARAMs========================\n"
                                         "#CONFIG system\n"
                                         "hostname=kestrano-ap\n"
                                         "baudrate=115200\n"
                                         "admin-timeout=5\n"
                                         "#=====================SYS CONF PARAMs========================\n");
    writeFile("/cfg/cw.conf", "mine");
    writeFile("/sim/interfaces/wlan0/ssid", "mine");
    EXPECT_EQ(layOut(""), 0);
    EXPECT_EQ(readFile("/cfg/cw.conf"), "mine");
    EXPECT_EQ(readFile("/sim/interfaces/wlan0/ssid"), "mine");
    EXPECT_EQ(layOut("--fresh"), 0);
    EXPECT_EQ(readFile("/cfg/cw.conf"), readFile("/etc/cw.conf"));
    EXPECT_NE(readFile("/sim/interfaces/wlan0/ssid"), "mine");
}

TEST_F(StandInTest, LaidOutSettingsAreTheLibrarysDefaults)
{
    for (const char* interface : simInterfaces())
        for (const char* setting :
             {"ssid", "broadcast_ssid", "channel", "beacon_interval", "dtim_period", "rts_threshold", "frag_threshold",
              "coexist", "radio_mode", "auth_type", "local_bridging", "country"}) {
            const std::string file = std::string("/sim/interfaces/") + interface + "/" + setting;
            char laidOut[64];
            char standard[64];
            EXPECT_TRUE(exists(file)) << file;
            simInterfaceText(interface, setting, laidOut, sizeof laidOut);
            std::filesystem::remove(path(file));
            simInterfaceText(interface, setting, standard, sizeof standard);
            EXPECT_STREQ(laidOut, standard) << file;
        }
}

TEST_F(StandInTest, InterfacesGoDownAndUp)
{
    EXPECT_NE(sys_intf_status("wlan0"), 0);
    EXPECT_NE(output("ifconfig").find("wlan0 "), std::string::npos);
    EXPECT_EQ(run("ifconfig wlan0 down"), 0);
    EXPECT_EQ(sys_intf_status("wlan0"), 0);
    EXPECT_EQ(output("ifconfig").find("wlan0 "), std::string::npos);
    EXPECT_EQ(run("ifconfig wlan0 up"), 0);
    EXPECT_NE(sys_intf_status("wlan0"), 0);
    EXPECT_NE(run("ifconfig ../wlan0 up 2>/dev/null"), 0);
}

TEST_F(StandInTest, AddressesAreChecked)
{
    struct Row {
        const char* address;
        bool legal;
    };
    for (const Row row : {Row{"10.0.0.1/24", true},
                          {"10.0.0.1", true},
                          {"0.0.0.0/0", true},
                          {"255.255.255.255/32", true},
                          {"10.0.0.1/33", false},
                          {"10.0.0.1/", false},
                          {"10.0.0.1/24/8", false},
                          {"10.0.0.1/x", false},
                          {"10.0.0.256/24", false},
                          {"10.0.0/24", false},
                          {"10.0.0.1.2", false},
                          {"10..0.1", false},
                          {".1.2.3", false},
                          {"1.2.3.", false},
                          {"10.0.0.-1", false},
                          {"", false},
                          {"99999999999.1.1.1", false},
                          {"10.0.0.1 dev", false}}) {
        EXPECT_EQ(run("ip addr flush dev eth0"), 0);
        EXPECT_EQ(run("ip addr add '" + std::string(row.address) + "' dev eth0 2>/dev/null") == 0, row.legal)
            << row.address;
        EXPECT_EQ(exists("/sim/interfaces/eth0/address"), row.legal) << row.address;
    }
    EXPECT_EQ(run("ip addr flush dev eth0 && ip addr add 172.16.3.4/12 dev eth0"), 0);
    EXPECT_NE(output("ifconfig eth0").find("inet addr:172.16.3.4  Bcast:172.31.255.255  Mask:255.240.0.0\n"),
              std::string::npos);
}

TEST_F(StandInTest, DriverSettingsReachTheWirelessLibrary)
{
    wlan_api api = {};
    ASSERT_EQ(init_wlan_api(&api), 0);
    EXPECT_EQ(run("iwpriv wlan1 set_mib channel=149 && iwpriv wlan1 set_mib dtimperiod=3 &&"
                  "iwpriv wlan1 set_mib hiddenAP=1 && iwpriv wlan1 set_mib 'ssid=two words' &&"
                  "iwpriv wlan1 set_mib band=11"),
              0);
    char text[256];
    EXPECT_EQ(api.get_channel("wlan1"), 149);
    EXPECT_EQ(api.get_dtim_period("wlan1"), 3);
    EXPECT_EQ(api.get_broadcast_ssid("wlan1"), 0);
    EXPECT_STREQ(api.get_ssid("wlan1", text, sizeof text), "two words");
    EXPECT_EQ(api.get_radio_mode("wlan1", text), 0);
    EXPECT_STREQ(text, "11N_2.4G");
    EXPECT_EQ(output("iwpriv wlan1 get_mib channel"), "wlan1     get_mib:149\n");
    EXPECT_NE(output("iwconfig wlan1").find("Frequency:5.745 GHz"), std::string::npos);

    EXPECT_NE(run("iwpriv wlan1 set_mib ../../serial_number=x 2>/dev/null"), 0);
    EXPECT_FALSE(exists("/sim/serial_number"));
}

TEST_F(StandInTest, SignalsReachTheDaemonOfThisDeviceOnly)
{
    struct Row {
        const char* command;
        const char* program;
        bool here;
        bool survives;
    };
    for (const Row row : {Row{"pkill cwWtpd", "cwWtpd", true, false},
                          {"killall -9 cwWtpd", "cwWtpd", true, false},
                          {"pkill -f -SIGTERM cwWtpd", "cwWtpd", true, false},
                          {"reboot", "cwWtpd", true, false},
                          {"pkill cwWtpd", "cwWtpd", false, true},
                          {"pkill cwWtpd", "other", true, true},
                          {"pkill other", "other", true, true},
                          {"killall other", "cwWtpd", true, true},
                          {"pkill", "cwWtpd", true, true}}) {
        const pid_t process = start(row.program, row.here ? path("") : path("/cfg"));
        output(row.command);
        EXPECT_EQ(wasRunning(process), row.survives) << row.command << " with " << row.program;
    }
    for (const char* pid : {"", "x", "-1", "0", "1"}) {
        writeFile("/tmp/cwWtpd.pid", pid);
        EXPECT_NE(run("pkill cwWtpd"), 0) << pid;
    }
}

TEST_F(StandInTest, HostNameInUse)
{
    EXPECT_EQ(output("hostname"), "kestrano-ap\n");
    EXPECT_EQ(run("hostname ap1 && qln-set-hostname ap1 --no-save"), 0);
    EXPECT_EQ(output("hostname"), "ap1\n");
    EXPECT_NE(readFile("/cfg/sys.conf").find("hostname=kestrano-ap\n"), std::string::npos);
    EXPECT_EQ(output("reboot"), "The system is going down for reboot.\n");
    EXPECT_EQ(output("hostname"), "kestrano-ap\n");
    EXPECT_EQ(readFile("/sim/reboots"), "1\n");
    EXPECT_EQ(run("qln-set-hostname ap2"), 0);
    EXPECT_NE(readFile("/cfg/sys.conf").find("hostname=ap2\n"), std::string::npos);
}

TEST_F(StandInTest, PingCounts)
{
    EXPECT_EQ(output("ping 10.0.0.1 -c 2 -i 0"), "PING 10.0.0.1 (10.0.0.1): 56 data bytes\n"
                                                 "64 bytes from 10.0.0.1: seq=0 ttl=64 time=0.311 ms\n"
                                                 "64 bytes from 10.0.0.1: seq=1 ttl=64 time=0.604 ms\n"
                                                 "\n"
                                                 "--- 10.0.0.1 ping statistics ---\n"
                                                 "2 packets transmitted, 2 packets received, 0% packet loss\n"
                                                 "round-trip min/avg/max = 0.311/0.457/0.604 ms\n");
    EXPECT_EQ(output("ping -i 0 10.0.0.1 | head -n 1"), "PING 10.0.0.1 (10.0.0.1): 56 data bytes\n");
    EXPECT_EQ(output("timeout -s INT 0.3 ping -q -i 0.1 10.0.0.1 | grep -c ' 0% packet loss'"), "1\n");
    EXPECT_EQ(output("ping nowhere"), "ping: bad address 'nowhere'\n");
}

TEST_F(StandInTest, PasswordIsAskedTwice)
{
    output("printf 'a\\nb\\n' | passwd");
    output("printf 'a\\n' | passwd");
    output("passwd </dev/null");
    EXPECT_FALSE(exists("/sim/password_changes"));
    EXPECT_EQ(output("printf 'a\\na\\nnext\\n' | { passwd; cat; }"), "Changing password for admin\n"
                                                                     "New password: \n"
                                                                     "Retype password: \n"
                                                                     "Password for admin changed by admin\n"
                                                                     "next\n");
    EXPECT_EQ(readFile("/sim/password_changes"), "1\n");
}

TEST_F(StandInTest, ToolsRefuseTheRealMachine)
{
    for (const auto& tool : std::filesystem::directory_iterator(path("/bin"))) {
        if (tool.path().filename() == "device.sh")
            continue;
        for (const char* root : {"", "CLI_SIM_ROOT=", "CLI_SIM_ROOT=/", "CLI_SIM_ROOT=/etc/.."})
            EXPECT_NE(run("env -u CLI_SIM_ROOT " + std::string(root) + " " + tool.path().string() + " 2>/dev/null"), 0)
                << tool.path() << " " << root;
    }
}

} // namespace
