#include "tests/support/device.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "cli/root_table.h"

namespace fs = std::filesystem;

DeviceTest::DeviceTest()
{
    std::string pattern = (fs::temp_directory_path() / "cli_test_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for a device root");
    root_ = pattern;
    for (const char* folder : {"/cfg", "/etc", "/dev", "/proc", "/tmp", "/bin"})
        fs::create_directories(path(folder));
    setenv("CLI_SIM_ROOT", root_.c_str(), 1);
    setRootCommands(rootTable);
    setenv("PATH", (path("/bin") + ":" + std::getenv("PATH")).c_str(), 1);
}

DeviceTest::~DeviceTest()
{
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void DeviceTest::writeFile(const std::string& devicePath, const std::string& text) const
{
    std::ofstream(path(devicePath), std::ios::binary) << text;
}

std::string DeviceTest::readFile(const std::string& devicePath) const
{
    std::ostringstream text;
    text << std::ifstream(path(devicePath), std::ios::binary).rdbuf();
    return text.str();
}

void DeviceTest::plantTool(const std::string& name, const std::string& script) const
{
    writeFile("/bin/" + name, "#!/bin/sh\n" + script + "\n");
    fs::permissions(path("/bin/" + name), fs::perms::owner_all);
}

void DeviceTest::plantRecorder(const std::string& name) const
{
    plantTool(name, "echo \"" + name + " $*\" >> \"$CLI_SIM_ROOT/tmp/calls\"");
}

std::string outputOf(const std::function<void()>& action)
{
    std::fflush(stdout);
    FILE* file = std::tmpfile();
    const int terminal = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
    action();
    std::fflush(stdout);
    dup2(terminal, STDOUT_FILENO);
    close(terminal);

    std::string text(static_cast<std::size_t>(lseek(fileno(file), 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(fileno(file), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    std::fclose(file);
    return text;
}
