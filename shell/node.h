// The command node: one record per command word, and the tree that the records form.

#ifndef SHELL_NODE_H
#define SHELL_NODE_H

#include <cstddef>
#include <cstdint>
#include <span>

struct cli_node;

/// A command's action. `argv` holds the words of the line, the command words included. `argc` counts the words before
/// the first pipe symbol; for a tool it counts all words and pipe symbols. If the result is 0, the line enters the
/// history. The words are valid until the next line is parsed.
using CliHandler = int (*)(int argc, char** argv);

/// Called once at start. May give `node` a handler and children, which live until the process ends. `siblings` is the
/// table that holds `node`. The result is ignored.
using CliPrepare = int (*)(cli_node* node, cli_node* siblings);

/// Whether help and completion show a node. A hidden node can be executed like any other.
inline constexpr std::int32_t kVisible = 0;
inline constexpr std::int32_t kHidden = 1;
inline constexpr std::int32_t kRootHelp = 2; ///< the root `help` node
inline constexpr std::int32_t kRevealed = 3; ///< hidden, but shown after `show-hiden`

struct cli_node {
    char name[64];  ///< the command word, matched exactly
    char help[128]; ///< one line
    CliHandler handler;
    CliPrepare prepare;
    std::int32_t childCount;
    cli_node* children; ///< `childCount` records in display order; one array may serve several parents
    std::int32_t visibility;
    std::int32_t spare; ///< zeroed by the preparation pass
};

/// Not constexpr and never defined: a constant table that calls it does not compile.
void refuseToCompile(const char* reason);

/// Copies a text into a node's field; one that does not fit does not compile.
template <std::size_t Size>
constexpr void setNodeText(char (&field)[Size], const char* text)
{
    for (std::size_t i = 0; text[i] != '\0'; ++i)
        field[i] = text[i]; // a constant expression with a write beyond the field does not compile
    if (field[Size - 1] != '\0')
        refuseToCompile("the text leaves no room for its terminator");
}

/// A table row that runs `handler`.
consteval cli_node command(const char* name, const char* help, CliHandler handler)
{
    cli_node row{};
    setNodeText(row.name, name);
    setNodeText(row.help, help);
    row.handler = handler;
    return row;
}

/// A table row with children, and with a handler of its own where one is given.
consteval cli_node group(const char* name, const char* help, std::span<cli_node> children, CliHandler handler = nullptr)
{
    cli_node row = command(name, help, handler);
    row.childCount = static_cast<std::int32_t>(children.size());
    row.children = children.data();
    return row;
}

/// The same row, left out of help and completion.
consteval cli_node hidden(cli_node row)
{
    row.visibility = kHidden;
    return row;
}

/// The same row, prepared at start by `prepare`.
consteval cli_node prepared(cli_node row, CliPrepare prepare)
{
    row.prepare = prepare;
    return row;
}

/// The root descriptor: its children are the root commands. Every lookup starts here.
extern cli_node cliRoot;

/// Makes `commands` the root commands. The array must stay valid until the process ends.
void setRootCommands(std::span<cli_node> commands);

/// Runs the prepare hooks below `node`, parents first.
void prepareTree(cli_node& node);

/// The child of `node` with exactly this name, or null.
cli_node* findChild(const cli_node& node, const char* name);

/// The node that the words select. The lookup stops at a leaf. It also stops at a node with a handler if no child has
/// the name of the next word. The remaining words are arguments. Returns null if a node without a handler has no such
/// child. If `argc` is 0, returns the root descriptor.
cli_node* findNode(int argc, char** argv);

/// Whether some root command has exactly this name.
bool isRootCommand(const char* word);

#endif
