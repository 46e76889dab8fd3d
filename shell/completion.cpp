#include "shell/completion.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>

#include <readline/readline.h>

#include "shell/executor.h"
#include "shell/node.h"
#include "shell/pass_through.h"
#include "shell/tokenizer.h"

namespace
{

constexpr std::size_t kCandidateSize = 255;

constinit std::int32_t candidateIndex = 0;
constinit const char* firstCandidate = nullptr; ///< the first word that the last completion offered
constinit bool candidatesDiffer = false;

/// Whether the last complete word selects no node, so it is an argument of `node`.
bool lastWordIsArgument(const cli_node* node)
{
    return tokenStore.argc > 0 && node == findNode(tokenStore.argc - 1, tokenStore.tokens);
}

/// The text before the cursor. If it has several lines, only the last one.
std::string_view typedText()
{
    std::string_view line(rl_line_buffer, static_cast<std::size_t>(rl_point));
    line.remove_prefix(line.rfind('\n') + 1);
    return line;
}

/// The node whose children completion offers. Returns null if the last complete word is an argument, or if the line has
/// an error.
const cli_node* offeringNode()
{
    if (parseLine(typedText(), ParseMode::kComplete) != ParseResult::kEnd) {
        rl_on_new_line();
        return nullptr;
    }
    const cli_node* node = findNode(tokenStore.argc, tokenStore.tokens);
    return lastWordIsArgument(node) ? nullptr : node;
}

/// Moves the cursor below the line that is being typed.
void beginRows()
{
    rl_point = rl_end;
    rl_redisplay();
    rl_crlf();
}

/// Lists the visible children of `node` whose names begin with `partial`. After a pipe symbol, lists only tools.
/// Returns whether it listed any.
bool listChildren(const cli_node& node, std::string_view partial, bool behindPipe)
{
    bool found = false;
    for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount))) {
        if (child.visibility == kHidden || !std::string_view(child.name).starts_with(partial) ||
            (behindPipe && !isTool(child)))
            continue;
        if (!found)
            beginRows();
        printNode(child);
        found = true;
    }
    return found;
}

/// Lists the words that can follow the words of a segment. Returns whether there was one.
bool listFollowers(std::string_view segment, bool behindPipe)
{
    const auto isForbidden = [](char c) { return classOf(c) == CharClass::kInvalid; };
    const ParseMode mode = segment.ends_with(' ') ? ParseMode::kExecute : ParseMode::kComplete;
    if (std::ranges::any_of(segment, isForbidden) || parseLine(segment, mode) != ParseResult::kEnd)
        return false;
    const cli_node* node = findNode(tokenStore.argc, tokenStore.tokens);
    if (node == nullptr)
        return false;
    const char* partial = partialWord();
    if (!lastWordIsArgument(node) && listChildren(*node, partial != nullptr ? partial : "", behindPipe))
        return true;
    if (node->handler == nullptr || (behindPipe && !isTool(*node)))
        return false;
    beginRows();
    printNode(*node);
    return true;
}

/// Prints the list below the line. readline then draws the line again below the list.
int listCommands(int, int)
{
    const int cursor = rl_point;
    std::string_view typed = typedText();
    const std::size_t start = typed.find_last_of("|&;") + 1;          // of the last segment
    const bool behindPipe = typed.find_first_not_of(' ') + 1 < start; // a pipe symbol that begins the line is ignored
    typed.remove_prefix(start);
    if (!listFollowers(typed, behindPipe))
        return rl_ding();
    rl_point = cursor;
    rl_on_new_line();
    return 0;
}

