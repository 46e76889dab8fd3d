// The management shell: an interactive session, or with the argument "run" a replay of the saved configuration.

#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "cli/alias.h"
#include "cli/node.h"
#include "cli/session.h"
#include "conf/replay.h"
#include "platform/system_library.h"

namespace
{

/// A file that is opened later must not become the standard output.
void openStandardDescriptors()
{
    int fd = STDIN_FILENO;
    while (fd >= 0 && fd <= STDERR_FILENO)
        fd = open("/dev/null", O_RDWR);
    if (fd > STDERR_FILENO)
        close(fd);
}

} // namespace

int main(int argc, char** argv)
{
    openStandardDescriptors();
    install_signal_handler("cli", 0);
    loadAliases();
    prepareTree(cliRoot);
    if (argc >= 2 && std::strcmp(argv[1], "run") == 0)
        return confReplay();
    runSession();
}
