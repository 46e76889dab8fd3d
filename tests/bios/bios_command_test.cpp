#include "bios/bios_command.h"

#include <filesystem>
#include <sys/stat.h>

#include "shell/executor.h"
#include "shell/node.h"
#include "tests/bios/flash_fixture.h"

namespace
{

namespace fs = std::filesystem;

constexpr char kUsage[] =
    "\t bios - BIOS platform information test \n"
    "\t usage: \n"
    "\t\t > bios \n"
    "\t\t\t - help \n\n"
    "\t\t > bios setdefault \n"
    "\t\t\t - set the platform info in default \n\n"
    "\t\t > bios displayinfo \n"
    "\t\t\t - display BIOS platform information \n\n"
    "\t\t > bios setmac [mac address without ':'] \n"
    "\t\t\t - set platform MAC address\n\n"
    "\t\t > bios getmac \n"
    "\t\t\t - get platform MAC address\n"
    "\t\t\t - e.g. > bios setmac 021a2b880801 \n\n"
    "\t\t > bios setoemsn [OEM serial number] \n"
    "\t\t\t - set OEM Serial Number \n"
    "\t\t\t - e.g. > bios setoemsn QPK310V3U1600001 \n\n"
    "\t\t > bios setqlnsn [QLN serial number] \n"
    "\t\t\t - set QLN Serial Number \n"
    "\t\t\t - e.g. > bios setqlnsn QPK310V3U1600001 \n\n"
    "\t\t > bios get [IP address with format XXX.XXX.XXX.XXX of TFTP server] [ROM BIOS filename] \n"
    "\t\t\t - Get a ROM BIOS file from remote TFTP server \n"
    "\t\t\t - e.g. > bios get 192.168.0.10 QK310V4N15000001.rom \n\n"
    "\t\t > bios save [ROM BIOS filename] \n"
    "\t\t\t - Save a loaded ROM BIOS file into flash \n"
    "\t\t\t - e.g. > bios save QK310V4N15000001.rom \n\n"
    "\t\t \n";

std::string said(const std::string& line)
{
    return outputOf([&] { executeLine(line.c_str()); });
}

TEST_F(FlashTest, AnyOtherCombinationOfWordsPrintsTheUsage)
{
    for (const char* line :
         {"bios setmac", "bios setmac 1 2", "bios setoemsn", "bios setqlnsn a b", "bios save", "bios save a b",
          "bios get 10.0.0.1", "bios get 10.0.0.1 a b", "bios erase x", "bios dumpflash x", "bios setdefault x",
          "bios displayinfo x", "bios getmac x", "bios getoemsn x", "memdbg setmac"})
        EXPECT_EQ(said(line), kUsage) << line;

    char bios[] = "bios", unknown[] = "unknown";
    char* words[] = {bios, unknown};
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(biosCommand(1, words), 0); }), kUsage);
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(biosCommand(2, words), 0); }), kUsage);
    EXPECT_TRUE(partition() == image_);
}

TEST_F(FlashTest, ShowsWhatWasSet)
{
    EXPECT_EQ(said("bios setmac 00:11:22:33:44:5"), " [Error - biosSetMac]: Invalid Mac Address length (11)\n");
    EXPECT_TRUE(partition() == image_);
    EXPECT_EQ(said("bios setmac 02-1A-2B-88-08-01"), "");
    EXPECT_EQ(said("bios getmac"), "02:1a:2b:88:08:01\n");
    EXPECT_EQ(said("bios setoemsn QPK310V3U1600009"), "");
    EXPECT_EQ(said("bios getoemsn"), "QPK310V3U1600009\n");
    EXPECT_EQ(said("memdbg getoemsn | grep -c 9"), "1\n");

    fs::remove(path(kPartition));
    EXPECT_EQ(said("bios getmac"), "");
    EXPECT_EQ(said("bios getoemsn"), "");
}

