// Replay of the saved system configuration.

#ifndef CONF_REPLAY_H
#define CONF_REPLAY_H

/// Hands every line of "/cfg/sys.conf" to its `config system` handler, in the display form; bad lines are reported.
/// Always 0.
int confReplay();

#endif
