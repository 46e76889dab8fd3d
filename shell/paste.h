// A block that the terminal pastes in brackets.

#ifndef SHELL_PASTE_H
#define SHELL_PASTE_H

#include <csignal>

/// What the bracket that begins a block is bound to: each line of the block is typed at a prompt of its own and
/// entered, the last one is only typed. A key of readline's.
int pasteBlock(int count, int key);

/// Types the next line of the block. A hook of readline's, for when it has shown its prompt.
int typePastedLine();

/// Whether lines are still to be typed.
bool pasteGoesOn();

/// Forgets the lines that are still to be typed. Of a block that is still coming every key is dropped, as long as
/// there is no pause; signals outside the mask end that.
void dropPaste(const sigset_t& mask);

#endif
