// Bracketed paste: a block of text that the terminal sends between two escape sequences.

#ifndef SHELL_PASTE_H
#define SHELL_PASTE_H

#include <csignal>

/// Binds pasteBlock() to the opening bracket. To be called after readline has read its configuration file.
void bindPaste();

/// A readline command. Reads the block up to the closing bracket and types its lines, each at a prompt of its own.
/// Enters all lines but the last.
int pasteBlock(int count, int key);

/// A hook that readline calls when it has shown a prompt. Types the next line of the block.
int typePastedLine();

/// Whether readline has asked the terminal for bracketed paste.
bool pasteIsBracketed();

/// If bracketed paste is on, readline's incremental search reads a pasted block itself. hidePasteFromSearch() turns
/// bracketed paste off if a search is running. The ESC that begins the block then ends the search, and pasteBlock()
/// reads the block. showPasteAgain() turns bracketed paste on again.
void hidePasteFromSearch();
void showPasteAgain();

/// Whether lines are still to be typed.
bool pasteGoesOn();

/// Drops the lines that have not been typed yet. If the block is still arriving, reads and drops keys until none has
/// come for a second, or a signal that `mask` does not block arrives.
void dropPaste(const sigset_t& mask);

#endif
