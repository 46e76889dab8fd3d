#include "diag/radio_commands.h"

#include <cstdlib>
#include <sstream>

#include "diag/country.h"
#include "diag/wireless.h"
#include "tests/diag/fake_platform.h"
#include "tests/diag/record.h"

namespace
{

Message powerMessage(unsigned radio, unsigned percent, unsigned power)
{
    return {"1 0 7", Record(4).u8(0, radio).u8(1, percent).u16(2, power).bytes()};
}

Message countryMessage(unsigned code, const std::string& name)
{
    return {"1 0 6", Record(8).u16(2, code).text(4, name).bytes()};
}

constexpr char kBusy[] = "System is busy, please try again.\n";

using TxPower = FakePlatformTest;

} // namespace

TEST_F(TxPower, SendsWhatWasTyped)
{
    const struct {
        const char* line;
        Message message;
    } kCases[] = {
        {"txpower 0 50%", powerMessage(0, 1, 50)},
        {"txpower 1 17", powerMessage(1, 0, 17)},
        {"txpower 2 300", powerMessage(2, 0, 300)},
        {"txpower 257 65537", powerMessage(1, 0, 1)},
        {"txpower -1 -2", powerMessage(255, 0, 0xfffe)},
        {"txpower 1x 20dBm%", powerMessage(1, 1, 20)},
        {"txpower 0 99999999999999999999", powerMessage(0, 0, 0xffff)},
    };
    for (const auto& test : kCases) {
        EXPECT_EQ(run(txpowerCommand, test.line), "");
        EXPECT_EQ(fakePlatform.sent.back(), test.message) << test.line;
    }
    EXPECT_EQ(fakePlatform.sent.size(), std::size(kCases));
}

TEST_F(TxPower, SendsNothingWithoutTwoNumbers)
{
    for (const char* line : {"txpower", "txpower 0", "txpower 0 1 2"})
        EXPECT_EQ(run(txpowerCommand, line), "Set the TX power of radio, CMD format:\ntxpower {0|1} %d[%]\n");
    for (const char* line : {"txpower 0 abc", "txpower x 10", "txpower 0 %50"})
        EXPECT_EQ(run(txpowerCommand, line), "");
    EXPECT_TRUE(fakePlatform.sent.empty());
}

TEST_F(TxPower, ReportsAChannelThatFails)
{
    fakePlatform.channelResult = 1;
    EXPECT_EQ(run(txpowerCommand, "txpower 0 10"), kBusy);
    fakePlatform.buffersLeft = 0;
    EXPECT_EQ(run(txpowerCommand, "txpower 0 10", -1), "");
}

TEST_F(TxPower, ShowsTheCalibrationTargets)
{
    EXPECT_EQ(run(calibrationCommand, "calibration of both"), "wlan0(2.4GHz):\n"
                                                              "  CCK-11M    = 20 dBm\n"
                                                              "  OFDM-54M   = 17 dBm\n"
                                                              "  HT20-MCS7  = 17 dBm\n"
                                                              "  HT40-MCS7  = 17 dBm\n"
                                                              "wlan1(5GHz):\n"
                                                              "  OFDM-54M   = 18 dBm\n"
                                                              "  HT20-MCS7  = 18 dBm\n"
                                                              "  HT40-MCS7  = 18 dBm\n"
                                                              "  VHT20-MCS8 = 18 dBm\n"
                                                              "  VHT40-MCS9 = 18 dBm\n"
                                                              "  VHT80-MCS9 = 18 dBm\n");
}

class CountryTest : public FakePlatformTest
{
protected:
    CountryTest()
    {
        plantRecorder("ifconfig");
        plantRecorder("iwpriv");
        wirelessApi.set_country = [](const char* interface, int code) {
            const std::string call = "echo set_country " + std::string(interface) + " " + std::to_string(code);
            return std::system((call + " >> \"$CLI_SIM_ROOT/tmp/calls\"").c_str());
        };
    }

    static void expectMessages(const Message& last)
    {
        EXPECT_EQ(fakePlatform.sent, (std::vector{powerMessage(0, 1, 100), powerMessage(1, 1, 100), last}));
    }

    const std::string kCalls = "ifconfig wlan0 down\n"
                               "set_country wlan0 840\n"
                               "iwpriv wlan0 set_mib vap_enable=0\n"
                               "iwpriv wlan0 set_mib func_off=0\n"
                               "iwpriv wlan0 set_mib disable_DFS=1\n"
                               "iwpriv wlan0 set_mib use40M=1\n"
                               "iwpriv wlan0 set_mib band=11\n"
                               "ifconfig wlan0 up\n"
                               "ifconfig wlan1 down\n"
                               "set_country wlan1 840\n"
                               "iwpriv wlan1 set_mib vap_enable=0\n"
                               "iwpriv wlan1 set_mib func_off=0\n"
                               "iwpriv wlan1 set_mib disable_DFS=1\n"
                               "iwpriv wlan1 set_mib use40M=2\n"
                               "iwpriv wlan1 set_mib band=76\n"
                               "ifconfig wlan1 up\n";
};

TEST_F(CountryTest, ReconfiguresBothRadios)
{
    EXPECT_EQ(run(countryCommand, "country US"), "");
    EXPECT_EQ(calls(), kCalls);
    expectMessages(countryMessage(840, "US"));
}

TEST_F(CountryTest, SendsThreeBytesOfALongName)
{
    wirelessApi.set_country = nullptr;
    EXPECT_EQ(run(countryCommand, "country JAPAN"), "");
    expectMessages(countryMessage(392, "JAP"));
}

