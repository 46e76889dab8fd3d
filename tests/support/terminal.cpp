#include "tests/support/terminal.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <utility>
#include <utmp.h>

#include <gtest/gtest.h>

namespace
{

constexpr double kPatience = 20; ///< seconds, for a loaded machine
constexpr int kPollTime = 20;    ///< milliseconds

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

[[noreturn]] void become(const Program& program)
{
    setenv("TERM", "dumb", 1);
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

} // namespace

Terminal::Terminal(const Program& program)
{
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 200;
    int terminal = -1;
    if (openpty(&master_, &terminal, nullptr, nullptr, &size) != 0 || tcgetattr(terminal, &initialModes_) != 0)
        throw std::runtime_error("no pseudo-terminal");
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
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

void Terminal::send(const std::string& keys) const
{
    std::size_t sent = 0;
    while (sent < keys.size()) {
        const ssize_t count = write(master_, keys.data() + sent, keys.size() - sent);
        if (count < 0 && errno != EINTR) {
            ADD_FAILURE() << "the terminal takes no keys";
            return;
        }
        sent += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

bool Terminal::readMore(double deadline)
{
    pollfd event{master_, POLLIN, 0};
    while (master_ >= 0 && now() < deadline) {
        if (poll(&event, 1, kPollTime) <= 0)
            continue;
        char bytes[4096];
        const ssize_t count = read(master_, bytes, sizeof bytes);
        if (count > 0)
            unread_.append(bytes, static_cast<std::size_t>(count));
        return count > 0;
    }
    return false;
}

std::string Terminal::waitFor(const std::string& text)
{
    const double deadline = now() + kPatience;
    std::size_t place = unread_.find(text);
    while (place == std::string::npos && readMore(deadline))
        place = unread_.find(text);
    if (place == std::string::npos)
        ADD_FAILURE() << "waited for \"" << text << "\", the terminal shows:\n" << unread_;
    std::string shown = unread_.substr(0, place == std::string::npos ? place : place + text.size());
    unread_.erase(0, shown.size());
    return shown;
}

std::string Terminal::readToEnd()
{
    const double deadline = now() + kPatience;
    while (readMore(deadline))
        continue;
    EXPECT_LT(now(), deadline) << "the terminal is still held, and shows:\n" << unread_;
    return std::exchange(unread_, {});
}

int Terminal::waitForExit()
{
    for (const double deadline = now() + kPatience; pid_ > 0 && now() < deadline;) {
        if (waitpid(pid_, &status_, WNOHANG) == pid_)
            pid_ = -1;
        else if (master_ < 0 || !readMore(now() + kPollTime / 1000.0))
            usleep(1000);
    }
    EXPECT_EQ(pid_, -1) << "the program has not ended, the terminal shows:\n" << unread_;
    return status_;
}

void Terminal::resize(unsigned short rows, unsigned short columns) const
{
    winsize size{};
    size.ws_row = rows;
    size.ws_col = columns;
    ioctl(master_, TIOCSWINSZ, &size);
}

void Terminal::hangUp()
{
    if (master_ >= 0)
        close(master_);
    master_ = -1;
}

bool Terminal::modesAreInitial() const
{
    termios modes{};
    if (tcgetattr(master_, &modes) != 0)
        return false;
    return modes.c_iflag == initialModes_.c_iflag && modes.c_oflag == initialModes_.c_oflag &&
           modes.c_cflag == initialModes_.c_cflag && modes.c_lflag == initialModes_.c_lflag &&
           std::memcmp(modes.c_cc, initialModes_.c_cc, sizeof modes.c_cc) == 0;
}
