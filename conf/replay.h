// Replay of the saved system configuration.

#ifndef CONF_REPLAY_H
#define CONF_REPLAY_H

/// Splits one line of a configuration file in place. 1: a comment; 0: `key` and `value` are set; -1: no item, an empty
/// line included, which is said.
int _sysConfRead(char* line, char** key, char** value);

/// Hands every line of "/cfg/sys.conf" to its `config system` handler, in the display form; bad lines are reported.
/// Always 0.
int confReplay();

#endif
