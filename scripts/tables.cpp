// Prints what scripts/reference has to know of the program: a line for each row of the command tables and for each
// CAPWAP item, with tabs between its fields. Like the shell it needs a simulated access point.

#include <cstdio>
#include <cstring>
#include <string>

#include "conf/cw_items.h"
#include "platform/debug_library.h"
#include "platform/system_library.h"
#include "shell/node.h"

namespace
{

/// The rows at the beginning of a table that the platform's debug library names.
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
        std::printf("command\t%s\t%s\t%s\n", words.c_str(), node.visibility == kHidden ? "hidden" : "", node.help);
        printCommands(node, words + " ");
    }
}

struct KindName {
    const CwKind* kind;
    const char* name;
};

constexpr KindName kKindNames[] = {
    {&kStored, "stored"},
    {&kChecked, "checked"},
    {&kIgnored, "ignored"},
    {&kVlan, "vlan"},
    {&kDiscoveryType, "discovery type"},
    {&kAddrMode, "mode"},
    {&kAddress, "address"},
    {&kOwnAddress, "address"},
    {&kMulticast, "address"},
    {&kSecurity, "security"},
    {&kText, "text"},
    {&kPassword, "password"},
    {&kVersion, "version"},
    {&kScanTimers, "scan timers"},
    {&kAcAddresses, "addresses"},
    {&kAcHostnames, "hostnames"},
};

const char* nameOf(const CwKind* kind)
{
    for (const KindName& row : kKindNames)
        if (row.kind == kind)
            return row.name;
    return "";
}

/// Bits of a number, or characters of a text.
std::size_t sizeOf(const CwField& field, CwConfig& config)
{
    switch (field.type) {
    case CwField::Type::Byte:
        return 8;
    case CwField::Type::Word:
        return 16;
    case CwField::Type::DoubleWord:
        return 32;
    case CwField::Type::Text:
        return field.text(config).size() - 1;
    default:
        return 0;
    }
}

/// The title of the section of the file that the item stands in, and the item's place there; nothing for an item that
/// is not saved.
std::string placeOf(const CwItem& item)
{
    for (const CwSection& section : cwSections)
        for (std::size_t i = 0; i < section.items.size(); ++i)
            if (section.items[i] == &item)
                return std::to_string(i) + ' ' + std::string(section.fileTitle, std::strcspn(section.fileTitle, "\n"));
    return "";
}

void printItem(const CwItem& item, CwConfig& config)
{
    std::string initial;
    if (item.kind == &kScanTimers)
        initial = std::to_string(config.apScanRptTimer[0]);
    else
        forEachValue(item, config, [&initial](const char*, const char* value) { initial = value; });
    std::printf("item\t%s\t%s\t%d\t%d\t%zu\t%s\t%s\n", item.key.data(), nameOf(item.kind), item.low, item.high,
                sizeOf(item.field, config), initial.c_str(), placeOf(item).c_str());
}

} // namespace

int main()
{
    install_signal_handler("tables", 0);
    prepareTree(cliRoot);
    printCommands(cliRoot, "");
    static CwConfig config;
    cwConfDefault(config, kShellInstance);
    for (const CwItem& item : cwItems)
        printItem(item, config);
}
