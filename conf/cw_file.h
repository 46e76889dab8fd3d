// The CAPWAP record and its file, "/cfg/cw.conf": reading, saving, and telling whether they differ.

#ifndef CONF_CW_FILE_H
#define CONF_CW_FILE_H

#include "conf/cw_conf.h"

inline constexpr char kCwConfFile[] = "/cfg/cw.conf";

/// Reads the file over the record: both AC lists are rebuilt, every other item without a line keeps its value. 0, with
/// the record marked as saved and an address of the access point shown by the system record, too. -1 when the file
/// cannot be opened or not be read to its end, which is said; both records are then as they were.
int cwConfRead(CwConfig& config);

/// When the file is another than the one last read or written, or could not be read: reads it and takes the snapshot.
/// That it cannot be read is said once for a file in one state.
void cwConfRefresh(CwConfig& config);

/// Starts with a record of defaults: reads the file whatever its time and takes the snapshot. A missing file changes
/// nothing, silently.
void cwConfLoad(CwConfig& config);

/// Applies an item to the process's record, as cwConfSetItem() does. The system record shows an address of the access
/// point, too.
int cwConfChange(const char* key, const char* value);

/// Saves the process's record and has the daemon restarted, unless nothing has been changed in the record. If others
/// have changed the file since it was last read or written, their values are taken into the record first; items that
/// have been changed in the record keep its values. A list is one item. Returns 0, or -1 if the file cannot be written,
/// or if it has changed and cannot be read, which is said; file and record are then as they were.
int cwConfWrite();

/// Reads the file whatever its time, over the unsaved changes of the process's record.
void cwConfDrop();

#endif
