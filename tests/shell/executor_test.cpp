#include "shell/executor.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/root_table.h"
#include "shell/alias.h"
#include "shell/node.h"
#include "shell/output.h"
#include "shell/pipe.h"
#include "shell/tokenizer.h"
#include "shell/tools.h"
#include "tests/support/device.h"

namespace
{

constexpr std::size_t kPipeBufferSize = 4096;

std::string run(const std::string& line)
{
    return outputOf([&] { executeLine(line.c_str()); });
}

/// Root commands of the tests stand in rows that the tests need least.
void bind(const char* name, CliHandler handler)
{
    cli_node* node = findChild(cliRoot, name);
    ASSERT_NE(node, nullptr);
    node->handler = handler;
    node->childCount = 0;
}

/// Every test begins with the static root table and leaves it as it was.
class Executor : public DeviceTest
{
protected:
    Executor() : rows_(std::to_array(rootTable)) {}
    ~Executor() override
    {
        if (cliRoot.children != rootTable)
            std::free(cliRoot.children);
        std::copy(rows_.begin(), rows_.end(), rootTable);
        cliRoot.children = rootTable;
        cliRoot.childCount = kRootCommandCount;
    }

private:
    std::array<cli_node, kRootCommandCount> rows_;
};

} // namespace

TEST_F(Executor, AnswersWhatItDoesNotKnow)
{
    const struct {
        const char* line;
        const char* answer;
    } lines[] = {
        {"nosuch", "Command \"nosuch\" is not supported.\n"},
        {"Help", "Command \"Help\" is not supported.\n"},
        {"get nosuch", "Command is not supported.\n"},
        {"config nosuch wtp", "Command is not supported.\n"},
        {"help | wc", "Command \"wc\" is not supported.\n"},
        {"help |", "Command \"\" is not supported.\n"},
        {"   ", "Command \"\" is not supported.\n"},
        {"ping $x", "Invalid characters $ \nCommand is not supported.\n"},
        {"$x", "Invalid characters $ \nCommand \"\" is not supported.\n"},
    };
    for (const auto& line : lines)
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(executeLine(line.line), 0); }), line.answer) << line.line;
}

TEST_F(Executor, ListsGroupsAndVisibleCommands)
{
    EXPECT_EQ(run("led_test power"), "led_test power :\n"
                                     "\ton                               Test power led (10 sec).\n"
                                     "\toff                              Test power led (10 sec).\n\n");
    const std::string visible = run("help whatever");
    EXPECT_EQ(visible.substr(0, visible.find('\n')), "help whatever :");
    EXPECT_EQ(std::count(visible.begin(), visible.end(), '\n'), kRootCommandCount - 16 + 2);
    EXPECT_EQ(visible.find("shell"), std::string::npos);
    EXPECT_EQ(run("show | grep sys"), "\tsys_conf                         Show system configuration.\n");

    run("show-hiden");
    const std::string all = run("help");
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), kRootCommandCount + 2);
    run("hide-hiden");
    EXPECT_EQ(run("help whatever"), visible);
}

TEST_F(Executor, PassesToolsTheWordsAsTyped)
{
    plantRecorder("ifconfig");
    plantRecorder("ping");
    plantTool("brctl", "echo first; echo second; echo third");
    EXPECT_EQ(run("brctl   show | grep   first"), "first\n");
    EXPECT_EQ(readFile("/tmp/cli_pipe_file"), "first\nsecond\nthird\n");
    run("ifconfig  wlan0   down");
    run("ping  10.0.0.1 ; ping x");
    run("ping a;ping uname -a ;ping b");
    EXPECT_EQ(calls(), "ifconfig wlan0 down\nping 10.0.0.1\nping x\nping a\nping uname -a\nping b\n");
    const std::string longest(kLineLength - 5, 'a');
    run("ping " + longest);
    EXPECT_NE(calls().find("\nping " + longest + "\n"), std::string::npos);
    EXPECT_EQ(run("brctl " + std::string(1010, 'a')), "    Error: Command line too long.\n");
}

/// Whatever stands at the name of the pipe file, lines are answered, and nothing is written through it.
TEST_F(Executor, MakesThePipeFileAnew)
{
    plantTool("brctl", "echo shown");
    const std::string file = path("/tmp/cli_pipe_file");
    const std::string victim = path("/tmp/victim");
    const std::function<void()> plants[] = {
        [] {},
        [&] { ASSERT_EQ(symlink(victim.c_str(), file.c_str()), 0); },
        [&] { ASSERT_EQ(link(victim.c_str(), file.c_str()), 0); },
        [&] { ASSERT_EQ(mkfifo(file.c_str(), 0666), 0); },
        [&] { writeFile("/tmp/cli_pipe_file", "of an earlier line"); },
    };
    writeFile("/tmp/victim", "untouched");
    for (const auto& plant : plants) {
        for (const char* line : {"brctl", "show | grep cw", "calibration | grep shown"}) {
            bind("calibration", [](int, char**) {
                runShellCommand("brctl");
                return 0;
            });
            unlink(file.c_str());
            plant();
            EXPECT_NE(run(line), "") << line;
            struct stat status {
            };
            ASSERT_EQ(lstat(file.c_str(), &status), 0);
            EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | S_IRUSR | S_IWUSR));
            EXPECT_EQ(readFile("/tmp/victim"), "untouched");
        }
    }

    // Held by another session.
    const int held = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    const std::string before = readFile("/tmp/cli_pipe_file");
    EXPECT_EQ(run("show|grep cw"), "\tcw_conf                          Show capwap configuration.\n");
    EXPECT_EQ(run("brctl"), "shown\n");
    EXPECT_EQ(readFile("/tmp/cli_pipe_file"), before);
    close(held);
    EXPECT_EQ(run("brctl | grep x"), "");
    EXPECT_EQ(readFile("/tmp/cli_pipe_file"), "shown\n");

    ASSERT_EQ(rename(path("/tmp").c_str(), path("/gone").c_str()), 0);
    EXPECT_EQ(run("brctl"), "shown\n");
    EXPECT_EQ(run("show | ping"), "    Error: Can not write /tmp/cli_pipe_file.\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("/gone")), {}),
              2); // and no file of a session's own
}

