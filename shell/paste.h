// A block that the terminal pastes in brackets.

#ifndef SHELL_PASTE_H
#define SHELL_PASTE_H

#include <csignal>

/// Reads the block that the opening bracket begins, and types its lines, each at a prompt of its own. All but the last
/// are entered. A command of readline's, to be bound to the bracket.
int pasteBlock(int count, int key);

/// Types the next line of the block. A hook of readline's, for when it has shown its prompt.
int typePastedLine();

/// Whether lines are still to be typed.
bool pasteGoesOn();

/// Forgets the lines that are still to be typed. Of a block that is still coming every key is dropped, as long as
/// there is no pause; signals outside the mask end that.
void dropPaste(const sigset_t& mask);

#endif
