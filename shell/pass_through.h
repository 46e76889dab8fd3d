// Running tools of the system with the words of a line.

#ifndef SHELL_PASS_THROUGH_H
#define SHELL_PASS_THROUGH_H

#include "shell/node.h"

/// Marks and runs a tool whose output is captured in the pipe file and shown from there, through the rest of the
/// current line. If the file cannot be made, the tool runs directly. Always 0.
int capturePassThrough(int argc, char** argv);

/// Marks and runs a tool that gets the terminal, with the whole current line. Always 0.
int directPassThrough(int argc, char** argv);

/// Whether the node is a tool of the system, or an alias.
bool isTool(const cli_node& node);

/// Runs `command` for a handler: its output goes into the pipe of the line, if it has one.
void runShellCommand(const char* command);

/// Runs the current line from its first pipe symbol on, with the pipe file as its input.
void runRestOfLine();

#endif
