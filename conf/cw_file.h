// The file of the CAPWAP record, "/cfg/cw.conf": reads and writes it, and finds out whether it has changed.

#ifndef CONF_CW_FILE_H
#define CONF_CW_FILE_H

#include "conf/cw_conf.h"

inline constexpr char kCwConfFile[] = "/cfg/cw.conf";

/// Reads the file into the record. First empties both AC lists. Any other item that is not in the file keeps its value.
/// Marks the record as saved. If the file sets the address of the access point, copies it to the system record.
/// Returns 0. If the file cannot be opened or read to its end, prints a message and returns -1; both records are then
/// unchanged.
int cwConfRead(CwConfig& config);

/// Reads the file if it has changed since the session read or wrote it, or if the last attempt to read it failed. The
/// values of the file replace unsaved changes of the process's record `config`. Updates the snapshot and the base. If
/// the file cannot be read, prints a message once for each state of the file.
void cwConfRefresh(CwConfig& config);

/// Reads the file into `config`, which holds the defaults, and updates the snapshot. A missing file changes nothing and
/// is no error.
void cwConfLoad(CwConfig& config);

/// Applies an item to the process's record, as cwConfSetItem() does. If the item is the address of the access point,
/// also copies the address to the system record. Returns like cwConfSetItem().
int cwConfChange(const char* key, const char* value);

/// Saves the process's record and restarts the daemon, unless the record is unchanged. If the file has changed since it
/// was last read or written, merges it first: items that this session has changed keep their values, all others get the
/// values of the file. A list is one item. Returns 0. If the file cannot be written, or has changed and cannot be read,
/// prints a message and returns -1; file and record are then unchanged.
int cwConfWrite();

/// Reads the file into the process's record. Unsaved changes are lost.
void cwConfDrop();

#endif
