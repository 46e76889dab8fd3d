// Completion of command words through readline.

#ifndef SHELL_COMPLETION_H
#define SHELL_COMPLETION_H

/// readline's generator: the visible children of the node that the complete words before the cursor select, those that
/// begin with the word being typed, one a call; the caller frees them. Null ends the list. Both arguments are unused.
char* completionGenerator(const char* text, int state);

/// Makes the completion key use the generator, for nothing but command words.
void installCompletion();

#endif
