// Completion of command words through readline.

#ifndef SHELL_COMPLETION_H
#define SHELL_COMPLETION_H

/// The generator for readline. The complete words before the cursor select a node. Each call returns one visible child
/// of that node whose name begins with the word that is being typed; the caller frees it. Null ends the list. Both
/// arguments are unused.
char* completionGenerator(const char* text, int state);

/// Makes the completion keys complete command words only, with the generator. Adds the function `list-commands` to
/// readline and binds it to M-h. The function lists the words that can follow the words before the cursor, with their
/// help texts, and does not change the line. Behind a command and its arguments it lists that command, behind a pipe
/// symbol the tools and aliases. If no word can follow, it rings the bell. The second TAB in a row does the same behind
/// a blank.
void installCompletion();

/// Binds the escape sequences that terminals send for F1 to `list-commands`, unless they are bound. To be called after
/// readline has read its configuration file.
void bindHelpKey();

#endif
