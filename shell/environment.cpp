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

/// Beginnings of the variables that are removed. BASH_FUNC_ is that of functions that bash exports; LESSSECURE is set
/// anew, because an environment may hold a variable twice.
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

/// The name in a line such as "$include ~/keys", which ends with the line; null if the line is another.
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

/// Opens a file of the login for reading, without waiting for the other end of a pipe. Null if there is none.
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

/// Whether readline can read the file, and the files that it includes, at once. A missing file is no obstacle. Files
/// may include each other, so at most `filesLeft` are looked at.
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

/// readline reads the file that INPUTRC names. If none is named, it reads the user's, or else the system's.
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

/// The terminal library reads the terminal's description below the user's folder first, and would wait for the other
/// end of a pipe. Hides the folder if the description is no plain file.
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
