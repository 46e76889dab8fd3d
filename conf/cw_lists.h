// The two lists of access controllers: static addresses and host names.

#ifndef CONF_CW_LISTS_H
#define CONF_CW_LISTS_H

#include <cstdint>

#include "conf/cw_conf.h"

/// Appends without any check but that of the record's room. False: the list is full.
bool cwConfAppendAddress(CwConfig& config, std::uint32_t address);
bool cwConfAppendHostname(CwConfig& config, const char* name);

/// Empties both lists.
void cwConfClearLists(CwConfig& config);

/// `add`, after a refresh: a new address is checked against the limit of the commands and the list; a surplus name is
/// dropped silently. Marks the record changed and returns 0, or says why not and returns -1.
int cwConfListAdd(const char* key, const char* value, CwConfig& config);

/// `del`, after a refresh: marks the record changed and returns 0, or says why not and returns -1.
int cwConfListDelete(const char* key, const char* value, CwConfig& config);

/// Refreshes the record and shows a list, its count first. -1, and nothing is said, when `key` is no list.
int cwConfListShow(const char* key, CwConfig& config);

#endif
