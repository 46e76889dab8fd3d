// Drawing the line that readline edits, in a window of any size.

#ifndef SHELL_SCREEN_H
#define SHELL_SCREEN_H

/// A hook of readline's for the start of a line: tells it of 80 columns if the window is too narrow for it.
int widenScreen();

/// Tells readline the size of the window if that has changed. For where nothing is shown that depends on the size.
void adoptWindow();

/// Clears the rows of the line. The cursor then stands at the beginning of the first one.
void clearLine();

/// Draws the line for the size of the window; its first row is the cursor's.
void drawLine();

/// Draws the line anew for the size of the window, where it stands. If readline asks a question below it, it draws the
/// line itself after the answer.
void redrawLine();

/// Puts the cursor of the terminal, wherever it stands, at the beginning of a row that holds nothing.
void beginFreshRow();

#endif
