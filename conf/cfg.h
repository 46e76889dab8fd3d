// The compatibility tool `cfg`: the configuration as a table of variables.

#ifndef CONF_CFG_H
#define CONF_CFG_H

/// `cfg -a NAME=VALUE` sets a variable, `-c` commits, `-e` and `-E` export, `-s`, `-S` and `-sall` list, `-x` restores
/// the factory's files. Anything else, and another number of words, draws the usage. Always 0.
int cfgCommand(int argc, char** argv);

#endif
