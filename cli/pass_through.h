// Commands that are tools of the system, and the tools behind the pipe of a built-in command: both get the words of the
// current line as they were typed, joined by single blanks.

#ifndef CLI_PASS_THROUGH_H
#define CLI_PASS_THROUGH_H

#include "cli/node.h"

/// Marks a tool whose output is captured in a file and shown from there. Called as a plain handler it runs its words in
/// that way. Always 0.
int capturePassThrough(int argc, char** argv);

/// Marks a tool that runs on the terminal. Called as a plain handler it runs its words. Always 0.
int directPassThrough(int argc, char** argv);

/// Runs the current line with the output of its first segment captured.
void runCaptured();

/// Runs the current line as it stands.
void runDirect();

/// Runs a built-in of the current line, feeding what it says through the rest of the line. Returns its result.
int runPiped(CliHandler handler);

#endif
