#include "shell/paste.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <poll.h>
#include <unistd.h>

#include <readline/readline.h>

namespace
{

constexpr char kBracketedPaste[] = "enable-bracketed-paste";
constexpr char kBegin[] = "\033[200~";
constexpr char kEnd[] = "\033[201~";

/// A pasted block. It is read to its end before its first line runs. Otherwise a tool would read the rest.
struct Block {
    char* text;
    std::size_t size;
    std::size_t length;
    char* next; ///< the line to be typed next; null: none is left
    bool isComing;
};

constinit Block block{};
constinit bool isHidden = false; ///< bracketed paste is off until the next key, because a search is running

void forgetBlock()
{
    std::free(block.text);
    block = {};
}

/// Returns false if there is no memory.
bool add(char c)
{
    if (block.length == block.size) {
        const std::size_t size = 2 * block.size + 256;
        auto* text = static_cast<char*>(std::realloc(block.text, size));
        if (text == nullptr)
            return false;
        block.text = text;
        block.size = size;
    }
    block.text[block.length++] = c;
    return true;
}

} // namespace

void bindPaste()
{
    for (const char* keymap : {"emacs-standard", "vi-insert", "vi-command"})
        rl_bind_keyseq_in_map(kBegin, pasteBlock, rl_get_keymap_by_name(keymap));
}

int pasteBlock(int, int)
{
    bool fits = true;
    std::size_t matched = 0;
    block.isComing = true;
    for (int key; kEnd[matched] != '\0' && (key = rl_read_key()) >= 0;) {
        matched = key == kEnd[matched] ? matched + 1 : key == kEnd[0];
        fits = fits && (key == '\0' || add(key == '\r' ? '\n' : static_cast<char>(key)));
    }
    const bool isDropped = !block.isComing;
    if (isDropped)
        return 0;
    block.isComing = false;
    block.length -= fits ? matched : 0;
    if (!fits || !add('\0')) {
        forgetBlock();
        return rl_ding();
    }
    block.next = block.text;
    return typePastedLine();
}

int typePastedLine()
{
    if (block.next == nullptr)
        return 0;
    rl_insert_text(strsep(&block.next, "\n"));
    rl_redisplay();
    if (block.next != nullptr)
        rl_execute_next(RETURN);
    else
        forgetBlock();
    return 0;
}

bool pasteIsBracketed()
{
    return std::strcmp(rl_variable_value(kBracketedPaste), "on") == 0;
}

void hidePasteFromSearch()
{
    isHidden = RL_ISSTATE(RL_STATE_ISEARCH) && pasteIsBracketed();
    if (isHidden)
        rl_variable_bind(kBracketedPaste, "off");
}

void showPasteAgain()
{
    if (isHidden)
        rl_variable_bind(kBracketedPaste, "on");
    isHidden = false;
}

bool pasteGoesOn()
{
    return block.next != nullptr;
}

void dropPaste(const sigset_t& mask)
{
    constexpr timespec kPause{.tv_sec = 1, .tv_nsec = 0};
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    char keys[256];
    // Drop keys until none comes for a second. The closing bracket may be missing, if the interrupt has flushed it.
    while (block.isComing && ppoll(&input, 1, &kPause, &mask) > 0 && read(input.fd, keys, sizeof keys) > 0)
        continue;
    forgetBlock();
}
