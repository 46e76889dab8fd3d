#include "debug/debug_commands.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <unistd.h>
#include <utility>

#include "base/text.h"
#include "cli/root_table.h"
#include "debug/debug_mask.h"
#include "platform/debug_library.h"
#include "shell/executor.h"
#include "tests/support/device.h"

namespace
{

/// Prepares the tree once, because the library maps its state once.
class Debug : public DeviceTest
{
protected:
    Debug()
    {
        [[maybe_unused]] static const bool once = [] {
            for (const char* name : {"debug", "kdebug"}) {
                cli_node* node = findChild(cliRoot, name);
                EXPECT_EQ(node->prepare(node, cliRoot.children), 0);
            }
            return true;
        }();
    }
};

std::string rowsBelow(const cli_node& node)
{
    std::string rows;
    for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
        rows += std::string(child.name) + ": " + child.help + "\n";
    return rows;
}

} // namespace

TEST(DebugMask, WidensSwitchesWithTheirSign)
{
    const std::pair<int, std::uint64_t> cases[] = {{0, 0x1}, {30, 0x40000000}, {63, 0xffffffff80000000}};
    for (const auto& [submodule, switches] : cases)
        EXPECT_EQ(debugSwitch(submodule), switches) << submodule;

    std::uint64_t masks[] = {1, 2};
    for (const int beyond : {-1, 2, 1000})
        turnDebugSwitches(masks, beyond, kAllDebugSwitches, true);
    EXPECT_EQ(masks[0] * 3 + masks[1], 5U);
}

TEST_F(Debug, DoesNothingWhileNotAttached)
{
    std::uint64_t* const masks = std::exchange(udbg_info, nullptr);
    udbg_header_t* const header = std::exchange(udbg_header, nullptr);
    for (const char* line : {"debug cwWtpd join on", "debug cwWtpd all", "debug to-buffer", "debug to-console"})
        EXPECT_EQ(outputOf([line] { executeLine(line); }), "") << line;
    udbg_info = masks;
    udbg_header = header;
    EXPECT_EQ(udbg_info[0], 0U);
}

TEST_F(Debug, TakesAVerbBeforeAModuleOfTheSameName)
{
    const auto runAsModule = [](const std::string& command, const char* word) {
        copyText(findChild(cliRoot, command.c_str())->children[0].name, word);
        executeLine((command + " " + word).c_str());
    };
    const auto masksAfterVerbs = [&] {
        kdbg_info[1] = 1;
        runAsModule("kdebug", "clear");
        runAsModule("debug", "all");
        return std::pair(udbg_info[1], kdbg_info[1]);
    };
    EXPECT_EXIT(_exit(masksAfterVerbs() == std::pair(kAllDebugSwitches, std::uint64_t{0}) ? 0 : 1),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT((std::fflush(stdout), dup2(STDERR_FILENO, STDOUT_FILENO), runAsModule("debug", "to-console"),
                 std::fflush(stdout), _exit(0)),
                testing::ExitedWithCode(0), "Can't find app to-console");
}

TEST_F(Debug, SurvivesADamagedLibrary)
{
    const auto childrenOfDamaged = [] {
        dbg_submodule unterminated{};
        std::memset(unterminated.name, 'n', sizeof unterminated.name);
        std::memset(unterminated.help, 'h', sizeof unterminated.help);
        static dbg_submodule many[300]{};
        const dbg_module damaged[] = {{1, &unterminated}, {-5, many}, {std::size(many), many}, {7, nullptr}, {0, many}};
        std::ranges::copy(damaged, app_debug);
        cli_node& node = *findChild(cliRoot, "debug");
        std::string counts;
        for (cli_node& row : std::span(node.children, std::size(damaged)))
            row.childCount = 0;
        node.prepare(&node, cliRoot.children);
        for (const cli_node& row : std::span(node.children, std::size(damaged)))
            counts += std::to_string(row.childCount) + " ";
        return counts + rowsBelow(node.children[0]).substr(0, 32 + 2 + 127 + 1);
    };
    const std::string cut = std::string(32, 'n') + ": " + std::string(127, 'h') + "\n";
    EXPECT_EXIT(_exit(childrenOfDamaged() == "3 0 258 0 0 " + cut ? 0 : 1), testing::ExitedWithCode(0), "");
}
