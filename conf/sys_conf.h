// The system configuration record and its file, "/cfg/sys.conf".

#ifndef CONF_SYS_CONF_H
#define CONF_SYS_CONF_H

#include <cstdint>

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

/// Re-reads the file when its modification time is another than the record's.
void sysConfRefresh(SysConfig& config);

#endif
