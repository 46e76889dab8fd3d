#include "cli/session.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdio_ext.h>
#include <unistd.h>

#include <readline/history.h>

#include "base/file.h"
#include "cli/completion.h"
#include "cli/executor.h"
#include "cli/guard.h"
#include "cli/output.h"
#include "cli/tokenizer.h"
#include "conf/sys_conf.h"
#include "conf/text.h"
#include "platform/system_library.h"
#include "shell/line_reader.h"
#include "shell/signals.h"

namespace
{

constexpr char kTimeoutFile[] = "/etc/admin-timeout.tmp";
constexpr unsigned kDefaultTimeout = 300; ///< seconds
constexpr int kInstanceClass = 3;
constexpr std::size_t kPromptSize = 256;
constexpr char kPromptMark[] = "  # ";

/// Seconds that a session may wait for a line, 0: for ever.
unsigned readIdleTimeout()
{
    const int file = openPlainFile(kTimeoutFile);
    if (file < 0)
        return kDefaultTimeout;
    char line[64]{};
    const bool found = readAll(file, line, sizeof line - 1) > 0;
    close(file);
    return found ? static_cast<unsigned>(numberFrom(line)) : kDefaultTimeout;
}

/// Copied, not formatted: a format costs as much as the rest of a short line.
const char* nextPrompt()
{
    static char prompt[kPromptSize];
    if (!factoryResetStarted())
        sysConfRefresh(sysConfig);
    const std::size_t length = strnlen(sysConfig.hostname, sizeof prompt - sizeof kPromptMark);
    std::memcpy(prompt, sysConfig.hostname, length);
    std::memcpy(prompt + length, kPromptMark, sizeof kPromptMark);
    return prompt;
}

void listHistory()
{
    std::fflush(stdout);
    HIST_ENTRY** entries = history_list();
    for (int i = 0; entries != nullptr && entries[i] != nullptr; ++i)
        std::fprintf(stderr, "%d: %s\r\n", i, entries[i]->line);
}

/// What an interrupted line had still to say is dropped. Its echo stays on the screen, and the prompt goes below it.
void endInterruptedLine()
{
    if (!isInterrupted())
        return;
    forgetInterrupt();
    __fpurge(stdout);
    beginFreshRow();
}

void runLine(const char* line)
{
    if (*line == '\0')
        return;
    if (std::strlen(line) > kLineLength)
        cli_printf("    Error: Input beyond the upper limit %zu.\n", kLineLength);
    if (executeLine(line) == 0)
        keepLine(line);
    if (std::strcmp(line, "list") == 0)
        listHistory();
    endInterruptedLine();
}

} // namespace

void runSession()
{
    prepareLineReader();
    installCompletion();
    qln_app_init_with_instd(kInstanceClass, getpid());
    const LineSource source{.prompt = nextPrompt, .idleTimeout = readIdleTimeout(), .endIdle = endIdleSession};
    for (;;) {
        char* line = readLine(source);
        if (line == nullptr)
            std::exit(EXIT_FAILURE);
        // A terminal that pastes in brackets hands over several lines at once.
        for (char* rest = line; rest != nullptr;)
            runLine(strsep(&rest, "\n"));
        std::free(line);
    }
}
