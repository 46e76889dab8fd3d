// Drawing the line that readline edits, in a window of any size.

#ifndef SHELL_SCREEN_H
#define SHELL_SCREEN_H

/// A startup hook for readline. Sets readline's width to 80 columns if the window is too narrow for readline.
int widenScreen();

/// Gives readline the size of the window if it has changed. To be called while no line is shown.
void adoptWindow();

/// Clears the rows of the line. The cursor then stands at the beginning of the first one.
void clearLine();

/// Draws the line for the size of the window, beginning at the row of the cursor.
void drawLine();

/// Clears the line and draws it for the size of the window. While readline asks a question about completions, does not
/// draw: readline draws the line after the answer.
void redrawLine();

/// Moves the cursor to the beginning of an empty row, whatever column it is in.
void beginFreshRow();

#endif