TEST_F(FlashTest, FallsBackToTheBuiltInDefaults)
{
    const std::string expected = "\t\t Platform name      :    QK310V\n"
                                 "\t\t Reg code           :    Regcode:A\n"
                                 "\t\t BIOS version       :    Ver:05000001\n"
                                 "\t\t OEM SN             :    QPK310V4U1600001\n"
                                 "\t\t QLN SN             :    QPK315V4U1600001\n"
                                 "\t\t MAC ADDR           :    02:1a:2b:00:01:00\n";
    EXPECT_EQ(said("bios setdefault"), "** Failed to flash default ROM BIOS image!\n");
    EXPECT_EQ(said("bios displayinfo"), expected);
    EXPECT_EQ(said("bios setmac 021a2b000100"), "");
    EXPECT_EQ(said("memdbg displayinfo"), expected) << "the platform knows both forms of the address";

    fs::create_directory(path("/etc/rom"));
    writeFile("/etc/rom/QPK310V_default.rom", image_);
    EXPECT_EQ(said("bios setdefault"), "");
    EXPECT_TRUE(partition() == image_);
}

TEST_F(FlashTest, TheFactoryLayoutIsValid)
{
    fs::remove(path(kPartition));
    fs::remove(path("/proc/mtd"));
    ASSERT_EQ(std::system((MAKE_FLASH " " + path("")).c_str()), 0);
    EXPECT_TRUE(sealed(partition()) == partition());
    EXPECT_EQ(said("bios getmac"), "02:1a:2b:31:00:42\n");
    EXPECT_EQ(said("bios getoemsn"), "QPK310V4U1600042\n");
    EXPECT_EQ(said("bios setdefault"), "");
    EXPECT_TRUE(partition() == readFile("/etc/rom/QPK310V_default.rom"));
    EXPECT_EQ(said("bios displayinfo | grep SN"), "\t\t OEM SN             :    QPK310V4U1600001\n"
                                                  "\t\t QLN SN             :    QPK315V4U1600001\n");

    ASSERT_EQ(std::system((MAKE_FLASH " " + path("")).c_str()), 0);
    EXPECT_EQ(said("bios getoemsn"), "QPK310V4U1600001\n") << "what is there stays";
}

TEST_F(FlashTest, GetRunsTheTftpClientAndShowsItsOutput)
{
    plantTool("tftp", "echo \"tftp $*\"; echo fetched > \"$6\"");
    const std::string call = "tftp 10.0.0.1 -g -r x.rom -l " + path("/tmp/x.rom") + "\n";
    EXPECT_EQ(said("bios get 10.0.0.1 x.rom"), call);
    EXPECT_EQ(said("bios get 10.0.0.1 x.rom | grep -o -- -g"), "-g\n");
    EXPECT_EQ(readFile("/tmp/x.rom"), "fetched\n");

    // A planted link leads nowhere, and the files are their owner's alone.
    writeFile("/cfg/victim", "precious");
    for (const char* file : {"/tmp/x.rom", "/tmp/cmd_output"}) {
        fs::remove(path(file));
        fs::create_symlink(path("/cfg/victim"), path(file));
    }
    EXPECT_EQ(said("bios get 10.0.0.1 x.rom"), call);
    EXPECT_EQ(readFile("/cfg/victim"), "precious");
    for (const char* file : {"/tmp/x.rom", "/tmp/cmd_output"})
        EXPECT_EQ(fs::status(path(file)).permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;
}

TEST_F(FlashTest, GetRefusesWhatItCannotRun)
{
    plantRecorder("tftp");
    EXPECT_EQ(said("bios get 10.0.0.1 " + std::string(256, 'x')), "    Error: Command line too long.\n");
    EXPECT_EQ(said("bios get 10.0.0.1 ../cfg/cw.conf"), "    Error: Invalid file name '../cfg/cw.conf'.\n");
    EXPECT_EQ(calls(), "");
}

} // namespace
