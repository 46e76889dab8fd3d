#include <sstream>

#include "tests/terminal/shell.h"

using Script = ShellTest;

/// The history goes to the standard error.
TEST_F(Script, AToolReadsWhatFollowsItsLine)
{
    plantTool("ping", "echo \"direct $*\"; read -r line && echo \"took $line\"");
    const Run run = runScript("nosuch\nping a\nfor the tool\n\nlist\nquit\nnever\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ap  # nosuch\nCommand \"nosuch\" is not supported.\n"
                          "ap  # ping a\ndirect a\ntook for the tool\n"
                          "ap  # \nap  # list\nap  # quit\nExit.\n");
    EXPECT_EQ(run.errors, "0: nosuch\r\n1: ping a\r\n2: list\r\n");
}

TEST_F(Script, EndOfInputEndsTheShell)
{
    for (const char* script : {"", "show", "\n"}) {
        const Run run = runScript(script);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors, "");
    }
    const Run replay = runScript("show\n", "run");
    EXPECT_EQ(replay.status, 0);
    EXPECT_EQ(replay.output.find(kPrompt), std::string::npos);
    EXPECT_EQ(runScript("quit\n", "Run now").status, 0);
}

TEST_F(Script, LongLinesAreExecutedWithAWarning)
{
    const std::string longest = "ping " + std::string(1018, 'a');
    const Run run = runScript(longest + "\n" + longest + "a\n" + std::string(100'000, '|') + "\nbrctl " +
                              std::string(1010, 'a') + "\nshow nosuch\n");
    std::string said; // without the lines, of which a terminal without capabilities shows a part
    std::istringstream output(run.output);
    for (std::string line; std::getline(output, line);)
        said += line.starts_with(kPrompt) ? "" : line + "\n";
    EXPECT_EQ(said, "    Error: Input beyond the upper limit 1023.\n"
                    "    Error: Input beyond the upper limit 1023.\n"
                    "Command \"|\" is not supported.\n"
                    "    Error: Command line too long.\n"
                    "Command is not supported.\n");
    EXPECT_EQ(calls(), longest + "\n" + longest + "\n");
}
