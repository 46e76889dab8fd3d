// Drawing the line that readline edits, in a window of any size.

#ifndef SHELL_SCREEN_H
#define SHELL_SCREEN_H

/// A hook of readline's for the start of a line: pretends a usual width where the window is too narrow for readline.
/// Returns 1 then.
int widenScreen();

/// Takes over the size of the window. Call it where nothing that depends on the size is on the screen.
void adoptWindow();

/// Clears the rows of the line and leaves the cursor at the beginning of the first one.
void clearLine();

/// Draws the line in a window of any size, beginning at the cursor.
void drawLine();

/// Draws the line anew where it stands, if the window was resized.
void redrawResizedLine();

/// Puts the cursor of the terminal, wherever it stands, at the beginning of a row that holds nothing.
void beginFreshRow();

#endif
