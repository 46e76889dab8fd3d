#include "bios/bios_command.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

#include "base/address.h"
#include "base/file.h"
#include "base/text.h"
#include "bios/platform_info.h"
#include "platform/device_file.h"
#include "platform/system_library.h"
#include "shell/output.h"
#include "shell/pass_through.h"
#include "shell/tools.h"

namespace
{

constexpr char kTftpOutputFile[] = "/tmp/cmd_output";
constexpr char kTftpCommand[] = "tftp %s -g -r %s -l %s > %s\n";
constexpr std::size_t kTftpCommandSize = 256; ///< size limit of the command, checked with device paths

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

/// Prints the factory record as the platform's library decodes it.
void biosDisplayInfo()
{
    platformInfo = {};
    get_qln_platform_info(&platformInfo);
    cli_printf("\t\t Platform name      :    %.17s\n", platformInfo.platformName);
    cli_printf("\t\t Reg code           :    %.17s\n", platformInfo.regionCode);
    cli_printf("\t\t BIOS version       :    %.17s\n", platformInfo.biosVersion);
    cli_printf("\t\t OEM SN             :    %.17s\n", platformInfo.oemSn);
    cli_printf("\t\t QLN SN             :    %.17s\n", platformInfo.qlnSn);
    cli_printf("\t\t MAC ADDR           :    %s\n", macText(platformInfo.mac).text);
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
        cli_printf("%s\n", macText(mac).text);
}

/// Whether a folder in a path below "/tmp" is a symbolic link, which may lead out of "/tmp".
bool leadsThroughLink(const char* devicePath)
{
    char folder[kRomPathSize];
    copyText(folder, devicePath);
    for (char* end = std::strrchr(folder, '/'); end >= folder + sizeof "/tmp"; end = std::strrchr(folder, '/')) {
        *end = '\0';
        struct stat status;
        if (lstat(DeviceFile(folder).path(), &status) == 0 && S_ISLNK(status.st_mode))
            return true;
    }
    return false;
}

/// Whether the path is a regular file of this user without other hard links.
bool isOwnFile(const char* devicePath)
{
    struct stat status;
    return lstat(DeviceFile(devicePath).path(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 &&
           status.st_uid == geteuid();
}

/// Creates the file that a tool will write, so that nobody can create a link with its name before the tool opens it.
/// Returns false if it cannot be created. A missing folder is no failure here, because the tool reports it.
bool makeForTool(const char* devicePath)
{
    return !leadsThroughLink(devicePath) && (makePrivateFile(devicePath) || errno == ENOENT);
}

void removeEmptyFile(const char* devicePath)
{
    const DeviceFile file(devicePath);
    struct stat status;
    if (lstat(file.path(), &status) == 0 && status.st_size == 0)
        unlink(file.path());
}

/// Fetches `file` into "/tmp", where `save` reads it, and prints the output of the TFTP client.
void biosTftpGet(const char* server, const char* file)
{
    char path[kRomPathSize];
    if (!biosRomFilePath(path, file))
        return;
    const DeviceFile rom(path);
    const DeviceFile log(kTftpOutputFile);
    char command[kTftpCommandSize];
    if (!composeCommand(command, kTftpCommand, server, file, path, kTftpOutputFile))
        return;

    // Do not empty an image that an earlier command has fetched. If this fetch fails, the old image remains.
    const bool isKept = isOwnFile(path) && !leadsThroughLink(path);
    const bool isLogMade = makeForTool(kTftpOutputFile);
    if (!isLogMade || (!isKept && !makeForTool(path))) {
        cli_printf(kCanNotWrite, isLogMade ? path : kTftpOutputFile);
        return;
    }
    runCommandf(kTftpCommand, server, file, rom.path(), log.path());
    if (!isKept)
        removeEmptyFile(path);

    char show[DeviceFile::kPathSize + sizeof "cat "];
    if (composeCommand(show, "cat %s", log.path()))
        runShellCommand(show);
}

struct BiosAction {
    const char* name;
    const char* help;
    int words; ///< number of words of the whole line
    void (*run)(char** argv);
};

constexpr BiosAction kBiosActions[] = {
    {"erase", "erase", 2, [](char**) { biosErase(); }},
    {"dumpflash", "dumpflash", 2, [](char**) { biosDumpRawInfo(); }},
    {"setdefault", "setdefault", 2, [](char**) { biosSetDefault(); }},
    {"displayinfo", "displayinfo", 2, [](char**) { biosDisplayInfo(); }},
    {"setmac", "setmac", 3, [](char** argv) { biosSetMac(argv[2]); }},
    {"getmac", "getmac", 2, [](char**) { biosShowMac(); }},
    {"setoemsn", "setoemsn", 3, [](char** argv) { biosSetOemSn(argv[2]); }},
    {"setqlnsn", "setqlnsn", 3, [](char** argv) { biosSetQlnSn(argv[2]); }},
    {"getoemsn", "Get OEM SN", 2, [](char**) { biosShowOemSn(); }},
    {"save", "saveROMBIOS", 3, [](char** argv) { biosSaveRomFile(argv[2]); }},
    {"get", "FTP get ROM BIOS file", 4, [](char** argv) { biosTftpGet(argv[2], argv[3]); }},
};

consteval auto rowsOfActions()
{
    std::array<cli_node, std::size(kBiosActions)> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = command(kBiosActions[i].name, kBiosActions[i].help, biosCommand);
    return rows;
}

} // namespace

constinit std::array<cli_node, 11> biosTable = rowsOfActions();

int biosCommand(int argc, char** argv)
{
    for (const BiosAction& action : kBiosActions) {
        if (argc == action.words && std::strcmp(argv[1], action.name) == 0) {
            action.run(argv);
            return 0;
        }
    }
    biosUsage();
    return 0;
}
