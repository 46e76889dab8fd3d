// The record against images made without the code under test.

#include "bios/platform_info.h"

#include <cstring>
#include <filesystem>
#include <sys/stat.h>

#include "bios/flash_device.h"
#include "tests/support/device.h"

namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kImageSize = 0x40000;
constexpr std::size_t kOemSnOffset = 0x3FFE0;

/// The image with its checksum brought up to date, as the simulated flash keeps it.
std::string sealed(std::string image)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (std::size_t i = 0; i < kImageSize - 4; ++i) {
        crc ^= static_cast<std::uint8_t>(image[i]);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    for (std::size_t i = 0; i < 4; ++i)
        image[kImageSize - 4 + i] = static_cast<char>(~crc >> 8 * i);
    return image;
}

/// The image with `bytes` put at `offset`; the checksum is left alone.
std::string patched(std::string image, std::size_t offset, const std::string& bytes)
{
    return image.replace(offset, bytes.size(), bytes);
}

/// Bytes that differ everywhere, sealed.
std::string noisyImage(std::uint32_t seed = 1)
{
    std::string image(kImageSize, '\0');
    for (char& byte : image) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<char>(seed >> 24);
    }
    return sealed(image);
}

std::string dumpOf(const std::string& image)
{
    std::string text;
    for (std::size_t i = 0; i < image.size(); ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, " %02x", static_cast<std::uint8_t>(image[i]));
        text += byte;
        if (i % 50 == 0)
            text += '\n';
    }
    return text;
}

/// What the four readers of single fields find, each of which must return `result`.
struct Readings {
    std::uint8_t mac[6]{};
    char oemSn[17]{};
    char part[10]{};
    char letter = '\0';

    void take(int result)
    {
        EXPECT_EQ(biosGetOemMac(mac), result);
        EXPECT_EQ(biosGetOemSn(oemSn), result);
        EXPECT_EQ(biosGetPn(part), result);
        EXPECT_EQ(biosGetRegCode(letter), result);
    }
};

class FlashTest : public DeviceTest
{
protected:
    FlashTest()
    {
        platformInfo = {};
        writeFile("/proc/mtd", "dev:    size   erasesize  name\nmtd0: 00040000 00020000 \"bios\"\n");
        writeFile(kPartition, image_);
        writeFile("/dev/mtd0", "");
    }

    [[nodiscard]] std::string partition() const { return readFile(kPartition); }

    static constexpr char kPartition[] = "/dev/mtdblock0";
    const std::string image_ = noisyImage();
};

TEST_F(FlashTest, FindsThePartitionByItsName)
{
    struct Case {
        const char* partitions;
        const char* node; // that can be opened
        int result;
        std::string path;
    };
    const Case cases[] = {
        {"mtd3: 00040000 00010000 \"bios\"\n", "/dev/mtdblock/3", 0, "/dev/mtdblock/3"},
        {"mtd3: 00040000 00010000 \"bios\"\n", "/dev/mtd3", 0, "/dev/mtdblock3"},
        {"bios: size erasesize name\nmtd1: 00040000 00010000 \"boot\"\nmtd12: 00040000 00010000 \"bios\"\n"
         "mtd13: 00040000 00010000 \"bios\"\n",
         "/dev/mtdblock12", 0, "/dev/mtdblock12"},
        // Only 31 characters of a line are looked at, and its rest is a line of its own.
        {"mtd0: 00040000 00010000 \"loader-bios\"\nmtd5: 00040000 00010000 \"bios\"\n", "/dev/mtdblock5", 0,
         "/dev/mtdblock5"},
        {"mtd0: 00040000 00010000 \"boot\"\n", "/dev/mtdblock0", -1, "mtd0: 00040000 00010000 \"boot\"\n"},
    };
    fs::create_directory(path("/dev/mtdblock"));
    for (const Case& c : cases) {
        writeFile("/proc/mtd", c.partitions);
        writeFile(c.node, "");
        char found[32]{};
        EXPECT_EQ(biosFindMtdDevice(found, sizeof found), c.result) << c.partitions;
        EXPECT_EQ(found, c.path.substr(0, sizeof found - 1));
        fs::remove(path(c.node));
    }
}

