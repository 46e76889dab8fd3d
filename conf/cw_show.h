// The displays of the CAPWAP record.

#ifndef CONF_CW_SHOW_H
#define CONF_CW_SHOW_H

#include "conf/cw_items.h"

/// Refreshes the process's record and shows it in the manner of its file.
void cwConfShowAll();

/// Refreshes the record and shows the row of `key`, or every row when it is null; for a list, its commands. A key
/// without a row shows nothing.
void cwConfShowItem(const char* key, CwConfig& config);

/// Refreshes the record and shows the values of a list, their number first.
void cwConfShowList(const CwItem& item, CwConfig& config);

#endif
