// The displays of the CAPWAP record.

#ifndef CONF_CW_SHOW_H
#define CONF_CW_SHOW_H

#include "conf/cw_items.h"

/// Prints the process's record in the order of the file.
void cwConfShowAll();

/// Prints the row of `key`, or all rows if `key` is null. The row of a list shows its commands. If the key has no row,
/// prints nothing.
void cwConfShowItem(const char* key, const CwConfig& config);

/// Prints the number of a list's values, and then the values.
void cwConfShowList(const CwItem& item, const CwConfig& config);

#endif
