// The management shell: an interactive session, or with the argument "run" a replay of the saved configuration.

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "base/text.h"
#include "cli/guard.h"
#include "cli/root_table.h"
#include "conf/replay.h"
#include "conf/sys_conf.h"
#include "platform/system_library.h"
#include "shell/alias.h"
#include "shell/environment.h"
#include "shell/node.h"
#include "shell/session.h"

namespace
{

/// The number with which the platform registers processes of this shell.
constexpr int kInstanceClass = 3;

/// The tools `what` and `strings` print this text of the program file. The program itself does not read it.
[[gnu::used, gnu::retain]] constexpr char kIdentification[] = "@(#)cli " CLI_VERSION;

/// Opens "/dev/null" for each standard descriptor that is closed, so that no file that is opened later becomes the
/// standard output.
void openStandardDescriptors()
{
    int fd = STDIN_FILENO;
    while (fd >= 0 && fd <= STDERR_FILENO)
        fd = open("/dev/null", O_RDWR);
    if (fd > STDERR_FILENO)
        close(fd);
}

/// The prompt: the host name, truncated so that the mark fits, and the mark.
const char* nextPrompt()
{
    constexpr char kMark[] = "  # ";
    static char prompt[256];
    if (!factoryResetStarted())
        sysConfRefresh(sysConfig);
    constexpr int kLongestName = sizeof prompt - sizeof kMark;
    std::snprintf(prompt, sizeof prompt, "%.*s%s", kLongestName, sysConfig.hostname, kMark);
    maskControlBytes(prompt);
    return prompt;
}

} // namespace

int main(int argc, char** argv)
{
    openStandardDescriptors();
    secureEnvironment();
    install_signal_handler("cli", 0);
    setRootCommands(rootTable);
    loadAliases();
    prepareTree(cliRoot);
    if (argc >= 2 && std::strcmp(argv[1], "run") == 0)
        return confReplay();
    prepareSession();
    qln_app_init_with_instd(kInstanceClass, getpid());
    runSession({.prompt = nextPrompt, .endIdle = endIdleSession});
}
