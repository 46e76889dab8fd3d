#include "tests/terminal/shell.h"

#include <cstdlib>
#include <sstream>
#include <sys/wait.h>

ShellTest::ShellTest()
{
    writeFile("/cfg/sys.conf", "hostname=ap\n");
    writeFile("/cfg/cw.conf", "");
    std::istringstream tools("brctl cw_debug cw_diag diag_debug_crashlog flash hostname ifconfig ip iwconfig iwpriv "
                             "kill killall lldpctl passwd ping pkill ps qln-get-status qln-set-hostname reboot restore "
                             "sptest tftp top");
    for (std::string tool; tools >> tool;)
        plantRecorder(tool);
    EXPECT_EQ(std::system(("\"" LINK_TOOLS "\" " + path("")).c_str()), 0);
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
