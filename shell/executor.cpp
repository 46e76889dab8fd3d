#include "shell/executor.h"

#include <cstdio>

#include "base/text.h"
#include "shell/alias.h"
#include "shell/output.h"
#include "shell/pass_through.h"
#include "shell/pipe_file.h"
#include "shell/signals.h"
#include "shell/tokenizer.h"

namespace
{

/// Cuts the line into words and finds its node. If that is an alias, cuts the line again with the alias replaced.
cli_node* selectNode(const char* line)
{
    if (parseLine(line, ParseMode::kExecute) != ParseResult::kEnd)
        return nullptr;
    cli_node* node = findNode(wordCount(), tokenStore.tokens);
    if (node == nullptr || !isAlias(*node))
        return node;
    char expansion[kLineLength + 1];
    expandAlias(*node, expansion);
    return parseLine(expansion, ParseMode::kExecute) == ParseResult::kEnd ? node : nullptr;
}

/// Whether the first word of every segment is a root command. Prints the first word that is not. After a rejected line
/// the segments up to the rejected character are checked, so such a line may print two messages.
bool segmentsAreCommands()
{
    for (std::size_t i = 0; i <= tokenStore.segmentIndex; ++i) {
        char* word = tokenStore.segments[i];
        if (!isRootCommand(word)) {
            maskControlBytes(word);
            std::printf("Command \"%s\" is not supported.\n", word);
            return false;
        }
    }
    return true;
}

/// Runs the handler of the current line, and then the rest of the line with the handler's output as its input. Returns
/// the handler's result.
int runPiped(CliHandler handler)
{
    beginPipe();
    setOutputSink(appendToPipe);
    const int result = handler(tokenStore.pipeIndex, tokenStore.tokens);
    setOutputSink(nullptr);
    if (!flushPipe())
        printPipeError();
    else if (!isInterrupted())
        runRestOfLine();
    endPipe();
    return result;
}

} // namespace

int executeLine(const char* line)
{
    const cli_node* node = selectNode(line);
    if (!segmentsAreCommands())
        return 0;
    if (node == nullptr) {
        std::puts("Command is not supported.");
        return 0;
    }
    const CliHandler handler = node->handler != nullptr ? node->handler : helpLister;
    return tokenStore.pipeIndex != 0 && !isTool(*node) ? runPiped(handler)
                                                       : handler(tokenStore.argc, tokenStore.tokens);
}

void printNode(const cli_node& node)
{
    cli_printf("\t%-32s %s\n", node.name, node.help);
}

int helpLister(int argc, char** argv)
{
    for (int i = 0; i < argc; ++i)
        cli_printf("%s ", argv[i]);
    cli_print(":\n");
    const cli_node* node = findNode(argc, argv);
    if (node == nullptr)
        return 0;
    if (node->visibility == kRootHelp)
        node = &cliRoot;
    for (std::int32_t i = 0; i < node->childCount; ++i) {
        const cli_node& child = node->children[i];
        if (child.visibility != kHidden)
            printNode(child);
    }
    cli_print("\n");
    return 0;
}
