#include <csignal>
#include <filesystem>
#include <unistd.h>

#include "tests/terminal/shell.h"

/// A function of the sanitizer; null without a sanitizer.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

using Ending = ShellTest;

TEST_F(Ending, LeavesTheTerminalAsItWasFound)
{
    const struct {
        std::vector<const char*> keys;
        const char* end; ///< the end of the screen
        int status;
    } endings[] = {
        {{"quit\r"}, "ap  # quit\nExit.", 0},      {{"quit | grep x\r"}, "ap  # quit | grep x", 0},
        {{"reboot\r"}, "ap  # reboot", 0},         {{"\x04"}, "ap  #", 1},
        {{"half", kControlC, "\x04"}, "ap  #", 1}, {{"\022x", "\003exit\r"}, "ap  # exit\nExit.", 0},
        {{"\x1b[200~half"}, "ap  #", 0}, // the idle time ends it
    };
    writeFile("/etc/admin-timeout.tmp", "2\n");
    for (const auto& ending : endings) {
        SCOPED_TRACE(ending.keys[0]);
        Session session;
        EXPECT_FALSE(session.isAsFound());
        for (const char* keys : ending.keys) {
            session.send(keys);
            if (keys == kControlC)
                session.waitForRow(kPrompt);
        }
        session.waitForEnd();
        EXPECT_EQ(session.waitForExit(), ending.status);
        EXPECT_TRUE(session.screen().ends_with(ending.end)) << session.screen();
        EXPECT_TRUE(session.isAsFound());
    }
    EXPECT_EQ(calls(), "reboot \n");
}

/// The shell restores the terminal even if its parent process has blocked all signals before it started the shell.
TEST_F(Ending, LeavesTheTerminalWhenASignalEndsIt)
{
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr);
    for (const int signal : {SIGTERM, SIGHUP, SIGUSR1, SIGABRT}) {
        Session session;
        kill(session.pid(), signal);
        EXPECT_EQ(session.waitForExit(), -signal);
        EXPECT_TRUE(session.isAsFound()) << signal;
    }
    // The common pipe file cannot be created, so the session uses a file of its own.
    std::filesystem::create_directory(path("/tmp/cli_pipe_file"));
    plantTool("ping", "echo started; exec sleep 600");
    Session session;
    session.send("show | ping\r");
    session.waitForScreen("started");
    kill(session.pid(), SIGTERM);
    EXPECT_EQ(session.waitForExit(), -SIGTERM);
    EXPECT_TRUE(std::filesystem::is_empty(path("/tmp/cli_pipe_file")) &&
                std::filesystem::remove(path("/tmp/cli_pipe_file")));
    EXPECT_TRUE(std::filesystem::is_empty(path("/tmp")));
    Terminal terminal({"/bin/sh", {"sh", "-c", "\"$0\" | head -2", CLI_PROGRAM}, {}});
    terminal.send("nosuch\r");
    terminal.waitForScreen("not supported.");
    terminal.send("x");
    terminal.waitForExit();
    EXPECT_TRUE(terminal.isAsFound());
}

/// readline calls exit() when it gets no memory for its configuration file.
TEST_F(Ending, LeavesTheTerminalWhenThereIsNoMemory)
{
    if (__sanitizer_get_current_allocated_bytes == nullptr)
        GTEST_SKIP() << "only a sanitizer refuses memory";
    Session session(shell(
        {"INPUTRC=" + path("/etc/inputrc"), "ASAN_OPTIONS=max_allocation_size_mb=1:allocator_may_return_null=1"}));
    writeFile("/etc/inputrc", std::string(2 << 20, '\n'));
    session.send("half\x18\x12");
    EXPECT_EQ(session.waitForExit(), 2);
    EXPECT_TRUE(session.isAsFound());
}

