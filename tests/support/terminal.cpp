#include "tests/support/terminal.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <utmp.h>

#include <gtest/gtest.h>

#include "base/file.h"

namespace
{

constexpr std::chrono::seconds kPatience{20}; ///< for a loaded machine
constexpr int kQuiet = 40;                    ///< milliseconds without output
constexpr int kPollTime = 20;                 ///< milliseconds

[[noreturn]] void become(const Program& program)
{
    std::signal(SIGPIPE, SIG_DFL); // the parent process may ignore it
    setenv("TERM", "xterm", 1);
    for (const char* name : {"LINES", "COLUMNS", "INPUTRC"})
        unsetenv(name);
    for (const std::string& variable : program.variables)
        putenv(const_cast<char*>(variable.c_str()));
    std::vector<char*> words;
    for (const std::string& word : program.arguments)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execv(program.file.c_str(), words.data());
    _exit(127);
}

std::string withoutBlanksAtTheEnd(const std::string& text)
{
    return text.substr(0, text.find_last_not_of(" \n") + 1);
}

} // namespace

Terminal::Terminal(const Program& program) : emulator_(vterm_new(1, 1), vterm_free)
{
    vterm_set_utf8(emulator_.get(), 1);
    vterm_screen_reset(vterm_obtain_screen(emulator_.get()), 1);
    const auto answer = [](const char* bytes, std::size_t count, void* terminal) {
        static_cast<const Terminal*>(terminal)->send(std::string(bytes, count));
    };
    vterm_output_set_callback(emulator_.get(), answer, this);
    int terminal = -1;
    if (openpty(&master_, &terminal, nullptr, nullptr, nullptr) != 0 || tcgetattr(terminal, &initialModes_) != 0)
        throw std::runtime_error("no pseudo-terminal");
    resize(24, 80);
    fcntl(master_, F_SETFD, FD_CLOEXEC);
    pid_ = fork();
    if (pid_ < 0)
        throw std::runtime_error("no process for the terminal");
    if (pid_ == 0) {
        login_tty(terminal);
        become(program);
    }
    close(terminal);
}

Terminal::~Terminal()
{
    hangUp();
    if (pid_ < 0)
        return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
}

void Terminal::send(const std::string& keys) const
{
    EXPECT_TRUE(writeAll(master_, keys.data(), keys.size())) << "the terminal takes no keys";
}

bool Terminal::readMore(int milliseconds)
{
    pollfd event{master_, POLLIN, 0};
    if (poll(&event, 1, milliseconds) <= 0)
        return false;
    char bytes[4096];
    const ssize_t count = read(master_, bytes, sizeof bytes);
    hasEnded_ = count <= 0;
    if (hasEnded_)
        return false;
    shown_.append(bytes, static_cast<std::size_t>(count));
    vterm_input_write(emulator_.get(), bytes, static_cast<std::size_t>(count));
    return true;
}

void Terminal::waitUntil(const std::function<bool()>& isDone, const std::string& what)
{
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!isDone()) {
        readMore(kPollTime);
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "waited for " << what << ", row " << cursor().row << " has the cursor of:\n" << screen();
            break;
        }
    }
}

std::string Terminal::waitFor(const std::string& text)
{
    const std::size_t first = consumed_;
    waitUntil([&] { return shown_.find(text, first) != std::string::npos; }, text);
    consumed_ = std::min(shown_.find(text, first), shown_.size() - text.size()) + text.size();
    return shown_.substr(first, consumed_ - first);
}

void Terminal::waitForRow(const std::string& text)
{
    const auto isBehind = [&] {
        return cursor().col == static_cast<int>(text.size()) && row(cursor().row) == withoutBlanksAtTheEnd(text);
    };
    waitUntil([&] { return isBehind() && !readMore(kQuiet); }, text);
    consumed_ = shown_.size();
}

void Terminal::waitForScreen(const std::string& text)
{
    waitUntil([&] { return screen().find(text) != std::string::npos && !readMore(kQuiet); }, text);
    consumed_ = shown_.size();
}

void Terminal::waitForExactly(const std::string& text, VTermPos place)
{
    const auto isThere = [&] { return screen() == withoutBlanksAtTheEnd(text) && vterm_pos_cmp(cursor(), place) == 0; };
    waitUntil([&] { return isThere() && !readMore(kQuiet); },
              text + "\nwith the cursor at " + std::to_string(place.row) + ", " + std::to_string(place.col));
    consumed_ = shown_.size();
}

void Terminal::waitForEnd()
{
    waitUntil([this] { return hasEnded_; }, "the end of the output");
}

int Terminal::waitForExit()
{
    int status = -1;
    waitUntil([&] { return waitpid(pid_, &status, WNOHANG) == pid_; }, "the end of the program");
    pid_ = status == -1 ? pid_ : -1;
    while (readMore(kPollTime)) // the last output
        continue;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string Terminal::row(int number) const
{
    VTermRect row{.start_row = number, .end_row = number + 1, .start_col = 0, .end_col = 0};
    int rows = 0;
    vterm_get_size(emulator_.get(), &rows, &row.end_col);
    char text[4096];
    return withoutBlanksAtTheEnd(
        {text, vterm_screen_get_text(vterm_obtain_screen(emulator_.get()), text, sizeof text, row)});
}

std::string Terminal::screen() const
{
    int rows = 0, columns = 0;
    vterm_get_size(emulator_.get(), &rows, &columns);
    std::string text;
    for (int i = 0; i < rows; ++i)
        text += row(i) + "\n";
    return withoutBlanksAtTheEnd(text);
}

VTermPos Terminal::cursor() const
{
    VTermPos position;
    vterm_state_get_cursorpos(vterm_obtain_state(emulator_.get()), &position);
    return position;
}

void Terminal::resize(unsigned short rows, unsigned short columns) const
{
    vterm_set_size(emulator_.get(), rows, columns);
    const winsize size{.ws_row = rows, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    ioctl(master_, TIOCSWINSZ, &size);
}

void Terminal::hangUp()
{
    if (master_ >= 0)
        close(master_);
    master_ = -1;
}

bool Terminal::isAsFound() const
{
    const std::size_t pasteOn = shown_.rfind("\x1b[?2004h");
    const bool pasteIsOn = pasteOn != std::string::npos && shown_.find("\x1b[?2004l", pasteOn) == std::string::npos;
    const auto flagsOf = [](const termios& modes) {
        return std::array{modes.c_iflag, modes.c_oflag, modes.c_cflag, modes.c_lflag};
    };
    termios modes{};
    return !pasteIsOn && tcgetattr(master_, &modes) == 0 && flagsOf(modes) == flagsOf(initialModes_) &&
           std::ranges::equal(modes.c_cc, initialModes_.c_cc);
}
