#include "platform/simulation/daemon/debug_line.h"

#include <cstdarg>
#include <cstdio>

#include "platform/debug_library.h"
#include "platform/simulation/debug_state.h"

void debugLine(const char* name, const char* format, ...)
{
    char text[160];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    const int app = appname2id("cwWtpd");
    simDebugLog(app, submod_name2id(app, name), text);
}

void tunnelDebugLine(const char* name, const char* text)
{
    const int module = kmodname2id("captun");
    simKernelDebugLog(module, subkmod_name2id(module, name), text);
}
