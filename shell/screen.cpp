#include "shell/screen.h"

#include <cstdio>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/terminal.h"

namespace
{

/// The size of the screen as readline knows it.
struct Screen {
    Screen() { rl_get_screen_size(&rows, &columns); }
    int rows = 0;
    int columns = 0;
};

/// Lets readline break the prompt into rows for the new width. readline does this only when a prompt is set. While it
/// shows a message instead, such as that of a search, it saves the prompt, so both are set again.
void layOutPrompts()
{
    if (rl_display_prompt != rl_prompt) {
        rl_restore_prompt();
        rl_expand_prompt(rl_prompt);
        rl_save_prompt();
    }
    rl_expand_prompt(rl_display_prompt);
}

void fitWindow()
{
    adoptWindow();
    widenScreen();
    layOutPrompts();
}

/// Calls `draw` while readline takes the screen for very high. If a line has more rows than the screen, readline 8.2
/// would not move the cursor to the last rows. A screen of one row is not changed, because readline scrolls the line
/// there.
void withAnyHeight(rl_hook_func_t* draw)
{
    constexpr int kAnyHeight = 32767;
    const Screen screen;
    if (screen.rows > 1)
        rl_set_screen_size(kAnyHeight, 0);
    draw();
    rl_set_screen_size(screen.rows, 0);
}

} // namespace

// On a screen of one row, readline 8.2 divides by columns / 3. This is a division by 0 if there are fewer than 3
// columns.
int widenScreen()
{
    constexpr int kNarrowest = 3;
    constexpr int kUsualWidth = 80;
    if (Screen().columns < kNarrowest)
        rl_set_screen_size(0, kUsualWidth);
    return 0;
}

void adoptWindow()
{
    if (updateWindow() && RL_ISSTATE(RL_STATE_INITIALIZED))
        rl_reset_screen_size();
}

void clearLine()
{
    withAnyHeight(rl_clear_visible_line);
}

void drawLine()
{
    fitWindow();
    withAnyHeight(rl_forced_update_display);
}

// readline still has the old size when it clears the line, so it clears the rows that it has drawn.
void redrawLine()
{
    if (RL_ISSTATE(RL_STATE_COMPLETING)) {
        fitWindow();
        return;
    }
    clearLine();
    drawLine();
}

// Prints one blank less than the row has columns. If the cursor is in the first column, it stays in this row. Otherwise
// the blanks end in the next row.
void beginFreshRow()
{
    if (isatty(STDOUT_FILENO) == 0)
        return;
    adoptWindow();
    if (rl_get_termcap("ce") != nullptr)
        std::printf("%*s\r", Screen().columns - 1, "");
    else
        std::putchar('\n');
}