TEST_F(CountryTest, TakesTheRegionsDefault)
{
    EXPECT_EQ(run(countryCommand, "country"), "Can NOT get any region code from bios.\n");
    EXPECT_EQ(calls(), "");
    fakePlatform.region = 'E';
    EXPECT_EQ(run(countryCommand, "country"), "");
    EXPECT_EQ(fakePlatform.regionAsked, "E");
    EXPECT_EQ(fakePlatform.namesAsked, std::vector<std::string>{"US"});
    EXPECT_EQ(calls(), kCalls);
    expectMessages(countryMessage(840, "US"));
}

TEST_F(CountryTest, ReportsEveryMessageThatFails)
{
    fakePlatform.channelResult = -1;
    EXPECT_EQ(run(countryCommand, "country US"), std::string(kBusy) + kBusy + kBusy);
    fakePlatform = {.buffersLeft = 2};
    EXPECT_EQ(run(countryCommand, "country US", -1), "");
    EXPECT_EQ(calls(), kCalls + kCalls);
}

TEST_F(CountryTest, ListsTheCountriesForAnUnknownName)
{
    std::string list = "All countrys supported:\n";
    std::istringstream rows(
        "AL ALBANIA;DZ ALGERIA;AO ANGOLA;AR ARGENTINA;AM ARMENIA;AW ARUBA;AU AUSTRALIA;AU AUSTRALIA2;AT AUSTRIA;"
        "AZ AZERBAIJAN;BH BAHRAIN;BD BANGLADESH;BB BARBADOS;BY BELARUS;BE BELGIUM;BE BELGIUM2;BZ BELIZE;BO BOLIVIA;"
        "BA BOSNIA AND HERZEGOVINA;BR BRAZIL;BN BRUNEI DARUSSALAM;BG BULGARIA;KH CAMBODIA;CA CANADA;CA CANADA2;"
        "CF CENTRAL AFRICA REPUBLIC;CL CHILE;CN CHINA;CO COLOMBIA;CR COSTA RICA;HR CROATIA;CY CYPRUS;"
        "CZ CZECH REPUBLIC;DK DENMARK;DO DOMINICAN REPUBLIC;EC ECUADOR;EG EGYPT;SV EL SALVADOR;EE ESTONIA;FI FINLAND;"
        "FR FRANCE;GE GEORGIA;DE GERMANY;GR GREECE;GL GREENLAND;GD GRENADA;GU GUAM;GT GUATEMALA;HT HAITI;HN HONDURAS;"
        "HK HONG KONG;HU HUNGARY;IS ICELAND;IN INDIA;ID INDONESIA;IR IRAN;IE IRELAND;IL ISRAEL;IT ITALY;JM JAMAICA;"
        "JP JAPAN;JP JAPAN*;JO JORDAN;KZ KAZAKHSTAN;KE KENYA;KP NORTH KOREA;KR KOREA REPUBLIC;KR KOREA REPUBLIC3;"
        "KW KUWAIT;LV LATVIA;LB LEBANON;LI LIECHTENSTEIN;LT LITHUANIA;LU LUXEMBOURG;MO MACAU SAR;MK MACEDONIA, FYRO;"
        "MY MALAYSIA;MT MALTA;MX MEXICO;MC MONACO;MA MOROCCO;MZ MOZAMBIQUE;MM MYANMAR;NP NEPAL;NL NETHERLANDS;"
        "AN NETHERLANDS ANTILLES;NZ NEW ZEALAND;NO NORWAY;OM OMAN;PK PAKISTAN;PA PANAMA;PG PAPUA NEW GUINEA;"
        "PY PARAGUAY;PE PERU;PH PHILIPPINES;PL POLAND;PT PORTUGAL;PR PUERTO RICO;QA QATAR;RO ROMANIA;RU RUSSIA;"
        "RW RWANDA;SA SAUDI ARABIA;RS REPUBLIC OF SERBIA;ME MONTENEGRO;SG SINGAPORE;SK SLOVAKIA;SI SLOVENIA;"
        "ZA SOUTH AFRICA;ES SPAIN;LK SRI LANKA;SD SUDAN;SE SWEDEN;CH SWITZERLAND;SY SYRIAN ARAB REPUBLIC;TW TAIWAN;"
        "TZ TANZANIA;TH THAILAND;TT TRINIDAD AND TOBAGO;TN TUNISIA;TR TURKEY;UA UKRAINE;AE UNITED ARAB EMIRATES;"
        "GB UNITED KINGDOM;US UNITED STATES2;PS UNITED STATES (PUBLIC SAFETY);UY URUGUAY;UZ UZBEKISTAN;VE VENEZUELA;"
        "VN VIET NAM;YE YEMEN;ZB ZAMBIA;ZW ZIMBABWE");
    for (std::string row; std::getline(rows, row, ';');)
        list += "    " + row.substr(0, 2) + " - " + row.substr(3) + "\n";
    std::string variants;
    for (int variant = 1; variant <= 59; ++variant)
        if (variant != 55 && variant != 56)
            variants += "    JP - JAPAN" + std::to_string(variant) + "\n";
    list = changed(list, "    JP - JAPAN*\n", variants);

    EXPECT_EQ(run(countryCommand, "country XX"), "Can NOT find any country named XX.\n" + list);
    fakePlatform.region = 'E';
    fakePlatform.defaultCountry = nullptr;
    EXPECT_EQ(run(countryCommand, "country"), "Can NOT find any country named NULL.\n" + list);
    EXPECT_EQ(run(countryCommand, "country a b"),
              "Set the country code, CMD format:\ncountry [%2S] (US/CN/UK/JP/...)\n");
    EXPECT_EQ(fakePlatform.namesAsked, std::vector<std::string>{"XX"});
    EXPECT_EQ(calls(), "");
    EXPECT_TRUE(fakePlatform.sent.empty());
}
