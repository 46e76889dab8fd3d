#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

#include <sys/stat.h>

#include "tests/terminal/shell.h"

namespace
{

constexpr const char* kUnknown = "Command \"nosuch\" is not supported.\n";

using Editing = ShellTest;

} // namespace

/// The host name in the configuration file is changed while the command asks for confirmation. The reset changes it
/// again.
TEST_F(Editing, AFactoryResetKeepsThePromptUnlessItIsRefused)
{
    writeFile("/etc/sys.conf", "hostname=factory\n");
    Session session;
    session.send("factory-reset\r");
    session.waitFor("The operation will do factory reset!\r\nAre you sure? (y/n) ");
    writeFile("/cfg/sys.conf", "hostname=late\n");
    for (const char* keys : {"n\r", "factory-reset -n\r", "\r"}) {
        EXPECT_EQ(calls(), keys[0] == '\r' ? "reboot \n" : "");
        session.send(keys);
        session.waitFor("\n");
        session.waitForRow("late  # ");
    }
}

TEST_F(Editing, CompletesWords)
{
    const struct {
        const char* typed;
        const char* line; ///< the line afterwards
    } cases[] = {
        {"show s  \t", "show sys_conf "},
        {"show \t\t", "show "},
        {"get \x1b?", "get "},
        {"get \x1b*", "get "},
        {"get \x14\x14\x14", "get "},
        {"pin\x14\x14", "ping "},
        {"c\x14\x14", "cw_debug "},
        {"x\x14\x14", "xy "},
        {"  con\tcap\tti\tst\t", "  config capwap timers statistics-timer "},
        {"Con\t", "Con"},
        {"con wtp\001\006\006\006\t\005", "config wtp"},
        {"config system f\t", "config system f"},
        {"con$ sho\t", "con$ sho"},
        {"nosuch con\t", "nosuch con"},
        {"debug nosuch debug al\t", "debug nosuch debug al"},
    };
    writeFile("/etc/profile", "alias ping='ifconfig'\nalias xyz='ps'\nalias xy='ps'\n");
    writeFile("/etc/inputrc", "\"\\C-t\": menu-complete\n");
    for (const auto& example : cases) {
        Session session(shell({"INPUTRC=" + path("/etc/inputrc")}));
        session.send(example.typed);
        session.waitForRow(std::string(kPrompt) + example.line);
    }
}

TEST_F(Editing, AConfigurationFileBindsTheSameCommands)
{
    const struct {
        const char* name;
        const char* keys;
        const char* shown;
    } cases[] = {
        {"complete", "show s  \x14", "show sys_conf"},
        {"complete", "x\026\nshow s\x14", "show sys_conf"}, // a line of two lines
        {"insert-completions", "show s  \x14", "show sys_conf"},
        {"menu-complete", "show s  \x14", "show sys_conf"},
        {"menu-complete-backward", "show s  \x14", "show sys_conf"},
        {"old-menu-complete", "show s  \x14", "show sys_conf"},
        {"possible-completions", "show  \x14", "ap  # show\nshow\n"},
        {"delete-char-or-list", "show  \x14", "ap  # show\nshow\n"},
        {"list-commands", "show \x14", "Show system configuration."},
        {"vi-complete", "save  \x1b\024$az", "save  z"},
    };
    for (const auto& example : cases) {
        SCOPED_TRACE(example.name);
        const bool isVi = example.name[0] == 'v';
        writeFile("/etc/inputrc", (isVi ? "set editing-mode vi\nset keymap vi-command\n\"\\C-t\": " : "\"\\C-t\": ") +
                                      std::string(example.name) + "\n");
        Session session(shell({"INPUTRC=" + path("/etc/inputrc")}));
        session.send(example.keys);
        session.waitForScreen(example.shown);
    }
}