TEST_F(Executor, FeedsBuiltInsThroughThePipe)
{
    bind("calibration", [](int argc, char** argv) {
        for (std::size_t i = 0; i < 2 * kPipeBufferSize / 8 + 3; ++i)
            cli_print("line of ");
        cli_print("\n");
        return echoWords(argc, argv) + 7;
    });
    std::string expected;
    for (std::size_t i = 0; i < 2 * kPipeBufferSize / 8 + 3; ++i)
        expected += "line of ";
    EXPECT_EQ(run("calibration a | grep -v nothing"), expected + "\ncalibration a \n");
    EXPECT_EQ(outputOf([] { EXPECT_EQ(executeLine("calibration | grep nothing"), 7); }), "");

    bind("calibration", [](int, char**) {
        cli_print("before\n");
        runShellCommand("echo tool");
        cli_print("after\n");
        return 0;
    });
    EXPECT_EQ(run("calibration | grep -n e"), "1:before\n3:after\n");
    EXPECT_EQ(run("calibration"), "before\ntool\nafter\n");

    bind("calibration", [](int, char**) { return 0; });
    EXPECT_EQ(run("calibration | grep -c e"), "0\n");
}

TEST_F(Executor, ExpandsAliases)
{
    plantRecorder("ifconfig");
    plantTool("brctl", "echo one; echo two");
    writeFile("/etc/profile", "# profile\n"
                              "alias ll='ls -l'\n"
                              "alias br=\"brctl show'\n"
                              "alias wl='ifconfig wlan0'\n"
                              "alias bad='ifconfig $x'\n"
                              "alias two='wl'\n"
                              " alias indented='brctl'\n"
                              "alias comment='brctl' # no\n"
                              "alias none=brctl\n"
                              "alias x='\n"
                              "alias ='brctl'\n"
                              "alias " +
                                  std::string(70, 'n') + "='" + std::string(150, 't') +
                                  "'\n"
                                  "alias last='brctl'");
    loadAliases();
    loadAliases();
    ASSERT_EQ(cliRoot.childCount, kRootCommandCount + 6);
    const cli_node& cut = cliRoot.children[cliRoot.childCount - 1];
    EXPECT_EQ(cut.name, std::string(63, 'n'));
    EXPECT_EQ(cut.help, "alias cmd:" + std::string(117, 't'));

    EXPECT_EQ(run("ll"), "Command \"ls\" is not supported.\n");
    EXPECT_EQ(run("br dropped"), "one\ntwo\n");
    EXPECT_EQ(run("br dropped | grep two"), "two\n");
    EXPECT_EQ(run("bad"), "Invalid characters $ \nCommand is not supported.\n");
    run("wl dropped");
    EXPECT_EQ(calls(), "ifconfig wlan0\n");
    EXPECT_NE(run("help").find("\tll                               alias cmd:ls -l\n"), std::string::npos);

    run("show-hiden");
    EXPECT_EQ(run("help").find("\tshell "), std::string::npos);
    EXPECT_EQ(rootTable[11].visibility, kRevealed);
}

TEST_F(Executor, KeepsTheRootTableWithoutAProfile)
{
    loadAliases();
    EXPECT_EQ(cliRoot.children, rootTable);
    writeFile("/etc/profile", "");
    loadAliases();
    EXPECT_EQ(cliRoot.children, rootTable);
    writeFile("/etc/profile", "export A=1\n");
    loadAliases();
    EXPECT_NE(cliRoot.children, rootTable);
    EXPECT_EQ(cliRoot.childCount, kRootCommandCount);
}

TEST_F(Executor, StopsLookupAtANodeThatTakesArguments)
{
    static constinit cli_node children[] = {command("add", "", nullptr)};
    static constinit cli_node root = group("", "", children);
    children[0] = command("list", "", echoWords);
    children[0].childCount = 1;
    children[0].children = findChild(cliRoot, "led_test");
    cliRoot = root;
    char list[] = "list", other[] = "other", nested[] = "led_test";
    char* words[] = {list, other};
    EXPECT_EQ(findNode(2, words), &children[0]);
    words[1] = nested;
    EXPECT_EQ(findNode(2, words), findChild(children[0], "led_test"));
    words[0] = other;
    EXPECT_EQ(findNode(1, words), nullptr);
    EXPECT_EQ(findNode(0, words), &cliRoot);
    cliRoot.children = rootTable;
}
