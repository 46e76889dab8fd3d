#include "shell/terminal.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace
{

constexpr int kStandardCount = 3; ///< input, output, errors

struct FoundTerminal {
    int fd; ///< -1: no terminal was remembered
    pid_t group;
    termios modes;
    winsize window;
    bool waits[kStandardCount];
};

constinit FoundTerminal found{.fd = -1, .group = -1, .modes = {}, .window = {}, .waits = {}};

bool isWaiting(int fd)
{
    const int flags = fcntl(fd, F_GETFL);
    return flags >= 0 && (flags & O_NONBLOCK) == 0;
}

/// Makes the group of this process the foreground process group of the terminal if the processes of the foreground
/// group are gone. Returns false if another group is in the foreground.
bool reclaimForeground()
{
    const pid_t owner = tcgetpgrp(found.fd);
    if (owner == getpgrp() || found.group < 0)
        return true;
    if (owner > 0 && (kill(-owner, 0) == 0 || errno != ESRCH))
        return false;
    sigset_t toStop;
    sigset_t old;
    sigemptyset(&toStop);
    sigaddset(&toStop, SIGTTOU);
    sigprocmask(SIG_BLOCK, &toStop, &old);
    const bool taken = tcsetpgrp(found.fd, getpgrp()) == 0;
    sigprocmask(SIG_SETMASK, &old, nullptr);
    return taken;
}

bool areSame(const termios& one, const termios& other)
{
    return one.c_iflag == other.c_iflag && one.c_oflag == other.c_oflag && one.c_cflag == other.c_cflag &&
           one.c_lflag == other.c_lflag && std::memcmp(one.c_cc, other.c_cc, sizeof one.c_cc) == 0;
}

/// Sets a variable of the environment to a new size. Does nothing if the variable does not exist.
void tellTools(const char* variable, unsigned short size)
{
    if (std::getenv(variable) == nullptr)
        return;
    char text[8];
    std::snprintf(text, sizeof text, "%u", static_cast<unsigned>(size));
    setenv(variable, text, 1);
}

} // namespace

void rememberTerminal()
{
    for (int fd = 0; fd < kStandardCount; ++fd) {
        found.waits[fd] = isWaiting(fd);
        if (found.fd < 0 && tcgetattr(fd, &found.modes) == 0)
            found.fd = fd;
    }
    if (found.fd >= 0)
        found.group = tcgetpgrp(found.fd);
    ioctl(STDIN_FILENO, TIOCGWINSZ, &found.window);
}

void restoreTerminal()
{
    for (int fd = 0; fd < kStandardCount; ++fd)
        if (found.waits[fd] && !isWaiting(fd))
            fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    termios now;
    if (found.fd < 0 || !reclaimForeground() || tcgetattr(found.fd, &now) != 0)
        return;
    termios modes = found.modes;
    cfsetispeed(&modes, cfgetispeed(&now));
    cfsetospeed(&modes, cfgetospeed(&now));
    if (areSame(modes, now))
        return;
    tcsetattr(found.fd, TCSANOW, &modes);
    // While output processing is off, a line feed does not return to the first column. Print one that does.
    if ((modes.c_oflag & OPOST) != (now.c_oflag & OPOST) && write(found.fd, "\n", 1) < 0)
        return;
}

bool updateWindow()
{
    winsize now;
    if (ioctl(STDIN_FILENO, TIOCGWINSZ, &now) != 0 ||
        (now.ws_row == found.window.ws_row && now.ws_col == found.window.ws_col))
        return false;
    found.window = now;
    tellTools("LINES", now.ws_row);
    tellTools("COLUMNS", now.ws_col);
    return true;
}
