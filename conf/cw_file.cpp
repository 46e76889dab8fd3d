#include "conf/cw_file.h"

#include <cstring>

#include "cli/external.h"
#include "cli/output.h"
#include "conf/conf_file.h"
#include "conf/cw_items.h"
#include "conf/cw_lists.h"
#include "conf/text.h"
#include "platform/system_library.h"

namespace
{

constexpr char kModelPrefix[] = "QK91MV";
constexpr char kMajor[] = "5";
constexpr char kMinor[] = "04";
constexpr char kBuild[] = "0241";

void composeFile(const CwConfig& config, ConfText& text)
{
    char version[256] = "";
    get_full_version_string(version, sizeof version, kModelPrefix, numberFrom(kMajor), numberFrom(kMinor), kBuild);
    text.append("# %s\n%s", version, kCwFrameLine);
    for (const CwSection& section : cwSections) {
        text.append("%s", section.fileTitle);
        for (const CwItem* item : section.items)
            forEachValue(*item, config,
                         [&text](const char* key, const char* value) { text.append("%s=%s\n", key, value); });
    }
    text.append("#Wireless temp:\n%s", kCwFrameLine);
}

int saveFile(const CwConfig& config)
{
    ConfText text;
    composeFile(config, text);
    return replaceConfFile(kCwConfFile, text);
}

} // namespace

int cwConfRead(CwConfig& config)
{
    ConfItems items("cwConfRead", kCwConfFile);
    if (!items.isOpen())
        return -1;
    cwConfClearLists(config);
    while (items.next())
        cwConfSetItem(items.key(), items.value(), config);
    config.saved = 1;
    return 0;
}

void cwConfRefresh(CwConfig& config)
{
    std::uint32_t time;
    if (!confFileTime(kCwConfFile, &time) || time == config.fileTime)
        return;
    cwConfRead(config);
    config.fileTime = time;
    cwConfTakeSnapshot(config);
}

int cwConfWrite()
{
    cwConfigSnapshot.saved = cwConfig.saved;
    // Records are only ever copied as bytes, so equal ones have equal padding. NOLINTNEXTLINE(cert-*,bugprone-*)
    if (std::memcmp(&cwConfig, &cwConfigSnapshot, sizeof cwConfig) == 0)
        return 0;
    if (saveFile(cwConfig) != 0)
        return -1;
    cwConfig.saved = 1;
    cli_print("CAPWAP parameter changed, capwap daemon is reloading\n");
    runCommand("pkill cwWtpd\n");
    cwConfRefresh(cwConfig);
    return 0;
}

void cwConfDrop()
{
    cwConfig.fileTime = 0;
    cwConfRefresh(cwConfig);
}
