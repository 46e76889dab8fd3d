// The link between the daemon and its controller. It sends no packets. Its state depends only on the configuration and
// on the time since the state machine was started.

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

    /// Restarts the state machine if the address or the controller has changed. There is no controller while the state
    /// file "daemon/controller" holds "none".
    void follow();
    [[nodiscard]] Status status() const;

private:
    std::optional<uint32_t> controller_;
    bool usesDtls_;
    uint32_t ownAddress_ = 0;        ///< of the access point; 0: the controller cannot be reached
    std::chrono::seconds discovery_; ///< duration of the search before a pause
    std::chrono::seconds silence_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::time_t startTime_ = std::time(nullptr);
};

#endif
