#include "diag/wireless.h"

constinit wlan_api wirelessApi{};

void vapPrepare(cli_node*, cli_node*)
{
    init_wlan_api(&wirelessApi);
}
