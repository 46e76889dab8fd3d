// The entry points of libFuzzer. The argument "--target=NAME" selects what an input is given to.

#include "tests/fuzz/fuzz.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/mman.h>
#include <unistd.h>

#include "base/text.h"
#include "cli/root_table.h"
#include "shell/node.h"

namespace fs = std::filesystem;

namespace
{

std::string root;
FuzzTarget target{};

/// Tools that the shell itself runs in a command text of one segment.
constexpr const char* kOwnTools[] = {"cat",      "cp",  "cw_diag", "echo",  "/etc/rc.d/oem_init", "hostname",
                                     "ifconfig", "ip",  "iwpriv",  "pkill", "qln-set-hostname",   "reboot",
                                     "sptest",   "tftp"};

/// Redirections that the shell itself writes into a command text, without the path of the root folder.
constexpr const char* kOwnRedirections[] = {" > /tmp/cli_pipe_file; cat /tmp/cli_pipe_file",
                                            " >> /tmp/cli_pipe_file",
                                            " --no-save > /dev/null 2>&1",
                                            " 2>/dev/null",
                                            " > /dev/null",
                                            " > /tmp/cmd_output",
                                            " > /etc/admin-timeout.tmp"};

void removeAll(std::string& text, std::string_view part)
{
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
}

bool isOwnTool(std::string_view word)
{
    return std::ranges::find(kOwnTools, word) != std::end(kOwnTools);
}

/// Whether the word is the whole name of a root command or an alias.
bool isTypable(std::string_view word)
{
    const std::span<const cli_node> roots(cliRoot.children, static_cast<std::size_t>(cliRoot.childCount));
    return std::ranges::any_of(roots, [&](const cli_node& node) { return word == node.name; });
}

/// Checks the text of a command without the shell's own redirections: it has no invalid character, and each segment
/// begins with a root command. The first segment may be the shell's own; it has no blank before it.
void checkCommand(const std::string& command)
{
    std::string text = command;
    removeAll(text, root);
    for (const char* own : kOwnRedirections)
        removeAll(text, own);
    if (text.ends_with('\n'))
        text.pop_back();
    require(text.find_first_of("$`><#()\\\n") == std::string::npos, "a command has no invalid character", command);

    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find_first_of("|&;", begin), text.size());
        const std::size_t first = std::min(text.find_first_not_of(' ', begin), end);
        const std::string word = text.substr(first, std::min(text.find(' ', first), end) - first);
        require(isTypable(word) || (first == 0 && isOwnTool(word)), "a segment begins with a root command", command);
        begin = end + 1;
    }
}

/// Some messages of the shell have a carriage return before a line feed.
void checkOutput(std::string output)
{
    removeAll(output, "\r\n");
    const auto isForbidden = [](unsigned char c) { return (c < 0x20 || c == 0x7f) && c != '\n' && c != '\t'; };
    require(target.printsControlBytes || std::ranges::none_of(output, isForbidden), "no control byte is printed",
            output);
}

void removeRoot()
{
    std::error_code ignored;
    fs::remove_all(root, ignored);
}

/// Lays out an empty device in the memory of this machine, if there is a folder for it.
void enterDevice()
{
    root = (fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) / "cli_fuzz_XXXXXX";
    require(mkdtemp(root.data()) != nullptr, "there is a folder for the device");
    std::atexit(removeRoot);
    for (const char* folder : {"/cfg", "/etc", "/dev", "/proc", "/tmp", "/bin"})
        fs::create_directory(root + folder);
    setenv("CLI_SIM_ROOT", root.c_str(), 1);
    setenv("PATH", (root + "/bin").c_str(), 1);
    setenv("TERM", "xterm", 1);
    setenv("INPUTRC", "/dev/null", 1);
}

/// The standard output and what the shell prints to the stream `stderr` go to a file in memory. The standard input is
/// empty.
void takeStandardOutput()
{
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    dup2(memfd_create("output", MFD_CLOEXEC), STDOUT_FILENO);
    stderr = stdout;
}

} // namespace

void require(bool holds, const char* property, std::string_view found)
{
    if (holds)
        return;
    dprintf(STDERR_FILENO, "Not true: %s.\n%.*s\n", property, static_cast<int>(found.size()), found.data());
    removeRoot();
    std::abort();
}

std::string outputOf(const std::function<void()>& action)
{
    std::fflush(stdout);
    const off_t start = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    action();
    std::fflush(stdout);
    std::string text(static_cast<std::size_t>(lseek(STDOUT_FILENO, 0, SEEK_CUR) - start), '\0');
    require(pread(STDOUT_FILENO, text.data(), text.size(), start) == static_cast<ssize_t>(text.size()),
            "the output can be read");
    return text;
}

void writeFile(const char* devicePath, std::string_view bytes)
{
    if (bytes.empty())
        fs::remove(root + devicePath);
    else
        std::ofstream(root + devicePath, std::ios::binary) << bytes;
}

std::vector<std::string> linesOf(std::string_view input, std::size_t limit)
{
    std::vector<std::string> lines;
    while (!input.empty() && lines.size() < limit) {
        const std::size_t end = std::min(input.find('\n'), input.size());
        lines.emplace_back(input.substr(0, end)).resize(std::strlen(lines.back().c_str()));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return lines;
}

unsigned takeByte(std::string_view& input)
{
    if (input.empty())
        return 0;
    const auto byte = static_cast<unsigned char>(input.front());
    input.remove_prefix(1);
    return byte;
}

extern "C" {

/// Replaces the system shell of the device.
int __wrap_system(const char* command)
{
    checkCommand(command);
    return 0;
}

int LLVMFuzzerInitialize(const int* argc, char*** argv)
{
    constexpr std::string_view kOption = "--target=";
    for (const std::string_view argument : std::span(*argv, static_cast<std::size_t>(*argc)))
        for (const auto& targets : {kShellTargets, kConfTargets, kRecordTargets})
            for (const FuzzTarget& row : targets)
                if (argument.starts_with(kOption) && argument.substr(kOption.size()) == row.name)
                    target = row;
    require(target.run != nullptr, "--target=NAME names a target");
    enterDevice();
    takeStandardOutput();
    setRootCommands(rootTable);
    prepareTree(cliRoot);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::fflush(stdout);
    require(ftruncate(STDOUT_FILENO, 0) == 0 && lseek(STDOUT_FILENO, 0, SEEK_SET) == 0, "the output can be cleared");
    const std::string input(reinterpret_cast<const char*>(data), size);
    checkOutput(outputOf([&] { target.run(input); }));
    return 0;
}
}
