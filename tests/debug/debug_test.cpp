#include "debug/debug_commands.h"

#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include <unistd.h>

#include "cli/root_table.h"
#include "debug/debug_mask.h"
#include "platform/debug_library.h"
#include "platform/simulation/debug_state.h"
#include "tests/support/device.h"
#include "tests/support/words.h"

namespace
{

constexpr std::uint64_t kAll = ~std::uint64_t{0};
constexpr int kWtp = 0;
constexpr int kTunnel = 1;

constexpr char kApps[] = "        cwWtpd\n        authd\n        netd\n        sysmond\n        cloudd\n";
constexpr char kModules[] = "        wlan\n        captun\n        apbridge\n        apfilter\n";

/// One device for all tests of the file, since the library maps its state once.
struct SuiteDevice : DeviceTest {
    void TestBody() override {}
    using DeviceTest::exists;
    using DeviceTest::readFile;
    using DeviceTest::writeFile;
};

class DebugTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        device = std::make_unique<SuiteDevice>();
        for (const char* name : {"debug", "kdebug"}) {
            cli_node* node = findChild(cliRoot, name);
            ASSERT_EQ(node->prepare(node, cliRoot.children), 0);
        }
    }
    static void TearDownTestSuite() { device.reset(); }

    DebugTest()
    {
        clear_dbg_all();
        clear_kdbg_all();
        clear_udebug_logs();
        clear_kdebug_log();
        clear_crash();
    }

    static cli_node* find(const std::string& line)
    {
        Words words(line);
        return findNode(words.argc(), words.argv());
    }

    /// What a typed line prints, by way of the tree.
    static std::string run(const std::string& line)
    {
        Words words(line);
        const cli_node* node = findNode(words.argc(), words.argv());
        if (node == nullptr || node->handler == nullptr)
            return "no handler";
        return outputOf([&] { EXPECT_EQ(node->handler(words.argc(), words.argv()), 0) << line; });
    }

    static std::string childrenOf(const std::string& line)
    {
        const cli_node* node = find(line);
        std::string list;
        for (int i = 0; i < node->childCount; ++i)
            list += std::string(node->children[i].name) + ": " + node->children[i].help + "\n";
        return list;
    }

    static std::unique_ptr<SuiteDevice> device;
};

std::unique_ptr<SuiteDevice> DebugTest::device;

std::string listOf(const dbg_module& module, std::uint64_t mask)
{
    std::string list;
    for (int i = 0; i < module.count; ++i) {
        char line[256];
        std::snprintf(line, sizeof line, "        %-12s %-3s  %s\n", module.submodules[i].name,
                      (mask >> i & 1) != 0 ? "on" : "off", module.submodules[i].help);
        list += line;
    }
    return list;
}

} // namespace

TEST(DebugMask, WidensSwitchesWithTheirSign)
{
    const std::pair<int, std::uint64_t> kCases[] = {
        {0, 0x1}, {30, 0x40000000}, {31, 0xffffffff80000000}, {32, 0x1}, {62, 0x40000000}, {63, 0xffffffff80000000},
    };
    for (const auto& [submodule, switches] : kCases)
        EXPECT_EQ(debugSwitch(submodule), switches) << submodule;

    std::uint64_t masks[] = {1, 2};
    for (const int beyond : {-1, 2, 1000})
        turnDebugSwitches(masks, beyond, kAll, true);
    turnDebugSwitches({}, 0, kAll, true);
    EXPECT_EQ(masks[0] * 3 + masks[1], 5U);
}

TEST_F(DebugTest, TreesFollowTheLibrary)
{
    EXPECT_EQ(childrenOf("debug"), "cwWtpd: cwWtpd\n"
                                   "authd: authd\n"
                                   "netd: netd\n"
                                   "sysmond: sysmond\n"
                                   "cloudd: cloudd\n"
                                   "clear: Clear all debug info\n"
                                   "all: Set all debug info\n"
                                   "to-console: debug to console \n"
                                   "to-buffer: debug to buffer\n"
                                   "show: Show debug messages\n"
                                   "log-clear: Clear all debug messages\n");
    EXPECT_EQ(childrenOf("kdebug"), "wlan: wlan\n"
                                    "captun: captun\n"
                                    "apbridge: apbridge\n"
                                    "apfilter: apfilter\n"
                                    "clear: Clear all debug info\n"
                                    "all: Set all debug info\n"
                                    "show: Set all debug info\n"
                                    "log-clear: clear all logs\n");
    EXPECT_EQ(childrenOf("diagnose"), "crash: crash info\n");
    EXPECT_EQ(childrenOf("diagnose crash"), "clear: clear crash info\nshow: show crash info\n");

    const auto checkModules = [](const std::string& facility, std::span<const dbg_module> modules,
                                 const char* (*nameOf)(int)) {
        for (int id = 0; const dbg_module& module : modules) {
            const std::string row = facility + " " + nameOf(id++);
            std::string expected;
            for (int i = 0; i < module.count; ++i) {
                const dbg_submodule& submodule = module.submodules[i];
                expected += std::string(submodule.name) + ": " + submodule.help + "\n";
                EXPECT_EQ(childrenOf(row + " " + submodule.name), "on: turn on this debug\noff: turn off this debug\n");
            }
            EXPECT_EQ(childrenOf(row), expected + "clear: Clear all debug info\nall: Set all debug info\n");
        }
    };
    checkModules("debug", app_debug, appid2name);
    checkModules("kdebug", kmod_debug, kmodid2name);
}

