// Targets of the shell: typed lines, aliases, completion, and keys at a terminal.

#include "tests/fuzz/fuzz.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include <readline/history.h>
#include <readline/readline.h>

#include "cli/root_table.h"
#include "conf/config_tree.h"
#include "shell/alias.h"
#include "shell/completion.h"
#include "shell/executor.h"
#include "shell/history.h"
#include "shell/line_reader.h"
#include "shell/node.h"
#include "shell/session.h"
#include "shell/tokenizer.h"

namespace
{

/// Root commands that end the process or wait for a person.
constexpr std::string_view kUnusable[] = {"quit", "exit", "reboot", "factory-reset", "shell", "led_test"};

void runLine(const std::string& line)
{
    if (parseLine(line, ParseMode::kExecute) != ParseResult::kEnd || tokenStore.tokenCount == 0 ||
        std::ranges::find(kUnusable, std::string_view(tokenStore.tokens[0])) == std::end(kUnusable))
        executeLine(line.c_str());
}

/// After any lines, `help` prints the same as before, and the history can be printed.
void runLines(std::string_view input)
{
    const auto help = [] {
        executeLine("hide-hiden");
        executeLine("help");
    };
    static const std::string atStart = [&] {
        writeFile("/etc/profile", "alias lan='ifconfig eth0'\nalias deep='lan | grep x'\nalias self='self'\n");
        loadAliases();
        return outputOf(help);
    }();
    for (const std::string& line : linesOf(input, 8)) {
        keepLine(line.c_str());
        runLine(line);
    }
    listHistory();
    clear_history();
    require(outputOf(help) == atStart, "`help` prints what it prints at the start");
}

/// Each alias of a profile is run alone and with a pipe.
void readProfile(std::string_view input)
{
    writeFile("/etc/profile", input);
    loadAliases();
    const std::span<cli_node> table(cliRoot.children, static_cast<std::size_t>(cliRoot.childCount));
    for (const cli_node& alias :
         table.subspan(rootTable.size()).first(std::min<std::size_t>(table.size() - rootTable.size(), 8))) {
        runLine(alias.name);
        runLine(alias.name + std::string(" -a| grep x"));
    }
    setRootCommands(rootTable);
    if (table.data() != rootTable.data())
        std::free(table.data());
}

/// The first byte is the place of the cursor. Each candidate is a command word.
void completeLine(std::string_view input)
{
    const unsigned place = takeByte(input);
    std::string line(input.substr(0, input.find('\0')));
    rl_line_buffer = line.data();
    rl_end = static_cast<int>(line.size());
    rl_point = std::min(static_cast<int>(place), rl_end);
    while (char* candidate = completionGenerator("", 0)) {
        const cli_node* node = findNode(tokenStore.argc, tokenStore.tokens);
        require(node != nullptr && findChild(*node, candidate) != nullptr, "a candidate is a command word", candidate);
        const char* typed = partialWord();
        require(std::string_view(candidate).starts_with(typed == nullptr ? "" : typed),
                "a candidate begins with the typed word", candidate);
        std::free(candidate);
    }
    rl_line_buffer = nullptr;
}

/// The keys that are still to be typed, and the terminal at which they are typed.
struct Keyboard {
    std::string_view keys;
    int terminal = -1;
    bool hasEnded = false; ///< the interrupt that follows the last key has been raised
};

Keyboard keyboard;

constexpr unsigned char kResize = 0x80; ///< instead of a key: the next two bytes are the new height and width
constexpr unsigned char kQuitKey = 0x1c;
constexpr char kStopKey = 0x1a; ///< left out: it would stop the fuzzer
constexpr timespec kNow{};

/// Types the next key. Keys that the terminal would turn into a signal raise the signal. After the last key, an
/// interrupt drops the line, and then the terminal hangs up.
void typeKey()
{
    while (keyboard.keys.starts_with(kStopKey))
        takeByte(keyboard.keys);
    if (keyboard.keys.empty()) {
        if (!std::exchange(keyboard.hasEnded, true))
            raise(SIGINT);
        else if (keyboard.terminal >= 0)
            close(std::exchange(keyboard.terminal, -1));
        return;
    }
    const auto key = static_cast<unsigned char>(takeByte(keyboard.keys));
    if (key == CTRL('C') || key == kQuitKey) {
        raise(key == kQuitKey ? SIGQUIT : SIGINT);
    } else if (key == kResize) {
        winsize size{};
        size.ws_row = static_cast<unsigned short>(takeByte(keyboard.keys));
        size.ws_col = static_cast<unsigned short>(takeByte(keyboard.keys));
        ioctl(keyboard.terminal, TIOCSWINSZ, &size);
        raise(SIGWINCH);
    } else {
        require(write(keyboard.terminal, &key, 1) == 1, "a key can be typed");
    }
}

/// A new terminal as the standard input. It sends no signals, because the process that it would stop is the fuzzer.
void openTerminal()
{
    keyboard.terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    require(keyboard.terminal >= 0 && grantpt(keyboard.terminal) == 0 && unlockpt(keyboard.terminal) == 0,
            "there is a terminal");
    const int input = open(ptsname(keyboard.terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios modes;
    require(tcgetattr(input, &modes) == 0, "the terminal has modes");
    modes.c_lflag &= ~static_cast<tcflag_t>(ISIG | ECHO);
    tcsetattr(input, TCSANOW, &modes);
    dup2(input, STDIN_FILENO);
    close(input);
}

void typeKeys(std::string_view input)
{
    static const int isPrepared = [] {
        prepareSession();
        return rl_variable_bind("keyseq-timeout", "1"); // milliseconds; the next key is typed later
    }();
    require(isPrepared == 0, "readline has a time limit for key sequences");
    static const LineSource source{
        .prompt = [] { return "ap  # "; }, .idleTimeout = 0, .endIdle = [] { std::abort(); }};
    openTerminal();
    rl_deprep_terminal(); // readline could not restore the terminal that has hung up
    keyboard.keys = input;
    keyboard.hasEnded = false;
    while (char* line = readLine(source)) {
        keepLine(line);
        std::free(line);
    }
    clear_history();
}

constexpr FuzzTarget kTargets[] = {
    {"lines", runLines, false},
    {"profile", readProfile, false},
    {"completion", completeLine, false},
    {"keys", typeKeys, true},
};

} // namespace

extern "C" {

int __real_ppoll(pollfd* files, nfds_t count, const timespec* limit, const sigset_t* signals);

/// Replaces the function with which the shell waits for a key. A call with a time limit, with which the shell waits for
/// the rest of a dropped paste, returns at once.
int __wrap_ppoll(pollfd* files, nfds_t count, const timespec* limit, const sigset_t* signals)
{
    const bool isKeyboard = count == 1 && files->fd == STDIN_FILENO;
    if (isKeyboard && limit == nullptr && __real_ppoll(files, count, &kNow, nullptr) == 0)
        typeKey();
    return __real_ppoll(files, count, isKeyboard && limit != nullptr ? &kNow : limit, signals);
}
}

const std::span<const FuzzTarget> kShellTargets = kTargets;
