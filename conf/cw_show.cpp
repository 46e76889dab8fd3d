#include "conf/cw_show.h"

#include "shell/output.h"

namespace
{

/// The items of kIgnored belong to servers that the product no longer has. They have lines in the file, but no row in
/// the display.
bool isShown(const CwItem& item)
{
    return item.kind != &kIgnored.kind;
}

void showValue(const char* key, const char* value)
{
    cli_printf("\t%s=%s\n", key, value);
}

void showListCommands(const CwItem& item)
{
    cli_printf("config capwap wtp %s :\n", item.key.data());
    const CwList& list = *item.kind->list;
    cli_printf("        %-32s %s\n        %-32s %s\n\n", "add", list.addHelp, "del", list.deleteHelp);
}

void showRow(const CwItem& item, const CwConfig& config)
{
    if (isCwList(item))
        showListCommands(item);
    else
        forEachValue(item, config, [&item](const char* key, const char* value) {
            cli_printf("    %-*s: %s\n", item.keyWidth, key, value);
        });
}

} // namespace

void cwConfShowAll()
{
    cli_print(kCwFrameLine);
    for (const CwSection& section : cwSections) {
        cli_print(section.showTitle);
        for (const CwItem* item : section.items)
            if (isShown(*item))
                forEachValue(*item, cwConfig, showValue);
    }
    cli_print(kCwFrameLine);
    if (cwConfig.saved == 0)
        cli_print("Configuration has been changed, please save or drop it.\n");
}

void cwConfShowItem(const char* key, const CwConfig& config)
{
    for (const CwItem& item : cwItems)
        if (item.keyWidth != 0 && (key == nullptr || item.key == key))
            showRow(item, config);
    if (key == nullptr && config.saved == 0)
        cli_print("\n####  Configuration has been changed, please save or drop it.\n");
}

void cwConfShowList(const CwItem& item, const CwConfig& config)
{
    cli_printf("    %-29s: %d\n", item.kind->list->countName, item.kind->list->count(config));
    forEachValue(item, config, [](const char* key, const char* value) { cli_printf("    %-29s: %s\n", key, value); });
}
