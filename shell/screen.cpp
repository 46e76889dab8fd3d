#include "shell/screen.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/terminal.h"

namespace
{

/// As readline knows it.
struct Screen {
    Screen() { rl_get_screen_size(&rows, &columns); }
    int rows = 0;
    int columns = 0;
};

} // namespace

// In a single row readline 8.2 divides by a third of the width. As it does itself for one column, a screen too narrow
// for that gets the usual width.
int widenScreen()
{
    constexpr int kNarrowest = 3;
    constexpr int kUsualWidth = 80;
    const Screen screen;
    if (screen.columns >= kNarrowest)
        return 0;
    rl_set_screen_size(screen.rows, kUsualWidth);
    return 1;
}

void adoptWindow()
{
    if (followWindow() && RL_ISSTATE(RL_STATE_INITIALIZED))
        rl_reset_screen_size();
}

// readline cannot go back over a line that is higher than the screen, which is then cleared as a whole.
void clearLine()
{
    const Screen screen;
    if ((static_cast<int>(std::strlen(rl_prompt)) + rl_end) / screen.columns < screen.rows) {
        rl_clear_visible_line();
        return;
    }
    rl_explicit_arg = 0;
    rl_clear_screen(1, 0);
}

void drawLine()
{
    adoptWindow();
    widenScreen();
    rl_forced_update_display();
}

void redrawResizedLine()
{
    if (!followWindow())
        return;
    rl_reset_screen_size();
    if (widenScreen() != 0)
        rl_forced_update_display();
    else
        rl_resize_terminal();
}

// Blanks, one fewer than a row has, end in the next row unless they began in the first column.
void beginFreshRow()
{
    if (isatty(STDOUT_FILENO) == 0)
        return;
    if (rl_get_termcap("ce") != nullptr)
        std::printf("%*s\r", Screen().columns - 1, "");
    else
        std::putchar('\n');
}
