// The two lists of access controllers: static addresses and host names.

#ifndef CONF_CW_LISTS_H
#define CONF_CW_LISTS_H

#include "conf/cw_items.h"

/// `add`, after a refresh of the record: a new address is checked against the limit of the commands and the list; a
/// surplus name is dropped silently; an item that is no list takes nothing. Marks the record changed and returns 0, or
/// says why not and returns -1.
int cwConfListAdd(const CwItem& item, const char* value, CwConfig& config);

/// `del`, after a refresh of the record: marks it changed and returns 0, or says why not and returns -1.
int cwConfListDelete(const CwItem& item, const char* value, CwConfig& config);

#endif