TEST_F(Editing, OffersWhatCanBeTypedNext)
{
    writeFile("/etc/profile", "alias cable='ifconfig eth0'\n");
    Session session;
    session.send("c\t\t");
    session.waitFor("\n");
    session.waitForRow(std::string(kPrompt) + "c");
    EXPECT_EQ(session.rowsAbove(), "cw_diag      cw_debug     calibration  config       cfg          cable\n");

    const struct {
        std::string line;
        const char* keys;
        const char* names; ///< the names of the listed rows; empty: the bell rings
    } lists[] = {
        {"ca", "\x1bh", "calibration cable "},
        {"get wtp ", "\033OP", "info stations "},
        {"get ", "\t\t", "vap wtp radio system qsky "},
        {"save cw_conf 7", "\033[[A", "cw_conf "},
        {"debug nosuch ", "\t\t", "debug "},
        {"nosuch | ca", "\033[11~", "cable "},
        {"show;grep ", "\t\t", "grep "},
        {"; sav", "\x1bh", "save "},
        {"show | get ", "\x1bh", ""},
        {"show | help ", "\x1bh", ""},
        {"get x", "\x1bh", ""},
        {"shel", "\x1bh", ""},
        {"nosuch ", "\x1bh", ""},
        {"ping $x ", "\x1bh", ""},
    };
    for (const auto& list : lists) {
        SCOPED_TRACE(list.line);
        session.send("\x15" + list.line + list.keys);
        const bool rings = list.names[0] == '\0';
        EXPECT_EQ(session.waitFor(rings ? "\a" : "\n").find('\n') == std::string::npos, rings);
        session.waitForRow(kPrompt + list.line);
        if (rings)
            continue;
        std::istringstream rows(session.rowsAbove());
        std::string names;
        for (std::string row; std::getline(rows, row);)
            names += row.substr(8, row.find(' ', 8) - 7);
        EXPECT_EQ(names, list.names);
    }
}

TEST_F(Editing, RemembersLinesAsTheyWereTyped)
{
    Session session;
    for (const char* line : {"nosuch", "ping a", "config system hostname ap"})
        session.ask(line);
    std::filesystem::remove_all(path("/cfg"));
    for (const char* failing : {"config system hostname ap", "config system hostname ap | grep x"})
        session.ask(failing);
    EXPECT_EQ(session.ask("\x10\x10 edited\x0e\x0elist"),
              "0: nosuch\n1: ping a\n2: config system hostname ap\n3: list\n");
    session.ask("\x10\x10\x10 b");
    EXPECT_TRUE(calls().ends_with("\nping a b\n"));
}

TEST_F(Editing, AnInterruptDropsTheLine)
{
    const struct {
        std::string keys;
        const char* shown;
    } depths[] = {
        {"ping dropped", "dropped"}, {std::string(2000, 'x') + '\001', "xx"},
        {"\022dropped", "dropped"},  {"\022kept", "kept'"},
        {"dropped\x1b", "dropped"},  {"dropped\03312", "12)"},
        {"\t\t", "(y or n)"},
    };
    std::string profile;
    for (int i = 0; i < 120; ++i)
        profile += "alias lan" + std::to_string(i) + "='ifconfig'\n";
    writeFile("/etc/profile", profile);
    for (const std::string type : {"xterm", "vt100", "linux", "screen"}) {
        Session session(shell({"TERM=" + type}));
        session.ask("ping kept");
        for (const auto& depth : depths) {
            SCOPED_TRACE(type + ": " + depth.keys);
            session.send(depth.keys);
            session.waitForScreen(depth.shown);
            session.endLine(kControlC);
            EXPECT_EQ(session.screen().find("dropped"), std::string::npos) << session.screen();
            EXPECT_EQ(session.ask("nosuch"), kUnknown);
        }
        EXPECT_EQ(session.ask("list").find("dropped"), std::string::npos);
        session.send("quit\r");
        EXPECT_EQ(session.waitForExit(), 0) << "nothing leaks";
    }
    EXPECT_EQ(calls(), "ping kept\nping kept\nping kept\nping kept\n");
}

