// The command `cfg`, which shows and sets the configuration as variables. It is compatible with an older tool.

#ifndef CONF_CFG_H
#define CONF_CFG_H

/// `cfg -a NAME=VALUE` sets a variable; an unknown name changes nothing and prints nothing. `-c` writes both files.
/// `-e` and `-E` print the variables as export commands of a system shell, `-s`, `-S` and `-sall` print them as a list.
/// `-x` copies the factory files over the files of the device, syncs and reads them, and restarts the daemon. `-h` and
/// all other words print the usage. Before anything else, the system file is read. Always returns 0.
int cfgCommand(int argc, char** argv);

#endif
