// A device for tests of the configuration.

#ifndef TESTS_CONF_CONF_H
#define TESTS_CONF_CONF_H

#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include "conf/config_tree.h"
#include "conf/cw_conf.h"
#include "conf/cw_items.h"
#include "conf/sys_conf.h"
#include "shell/executor.h"
#include "tests/support/device.h"

inline constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";

/// The text of "/cfg/sys.conf" as the shell writes it.
inline std::string fileOf(const std::string& items)
{
    const std::string frame = "#=====================SYS CONF PARAMs========================\n";
    return frame + "#CONFIG system\n" + items + frame;
}

/// A device with the serial number "SN42" and without configuration files. Its tools record their calls.
class ConfTest : public DeviceTest
{
protected:
    ConfTest()
    {
        std::filesystem::create_directories(path("/sim"));
        writeFile("/sim/serial_number", "SN42\n");
        for (const char* tool : {"pkill", "ip", "hostname", "qln-set-hostname"})
            plantRecorder(tool);
    }

    /// Runs a command line and keeps its result.
    std::string type(const std::string& line)
    {
        return outputOf([&] { result_ = executeLine(line.c_str()); });
    }

    /// The output of a start of the shell.
    static std::string prepare()
    {
        return outputOf([] { configPrepare(nullptr, nullptr); });
    }

    /// Writes a file and sets its modification time to `nanoseconds` after `second`.
    void writeAt(int nanoseconds, const std::string& file, const std::string& text, time_t second = 1'000'000'000) const
    {
        writeFile(file, text);
        const timespec times[2] = {{0, UTIME_OMIT}, {second, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, path(file).c_str(), times, 0), 0);
    }

    std::string set(const char* key, const char* value)
    {
        return outputOf([&] { result_ = cwConfSetItem(key, value, cwConfig); });
    }

    /// Starts the shell on a device whose configuration files hold the defaults and were written long ago.
    void startSaved()
    {
        writeAt(0, "/cfg/cw.conf", "static-ip-addr=192.168.1.2\n");
        writeAt(0, "/cfg/sys.conf", fileOf("factorysn=F1\nhostname=ap1\nbaudrate=115200\nadmin-timeout=5\n"));
        EXPECT_EQ(prepare(), "");
    }

    int result_ = 0;
};

#endif
