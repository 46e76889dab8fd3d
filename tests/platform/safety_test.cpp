// What keeps the simulated device from the machine that it runs on.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/system_library.h"
#include "tests/support/device.h"

namespace
{

class SafetyTest : public DeviceTest
{
protected:
    void SetUp() override { layOut(""); }

    static int run(const std::string& command) { return std::system((command + " >/dev/null 2>&1").c_str()); }

    void layOut(const std::string& option) const
    {
        ASSERT_EQ(run(SOURCE_FOLDER "/platform/simulation/lay_out " + option + " " + path("")), 0);
    }

    /// Whether a process named `program` that believes it runs on the device `root` outlives a command line.
    [[nodiscard]] bool survives(const std::string& command, const std::string& program, const std::string& root) const
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
        run(command);
        bool lives = true;
        for (int i = 0; lives && i < 100; ++i) {
            usleep(2000);
            lives = waitpid(child, nullptr, WNOHANG) == 0;
        }
        if (lives) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        return lives;
    }
};

TEST_F(SafetyTest, ToolsRefuseTheRealMachine)
{
    for (const auto& tool : std::filesystem::directory_iterator(path("/bin"))) {
        if (tool.path().filename() == "device.sh")
            continue;
        for (const char* root : {"", "CLI_SIM_ROOT=", "CLI_SIM_ROOT=/", "CLI_SIM_ROOT=/etc/.."})
            EXPECT_NE(run("env -u CLI_SIM_ROOT " + std::string(root) + " " + tool.path().string()), 0)
                << tool.path() << " " << root;
    }
}

TEST_F(SafetyTest, SignalsReachTheDaemonOfThisDeviceOnly)
{
    for (const char* command :
         {"pkill cwWtpd", "killall -9 cwWtpd", "pkill -f -SIGTERM cwWtpd", "killall -s TERM cwWtpd", "reboot"})
        EXPECT_FALSE(survives(command, "cwWtpd", path(""))) << command;
    EXPECT_TRUE(survives("pkill cwWtpd", "cwWtpd", path("/cfg"))) << "another device's";
    for (const char* command : {"pkill cwWtpd", "pkill other"})
        EXPECT_TRUE(survives(command, "other", path(""))) << command;
    for (const char* command : {"killall other", "pkill"})
        EXPECT_TRUE(survives(command, "cwWtpd", path(""))) << command;
    for (const char* pid : {"", "x", "-1", "0", "1"}) {
        writeFile("/tmp/cwWtpd.pid", pid);
        EXPECT_NE(run("pkill cwWtpd"), 0) << pid;
    }
}

TEST_F(SafetyTest, LayingOutKeepsWhatAUserChanged)
{
    EXPECT_EQ(readFile("/cfg/cw.conf"), readFile("/etc/cw.conf"));
    const std::string changed[] = {"/cfg/cw.conf", "/sim/interfaces/wlan0/ssid", "/dev/mtdblock0"};
    for (const std::string& file : changed)
        writeFile(file, "mine");
    layOut("");
    for (const std::string& file : changed)
        EXPECT_EQ(readFile(file), "mine") << file;
    layOut("--fresh");
    for (const std::string& file : changed)
        EXPECT_NE(readFile(file), "mine") << file;
}

TEST_F(SafetyTest, ConfirmationTakesOneLine)
{
    struct Row {
        std::string input;
        bool yes;
        std::string rest;
    };
    for (const Row& row : {Row{"y\nshow sys_conf\n", true, "show sys_conf\n"},
                           {"Yes\n", true, ""},
                           {"n\ny\n", false, "y\n"},
                           {"\ny\n", false, "y\n"},
                           {"yes, but not now\n", false, ""},
                           {"yesyesyesyesyes\n", false, ""},
                           {"y", false, ""},
                           {"", false, ""}}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        ASSERT_EQ(write(ends[1], row.input.data(), row.input.size()), static_cast<ssize_t>(row.input.size()));
        close(ends[1]);
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        int answer = 0;
        const std::string said = outputOf([&] { answer = act_confirm("Sure about it!\n"); });
        EXPECT_EQ(answer != 0, row.yes) << row.input;
        EXPECT_TRUE(said.starts_with("Sure about it!\nAre you sure? (y/n) ")) << said;
        char rest[32]{};
        EXPECT_EQ(read(STDIN_FILENO, rest, sizeof rest - 1), static_cast<ssize_t>(row.rest.size())) << row.input;
        EXPECT_EQ(rest, row.rest);
    }
}

TEST_F(SafetyTest, WithoutRootNoDeviceFileOpensAndWithOneItsToolsComeFirst)
{
    setenv("PATH", "/usr/bin:/bin", 1);
    install_signal_handler("cli", 0);
    EXPECT_EQ(std::getenv("PATH"), path("/bin") + ":/usr/bin:/bin");
    unsetenv("CLI_SIM_ROOT");
    EXPECT_STREQ(DeviceFile("/etc/profile").path(), "");
}

using SafetyDeathTest = SafetyTest;

void startOn(const char* root)
{
    unsetenv("CLI_SIM_ROOT");
    if (root != nullptr)
        setenv("CLI_SIM_ROOT", root, 1);
    install_signal_handler("cli", 0);
}

TEST_F(SafetyDeathTest, NoDeviceNoShell)
{
    const std::string noTools = path("/cfg");
    for (const char* root : {static_cast<const char*>(nullptr), "", "/", "/etc/..", "/no/such/folder", noTools.c_str()})
        EXPECT_EXIT(startOn(root), testing::ExitedWithCode(1), "^cli: ");
}

TEST_F(SafetyDeathTest, FaultIsNamedAndKills)
{
    const std::string root = path("");
    EXPECT_EXIT((startOn(root.c_str()), std::abort()), testing::KilledBySignal(SIGABRT), "^cli: Aborted\n");
}

} // namespace
