#include "diag/system_info.h"

#include "base/product.h"
#include "bios/platform_info.h"
#include "platform/system_library.h"
#include "shell/output.h"
#include "shell/pass_through.h"

int versionCommand(int, char**)
{
    char serial[17] = "";
    biosGetOemSn(serial);
    cli_print("=================================================================\n");
    cli_printf("\tSystem Version: %s-%s.%s-%s-build%s-%s-patch%s\n", kSystemName, kFirmwareMajor, kFirmwareMinor, "AP",
               kFirmwareBuild, kFirmwareDate, kFirmwarePatch);
    cli_printf("\tBuild Label   : %s\n", "GA");
    cli_printf("\tBuild Date    : %s\n", kFirmwareDate);
    cli_print("\tBuild Type    : Release\n");
    cli_printf("\tSerial Number : %.17s\n", serial);
    cli_print("\tStartup Time  : \n");
    // The closing line is one character longer than the opening line.
    cli_print("==================================================================\n");
    return 0;
}

int performanceCommand(int, char**)
{
    char uptime[256] = "";
    cli_printf("cpu usage rate: %d%%\n", get_cpu_usage_rate());
    cli_printf("memory usage rate: %d%%\n", get_memory_usage_rate());
    uptime_main(uptime, sizeof uptime - 1); // the last byte stays zero and ends the text
    cli_printLines(uptime);
    cli_print("\n");
    return 0;
}

int cloudInfoCommand(int, char**)
{
    runShellCommand("cw_diag -c qsky-cfg");
    return 0;
}
