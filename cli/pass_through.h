// Commands that are tools of the system: the line goes to the system shell as it was typed.

#ifndef CLI_PASS_THROUGH_H
#define CLI_PASS_THROUGH_H

/// Marks a tool whose output is captured in a file and shown from there. Called as a plain handler it joins the words
/// and runs them with their output captured. Always 0.
int capturePassThrough(int argc, char** argv);

/// Marks a tool that runs on the terminal. Called as a plain handler it joins the words and runs them. Always 0.
int directPassThrough(int argc, char** argv);

#endif
