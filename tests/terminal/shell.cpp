#include "tests/terminal/shell.h"

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

ShellTest::ShellTest()
{
    writeFile("/cfg/sys.conf", "hostname=ap\n");
    writeFile("/cfg/cw.conf", "");
    for (const auto& tool : std::filesystem::directory_iterator(SIMULATION "/tools"))
        plantRecorder(tool.path().filename());
    EXPECT_EQ(std::system(("\"" SIMULATION "/link_tools\" " + path("")).c_str()), 0);
}

Program ShellTest::shell(const std::vector<std::string>& variables)
{
    return {CLI_PROGRAM, {"cli"}, variables};
}

Program ShellTest::shellBelow(const std::string& parent)
{
    return {"/bin/sh", {parent, "-c", "\"$0\"; echo \"back $?\"", CLI_PROGRAM}, {}};
}

void ShellTest::Session::endLine(const std::string& keys)
{
    send(keys);
    waitFor("\n");
    waitForRow(kPrompt);
}

std::string ShellTest::Session::ask(const std::string& line)
{
    endLine(line + "\r");
    return rowsAbove();
}

std::string ShellTest::Session::rowsAbove() const
{
    std::string rows;
    for (int i = cursor().row - 1; i >= 0 && !row(i).starts_with("ap  #"); --i)
        rows.insert(0, row(i) + "\n");
    return rows;
}
