// The `config` subtree and the handlers of `show`, `save` and `drop`.

#ifndef CONF_CONFIG_TREE_H
#define CONF_CONFIG_TREE_H

#include "shell/node.h"

/// Children of `config`: `system` and `capwap`.
extern cli_node configTable[2];

/// Sets the CAPWAP record to its defaults, and then reads both configuration files. Always returns 0.
int configPrepare(cli_node* node, cli_node* siblings);

/// `show cw_conf` and `show sys_conf`. Both first read their file if it has changed. `show cw_conf` prints a message if
/// the record has unsaved changes. Always returns 0. The four handlers of `show`, `save` and `drop` ignore their words.
int showCwConfCommand(int argc, char** argv);
int showSysConfCommand(int argc, char** argv);

/// `save cw_conf`. Returns the result of cwConfWrite().
int saveCwConfCommand(int argc, char** argv);

/// `drop cw_conf`: reads the file again. Always returns 0.
int dropCwConfCommand(int argc, char** argv);

#endif
