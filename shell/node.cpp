#include "shell/node.h"

#include <cstring>

constinit cli_node cliRoot{};

void setRootCommands(std::span<cli_node> commands)
{
    cliRoot.childCount = static_cast<std::int32_t>(commands.size());
    cliRoot.children = commands.data();
}

void prepareTree(cli_node& node)
{
    for (std::int32_t i = 0; i < node.childCount; ++i) {
        cli_node& child = node.children[i];
        if (child.spare != 0) // do not write to a page that several processes share
            child.spare = 0;
        if (child.prepare != nullptr)
            child.prepare(&child, node.children);
        prepareTree(child);
    }
}

cli_node* findChild(const cli_node& node, const char* name)
{
    for (std::int32_t i = 0; i < node.childCount; ++i)
        if (node.children[i].name[0] == name[0] && std::strcmp(node.children[i].name, name) == 0)
            return &node.children[i];
    return nullptr;
}

cli_node* findNode(int argc, char** argv)
{
    cli_node* node = &cliRoot;
    for (int i = 0; i < argc; ++i) {
        cli_node* child = findChild(*node, argv[i]);
        if (child == nullptr)
            return node->handler != nullptr ? node : nullptr;
        node = child;
        if (node->childCount == 0)
            break;
    }
    return node;
}

bool isRootCommand(const char* word)
{
    return findChild(cliRoot, word) != nullptr;
}
