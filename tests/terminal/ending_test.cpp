#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>

#include "tests/terminal/shell.h"

namespace
{

class Ending : public ShellTest
{
protected:
    /// Where the shell keeps what it finds out about its parent, the test or a system shell.
    static std::string parentFile(pid_t parent) { return "cli_" + std::to_string(parent) + ".tmp "; }

    void setIdleTimeout(int seconds) { writeFile("/etc/admin-timeout.tmp", std::to_string(seconds) + "\n"); }
};

int exitStatusOf(int waitStatus)
{
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -WTERMSIG(waitStatus);
}

} // namespace

TEST_F(Ending, LeavesTheTerminalAsItWasFound)
{
    const struct {
        const char* before;
        const char* keys;
        const char* shown; ///< all that comes after them
        int status;
    } endings[] = {
        {"\r", "quit\r", "quit\r\nExit.\r\n", 0},
        {"ping\r", "exit\r", "exit\r\nExit.\r\n", 0},
        {"nosuch\r", "quit | grep x\r", "quit | grep x\r\n", 0},
        {"brctl\r", "reboot\r", "reboot\r\n", 0},
        {"\r", "\x04", "", 1},
        {"dropped\x03", "\x04", "", 1},
    };
    for (const auto& ending : endings) {
        Terminal terminal(shell());
        terminal.waitFor(kPrompt);
        EXPECT_FALSE(terminal.modesAreInitial());
        terminal.send(ending.before);
        terminal.waitFor(kFreshPrompt);
        terminal.send(ending.keys);
        EXPECT_EQ(terminal.readToEnd(), ending.shown);
        EXPECT_EQ(exitStatusOf(terminal.waitForExit()), ending.status) << ending.keys;
        EXPECT_TRUE(terminal.modesAreInitial()) << ending.keys;
    }
    EXPECT_EQ(calls(), "ping \nbrctl \nreboot \n");
}

TEST_F(Ending, LeavesAVideoTerminalAsItWasFound)
{
    constexpr const char* kPasteOn = "\x1b[?2004h";
    constexpr const char* kPasteOff = "\x1b[?2004l";
    setIdleTimeout(1);
    for (const char* keys : {"quit\r", "half\x03\x04", "\022x\003reboot\r", "half", "\x1b[200~half"}) {
        Terminal terminal(shell({"TERM=xterm"}));
        std::string shown = terminal.waitFor(kPrompt);
        terminal.send(keys);
        shown += terminal.readToEnd();
        EXPECT_NE(shown.find(kPasteOn), std::string::npos);
        EXPECT_GT(shown.rfind(kPasteOff), shown.rfind(kPasteOn)) << keys;
        EXPECT_TRUE(terminal.modesAreInitial()) << keys;
        EXPECT_GE(exitStatusOf(terminal.waitForExit()), 0);
    }
}

TEST_F(Ending, EndsBySignals)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        Terminal terminal(shell());
        terminal.waitFor(kPrompt);
        kill(terminal.pid(), signal);
        EXPECT_EQ(exitStatusOf(terminal.waitForExit()), -signal);
        EXPECT_TRUE(terminal.modesAreInitial());
    }
}

TEST_F(Ending, EndsWithItsTerminal)
{
    for (const char* keys : {"", "half a line", "\022find", "ping\r"}) {
        plantTool("ping", "exec sleep 600");
        Terminal terminal(shell());
        terminal.waitFor(kPrompt);
        terminal.send(keys);
        terminal.hangUp();
        terminal.waitForExit();
    }
}

TEST_F(Ending, IdleSessionEndsAsItsParentAsks)
{
    const struct {
        const char* parent;
        const char* typed; ///< not ended by return
        const char* shown;
        int status;
    } sessions[] = {
        {"telnetd", "", "Timeout\r\nexit\r\nback 0\r\n", 0},
        {"/usr/sbin/telnetd", "half", "halfTimeout\r\nexit\r\nback 0\r\n", 0},
        {"/bin/sh", "", "", -SIGKILL},
        {"/bin/sh", "half", "half", -SIGKILL},
        {"login", "", "back 0\r\n", 0},
        {"/bin/shell-of-another-kind", "", "", -SIGKILL},
    };
    setIdleTimeout(1);
    for (const auto& session : sessions) {
        Terminal terminal(shellBelow(session.parent));
        terminal.waitFor(kPrompt);
        terminal.send(session.typed);
        EXPECT_EQ(terminal.readToEnd(), session.shown) << session.parent;
        EXPECT_EQ(exitStatusOf(terminal.waitForExit()), session.status) << session.parent;
        EXPECT_TRUE(terminal.modesAreInitial());
        EXPECT_EQ(temporaryFiles(), "");
    }
}

TEST_F(Ending, IdleTimeRunsAtThePromptOnly)
{
    setIdleTimeout(2);
    plantTool("ping", "sleep 2.2; echo done");
    Terminal terminal(shellBelow("telnetd"));
    terminal.waitFor(kPrompt);
    EXPECT_EQ(ask(terminal, "ping"), "done\n");
    terminal.resize(30, 100); // a signal at which an expired time would show
    EXPECT_EQ(ask(terminal, "nosuch"), "Command \"nosuch\" is not supported.\n");
    terminal.send("\022p");
    terminal.waitFor("Timeout\r\nexit\r\nback 0\r\n");
}

TEST_F(Ending, ShellReturnsToASystemShellOrOpensOne)
{
    {
        Terminal terminal(shellBelow("/bin/sh"));
        terminal.waitFor(kPrompt);
        terminal.send("shell\r");
        EXPECT_EQ(terminal.readToEnd(), "shell\r\nback 0\r\n");
        EXPECT_EQ(temporaryFiles(), "");
    }
    writeFile("/tmp/victim", "untouched");
    ASSERT_EQ(symlink(path("/tmp/victim").c_str(), path("/tmp/cli_" + std::to_string(getpid()) + ".tmp").c_str()), 0);
    Terminal terminal(shell({"PS1=sub> "}));
    terminal.waitFor(kPrompt);
    terminal.send("shell\r");
    terminal.waitFor("sub> ");
    EXPECT_TRUE(terminal.modesAreInitial());
    terminal.send("echo in$((1 + 1))\r");
    terminal.waitFor("\nin2\r\n");
    terminal.send("exit\r");
    terminal.waitFor(kPrompt);
    EXPECT_EQ(ask(terminal, "list"), "0: shell\n1: list\n");
    EXPECT_EQ(readFile("/tmp/victim"), "untouched");
    EXPECT_EQ(temporaryFiles(), parentFile(getpid()) + "victim ");
}

TEST_F(Ending, KnowsItsParentWithoutAPlaceForTheFile)
{
    std::filesystem::remove_all(path("/tmp"));
    setIdleTimeout(1);
    Terminal terminal(shellBelow("telnetd"));
    terminal.waitFor(kPrompt);
    EXPECT_EQ(terminal.readToEnd(), "Timeout\r\nexit\r\nback 0\r\n");
}
