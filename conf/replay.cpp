#include "conf/replay.h"

#include <cstring>

#include "conf/conf_file.h"
#include "conf/config_tree.h"
#include "conf/sys_conf.h"
#include "shell/node.h"
#include "shell/output.h"

namespace
{

/// Calls the handler with three words: the node's name, the key and the value. A handler sets an item only if it gets
/// four words, so the replay changes no setting.
void replayItem(cli_node& node, char* key, char* value)
{
    cli_node* child = findChild(node, key);
    if (child == nullptr) {
        cli_printf("    Error: Can't find sub comd %s in node %s\n", key, node.name);
        return;
    }
    char* words[] = {node.name, key, value, nullptr};
    child->handler(3, words);
}

void replayLine(cli_node& node, char* line)
{
    constexpr char kFrameMark[] = "PARAMs";
    char* key;
    char* value;
    if (std::strstr(line, kFrameMark) != nullptr)
        return;
    const int result = _sysConfRead(line, &key, &value);
    if (result == 0)
        replayItem(node, key, value);
    else if (result == -1)
        cli_printf("    Error: Failed to parse conf line %s\n", line);
}

} // namespace

int _sysConfRead(char* line, char** key, char** value)
{
    if (line[0] == '#')
        return 1;
    line[std::strcspn(line, "\n")] = '\0';
    if (splitConfLine(line, key, value))
        return 0;
    cli_printf("%s: Invalid line '%s'\n", "_sysConfRead", line);
    return -1;
}

int confReplay()
{
    cli_node& systemNode = configTable[0];
    FileLines lines(kSysConfFile);
    for (char* line = lines.next(); line != nullptr; line = lines.next())
        replayLine(systemNode, line);
    if (lines.failed())
        cli_printf("    Error: Failed to open conf %s\n", kSysConfFile);
    return 0;
}
