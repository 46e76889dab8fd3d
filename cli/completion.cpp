#include "cli/completion.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <readline/readline.h>

#include "cli/node.h"
#include "cli/tokenizer.h"

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

/// The completion key. Behind trailing blanks it completes the word before them, and puts them back when there was
/// nothing to add.
int completeWord(int count, int key)
{
    if (rl_last_func == completeWord)
        rl_last_func = rl_complete; // a second press in a row lists the candidates
    const int cursor = rl_point;
    int wordEnd = cursor;
    while (wordEnd > 0 && rl_line_buffer[wordEnd - 1] == ' ')
        --wordEnd;
    if (wordEnd == 0 || wordEnd == cursor)
        return rl_complete(count, key);

    rl_begin_undo_group();
    rl_delete_text(wordEnd, cursor);
    rl_point = wordEnd;
    const int lineEnd = rl_end;
    const int result = rl_complete(count, key);
    if (rl_end == lineEnd)
        for (int i = wordEnd; i < cursor; ++i)
            rl_insert_text(" ");
    rl_end_undo_group();
    return result;
}

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
    rl_bind_key('\t', completeWord);
    rl_bind_key_in_map('\t', completeWord, vi_insertion_keymap);
}
