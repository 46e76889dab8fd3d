// The switches and the output mode are in a small file, which the shell and the daemon map into memory. The logs and
// the crash records are text files with a line for each entry. All files are in the folder "sim" of the device.

#include "platform/debug_library.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/debug_log.h"
#include "platform/simulation/debug_tables.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kStateFile[] = "/sim/debug_state";

struct State {
    udbg_header_t header;
    uint64_t apps[kDebugAppCount];
    uint64_t kernelModules[kDebugKernelModuleCount];
};

/// Used until the shared state is mapped, and if it cannot be mapped.
constinit State privateState{};
constinit State* state = &privateState;

/// Position of the reader of crash records.
constinit FILE* crashReader = nullptr;
constinit int nextCrash = 0;

State* mapState()
{
    const int fd = simOpenDebugFile(kStateFile, O_RDWR);
    if (fd < 0)
        return nullptr;
    struct stat status = {};
    const bool ready = fstat(fd, &status) == 0 && S_ISREG(status.st_mode) &&
                       (status.st_size >= static_cast<off_t>(sizeof(State)) || ftruncate(fd, sizeof(State)) == 0);
    void* memory = ready ? mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0) : MAP_FAILED;
    close(fd);
    return memory != MAP_FAILED ? static_cast<State*>(memory) : nullptr;
}

/// Maps the shared state once. Returns 0, or -1 if it cannot be mapped.
int attach()
{
    if (state != &privateState)
        return 0;
    State* shared = mapState();
    if (shared == nullptr)
        return -1;
    state = shared;
    udbg_header = &state->header;
    udbg_info = state->apps;
    kdbg_info = state->kernelModules;
    return 0;
}

template <std::size_t Count>
int idOf(const char* const (&names)[Count], const char* name, int unknown)
{
    for (std::size_t i = 0; i < Count; ++i)
        if (std::strcmp(names[i], name) == 0)
            return static_cast<int>(i);
    return unknown;
}

template <std::size_t Count>
const char* nameAt(const char* const (&names)[Count], int id)
{
    return id >= 0 && static_cast<std::size_t>(id) < Count ? names[id] : nullptr;
}

template <std::size_t Count>
const dbg_module* moduleOf(const dbg_module (&modules)[Count], int id)
{
    return id >= 0 && static_cast<std::size_t>(id) < Count ? &modules[id] : nullptr;
}

int submoduleIdOf(const dbg_module* module, const char* name)
{
    for (int i = 0; module != nullptr && i < module->count; ++i)
        if (std::strcmp(module->submodules[i].name, name) == 0)
            return module->submodules[i].id;
    return -1;
}

bool isOn(uint64_t mask, int submodule)
{
    return (mask >> submodule & 1) != 0;
}

void printSubmodules(const dbg_module* module, const uint64_t* masks, int id)
{
    for (int i = 0; module != nullptr && i < module->count; ++i) {
        const dbg_submodule& submodule = module->submodules[i];
        std::printf("        %-12s %-3s  %s\n", submodule.name, isOn(masks[id], submodule.id) ? "on" : "off",
                    submodule.help);
    }
}

template <std::size_t Count>
void printAll(const char* const (&names)[Count])
{
    for (const char* name : names)
        std::printf("        %s\n", name);
}

int showLog(const char* devicePath)
{
    FILE* file = std::fopen(DeviceFile(devicePath).path(), "re");
    if (file == nullptr)
        return 0;
    char line[256];
    while (std::fgets(line, sizeof line, file) != nullptr)
        std::fputs(line, stdout);
    std::fclose(file);
    return 0;
}

int removeFile(const char* devicePath)
{
    return unlink(DeviceFile(devicePath).path()) == 0 || errno == ENOENT ? 0 : -1;
}

} // namespace

uint64_t* udbg_info = privateState.apps;
uint64_t* kdbg_info = privateState.kernelModules;
udbg_header_t* udbg_header = &privateState.header;

int conf_init()
{
    return 0;
}

int attach_udebug()
{
    return attach();
}

int attach_kdebug()
{
    return attach();
}

int appname2id(const char* name)
{
    return idOf(kSimAppNames, name, -1);
}

const char* appid2name(int id)
{
    return nameAt(kSimAppNames, id);
}

int submod_name2id(int app, const char* name)
{
    return submoduleIdOf(moduleOf(app_debug, app), name);
}

void print_submod_names(int app)
{
    printSubmodules(moduleOf(app_debug, app), udbg_info, app);
}

void print_submod_all_app()
{
    printAll(kSimAppNames);
}

void dbg_all()
{
    std::ranges::fill(state->apps, ~uint64_t{0});
}

void clear_dbg_all()
{
    std::ranges::fill(state->apps, 0);
}

int print_udebug()
{
    return showLog(kSimLog);
}

int clear_udebug_logs()
{
    return removeFile(kSimLog);
}

int kmodname2id(const char* name)
{
    return idOf(kSimKernelModuleNames, name, 0);
}

const char* kmodid2name(int id)
{
    return nameAt(kSimKernelModuleNames, id);
}

int subkmod_name2id(int kmod, const char* name)
{
    return submoduleIdOf(moduleOf(kmod_debug, kmod), name);
}

void print_subkmod_names(int kmod)
{
    printSubmodules(moduleOf(kmod_debug, kmod), kdbg_info, kmod);
}

void print_subkmod_all_kmod()
{
    printAll(kSimKernelModuleNames);
}

void clear_kdbg_all()
{
    std::ranges::fill(state->kernelModules, 0);
}

int print_kdebug()
{
    return showLog(kSimKernelLog);
}

int clear_kdebug_log()
{
    return removeFile(kSimKernelLog);
}

int set_pts_debug_stats(int terminalState, int)
{
    return simWriteNumber("debug_terminal", terminalState) ? 0 : -1;
}

int read_crash(int index, char* buffer, int size)
{
    if (index < nextCrash)
        read_crash_reset();
    if (crashReader == nullptr)
        crashReader = std::fopen(DeviceFile(kSimCrashes).path(), "re");
    if (crashReader == nullptr || size <= 0)
        return -1;
    char line[256];
    while (std::fgets(line, sizeof line, crashReader) != nullptr)
        if (nextCrash++ == index)
            return std::snprintf(buffer, static_cast<std::size_t>(size), "%s", line);
    return -1;
}

void read_crash_reset()
{
    if (crashReader != nullptr)
        std::fclose(crashReader);
    crashReader = nullptr;
    nextCrash = 0;
}

int clear_crash()
{
    read_crash_reset();
    return removeFile(kSimCrashes);
}
