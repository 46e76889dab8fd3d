// The system configuration record and its file, "/cfg/sys.conf".

#ifndef CONF_SYS_CONF_H
#define CONF_SYS_CONF_H

#include <cstdint>

inline constexpr char kSysConfFile[] = "/cfg/sys.conf";

struct SysConfig {
    char hostname[256];        ///< host name, shown in the prompt
    char factorysn[64];        ///< factory test serial number
    char staticAddr[32];       ///< dotted text of the static address; not in the file
    std::int32_t baudrate;     ///< console speed, bits per second
    std::uint32_t saved;       ///< 1 once the file was written
    std::int32_t adminTimeout; ///< idle time-out, minutes
    std::uint32_t fileTime;    ///< modification time of the file when it was last read, seconds since 1970
};

/// The process's record.
extern SysConfig sysConfig;

/// Reads the file into the record. If the file has no host name or cannot be opened, the host name is the serial number
/// of the device. Returns 0. If the file cannot be opened or read to its end, prints a message and returns -1; the
/// other items are then unchanged.
int sysConfRead(SysConfig& config);

/// Applies one item of the file. Ignores unknown keys. Truncates texts to their fields. Always returns 0.
int sysConfSetItem(const char* key, const char* value, SysConfig& config);

/// Writes the process's record to the file. Returns 0, or -1 if the file cannot be written; the old file is then
/// unchanged.
int sysConfWrite();

/// Reads the file if it has changed since it was last read, or could not be read then. If it cannot be read, prints a
/// message once for each state of the file.
void sysConfRefresh(SysConfig& config);

/// Reads the file. Prints messages like sysConfRefresh().
void sysConfLoad(SysConfig& config);

/// Reads the file if another shell has changed it, applies one item to the process's record, and writes the file.
/// Returns 0. If the file cannot be written, or exists and cannot be read, prints a message and returns -1; the file is
/// then unchanged, but the record has the new value.
int sysConfChange(const char* key, const char* value);

/// Reads the file if another shell has changed it, and writes it from the process's record. Returns like
/// sysConfChange().
int sysConfCommit();

/// Refreshes the record and prints the row of `item`, or all rows if `item` is null.
void sysConfShow(const char* item, SysConfig& config);

#endif
