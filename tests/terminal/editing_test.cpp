#include <filesystem>
#include <sstream>

#include <sys/stat.h>

#include "tests/terminal/shell.h"

namespace
{

constexpr const char* kUnknown = "Command \"nosuch\" is not supported.\n";

using Editing = ShellTest;

} // namespace

/// The host name changes while the reset asks, and again with it.
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
        const char* line; ///< what stands on the line afterwards
    } cases[] = {
        {"con\t", "config "},
        {"show s\t", "show sys_conf "},
        {"show s  \t", "show sys_conf "},
        {"show \t\t", "show "},
        {"get \x1b?", "get "},
        {"get \x1b*", "get "},
        {"  con\tcap\tti\tst\t", "  config capwap timers statistics-timer "},
        {"Con\t", "Con"},
        {"con wtp\001\006\006\006\t\005", "config wtp"},
        {"shel\t", "shel"},
        {"config system f\t", "config system f"},
        {"con$ sho\t", "con$ sho"},
        {"nosuch con\t", "nosuch con"},
        {"debug nosuch debug al\t", "debug nosuch debug al"},
    };
    for (const auto& example : cases) {
        Session session;
        session.send(example.typed);
        session.waitForRow(std::string(kPrompt) + example.line);
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
        const char* key;
        const char* names; ///< of the rows
    } lists[] = {
        {"ca", "\x1bh", "calibration cable "},
        {"get wtp ", "\033OP", "info stations "},
        {"save cw_conf 7", "\033[[A", "cw_conf "},
        {"nosuch | pin", "\033[11~", "ping "},
        {"nosuch ", "\x1bh", ""},
    };
    for (const auto& list : lists) {
        session.send("\x15" + list.line + list.key);
        session.waitFor("\n");
        session.waitForRow(kPrompt + list.line);
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
        {"stty raw -echo; printf 'started\r\n'", "ping", ""},
        {"stty raw -echo; printf 'started\r\n'; kill -9 $$", "ping", ""},
        {"perl -e 'use Fcntl; fcntl(STDIN, F_SETFL, O_RDWR | O_NONBLOCK)'; echo started", "ping", ""},
    };
    for (const auto& example : cases) {
        SCOPED_TRACE(std::string(example.line) + ": " + example.tool);
        plantTool("ping", example.tool);
        Session session;
        session.send(std::string(example.line) + "\r");
        session.waitFor("started");
        session.send(example.keys);
        session.waitForRow(kPrompt);
        EXPECT_EQ(session.ask("nosuch"), kUnknown);
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

TEST_F(Editing, PastedLinesRunOneByOne)
{
    Session session;
    session.ask("\x1b[200~ping a\rpin\x1b[201~\tb\rlist");
    EXPECT_TRUE(session.screen().ends_with("\n0: ping a\n1: ping b\n2: list\nap  #")) << session.screen();
    EXPECT_EQ(calls(), "ping a\nping b\n");
}

/// Searches from which readline returns with an undo list that it frees twice, and keys that switch its mode.
TEST_F(Editing, KeysThatCouldBreakItAreDead)
{
    Session session;
    for (const char* keys : {"t\r", "p\r", "i\x10\x1bp\x05\r"})
        session.endLine(keys);
    session.send("\x1b[A\x0f");
    session.waitForRow("ap  # p");
    session.endLine(kControlC);
    EXPECT_EQ(session.ask("\x1b\rnosuch\x1bx"), kUnknown);
}
