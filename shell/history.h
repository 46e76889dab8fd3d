// The lines of a session.

#ifndef SHELL_HISTORY_H
#define SHELL_HISTORY_H

/// Lets the history hold the last 1,000 lines as they were entered, even if they are edited later. To be called after
/// readline has read its configuration file.
void prepareHistory();

/// Adds a copy of the line to the history.
void keepLine(const char* line);

/// Prints the lines to the standard error output, with their numbers from 0. An interrupt ends the list.
void listHistory();

#endif