/// Calls a completion function of readline. If there are blanks before the cursor, removes them first, so that readline
/// completes the word before them and does not insert it a second time. Puts the blanks back if the word was complete.
/// Menu completion adds a blank after each word that it offers. While it offers several words in turn, this blank
/// stays.
int completeBehindBlanks(rl_command_func_t* complete, bool isMenu, bool again, int count, int key)
{
    if (again)
        rl_last_func = complete; // readline's functions behave differently when they are called twice in a row
    const int cursor = rl_point;
    int wordEnd = cursor;
    while (wordEnd > 0 && rl_line_buffer[wordEnd - 1] == ' ')
        --wordEnd;
    if (wordEnd == 0 || wordEnd == cursor || (isMenu && again && candidatesDiffer))
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

/// The function that a key is bound to. readline compares it with the last one to notice a repeated key.
template <rl_command_func_t Complete, bool IsMenu = false>
int completeWord(int count, int key)
{
    const bool again = rl_last_func == completeWord<Complete, IsMenu>;
    return completeBehindBlanks(Complete, IsMenu, again, count, key);
}

/// Completes the word. If it is called twice in a row after a blank, the second call lists the next words instead.
int completeOrList(int count, int key)
{
    const bool again = rl_last_func == completeOrList;
    if (again && rl_point > 0 && rl_line_buffer[rl_point - 1] == ' ')
        return listCommands(count, key);
    return completeBehindBlanks(rl_complete, false, again, count, key);
}

/// In the command mode of vi the cursor stands on a character. On a blank nothing is completed, because readline would
/// type the word before it a second time.
int completeInVi(int count, int key)
{
    return rl_line_buffer[rl_point] == ' ' ? rl_ding() : rl_vi_complete(count, key);
}

struct CompletionCommand {
    const char* name; ///< in readline's configuration file
    rl_command_func_t* function;
};

constexpr CompletionCommand kCommands[] = {
    {"complete", completeOrList},
    {"possible-completions", completeWord<rl_possible_completions>},
    {"insert-completions", completeWord<rl_insert_completions>},
    {"menu-complete", completeWord<rl_menu_complete, true>},
    {"menu-complete-backward", completeWord<rl_backward_menu_complete, true>},
    {"old-menu-complete", completeWord<rl_old_menu_complete, true>},
    {"delete-char-or-list", completeWord<rl_delete_or_show_completions>},
    {"vi-complete", completeInVi},
    {"list-commands", listCommands},
};

} // namespace

char* completionGenerator(const char*, int)
{
    if (candidateIndex == 0) {
        firstCandidate = nullptr;
        candidatesDiffer = false;
    }
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
        // An alias may have the same name as a command. Compare the names, so that such a pair counts as one word.
        if (firstCandidate == nullptr)
            firstCandidate = child.name;
        candidatesDiffer = candidatesDiffer || std::strcmp(child.name, firstCandidate) != 0;
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
    // If several functions have the same name, readline's configuration file binds the one that was added first.
    // readline adds its own functions later, so these take precedence.
    for (const CompletionCommand& row : kCommands)
        rl_add_funmap_entry(row.name, row.function);
    KEYMAP_ENTRY* const emacs = rl_get_keymap_by_name("emacs-standard");
    emacs['\t'].function = completeOrList;
    KEYMAP_ENTRY* const meta = rl_get_keymap_by_name("emacs-meta");
    meta[ESC].function = completeOrList;
    meta['?'].function = completeWord<rl_possible_completions>;
    meta['='].function = completeWord<rl_possible_completions>;
    meta['*'].function = completeWord<rl_insert_completions>;
    meta['h'].function = listCommands;
    KEYMAP_ENTRY* const vi = rl_get_keymap_by_name("vi-insert");
    vi['\t'].function = completeOrList;
    vi[CTRL('N')].function = completeWord<rl_menu_complete, true>;
    vi[CTRL('P')].function = completeWord<rl_backward_menu_complete, true>;
    KEYMAP_ENTRY* const viCommand = rl_get_keymap_by_name("vi-command");
    for (const unsigned char key : {'\\', '*', '='})
        viCommand[key].function = completeInVi;
}

void bindHelpKey()
{
    for (const char* keymap : {"emacs-standard", "vi-insert", "vi-command"})
        for (const char* sequence : {"\033OP", "\033[11~", "\033[[A"})
            rl_bind_keyseq_if_unbound_in_map(sequence, listCommands, rl_get_keymap_by_name(keymap));
}
