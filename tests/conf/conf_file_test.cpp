#include "conf/conf_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "tests/conf/conf_test.h"

namespace fs = std::filesystem;

extern "C" ssize_t __real_read(int fd, void* bytes, size_t size);

// The linker puts this in the place of every read() of the shell.
extern "C" ssize_t __wrap_read(int fd, void* bytes, size_t size)
{
    static bool isInterrupted = false;
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    std::error_code none;
    if (readableBytes < 0 || fs::read_symlink(link, none).string().find("/cfg/") == std::string::npos)
        return __real_read(fd, bytes, size);
    isInterrupted = !isInterrupted;
    const ssize_t left = readableBytes - lseek(fd, 0, SEEK_CUR);
    errno = isInterrupted ? EINTR : EIO;
    return isInterrupted || left <= 0 ? -1 : __real_read(fd, bytes, std::min(size, static_cast<size_t>(left)));
}

namespace
{

constexpr char kFile[] = "/cfg/x.conf";
constexpr char kCanNotWrite[] = "    Error: Can not write /cfg/x.conf.\n";

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

    /// "ok", what was said, or "silent".
    static std::string replace(const std::string& text)
    {
        ConfText content;
        content.append("%s", text.c_str());
        int result = 0;
        const std::string said = outputOf([&] { result = replaceConfFile(kFile, content); });
        return result == 0 ? "ok" + said : said.empty() ? "silent" : said;
    }

    /// As if the disk had room for a part of the text.
    static std::string replaceOnAFullDisk()
    {
        signal(SIGXFSZ, SIG_IGN);
        rlimit before;
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full = {100, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        std::string outcome = replace(std::string(200, 'x'));
        setrlimit(RLIMIT_FSIZE, &before);
        return outcome;
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
    EXPECT_EQ(linesOf(std::string(kConfFileLimit, '\n') + "late\n").size(), kConfFileLimit);
}

TEST_F(ConfFileTest, AFileEndsWhereReadingFails)
{
    const std::string text = "a=1\n" + std::string(4096, '#') + "\nb=2\n";
    readableBytes = 4096;
    EXPECT_EQ(linesOf(text).size(), 17U) << "no cut line";
    writeFile(kFile, text);
    ConfItems items("reader", kFile);
    EXPECT_EQ(outputOf([&] {
                  EXPECT_TRUE(items.next());
                  while (items.next())
                      ;
              }),
              "reader: Could not open conf file /cfg/x.conf.\n");
    EXPECT_TRUE(items.isOpen() && items.failed());
    readableBytes = 5000;
    EXPECT_EQ(linesOf(text).back(), "b=2") << "interrupted reads go on";
}

TEST_F(ConfFileTest, InAClosedFolderAFileIsWrittenInPlace)
{
    const uid_t user = geteuid();
    const uid_t someone = user != 0 ? user : 65534;
    writeFile(kFile, "an old text");
    ASSERT_EQ(chmod(path("").c_str(), 0755) | chmod(path(kFile).c_str(), 0666) | chmod(path("/cfg").c_str(), 0555), 0);
    ASSERT_EQ(seteuid(someone), 0);
    EXPECT_EQ(replaceOnAFullDisk(), kCanNotWrite);
    EXPECT_EQ(readFile(kFile), "an old text");
    EXPECT_EQ(replace("new"), "ok");
    EXPECT_EQ(readFile(kFile), "new");
    ASSERT_EQ(seteuid(user) | chmod(path(kFile).c_str(), 0444) | seteuid(someone), 0);
    EXPECT_EQ(replace("newer"), "silent");
    ASSERT_EQ(seteuid(user) | chmod(path("/cfg").c_str(), 0755) | unlink(path(kFile).c_str()) |
                  chmod(path("/cfg").c_str(), 0555) | seteuid(someone),
              0);
    EXPECT_EQ(replace("newest"), "silent") << "no file, and no place for one";
    ASSERT_EQ(seteuid(user) | chmod(path("/cfg").c_str(), 0755), 0);
}

// A reader tells two files apart by their times, also where a clock stands still or is a little late.
TEST_F(ConfFileTest, AReplacementIsNewer)
{
    ConfFileTime before;
    ConfFileTime now;
    writeAt(999'999'000, kFile, "old", time(nullptr));
    confFileTime(kFile, &before);
    ASSERT_EQ(replace("new"), "ok");
    EXPECT_EQ(confFileTime(kFile, &now), ConfFileStatus::Known);
    EXPECT_LT(std::pair(before.seconds, before.nanoseconds), std::pair(now.seconds, now.nanoseconds));
    EXPECT_EQ(confFileTime("/cfg/x.conf/none", &now), ConfFileStatus::Missing);
}

} // namespace