TEST_F(Editing, NoToolSpoilsTheTerminal)
{
    const struct {
        const char* tool;
        const char* line;
        const char* keys;
    } cases[] = {
        {"printf started; exec sleep 600", "ping", kControlC},
        {"echo started; exec sleep 600", "ping | grep -v x", kControlC},
        {"printf started; exec sleep 600", "brctl | ping", kControlC},
        {"printf started; exec sleep 600", "ping", "\x1c"},
        {"/usr/bin/perl -e 'use POSIX; $SIG{TTOU} = q(IGNORE); setpgid(0, 0); tcsetpgrp(0, getpgrp)'; echo started",
         "ping", ""},
        {"stty raw -echo; printf 'started\r\n'", "ping", ""},
        {"stty raw -echo; printf 'started\r\n'; kill -9 $$", "ping", ""},
        {"/usr/bin/perl -e 'use Fcntl; fcntl(STDIN, F_SETFL, O_RDWR | O_NONBLOCK)'; echo started", "ping", ""},
    };
    for (const auto& example : cases) {
        SCOPED_TRACE(std::string(example.line) + ": " + example.tool);
        plantTool("ping", example.tool);
        plantTool("brctl",
                  "/usr/bin/perl -e 'use Fcntl; print qq(no waiting\n) if fcntl(STDIN, F_GETFL, 0) & O_NONBLOCK'");
        Session session;
        session.send(std::string(example.line) + "\r");
        session.waitFor("started");
        session.send(example.keys);
        session.waitForRow(kPrompt);
        EXPECT_EQ(session.ask("brctl"), "");
        session.send("quit\r");
        EXPECT_EQ(session.waitForExit(), 0);
        EXPECT_TRUE(session.isAsFound());
    }
}

TEST_F(Editing, AnInterruptDropsWhatABuiltInHasStillToSay)
{
    Session session;
    session.send("bios dumpflash\r");
    session.waitFor(" 00 00");
    session.send(kControlC);
    EXPECT_LT(session.waitFor(kPrompt).size(), 3U * 0x40000);
    EXPECT_EQ(session.ask("nosuch"), kUnknown);
}

TEST_F(Editing, StartsInAnyEnvironment)
{
    plantTool("ping", "echo \"[$COLUMNS $INPUTRC $BASH_ENV $LESSSECURE]\"");
    ASSERT_EQ(mkfifo(path("/tmp/fifo").c_str(), S_IRUSR | S_IWUSR), 0);
    Session session(shell({"COLUMNS=2147483647", "INPUTRC=" + path("/tmp/fifo"), "BASH_ENV=x"}));
    EXPECT_EQ(session.ask("ping"), "[ /dev/null  1]\n");

    writeFile("/etc/inputrc", "set enable-bracketed-paste off\n");
    Session unmarked(shell({"INPUTRC=" + path("/etc/inputrc")}));
    unmarked.send("ping\rnosuch\r");
    EXPECT_EQ(unmarked.waitFor("nosuch").find("\x1b[?2004"), std::string::npos);
}

TEST_F(Editing, ComesBackToTheForeground)
{
    Terminal terminal({"/bin/bash", {"bash", "--norc", "-i"}, {"PS1=sub> "}});
    terminal.waitForRow("sub> ");
    terminal.send(CLI_PROGRAM "\r");
    terminal.waitForRow(kPrompt);
    terminal.send("half");
    terminal.waitForRow("ap  # half");
    for (const char* keys : {"\x1a", "bg\r"}) {
        terminal.send(keys);
        terminal.waitForRow("sub> ");
    }
    terminal.send("fg\r");
    terminal.waitForRow("ap  # half");
}

TEST_F(Editing, PastedLinesReadAsIfTyped)
{
    writeFile("/etc/inputrc", "set editing-mode vi\n");
    for (const std::string type : {"xterm", "vt100", "dumb"}) {
        for (const std::string& file : {std::string("/dev/null"), path("/etc/inputrc")}) {
            SCOPED_TRACE(testing::Message() << type << ' ' << file);
            Session session(shell({"TERM=" + type, "INPUTRC=" + file}));
            session.send("ping a\x1b[D\x1b[200~x\rnosuch\r\rlist \rlist\rhalf\x1b[201~");
            session.waitForRow("ap  # half");
            EXPECT_EQ(session.screen(), "ap  # ping xa\n"
                                        "ap  # nosuch\nCommand \"nosuch\" is not supported.\n"
                                        "ap  #\n"
                                        "ap  # list\nCommand \"list\" is not supported.\n"
                                        "ap  # list\n0: ping xa\n1: nosuch\n2: list\n3: list\n"
                                        "ap  # half");
            EXPECT_EQ(session.ask("\x7f"), "Command \"hal\" is not supported.\n");
            session.send("\x1b[200~quit\rping never\r\x1b[201~");
            EXPECT_EQ(session.waitForExit(), 0);
        }
    }
    EXPECT_EQ(calls().find("never"), std::string::npos);
}

