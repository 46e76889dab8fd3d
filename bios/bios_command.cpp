#include "bios/bios_command.h"

#include <cstring>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

#include "bios/platform_info.h"
#include "cli/external.h"
#include "cli/output.h"
#include "cli/pipe.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

constexpr char kTftpOutputFile[] = "/tmp/cmd_output";
constexpr std::size_t kTftpCommandSize = 256;

constexpr const char* kUsage[] = {
    "\t bios - BIOS platform information test \n",
    "\t usage: \n",
    "\t\t > bios \n",
    "\t\t\t - help \n\n",
    "\t\t > bios setdefault \n",
    "\t\t\t - set the platform info in default \n\n",
    "\t\t > bios displayinfo \n",
    "\t\t\t - display BIOS platform information \n\n",
    "\t\t > bios setmac [mac address without ':'] \n",
    "\t\t\t - set platform MAC address\n\n",
    "\t\t > bios getmac \n",
    "\t\t\t - get platform MAC address\n",
    "\t\t\t - e.g. > bios setmac 021a2b880801 \n\n",
    "\t\t > bios setoemsn [OEM serial number] \n",
    "\t\t\t - set OEM Serial Number \n",
    "\t\t\t - e.g. > bios setoemsn QPK310V3U1600001 \n\n",
    "\t\t > bios setqlnsn [QLN serial number] \n",
    "\t\t\t - set QLN Serial Number \n",
    "\t\t\t - e.g. > bios setqlnsn QPK310V3U1600001 \n\n",
    "\t\t > bios get [IP address with format XXX.XXX.XXX.XXX of TFTP server] [ROM BIOS filename] \n",
    "\t\t\t - Get a ROM BIOS file from remote TFTP server \n",
    "\t\t\t - e.g. > bios get 192.168.0.10 QK310V4N15000001.rom \n\n",
    "\t\t > bios save [ROM BIOS filename] \n",
    "\t\t\t - Save a loaded ROM BIOS file into flash \n",
    "\t\t\t - e.g. > bios save QK310V4N15000001.rom \n\n",
    "\t\t \n",
};

void biosUsage()
{
    for (const char* line : kUsage)
        cli_print(line);
}

void biosSetDefault()
{
    if (biosSaveDefaultRom() != -1)
        return;
    cli_print("** Failed to flash default ROM BIOS image!\n");
    biosSetDefaultRecord();
}

/// Shows the platform's view of the record.
void biosDisplayInfo()
{
    platformInfo = {};
    get_qln_platform_info(&platformInfo);
    const auto& mac = platformInfo.mac;
    cli_printf("\t\t Platform name      :    %.17s\n", platformInfo.platformName);
    cli_printf("\t\t Reg code           :    %.17s\n", platformInfo.regionCode);
    cli_printf("\t\t BIOS version       :    %.17s\n", platformInfo.biosVersion);
    cli_printf("\t\t OEM SN             :    %.17s\n", platformInfo.oemSn);
    cli_printf("\t\t QLN SN             :    %.17s\n", platformInfo.qlnSn);
    cli_printf("\t\t MAC ADDR           :    %02x:%02x:%02x:%02x:%02x:%02x\n", mac[0], mac[1], mac[2], mac[3], mac[4],
               mac[5]);
}

void biosShowOemSn()
{
    char text[17];
    if (biosGetOemSn(text) != -1)
        cli_printf("%s\n", text);
}

void biosShowMac()
{
    std::uint8_t mac[kMacSize]{};
    if (biosGetOemMac(mac) != -1)
        cli_printf("%02x:%02x:%02x:%02x:%02x:%02x\n", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

/// Fetches `file` into "/tmp", where `save` expects it, and shows what the TFTP client said.
void biosTftpGet(const char* server, const char* file)
{
    char path[kRomPathSize];
    if (!biosRomFilePath(path, file))
        return;
    const DeviceFile rom(path);
    const DeviceFile log(kTftpOutputFile);
    char command[kTftpCommandSize];
    if (!composeCommand(command, "tftp %s -g -r %s -l %s > %s\n", server, file, rom.path(), log.path()))
        return;

    // Neither file is written through a link that somebody planted, nor readable by others.
    unlink(rom.path());
    unlink(log.path());
    const mode_t mask = umask(S_IRWXG | S_IRWXO);
    runCommand(command);
    umask(mask);

    char show[DeviceFile::kPathSize + sizeof "cat "];
    if (composeCommand(show, "cat %s", log.path()))
        runShellCommand(show);
}

struct BiosAction {
    const char* name;
    int words; ///< of the whole line
    void (*run)(char** argv);
};

constexpr BiosAction kActions[] = {
    {"erase", 2,
     [](char**) {
         biosErase();
     }},
    {"dumpflash", 2,
     [](char**) {
         biosDumpRawInfo();
     }},
    {"setdefault", 2,
     [](char**) {
         biosSetDefault();
     }},
    {"displayinfo", 2,
     [](char**) {
         biosDisplayInfo();
     }},
    {"setmac", 3,
     [](char** argv) {
         biosSetMac(argv[2]);
     }},
    {"getmac", 2,
     [](char**) {
         biosShowMac();
     }},
    {"setoemsn", 3,
     [](char** argv) {
         biosSetOemSn(argv[2]);
     }},
    {"setqlnsn", 3,
     [](char** argv) {
         biosSetQlnSn(argv[2]);
     }},
    {"getoemsn", 2,
     [](char**) {
         biosShowOemSn();
     }},
    {"save", 3,
     [](char** argv) {
         biosSaveRomFile(argv[2]);
     }},
    {"get", 4,
     [](char** argv) {
         biosTftpGet(argv[2], argv[3]);
     }},
};

static_assert(std::size(kActions) == std::size(biosTable));

} // namespace

constinit cli_node biosTable[11] = {
    command("erase", "erase", biosCommand),
    command("dumpflash", "dumpflash", biosCommand),
    command("setdefault", "setdefault", biosCommand),
    command("displayinfo", "displayinfo", biosCommand),
    command("setmac", "setmac", biosCommand),
    command("getmac", "getmac", biosCommand),
    command("setoemsn", "setoemsn", biosCommand),
    command("setqlnsn", "setqlnsn", biosCommand),
    command("getoemsn", "Get OEM SN", biosCommand),
    command("save", "saveROMBIOS", biosCommand),
    command("get", "FTP get ROM BIOS file", biosCommand),
};

int biosCommand(int argc, char** argv)
{
    for (const BiosAction& action : kActions) {
        if (argc == action.words && std::strcmp(argv[1], action.name) == 0) {
            action.run(argv);
            return 0;
        }
    }
    biosUsage();
    return 0;
}
