#include "shell/line_reader.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <readline/history.h>
#include <readline/readline.h>

#include "shell/completion.h"
#include "shell/paste.h"
#include "shell/screen.h"
#include "shell/signals.h"
#include "shell/terminal.h"

namespace
{

constexpr int kHistoryLimit = 1000;
constexpr char kBellStyle[] = "bell-style";
constexpr char kBracketedPaste[] = "enable-bracketed-paste";

constexpr const char* kKeymaps[] = {"emacs-standard", "vi-insert", "vi-command"};

enum class Outcome {
    kLine,    ///< what was typed
    kDropped, ///< an interrupt took what was typed
    kEnd      ///< the input ended, or cannot be read
};

/// The line that is being read.
struct Reading {
    HeldSignals* signals;
    const char* prompt;
    void (*endIdle)();
    Outcome outcome;          ///< once it is no line, readline gets no more keys
    rl_voidfunc_t* redisplay; ///< what readline does otherwise, while it must not draw
    const char* bell;         ///< nor ring
    bool isPasteHidden;       ///< from a search, until the next key
};

constinit Reading reading{};

void drawNothing() {}

/// Shows a dropped line as an interrupted prompt, where the terminal can take back what was typed. What readline does
/// from here on to find its way out is not to be seen.
void dropLine()
{
    reading.outcome = Outcome::kDropped;
    reading.redisplay = rl_redisplay_function;
    rl_redisplay_function = drawNothing;
    if (RL_ISSTATE(RL_STATE_TERMPREPPED) && !RL_ISSTATE(RL_STATE_COMPLETING) && rl_get_termcap("ce") != nullptr) {
        clearLine();
        std::fputs(reading.prompt, stdout);
    }
    rl_echo_signal_char(SIGINT);
    rl_crlf();
    dropPaste(reading.signals->outside());
    rl_deprep_terminal();
    reading.bell = rl_variable_value(kBellStyle);
    rl_variable_bind(kBellStyle, "none");
}

/// A search that was given up has left the prompt that it replaced, and a macro its first keys.
void forgetDroppedLine()
{
    rl_restore_prompt();
    rl_free_line_state();
    rl_eof_found = 0;
    rl_redisplay_function = reading.redisplay;
    rl_variable_bind(kBellStyle, reading.bell);
}

/// readline's own way, but without what would leave the shell deaf to its idle time and to signals: stops of the output
/// from the keyboard, whose two keys are then readline's, and a read that waits for the key that an interrupt took.
void prepareTerminal(int usesMeta)
{
    rl_prep_terminal(usesMeta);
    termios modes;
    if (!RL_ISSTATE(RL_STATE_TERMPREPPED) || tcgetattr(STDIN_FILENO, &modes) != 0)
        return;
    modes.c_iflag &= ~static_cast<tcflag_t>(IXON);
    modes.c_cc[VMIN] = 0;
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

/// Sets the modes and draws the line again after the process was stopped.
void redrawAfterStop()
{
    takeSignal(SIGCONT);
    restoreTerminal();
    prepareTerminal(1);
    drawLine();
}

void handleSignals()
{
    if (takeSignal(SIGALRM)) {
        rl_eof_found = 1; // readline leaves the line as at the end of input
        if (std::strcmp(rl_variable_value(kBracketedPaste), "on") != 0)
            rl_crlf(); // which otherwise ends the brackets
        rl_deprep_terminal();
        reading.endIdle();
    }
    if (takeSignal(SIGTSTP)) {
        rl_crlf();
        rl_deprep_terminal();
        reading.signals->stop();
        redrawAfterStop();
    }
    if (takeSignal(SIGCONT)) {
        rl_deprep_terminal();
        redrawAfterStop();
    }
    if (takeSignal(SIGWINCH) && RL_ISSTATE(RL_STATE_TERMPREPPED))
        redrawLine();
    if (isInterrupted())
        dropLine();
}

/// Stands for Ctrl-S and Ctrl-Q where the user's configuration file does not bind them.
int ignoreKey(int, int)
{
    return 0;
}

/// Also in a search, which would end at a command and take any other key for text.
bool isIgnored(unsigned char key)
{
    return (key == CTRL('S') || key == CTRL('Q')) && rl_get_keymap()[key].function == ignoreKey &&
           RL_ISSTATE(RL_STATE_READCMD | RL_STATE_ISEARCH | RL_STATE_NSEARCH | RL_STATE_NUMERICARG | RL_STATE_VIMOTION);
}

/// The keys of a terminal begin with an escape; a session that types none does not pay for them.
void bindTerminalKeysOnce()
{
    static constinit bool areBound = false;
    if (areBound)
        return;
    bindHelpKey();
    for (const char* keymap : kKeymaps)
        rl_bind_keyseq_in_map("\033[200~", pasteBlock, rl_get_keymap_by_name(keymap));
    areBound = true;
}

/// A search would read a pasted block itself and show it as it came. Hides the bracket that begins it, so that the
/// search ends at its escape key and the block is read as everywhere else.
void hidePasteFromSearch()
{
    reading.isPasteHidden = RL_ISSTATE(RL_STATE_ISEARCH) && std::strcmp(rl_variable_value(kBracketedPaste), "on") == 0;
    if (reading.isPasteHidden)
        rl_variable_bind(kBracketedPaste, "off");
}

void showPasteAgain()
{
    if (reading.isPasteHidden)
        rl_variable_bind(kBracketedPaste, "on");
    reading.isPasteHidden = false;
}

/// Ends the input. The line that is being typed is not run.
void endInput()
{
    reading.outcome = Outcome::kEnd;
    dropPaste(reading.signals->outside());
}

/// readline's source of keys: signals are heard while it waits and nowhere else, so they never meet readline at work.
int readKey(FILE* stream)
{
    static constexpr timespec kNow{};
    const sigset_t& outside = reading.signals->outside();
    showPasteAgain();
    while (reading.outcome == Outcome::kLine) {
        pollfd input{.fd = fileno(stream), .events = POLLIN, .revents = 0};
        // A key that waits hides the signals that wait too; an interrupt has taken what was typed before it.
        if (ppoll(&input, 1, nullptr, &outside) < 0 || ppoll(nullptr, 0, &kNow, &outside) < 0) {
            handleSignals();
            continue;
        }
        unsigned char key;
        const ssize_t count = read(input.fd, &key, sizeof key);
        if (count == 1 && isIgnored(key))
            continue;
        if (count == 1) {
            if (key == ESC) {
                bindTerminalKeysOnce();
                hidePasteFromSearch();
            }
            return key;
        }
        // The last line of a file needs no line feed.
        if (count == 0 && !RL_ISSTATE(RL_STATE_TERMPREPPED))
            return EOF;
        // A read of a terminal returns nothing if an interrupt has flushed the key.
        if (count == 0 ? (input.revents & POLLHUP) != 0 : errno != EINTR && errno != EAGAIN)
            endInput();
    }
    // A question about completions is answered, because readline leaks them if it gives up.
    if (RL_ISSTATE(RL_STATE_COMPLETING))
        return 'n';
    // A command, a search or a half-typed key gives up at EOF, and comes back here for the next one.
    return RL_ISSTATE(RL_STATE_READCMD) ? READERR : EOF;
}

/// Replaces or unbinds keys that break readline 8.2. After a search that is not incremental it may free an undo list
/// twice; an incremental one does the same for the user. A return behind an escape key would switch to vi mode.
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

/// readline's functions for them would swallow the next key. The user's configuration file is read later.
void ignoreFlowControl()
{
    for (const char* name : kKeymaps) {
        KEYMAP_ENTRY* const keymap = rl_get_keymap_by_name(name);
        keymap[CTRL('S')].function = ignoreKey;
        keymap[CTRL('Q')].function = ignoreKey;
    }
}

} // namespace

void prepareLineReader()
{
    rl_readline_name = "cli";
    rl_prefer_env_winsize = 1;
    rl_change_environment = 0;
    rl_catch_signals = 0;
    rl_catch_sigwinch = 0;
    rl_getc_function = readKey;
    rl_prep_term_function = prepareTerminal;
    rl_startup_hook = widenScreen;
    rl_pre_input_hook = typePastedLine;
    replaceTraps();
    ignoreFlowControl();
    rememberTerminal();
    catchSignals();
}

// The history is prepared with its first line: not at the start, which every session pays.
void keepLine(const char* line)
{
    static constinit bool isPrepared = false;
    if (!isPrepared) {
        stifle_history(kHistoryLimit);
        rl_variable_bind("revert-all-at-newline", "on");
        isPrepared = true;
    }
    add_history(line);
}

char* readLine(const LineSource& source)
{
    for (;;) {
        HeldSignals signals;
        if (isInterrupted())
            dropPaste(signals.outside());
        forgetInterrupt();
        reading = {.signals = &signals,
                   .prompt = source.prompt(),
                   .endIdle = source.endIdle,
                   .outcome = Outcome::kLine,
                   .redisplay = nullptr,
                   .bell = nullptr,
                   .isPasteHidden = false};
        takeSignal(SIGALRM);
        takeSignal(SIGCONT);
        alarm(source.idleTimeout);
        adoptWindow();
        char* line = readline(reading.prompt);
        alarm(0);
        adoptWindow();
        if (reading.outcome == Outcome::kLine)
            return line;
        std::free(line);
        if (reading.outcome == Outcome::kEnd)
            return nullptr;
        forgetDroppedLine();
    }
}
