#include "conf/conf_replace.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "conf/file_watch.h"
#include "tests/conf/conf.h"

namespace fs = std::filesystem;

namespace
{

/// The number of bytes of a configuration file that can be read before read() fails with EIO. In addition, every second
/// call fails with EINTR. If the number is negative, read() works normally.
ssize_t readableBytes = -1;

/// Whether rename() fails with EBUSY, as it does if the file is a mount point.
bool isMountPoint = false;

/// Whether every fsync() is recorded like a call of a tool.
bool isSyncRecorded = false;

std::string nameOf(int fd)
{
    std::error_code none;
    return fs::read_symlink("/proc/self/fd/" + std::to_string(fd), none).string();
}

} // namespace

extern "C" ssize_t __real_read(int fd, void* bytes, size_t size);

// The linker replaces every read(), write(), fsync() and rename() of the shell by these.
extern "C" ssize_t __wrap_read(int fd, void* bytes, size_t size)
{
    static bool isInterrupted = false;
    if (readableBytes < 0 || nameOf(fd).find("/cfg/") == std::string::npos)
        return __real_read(fd, bytes, size);
    isInterrupted = !isInterrupted;
    const off_t left = readableBytes - lseek(fd, 0, SEEK_CUR);
    errno = isInterrupted ? EINTR : EIO;
    return isInterrupted || left <= 0 ? -1 : __real_read(fd, bytes, std::min(size, static_cast<size_t>(left)));
}

extern "C" ssize_t __real_write(int fd, const void* bytes, size_t size);

/// Writes a few bytes only, as write() may do.
extern "C" ssize_t __wrap_write(int fd, const void* bytes, size_t size)
{
    return __real_write(fd, bytes, std::min<size_t>(size, 7));
}

extern "C" int __real_rename(const char* from, const char* to);

extern "C" int __wrap_rename(const char* from, const char* to)
{
    errno = EBUSY;
    return isMountPoint ? -1 : __real_rename(from, to);
}

extern "C" int __real_fsync(int fd);

extern "C" int __wrap_fsync(int fd)
{
    if (isSyncRecorded)
        std::system(("echo sync " + nameOf(fd) + " >>$CLI_SIM_ROOT/tmp/calls").c_str());
    return __real_fsync(fd);
}

namespace
{

constexpr char kFile[] = "/cfg/x.conf";
constexpr char kReloading[] = "CAPWAP parameter changed, capwap daemon is reloading\n";
constexpr char kUnreadable[] = "cwConfRead: Could not open conf file /cfg/cw.conf.\n";

class ConfFileTest : public ConfTest
{
protected:
    ~ConfFileTest() override { readableBytes = -1; }

    std::vector<std::string> linesOf(const std::string& text) const
    {
        writeFile(kFile, text);
        FileLines lines(kFile);
        std::vector<std::string> taken;
        for (const char* line = lines.next(); line != nullptr; line = lines.next())
            taken.emplace_back(line);
        EXPECT_EQ(lines.count(), static_cast<int>(taken.size()));
        return taken;
    }

    /// Replaces the file. Returns "ok", the message, or "silent" if it failed without a message.
    static std::string replace(const std::string& text)
    {
        ConfText content;
        content.append("%s", text.c_str());
        int result = 0;
        const std::string said = outputOf([&] { result = replaceConfFile(kFile, content); });
        return result == 0 ? "ok" + said : said.empty() ? "silent" : said;
    }

