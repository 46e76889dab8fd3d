// A writer of single fields is killed at any instant: its slot holds the old or the new text, nothing else is touched.

#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/bios/flash_fixture.h"

TEST_F(FlashTest, AKilledWriterLeavesAWholeSlot)
{
    constexpr std::size_t kOemSnOffset = 0x3FFE0;
    const std::string texts[2] = {"AAAAAAAAAAAAAAAA", "BBBBBBBBBBBBBBBB"};
    ASSERT_EQ(biosSetOemSn(texts[0].c_str()), 0);
    const std::string before = partition();
    int written = 0;
    for (int round = 0; round < 40; ++round) {
        const pid_t writer = fork();
        for (int i = 1; writer == 0; ++i)
            biosSetOemSn(texts[i % 2].c_str());
        std::this_thread::sleep_for(std::chrono::microseconds(300 + 240 * round));
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);

        const std::string after = partition();
        ASSERT_EQ(after.size(), kImageSize);
        const std::string slot = after.substr(kOemSnOffset, texts[0].size());
        ASSERT_TRUE(slot == texts[0] || slot == texts[1]) << slot;
        written += slot == texts[1] ? 1 : 0;
        ASSERT_TRUE(after.compare(0, kOemSnOffset, before, 0, kOemSnOffset) == 0);
        const std::size_t next = kOemSnOffset + slot.size();
        ASSERT_TRUE(after.compare(next, kChecksumOffset - next, before, next, kChecksumOffset - next) == 0);
    }
    EXPECT_GT(written, 0) << "no round got as far as a write";
}
