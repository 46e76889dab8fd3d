// The line executor: from a typed line to the action of its node.

#ifndef SHELL_EXECUTOR_H
#define SHELL_EXECUTOR_H

#include "shell/node.h"

/// Runs one line. Returns the handler's result, or 0 when no handler ran.
int executeLine(const char* line);

/// Prints a node's name and help as a row of a list.
void printNode(const cli_node& node);

/// Prints the words and, below them, the visible children of the node that the words select. Always returns 0.
int helpLister(int argc, char** argv);

#endif
