// Random lines: the shell does not crash or leak, and answers afterwards.

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <span>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/alias.h"
#include "shell/completion.h"
#include "shell/executor.h"
#include "shell/node.h"
#include "shell/pass_through.h"
#include "tests/terminal/shell.h"

/// The allocated bytes; a function of the sanitizer, null without a sanitizer.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

namespace
{

constexpr int kLines = 10'000 / RANDOM_DIVISOR;

/// Words that end the shell, wait, or reach something outside the device.
constexpr const char* kForbiddenWords[] = {"quit",          "exit",     "reboot", "shell",
                                           "factory-reset", "led_test", "kill",   "performance"};
constexpr const char* kPipes[] = {"|", " | ", ";", " & ", "| |"};
constexpr const char* kArguments[] = {"0",          "-1",       "65536",      "99999999999999999999",
                                      "10.0.0.1",   "1.2.3.",   "disable",    "255.255.255.255",
                                      "dtls,ipsec", "on",       "wlan0",      "%s%n%d",
                                      "-a",         "\x80\xff", "WTP_NAME=x", "*?[]{}"};

/// Random lines, the same in every run.
class Lines
{
public:
    /// Any bytes but zero.
    std::string bytes()
    {
        std::string line(oneIn(4) ? below(3000) : below(80), ' ');
        for (char& c : line)
            c = anyByte();
        return line;
    }

    /// Command words, arguments, pipes, and sometimes invalid bytes.
    std::string words()
    {
        std::string line = segment();
        while (oneIn(8))
            line += pick(kPipes) + segment();
        for (const char* word : kForbiddenWords)
            if (line.find(word) != std::string::npos)
                return words();
        if (oneIn(8))
            line.insert(below(line.size() + 1), below(4), anyByte());
        return line;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }

private:
    bool oneIn(std::size_t count) { return below(count) == 0; }
    char anyByte() { return static_cast<char>(1 + below(255)); }
    std::string pick(std::span<const char* const> table) { return table[below(table.size())]; }

    std::string segment()
    {
        const cli_node* node = &cliRoot;
        std::string text;
        while (node->childCount > 0 && !oneIn(16)) {
            node = &node->children[below(static_cast<std::size_t>(node->childCount))];
            // A tool takes as long as a hundred built-in commands.
            const bool isTool = node->handler == capturePassThrough || node->handler == directPassThrough;
            if (isTool && !oneIn(20))
                return segment();
            text += std::string(oneIn(12) ? 2 : 1, ' ') + node->name;
        }
        for (std::size_t count = below(4); count > 0; --count)
            text += " " + (oneIn(20) ? std::string(below(1200), 'a') : pick(kArguments));
        return text;
    }

    std::mt19937 random_{20240229}; // NOLINT(cert-msc32-c,cert-msc51-cpp)
};

/// 0 without a sanitizer, whose figure does not contain the caches of the allocator.
std::size_t allocatedBytes()
{
    return __sanitizer_get_current_allocated_bytes != nullptr ? __sanitizer_get_current_allocated_bytes() : 0;
}

/// PATH holds only the device's tools.
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
        loadAliases();
    }

    Lines lines_;
};

} // namespace

TEST_F(Fuzz, TheExecutorAndCompletionTakeAnyLine)
{
    prepareTree(cliRoot);
    std::fflush(stdout);
    const int output = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    std::size_t candidates = 0;
    std::size_t before = 0;
    for (int i = 0; i < kLines; ++i) {
        for (std::string line : {lines_.bytes(), lines_.words()}) {
            executeLine(line.c_str());
            rl_line_buffer = line.data();
            rl_point = static_cast<int>(lines_.below(line.size() + 1));
            rl_end = static_cast<int>(line.size());
            for (; char* candidate = completionGenerator("", 0); ++candidates)
                std::free(candidate);
        }
        before = i < kLines / 2 ? allocatedBytes() : before; // libraries and tables have their final size by then
    }
    const std::size_t after = allocatedBytes();
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    EXPECT_LE(after, before + 4096);
    EXPECT_GT(candidates, 0U);
    EXPECT_EQ(outputOf([] { executeLine("show nosuch"); }), "Command is not supported.\n");
}
