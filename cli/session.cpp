#include "cli/session.h"

#include <csetjmp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include <readline/history.h>
#include <readline/readline.h>

#include "cli/completion.h"
#include "cli/executor.h"
#include "cli/guard.h"
#include "cli/output.h"
#include "cli/tokenizer.h"
#include "conf/sys_conf.h"
#include "conf/text.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

constexpr char kTimeoutFile[] = "/etc/admin-timeout.tmp";
constexpr unsigned kDefaultTimeout = 300; ///< seconds
constexpr int kInstanceClass = 3;
constexpr std::size_t kPromptSize = 256;
constexpr char kPromptMark[] = "  # ";

constinit volatile std::sig_atomic_t idleTimeExpired = 0;

/// Where a fresh line begins. An interrupt has to leave readline from any depth: a search, a half-typed key sequence.
sigjmp_buf nextLine;

/// readline catches the interrupt and passes it on, by a signal to itself, at places where it can be left. One that it
/// did not pass on came between lines and has nothing to drop.
void dropLine(int)
{
    if (!RL_ISSTATE(RL_STATE_SIGHANDLER))
        return;
    rl_crlf();
    rl_free_line_state();
    rl_cleanup_after_signal();
    rl_readline_state &= RL_STATE_INITIALIZED;
    siglongjmp(nextLine, 1);
}

/// readline may be at work on a key just now and come back to waiting without a look at the flag: so ask again.
void noteIdleTime(int)
{
    idleTimeExpired = 1;
    alarm(1);
}

/// Called by readline where it waits for a key and a signal has come in.
int handleSignals()
{
    if (idleTimeExpired != 0) {
        alarm(0);
        rl_eof_found = 1; // readline leaves the line as at the end of input
        rl_cleanup_after_signal();
        endIdleSession();
    }
    return 0;
}

void installHandlers()
{
    struct sigaction action {
    };
    sigemptyset(&action.sa_mask);
    action.sa_handler = noteIdleTime;
    sigaction(SIGALRM, &action, nullptr);
    action.sa_handler = dropLine;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGQUIT, &action, nullptr);
    rl_signal_event_hook = handleSignals;
}

/// Takes two traps off the keyboard: M-p and M-n, after which readline 8.2 may free an undo list twice, and the switch
/// to vi mode, which a return behind an escape key would be.
void unbindTraps()
{
    rl_unbind_function_in_map(rl_noninc_reverse_search, emacs_meta_keymap);
    rl_unbind_function_in_map(rl_noninc_forward_search, emacs_meta_keymap);
    rl_unbind_function_in_map(rl_vi_editing_mode, emacs_meta_keymap);
}

/// Seconds that a session may wait for a line, 0: for ever.
unsigned readIdleTimeout()
{
    FILE* file = std::fopen(DeviceFile(kTimeoutFile).path(), "re");
    if (file == nullptr)
        return kDefaultTimeout;
    char line[64];
    const bool found = std::fgets(line, sizeof line, file) != nullptr;
    std::fclose(file);
    if (!found)
        return kDefaultTimeout;
    return static_cast<unsigned>(numberFrom(line));
}

char* readLine()
{
    if (!factoryResetStarted())
        sysConfRefresh(sysConfig);
    // Copied, not formatted: a format costs as much as the rest of a short line.
    char prompt[kPromptSize];
    const std::size_t length = strnlen(sysConfig.hostname, sizeof prompt - sizeof kPromptMark);
    std::memcpy(prompt, sysConfig.hostname, length);
    std::memcpy(prompt + length, kPromptMark, sizeof kPromptMark);
    return readline(prompt);
}

void listHistory()
{
    std::fflush(stdout);
    HIST_ENTRY** entries = history_list();
    for (int i = 0; entries != nullptr && entries[i] != nullptr; ++i)
        std::fprintf(stderr, "%d: %s\r\n", i, entries[i]->line);
}

void runLine(const char* line)
{
    if (*line == '\0')
        return;
    if (std::strlen(line) > kLineLength)
        cli_printf("    Error: Input beyond the upper limit %zu.\n", kLineLength);
    if (executeLine(line) == 0)
        add_history(line);
    if (std::strcmp(line, "list") == 0)
        listHistory();
}

} // namespace

void runSession()
{
    rl_readline_name = "cli";
    rl_prefer_env_winsize = 1;
    installCompletion();
    unbindTraps();
    qln_app_init_with_instd(kInstanceClass, getpid());
    installHandlers();
    const unsigned timeout = readIdleTimeout();
    sigsetjmp(nextLine, 1);
    for (;;) {
        alarm(timeout);
        char* line = readLine();
        if (line == nullptr)
            std::exit(EXIT_FAILURE);
        alarm(0);
        idleTimeExpired = 0;
        // A terminal that pastes in brackets hands over several lines at once.
        for (char* rest = line; rest != nullptr;)
            runLine(strsep(&rest, "\n"));
        std::free(line);
    }
}
