#include "cli/guard.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/external.h"
#include "cli/output.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

constexpr std::size_t kCommandLineHead = 128;

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

/// What a look at the parent's command line leaves in a temporary file of this process.
class ParentFile
{
public:
    ParentFile() : parent_(getppid()), file_(nameFor(parent_)) {}

    /// Filters the parent's command line into the file. Whether something was left there.
    [[nodiscard]] bool filledBy(const char* filter) const
    {
        unlink(file_.path());
        const int fd = open(file_.path(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (fd < 0)
            return false;
        close(fd);
        runCommandf("cat /proc/%d/cmdline%s > %s", static_cast<int>(parent_), filter, file_.path());
        struct stat status {
        };
        return isOurs(status) && status.st_size > 0;
    }

    /// Whether the file begins with a program name that contains `text`.
    [[nodiscard]] bool names(const char* text) const
    {
        char head[kCommandLineHead + 1]{};
        FILE* file = std::fopen(file_.path(), "re");
        if (file == nullptr)
            return false;
        const std::size_t length = std::fread(head, 1, kCommandLineHead, file);
        std::fclose(file);
        return length > 0 && std::strstr(head, text) != nullptr;
    }

    void remove() const
    {
        struct stat status {
        };
        if (isOurs(status))
            runCommandf("rm %s", file_.path());
    }

    void killParent() const { runCommandf("kill -9 %d", static_cast<int>(parent_)); }

private:
    static DeviceFile nameFor(pid_t parent)
    {
        char name[32];
        std::snprintf(name, sizeof name, "/tmp/cli_%d.tmp", static_cast<int>(parent));
        return DeviceFile(name);
    }

    bool isOurs(struct stat& status) const
    {
        return lstat(file_.path(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid();
    }

    pid_t parent_;
    DeviceFile file_;
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
    const ParentFile parent;
    if (parent.filledBy(" | grep -a /bin/sh")) {
        parent.remove();
        std::exit(EXIT_SUCCESS);
    }
    runCommand("/bin/sh");
    return 0;
}

int factoryResetCommand(int argc, char** argv)
{
    const bool unattended = argc == 2 && std::strcmp(argv[1], "-n") == 0;
    std::fflush(stdout);
    if (!unattended && act_confirm("The operation will do factory reset!\n") == 0)
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
    const ParentFile parent;
    if (parent.filledBy(" | grep -a telnetd")) {
        cli_print("Timeout\nexit\n");
    } else if (parent.filledBy("") && parent.names("/bin/sh")) {
        parent.remove();
        parent.killParent();
    }
    parent.remove();
    std::exit(EXIT_SUCCESS);
}
