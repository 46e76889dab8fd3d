// What keeps a shell on its simulated device: no line that is typed reaches a program or a process of the PC.

#include "platform/simulation/enter_device.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

/// The tools that would act on the PC if they were its own, and those that no device is without.
constexpr const char* kTools[] = {"cat",  "env",     "grep",  "hostname", "ifconfig", "ip",
                                  "kill", "killall", "pkill", "ps",       "reboot",   "top"};

/// The folders that programs are looked for in.
class ProgramPath
{
public:
    /// Adds ROOT/FOLDER.
    void add(const char* root, const char* folder)
    {
        const int length =
            std::snprintf(text_ + length_, sizeof text_ - length_, "%s%s%s", length_ > 0 ? ":" : "", root, folder);
        length_ = std::min(length_ + static_cast<std::size_t>(length), sizeof text_ - 1);
    }

    /// Adds those folders of a list that are below the root.
    void addBelow(const char* root, const char* list)
    {
        char copy[PATH_MAX];
        std::snprintf(copy, sizeof copy, "%s", list);
        char real[PATH_MAX];
        const std::size_t rootLength = std::strlen(root);
        char* rest = copy;
        while (const char* folder = strsep(&rest, ":"))
            if (realpath(folder, real) != nullptr && std::strncmp(real, root, rootLength) == 0 &&
                real[rootLength] == '/')
                add(real, "");
    }

    [[nodiscard]] bool holds(const char* program) const
    {
        char copy[sizeof text_];
        std::memcpy(copy, text_, sizeof copy);
        char file[PATH_MAX];
        char* rest = copy;
        while (const char* folder = strsep(&rest, ":"))
            if (std::snprintf(file, sizeof file, "%s/%s", folder, program) > 0 && access(file, X_OK) == 0)
                return true;
        return false;
    }

    [[nodiscard]] const char* text() const { return text_; }

private:
    std::size_t length_ = 0;
    char text_[2 * PATH_MAX]{};
};

} // namespace

void enterDevice(const char* app)
{
    const char* named = std::getenv("CLI_SIM_ROOT");
    char root[PATH_MAX];
    if (named == nullptr || realpath(named, root) == nullptr || std::strcmp(root, "/") == 0) {
        std::fprintf(stderr, "%s: CLI_SIM_ROOT must name the folder of a simulated access point.\n", app);
        std::exit(EXIT_FAILURE);
    }
    ProgramPath path;
    path.add(root, "/bin");
    if (const char* found = std::getenv("PATH"); found != nullptr)
        path.addBelow(root, found);
    path.add(root, "/usr/bin");
    for (const char* tool : kTools) {
        if (path.holds(tool))
            continue;
        std::fprintf(stderr, "%s: %s has no tool \"%s\", see platform/simulation/lay_out.\n", app, root, tool);
        std::exit(EXIT_FAILURE);
    }
    setenv("CLI_SIM_ROOT", root, 1);
    setenv("PATH", path.text(), 1);
    // An emulator of another processor would have its own name.
    prctl(PR_SET_NAME, app);
}

extern "C" {

int __real_system(const char* command);

/// Stands before system() for the whole program: `kill` is built into the system shell, which does not look for the
/// device's.
int __wrap_system(const char* command)
{
    constexpr char kKill[] = "kill() { env kill \"$@\"; }\n";
    char text[4096];
    if (static_cast<std::size_t>(std::snprintf(text, sizeof text, "%s%s", kKill, command)) >= sizeof text)
        return -1;
    return __real_system(text);
}
}
