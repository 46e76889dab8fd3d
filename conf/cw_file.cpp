#include "conf/cw_file.h"

#include <cstring>

#include "base/address.h"
#include "base/product.h"
#include "base/text.h"
#include "conf/conf_replace.h"
#include "conf/cw_items.h"
#include "conf/file_watch.h"
#include "conf/sys_conf.h"
#include "platform/system_library.h"
#include "shell/output.h"
#include "shell/tools.h"

namespace
{

constexpr char kReader[] = "cwConfRead";

constinit FileWatch cwFile(kCwConfFile);

/// Reads the file, and updates the snapshot and the base.
void readCwFile(CwConfig& config)
{
    if (!cwFile.read([&config] { return cwConfRead(config) == 0; }))
        return;
    config.fileTime = cwFile.seconds();
    cwConfCopy(cwConfigSnapshot, config);
    cwConfCopy(cwConfigBase, config);
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

/// Whether this value changes the address of the access point.
bool setsOwnAddress(const char* key, const char* value)
{
    const CwItem* item = cwConfItem(key);
    std::uint32_t address;
    return item != nullptr && item->kind == &kOwnAddress.kind && parseIpv4(value, &address);
}

/// Copies the address of the access point to the system record, whose display shows it.
void showOwnAddress(const CwConfig& config)
{
    copyText(sysConfig.staticAddr, ipv4Text(config.staticIpAddr).text);
}

/// Empties the lists of `config` and reads the file over it. Prints a message and returns false if the file cannot be
/// read to its end.
bool readItems(CwConfig& config, bool& hasOwnAddress)
{
    ConfItems items(kReader, kCwConfFile);
    for (const CwItem& item : cwItems)
        if (isCwList(item))
            item.kind->list->clear(config);
    while (items.next()) {
        cwConfSetItem(items.key(), items.value(), config);
        hasOwnAddress = hasOwnAddress || setsOwnAddress(items.key(), items.value());
    }
    return !items.failed();
}

/// Reads the file over `config`, a copy of the process's record. The items that this session has changed keep their
/// values. Does not change the system record.
bool mergeFile(CwConfig& config)
{
    bool hasOwnAddress = false;
    if (!readItems(config, hasOwnAddress))
        return false;
    for (const CwSection& section : cwSections)
        for (const CwItem* item : section.items)
            if (!cwConfItemIsSame(*item, cwConfig, cwConfigBase))
                cwConfCopyItem(*item, cwConfig, config);
    return true;
}

/// `config` is a copy of the process's record. If the file has changed, merges it into `config`. Then writes `config`
/// to the file. Prints messages after the lock is released, because a terminal may be slow.
bool saveFile(CwConfig& config)
{
    ConfText text;
    const GatheredOutput gathered;
    const ConfFolderLock lock;
    if (!cwFile.catchUp([&config] { return mergeFile(config); }))
        return false;
    composeFile(config, text);
    if (replaceConfFile(kCwConfFile, text) != 0)
        return false;
    cwFile.noteWritten();
    return true;
}

/// Whether the process's record equals `copy`, apart from the saved flag.
bool isUnchangedSince(CwConfig& copy)
{
    copy.saved = cwConfig.saved;
    // Records are only ever copied as bytes, so equal ones have equal padding. NOLINTNEXTLINE(cert-*,bugprone-*)
    return std::memcmp(&cwConfig, &copy, sizeof copy) == 0;
}

} // namespace

// Reads into a copy, so that a file that cannot be read to its end changes nothing.
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
    if (cwConfSetItem(key, value, cwConfig) != 0)
        return -1;
    if (setsOwnAddress(key, value))
        showOwnAddress(cwConfig);
    return 0;
}

void cwConfRefresh(CwConfig& config)
{
    if (cwFile.hasChanged())
        readCwFile(config);
}

void cwConfLoad(CwConfig& config)
{
    cwConfCopy(cwConfigBase, config);
    if (cwFile.exists())
        readCwFile(config);
}

int cwConfWrite()
{
    if (!cwFile.isNewerThanSnapshot() &&
        (isUnchangedSince(cwConfigSnapshot) || (isUnchangedSince(cwConfigBase) && cwFile.canBeRead())))
        return 0;
    CwConfig merged;
    std::memcpy(&merged, &cwConfig, sizeof merged);
    if (!saveFile(merged)) {
        cwConfCopy(merged, cwConfig);
        return -1;
    }
    merged.saved = 1;
    cwConfCopy(cwConfig, merged);
    cwConfCopy(cwConfigBase, merged);
    cli_print("CAPWAP parameter changed, capwap daemon is reloading\n");
    runCommand("pkill cwWtpd\n");
    cwConfRefresh(cwConfig);
    return 0;
}

// Sets the file time of the record to zero. If the file does not exist, the record then differs from the snapshot in
// this field, so the next save creates the file.
void cwConfDrop()
{
    cwConfig.fileTime = 0;
    if (cwFile.exists())
        readCwFile(cwConfig);
}
