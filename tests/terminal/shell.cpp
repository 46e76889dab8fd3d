#include "tests/terminal/shell.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sys/wait.h>

ShellTest::ShellTest()
{
    writeFile("/cfg/sys.conf", "hostname=ap\n");
    writeFile("/cfg/cw.conf", "");
    for (const char* tool : {"brctl",          "cw_debug",
                             "cw_diag",        "diag_debug_crashlog",
                             "flash",          "hostname",
                             "ifconfig",       "ip",
                             "iwconfig",       "iwpriv",
                             "killall",        "lldpctl",
                             "passwd",         "ping",
                             "pkill",          "ps",
                             "qln-get-status", "qln-set-hostname",
                             "reboot",         "restore",
                             "route",          "sptest",
                             "tftp",           "top",
                             "udhcpc"})
        plantRecorder(tool);
}

Program ShellTest::shell(const std::vector<std::string>& variables)
{
    return {CLI_PROGRAM, {"cli"}, variables};
}

Program ShellTest::shellBelow(const std::string& parent)
{
    return {"/bin/sh", {parent, "-c", "\"$0\"; echo \"back $?\"", CLI_PROGRAM}, {}};
}

std::string ShellTest::ask(Terminal& terminal, const std::string& line)
{
    terminal.send(line + "\r");
    std::string shown = terminal.waitFor(kFreshPrompt);
    shown.erase(0, shown.find('\n') + 1);
    shown.erase(shown.size() - std::min(shown.size(), std::string(kPrompt).size()));
    std::erase(shown, '\r');
    return shown;
}

ShellTest::Run ShellTest::runScript(const std::string& lines, const std::string& arguments) const
{
    writeFile("/script", lines);
    const std::string command = "TERM=dumb timeout 60 " CLI_PROGRAM " " + arguments + " < " + path("/script") + " > " +
                                path("/output") + " 2> " + path("/errors");
    const int status = std::system(command.c_str());
    return {readFile("/output"), readFile("/errors"), WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

std::string ShellTest::temporaryFiles() const
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path("/tmp")))
        names.insert(entry.path().filename());
    std::string text;
    for (const std::string& name : names)
        text += name + " ";
    return text;
}
