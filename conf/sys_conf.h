// The system configuration record and its file, "/cfg/sys.conf".

#ifndef CONF_SYS_CONF_H
#define CONF_SYS_CONF_H

#include <cstdint>

inline constexpr char kSysConfFile[] = "/cfg/sys.conf";

struct SysConfig {
    char hostname[256];        ///< host name, also the prompt
    char factorysn[64];        ///< factory test serial number
    char staticAddr[32];       ///< dotted text of the static address; memory only
    std::int32_t baudrate;     ///< console speed, bits per second
    std::uint32_t saved;       ///< 1 once the file was written
    std::int32_t adminTimeout; ///< idle time-out, minutes
    std::uint32_t fileTime;    ///< modification time of the file when it was last read
};

/// The process's record.
extern SysConfig sysConfig;

/// Reads the file into the record; the device serial number is the host name where the file gives none, and when it
/// cannot be opened. 0, or -1 when it cannot be opened or not be read to its end, which is said; everything else is
/// then as it was.
int sysConfRead(SysConfig& config);

/// Applies one item of the file; keys that are not the record's are ignored, texts cut to their fields. Always 0.
int sysConfSetItem(const char* key, const char* value, SysConfig& config);

/// Replaces the file by the process's record. 0, or -1 when it cannot be written; the old file then stays.
int sysConfWrite();

/// Re-reads the file when it is another than the one last read, or could not be read. That it cannot be read is said
/// once for a file in one state.
void sysConfRefresh(SysConfig& config);

/// Reads the file whatever its time. A failure is said likewise.
void sysConfLoad(SysConfig& config);

/// Applies one item to the process's record and writes the file. What other shells wrote meanwhile is kept. 0, or -1
/// when the file cannot be written, or is there and cannot be read, which is said; it then stays. What could not be
/// written is in the record nevertheless.
int sysConfChange(const char* key, const char* value);

/// Writes the file anew from the process's record, with what other shells wrote meanwhile. 0 or -1 likewise.
int sysConfCommit();

/// Refreshes the record and shows the row of `item`, or every row when it is null.
void sysConfShow(const char* item, SysConfig& config);

#endif
