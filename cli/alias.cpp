#include "cli/alias.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "cli/pass_through.h"
#include "cli/root_table.h"
#include "cli/tokenizer.h"
#include "platform/device_file.h"

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
    return std::fopen(DeviceFile(kProfile).path(), "re");
}

int countLines(FILE* profile)
{
    char line[kProfileLineSize];
    int count = 0;
    while (std::fgets(line, sizeof line, profile) != nullptr)
        ++count;
    return count;
}

/// Fills `row` from a definition such as "alias ll='ls -l'" and its line feed. The closing quote must be the last
/// character of the line; it need not match the opening one.
bool readDefinition(char* line, cli_node& row)
{
    if (std::strncmp(line, kDefinition, kDefinitionLength) != 0)
        return false;
    char* equals = std::strstr(line, "='");
    if (equals == nullptr)
        equals = std::strstr(line, "=\"");
    if (equals == nullptr)
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
    if (cliRoot.childCount != kRootCommandCount)
        return;
    FILE* profile = openProfile();
    if (profile == nullptr)
        return;
    const int lines = countLines(profile);
    const int rows = kRootCommandCount + lines;
    auto* table =
        lines == 0 ? nullptr : static_cast<cli_node*>(std::calloc(static_cast<std::size_t>(rows), sizeof(cli_node)));
    if (table != nullptr) {
        std::memcpy(table, rootTable, sizeof rootTable);
        std::rewind(profile);
        cliRoot.childCount += readDefinitions(profile, table + kRootCommandCount, lines);
        cliRoot.children = table;
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
