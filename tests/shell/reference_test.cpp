// docs/commands.md is printed from the command tables; this keeps the two in step.

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

std::string reference()
{
    std::string text =
        "# Commands\n\n"
        "Every command with its help text, in the order of the command tables. Hidden commands are left out "
        "of `help` and TAB\nuntil `show-hiden`; they run whenever they are typed. The commands below `debug` "
        "and `kdebug` are those of the platform's\ndebug library. `list`, alone on a line, is no command of the "
        "tables: it shows the history.\n\n"
        "| command | help |\n| --- | --- |\n";
    describe(cliRoot, "", text);
    return text;
}

} // namespace

/// With UPDATE_REFERENCE set in the environment the file is written instead.
TEST(Reference, ListsEveryCommand)
{
    if (std::getenv("UPDATE_REFERENCE") != nullptr)
        std::ofstream(kReference) << reference();
    std::ifstream file(kReference);
    const std::string written{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(written, reference()) << "docs/commands.md is out of date: run the test with UPDATE_REFERENCE=1";
}