TEST_F(FlashTest, WithoutADeviceNothingIsReadOrWritten)
{
    writeFile("/tmp/x.rom", image_);
    for (const char* missing : {kPartition, "/proc/mtd"}) {
        fs::remove(path(missing));
        EXPECT_EQ(outputOf([] {
                      Readings().take(-1);
                      EXPECT_EQ(biosSetMac("001122334455"), -1);
                      EXPECT_EQ(biosSetOemSn("A"), -1);
                      EXPECT_EQ(biosSetQlnSn("A"), -1);
                      EXPECT_EQ(biosSetDefaultRecord(), -1);
                      EXPECT_EQ(biosSaveRomFile("x.rom"), -1);
                      EXPECT_EQ(biosErase(), 0);
                  }),
                  "");
        EXPECT_EQ(outputOf(biosDumpRawInfo), dumpOf(std::string(kImageSize, '\0')) + "biosDumpRawInfo: CRC error.\r\n");
        EXPECT_FALSE(exists(kPartition));
    }
}

// Each setter writes its bytes and the checksum, and no other byte of the partition.
TEST_F(FlashTest, SettersWriteTheirSlotAlone)
{
    struct Case {
        int (*set)(const char* text);
        const char* text;
        std::size_t offset;
        std::string bytes;
    };
    const std::string nothing(14, '\0');
    const Case cases[] = {
        {biosSetMac, "00:11:22:33:44:55:66", 0x3FF80, "001122334455"},
        {biosSetMac, "xxaA-bB-cC-dD-eE-fF", 0x3FF80, "aAbBcCdDeEfF"},
        {biosSetOemSn, "QPK310V3U1600001", kOemSnOffset, "QPK310V3U1600001"},
        // What the record held stays behind.
        {biosSetOemSn, "AB", kOemSnOffset, "AB" + nothing.substr(0, 1) + "310V3U1600001"},
        {biosSetQlnSn, "AB", 0x3FF90, "AB" + nothing},
        {biosSetQlnSn, "0123456789abcdefgh", 0x3FF90, "0123456789abcdef"},
    };
    std::string expected = image_;
    for (const Case& c : cases) {
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(c.set(c.text), 0); }), "");
        expected = sealed(patched(expected, c.offset, c.bytes));
        EXPECT_TRUE(partition() == expected) << c.text;
    }
}

TEST_F(FlashTest, ReadersReturnTheirSlotAndReportEveryFlippedByte)
{
    std::string image = patched(image_, 0x3FF80, "0a1B2c3D4e5F");
    image = patched(image, 0x3FFA8, "12345678Regcode:E");
    image = sealed(patched(image, kOemSnOffset, "QPK310V4U1600001"));
    writeFile(kPartition, image);
    Readings found;
    EXPECT_EQ(outputOf([&] { found.take(0); }), "");
    EXPECT_EQ(std::memcmp(found.mac, "\x0a\x1b\x2c\x3d\x4e\x5f", 6), 0);
    EXPECT_STREQ(found.oemSn, "QPK310V4U1600001");
    EXPECT_STREQ(found.part, "12345678R");
    EXPECT_EQ(found.letter, 'E');

    for (const std::size_t offset : {0UL, 0x1FFFFUL, 0x3FF7FUL, 0x3FF80UL, 0x3FFFBUL, 0x3FFFCUL, 0x3FFFFUL}) {
        writeFile(kPartition, patched(image, offset, {static_cast<char>(image[offset] ^ 0x10)}));
        EXPECT_EQ(outputOf([&] { found.take(0); }),
                  "biosGetOemMac: CRC error.\r\nbiosGetOemSn: CRC error.\r\nbiosGetPn: CRC error.\r\n");
        EXPECT_STREQ(found.oemSn, "QPK310V4U1600001");
    }
}

