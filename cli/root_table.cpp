#include "cli/root_table.h"

#include "bios/bios_command.h"
#include "cli/guard.h"
#include "conf/cfg.h"
#include "conf/config_tree.h"
#include "debug/debug_commands.h"
#include "diag/country.h"
#include "diag/get_tree.h"
#include "diag/hardware_commands.h"
#include "diag/radio_commands.h"
#include "shell/executor.h"
#include "shell/pass_through.h"

namespace
{

/// `show-hiden` and `hide-hiden` change the rows of this table. If aliases are loaded, the tree uses a copy of the
/// rows, which stays as it is.
void changeVisibility(std::int32_t from, std::int32_t to)
{
    for (cli_node& row : rootTable)
        if (row.visibility == from)
            row.visibility = to;
}

int showHiddenCommand(int, char**)
{
    changeVisibility(kHidden, kRevealed);
    return 0;
}

int hideHiddenCommand(int, char**)
{
    changeVisibility(kRevealed, kHidden);
    return 0;
}

consteval cli_node rootHelp(cli_node row)
{
    row.visibility = kRootHelp;
    return row;
}

/// The children of `debug` and `kdebug` until their prepare hooks replace them.
constinit cli_node helpVariantTable[] = {
    command("help", "help", helpLister),
    command("help1", "help", helpLister),
    command("ddhelp1", "help", helpLister),
    command("cchelp2", "help", helpLister),
};

constinit cli_node showTable[] = {
    command("cw_conf", "Show capwap configuration.", showCwConfCommand),
    command("sys_conf", "Show system configuration.", showSysConfCommand),
};

constinit cli_node saveTable[] = {
    command("cw_conf", "Save capwap configuration.", saveCwConfCommand),
};

constinit cli_node dropTable[] = {
    command("cw_conf", "Drop capwap configuration.", dropCwConfCommand),
};

constinit cli_node powerTable[] = {
    command("on", "Test power led (10 sec).", ledTestCommand),
    command("off", "Test power led (10 sec).", ledTestCommand),
};

constinit cli_node ledTestTable[] = {
    group("power", "Test power led.", powerTable),
};

constinit cli_node rows[] = {
    rootHelp(command("help", "Show Quillon commands.", helpLister)),
    command("quit", "Quit the CLI.", quitCommand),
    command("exit", "Exit the CLI.", quitCommand),
    command("reboot", "Reboot the system.", rebootCommand),
    command("factory-reset", "Reset to factory setting.", factoryResetCommand),
    prepared(group("debug", "User space debug tool.", helpVariantTable), debugPrepare),
    prepared(group("kdebug", "Kernel module debug tool.", helpVariantTable), kdebugPrepare),
    hidden(group("bios", "Bios information.", biosTable)),
    hidden(group("memdbg", "Memory debug tool.", biosTable)),
    hidden(group("diagnose", "Dignose daemon crash.", diagnoseTable)),
    group("get", "Get dynamic and system information.", getTable),
    hidden(command("shell", "Enter shell.", shellCommand)),
    hidden(command("iwpriv", "RTL driver commands.", capturePassThrough)),
    command("brctl", "Bridge interface commands.", capturePassThrough),
    command("ping", "Execute ping command.", directPassThrough),
    command("grep", "Execute grep command.", directPassThrough),
    command("passwd", "Change password of admin.", directPassThrough),
    command("ps", "ps.", directPassThrough),
    command("kill", "kill.", directPassThrough),
    command("killall", "killall.", directPassThrough),
    command("top", "top.", directPassThrough),
    command("lldpctl", "LLDP information.", directPassThrough),
    command("cw_diag", "Capwap diagnose commands.", directPassThrough),
    command("cw_debug", "Capwap diagnose commands.", directPassThrough),
    command("diag_debug_crashlog", "daemon crash log commands.", directPassThrough),
    command("ifconfig", "System interface config.", capturePassThrough),
    command("iwconfig", "wireless intf config tool.", capturePassThrough),
    command("restore", "Restore image via TFTP server.", directPassThrough),
    hidden(command("flash", "Factory production commands for flash.", capturePassThrough)),
    hidden(group("oem", "Factory production commands for oem.", oemTable)),
    command("qln-get-status", "Display platform status information.", capturePassThrough),
    hidden(command("rstkt", "Reset key testing.", rstktCommand)),
    hidden(command("getscan", "Get Scan result.", getscanCommand)),
    hidden(command("sptest", "Simple Performance Test.", sptestCommand)),
    hidden(command("gpio", "Read or write the gpio.", gpioCommand)),
    hidden(command("country", "Set the country code: US/CN/GB/JP/...", countryCommand)),
    hidden(command("txpower", "Set the TX power of radio", txpowerCommand)),
    command("calibration", "Show the TX power calibration", calibrationCommand),
    prepared(group("config", "Configure the AP system.", configTable), configPrepare),
    command("cfg", "Compatible configure commands.", cfgCommand),
    group("show", "Show configurations.", showTable),
    group("save", "Save configuration change.", saveTable),
    group("drop", "Drop configuration change.", dropTable),
    hidden(command("show-hiden", "Show all hiden commands.", showHiddenCommand)),
    hidden(command("hide-hiden", "Hiden all hiden commands.", hideHiddenCommand)),
    hidden(group("led_test", "Test led lights.", ledTestTable)),
};

} // namespace

constinit const std::span<cli_node> rootTable = rows;
