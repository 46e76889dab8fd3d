// The handlers below `config system`. With three words each shows the item that the last word names and returns 0; with
// four it sets the item and returns the result of writing "/cfg/sys.conf", or -1 when the value is refused, with a
// message. Any other number of words is refused.

#ifndef CONF_SYSTEM_COMMANDS_H
#define CONF_SYSTEM_COMMANDS_H

int factorysnCommand(int argc, char** argv);

/// Gives the address to the device's interface. When that fails, returns the tool's wait status and writes nothing.
int mgmtAddrCommand(int argc, char** argv);

/// Has the tools `hostname` and `qln-set-hostname` take up a legal name, too.
int hostnameCommand(int argc, char** argv);

/// Sets the speed of the console, too.
int baudrateCommand(int argc, char** argv);

/// Tells the idle guard of the next sessions, too.
int adminTimeoutCommand(int argc, char** argv);

#endif
