// Resized windows: the screen shows the earlier output, the prompt and the line, and nothing else.

#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>

#include "tests/terminal/shell.h"

namespace
{

struct Size {
    unsigned short rows;
    unsigned short columns;
};

using Screen = ShellTest;

const std::string kText = "nosuch abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// Waits until the window shows the rows of `above` and, below them, `line`, which is broken into rows. If they do not
/// all fit, the window shows the last rows. `cursor` is the position of the cursor in `line`.
void waitForLine(Terminal& terminal, Size window, const std::vector<std::string>& above, const std::string& line,
                 std::size_t cursor)
{
    std::vector<std::string> rows = above;
    for (std::size_t i = 0; i < line.size(); i += window.columns)
        rows.push_back(line.substr(i, window.columns));
    const std::size_t hidden = rows.size() > window.rows ? rows.size() - window.rows : 0;
    std::string text;
    for (std::size_t i = hidden; i < rows.size(); ++i)
        text += rows[i].substr(0, std::min<std::size_t>(rows[i].find_last_not_of(' ') + 1, window.columns)) + "\n";
    const std::size_t row = above.size() + cursor / window.columns - hidden;
    terminal.waitForExactly(text, {static_cast<int>(row), static_cast<int>(cursor % window.columns)});
}

/// The number in a variable of the environment, or `standard`.
unsigned numberIn(const char* variable, unsigned standard)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? standard : static_cast<unsigned>(std::atoi(text));
}

/// A typed line. A word is letters and digits.
struct Line {
    std::string text;
    std::size_t cursor = 0;

    [[nodiscard]] std::size_t wordBegin() const
    {
        std::size_t at = cursor;
        while (at > 0 && std::isalnum(text[at - 1]) == 0)
            --at;
        while (at > 0 && std::isalnum(text[at - 1]) != 0)
            --at;
        return at;
    }
    [[nodiscard]] std::size_t wordEnd() const
    {
        std::size_t at = cursor;
        while (at < text.size() && std::isalnum(text[at]) == 0)
            ++at;
        while (at < text.size() && std::isalnum(text[at]) != 0)
            ++at;
        return at;
    }
    void erase(std::size_t begin, std::size_t end)
    {
        text.erase(begin, end - begin);
        cursor = begin;
    }
};

constexpr struct {
    const char* keys;
    void (*change)(Line& line);
} kEditingKeys[] = {
    {"\x1b[D", [](Line& line) { line.cursor -= line.cursor > 0 ? 1 : 0; }},
    {"\x1b[C", [](Line& line) { line.cursor += line.cursor < line.text.size() ? 1 : 0; }},
    {"\x1b[H", [](Line& line) { line.cursor = 0; }},
    {"\x1b[F", [](Line& line) { line.cursor = line.text.size(); }},
    {"\033b", [](Line& line) { line.cursor = line.wordBegin(); }},
    {"\033f", [](Line& line) { line.cursor = line.wordEnd(); }},
    {"\033d", [](Line& line) { line.erase(line.cursor, line.wordEnd()); }},
    {"\x1b\x7f", [](Line& line) { line.erase(line.wordBegin(), line.cursor); }},
    {"\x7f", [](Line& line) { line.erase(line.cursor - (line.cursor > 0 ? 1 : 0), line.cursor); }},
    {"\x1b[3~", [](Line& line) { line.text.erase(line.cursor, 1); }},
    {"\013", [](Line& line) { line.text.erase(line.cursor); }},
    {"\025", [](Line& line) { line.erase(0, line.cursor); }},
};

} // namespace

TEST_F(Screen, ShowsTheLineInAWindowOfAnySize)
{
    plantTool("ping", "printf '\\033[H\\033[2Jabove\\n'");
    const std::string prompt = kPrompt;
    const struct {
        std::string keys;
        std::string prompt; ///< the prompt, or a message in its place
        std::size_t cursor; ///< position in the text
        std::string end;    ///< keys that are typed at last
        std::string added;  ///< the text that they add, before the cursor
    } states[] = {
        {"\026", prompt, kText.size(), "q", "q"},
        {"\022mno", "(reverse-i-search)`mno': ", kText.find("mno"), "\005", ""},
        {"\x1b"
         "12",
         "(arg: 12) ", kText.size(), "q", "qqqqqqqqqqqq"},
    };
    constexpr Size kSizes[] = {{24, 40}, {24, 5}, {24, 132}, {24, 20}, {24, 5}};
    for (const auto& state : states) {
        SCOPED_TRACE(state.prompt + std::to_string(state.cursor));
        Session session;
        session.ask("ping");
        session.send(kText + state.keys);
        waitForLine(session, {24, 80}, {"above"}, state.prompt + kText, state.prompt.size() + state.cursor);
        for (const Size size : kSizes) {
            session.resize(size.rows, size.columns);
            waitForLine(session, size, {"above"}, state.prompt + kText, state.prompt.size() + state.cursor);
        }
        session.send(state.end);
        const std::string line = prompt + kText + state.added;
        waitForLine(session, {24, 5}, {"above"}, line, line.size());
    }
}

