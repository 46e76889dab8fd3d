// The `config` subtree and the handlers of `show`, `save` and `drop`.

#ifndef CONF_CONFIG_TREE_H
#define CONF_CONFIG_TREE_H

#include "shell/node.h"

/// Children of `config`: `system` and `capwap`.
extern cli_node configTable[2];

/// Loads both configuration records: defaults first, then the files.
int configPrepare(cli_node* node, cli_node* siblings);

int showCwConfCommand(int argc, char** argv);
int showSysConfCommand(int argc, char** argv);
int saveCwConfCommand(int argc, char** argv);
int dropCwConfCommand(int argc, char** argv);

#endif
