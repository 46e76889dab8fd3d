// Prints the tables of the program for scripts/check_documents: a line for each command and for each CAPWAP item, with
// tabs between its fields. Like the shell it needs a simulated access point.

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

#include "cli/root_table.h"
#include "conf/cw_items.h"
#include "platform/debug_library.h"
#include "platform/system_library.h"
#include "shell/node.h"

namespace
{

/// Returns how many rows at the beginning of a command table get their names from the platform's debug library. These
/// rows are not printed.
std::int32_t libraryRows(const std::string& path)
{
    if (path == "debug ")
        return kDebugAppCount;
    return path == "kdebug " ? kDebugKernelModuleCount : 0;
}

void printCommands(const cli_node& parent, const std::string& path)
{
    for (std::int32_t i = libraryRows(path); i < parent.childCount; ++i) {
        const cli_node& node = parent.children[i];
        const std::string words = path + node.name;
        std::printf("command\t%s\t%s%s\n", words.c_str(), node.help, node.visibility == kHidden ? " *(hidden)*" : "");
        printCommands(node, words + " ");
    }
}

/// Describes the legal values of an item: the range of a checked number, or the size of another number or of a text.
/// Returns an empty text for a choice or an address.
std::string valuesOf(const CwItem& item, CwConfig& config)
{
    if (item.kind == &kChecked.kind || item.kind == &kVlan.kind)
        return std::to_string(item.low) + " to " + std::to_string(item.high);
    if (item.kind == &kText.kind)
        return "up to " + std::to_string(item.field.text(config).size() - 1) + " characters";
    if (item.kind != &kStored.kind)
        return "";
    return "a number of " + std::to_string(8 * static_cast<int>(item.field.number.type)) + " bits";
}

void printItem(const char* section, const CwItem& item, CwConfig& config)
{
    std::string initial;
    if (item.kind == &kScanTimers)
        initial = std::to_string(config.apScanRptTimer[0]);
    else
        forEachValue(item, config, [&initial](const char*, const char* value) { initial = value; });
    std::printf("key\t%.*s\t%s\t%s\t%s\n", static_cast<int>(std::strcspn(section, "\n")), section, item.key.data(),
                initial.c_str(), valuesOf(item, config).c_str());
}

/// Prints the items in the order of the configuration file, and then the items that are not saved in it.
void printItems(CwConfig& config)
{
    std::set<const CwItem*> saved;
    for (const CwSection& section : cwSections) {
        for (const CwItem* item : section.items) {
            printItem(section.fileTitle, *item, config);
            saved.insert(item);
        }
    }
    for (const CwItem& item : cwItems)
        if (!saved.contains(&item))
            printItem("", item, config);
}

} // namespace

int main()
{
    install_signal_handler("tables", 0);
    setRootCommands(rootTable);
    prepareTree(cliRoot);
    printCommands(cliRoot, "");
    static CwConfig config;
    cwConfDefault(config, kShellInstance);
    printItems(config);
}
