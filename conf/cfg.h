// The compatibility tool `cfg`: the configuration as a table of variables.

#ifndef CONF_CFG_H
#define CONF_CFG_H

/// `cfg -a NAME=VALUE` sets a variable, and says nothing to an unknown name; `-c` writes both files; `-e` and `-E` show
/// the variables as a shell exports them, `-s`, `-S` and `-sall` as a list; `-x` copies the factory's files over the
/// device's, to the disk, reads them and restarts the daemon. `-h`, anything else and another number of words draw the
/// usage. The system file is read first, whatever the words. Always 0.
int cfgCommand(int argc, char** argv);

#endif
