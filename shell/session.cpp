#include "shell/session.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <readline/readline.h>

#include "shell/completion.h"
#include "shell/environment.h"
#include "shell/executor.h"
#include "shell/history.h"
#include "shell/idle_timeout.h"
#include "shell/line_reader.h"
#include "shell/output.h"
#include "shell/paste.h"
#include "shell/screen.h"
#include "shell/signals.h"
#include "shell/tokenizer.h"

namespace
{

/// This line shows the history. It is compared as a whole: `list` is no node, so it takes no words and no pipe.
constexpr char kListHistory[] = "list";

void runLine(const char* line)
{
    if (*line == '\0')
        return;
    if (std::strlen(line) > kLineLength)
        cli_printf("    Error: Input beyond the upper limit %zu.\n", kLineLength);
    const bool isList = std::strcmp(line, kListHistory) == 0;
    if (isList || executeLine(line) == 0)
        keepLine(line);
    if (isList)
        listHistory();
}

} // namespace

void prepareSession()
{
    checkReadlineEnvironment();
    prepareLineReader();
    installCompletion();
    // Make readline read its configuration file now. Signals are not blocked yet, so a signal can still end the
    // process.
    rl_initialize();
    bindHelpKey();
    bindPaste();
    prepareHistory();
}

void runSession(const SessionHost& host)
{
    const LineSource source{.prompt = host.prompt, .idleTimeout = readIdleTimeout(), .endIdle = host.endIdle};
    for (;;) {
        char* line = readLine(source);
        if (line == nullptr)
            std::exit(EXIT_FAILURE);
        InterruptWatch watch(pasteGoesOn());
        // readline returns a line feed that was quoted with Ctrl-V. It ends a line like any other.
        for (char* rest = line; rest != nullptr && !isInterrupted();)
            runLine(strsep(&rest, "\n"));
        if (watch.end())
            noteInterrupt();
        if (isInterrupted())
            beginFreshRow(); // below the echo of the key
        std::free(line);
    }
}
