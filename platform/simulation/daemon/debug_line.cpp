#include "platform/simulation/daemon/debug_line.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include "platform/debug_library.h"
#include "platform/simulation/consoles.h"
#include "platform/simulation/debug_log.h"

namespace
{

bool isSwitchedOn(uint64_t mask, int submodule)
{
    return submodule >= 0 && (mask >> submodule & 1) != 0;
}

} // namespace

void debugLine(const char* name, const char* format, ...)
{
    attach_udebug();
    const int app = appname2id("cwWtpd");
    if (!isSwitchedOn(udbg_info[app], submod_name2id(app, name)))
        return;
    char line[256];
    const int length = std::snprintf(line, sizeof line, "%s cwWtpd/%s: ", SimTime().text, name);
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line + length, sizeof line - static_cast<std::size_t>(length), format, arguments);
    va_end(arguments);
    if (udbg_header->output_mode == 0)
        writeToConsoles(line);
    else
        simAddToLog(kSimLog, line);
}

void tunnelDebugLine(const char* name, const char* text)
{
    attach_kdebug();
    const int module = kmodname2id("captun");
    if (!isSwitchedOn(kdbg_info[module], subkmod_name2id(module, name)))
        return;
    char line[256];
    std::snprintf(line, sizeof line, "%s captun/%s: %s", SimTime().text, name, text);
    simAddToLog(kSimKernelLog, line);
}
