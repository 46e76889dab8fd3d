// The pipe of a line: what its built-in says is collected in a file, which the system shell feeds to the rest of the
// line.

#ifndef SHELL_PIPE_H
#define SHELL_PIPE_H

#include "shell/node.h"

/// Runs a built-in of the current line, then the rest of the line on what it said. Where the pipe file cannot take it,
/// the rest is not run, and a message says so. Returns the built-in's result.
int runPiped(CliHandler handler);

/// Marks and runs a tool whose output is captured in the pipe file and shown from there, through the rest of the
/// current line. Where the file cannot be made the tool runs directly. Always 0.
int capturePassThrough(int argc, char** argv);

/// Marks and runs a tool that gets the terminal, with the whole current line. Always 0.
int directPassThrough(int argc, char** argv);

/// Runs `command` for a handler whose output it belongs to: while a pipe is active it lands there.
void runShellCommand(const char* command);

/// Whether the current line's output is collected.
bool pipeIsActive();

/// Collects `text`.
void appendToPipe(const char* text);

/// While an object lives, what a library prints on standard output by itself goes where cli_print() leads.
class PipedOutput
{
public:
    PipedOutput();
    ~PipedOutput();
    PipedOutput(const PipedOutput&) = delete;
    PipedOutput& operator=(const PipedOutput&) = delete;

private:
    int terminal_; ///< the standard output meanwhile, -1: nothing was changed
};

#endif
