// Replay of the saved system configuration.

#ifndef CONF_REPLAY_H
#define CONF_REPLAY_H

/// Splits one line of a configuration file in place. Returns 1 for a comment and 0 if `key` and `value` are set. Prints
/// a message and returns -1 for any other line, including an empty one.
int _sysConfRead(char* line, char** key, char** value);

/// For each line of "/cfg/sys.conf", calls the handler of the `config system` command that its key names. The handler
/// gets too few words to set the item, so the replay changes no setting. Prints a message for a bad line. Always
/// returns 0.
int confReplay();

#endif