    /// Replaces the file while no file can have more than 100 bytes, as on a full disk.
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
    EXPECT_EQ(linesOf(most + "\nb\n"), (Lines{most, "b"}));
    EXPECT_EQ(linesOf(most + "bc\n"), (Lines{most + "b", "c"}));
    EXPECT_EQ(linesOf(std::string(600, 'c') + "\nd"),
              (Lines{std::string(255, 'c'), std::string(255, 'c'), std::string(90, 'c'), "d"}));
    EXPECT_EQ(linesOf(std::string("a\0b\n\0\nc\n", 8)), (Lines{"a", "", "c"}));
    EXPECT_EQ(linesOf(std::string(FileLines::kLimit, '\n') + "late\n").size(), FileLines::kLimit);
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
    FileLines lines(kFile);
    fs::resize_file(path(kFile), 0);
    EXPECT_EQ(lines.next(), nullptr) << "the file was truncated after it was opened";
}

TEST_F(ConfFileTest, InAClosedFolderAFileIsWrittenInPlace)
{
    writeFile(kFile, "old");
    isMountPoint = true;
    EXPECT_EQ(replace("in place"), "ok");
    EXPECT_EQ(readFile(kFile), "in place");
    isMountPoint = false;
    EXPECT_EQ(std::distance(fs::directory_iterator(path("/cfg")), {}), 1) << "nothing is left beside it";
    const uid_t user = geteuid();
    const uid_t someone = user != 0 ? user : 65534;
    writeFile(kFile, "an old text");
    ASSERT_EQ(chmod(path("").c_str(), 0755) | chmod(path(kFile).c_str(), 0666) | chmod(path("/cfg").c_str(), 0555), 0);
    ASSERT_EQ(seteuid(someone), 0);
    EXPECT_EQ(replaceOnAFullDisk(), "    Error: Can not write /cfg/x.conf.\n");
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

// The new file gets a later modification time than the old one, so that a reader notices the change. This is true even
// if the clock still shows the time of the old file or a slightly earlier one.
TEST_F(ConfFileTest, AReplacementIsNewer)
{
    ConfFileTime before, now;
    writeAt(999'999'000, kFile, "old", time(nullptr));
    confFileTime(kFile, &before);
    ASSERT_EQ(replace("new"), "ok");
    EXPECT_EQ(confFileTime(kFile, &now), ConfFileStatus::kKnown);
    EXPECT_LT(std::pair(before.seconds, before.nanoseconds), std::pair(now.seconds, now.nanoseconds));
    EXPECT_EQ(confFileTime("/cfg/x.conf/none", &now), ConfFileStatus::kMissing);
}

// After the sync, the factory configuration is on the disk even if the power fails.
TEST_F(ConfFileTest, FactoryFilesAreOnTheDiskBeforeTheDaemonEnds)
{
    startSaved();
    plantRecorder("cp");
    isSyncRecorded = true;
    EXPECT_EQ(type("cfg -x"), "");
    isSyncRecorded = false;
    std::ostringstream expected;
    for (const char* file : {"/cw.conf", "/sys.conf"})
        expected << "cp " << path("/etc") << file << ' ' << path("/cfg") << file << "\nsync " << path("/cfg") << file
                 << "\nsync " << path("/cfg") << '\n';
    EXPECT_EQ(calls(), expected.str() + "pkill cwWtpd\n");
}

// The read error is reported once for each version of the file. It is reported again by each command that would have to
// overwrite the file.
TEST_F(ConfFileTest, ASystemFileThatCannotBeReadCountsForNothing)
{
    const std::string said = "sysConfRead: Could not open conf file /cfg/sys.conf.\n";
    const std::string refused = "    Error: Can not read /cfg/sys.conf.\n";
    const std::string items = "factorysn=F1\nhostname=ap2\nbaudrate=115200\nadmin-timeout=";
    const std::string text = fileOf(items + "5\n");
    readableBytes = 100;
    sysConfig.hostname[0] = '\0';
    for (const int change : {0, 1}) {
        writeAt(change, "/cfg/sys.conf", text);
        EXPECT_EQ(prepare(), said);
        EXPECT_EQ(outputOf([] { sysConfRefresh(sysConfig); }), "") << "not before every prompt";
    }
    EXPECT_STREQ(sysConfig.hostname, "SN42") << "the prompt needs a name";
    for (const char* line : {"config system admin-timeout 9", "config system hostname a"}) {
        EXPECT_EQ(type(line), refused);
        EXPECT_EQ(result_, -1);
    }
    EXPECT_TRUE(type("cfg -c").starts_with(refused));
    writeAt(2, "/cfg/sys.conf", text);
    EXPECT_EQ(outputOf([] { sysConfRefresh(sysConfig); }), said);
    EXPECT_STREQ(sysConfig.hostname, "a");
    EXPECT_EQ(readFile("/cfg/sys.conf"), text);
    readableBytes = -1;
    EXPECT_EQ(type("config system admin-timeout 9"), "");
    EXPECT_EQ(readFile("/cfg/sys.conf"), fileOf(items + "9\n"));
}

// The contents of the file are not known, so the record is unchanged and the file is not overwritten.
TEST_F(ConfFileTest, AFileThatCannotBeReadCountsForNothing)
{
    const std::string badLine = "cwConfRead: /cfg/cw.conf Line 1: Invalid line 'no item'\n";
    const std::string text = "no item\nhwVer=B\nhwVer=C\nac-ip-addr=10.0.0.1\nstatic-ip-addr=10.0.0.2\n";
    startSaved();
    type("config capwap wtp ac-hostname add a");
    writeAt(1, "/cfg/cw.conf", text + std::string(5000, '#'));
    readableBytes = 4200;
    EXPECT_EQ(type("config capwap wtp dhcp-code 200"), badLine + kUnreadable);
    EXPECT_EQ(type("drop cw_conf"), "");
    const std::string shown = type("show cw_conf");
    EXPECT_TRUE(shown.starts_with(kCwFrameLine) && shown.ends_with(kChanged)) << shown;
    EXPECT_NE(shown.find("\tdhcp-code=200\n"), std::string::npos);
    EXPECT_STREQ(sysConfig.staticAddr, "192.168.1.2");
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R");
    EXPECT_EQ(type("save cw_conf"), "    Error: Can not read /cfg/cw.conf.\n");
    EXPECT_EQ(result_, -1);
    EXPECT_TRUE(readFile("/cfg/cw.conf").starts_with(text));
    readableBytes = -1;
    EXPECT_EQ(type("save cw_conf"), badLine + kReloading) << "together with what the file has";
    const std::string saved = readFile("/cfg/cw.conf");
    for (const char* line : {"ac-ip-addr=10.0.0.1 1", "ac-hostname=a", "dhcp-code=200", "hwVer=C"})
        EXPECT_NE(saved.find(std::string("\n") + line + '\n'), std::string::npos) << saved;
    EXPECT_STREQ(sysConfig.staticAddr, "10.0.0.2");

    readableBytes = 80;
    EXPECT_EQ(type("drop cw_conf"), kUnreadable);
    readableBytes = -1;
    const std::string inTurn = "flock . sh -c 'sleep 0.1; rm cw.conf' & while flock -n . true; do :; done";
    ASSERT_EQ(std::system(("cd " + path("/cfg") + "; " + inTurn).c_str()), 0);
    EXPECT_EQ(type("save cw_conf"), kReloading) << "what is gone when the turn comes can be written";
    EXPECT_EQ(calls(), "pkill cwWtpd\npkill cwWtpd\n");
}

// After a save in the same second as the last read, the shell does not read the file again, so the snapshot is
// outdated. If the record is equal to this snapshot, it must be saved nevertheless.
TEST_F(ConfFileTest, ASaveInTheSecondOfTheReadIsRepeated)
{
    const auto awaitNextSecond = [] {
        for (const time_t now = time(nullptr); time(nullptr) == now;)
            usleep(1000);
        usleep(20'000); // the clock for modification times may lag behind time()
    };
    awaitNextSecond();
    writeFile("/cfg/cw.conf", "dhcp-code=138\n");
    prepare();
    for (const char* code : {"200", "138", "200"}) {
        set("dhcp-code", code);
        EXPECT_EQ(type("save cw_conf"), kReloading);
        EXPECT_FALSE(type("show cw_conf").ends_with(kChanged));
        EXPECT_NE(readFile("/cfg/cw.conf").find("\ndhcp-code=" + std::string(code) + "\n"), std::string::npos);
    }
    writeFile("/cfg/cw.conf", "dhcp-code=201\n");
    set("idle-timeout", "20");
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(cwConfig.dhcpCode, 201U) << "not changed here since it was saved";
    EXPECT_EQ(cwConfig.idleTimeout, 20);
    awaitNextSecond();
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(type("save cw_conf"), "");
}

} // namespace