/// Random keys and sizes. The expected line follows from the keys. Each resize comes before the keys or inside an
/// escape sequence. SCREEN_STEPS is the number of steps, and SCREEN_SEED the seed. Without SCREEN_SEED, the seed
/// changes every 30 days.
TEST_F(Screen, ShowsTheLineAfterAnyKeysInAnySize)
{
    plantTool("ping", "printf '\\033[H\\033[2J'");
    // The line is never entered, so the idle time would end the session.
    writeFile("/etc/admin-timeout.tmp", "0\n");
    constexpr std::size_t kLongest = 60; // a window of 24 rows and 4 columns holds the prompt and 90 characters
    const unsigned seed = numberIn("SCREEN_SEED", static_cast<unsigned>(std::time(nullptr) / (30L * 24 * 3600)));
    const int steps = static_cast<int>(numberIn("SCREEN_STEPS", 150 / RANDOM_DIVISOR));
    std::mt19937 random(seed);
    Session session;
    session.ask("ping");
    Line line;
    int step = 0;
    for (; step < steps && !HasFailure(); ++step) {
        std::string typed;
        if (line.text.size() < kLongest && random() % 2 == 0) {
            for (auto length = 1 + random() % 20; length > 0; --length)
                typed += "abcdefghijklmnopqrstuvwxyz  -"[random() % 29];
            line.text.insert(line.cursor, typed);
            line.cursor += typed.size();
        } else {
            const auto& [keys, change] = kEditingKeys[random() % std::size(kEditingKeys)];
            typed = keys;
            change(line);
        }
        const Size window{24, static_cast<unsigned short>(4 + random() % 197)};
        const std::size_t sent = typed[0] == '\x1b' ? random() % typed.size() : 0; // no output comes before the resize
        session.send(typed.substr(0, sent));
        session.resize(window.rows, window.columns);
        session.send(typed.substr(sent));
        SCOPED_TRACE("SCREEN_SEED=" + std::to_string(seed) + ", step " + std::to_string(step));
        waitForLine(session, window, {}, kPrompt + line.text, std::string(kPrompt).size() + line.cursor);
    }
    std::printf("%d screens show the line\n", step);
}

TEST_F(Screen, ShowsTheLineInAWindowThatIsTooSmallForIt)
{
    const std::string line = kPrompt + kText;
    Session session;
    session.send(kText);
    for (const Size size : {Size{6, 10}, Size{24, 40}, Size{6, 10}, Size{24, 80}}) {
        session.resize(size.rows, size.columns);
        waitForLine(session, size, {}, line, line.size());
    }
    session.resize(1, 40);
    session.waitForRow("<" + kText.substr(kText.find('B')));
    session.resize(1, 2);
    session.waitForScreen("Z");
    session.resize(24, 80);
    session.endLine("\r");
}

/// The size changes and changes back, so the process gets a signal but finds the old size.
TEST_F(Screen, IsDrawnAnewWhenTheSizeIsTheSame)
{
    plantTool("ping", "echo \"[$COLUMNS $LINES]\"");
    const struct {
        std::vector<std::string> login;
        std::string size; ///< the size in the environment of tools
    } cases[] = {{{}, "[ ]"}, {{"COLUMNS=120", "LINES=30"}, "[120 30]"}};
    for (const auto& example : cases) {
        Session session(shell(example.login));
        kill(session.pid(), SIGWINCH);
        session.waitFor(kPrompt);
        session.send("ping\r");
        session.waitForScreen("\n" + example.size + "\n");
    }
}

TEST_F(Screen, WaitsForTheAnswerToAQuestion)
{
    std::string profile;
    for (int i = 0; i < 120; ++i)
        profile += "alias lan" + std::to_string(i) + "='ifconfig'\n";
    writeFile("/etc/profile", profile);
    const std::string line = kPrompt + ("lan" + kText);
    constexpr const char* kQuestion = "Display all 120 possibilities? (y or n)";
    Session session;
    session.send(kText + "\001lan\t\t");
    session.waitForScreen(kQuestion);
    session.resize(24, 40);
    session.send("n");
    waitForLine(session, {24, 40}, {line.substr(0, 40), kQuestion}, line, 9);
    session.resize(24, 44);
    session.waitForScreen("ABCDEFG");
    session.send("\t\ty");
    session.waitForScreen("--More--");
}

TEST_F(Screen, KnowsAWindowThatIsResizedUnderATool)
{
    plantTool("ping", "printf \"[$COLUMNS $LINES]\"; read -r line");
    const struct {
        std::vector<std::string> login;
        std::string before;
        std::string after;
        Size size;
    } cases[] = {
        {{}, "[ ]", "[ ]", {24, 40}},
        {{}, "[ ]", "[ ]", {24, 132}},
        {{"COLUMNS=80", "LINES=24"}, "[80 24]", "[40 10]", {10, 40}},
    };
    for (const auto& example : cases) {
        Session session(shell(example.login));
        session.send("ping\r");
        session.waitForScreen(example.before);
        session.resize(example.size.rows, example.size.columns);
        session.send(kControlC);
        const std::vector<std::string> above{"ap  # ping", example.before + "^C"};
        waitForLine(session, example.size, above, kPrompt, 6);
        session.send(kText);
        waitForLine(session, example.size, above, kPrompt + kText, 6 + kText.size());
        session.send("\025ping\r");
        session.waitForScreen("\n" + example.after);
    }
}

TEST_F(Screen, IsNotDrawnAnewWithoutATerminalForTheKeys)
{
    Terminal terminal({"/bin/sh", {"sh", "-c", "(read -r line; echo nosuch) | \"$0\"", CLI_PROGRAM}, {}});
    terminal.waitForRow(kPrompt);
    terminal.resize(24, 40);
    terminal.send("\r");
    EXPECT_EQ(terminal.waitFor("nosuch").find(kPrompt), std::string::npos);
}
