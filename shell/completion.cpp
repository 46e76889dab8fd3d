#include "shell/completion.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <readline/readline.h>

#include "shell/node.h"
#include "shell/tokenizer.h"

namespace
{

constexpr std::size_t kCandidateSize = 255;

constinit std::int32_t candidateIndex = 0;

/// The node whose children are offered. Behind a word that only is an argument nothing is offered.
const cli_node* offeringNode()
{
    const std::string_view line(rl_line_buffer, static_cast<std::size_t>(rl_point));
    if (parseLine(line, ParseMode::complete) != ParseResult::end) {
        rl_on_new_line();
        return nullptr;
    }
    const cli_node* node = findNode(tokenStore.argc, tokenStore.tokens);
    const bool lastWordIsArgument = tokenStore.argc > 0 && node == findNode(tokenStore.argc - 1, tokenStore.tokens);
    return lastWordIsArgument ? nullptr : node;
}

/// Completes as readline's function does. Behind trailing blanks it completes the word before them, and puts them back
/// when there was nothing to add: so no key repeats that word. A menu goes on behind the blank that it puts there
/// itself.
int completeBehindBlanks(rl_command_func_t* complete, bool isMenu, bool again, int count, int key)
{
    if (again)
        rl_last_func = complete; // readline does something else when a key is pressed twice
    const int cursor = rl_point;
    int wordEnd = cursor;
    while (wordEnd > 0 && rl_line_buffer[wordEnd - 1] == ' ')
        --wordEnd;
    if (wordEnd == 0 || wordEnd == cursor || (isMenu && again))
        return complete(count, key);

    rl_begin_undo_group();
    rl_delete_text(wordEnd, cursor);
    rl_point = wordEnd;
    const int lineEnd = rl_end;
    const int result = complete(count, key);
    if (rl_end == lineEnd)
        for (int i = wordEnd; i < cursor; ++i)
            rl_insert_text(" ");
    rl_end_undo_group();
    return result;
}

/// The same for a key, which knows itself by its function.
template <rl_command_func_t Complete, bool IsMenu = false>
int completeWord(int count, int key)
{
    const bool again = rl_last_func == completeWord<Complete, IsMenu>;
    return completeBehindBlanks(Complete, IsMenu, again, count, key);
}

struct CompletionCommand {
    const char* name; ///< in readline's configuration file
    rl_command_func_t* function;
};

constexpr CompletionCommand kCommands[] = {
    {"complete", completeWord<rl_complete>},
    {"possible-completions", completeWord<rl_possible_completions>},
    {"insert-completions", completeWord<rl_insert_completions>},
    {"menu-complete", completeWord<rl_menu_complete, true>},
    {"menu-complete-backward", completeWord<rl_backward_menu_complete, true>},
    {"old-menu-complete", completeWord<rl_old_menu_complete, true>},
    {"delete-char-or-list", completeWord<rl_delete_or_show_completions>},
};

} // namespace

char* completionGenerator(const char*, int)
{
    const cli_node* node = offeringNode();
    if (node == nullptr)
        return nullptr;
    const char* partial = partialWord();
    const std::size_t partialLength = partial != nullptr ? std::strlen(partial) : 0;
    while (candidateIndex < node->childCount) {
        const cli_node& child = node->children[candidateIndex++];
        if (child.visibility == kHidden ||
            std::strncmp(child.name, partial != nullptr ? partial : "", partialLength) != 0)
            continue;
        char* candidate = static_cast<char*>(std::malloc(kCandidateSize));
        if (candidate != nullptr)
            std::snprintf(candidate, kCandidateSize, "%s", child.name);
        return candidate;
    }
    candidateIndex = 0;
    return nullptr;
}

void installCompletion()
{
    rl_completion_entry_function = completionGenerator;
    rl_sort_completion_matches = 0;
    // Names that are given before readline gives its own are those that its configuration file means.
    for (const CompletionCommand& row : kCommands)
        rl_add_funmap_entry(row.name, row.function);
    KEYMAP_ENTRY* const emacs = rl_get_keymap_by_name("emacs-standard");
    emacs['\t'].function = completeWord<rl_complete>;
    KEYMAP_ENTRY* const meta = rl_get_keymap_by_name("emacs-meta");
    meta[ESC].function = completeWord<rl_complete>;
    meta['?'].function = completeWord<rl_possible_completions>;
    meta['='].function = completeWord<rl_possible_completions>;
    meta['*'].function = completeWord<rl_insert_completions>;
    KEYMAP_ENTRY* const vi = rl_get_keymap_by_name("vi-insert");
    vi['\t'].function = completeWord<rl_complete>;
    vi[CTRL('N')].function = completeWord<rl_menu_complete, true>;
    vi[CTRL('P')].function = completeWord<rl_backward_menu_complete, true>;
}
