#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/terminal/shell.h"

namespace
{

constexpr std::size_t kLineLength = 1023;

class Script : public ShellTest
{
protected:
    /// A profile of so many aliases that the shell's help is longer than its pipe buffer.
    void plantAliases(int count)
    {
        std::string profile;
        for (int i = 0; i < count; ++i)
            profile += "alias lan" + std::to_string(i) + "='ifconfig eth" + std::to_string(i) + "'\n";
        writeFile("/etc/profile", profile);
    }

    /// What the shell shows for a script of one line. The line, echoed, is left out.
    std::string answer(const std::string& line)
    {
        const Run run = runScript(line + "\n");
        EXPECT_EQ(run.status, 1);
        const std::string head = kPrompt + line + "\n";
        EXPECT_EQ(run.output.substr(0, head.size()), head);
        const std::string tail = kPrompt;
        EXPECT_TRUE(run.output.ends_with(tail)) << run.output;
        return run.output.size() < head.size() + tail.size()
                   ? run.output
                   : run.output.substr(head.size(), run.output.size() - head.size() - tail.size());
    }
};

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

} // namespace

TEST_F(Script, OutputsComeInTheOrderOfTheLines)
{
    plantTool("ifconfig", "echo \"captured $*\"");
    plantTool("ping", "echo \"direct $*\"; read -r line && echo \"took $line\"");
    const Run run = runScript("show\n"
                              "ifconfig br0\n"
                              "\n"
                              "ping a\n"
                              "for the tool\n"
                              "save\n"
                              "led_test power | grep -c power\n"
                              "hide-hiden | grep -c power\n"
                              "nosuch\n"
                              "list\n"
                              "quit\n"
                              "never\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ap  # show\n"
                          "show :\n"
                          "\tcw_conf                          Show capwap configuration.\n"
                          "\tsys_conf                         Show system configuration.\n"
                          "\n"
                          "ap  # ifconfig br0\n"
                          "captured br0\n"
                          "ap  # \n"
                          "ap  # ping a\n"
                          "direct a\n"
                          "took for the tool\n"
                          "ap  # save\n"
                          "save :\n"
                          "\tcw_conf                          Save capwap configuration.\n"
                          "\n"
                          "ap  # led_test power | grep -c power\n"
                          "3\n"
                          "ap  # hide-hiden | grep -c power\n"
                          "0\n"
                          "ap  # nosuch\n"
                          "Command \"nosuch\" is not supported.\n"
                          "ap  # list\n"
                          "ap  # quit\n"
                          "Exit.\n");
    EXPECT_EQ(run.errors, "0: show\r\n1: ifconfig br0\r\n2: ping a\r\n3: save\r\n4: led_test power | grep -c power\r\n"
                          "5: hide-hiden | grep -c power\r\n6: nosuch\r\n7: list\r\n");
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

TEST_F(Script, PipesWhatBuiltInsPrint)
{
    plantAliases(120);
    const std::string help = answer("help");
    EXPECT_GT(help.size(), 2U * 4096);
    EXPECT_EQ(countOf(help, "alias cmd:ifconfig"), 120U);
    EXPECT_EQ(answer("help | grep -v ^nothing"), help);
    EXPECT_EQ(answer("help ; ping a"), help);
    EXPECT_EQ(readFile("/tmp/cli_pipe_file"), help);
    EXPECT_EQ(answer("config capwap proto | grep idle | grep -c CAPWAP"), "1\n");
    EXPECT_EQ(answer("lan7 dropped | grep -c x"), "0\n");
    EXPECT_EQ(calls(), "ping a\nifconfig eth7\n");
    EXPECT_EQ(answer("help | cat"), "Command \"cat\" is not supported.\n");

    writeFile("/tmp/victim", "untouched");
    std::filesystem::remove(path("/tmp/cli_pipe_file"));
    ASSERT_EQ(symlink(path("/tmp/victim").c_str(), path("/tmp/cli_pipe_file").c_str()), 0);
    umask(0);
    EXPECT_EQ(answer("help | grep -v ^nothing"), help);
    EXPECT_EQ(readFile("/tmp/victim"), "untouched");
    struct stat status {
    };
    ASSERT_EQ(lstat(path("/tmp/cli_pipe_file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | S_IRUSR | S_IWUSR));
}

TEST_F(Script, LongLinesAreExecutedWithAWarning)
{
    const std::string longest = "ping " + std::string(kLineLength - 5, 'a');
    const std::string warning = "    Error: Input beyond the upper limit 1023.\n";
    EXPECT_EQ(countOf(runScript(longest + "\n").output, warning), 0U);
    EXPECT_EQ(calls(), longest + "\n");
    EXPECT_EQ(countOf(runScript(longest + "a\n").output, warning), 1U);
    EXPECT_EQ(calls(), longest + "\n" + longest + "\n");
    const Run run = runScript(std::string(100'000, 'x') + "\n" + std::string(5000, '|') + "\nshow nosuch\n");
    EXPECT_EQ(countOf(run.output, warning), 2U);
    EXPECT_TRUE(run.output.ends_with("ap  # show nosuch\nCommand is not supported.\nap  # ")) << run.output;
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
        EXPECT_EQ(run.output, "ap  # help | grep config\n"
                              "    Error: Can not write /tmp/cli_pipe_file.\n"
                              "ap  # ifconfig br0\n"
                              "captured br0\n"
                              "ap  # show nosuch\n"
                              "Command is not supported.\n"
                              "ap  # ");
        EXPECT_EQ(run.errors, "");
    }
}
