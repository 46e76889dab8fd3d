// Confines a program to its simulated device, so that no command that the user types runs a program of the PC or sends
// a signal to one of its processes.

#include "platform/simulation/enter_device.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

namespace
{

/// The characters that the path of the root may have. The path is part of PATH and, without quotes, of command lines.
constexpr char kRootCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-";

/// Sets a variable. Removes it first, because an environment may hold a variable twice, and programs differ in which
/// one they take. Ends the process if there is no memory.
void setVariable(const char* app, const char* variable, const char* value)
{
    if (unsetenv(variable) == 0 && setenv(variable, value, 1) == 0)
        return;
    std::fprintf(stderr, "%s: cannot set %s, which keeps this program on its simulated access point: %s.\n", app,
                 variable, std::strerror(errno));
    std::exit(EXIT_FAILURE);
}

bool isFolder(const char* devicePath)
{
    struct stat status;
    return stat(DeviceFile(devicePath).path(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

void enterDevice(const char* app)
{
    const char* named = std::getenv("CLI_SIM_ROOT");
    char root[PATH_MAX];
    if (named == nullptr || realpath(named, root) == nullptr || root[std::strspn(root, kRootCharacters)] != '\0' ||
        std::strcmp(root, "/") == 0) {
        std::fprintf(
            stderr,
            "%s: CLI_SIM_ROOT must name the folder of a simulated access point, of A-Z a-z 0-9 / . _ - alone.\n", app);
        std::exit(EXIT_FAILURE);
    }
    char path[sizeof root + sizeof root + sizeof "/bin:/usr/bin"];
    std::snprintf(path, sizeof path, "%s/bin:%s/usr/bin", root, root);
    setVariable(app, "PATH", path);
    setVariable(app, "CLI_SIM_ROOT", root);

    if (!isFolder("/bin") || !isFolder("/usr/bin")) {
        std::fprintf(stderr, "%s: %s has no tools, see platform/simulation/lay_out.\n", app, root);
        std::exit(EXIT_FAILURE);
    }
    // Under an emulator, the process would otherwise have the name of the emulator.
    prctl(PR_SET_NAME, app);
}
