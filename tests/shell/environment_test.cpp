#include "shell/environment.h"

#include <cstdlib>
#include <string>

#include <sys/stat.h>

#include "tests/support/device.h"

namespace
{

std::string valueOf(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "-";
}

using Environment = DeviceTest;

} // namespace

TEST_F(Environment, LosesWhatChangesASystemShell)
{
    constexpr const char* kNames[] = {"ENV", "BASH_ENV", "SHELLOPTS", "BASHOPTS",     "PS4",
                                      "IFS", "LESSOPEN", "LESSCLOSE", "GREP_OPTIONS", "BASH_FUNC_cat%%"};
    for (const char* name : kNames)
        setenv(name, "x", 1);
    setenv("ENVIRONMENT", "stays", 1);
    secureEnvironment();
    for (const char* name : kNames)
        EXPECT_EQ(valueOf(name), "-") << name;
    EXPECT_EQ(valueOf("ENVIRONMENT"), "stays");
    EXPECT_EQ(valueOf("LESSSECURE"), "1");
}

TEST_F(Environment, KeepsOnlySizesThatAScreenCanHave)
{
    const struct {
        const char* value;
        const char* kept;
    } cases[] = {
        {"1", "1"},          {"1000", "1000"}, {"0", "-"},  {"1001", "-"},
        {"2147483647", "-"}, {"80x", "-"},     {"-5", "-"}, {"", "-"},
    };
    for (const auto& example : cases)
        for (const char* name : {"COLUMNS", "LINES"}) {
            setenv(name, example.value, 1);
            checkReadlineEnvironment();
            EXPECT_EQ(valueOf(name), example.kept) << name << "=" << example.value;
        }
}

TEST_F(Environment, KeepsReadlineFromFilesThatItCannotReadAtOnce)
{
    const std::string home = path("/tmp");
    const std::string fifo = home + "/fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    writeFile("/tmp/plain", "set bell-style none\n  $include missing\n$include " + home + "/other\n");
    writeFile("/tmp/other", "$if mode=vi\n");
    writeFile("/tmp/large", std::string(65UL * 1024UL, '#'));
    writeFile("/tmp/includes_fifo", "# first\n\t$ INCLUDE\t" + fifo + "\n");
    ASSERT_EQ(mkfifo((home + "/a fifo").c_str(), S_IRUSR | S_IWUSR), 0);
    writeFile("/tmp/includes_blank", "$include " + home + "/a fifo\n");
    writeFile("/tmp/includes_long", "$include " + std::string(5000, '/') + fifo + "\n");
    writeFile("/tmp/includes_itself", "$include " + home + "/includes_itself\n");
    const struct {
        std::string file;
        bool isRead;
    } cases[] = {
        {"plain", true},          {"missing", true},          {"fifo", false},
        {"large", false},         {"includes_blank", false},  {"includes_long", false},
        {"includes_fifo", false}, {"includes_itself", false}, {".", false},
    };
    for (const auto& example : cases) {
        setenv("INPUTRC", (home + "/" + example.file).c_str(), 1);
        checkReadlineEnvironment();
        EXPECT_EQ(valueOf("INPUTRC"), example.isRead ? home + "/" + example.file : "/dev/null");
    }
    setenv("HOME", home.c_str(), 1);
    unsetenv("INPUTRC");
    checkReadlineEnvironment();
    EXPECT_EQ(valueOf("INPUTRC"), "-");
    ASSERT_EQ(mkfifo((home + "/.inputrc").c_str(), 0600), 0);
    setenv("INPUTRC", "", 1);
    checkReadlineEnvironment();
    EXPECT_EQ(valueOf("INPUTRC"), "/etc/inputrc");
    EXPECT_EQ(valueOf("HOME"), home);
    setenv("TERM", "tty", 1);
    for (const char* folder : {"/.terminfo", "/.terminfo/t"})
        ASSERT_EQ(mkdir((home + folder).c_str(), S_IRWXU), 0);
    ASSERT_EQ(mkfifo((home + "/.terminfo/t/tty").c_str(), S_IRUSR), 0);
    checkReadlineEnvironment();
    EXPECT_EQ(valueOf("HOME"), "-");
}
