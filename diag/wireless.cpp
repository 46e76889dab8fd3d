#include "diag/wireless.h"

constinit wlan_api wirelessApi{};

int vapPrepare(cli_node*, cli_node*)
{
    return init_wlan_api(&wirelessApi);
}
