#include "shell/line_reader.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/keys.h"
#include "shell/paste.h"
#include "shell/screen.h"
#include "shell/signals.h"
#include "shell/terminal.h"

namespace
{

constexpr char kBellStyle[] = "bell-style";

enum class Outcome {
    kLine,    ///< a line was entered
    kDropped, ///< an interrupt dropped the line
    kEnd      ///< the input has ended or cannot be read
};

/// The line that is being read.
struct Reading {
    HeldSignals* signals;
    const char* prompt;
    void (*endIdle)();
    Outcome outcome;          ///< readline gets keys only while this is kLine
    rl_voidfunc_t* redisplay; ///< readline's drawing function; saved while readline must not draw a dropped line
    const char* bell;         ///< readline's bell style; saved while readline must not ring the bell
};

constinit Reading reading{};

void drawNothing() {}

/// Drops the line. If the terminal can clear a row, clears the line and shows the prompt. Prints "^C" after it. Keeps
/// readline from drawing until readline() has returned.
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

/// Resets what readline keeps when a line is dropped: the prompt that a search replaced, and the rest of a macro.
void forgetDroppedLine()
{
    rl_restore_prompt();
    rl_free_line_state();
    rl_eof_found = 0;
    rl_redisplay_function = reading.redisplay;
    rl_variable_bind(kBellStyle, reading.bell);
}

/// Prepares the terminal as readline does, with two differences. Ctrl-S cannot stop the output (IXON is off), because a
/// stopped write would block signals and the idle time; readline gets the key. read() does not wait for a key (VMIN is
/// 0), because an interrupt may flush the key that poll() has reported.
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
    rl_deprep_terminal();
    restoreTerminal();
    prepareTerminal(1);
    drawLine();
}

void handleSignals()
{
    if (takeSignal(SIGALRM)) {
        rl_eof_found = 1; // makes rl_deprep_terminal() move to a new row, as at the end of the input
        if (!pasteIsBracketed())
            rl_crlf(); // rl_deprep_terminal() moves to a new row only if it turns bracketed paste off
        rl_deprep_terminal();
        reading.endIdle();
    }
    const bool isStopped = takeSignal(SIGTSTP);
    if (isStopped) {
        rl_crlf();
        rl_deprep_terminal();
        reading.signals->stop();
    }
    const bool isContinued = takeSignal(SIGCONT);
    if (isStopped || isContinued)
        redrawAfterStop();
    if (takeSignal(SIGWINCH) && RL_ISSTATE(RL_STATE_TERMPREPPED))
        redrawLine();
    if (isInterrupted())
        dropLine();
}

/// Ends the input. The line that is being typed is not run.
void endInput()
{
    reading.outcome = Outcome::kEnd;
    dropPaste(reading.signals->outside());
}

/// Reads a key for readline. Signals are received only while this function waits, so they never interrupt readline's
/// own code.
int readKey(FILE* stream)
{
    static constexpr timespec kNow{};
    const sigset_t& outside = reading.signals->outside();
    showPasteAgain();
    while (reading.outcome == Outcome::kLine) {
        pollfd input{.fd = fileno(stream), .events = POLLIN, .revents = 0};
        // If a key is ready, the first ppoll() delivers no pending signal. The second one does, so that an interrupt is
        // handled before the key.
        if (ppoll(&input, 1, nullptr, &outside) < 0 || ppoll(nullptr, 0, &kNow, &outside) < 0) {
            handleSignals();
            continue;
        }
        unsigned char key;
        const ssize_t count = read(input.fd, &key, sizeof key);
        if (count == 1 && isIgnoredKey(key))
            continue;
        if (count == 1) {
            if (key == ESC)
                hidePasteFromSearch();
            return key;
        }
        // At the end of a file readline gets EOF, and not READERR, so it returns a last line that has no line feed.
        if (count == 0 && !RL_ISSTATE(RL_STATE_TERMPREPPED))
            return EOF;
        // A read of a terminal returns 0 bytes if an interrupt has flushed the key.
        if (count == 0 ? (input.revents & POLLHUP) != 0 : errno != EINTR && errno != EAGAIN)
            endInput();
    }
    // Answer a question about completions: readline leaks the list if it reads EOF here.
    if (RL_ISSTATE(RL_STATE_COMPLETING))
        return 'n';
    // At EOF, readline leaves a search or a half-typed key sequence and asks for the next key. READERR ends the line.
    return RL_ISSTATE(RL_STATE_READCMD) ? READERR : EOF;
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
    replaceKeys();
    rememberTerminal();
    catchSignals();
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
                   .bell = nullptr};
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