TEST_F(Editing, AnInterruptDropsTheRestOfAPaste)
{
    plantTool("ping", "echo started; exec sleep 600");
    const struct {
        std::string keys;
        const char* shown; ///< the text before the interrupt is sent
        const char* after; ///< the keys that are sent after Ctrl-C
        const char* before = "";
        const char* shownAfter = "^C";
    } cases[] = {
        {"ping\rbrctl\r\x1b[201~", "started", "kept\r", "", "\"kept\" is not"},
        {"nosuch\rbrctl half\x1b[201~", "half", ""},
        {"brctl\rbrctl", "ap", "brctl\rbrctl\r\x1b[201~"},
        {"brctl\rbrctl", "ap", "brctl\rbrctl\r\x1b[201~", "\022"},
    };
    for (const auto& example : cases) {
        SCOPED_TRACE(example.keys);
        Session session;
        session.send(example.before + ("\x1b[200~" + example.keys));
        session.waitForScreen(example.shown);
        // Ctrl-C discards the keys that the shell has not read yet. So wait until it has read all of them.
        const int input = open(("/proc/" + std::to_string(session.pid()) + "/fd/0").c_str(), O_RDONLY | O_NOCTTY);
        for (int unread = 1; unread > 0; usleep(1000))
            ASSERT_EQ(ioctl(input, FIONREAD, &unread), 0);
        close(input);
        session.send(kControlC + std::string(example.after));
        session.waitForScreen(example.shownAfter);
        session.waitForRow(kPrompt);
        EXPECT_EQ(session.ask("nosuch"), kUnknown);
        session.send("\r");
        session.waitFor("\x1b[?2004h"); // the terminal is still asked to mark pasted text
    }
    // Imitates a tool that handles SIGINT itself and exits normally, so that no wait status shows the interrupt. Only
    // the child process of InterruptWatch receives the signal.
    plantTool("ping", R"(read -r _ _ _ session _ </proc/$PPID/stat
        for child in $(cat /proc/$session/task/$session/children); do [ $child = $PPID ] || kill -INT $child; done
        echo statistics)");
    Session session;
    session.send("\x1b[200~ping\rbrctl\r\x1b[201~");
    session.waitForScreen("statistics");
    session.waitForRow(kPrompt);
    EXPECT_EQ(session.row(session.cursor().row - 1), "statistics");
    EXPECT_EQ(session.ask("nosuch"), kUnknown);
    EXPECT_EQ(calls(), "");
}

TEST_F(Editing, FlowControlKeysDoNothingUnlessTheyAreBound)
{
    const struct {
        const char* inputrc;
        const char* keys;
        const char* shown;
    } cases[] = {
        {"", "\023no\021such", "ap  # nosuch"},
        {"", "\022\023k", "`k': kept"},
        {"set editing-mode vi\n", "\023no\021such\0330\023x\021ix", "ap  # xosuch"},
        {"\"\\C-s\": \"a\"\nset keymap vi\n\"\\C-s\": \"b\"\n", "\023\021c", "ap  # ac"},
    };
    for (const auto& example : cases) {
        writeFile("/etc/inputrc", example.inputrc);
        Session session(shell({"INPUTRC=" + path("/etc/inputrc")}));
        session.ask("kept");
        session.send(example.keys);
        session.waitForScreen(example.shown);
    }
}

/// Searches after which readline frees its undo list twice, and keys that switch to the vi mode.
TEST_F(Editing, KeysThatCouldBreakItAreDead)
{
    Session session;
    for (const char* keys : {"t\r", "p\r", "i\x10\x1bp\x05\r"})
        session.endLine(keys);
    session.send("\x1b[A\x0f");
    session.waitForRow("ap  # p");
    session.endLine(kControlC);
    EXPECT_EQ(session.ask("\x1b\rnosuch\x1bx"), kUnknown);

    writeFile("/etc/inputrc", "set editing-mode vi\n");
    Session vi(shell({"INPUTRC=" + path("/etc/inputrc")}));
    vi.ask("nosuch");
    vi.endLine("\x1bkx/zz\r\x1bjx\r");
    EXPECT_EQ(vi.ask("get  \x1b\\*Inosuch"), "Command \"nosuchget\" is not supported.\n");
}
