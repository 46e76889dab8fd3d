// A block that the terminal pastes in brackets.

#ifndef SHELL_PASTE_H
#define SHELL_PASTE_H

#include <csignal>

/// Binds pasteBlock() to the opening bracket. For when readline has read its configuration file.
void bindPaste();

/// Reads the block that the opening bracket begins, and types its lines, each at a prompt of its own. All but the last
/// are entered. A command of readline's, to be bound to the bracket.
int pasteBlock(int count, int key);

/// Types the next line of the block. A hook of readline's, for when it has shown its prompt.
int typePastedLine();

/// Whether readline asks the terminal for brackets.
bool pasteIsBracketed();

/// A search would read a pasted block itself and show it as it came. Hides the bracket that begins it, so that the
/// search ends at its escape key and the block is read as everywhere else.
void hidePasteFromSearch();
void showPasteAgain();

/// Whether lines are still to be typed.
bool pasteGoesOn();

/// Forgets the lines that are still to be typed. Of a block that is still coming every key is dropped, as long as
/// there is no pause; signals outside the mask end that.
void dropPaste(const sigset_t& mask);

#endif
