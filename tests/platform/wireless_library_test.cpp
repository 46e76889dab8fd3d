#include "platform/wireless_library.h"

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/device.h"

namespace
{

class WirelessLibraryTest : public DeviceTest
{
protected:
    WirelessLibraryTest() { init_wlan_api(&api_); }

    [[nodiscard]] std::string countryOf(const char* interface) const
    {
        char buffer[256];
        return api_.get_country(interface, buffer, sizeof buffer) == 0 ? buffer : "none";
    }

    wlan_api api_{};
};

TEST_F(WirelessLibraryTest, CountryOfARadioIsItsVapsCountry)
{
    EXPECT_EQ(countryOf("wlan1"), "US");
    EXPECT_EQ(api_.set_country("wlan1", kstr_regdmn_get_country_code("JP")), 0);
    EXPECT_EQ(countryOf("wlan1"), "JP");
    EXPECT_EQ(countryOf("wlan1-va3"), "JP");
    EXPECT_EQ(countryOf("wlan0"), "US");
    EXPECT_NE(api_.set_country("wlan0", 1), 0);
    EXPECT_EQ(countryOf("wlan0"), "US");
}

TEST_F(WirelessLibraryTest, StateFilesDecide)
{
    EXPECT_EQ(api_.get_channel("wlan0"), 6);
    EXPECT_EQ(api_.get_auth_type("wlan0-va0"), 4);
    std::filesystem::create_directories(path("/sim/interfaces/wlan0"));
    writeFile("/sim/interfaces/wlan0/channel", "11\n");
    writeFile("/sim/interfaces/wlan0/ssid", "a longer name\n");
    EXPECT_EQ(api_.get_channel("wlan0"), 11);
    char ssid[8];
    EXPECT_STREQ(api_.get_ssid("wlan0", ssid, sizeof ssid), "a longe");
}

TEST_F(WirelessLibraryTest, RegulatoryNames)
{
    EXPECT_EQ(kstr_regdmn_get_country_code("US"), 842);
    EXPECT_EQ(kstr_regdmn_get_country_code("AL"), 8);
    EXPECT_EQ(kstr_regdmn_get_country_code("JP"), 392);
    for (const char* unknown : {"", "U", "us", "USA", "NA", "DB", "XX"})
        EXPECT_EQ(kstr_regdmn_get_country_code(unknown), 0) << unknown;
    EXPECT_STREQ(kstr_regdmn_get_default_country("A"), "US");
    EXPECT_STREQ(kstr_regdmn_get_default_country("J"), "JP");
    for (const char* unknown : {"", "a", "AA", "0"})
        EXPECT_EQ(kstr_regdmn_get_default_country(unknown), nullptr) << unknown;
}

TEST_F(WirelessLibraryTest, ScanNeedsRoom)
{
    std::vector<char> buffer(32768, '#');
    EXPECT_LT(rtl_wlan_get_bgscan("wlan0", 0, buffer.data(), 16384), 0);
    EXPECT_EQ(buffer[0], '#');
    EXPECT_GE(rtl_wlan_get_bgscan("wlan0", 0, buffer.data(), 32768), 0);
    EXPECT_NE(buffer[0], '#');

    std::filesystem::create_directories(path("/sim"));
    writeFile("/sim/scan_size", "0\n");
    std::vector<char> tiny(5);
    EXPECT_GE(rtl_wlan_get_bgscan("wlan1", 0, tiny.data(), 5), 0);
}

} // namespace
