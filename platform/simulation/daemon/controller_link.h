// The daemon's way to its controller, as a story: no packet is sent.

#ifndef PLATFORM_SIMULATION_DAEMON_CONTROLLER_LINK_H
#define PLATFORM_SIMULATION_DAEMON_CONTROLLER_LINK_H

#include <chrono>
#include <cstdint>
#include <ctime>
#include <optional>

#include "platform/simulation/daemon/wtp_config.h"

class ControllerLink
{
public:
    struct Status {
        const char* state;       ///< of the CAPWAP state machine
        uint32_t controller;     ///< host byte order; 0 before one was found
        std::time_t connectTime; ///< 0 until the link runs
        int retries;
        const char* retryReason;

        [[nodiscard]] bool runs() const { return connectTime != 0; }
    };

    explicit ControllerLink(const WtpConfig& config);

    /// Starts the state machine anew where the way to the controller changed, or the controller came or went: the state
    /// file "daemon/controller" holds "none" while there is none.
    void follow();
    [[nodiscard]] Status status() const;

private:
    std::optional<uint32_t> controller_;
    bool usesDtls_;
    uint32_t ownAddress_ = 0;        ///< that the controller is reached from; 0: it is not
    std::chrono::seconds discovery_; ///< before the daemon falls silent
    std::chrono::seconds silence_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::time_t startTime_ = std::time(nullptr);
};

#endif
