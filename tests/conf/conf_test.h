// Fixture of the configuration's tests.

#ifndef TESTS_CONF_CONF_TEST_H
#define TESTS_CONF_CONF_TEST_H

#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include "conf/config_tree.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/sys_conf.h"
#include "shell/executor.h"
#include "tests/support/device.h"

/// Reading a configuration file fails behind this many bytes, before which every other read is interrupted. Negative:
/// it is left alone.
inline ssize_t readableBytes = -1;

/// A device named "SN42" without configuration files; every tool that the handlers run is a recorder.
class ConfTest : public DeviceTest
{
protected:
    ConfTest()
    {
        std::memset(&cwConfig, 0, sizeof cwConfig);
        std::memset(&cwConfigSnapshot, 0, sizeof cwConfigSnapshot);
        std::memset(&sysConfig, 0, sizeof sysConfig);
        std::filesystem::create_directories(path("/sim"));
        writeFile("/sim/serial_number", "SN42\n");
        for (const char* tool : {"pkill", "ip", "hostname", "qln-set-hostname"})
            plantRecorder(tool);
    }

    ~ConfTest() override
    {
        readableBytes = -1;
        cwConfCopy(cwConfigSnapshot, cwConfig);
        cwConfDefault(cwConfig, kShellInstance);
        cwConfCopy(cwConfigSnapshot, cwConfig);
    }

    /// Runs a command line; its result is kept.
    std::string type(const std::string& line)
    {
        return outputOf([&] { result_ = executeLine(line.c_str()); });
    }

    /// What is said when a shell starts.
    static std::string prepare()
    {
        return outputOf([] { configPrepare(nullptr, nullptr); });
    }

    /// Writes a file whose modification time is `nanoseconds` after a certain second.
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

    /// The value of an item as the file has it; those of a list, each followed by a blank.
    static std::string valueOf(const char* key)
    {
        std::string text;
        const CwItem& item = *cwConfItem(key);
        forEachValue(item, cwConfig, [&](const char*, const char* value) {
            text += value;
            text += item.kind->count != nullptr ? " " : "";
        });
        return text;
    }

    int result_ = 0;
};

#endif
