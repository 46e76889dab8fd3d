// Targets of the configuration: both files, the items, and `cfg`. After each input the shell writes the configuration
// and reads its own file: it prints no message, and every item has the value that it had.

#include "tests/fuzz/fuzz.h"

#include <cstring>
#include <utility>

#include "conf/cfg.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/cw_show.h"
#include "conf/replay.h"
#include "conf/sys_conf.h"
#include "shell/executor.h"

namespace
{

void setDefaults()
{
    static const CwConfig defaults = [] {
        CwConfig config;
        std::memset(&config, 0, sizeof config);
        cwConfDefault(config, kShellInstance);
        return config;
    }();
    cwConfCopy(cwConfig, defaults);
    cwConfCopy(cwConfigBase, defaults);
    cwConfCopy(cwConfigSnapshot, defaults);
    sysConfig = {};
}

/// A device with empty configuration files, and records of defaults.
void beginConfiguration()
{
    writeFile(kCwConfFile, "");
    writeFile(kSysConfFile, "");
    setDefaults();
}

/// The values of all items that the files hold.
std::string valuesOf(const CwConfig& config)
{
    std::string text;
    for (const CwSection& section : cwSections)
        for (const CwItem* item : section.items)
            forEachValue(*item, config,
                         [&](const char* key, const char* value) { text += std::string(key) + "=" + value + "\n"; });
    return text + sysConfig.hostname + "\n" + sysConfig.factorysn + "\n" + std::to_string(sysConfig.baudrate) + "\n" +
           std::to_string(sysConfig.adminTimeout);
}

void writeAndReadAgain()
{
    const std::string values = valuesOf(cwConfig);
    cwConfigSnapshot.fileTime = cwConfigBase.fileTime = 1; // an unchanged record is not written
    require(cwConfWrite() == 0 && sysConfCommit() == 0, "the files can be written");
    const std::pair counts(cwConfig.acAddressCount, cwConfig.acHostnameCount);
    setDefaults();
    const std::string messages =
        outputOf([] { require(cwConfRead(cwConfig) == 0 && sysConfRead(sysConfig) == 0, "the files can be read"); });
    require(messages.empty(), "the shell reads its own files without a message", messages);
    require(counts == std::pair(cwConfig.acAddressCount, cwConfig.acHostnameCount), "a list is read as it was written");
    const std::string again = valuesOf(cwConfig);
    require(again == values, "a record is read as it was written", values + "\n--- read:\n" + again);
}

void readCwConf(std::string_view input)
{
    beginConfiguration();
    writeFile(kCwConfFile, input);
    cwConfLoad(cwConfig);
    executeLine("show cw_conf");
    writeAndReadAgain();
}

void readSysConf(std::string_view input)
{
    beginConfiguration();
    writeFile(kSysConfFile, input);
    sysConfLoad(sysConfig);
    executeLine("show sys_conf");
    confReplay();
    writeAndReadAgain();
}

/// Each line is a byte for the item, a byte for what is done with it, and a value.
void setItems(std::string_view input)
{
    beginConfiguration();
    for (const std::string& line : linesOf(input, 16)) {
        if (line.size() < 2)
            continue;
        const CwItem& item = cwItems[static_cast<unsigned char>(line[0]) % cwItems.size()];
        const char* value = line.c_str() + 2;
        switch (line[1] % 4) {
        case 0:
            cwConfListAdd(item, value, cwConfig);
            break;
        case 1:
            cwConfListDelete(item, value, cwConfig);
            break;
        default:
            cwConfChange(item.key.data(), value);
        }
        cwConfShowItem(item.key.data(), cwConfig);
    }
    writeAndReadAgain();
}

/// Each line is a letter for an option, and the word after it.
void runCfg(std::string_view input)
{
    beginConfiguration();
    for (std::string& line : linesOf(input, 8)) {
        char program[] = "cfg";
        char option[] = {'-', line.empty() ? 'h' : line[0], '\0'};
        char* word = line.data() + (line.empty() ? 0 : 1);
        char* words[] = {program, option, word, nullptr};
        cfgCommand(*word == '\0' ? 2 : 3, words);
    }
    writeAndReadAgain();
}

constexpr FuzzTarget kTargets[] = {
    {"cw_conf", readCwConf, false},
    {"sys_conf", readSysConf, false},
    {"items", setItems, false},
    {"cfg", runCfg, false},
};

} // namespace

const std::span<const FuzzTarget> kConfTargets = kTargets;
