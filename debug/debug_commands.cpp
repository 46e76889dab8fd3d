#include "debug/debug_commands.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>

#include "base/text.h"
#include "debug/debug_mask.h"
#include "platform/debug_library.h"
#include "shell/output.h"
#include "shell/pipe_file.h"

namespace
{

/// The largest number of submodules that one module lists.
constexpr std::int32_t kMaxSubmodules = 256;

constexpr int kMaxCrashRecords = 2000;
constexpr int kCrashTextSize = 101;

/// A row of the list that the command without words prints.
struct ListedRow {
    const char* indentation;
    const char* name;
};

/// The differences between `debug` and `kdebug`.
struct Facility {
    const char* noun;
    int firstKnownId; ///< a smaller id means that the name is unknown
    int (*idOf)(const char* name);
    void (*printNames)();
    int (*submoduleIdOf)(int id, const char* name); ///< negative: unknown
    void (*printSubmoduleNames)(int id);
    std::uint64_t** masks; ///< the masks of the library; `*masks` is null until the library is attached
    std::size_t maskCount;
    CliHandler handler;
    std::span<const cli_node> verbs;       ///< the table's rows after those of the modules
    std::span<const ListedRow> listedRows; ///< printed after the names that the library prints
};

/// A handler that calls an operation of the library and ignores its result. Flushes the standard output, because it is
/// buffered if it is a file.
template <auto Operation>
int call(int, char**)
{
    const PipedOutput output;
    Operation();
    std::fflush(stdout);
    return 0;
}

int debugCommand(int argc, char** argv);
int kdebugCommand(int argc, char** argv);

void setOutputMode(std::uint16_t mode)
{
    if (udbg_header != nullptr)
        udbg_header->output_mode = mode;
}

int toConsoleCommand(int, char**)
{
    setOutputMode(0);
    set_pts_debug_stats(1, 0);
    return 0;
}

int toBufferCommand(int, char**)
{
    setOutputMode(1);
    return 0;
}

int showLogCommand(int, char**)
{
    const PipedOutput output;
    return print_udebug();
}

int clearLogCommand(int, char**)
{
    const PipedOutput output;
    return clear_udebug_logs();
}

/// The rows of the `debug` table that follow the rows of the modules.
constexpr cli_node kDebugRows[] = {
    command("clear", "Clear all debug info", call<clear_dbg_all>),
    command("all", "Set all debug info", call<dbg_all>),
    command("to-console", "debug to console ", toConsoleCommand),
    command("to-buffer", "debug to buffer", toBufferCommand),
    command("show", "Show debug messages", showLogCommand),
    command("log-clear", "Clear all debug messages", clearLogCommand),
};

constexpr cli_node kKernelDebugRows[] = {
    command("clear", "Clear all debug info", call<clear_kdbg_all>),
    command("all", "Set all debug info", kdebugCommand), // this handler treats "all" as the name of a module
    command("show", "Set all debug info", call<print_kdebug>),
    command("log-clear", "clear all logs", call<clear_kdebug_log>),
};

/// A table with a row for each module and then `rows`. addModules() gives the modules their names.
template <std::size_t ModuleCount, std::size_t RowCount>
consteval std::array<cli_node, ModuleCount + RowCount> facilityTable(CliHandler handler,
                                                                     const cli_node (&rows)[RowCount])
{
    std::array<cli_node, ModuleCount + RowCount> table{};
    std::fill_n(table.begin(), ModuleCount, command("", "", handler));
    std::copy_n(rows, RowCount, table.begin() + ModuleCount);
    return table;
}

constinit auto debugTable = facilityTable<kDebugAppCount>(debugCommand, kDebugRows);
constinit auto kdebugTable = facilityTable<kDebugKernelModuleCount>(kdebugCommand, kKernelDebugRows);

/// Makes a row of the list. A name that no row of `rows` has is a compile-time error.
consteval ListedRow listed(const char* indentation, const char* name, std::span<const cli_node> rows)
{
    std::size_t i = 0;
    while (std::string_view(rows[i].name) != name)
        ++i;
    return {indentation, name};
}

constexpr char kTab[] = "\t";
constexpr char kBlanks[] = "        ";

constexpr ListedRow kListedDebugRows[] = {
    listed(kTab, "all", kDebugRows),           listed(kBlanks, "clear", kDebugRows),
    listed(kBlanks, "to-console", kDebugRows), listed(kBlanks, "to-buffer", kDebugRows),
    listed(kBlanks, "show", kDebugRows),       listed(kTab, "log-clear", kDebugRows),
};

constexpr ListedRow kListedKernelDebugRows[] = {
    listed(kTab, "show", kKernelDebugRows),
    listed(kBlanks, "all", kKernelDebugRows),
    listed(kBlanks, "clear", kKernelDebugRows),
    listed(kBlanks, "log-clear", kKernelDebugRows),
};

constexpr Facility kDebug = {
    .noun = "app",
    .firstKnownId = 0,
    .idOf = appname2id,
    .printNames = print_submod_all_app,
    .submoduleIdOf = submod_name2id,
    .printSubmoduleNames = print_submod_names,
    .masks = &udbg_info,
    .maskCount = kDebugAppCount,
    .handler = debugCommand,
    .verbs = std::span(debugTable).subspan<kDebugAppCount>(),
    .listedRows = kListedDebugRows,
};

/// The library returns 0 for an unknown name. 0 is also the id of the first module, so the first module cannot be
/// selected.
constexpr Facility kKernelDebug = {
    .noun = "kmodule",
    .firstKnownId = 1,
    .idOf = kmodname2id,
    .printNames = print_subkmod_all_kmod,
    .submoduleIdOf = subkmod_name2id,
    .printSubmoduleNames = print_subkmod_names,
    .masks = &kdbg_info,
    .maskCount = kDebugKernelModuleCount,
    .handler = kdebugCommand,
    .verbs = std::span(kdebugTable).subspan<kDebugKernelModuleCount>(),
    .listedRows = kListedKernelDebugRows,
};

bool same(const char* word, const char* other)
{
    return std::strcmp(word, other) == 0;
}

std::span<std::uint64_t> masksOf(const Facility& facility)
{
    std::uint64_t* masks = *facility.masks;
    return {masks, masks != nullptr ? facility.maskCount : 0};
}

void printNames(const Facility& facility)
{
    const PipedOutput output;
    facility.printNames();
}

void printSubmoduleNames(const Facility& facility, int id)
{
    const PipedOutput output;
    facility.printSubmoduleNames(id);
}

void listNames(const Facility& facility)
{
    printNames(facility);
    for (const ListedRow& row : facility.listedRows) {
        cli_print(row.indentation);
        cli_printf("%s\n", row.name);
    }
}

/// <facility> <module> <submodule> [on|off]
void switchSubmodule(const Facility& facility, int id, int argc, char** argv)
{
    const int submodule = facility.submoduleIdOf(id, argv[2]);
    if (submodule < 0) {
        cli_printf("Can't find submod %s for app %s\n", argv[2], argv[1]);
        printSubmoduleNames(facility, id);
    } else if (argc == 3) {
        cli_print("on/off\n");
    } else if (same(argv[3], "on") || same(argv[3], "off")) {
        turnDebugSwitches(masksOf(facility), id, debugSwitch(submodule), same(argv[3], "on"));
    }
}

/// <facility> <module> [clear|all|<submodule> ...]
void switchModule(const Facility& facility, int argc, char** argv)
{
    const int id = facility.idOf(argv[1]);
    if (id < facility.firstKnownId) {
        cli_printf("Can't find %s %s\n", facility.noun, argv[1]);
        printNames(facility);
    } else if (argc == 2) {
        printSubmoduleNames(facility, id);
    } else if (same(argv[2], "clear") || same(argv[2], "all")) {
        turnDebugSwitches(masksOf(facility), id, kAllDebugSwitches, same(argv[2], "all"));
    } else {
        switchSubmodule(facility, id, argc, argv);
    }
}

/// Finds the verb `word`, which has priority over a module of the same name. Returns null if there is none. The verbs
/// `to-console` and `to-buffer`, and verbs that have the facility's own handler, are not found.
const cli_node* findVerb(const Facility& facility, const char* word)
{
    for (const cli_node& row : facility.verbs) {
        const bool choosesOutput = row.handler == toConsoleCommand || row.handler == toBufferCommand;
        if (same(row.name, word) && row.handler != facility.handler && !choosesOutput)
            return &row;
    }
    return nullptr;
}

int runFacility(const Facility& facility, int argc, char** argv)
{
    if (argc < 2)
        listNames(facility);
    else if (const cli_node* verb = findVerb(facility, argv[1]); verb != nullptr)
        return verb->handler(argc, argv);
    else
        switchModule(facility, argc, argv);
    return 0;
}

int debugCommand(int argc, char** argv)
{
    return runFacility(kDebug, argc, argv);
}

int kdebugCommand(int argc, char** argv)
{
    const int result = runFacility(kKernelDebug, argc, argv);
    std::fflush(stdout); // as in call()
    return result;
}

int showCrashCommand(int, char**)
{
    read_crash_reset();
    for (int i = 0; i < kMaxCrashRecords; ++i) {
        char text[kCrashTextSize + 1] = {};
        if (read_crash(i, text, kCrashTextSize) < 0)
            break;
        cli_printf("%d: ", i + 1);
        cli_printLines(text);
    }
    read_crash_reset();
    return 0;
}

consteval std::array<cli_node, 2> switchTable(CliHandler handler)
{
    return {command("on", "turn on this debug", handler), command("off", "turn off this debug", handler)};
}

constinit auto debugSwitchTable = switchTable(debugCommand);
constinit auto kdebugSwitchTable = switchTable(kdebugCommand);

/// The children of a module that follow its submodules.
constexpr cli_node kModuleVerbs[] = {
    command("clear", "Clear all debug info", nullptr),
    command("all", "Set all debug info", nullptr),
};

constinit cli_node crashTable[] = {
    command("clear", "clear crash info", call<clear_crash>),
    command("show", "show crash info", showCrashCommand),
};

/// Gives `row` a child for each submodule, and then the children kModuleVerbs. The children of each submodule are
/// `switches`. Returns 0, or -1 if there is no memory.
int addSubmodules(cli_node& row, const dbg_module& module, std::span<cli_node> switches)
{
    if (module.count <= 0 || module.submodules == nullptr)
        return 0;
    const auto count = static_cast<std::size_t>(std::min(module.count, kMaxSubmodules));
    auto* children = static_cast<cli_node*>(std::calloc(count + std::size(kModuleVerbs), sizeof(cli_node)));
    if (children == nullptr)
        return -1;

    cli_node* child = children;
    for (const dbg_submodule& submodule : std::span(module.submodules, count)) {
        copyField(child->name, submodule.name);
        copyField(child->help, submodule.help);
        child->childCount = static_cast<std::int32_t>(switches.size());
        child->children = switches.data();
        ++child;
    }
    for (const cli_node& verb : kModuleVerbs) {
        *child = verb;
        child->handler = row.handler;
        ++child;
    }
    row.children = children;
    row.childCount = static_cast<std::int32_t>(count + std::size(kModuleVerbs));
    return 0;
}

/// Puts the library's modules into the first rows of a table. Returns 0. If there is no memory, returns -1 and leaves
/// the remaining modules without children.
int addModules(std::span<cli_node> table, std::span<const dbg_module> modules, const char* (*nameOf)(int),
               std::span<cli_node> switches)
{
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const char* name = nameOf(static_cast<int>(i));
        if (name == nullptr)
            continue;
        copyText(table[i].name, name);
        copyText(table[i].help, name);
    }
    for (std::size_t i = 0; i < modules.size(); ++i)
        if (addSubmodules(table[i], modules[i], switches) != 0)
            return -1;
    return 0;
}

/// Replaces the handler and the children of a node.
void becomeFacility(cli_node& node, std::span<cli_node> table, CliHandler handler)
{
    node.handler = handler;
    node.children = table.data();
    node.childCount = static_cast<std::int32_t>(table.size());
}

} // namespace

constinit cli_node diagnoseTable[1] = {
    group("crash", "crash info", crashTable),
};

int debugPrepare(cli_node* node, cli_node*)
{
    conf_init();
    attach_udebug();
    becomeFacility(*node, debugTable, debugCommand);
    return addModules(debugTable, app_debug, appid2name, debugSwitchTable);
}

int kdebugPrepare(cli_node* node, cli_node*)
{
    becomeFacility(*node, kdebugTable, kdebugCommand);
    if (addModules(kdebugTable, kmod_debug, kmodid2name, kdebugSwitchTable) != 0)
        return -1;
    attach_kdebug();
    return 0;
}
