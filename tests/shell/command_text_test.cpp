// Tests of the command texts that typed lines give to the system shell. A recorder replaces system().

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell/alias.h"
#include "shell/executor.h"
#include "shell/signals.h"
#include "shell/tools.h"
#include "tests/support/device.h"

namespace
{

using Texts = std::vector<std::string>;

Texts recorded;
int waitStatus = 0;

class CommandText : public DeviceTest
{
protected:
    /// The texts that a line gives to the system shell, with device paths and without the function that the simulation
    /// puts into each text.
    Texts textsOf(const char* line) const
    {
        recorded.clear();
        outputOf([line] { executeLine(line); });
        for (std::string& text : recorded) {
            text.erase(0, text.find("}; ") + 3);
            for (std::size_t at = text.find(path("")); at != std::string::npos; at = text.find(path("")))
                text.erase(at, path("").size());
        }
        return recorded;
    }
};

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library's is reserved
extern "C" int system(const char* text)
{
    recorded.emplace_back(text);
    return waitStatus;
}

TEST_F(CommandText, IsComposedOfTheWords)
{
    writeFile("/etc/profile", "alias lan='ifconfig  eth0'\n");
    loadAliases();
    const struct {
        const char* line;
        Texts texts;
    } cases[] = {
        {"ping  10.0.0.1 ;grep x", {" ping 10.0.0.1 ; grep x"}},
        {"ifconfig", {" ifconfig > /tmp/cli_pipe_file; cat /tmp/cli_pipe_file"}},
        {"ifconfig a| grep RX", {" ifconfig a > /tmp/cli_pipe_file; cat /tmp/cli_pipe_file | grep RX"}},
        {"lan b | grep RX", {" ifconfig eth0 > /tmp/cli_pipe_file; cat /tmp/cli_pipe_file | grep RX"}},
        {"get qsky info", {"cw_diag -c qsky-cfg"}},
        {"get qsky info & grep on", {"cw_diag -c qsky-cfg >> /tmp/cli_pipe_file", "cat /tmp/cli_pipe_file & grep on"}},
        {"show | grep cw |grep x", {"cat /tmp/cli_pipe_file | grep cw | grep x"}},
        {"show | ifconfig", {"cat /tmp/cli_pipe_file | ifconfig"}},
    };
    for (const auto& example : cases)
        EXPECT_EQ(textsOf(example.line), example.texts) << example.line;
}

TEST_F(CommandText, NamesTheSessionsOwnFileIfTheCommonOneCannotBeHad)
{
    ASSERT_EQ(mkdir(path("/tmp/cli_pipe_file").c_str(), 0700), 0);
    const std::string own = "/tmp/cli_pipe_file." + std::to_string(getpid());
    writeFile(own, "left by an earlier process");
    EXPECT_EQ(textsOf("show | grep cw"), Texts{"cat " + own + " | grep cw"});
    EXPECT_NE(access(path(own).c_str(), F_OK), 0);
}

/// An exit status never counts as an interrupt. Only SIGINT or SIGQUIT that ends the system shell counts as one.
TEST_F(CommandText, AnInterruptIsTheDeathOfTheSystemShell)
{
    const struct {
        int status;
        bool isInterrupt;
    } cases[] = {
        {W_EXITCODE(0, SIGINT), true}, {W_EXITCODE(0, SIGQUIT), true},       {W_EXITCODE(0, SIGTERM), false},
        {W_EXITCODE(0, 0), false},     {W_EXITCODE(128 + SIGINT, 0), false}, {-1, false},
    };
    for (const auto& example : cases) {
        waitStatus = example.status;
        EXPECT_EQ(runCommand("tool"), example.status);
        EXPECT_EQ(isInterrupted(), example.isInterrupt) << example.status;
        forgetInterrupt();
    }
}
