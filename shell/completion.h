// Completion of command words through readline.

#ifndef SHELL_COMPLETION_H
#define SHELL_COMPLETION_H

/// readline's generator: the visible children of the node that the complete words before the cursor select, those that
/// begin with the word being typed, one a call; the caller frees them. Null ends the list. Both arguments are unused.
char* completionGenerator(const char* text, int state);

/// Makes the completion keys use the generator, for nothing but command words, and gives readline the function
/// `list-commands`, which M-h stands for: it lists what can follow the words before the cursor, with the help texts,
/// and leaves the line as it is. Behind words that select a command and its arguments it lists that command, behind a
/// pipe symbol tools and aliases. Where nothing can follow it rings the bell. TAB does the same when it is pressed a
/// second time behind a blank.
void installCompletion();

/// Binds F1, as terminals send it, to `list-commands` where it is not bound. For when readline has read its files.
void bindHelpKey();

#endif
