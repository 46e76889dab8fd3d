// The lines of a session.

#ifndef SHELL_HISTORY_H
#define SHELL_HISTORY_H

/// Has the history hold the last 1,000 lines as they were entered, whatever is edited later. For when readline has read
/// its configuration file.
void prepareHistory();

void keepLine(const char* line);

/// Prints the lines to the standard error output, with their numbers from 0. An interrupt ends the list.
void listHistory();

#endif
