// cwWtpd, the CAPWAP daemon of the simulated access point: a supervisor and its worker, one pair for each device root.

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/daemon/supervisor.h"

int main()
{
    const pid_t parent = getppid();
    const char* root = std::getenv("CLI_SIM_ROOT");
    if (root == nullptr || *root == '\0') {
        std::fprintf(stderr, "cwWtpd: CLI_SIM_ROOT must name the folder of a simulated access point.\n");
        return EXIT_FAILURE;
    }
    umask(S_IRWXG | S_IRWXO);
    const int lock =
        open(DeviceFile("/tmp/cwWtpd.lock").path(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (lock < 0) {
        std::fprintf(stderr, "cwWtpd: %s/tmp cannot be used.\n", root);
        return EXIT_FAILURE;
    }
    if (flock(lock, LOCK_EX | LOCK_NB) != 0) {
        std::fprintf(stderr, "cwWtpd: already running for %s.\n", root);
        return EXIT_FAILURE;
    }
    return superviseWorkers(lock, parent);
}
