#include "shell/alias.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/file.h"
#include "shell/pipe.h"
#include "shell/tokenizer.h"

namespace
{

constexpr char kProfile[] = "/etc/profile";
constexpr char kDefinition[] = "alias ";
constexpr char kHelpPrefix[] = "alias cmd:";
constexpr std::size_t kDefinitionLength = sizeof kDefinition - 1;
constexpr std::size_t kHelpPrefixLength = sizeof kHelpPrefix - 1;
constexpr std::size_t kProfileLineSize = 256;

FILE* openProfile()
{
    const int file = openPlainFile(kProfile);
    return file < 0 ? nullptr : fdopen(file, "r");
}

bool isDefinition(const char* line)
{
    return std::strncmp(line, kDefinition, kDefinitionLength) == 0;
}

/// The number of lines that may define an alias, -1 when there is no line at all.
int countDefinitions(FILE* profile)
{
    char line[kProfileLineSize];
    int count = -1;
    while (std::fgets(line, sizeof line, profile) != nullptr)
        count = (count < 0 ? 0 : count) + (isDefinition(line) ? 1 : 0);
    return count;
}

/// Fills `row` from a definition such as "alias ll='ls -l'" and its line feed. The closing quote must be the last
/// character of the line; it need not match the opening one. A row without a name would stand for an empty segment.
bool readDefinition(char* line, cli_node& row)
{
    if (!isDefinition(line))
        return false;
    char* equals = std::strstr(line, "='");
    if (equals == nullptr)
        equals = std::strstr(line, "=\"");
    if (equals == nullptr || equals == line + kDefinitionLength)
        return false;
    char* text = equals + 2;
    char* closing = line + std::strlen(line) - 2;
    if (closing < text || (*closing != '\'' && *closing != '"'))
        return false;
    *equals = '\0';
    *closing = '\0';
    row = cli_node{};
    std::snprintf(row.name, sizeof row.name, "%.*s", static_cast<int>(sizeof row.name) - 1, line + kDefinitionLength);
    std::snprintf(row.help, sizeof row.help, "%s%.*s", kHelpPrefix,
                  static_cast<int>(sizeof row.help - kHelpPrefixLength) - 1, text);
    row.handler = capturePassThrough;
    return true;
}

/// A table with the root commands and room for more, or null.
cli_node* allocateTable(std::size_t room)
{
    const auto count = static_cast<std::size_t>(cliRoot.childCount);
    auto* table = static_cast<cli_node*>(std::malloc((count + room) * sizeof(cli_node)));
    if (table != nullptr)
        std::copy_n(cliRoot.children, count, table);
    return table;
}

/// Fills at most `room` rows.
int readDefinitions(FILE* profile, cli_node* rows, int room)
{
    char line[kProfileLineSize];
    int count = 0;
    while (count < room && std::fgets(line, sizeof line, profile) != nullptr)
        if (readDefinition(line, rows[count]))
            ++count;
    return count;
}

} // namespace

void loadAliases()
{
    static constinit const cli_node* loadedTable = nullptr;
    if (cliRoot.children == loadedTable)
        return;
    FILE* profile = openProfile();
    if (profile == nullptr)
        return;
    const int room = countDefinitions(profile);
    auto* table = room < 0 ? nullptr : allocateTable(static_cast<std::size_t>(room));
    if (table != nullptr) {
        std::rewind(profile);
        cliRoot.childCount += readDefinitions(profile, table + cliRoot.childCount, room);
        cliRoot.children = table;
        loadedTable = table;
    }
    std::fclose(profile);
}

bool isAlias(const cli_node& node)
{
    return std::strncmp(node.help, kHelpPrefix, kHelpPrefixLength) == 0;
}

void expandAlias(const cli_node& node, std::span<char> text)
{
    const int length = std::snprintf(text.data(), text.size(), "%s", node.help + kHelpPrefixLength);
    if (tokenStore.pipeIndex != 0 && static_cast<std::size_t>(length) < text.size())
        appendTokens(text.subspan(static_cast<std::size_t>(length)), tokenStore.pipeIndex, tokenStore.argc);
}
