#include "shell/alias.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/file_lines.h"
#include "base/text.h"
#include "shell/pass_through.h"
#include "shell/tokenizer.h"

namespace
{

constexpr char kProfile[] = "/etc/profile";
constexpr char kDefinition[] = "alias ";
constexpr char kHelpPrefix[] = "alias cmd:";
constexpr std::size_t kDefinitionLength = sizeof kDefinition - 1;
constexpr std::size_t kHelpPrefixLength = sizeof kHelpPrefix - 1;

/// Fills `row` from a definition such as "alias ll='ls -l'". The last character before the line feed must be a quote,
/// which need not match the opening one. A definition without a name is refused, because it would match an empty
/// segment.
bool readDefinition(char* line, bool isWhole, cli_node& row)
{
    const std::string_view text = line;
    if (!text.starts_with(kDefinition))
        return false;
    std::size_t equals = text.find("='");
    if (equals == std::string_view::npos)
        equals = text.find("=\"");
    if (equals == std::string_view::npos || equals == kDefinitionLength)
        return false;
    const std::size_t closing = text.size() - (isWhole ? 1 : 2);
    if (closing < equals + 2 || (text[closing] != '\'' && text[closing] != '"'))
        return false;
    line[equals] = '\0';
    line[closing] = '\0';
    row = {};
    row.handler = capturePassThrough;
    copyText(row.name, line + kDefinitionLength);
    copyText(row.help, kHelpPrefix);
    copyText(std::span(row.help).subspan(kHelpPrefixLength), line + equals + 2);
    return true;
}

/// Enlarges the table to `count` rows. If `table` is null, creates a table and copies the root commands into it. If
/// there is no memory, returns null and leaves the table unchanged.
cli_node* resized(cli_node* table, std::size_t count)
{
    auto* grown = static_cast<cli_node*>(std::realloc(table, count * sizeof(cli_node)));
    if (grown != nullptr && table == nullptr)
        std::copy_n(cliRoot.children, cliRoot.childCount, grown);
    return grown;
}

} // namespace

// If the profile has lines but defines no alias, the root table is still replaced by a copy of itself. If the profile
// is empty or missing, the root table is not replaced.
void loadAliases()
{
    static constinit const cli_node* loadedTable = nullptr;
    if (cliRoot.children == loadedTable)
        return;
    FileLines profile(kProfile);
    cli_node* table = nullptr;
    auto count = static_cast<std::size_t>(cliRoot.childCount);
    for (char* line = profile.next(); line != nullptr; line = profile.next()) {
        cli_node row;
        const bool defines = readDefinition(line, profile.isWhole(), row);
        if (!defines && table != nullptr)
            continue;
        cli_node* grown = resized(table, count + (defines ? 1 : 0));
        if (grown == nullptr) {
            std::free(table);
            return;
        }
        table = grown;
        if (defines)
            table[count++] = row;
    }
    if (table == nullptr)
        return;
    setRootCommands({table, count});
    loadedTable = table;
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