TEST_F(Ending, EndsWithItsTerminal)
{
    plantTool("ping", "exec sleep 600");
    for (const char* keys : {"", "half a line", "\022find", "ping\r"}) {
        Session session;
        session.send(keys);
        session.hangUp();
        session.waitForExit();
    }
}

/// SIGHUP is ignored here, so after the hang-up the shell reads the end of the input.
TEST_F(Ending, RunsNoLineThatAHangUpCutsOff)
{
    for (const char* keys : {"brctl half", "brctl half\x1b[200~ pasted\rbrctl", "\022brctl half"}) {
        Session session({"/bin/sh", {"sh", "-c", "trap '' HUP; exec \"$0\"", CLI_PROGRAM}, {}});
        session.send(keys);
        session.waitForScreen("half");
        session.hangUp();
        EXPECT_EQ(session.waitForExit(), 1);
    }
    EXPECT_EQ(calls(), "");
}

TEST_F(Ending, IdleSessionEndsAsItsParentAsks)
{
    const struct {
        const char* parent;
        const char* typed; ///< keys, without return
        const char* screen;
        int status;
    } sessions[] = {
        {"telnetd", "", "ap  #\nTimeout\nexit\nback 0", 0},
        {"/usr/sbin/telnetd", "half", "ap  # half\nTimeout\nexit\nback 0", 0},
        {"/bin/sh", "half", "ap  # half", -SIGKILL},
        {"login", "", "ap  #\nback 0", 0},
        {"/bin/shell-of-another-kind", "", "ap  #", -SIGKILL},
    };
    writeFile("/etc/admin-timeout.tmp", "1\n");
    plantTool("kill", "kill \"$@\"");
    for (const auto& example : sessions) {
        SCOPED_TRACE(example.parent);
        Session session(shellBelow(example.parent));
        session.send(example.typed);
        session.waitForEnd();
        EXPECT_EQ(session.screen(), example.screen);
        EXPECT_EQ(session.waitForExit(), example.status);
        EXPECT_TRUE(session.isAsFound());
        EXPECT_TRUE(std::filesystem::is_empty(path("/tmp")));
    }
    std::filesystem::remove_all(path("/tmp"));
    Session session(shellBelow("telnetd"));
    session.waitForEnd();
    EXPECT_EQ(session.screen(), sessions[0].screen);
}

TEST_F(Ending, IdleTimeRunsAtThePromptOnly)
{
    writeFile("/etc/admin-timeout.tmp", "2\n");
    plantTool("ping", "sleep 2.2; echo done");
    Session session(shellBelow("telnetd"));
    EXPECT_EQ(session.ask("ping"), "done\n");
    // SIGWINCH wakes the session at its prompt. If the idle time had run during the tool, the session would end here.
    session.resize(30, 100);
    EXPECT_EQ(session.ask("nosuch"), "Command \"nosuch\" is not supported.\n");
    session.send("\022p");
    session.waitForScreen("Timeout\nexit\nback 0");
}

TEST_F(Ending, ShellReturnsToASystemShellOrOpensOne)
{
    {
        Session session(shellBelow("/bin/sh"));
        session.send("shell\r");
        session.waitForEnd();
        EXPECT_EQ(session.screen(), "ap  # shell\nback 0");
        EXPECT_TRUE(std::filesystem::is_empty(path("/tmp")));
    }
    writeFile("/tmp/victim", "untouched");
    const std::string planted = path("/tmp/cli_" + std::to_string(getpid()) + ".tmp");
    std::filesystem::create_symlink(path("/tmp/victim"), planted);
    Session session(shell({"PS1=sub> "}));
    session.send("shell\r");
    session.waitForRow("sub> ");
    EXPECT_TRUE(session.isAsFound());
    session.send("exit\r");
    session.waitForRow(kPrompt);
    EXPECT_EQ(session.ask("list"), "0: shell\n1: list\n");
    EXPECT_EQ(readFile("/tmp/victim"), "untouched");
    EXPECT_FALSE(std::filesystem::is_symlink(planted));
}
