#include "platform/simulation/daemon/controller_link.h"

#include <algorithm>
#include <cstring>

#include "base/address.h"
#include "platform/simulation/daemon/addresses.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

using std::chrono::milliseconds;

namespace
{

/// Values of `discovery-type`. With every other value the access point finds the controller by broadcast.
constexpr int kAutomatic = 0;
constexpr int kStatic = 1;
constexpr int kDns = 3;

struct Phase {
    const char* state;
    milliseconds end; ///< end of the phase, measured from the start of the state machine
    bool needsDtls = false;
};

constexpr Phase kPhases[] = {
    {"DISCOVERY", milliseconds(600)},  {"DTLS_SETUP", milliseconds(900), true}, {"JOIN", milliseconds(1300)},
    {"CONFIGURE", milliseconds(1600)}, {"DATA_CHECK", milliseconds(1900)},
};
constexpr milliseconds kRunning = std::end(kPhases)[-1].end;

std::optional<uint32_t> findController(const WtpConfig& config)
{
    const int discovery = config.number("discovery-type");
    uint32_t address = 0;
    const bool usesList = discovery == kAutomatic || discovery == kStatic;
    if (usesList && parseIpv4(config.first("ac-ip-addr").c_str(), &address))
        return address;
    if ((discovery == kStatic || discovery == kDns) && config.text("ac-hostname").empty())
        return std::nullopt;
    char nearby[32];
    simReadText("network/controller", nearby, sizeof nearby, "");
    return parseIpv4(nearby, &address) ? std::optional(address) : std::nullopt;
}

} // namespace

ControllerLink::ControllerLink(const WtpConfig& config)
    : controller_(findController(config)), usesDtls_(config.number("plain-ctl") == 0),
      discovery_(std::max(1, config.number("max-discoveries") * config.number("discovery-interval"))),
      silence_(config.number("silent-interval"))
{
}

void ControllerLink::follow()
{
    char controller[16];
    simReadText("daemon/controller", controller, sizeof controller, "");
    const bool isThere = controller_ && std::strcmp(controller, "none") != 0;
    const uint32_t address = isThere && simInterfaceNumber("eth0", "up") != 0 ? ownAddress() : 0;
    if (address == ownAddress_)
        return;
    ownAddress_ = address;
    start_ = std::chrono::steady_clock::now();
    startTime_ = std::time(nullptr);
}

ControllerLink::Status ControllerLink::status() const
{
    const auto age = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start_);
    if (ownAddress_ == 0) {
        const auto round = discovery_ + silence_;
        return {age % round < discovery_ ? "DISCOVERY" : "SULKING", 0, 0, static_cast<int>(age / round),
                age < discovery_ ? "" : "no controller answered"};
    }
    for (const Phase& phase : kPhases)
        if (age < phase.end && (usesDtls_ || !phase.needsDtls))
            return {phase.state, &phase == kPhases ? 0 : *controller_, 0, 0, ""};
    return {"RUN", *controller_, startTime_ + std::chrono::ceil<std::chrono::seconds>(kRunning).count(), 0, ""};
}
