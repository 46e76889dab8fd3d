#include <filesystem>
#include <iterator>
#include <set>
#include <sstream>

#include "tests/terminal/shell.h"

namespace
{

constexpr const char* kControlC = "\x03";

class Editing : public ShellTest
{
protected:
    /// Another process writes the system configuration, at a time of its own.
    void configureFromOutside(const std::string& hostname)
    {
        writeFile("/cfg/sys.conf", "hostname=" + hostname + "\n");
        const auto time = std::filesystem::last_write_time(path("/cfg/sys.conf"));
        std::filesystem::last_write_time(path("/cfg/sys.conf"), time + std::chrono::seconds(++changes_));
    }

private:
    int changes_ = 0;
};

std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

} // namespace

TEST_F(Editing, PromptFollowsTheHostName)
{
    Terminal terminal(shell());
    EXPECT_EQ(terminal.waitFor(kPrompt), kPrompt);
    configureFromOutside("hall 2");
    terminal.send("\r");
    EXPECT_EQ(terminal.waitFor("# "), "\r\nhall 2  # ");
    ASSERT_TRUE(std::filesystem::remove(path("/cfg/sys.conf")));
    terminal.send("\r");
    EXPECT_EQ(terminal.waitFor("# "), "\r\nhall 2  # ");
    for (const std::string name : {"first", "second"}) {
        terminal.send("config system hostname " + name + "\r");
        terminal.waitFor("\n" + name + "  # ");
    }
}

TEST_F(Editing, PromptStaysOnceAFactoryResetHasStarted)
{
    writeFile("/etc/sys.conf", "hostname=factory\n");
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    terminal.send("factory-reset\r");
    terminal.waitFor("The operation will do factory reset!\r\n");
    terminal.send("n\r");
    configureFromOutside("refused");
    terminal.waitFor("# ");
    terminal.send("\r");
    terminal.waitFor("\nrefused  # ");

    terminal.send("factory-reset -n\r");
    terminal.waitFor("\nrefused  # ");
    EXPECT_EQ(calls(), "reboot \n");
    configureFromOutside("late");
    terminal.send("\r");
    EXPECT_EQ(terminal.waitFor("# "), "\r\nrefused  # ");
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
        {"  con\tcap\tti\tst\t", "  config capwap timers statistics-timer "},
        {"Con\t", "Con"},
        {"con wtp\001\006\006\006\t", "config wtp"},
        {"shel\t", "shel"},
        {"config system f\t", "config system f"},
        {"con$ sho\t", "con$ sho"},
        {"nosuch con\t", "nosuch con"},
        {"debug nosuch debug al\t", "debug nosuch debug al"},
        {"ping con\t", "ping con"},
        {"help \t", "help "},
    };
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    std::string history;
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        ask(terminal, cases[i].typed);
        history += std::to_string(i) + ": " + cases[i].line + "\n";
    }
    EXPECT_EQ(ask(terminal, "list"), history + std::to_string(std::size(cases)) + ": list\n");
}

TEST_F(Editing, OffersWhatCanBeTypedNext)
{
    const struct {
        const char* typed;
        std::vector<std::string> offered; ///< in the order of the tables, which is a row's
    } cases[] = {
        {"c", {"cw_diag", "cw_debug", "calibration", "config", "cfg", "cable"}},
        {"config capwap wtp static-ip-", {"static-ip-addr", "static-ip-netmask", "static-ip-gw", "static-ip-dns"}},
    };
    writeFile("/etc/profile", "alias cable='ifconfig eth0'\n");
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    const auto offered = [&](const std::string& typed) {
        terminal.send(typed + "\t\t");
        terminal.waitFor("\n");
        std::string list = terminal.waitFor("\n" + std::string(kPrompt) + typed);
        list.erase(list.rfind('\n'));
        terminal.send(kControlC);
        terminal.waitFor(kFreshPrompt);
        return wordsOf(list);
    };
    for (const auto& example : cases)
        EXPECT_EQ(offered(example.typed), example.offered) << example.typed;

    std::istringstream help(ask(terminal, "help"));
    std::set<std::string> visible;
    for (std::string line; std::getline(help, line);)
        if (line.starts_with('\t'))
            visible.insert(line.substr(1, line.find(' ') - 1));
    EXPECT_TRUE(visible.contains("cable"));
    const std::vector<std::string> everything = offered("");
    EXPECT_EQ(std::set(everything.begin(), everything.end()), visible);
}

