#include "shell/executor.h"

#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/root_table.h"
#include "shell/alias.h"
#include "shell/node.h"
#include "tests/support/device.h"

namespace
{

using Executor = DeviceTest;

std::string run(const std::string& line)
{
    return outputOf([&] { executeLine(line.c_str()); });
}

} // namespace

/// Whatever stands at the name of the pipe file, lines are answered, and nothing is written through it.
TEST_F(Executor, MakesThePipeFileAnew)
{
    plantTool("brctl", "echo shown");
    plantTool("cw_diag", "echo shown");
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
        // A tool, a built-in, and a built-in that runs a tool.
        for (const auto& [line, shown] : {std::pair{"brctl | grep -c .", "1\n"},
                                          {"save | grep cw", "\tcw_conf                          Save capwap "
                                                             "configuration.\n"},
                                          {"get qsky info | grep -n shown", "1:shown\n"}}) {
            unlink(file.c_str());
            plant();
            EXPECT_EQ(run(line), shown) << line;
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
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("/tmp")), {}), 2); // none of a session's own
}

TEST_F(Executor, PipesMoreThanItsBufferHolds)
{
    const std::string all = run("bios dumpflash");
    EXPECT_GT(all.size(), 100'000U);
    EXPECT_EQ(run("bios dumpflash | grep -v nothing"), all);
}

TEST_F(Executor, AliasesMakeATableOfTheirOwn)
{
    writeFile("/etc/profile", "");
    loadAliases();
    EXPECT_EQ(cliRoot.children, rootTable);
    writeFile("/etc/profile", "export A=1\nalias lan='ifconfig'\n");
    for (int times = 0; times < 2; ++times)
        loadAliases();
    EXPECT_EQ(cliRoot.childCount, kRootCommandCount + 1);
    cliRoot.children = rootTable;
    cliRoot.childCount = kRootCommandCount;
}