TEST_F(DebugTest, ListsWhatCanBeSwitched)
{
    udbg_info[kWtp] = 0x5;
    const std::string unknown = "Can't find submod nosuch for app ";
    const struct {
        const char* line;
        std::string output;
    } kCases[] = {
        {"debug", std::string(kApps) +
                      "\tall\n        clear\n        to-console\n        to-buffer\n        show\n\tlog-clear\n"},
        {"debug nosuch", std::string("Can't find app nosuch\n") + kApps},
        {"debug cwWtpd", listOf(app_debug[kWtp], 0x5)},
        {"debug cwWtpd join", "no handler"},
        {"debug cwWtpd join maybe", "no handler"},
        {"debug cwWtpd nosuch on", unknown + "cwWtpd\n" + listOf(app_debug[kWtp], 0x5)},
        {"kdebug", std::string(kModules) + "\tshow\n        all\n        clear\n        log-clear\n"},
        {"kdebug all", std::string("Can't find kmodule all\n") + kModules},
        {"kdebug wlan", std::string("Can't find kmodule wlan\n") + kModules},
        {"kdebug captun", listOf(kmod_debug[kTunnel], 0)},
        {"kdebug captun nosuch", unknown + "captun\n" + listOf(kmod_debug[kTunnel], 0)},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(run(test.line), test.output) << test.line;
}

// Words that the tree leads to no handler with.
TEST_F(DebugTest, HandlersSayOnOffForASubmodule)
{
    for (const auto& [line, said] : {std::pair{"debug cwWtpd join", "on/off\n"},
                                     {"kdebug captun session", "on/off\n"},
                                     {"debug cwWtpd join maybe", ""}}) {
        Words words(line);
        const CliHandler handler = find(words.argv()[0])->handler;
        EXPECT_EQ(outputOf([&] { handler(words.argc(), words.argv()); }), said) << line;
    }
    EXPECT_EQ(udbg_info[kWtp], 0U);
}

TEST_F(DebugTest, SwitchesSubmodules)
{
    const std::string row = "debug cwWtpd ";
    const struct {
        std::string line;
        std::uint64_t mask;
    } kCases[] = {
        {row + app_debug[kWtp].submodules[30].name + " on", 0x40000000},
        {row + app_debug[kWtp].submodules[32].name + " on", 0x40000001},
        {row + app_debug[kWtp].submodules[31].name + " on", 0xffffffffc0000001},
        {row + app_debug[kWtp].submodules[30].name + " off", 0xffffffff80000001},
        {row + app_debug[kWtp].submodules[31].name + " off", 0x1},
        {row + app_debug[kWtp].submodules[0].name + " off", 0},
        {row + "all", kAll},
        {row + "clear", 0},
        {"debug all", kAll},
        {"debug clear", 0},
    };
    for (const auto& test : kCases) {
        const std::uint64_t other = test.line == "debug all" ? kAll : 0;
        EXPECT_EQ(run(test.line), "") << test.line;
        EXPECT_EQ(udbg_info[kWtp], test.mask) << test.line;
        EXPECT_EQ(udbg_info[kWtp + 1], other) << test.line;
    }

    EXPECT_EQ(run("kdebug captun dtls on"), "");
    EXPECT_EQ(run("kdebug apfilter all"), "");
    EXPECT_EQ(kdbg_info[kTunnel], 0x10U);
    EXPECT_EQ(kdbg_info[3], kAll);
    EXPECT_EQ(kdbg_info[0], 0U);
    EXPECT_EQ(run("kdebug clear"), "");
    EXPECT_EQ(kdbg_info[kTunnel] | kdbg_info[3], 0U);
}

TEST_F(DebugTest, SharesItsStateWithOtherProcesses)
{
    const std::string before = device->readFile("/sim/debug_state");
    EXPECT_EQ(run("debug cloudd all"), "");
    EXPECT_EQ(run("debug to-buffer"), "");
    EXPECT_EQ(udbg_header->output_mode, 1);
    const std::string after = device->readFile("/sim/debug_state");
    EXPECT_NE(before, after);
    EXPECT_NE(after.find(std::string(8, '\xff')), std::string::npos);

    EXPECT_EQ(device->readFile("/sim/debug_terminal"), "");
    EXPECT_EQ(run("debug to-console"), "");
    EXPECT_EQ(udbg_header->output_mode, 0);
    EXPECT_EQ(device->readFile("/sim/debug_terminal"), "1\n");
}

TEST_F(DebugTest, LogsWhatIsSwitchedOn)
{
    const std::size_t kTime = std::strlen("2026-01-31 23:59:59 ");
    simDebugLog(kWtp, 8, "dropped");
    run("debug cwWtpd join on");
    run("debug to-buffer");
    simDebugLog(kWtp, 8, "joined\nsecond line");
    run("debug to-console");
    simDebugLog(kWtp, 8, "");
    simDebugLog(kWtp, 64, "no such submodule");
    simDebugLog(-1, 8, "no such application");
    std::string log = run("debug show");
    const std::string first = "buffer cwWtpd/join: joined\n";
    ASSERT_EQ(log.size(), kTime + first.size() + kTime + std::strlen("console cwWtpd/join: \n"));
    EXPECT_EQ(log.erase(0, kTime).erase(first.size(), kTime), first + "console cwWtpd/join: \n");
    EXPECT_EQ(run("debug log-clear"), "");
    EXPECT_EQ(run("debug show"), "");

    run("kdebug captun encap on");
    simKernelDebugLog(kTunnel, 0, "dropped");
    simKernelDebugLog(kTunnel, 1, "one");
    simKernelDebugLog(4, 1, "no such module");
    log = run("kdebug show");
    EXPECT_EQ(log.substr(std::min(kTime, log.size())), "captun/encap: one\n");
    EXPECT_EQ(run("kdebug log-clear"), "");
    EXPECT_EQ(run("kdebug show"), "");
}

TEST_F(DebugTest, ShowsAndClearsCrashRecords)
{
    EXPECT_EQ(run("diagnose crash show"), "");
    for (const std::string& record : {std::string("cwWtpd: Segmentation fault"), std::string(300, 'x')})
        simRecordCrash(record.c_str());
    const std::string records = "1: cwWtpd: Segmentation fault\n2: " + std::string(99, 'x') + "\n";
    EXPECT_EQ(run("diagnose crash show"), records);
    EXPECT_EQ(run("diagnose crash show"), records);
    EXPECT_EQ(run("diagnose crash clear"), "");
    EXPECT_EQ(run("diagnose crash show"), "");

    std::string many;
    for (int i = 0; i < 2100; ++i)
        many += "x\n";
    device->writeFile("/sim/crashes", many);
    const std::string shown = run("diagnose crash show");
    EXPECT_EQ(shown.substr(shown.size() - 8), "2000: x\n");
}

TEST_F(DebugTest, DoesNothingWhileNotAttached)
{
    std::uint64_t* const masks = std::exchange(udbg_info, nullptr);
    udbg_header_t* const header = std::exchange(udbg_header, nullptr);
    for (const char* line : {"debug cwWtpd join on", "debug cwWtpd all", "debug to-buffer", "debug to-console"})
        EXPECT_EQ(run(line), "") << line;
    udbg_info = masks;
    udbg_header = header;
    EXPECT_EQ(udbg_info[kWtp], 0U);
}

TEST_F(DebugTest, SurvivesADamagedLibrary)
{
    const auto prepareDamaged = [] {
        cli_node* node = findChild(cliRoot, "debug");
        for (int i = 0; i < node->childCount; ++i)
            node->children[i].childCount = 0;
        dbg_submodule unterminated{};
        std::memset(unterminated.name, 'n', sizeof unterminated.name);
        std::memset(unterminated.help, 'h', sizeof unterminated.help);
        app_debug[0] = {1, &unterminated};
        app_debug[1].count = -5;
        static dbg_submodule many[300]{};
        app_debug[2] = {std::size(many), many};
        app_debug[3].submodules = nullptr;
        app_debug[4].count = 0;
        if (node->prepare(node, cliRoot.children) != 0)
            return false;
        const cli_node& row = node->children[0];
        for (int i = 1; i < kDebugAppCount; ++i)
            if (node->children[i].childCount != (i == 2 ? 256 + 2 : 0))
                return false;
        return row.childCount == 3 && std::string(row.children[0].name) == std::string(32, 'n') &&
               std::string(row.children[0].help) == std::string(127, 'h');
    };
    EXPECT_EXIT(_exit(prepareDamaged() ? 0 : 1), testing::ExitedWithCode(0), "");
}
