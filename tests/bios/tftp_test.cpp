// A ROM file on its way from a real TFTP server into the flash.

#include <arpa/inet.h>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell/executor.h"
#include "tests/bios/flash_fixture.h"

namespace
{

namespace fs = std::filesystem;

bool installed(const char* tool)
{
    return std::system(("command -v " + std::string(tool) + " > /dev/null").c_str()) == 0;
}

/// A datagram socket on loopback, bound to `port`, any free one when it is 0. -1 when the port is taken.
int bindLoopback(in_port_t& port)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    socklen_t size = sizeof address;
    if (bind(fd, reinterpret_cast<sockaddr*>(&address), size) != 0) {
        close(fd);
        return -1;
    }
    getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size);
    port = ntohs(address.sin_port);
    return fd;
}

/// A TFTP server of its own for one test, on loopback and a free port, without privileges beyond the test's.
class TftpServer
{
public:
    explicit TftpServer(const std::string& folder)
    {
        close(bindLoopback(port_));
        const std::string port = std::to_string(port_);
        const std::string user =
            std::string(getpwuid(geteuid())->pw_name) + "." + std::string(getgrgid(getegid())->gr_name);
        pid_ = fork();
        if (pid_ == 0) {
            std::freopen("/dev/null", "w", stderr);
            execlp("atftpd", "atftpd", "--daemon", "--no-fork", "--user", user.c_str(), "--bind-address", "127.0.0.1",
                   "--port", port.c_str(), "--logfile", "/dev/null", folder.c_str(), nullptr);
            _exit(127);
        }
        // Until the server has taken its port.
        for (int tries = 0, fd = 0; tries < 500 && (fd = bindLoopback(port_)) >= 0; ++tries) {
            close(fd);
            usleep(10000);
        }
    }

    ~TftpServer()
    {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
    }

    TftpServer(const TftpServer&) = delete;
    TftpServer& operator=(const TftpServer&) = delete;

    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

private:
    in_port_t port_ = 0;
    pid_t pid_ = -1;
};

TEST_F(FlashTest, AFetchedRomFileIsFlashedByteForByte)
{
    if (!installed("atftpd") || !installed("busybox"))
        GTEST_SKIP() << "needs the packages atftpd and busybox";
    plantTool("tftp", "exec busybox tftp \"$@\" 2>&1");
    fs::create_directory(path("/srv"));
    const std::string rom = noisyImage(3);
    writeFile("/srv/QK310V4N15000001.rom", rom);
    const TftpServer server(path("/srv"));

    const auto get = [&](const std::string& file) {
        return outputOf([&] { executeLine(("bios get " + server.address() + " " + file).c_str()); });
    };
    EXPECT_NE(get("QK310V4N15000001.rom").find("256k"), std::string::npos);
    EXPECT_TRUE(readFile("/tmp/QK310V4N15000001.rom") == rom);
    EXPECT_EQ(outputOf([] { executeLine("bios save QK310V4N15000001.rom"); }), "");
    EXPECT_TRUE(partition() == rom);

    EXPECT_NE(get("missing.rom").find("File not found"), std::string::npos);
    EXPECT_FALSE(exists("/tmp/missing.rom"));
    EXPECT_EQ(outputOf([] { executeLine("bios save missing.rom"); }), "");
    EXPECT_TRUE(partition() == rom);
}

} // namespace
