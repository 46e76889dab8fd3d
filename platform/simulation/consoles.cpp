// A console is a file "sim/consoles/<process>" that holds a terminal's name. Its process keeps it locked, so one that
// was left behind is known.

#include "platform/simulation/consoles.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kFolder[] = "/sim/consoles";

void writeLine(const char* terminal, const char* line)
{
    // A terminal that takes nothing holds up nobody.
    const int fd = open(terminal, O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return;
    dprintf(fd, "\r%s\r\n", line);
    close(fd);
}

} // namespace

void openConsole()
{
    const char* terminal = ttyname(STDOUT_FILENO);
    char name[32];
    std::snprintf(name, sizeof name, "consoles/%d", static_cast<int>(getpid()));
    if (terminal == nullptr || !simWriteText(name, terminal))
        return;
    char path[48];
    std::snprintf(path, sizeof path, "/sim/%s", name);
    const int fd = open(DeviceFile(path).path(), O_RDONLY | O_CLOEXEC); // for good
    if (fd >= 0)
        flock(fd, LOCK_EX);
}

void writeToConsoles(const char* line)
{
    const DeviceFile place(kFolder);
    DIR* folder = opendir(place.path());
    if (folder == nullptr)
        return;
    while (const dirent* entry = readdir(folder)) {
        const int fd = entry->d_name[0] == '.' ? -1 : openat(dirfd(folder), entry->d_name, O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            continue;
        char terminal[64]{};
        if (flock(fd, LOCK_EX | LOCK_NB) == 0) {
            if (kill(static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10)), 0) != 0)
                unlinkat(dirfd(folder), entry->d_name, 0);
        } else if (read(fd, terminal, sizeof terminal - 1) > 0) {
            terminal[std::strcspn(terminal, "\n")] = '\0';
            writeLine(terminal, line);
        }
        close(fd);
    }
    closedir(folder);
}
