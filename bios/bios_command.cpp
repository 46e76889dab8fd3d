#include "bios/bios_command.h"

#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "bios/platform_info.h"
#include "cli/external.h"
#include "cli/output.h"
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

void printMac(const char* format, const std::uint8_t (&mac)[kMacSize]);

} // namespace
