#include "platform/simulation/daemon/debug_line.h"

#include "platform/debug_library.h"
#include "platform/simulation/debug_state.h"

void debugLine(const char* name, const char* text)
{
    const int app = appname2id("cwWtpd");
    const int submodule = app < 0 ? -1 : submod_name2id(app, name);
    if (submodule >= 0)
        simDebugLog(app, submodule, text);
}
