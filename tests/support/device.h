// A temporary device for one test, and the output of the shell as text.

#ifndef TESTS_SUPPORT_DEVICE_H
#define TESTS_SUPPORT_DEVICE_H

#include <functional>
#include <string>

#include <gtest/gtest.h>

/// Gives every test an empty device root of its own, with the folders "cfg", "etc", "dev", "proc", "tmp" and "bin".
/// Its "bin" comes first on PATH, so a test plants the tools that it expects to be run.
class DeviceTest : public testing::Test
{
protected:
    DeviceTest();
    ~DeviceTest() override;

    /// The path of a device file on this machine.
    [[nodiscard]] std::string path(const std::string& devicePath) const { return root_ + devicePath; }

    void writeFile(const std::string& devicePath, const std::string& text) const;
    /// Returns an empty text if there is no such file.
    [[nodiscard]] std::string readFile(const std::string& devicePath) const;

    /// Plants an executable shell script `name` in "bin"; `script` follows the interpreter line.
    void plantTool(const std::string& name, const std::string& script) const;
    /// Plants a tool that appends its name and arguments as a line to the file "/tmp/calls".
    void plantRecorder(const std::string& name) const;
    /// The lines that recorders have written.
    [[nodiscard]] std::string calls() const { return readFile("/tmp/calls"); }

private:
    std::string root_;
};

/// The standard output of `action` and of the tools that it runs.
std::string outputOf(const std::function<void()>& action);

#endif
