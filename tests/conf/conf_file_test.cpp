#include "conf/conf_file.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tests/conf/conf_test.h"

namespace fs = std::filesystem;

namespace
{

constexpr char kFile[] = "/cfg/x.conf";

class ConfFileTest : public ConfTest
{
protected:
    std::vector<std::string> linesOf(const std::string& text) const
    {
        writeFile(kFile, text);
        ConfLines lines(kFile);
        std::vector<std::string> taken;
        for (const char* line = lines.next(); line != nullptr; line = lines.next())
            taken.emplace_back(line);
        EXPECT_EQ(lines.count(), static_cast<int>(taken.size()));
        return taken;
    }

    static int replace(const std::string& text)
    {
        ConfText content;
        content.append("%s", text.c_str());
        return replaceConfFile(kFile, content);
    }

    [[nodiscard]] std::vector<std::string> filesIn(const char* folder) const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path(folder)))
            names.push_back(entry.path().filename());
        return names;
    }
};

TEST_F(ConfFileTest, LinesArePiecesOf255Characters)
{
    using Lines = std::vector<std::string>;
    const std::string most(254, 'a');
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\n\na=1"), (Lines{"", "", "a=1"}));
    EXPECT_EQ(linesOf(" a = 1\r\n"), Lines{" a = 1\r"});
    EXPECT_EQ(linesOf(most + "\nb\n"), (Lines{most, "b"}));
    EXPECT_EQ(linesOf(most + "bc\n"), (Lines{most + "b", "c"}));
    EXPECT_EQ(linesOf(std::string(600, 'c') + "\nd"),
              (Lines{std::string(255, 'c'), std::string(255, 'c'), std::string(90, 'c'), "d"}));
    EXPECT_EQ(linesOf(std::string("a\0b\n\0\nc\n", 8)), (Lines{"a", "", "c"}));
}

TEST_F(ConfFileTest, NoMoreThanTheLimitIsRead)
{
    EXPECT_EQ(linesOf(std::string(kConfFileLimit, '\n') + "late\n").size(), kConfFileLimit);
}

TEST_F(ConfFileTest, OnlyARegularFileOpens)
{
    const std::string place = path(kFile);
    EXPECT_FALSE(ConfLines(kFile).isOpen());
    fs::create_directory(place);
    EXPECT_FALSE(ConfLines(kFile).isOpen());
    EXPECT_EQ(replace("new"), -1);
    fs::remove(place);
    ASSERT_EQ(mkfifo(place.c_str(), 0600), 0);
    EXPECT_FALSE(ConfLines(kFile).isOpen());
    EXPECT_EQ(replace("new"), -1);
    EXPECT_TRUE(fs::is_fifo(place));
    fs::remove(place);
    fs::create_symlink("/dev/zero", place);
    EXPECT_FALSE(ConfLines(kFile).isOpen());
    EXPECT_EQ(replace("new"), -1);
    EXPECT_TRUE(fs::is_symlink(place));
}

TEST_F(ConfFileTest, AReplacedFileKeepsItsModeAndItsLink)
{
    writeFile("/etc/target", "a longer old text");
    ASSERT_EQ(chmod(path("/etc/target").c_str(), 0640), 0);
    fs::create_symlink("../etc/target", path(kFile));
    EXPECT_EQ(replace("new"), 0);
    EXPECT_TRUE(fs::is_symlink(path(kFile)));
    EXPECT_EQ(readFile("/etc/target"), "new");
    EXPECT_EQ(fs::status(path("/etc/target")).permissions(), fs::perms(0640));

    fs::remove(path("/etc/target"));
    EXPECT_EQ(replace("newer"), 0) << "a link to no file yet";
    EXPECT_EQ(readFile("/etc/target"), "newer");
    EXPECT_EQ(filesIn("/etc").size(), 1U);
    EXPECT_EQ(filesIn("/cfg").size(), 1U);

    fs::remove(path(kFile));
    fs::create_symlink("x.conf", path(kFile));
    EXPECT_EQ(replace("new"), -1) << "a link to itself";
}

TEST_F(ConfFileTest, AFailedReplacementLeavesTheOldFile)
{
    writeFile(kFile, "old");
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit full = {10, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    const int result = replace("more than ten bytes");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(replace(std::string(10000, 'x')), -1) << "more than the text holds";
    EXPECT_EQ(readFile(kFile), "old");
    EXPECT_EQ(filesIn("/cfg").size(), 1U);

    fs::remove_all(path("/cfg"));
    EXPECT_EQ(replace("new"), -1);
}

// Two savers write at the same time, each of them killed at any instant.
TEST_F(ConfFileTest, AKilledSaverLeavesAWholeFile)
{
    const std::string texts[2] = {std::string(4000, 'a') + "\n", std::string(7000, 'b') + "\n"};
    const auto startSaver = [&] {
        const pid_t pid = fork();
        for (int i = 0; pid == 0; ++i)
            if (replace(texts[i % 2]) != 0)
                _exit(1);
        return pid;
    };
    ASSERT_EQ(replace(texts[0]), 0);
    for (int round = 0; round < 100; ++round) {
        const pid_t savers[2] = {startSaver(), startSaver()};
        std::this_thread::sleep_for(std::chrono::microseconds(500 + 67 * round));
        for (const pid_t saver : savers) {
            kill(saver, SIGKILL);
            int status = 0;
            ASSERT_EQ(waitpid(saver, &status, 0), saver);
            EXPECT_TRUE(WIFSIGNALED(status)) << "a saver failed";
            const std::string text = readFile(kFile);
            ASSERT_TRUE(text == texts[0] || text == texts[1]) << text.size() << " bytes in round " << round;
        }
        ASSERT_LE(filesIn("/cfg").size(), 2U);
    }
    EXPECT_EQ(replace("last"), 0);
    EXPECT_EQ(filesIn("/cfg").size(), 1U) << "the temporary of a killed saver stays";
}

} // namespace
