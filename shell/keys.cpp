#include "shell/keys.h"

#include <cstdio>
#include <initializer_list>

#include <readline/readline.h>

namespace
{

/// The function of Ctrl-S and Ctrl-Q unless the user's configuration file binds them.
int ignoreKey(int, int)
{
    return 0;
}

/// After a non-incremental search, readline 8.2 may free an undo list twice and crash. In vi mode, binds '/' and '?' to
/// incremental searches instead. Unbinds the other keys of non-incremental searches. Also unbinds ESC RETURN, because
/// it would switch to vi mode.
void replaceTraps()
{
    struct Key {
        const char* keymap;
        unsigned char key;
        rl_command_func_t* function;
    };
    static constexpr Key kKeys[] = {
        {"emacs-meta", 'p', nullptr},
        {"emacs-meta", 'n', nullptr},
        {"emacs-meta", '\n', nullptr},
        {"emacs-meta", '\r', nullptr},
        {"vi-command", '/', rl_reverse_search_history},
        {"vi-command", '?', rl_forward_search_history},
        {"vi-command", 'n', nullptr},
        {"vi-command", 'N', nullptr},
    };
    for (const Key& row : kKeys)
        rl_get_keymap_by_name(row.keymap)[row.key].function = row.function;
}

/// readline's own functions for Ctrl-S and Ctrl-Q would swallow the next key.
void ignoreFlowControl()
{
    for (const char* name : {"emacs-standard", "vi-insert", "vi-command"}) {
        KEYMAP_ENTRY* const keymap = rl_get_keymap_by_name(name);
        keymap[CTRL('S')].function = ignoreKey;
        keymap[CTRL('Q')].function = ignoreKey;
    }
}

} // namespace

void replaceKeys()
{
    replaceTraps();
    ignoreFlowControl();
}

bool isIgnoredKey(unsigned char key)
{
    return (key == CTRL('S') || key == CTRL('Q')) && rl_get_keymap()[key].function == ignoreKey &&
           RL_ISSTATE(RL_STATE_READCMD | RL_STATE_ISEARCH | RL_STATE_NSEARCH | RL_STATE_NUMERICARG | RL_STATE_VIMOTION);
}
