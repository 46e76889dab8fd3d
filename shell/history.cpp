#include "shell/history.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <readline/history.h>
#include <readline/readline.h>

#include "base/text.h"
#include "shell/signals.h"

namespace
{

/// Prints a line of any length, with its control bytes replaced by '?'.
void printTyped(FILE* stream, const char* line)
{
    for (std::size_t length = std::strlen(line); length > 0;) {
        char piece[256];
        const std::size_t taken = std::min(length, sizeof piece - 1);
        copyField(piece, {line, taken});
        maskControlBytes(piece);
        std::fputs(piece, stream);
        line += taken;
        length -= taken;
    }
}

} // namespace

void prepareHistory()
{
    constexpr int kHistoryLimit = 1000;
    stifle_history(kHistoryLimit);
    rl_variable_bind("revert-all-at-newline", "on");
}

void keepLine(const char* line)
{
    add_history(line);
}

void listHistory()
{
    std::fflush(stdout);
    HIST_ENTRY** entries = history_list();
    for (int i = 0; entries != nullptr && entries[i] != nullptr && !isInterrupted(); ++i) {
        std::fprintf(stderr, "%d: ", i);
        printTyped(stderr, entries[i]->line);
        std::fputs("\r\n", stderr);
    }
}