TEST_F(FlashTest, ConvertsOnlyTwelveHexadecimalDigits)
{
    std::uint8_t mac[6] = {1, 2, 3, 4, 5, 6};
    for (const char character : {'g', 'G', '/', ':', '@', '`', '\0', '\xff'}) {
        const char digits[12] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'a', character};
        EXPECT_EQ(biosHexToMac(digits, mac), -1);
        EXPECT_EQ(std::memcmp(mac, "\1\2\3\4\5\6", 6), 0);
    }
}

TEST_F(FlashTest, AChecksumThatCannotBeStoredIsAMessage)
{
    writeFile(kPartition, "short");
    EXPECT_EQ(outputOf([] {
                  EXPECT_EQ(biosSetMac("001122334455"), 0);
                  EXPECT_EQ(biosSetQlnSn("AB"), 0);
                  EXPECT_EQ(biosSetOemSn("QPK310V4U1600001"), 0);
              }),
              "biosSetMac: SetCRC error.\r\nbiosSetQlnSn: SetCRC error.\r\nbiosSetOemSn: SetCRC error.\r\n");
    EXPECT_EQ(partition().substr(kOemSnOffset), "QPK310V4U1600001");

    fs::remove(path(kPartition));
    fs::create_symlink("/dev/full", path(kPartition));
    writeFile("/tmp/x.rom", image_);
    EXPECT_EQ(outputOf([] {
                  EXPECT_EQ(biosSetDefaultRecord(), 0);
                  EXPECT_EQ(biosSaveRomFile("x.rom"), 0);
              }),
              "biosFlushPlatformInfo: SetCRC error.\r\nbiosSaveToFlash: SetCRC error.\r\n");
}

TEST_F(FlashTest, TheDefaultRecordIsAWholeImage)
{
    EXPECT_EQ(biosSetDefaultRecord(), 0);
    std::string image(kImageSize, '\0');
    image = patched(image, 0x3FF80, std::string("\x02\x1a\x2b\x00\x01\x00", 6));
    image = patched(image, 0x3FF90, "QPK315V4U1600001QK310V");
    image = patched(image, 0x3FFB0, "Regcode:A");
    image = patched(image, 0x3FFC0, "Ver:05000001");
    EXPECT_TRUE(partition() == sealed(patched(image, kOemSnOffset, "QPK310V4U1600001")));
}

TEST_F(FlashTest, SavesTheFirstBytesOfARomFileThatCanBeReadWhole)
{
    writeFile("/tmp/short.rom", std::string(kImageSize - 1, 'x'));
    fs::create_directory(path("/tmp/folder.rom"));
    fs::create_symlink("/dev/zero", path("/tmp/device.rom"));
    mkfifo(path("/tmp/pipe.rom").c_str(), S_IRUSR | S_IWUSR);
    const std::string longName(1200, 'x');
    for (const char* name : {"short.rom", "folder.rom", "device.rom", "pipe.rom", "", longName.c_str()})
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(biosSaveRomFile(name), -1); }), "") << name;
    EXPECT_EQ(outputOf([] { EXPECT_EQ(biosSaveRomFile("../dev/mtdblock0"), -1); }),
              "    Error: Invalid file name '../dev/mtdblock0'.\n");
    EXPECT_TRUE(partition() == image_);

    const std::string rom = noisyImage(2);
    writeFile("/tmp/x.rom", rom + "and what is behind it");
    EXPECT_EQ(biosSaveRomFile("x.rom"), 0);
    EXPECT_TRUE(partition() == rom);
}

TEST_F(FlashTest, DumpsAndErasesEveryByte)
{
    EXPECT_TRUE(outputOf(biosDumpRawInfo) == dumpOf(image_));
    const std::string flipped = patched(image_, 7, "flipped");
    writeFile(kPartition, flipped);
    EXPECT_TRUE(outputOf(biosDumpRawInfo) == dumpOf(flipped) + "biosDumpRawInfo: CRC error.\r\n");
    EXPECT_EQ(outputOf(biosErase), "");
    EXPECT_TRUE(partition() == std::string(kImageSize, '\xff'));

    writeFile(kPartition, image_);
    fs::remove(path("/dev/mtd0"));
    EXPECT_EQ(outputOf(biosErase), "");
    EXPECT_TRUE(partition() == image_) << "a block device does not erase";
}

} // namespace
