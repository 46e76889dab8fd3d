// cwWtpd, the CAPWAP daemon of the simulated access point: a supervisor and its worker, one pair for each device root.

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/daemon/supervisor.h"
#include "platform/simulation/enter_device.h"

int main()
{
    const pid_t parent = getppid();
    enterDevice("cwWtpd");
    const char* root = std::getenv("CLI_SIM_ROOT");
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
