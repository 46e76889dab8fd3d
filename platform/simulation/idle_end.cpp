// Tells scripts/run that a session has ended because its idle time was over: writes the idle time in seconds to
// "sim/idle_ends/<process id>". The exit status of the shell does not tell why it has ended. The shell sets the alarm
// only while it reads a line, so an alarm that has gone off means that the idle time was over.

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "platform/simulation/state.h"

extern "C" unsigned __real_alarm(unsigned seconds);

namespace
{

unsigned idleSeconds = 0; ///< the last value of the alarm

/// Called at exit. If the alarm was set and has no time left, it has gone off.
void recordIdleEnd()
{
    if (idleSeconds == 0 || __real_alarm(0) != 0)
        return;
    char name[32];
    std::snprintf(name, sizeof name, "idle_ends/%d", static_cast<int>(getpid()));
    simWriteNumber(name, static_cast<int>(idleSeconds));
}

} // namespace

/// Replaces alarm() in the whole program.
extern "C" unsigned __wrap_alarm(unsigned seconds)
{
    static constinit bool isRegistered = false;
    if (!isRegistered)
        isRegistered = std::atexit(recordIdleEnd) == 0;
    idleSeconds = seconds;
    return __real_alarm(seconds);
}
