// The handlers of the commands in `config system`. With three words, a handler shows the item that the last word names,
// and returns 0. With four words, it sets the item and returns the result of writing "/cfg/sys.conf". If the value or
// the number of words is not valid, it prints a message and returns -1.

#ifndef CONF_SYSTEM_COMMANDS_H
#define CONF_SYSTEM_COMMANDS_H

int factorysnCommand(int argc, char** argv);

/// Sets the address of eth0 with the tool `ip`, too. If the tool fails, returns its wait status and writes no file.
int mgmtAddrCommand(int argc, char** argv);

/// Passes a valid name to the tools `hostname` and `qln-set-hostname`, too.
int hostnameCommand(int argc, char** argv);

/// Sets the speed of the console, too.
int baudrateCommand(int argc, char** argv);

/// Writes the idle time, in seconds, to the file from which new sessions read it, too.
int adminTimeoutCommand(int argc, char** argv);

#endif
