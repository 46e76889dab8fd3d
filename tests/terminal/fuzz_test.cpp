// Random lines, to the executor and to a session: nothing breaks, and the shell still answers.

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <malloc.h>
#include <random>
#include <span>
#include <string_view>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/alias.h"
#include "shell/completion.h"
#include "shell/executor.h"
#include "shell/node.h"
#include "shell/pipe.h"
#include "tests/terminal/shell.h"

/// The sanitizer's own count, when there is a sanitizer.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

namespace
{

constexpr int kLines = 10'000;

/// Words that end the shell, wait, or act outside the device.
constexpr std::string_view kForbiddenWords[] = {"quit",          "exit",     "reboot", "shell",
                                                "factory-reset", "led_test", "kill",   "performance"};

constexpr std::string_view kPipes[] = {"|", " | ", ";", " & ", "| |"};
constexpr std::string_view kArguments[] = {
    "0",        "1",          "-1",      "65536",           "99999999999999999999",
    "10.0.0.1", "1.2.3.",     "disable", "255.255.255.255", "dtls,ipsec",
    "help",     "on",         "wlan0",   "%s%n%d",          "-a",
    "\x80\xff", "WTP_NAME=x", "*?[]{}"};

/// Random lines, the same ones on every run.
class Lines
{
public:
    explicit Lines(bool withTools = true) : withTools_(withTools) {}

    /// Any bytes but zero.
    std::string bytes()
    {
        std::string line(oneIn(4) ? below(3000) : below(80), ' ');
        for (char& c : line)
            c = anyByte();
        return line;
    }

    /// Paths through the tree, arguments, pipes, and now and then bytes that do not belong there.
    std::string words()
    {
        std::string line = segment();
        while (oneIn(8))
            line += pick(kPipes) + segment();
        for (const std::string_view word : kForbiddenWords)
            if (line.find(word) != std::string::npos)
                return words();
        if (oneIn(8))
            line.insert(below(line.size() + 1), below(4), anyByte());
        return line;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

private:
    char anyByte() { return static_cast<char>(1 + below(255)); }
    std::string pick(std::span<const std::string_view> table) { return std::string(table[below(table.size())]); }

    std::string segment()
    {
        const cli_node* node = &cliRoot;
        std::string text;
        while (node->childCount > 0 && !oneIn(16)) {
            node = &node->children[below(static_cast<std::size_t>(node->childCount))];
            // A tool costs as much as a hundred built-in commands.
            const bool isTool = node->handler == capturePassThrough || node->handler == directPassThrough;
            if (isTool && !(withTools_ && oneIn(20)))
                return segment();
            text += std::string(oneIn(12) ? 2 : 1, ' ') + node->name;
        }
        for (std::size_t count = below(4); count > 0; --count)
            text += " " + (oneIn(20) ? std::string(below(1200), 'a') : pick(kArguments));
        return text;
    }

    bool withTools_;
    std::mt19937 random_{20240229}; // NOLINT(cert-msc32-c,cert-msc51-cpp)
};

/// Standard input is empty and standard output goes nowhere meanwhile.
void quietly(const std::function<void()>& action)
{
    std::fflush(stdout);
    const int output = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    action();
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    close(output);
}

/// The tree is prepared; the system shell finds the device's tools and no others.
class Fuzz : public ShellTest
{
protected:
    Fuzz()
    {
        for (const char* tool : {"cat", "grep"})
            plantTool(tool, "exit 0");
        setenv("PATH", path("/bin").c_str(), 1);
        std::filesystem::create_directory(path("/etc/rc.d"));
        plantTool("../etc/rc.d/oem_init", "exit 0");
        writeFile("/etc/profile", "alias lan='ifconfig eth0'\nalias deep='lan | grep x'\nalias self='self'\n");
        [[maybe_unused]] static const bool once = [] {
            loadAliases();
            prepareTree(cliRoot);
            return true;
        }();
    }

    Lines lines_;
};

} // namespace

TEST_F(Fuzz, TheExecutorTakesAnyLine)
{
    quietly([this] {
        for (int i = 0; i < kLines; ++i) {
            executeLine(lines_.bytes().c_str());
            executeLine(lines_.words().c_str());
        }
    });
    EXPECT_EQ(outputOf([] { executeLine("show nosuch"); }), "Command is not supported.\n");
}

TEST_F(Fuzz, CompletionTakesAnyLine)
{
    std::size_t candidates = 0;
    for (int i = 0; i < kLines; ++i) {
        std::string line = lines_.oneIn(2) ? lines_.bytes() : lines_.words();
        rl_line_buffer = line.data();
        rl_point = static_cast<int>(lines_.below(line.size() + 1));
        rl_end = static_cast<int>(line.size());
        for (; char* candidate = completionGenerator("", 0); ++candidates)
            std::free(candidate);
    }
    EXPECT_GT(candidates, 0U);
}

TEST_F(Fuzz, TheSessionTakesAnyText)
{
    constexpr char kQuote = '\x16';
    std::string script;
    for (int i = 0; i < kLines / 4; ++i) {
        for (const char c : lines_.words().substr(0, 150))
            script += std::iscntrl(static_cast<unsigned char>(c)) != 0 ? std::string{kQuote, c} : std::string{c};
        script += "\n";
    }
    const Run run = runScript(script + "quit\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.output.ends_with("# quit\nExit.\n"));
}

TEST_F(Fuzz, LinesLeaveNoMemoryBehind)
{
    Lines lines(false);
    const auto run = [&lines](int count) {
        quietly([&] {
            for (int i = 0; i < count; ++i) {
                const std::string line = lines.words();
                executeLine(line.substr(0, line.find_first_of("|;&")).c_str()); // a pipe starts a process
            }
        });
        return __sanitizer_get_current_allocated_bytes != nullptr ? __sanitizer_get_current_allocated_bytes()
                                                                  : mallinfo2().uordblks;
    };
    const std::size_t before = run(1000);
    EXPECT_LE(run(100'000), before + 4096);
}
