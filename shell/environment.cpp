#include "shell/environment.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <string_view>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <readline/tilde.h>

#include "base/text.h"

namespace
{

/// Variables are removed if they begin with one of these texts. BASH_FUNC_ begins the functions that bash exports.
/// LESSSECURE is set again afterwards. It is removed first, because an environment may hold a variable twice, and
/// setenv() replaces only one of them.
constexpr std::string_view kRemoved[] = {
    "ENV=",      "BASH_ENV=",  "SHELLOPTS=",    "BASHOPTS=",  "PS4=",        "IFS=",
    "LESSOPEN=", "LESSCLOSE=", "GREP_OPTIONS=", "BASH_FUNC_", "LESSSECURE=",
};

constexpr const char* kSizes[] = {"COLUMNS", "LINES"};
constexpr int kLargestSize = 1000;

constexpr char kInputrc[] = "INPUTRC";
constexpr char kUserInputrc[] = "~/.inputrc";
constexpr char kSystemInputrc[] = "/etc/inputrc";

bool isRemoved(std::string_view variable)
{
    return std::any_of(std::begin(kRemoved), std::end(kRemoved),
                       [variable](std::string_view beginning) { return variable.starts_with(beginning); });
}

bool isSize(const char* text)
{
    const int number = numberFrom(text);
    return isDigits(text) && number >= 1 && number <= kLargestSize;
}

/// Returns the file name in a line such as "$include ~/keys". The name reaches to the end of the line. Returns null if
/// the line is not an $include line.
char* includedName(char* line)
{
    constexpr char kBlanks[] = " \t\r\n";
    constexpr std::string_view kInclude = "include";
    line += std::strspn(line, kBlanks);
    if (*line != '$')
        return nullptr;
    ++line;
    line += std::strspn(line, kBlanks);
    if (strncasecmp(line, kInclude.data(), kInclude.size()) != 0)
        return nullptr;
    line += kInclude.size();
    line += std::strspn(line, kBlanks);
    line[std::strcspn(line, "\n")] = '\0';
    return line;
}

/// Opens a configuration file of readline for reading. If the file is a FIFO, does not wait for a writer. Returns null
/// if the file cannot be opened.
FILE* openInputrc(const char* name)
{
    char* path = tilde_expand(name);
    const int fd = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    std::free(path);
    FILE* file = fd >= 0 ? fdopen(fd, "r") : nullptr;
    if (fd >= 0 && file == nullptr)
        close(fd);
    return file;
}

bool isSmallPlainFile(int fd)
{
    constexpr off_t kLargest = 64L * 1024L;
    struct stat status;
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kLargest;
}

/// Whether the file, and all files that it includes, are missing or small regular files, so that readline cannot block
/// on them. Files may include each other, so the function opens at most `filesLeft` files and returns false if there
/// are more.
bool isReadable(const char* name, int& filesLeft)
{
    if (--filesLeft < 0)
        return false;
    FILE* file = openInputrc(name);
    if (file == nullptr)
        return true;
    bool readable = isSmallPlainFile(fileno(file));
    char line[PATH_MAX];
    while (readable && std::fgets(line, sizeof line, file) != nullptr) {
        const bool isCut = std::strlen(line) == sizeof line - 1;
        const char* included = includedName(line);
        readable = included == nullptr || (!isCut && isReadable(included, filesLeft));
    }
    std::fclose(file);
    return readable;
}

bool isReadable(const char* name)
{
    int filesLeft = 16;
    return isReadable(name, filesLeft);
}

/// readline reads the file that INPUTRC names. If INPUTRC is not set, it reads the user's file, or the system's file if
/// the user has none. If that file could block readline, sets INPUTRC to a file that cannot.
void checkInputrc()
{
    const char* replacement = "/dev/null";
    const char* named = std::getenv(kInputrc);
    if (named != nullptr && *named != '\0') {
        if (isReadable(named))
            return;
    } else if (isReadable(kSystemInputrc)) {
        if (isReadable(kUserInputrc))
            return;
        replacement = kSystemInputrc;
    }
    setenv(kInputrc, replacement, 1);
}

/// The terminal library first looks for the description of the terminal below HOME. If that file is a FIFO, the library
/// would wait for a writer. Removes HOME from the environment if the description is not a regular file.
void checkHome()
{
    const char* home = std::getenv("HOME");
    const char* terminal = std::getenv("TERM");
    if (home == nullptr || terminal == nullptr || *terminal == '\0')
        return;
    char path[PATH_MAX];
    std::snprintf(path, sizeof path, "%s/.terminfo/%c/%s", home, *terminal, terminal);
    struct stat status;
    if (stat(path, &status) == 0 && !S_ISREG(status.st_mode))
        unsetenv("HOME");
}

} // namespace

void secureEnvironment()
{
    char** kept = environ;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        if (!isRemoved(*variable))
            *kept++ = *variable;
    if (kept != nullptr)
        *kept = nullptr;
    setenv("LESSSECURE", "1", 1);
}

void checkReadlineEnvironment()
{
    for (const char* name : kSizes)
        if (const char* text = std::getenv(name); text != nullptr && !isSize(text))
            unsetenv(name);
    checkHome();
    checkInputrc();
}
