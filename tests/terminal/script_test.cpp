#include <filesystem>
#include <sstream>

#include "tests/terminal/shell.h"

using Script = ShellTest;

TEST_F(Script, OutputsComeInTheOrderOfTheLines)
{
    plantTool("ifconfig", "echo \"captured $*\"");
    plantTool("ping", "echo \"direct $*\"; read -r line && echo \"took $line\"");
    const struct {
        std::string line; ///< and what a tool reads behind it
        const char* shown;
    } steps[] = {
        {"save", "save :\n\tcw_conf                          Save capwap configuration.\n\n"},
        {"ifconfig br0", "captured br0\n"},
        {"", ""},
        {"ping a\nfor the tool", "direct a\ntook for the tool\n"},
        {"led_test power | grep -c power", "3\n"},
        {"nosuch", "Command \"nosuch\" is not supported.\n"},
        {"list", ""},
        {"quit", "Exit.\n"},
    };
    std::string script;
    std::string output;
    for (const auto& step : steps) {
        script += step.line + "\n";
        output += kPrompt + step.line.substr(0, step.line.find('\n')) + "\n" + step.shown;
    }
    const Run run = runScript(script + "never\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.errors, "0: save\r\n1: ifconfig br0\r\n2: ping a\r\n3: led_test power | grep -c power\r\n"
                          "4: nosuch\r\n5: list\r\n");
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
    const Run run = runScript(longest + "\n" + longest + "a\n" + std::string(100'000, '|') + "\nshow nosuch\n");
    std::string said; // without the lines, of which a terminal without capabilities shows a part
    std::istringstream output(run.output);
    for (std::string line; std::getline(output, line);)
        said += line.starts_with(kPrompt) ? "" : line + "\n";
    EXPECT_EQ(said, "    Error: Input beyond the upper limit 1023.\n"
                    "    Error: Input beyond the upper limit 1023.\n"
                    "Command \"|\" is not supported.\n"
                    "Command is not supported.\n");
    EXPECT_EQ(calls(), longest + "\n" + longest + "\n");
}

TEST_F(Script, WorksWithoutAPlaceForTemporaryFiles)
{
    plantTool("ifconfig", "echo \"captured $*\"");
    std::filesystem::remove_all(path("/tmp"));
    for (const bool planted : {false, true}) {
        if (planted)
            writeFile("/tmp", "a file");
        const Run run = runScript("help | grep config\nifconfig br0\nshow nosuch\n");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "ap  # help | grep config\n    Error: Can not write /tmp/cli_pipe_file.\n"
                              "ap  # ifconfig br0\ncaptured br0\n"
                              "ap  # show nosuch\nCommand is not supported.\nap  # ");
        EXPECT_EQ(run.errors, "");
    }
}
