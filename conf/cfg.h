// The compatibility tool `cfg`: the configuration as a table of variables.

#ifndef CONF_CFG_H
#define CONF_CFG_H

/// The `cfg` command. Always 0.
int cfgCommand(int argc, char** argv);

#endif
