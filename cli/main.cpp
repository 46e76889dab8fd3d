// The management shell: an interactive session, or with the argument "run" a replay of the saved configuration.

#include <cstring>

#include "cli/alias.h"
#include "cli/node.h"
#include "cli/session.h"
#include "conf/replay.h"
#include "platform/system_library.h"

int main(int argc, char** argv)
{
    install_signal_handler("cli", 0);
    loadAliases();
    prepareTree(cliRoot);
    if (argc >= 2 && std::strcmp(argv[1], "run") == 0)
        return confReplay();
    runSession();
}
