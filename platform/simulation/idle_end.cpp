// Tells scripts/run that the idle time has ended a session: "sim/idle_ends/<process>" then holds its seconds. The shell
// itself ends as if it was left. It has the alarm set while it reads a line and at no other time.

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "platform/simulation/state.h"

extern "C" unsigned __real_alarm(unsigned seconds);

namespace
{

unsigned idleSeconds = 0; ///< that the alarm was last set to

/// At exit, when the alarm has gone off unless time is left.
void recordIdleEnd()
{
    if (idleSeconds == 0 || __real_alarm(0) != 0)
        return;
    char name[32];
    std::snprintf(name, sizeof name, "idle_ends/%d", static_cast<int>(getpid()));
    simWriteNumber(name, static_cast<int>(idleSeconds));
}

} // namespace

/// Stands before alarm() for the whole program.
extern "C" unsigned __wrap_alarm(unsigned seconds)
{
    static constinit bool isRegistered = false;
    if (!isRegistered)
        isRegistered = std::atexit(recordIdleEnd) == 0;
    idleSeconds = seconds;
    return __real_alarm(seconds);
}
