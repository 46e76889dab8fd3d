// Completion of command words through readline.

#ifndef SHELL_COMPLETION_H
#define SHELL_COMPLETION_H

/// The generator for readline. The complete words before the cursor select a node. Each call returns one visible child
/// of that node whose name begins with the word that is being typed; the caller frees it. Null ends the list. Both
/// arguments are unused.
char* completionGenerator(const char* text, int state);

/// Makes the completion keys complete command words only, with the generator. Adds the function `list-commands` to
/// readline and binds it to M-h. The function lists the words that can follow the words before the cursor, with their
/// help texts, and does not change the line. If only arguments can follow, it lists the command itself. After a pipe
/// symbol, it lists the tools and aliases. If it finds nothing to list, it rings the bell. If TAB is pressed twice
/// after a blank, the second TAB calls this function too.
void installCompletion();

/// Binds the escape sequences that terminals send for F1 to `list-commands`, unless they are bound. To be called after
/// readline has read its configuration file.
void bindHelpKey();

#endif
