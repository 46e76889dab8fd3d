// Running tools of the system with the words of a line.

#ifndef SHELL_PASS_THROUGH_H
#define SHELL_PASS_THROUGH_H

#include "shell/node.h"

/// The handler of a tool whose output goes to the pipe file first, and from there through the rest of the current line.
/// If the file cannot be created, runs the tool directly. Always returns 0.
int capturePassThrough(int argc, char** argv);

/// The handler of a tool that gets the terminal and the whole current line. Always returns 0.
int directPassThrough(int argc, char** argv);

/// Whether the node is a tool of the system, or an alias.
bool isTool(const cli_node& node);

/// Runs `command` for a handler: its output goes into the pipe of the line, if it has one.
void runShellCommand(const char* command);

/// Runs the current line from its first pipe symbol on, with the pipe file as its input.
void runRestOfLine();

#endif
