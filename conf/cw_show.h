// The displays of the CAPWAP record.

#ifndef CONF_CW_SHOW_H
#define CONF_CW_SHOW_H

#include "conf/cw_items.h"

/// Shows the process's record in the manner of its file.
void cwConfShowAll();

/// Shows the row of `key`, or every row when it is null; for a list, its commands. A key
/// without a row shows nothing.
void cwConfShowItem(const char* key, const CwConfig& config);

/// Shows the values of a list, their number first.
void cwConfShowList(const CwItem& item, const CwConfig& config);

#endif
