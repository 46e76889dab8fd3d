// The table of docs/commands.md is printed from the command tables; this keeps the two in step.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "shell/node.h"

namespace
{

constexpr char kReference[] = SOURCE_FOLDER "/docs/commands.md";

void describe(const cli_node& parent, const std::string& path, std::string& text)
{
    for (std::int32_t i = 0; i < parent.childCount; ++i) {
        const cli_node& node = parent.children[i];
        const std::string words = path + node.name;
        text += "| `" + words + "` | " + node.help + (node.visibility == kHidden ? " *(hidden)*" : "") + " |\n";
        const bool builtAtStart = node.prepare != nullptr && (words == "debug" || words == "kdebug");
        if (!builtAtStart)
            describe(node, words + " ", text);
    }
}

} // namespace

/// With UPDATE_REFERENCE set in the environment the table is written instead.
TEST(Reference, ListsEveryCommand)
{
    const std::string head = "| command | help |\n| --- | --- |\n";
    std::ifstream file(kReference);
    const std::string written{std::istreambuf_iterator<char>(file), {}};
    std::string current = written.substr(0, written.find(head) + head.size());
    describe(cliRoot, "", current);
    if (std::getenv("UPDATE_REFERENCE") != nullptr)
        std::ofstream(kReference) << current;
    else
        EXPECT_EQ(written, current) << "docs/commands.md is out of date: run the test with UPDATE_REFERENCE=1";
}
