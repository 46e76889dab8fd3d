// For each console there is a symbolic link "sim/consoles/<process id>", which points to the terminal.

#include "platform/simulation/consoles.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

namespace
{

constexpr char kFolder[] = "/sim/consoles";

} // namespace

void openConsole()
{
    const char* terminal = ttyname(STDOUT_FILENO);
    if (terminal == nullptr)
        return;
    char path[48];
    std::snprintf(path, sizeof path, "%s/%d", kFolder, static_cast<int>(getpid()));
    const DeviceFile console(path);
    mkdir(DeviceFile("/sim").path(), S_IRWXU);
    mkdir(DeviceFile(kFolder).path(), S_IRWXU);
    unlink(console.path());
    // If the folder of the device cannot be written, there is no console.
    [[maybe_unused]] const int made = symlink(terminal, console.path());
}

void writeToConsoles(const char* line)
{
    DIR* folder = opendir(DeviceFile(kFolder).path());
    if (folder == nullptr)
        return;
    while (const dirent* entry = readdir(folder)) {
        const auto process = static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10));
        if (process <= 0)
            continue;
        if (kill(process, 0) != 0) {
            unlinkat(dirfd(folder), entry->d_name, 0);
            continue;
        }
        // Do not wait for a terminal whose output is stopped.
        const int fd = openat(dirfd(folder), entry->d_name, O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0)
            continue;
        dprintf(fd, "\r%s\r\n", line);
        close(fd);
    }
    closedir(folder);
}
