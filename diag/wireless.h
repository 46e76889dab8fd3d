// The wireless driver's operations.

#ifndef DIAG_WIRELESS_H
#define DIAG_WIRELESS_H

#include "platform/wireless_library.h"
#include "shell/node.h"

/// The driver's operation table; any operation may be missing (null).
extern wlan_api wirelessApi;

/// Prepare hook of `get vap`: fills the operation table. 0: done.
int vapPrepare(cli_node* node, cli_node* siblings);

#endif