TEST_F(Editing, KeepsHistory)
{
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    for (const char* line : {"nosuch", "show  nosuch", "", "ping $x", "ping a", "config system hostname ap"})
        ask(terminal, line);
    std::filesystem::remove_all(path("/cfg"));
    ask(terminal, "config system hostname ap");
    ask(terminal, "config system hostname ap | grep x");
    EXPECT_EQ(ask(terminal, "list"), "0: nosuch\n1: show  nosuch\n2: ping $x\n3: ping a\n"
                                     "4: config system hostname ap\n5: list\n");
    EXPECT_EQ(ask(terminal, "list "), "Command \"list\" is not supported.\n");
    std::filesystem::remove(path("/tmp/calls"));
    ask(terminal, "\x10\x10\x10\x10 b");
    EXPECT_EQ(calls(), "ping a b\n");
}

TEST_F(Editing, AnInterruptDropsTheLine)
{
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    ask(terminal, "ping first");
    const struct {
        const char* keys;
        const char* shown;
    } depths[] = {
        {"ping dropped", "ping dropped"},
        {"\022first", "t': ping first"},
        {"\x1b", ""},
        {"\03312", "2)"},
    };
    for (const auto& depth : depths) {
        terminal.send(depth.keys);
        terminal.waitFor(depth.shown);
        terminal.send(kControlC);
        terminal.waitFor(kFreshPrompt);
        EXPECT_EQ(ask(terminal, "ping kept"), "") << depth.shown;
    }
    EXPECT_EQ(calls(), "ping first\nping kept\nping kept\nping kept\nping kept\n");
}

TEST_F(Editing, AnInterruptEndsTheToolAndNotTheShell)
{
    plantTool("ping", "echo started; exec sleep 600");
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    for (const char* line : {"ping a", "ping a | grep -v x", "brctl | ping"}) {
        terminal.send(std::string(line) + "\r");
        terminal.waitFor("started\r\n");
        terminal.send(kControlC);
        terminal.waitFor(kPrompt);
    }
    EXPECT_EQ(ask(terminal, "nosuch"), "Command \"nosuch\" is not supported.\n");
}

TEST_F(Editing, AResizedWindowLeavesTheLine)
{
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    terminal.send("nosu");
    terminal.waitFor("nosu");
    terminal.resize(10, 60);
    terminal.send("ch\r");
    terminal.waitFor("Command \"nosuch\" is not supported.");
}

TEST_F(Editing, PastedLinesRunOneByOne)
{
    Terminal terminal(shell({"TERM=xterm"}));
    terminal.waitFor(kPrompt);
    terminal.send("\x1b[200~ping a\rping b\r\x1b[201~list\r");
    terminal.waitFor("0: ping a\r\r\n1: ping b\r\r\n2: list\r\r\n");
    EXPECT_EQ(calls(), "ping a\nping b\n");
}

/// Searches from which readline returns with an undo list that it frees twice, and keys that switch its mode.
TEST_F(Editing, KeysThatCouldBreakItAreDead)
{
    Terminal terminal(shell());
    terminal.waitFor(kPrompt);
    for (const char* keys : {"t\r", "p\r", "i\x10\x1bp\x05\r", "\x1b[A\x0f", "\x03"}) {
        terminal.send(keys);
        terminal.waitFor(kFreshPrompt);
    }
    EXPECT_EQ(ask(terminal, "\x1b\rnosuch\x1bx"), "Command \"nosuch\" is not supported.\n");
}
