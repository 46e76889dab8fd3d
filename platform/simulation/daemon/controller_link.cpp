#include "platform/simulation/daemon/controller_link.h"

#include <algorithm>
#include <cstring>

#include "platform/simulation/daemon/addresses.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace
{

/// The controller that every discovery but a static one finds.
constexpr uint32_t kDefaultController = 0xc0a8010a;

struct Phase {
    const char* state;
    milliseconds end; ///< since the start
    bool needsDtls = false;
};

constexpr Phase kPhases[] = {
    {"DISCOVERY", milliseconds(600)},  {"DTLS_SETUP", milliseconds(900), true}, {"JOIN", milliseconds(1300)},
    {"CONFIGURE", milliseconds(1600)}, {"DATA_CHECK", milliseconds(1900)},
};
constexpr milliseconds kRunning = std::end(kPhases)[-1].end;

std::optional<uint32_t> findController(const WtpConfig& config)
{
    const auto discovery = static_cast<Discovery>(config.discoveryType);
    const bool usesList = discovery == Discovery::automatic || discovery == Discovery::fixed;
    if (usesList && !config.controllers.empty())
        return config.controllers.front();
    const bool needsName = discovery == Discovery::fixed || discovery == Discovery::dns;
    if (needsName && config.controllerNames.empty())
        return std::nullopt;
    return kDefaultController;
}

} // namespace

ControllerLink::ControllerLink(const WtpConfig& config)
    : controller_(findController(config)), usesDtls_(config.plainControl == 0),
      discovery_(std::max(1, config.maxDiscoveries * config.discoveryInterval)), silence_(config.silentInterval)
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
    return {"RUN", *controller_, startTime_ + std::chrono::ceil<seconds>(kRunning).count(), 0, ""};
}
