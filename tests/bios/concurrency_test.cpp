// Writers and readers side by side, and writers that are killed at any instant.

#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/bios/flash_fixture.h"

TEST_F(FlashTest, TheChecksumFitsWheneverItIsRead)
{
    for (const auto set : {biosSetOemSn, biosSetQlnSn}) {
        if (fork() != 0)
            continue;
        for (int i = 0; i < 200; ++i)
            set(std::to_string(i).c_str());
        _exit(0);
    }
    EXPECT_EQ(outputOf([] {
                  char text[17];
                  for (int i = 0; i < 200; ++i)
                      biosGetOemSn(text);
              }),
              "");
    while (wait(nullptr) > 0)
        continue;
    EXPECT_TRUE(sealed(partition()) == partition());
}

TEST_F(FlashTest, AKilledWriterLeavesAWholeSlot)
{
    constexpr std::size_t kOemSnOffset = 0x3FFE0;
    const std::string texts[2] = {"AAAAAAAAAAAAAAAA", "BBBBBBBBBBBBBBBB"};
    ASSERT_EQ(biosSetOemSn(texts[0].c_str()), 0);
    int written = 0;
    for (int round = 0; round < 40; ++round) {
        const pid_t writer = fork();
        for (int i = 1; writer == 0; ++i)
            biosSetOemSn(texts[i % 2].c_str());
        std::this_thread::sleep_for(std::chrono::microseconds(300 + 240 * round));
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);

        const std::string slot = partition().substr(kOemSnOffset, texts[0].size());
        ASSERT_TRUE(slot == texts[0] || slot == texts[1]) << slot;
        written += slot == texts[1] ? 1 : 0;
    }
    EXPECT_GT(written, 0) << "no round got as far as a write";
}
