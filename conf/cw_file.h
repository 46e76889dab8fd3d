// The CAPWAP record and its file, "/cfg/cw.conf": reading, saving, and telling whether they differ.

#ifndef CONF_CW_FILE_H
#define CONF_CW_FILE_H

#include "conf/cw_conf.h"

inline constexpr char kCwConfFile[] = "/cfg/cw.conf";

/// Reads the file over the record: both AC lists are rebuilt, every other item without a line keeps its value. 0, with
/// the record marked as saved, or -1 when the file cannot be opened, which is said.
int cwConfRead(CwConfig& config);

/// When the modification time of the file is another than the record's: reads the file and takes the snapshot.
void cwConfRefresh(CwConfig& config);

/// Saves the process's record and has the daemon restarted, unless the record equals the snapshot. 0, or -1 when the
/// file cannot be written; the old file then stays.
int cwConfWrite();

/// Throws away the unsaved changes of the process's record that the file has a line for.
void cwConfDrop();

#endif
