#include "cli/guard.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file.h"
#include "platform/device_file.h"
#include "platform/system_library.h"
#include "shell/output.h"
#include "shell/signals.h"
#include "shell/terminal.h"
#include "shell/tools.h"

namespace
{

constinit bool resetStarted = false;

int oemCommand(int argc, char** argv)
{
    if (argc != 2)
        return 0;
    if (std::strcmp(argv[1], "start") == 0)
        runCommandf("%s\n", DeviceFile("/etc/rc.d/oem_init").path());
    else if (std::strcmp(argv[1], "reboot") == 0)
        runCommand("reboot\n");
    return 0;
}

/// The command line of the parent process. The system shell copies it to a temporary file. If this file cannot be
/// written, the command line is read directly, so that the checks also work if "/tmp" is full.
class Parent
{
public:
    Parent() : process_(getppid())
    {
        std::snprintf(commandLine_, sizeof commandLine_, "/proc/%d/cmdline", static_cast<int>(process_));
        std::snprintf(devicePath_, sizeof devicePath_, "/tmp/cli_%d.tmp", static_cast<int>(process_));
    }

    /// Whether the command line contains `text`.
    [[nodiscard]] bool mentions(const char* text) const
    {
        char filter[32];
        std::snprintf(filter, sizeof filter, " | grep -a %s", text);
        return fillFile(filter) || Head(commandLine_).contains(text);
    }

    /// Whether the name of the program contains `text`.
    [[nodiscard]] bool isProgram(const char* text) const
    {
        const Head head(fillFile("") ? DeviceFile(devicePath_).path() : commandLine_);
        return head.programContains(text);
    }

    void removeFile() const
    {
        if (fileSize() >= 0)
            runCommandf("rm %s", DeviceFile(devicePath_).path());
    }

    void kill() const { runCommandf("kill -9 %d", static_cast<int>(process_)); }

private:
    /// The first bytes of a file that contains words, each terminated by a zero.
    class Head
    {
    public:
        explicit Head(const char* path)
        {
            const int fd = open(path, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
            if (fd < 0)
                return;
            length_ = static_cast<std::size_t>(std::max<ssize_t>(0, readAll(fd, bytes_, sizeof bytes_ - 1)));
            close(fd);
        }
        [[nodiscard]] bool contains(const char* text) const
        {
            return memmem(bytes_, length_, text, std::strlen(text)) != nullptr;
        }
        [[nodiscard]] bool programContains(const char* text) const
        {
            return std::strstr(bytes_, text) !=
                   nullptr; // the text in `bytes_` ends at the first zero, so this searches the first word only
        }

    private:
        std::size_t length_ = 0;
        char bytes_[4096]{};
    };

    /// Runs the filter on the command line of the parent, and writes its output to the file. Returns false if there is
    /// no output.
    [[nodiscard]] bool fillFile(const char* filter) const
    {
        if (!makePrivateFile(devicePath_))
            return false;
        const DeviceFile file(devicePath_);
        runCommandf("cat %s%s > %s", commandLine_, filter, file.path());
        return fileSize() > 0;
    }

    /// The size of the temporary file; -1 if it does not exist or is not a regular file of this user.
    [[nodiscard]] off_t fileSize() const
    {
        struct stat status;
        const bool isOurs = lstat(DeviceFile(devicePath_).path(), &status) == 0 && S_ISREG(status.st_mode) &&
                            status.st_uid == geteuid();
        return isOurs ? status.st_size : -1;
    }

    pid_t process_;
    char commandLine_[32];
    char devicePath_[32];
};

} // namespace

constinit cli_node oemTable[2] = {
    command("start", "Start OEM factory mode.", oemCommand),
    command("reboot", "Reboot system.", oemCommand),
};

int quitCommand(int, char**)
{
    cli_print("Exit.\n");
    std::exit(EXIT_SUCCESS);
}

int rebootCommand(int, char**)
{
    runCommand("reboot");
    std::exit(EXIT_SUCCESS);
}

int shellCommand(int, char**)
{
    const Parent parent;
    if (parent.mentions("/bin/sh")) {
        parent.removeFile();
        std::exit(EXIT_SUCCESS);
    }
    runCommand("/bin/sh");
    return 0;
}

int factoryResetCommand(int argc, char** argv)
{
    const bool unattended = argc == 2 && std::strcmp(argv[1], "-n") == 0;
    std::fflush(stdout);
    const bool confirmed = unattended || act_confirm("The operation will do factory reset!\n") != 0;
    restoreTerminal();
    if (!confirmed || isInterrupted())
        return 0;
    resetStarted = true;
    return sys_factory_reset(unattended ? 1 : 0);
}

bool factoryResetStarted()
{
    return resetStarted;
}

void endIdleSession()
{
    const Parent parent;
    if (parent.mentions("telnetd")) {
        cli_print("Timeout\nexit\n");
    } else if (parent.isProgram("/bin/sh")) {
        parent.removeFile();
        parent.kill();
    }
    parent.removeFile();
    std::exit(EXIT_SUCCESS);
}
