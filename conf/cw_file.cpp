#include "conf/cw_file.h"

#include <cstring>

#include "base/address.h"
#include "base/firmware_version.h"
#include "base/text.h"
#include "conf/conf_file.h"
#include "conf/cw_items.h"
#include "conf/sys_conf.h"
#include "platform/system_library.h"
#include "shell/output.h"
#include "shell/tools.h"

namespace
{

constexpr char kReader[] = "cwConfRead";
constexpr char kModelPrefix[] = "QK91MV";

/// What there is to know of the file beside the record.
struct CwFileState {
    ConfFileTime time;      ///< when it was last read or written
    bool isUnreadable;      ///< the last attempt to read it failed
    bool isAheadOfSnapshot; ///< it was written since the snapshot was taken
};

constinit CwFileState cwFile{};

/// Reads the file and takes the snapshot. After a failure everything is as before, so the next refresh tries again.
void readCwFile(CwConfig& config, const ConfFileTime& time)
{
    cwFile.isUnreadable = cwConfRead(config) != 0;
    if (cwFile.isUnreadable)
        return;
    config.fileTime = time.seconds;
    cwConfCopy(cwConfigSnapshot, config);
    cwFile = {time, false, false};
}

bool isReadAt(const CwConfig& config, const ConfFileTime& time)
{
    return !cwFile.isUnreadable && time.seconds == config.fileTime && time == cwFile.time;
}

void composeFile(const CwConfig& config, ConfText& text)
{
    char version[256] = "";
    get_full_version_string(version, sizeof version, kModelPrefix, numberFrom(kFirmwareMajor),
                            numberFrom(kFirmwareMinor), kFirmwareBuild);
    text.append("# %.256s\n%s", version, kCwFrameLine);
    for (const CwSection& section : cwSections) {
        text.append("%s", section.fileTitle);
        for (const CwItem* item : section.items)
            forEachValue(*item, config,
                         [&text](const char* key, const char* value) { text.append("%s=%s\n", key, value); });
    }
    text.append("#Wireless temp:\n%s", kCwFrameLine);
}

/// What could not be read is not overwritten: nobody has seen what it holds.
int saveFile(const CwConfig& config)
{
    ConfText text;
    ConfFileTime time;
    composeFile(config, text);
    const ConfFolderLock lock;
    if (cwFile.isUnreadable && confFileTime(kCwConfFile, &time) != ConfFileStatus::Missing)
        return -1;
    if (replaceConfFile(kCwConfFile, text) != 0)
        return -1;
    confFileTime(kCwConfFile, &time);
    cwFile = {time, false, true};
    return 0;
}

/// Whether an item gives the record its own address.
bool setsOwnAddress(const char* key, const char* value)
{
    const CwItem* item = cwConfItem(key);
    std::uint32_t address;
    return item != nullptr && item->kind == &kOwnAddress && parseIpv4(value, &address);
}

/// The system record shows the address that was last set.
void showOwnAddress(const CwConfig& config)
{
    copyText(sysConfig.staticAddr, ipv4Text(config.staticIpAddr).text);
}

/// Reads the file over `config`, whose lists it empties first. False when it cannot be read to its end, which is said.
bool readItems(CwConfig& config, bool& hasOwnAddress)
{
    ConfItems items(kReader, kCwConfFile);
    cwConfClearLists(config);
    while (items.next()) {
        cwConfSetItem(items.key(), items.value(), config);
        hasOwnAddress = hasOwnAddress || setsOwnAddress(items.key(), items.value());
    }
    return !items.failed();
}

} // namespace

// The items go to a copy first: a file that cannot be read to its end counts for nothing.
int cwConfRead(CwConfig& config)
{
    CwConfig fresh;
    bool hasOwnAddress = false;
    std::memcpy(&fresh, &config, sizeof fresh);
    if (!readItems(fresh, hasOwnAddress)) {
        cwConfCopy(fresh, config);
        return -1;
    }
    fresh.saved = 1;
    cwConfCopy(config, fresh);
    if (hasOwnAddress)
        showOwnAddress(config);
    return 0;
}

int cwConfChange(const char* key, const char* value)
{
    cwConfRefresh(cwConfig);
    if (cwConfSetItem(key, value, cwConfig) != 0)
        return -1;
    if (setsOwnAddress(key, value))
        showOwnAddress(cwConfig);
    return 0;
}

void cwConfRefresh(CwConfig& config)
{
    ConfFileTime time;
    if (confFileTime(kCwConfFile, &time) == ConfFileStatus::Known && !isReadAt(config, time))
        readCwFile(config, time);
}

void cwConfLoad(CwConfig& config)
{
    ConfFileTime time;
    cwFile = {};
    if (confFileTime(kCwConfFile, &time) != ConfFileStatus::Missing)
        readCwFile(config, time);
}

int cwConfWrite()
{
    cwConfigSnapshot.saved = cwConfig.saved; // which is no difference
    // Records are only ever copied as bytes, so equal ones have equal padding. NOLINTNEXTLINE(cert-*,bugprone-*)
    if (!cwFile.isAheadOfSnapshot && std::memcmp(&cwConfig, &cwConfigSnapshot, sizeof cwConfig) == 0)
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
    cwConfLoad(cwConfig);
}
