// The handlers below `config system`. With three words each shows the item that the last word names and returns 0; with
// four it sets the item and returns the result of writing "/cfg/sys.conf", or -1 when the value is refused, with a
// message. Any other number of words is refused.

#ifndef CONF_SYSTEM_COMMANDS_H
#define CONF_SYSTEM_COMMANDS_H

int factorysnCommand(int argc, char** argv);

/// Sets the address of the device's interface. If that fails, returns the wait status of the tool and writes no file.
int mgmtAddrCommand(int argc, char** argv);

/// Passes a valid name to the tools `hostname` and `qln-set-hostname`, too.
int hostnameCommand(int argc, char** argv);

/// Sets the speed of the console, too.
int baudrateCommand(int argc, char** argv);

/// Writes the idle time of the next sessions to its file, too.
int adminTimeoutCommand(int argc, char** argv);

#endif
