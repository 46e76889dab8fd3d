#include "platform/simulation/regulatory_table.h"

#include <cstring>

namespace
{

constexpr RegulatoryCountry kCountries[] = {
    {"AL", 8},   {"DZ", 12},  {"AO", 24},  {"AR", 32},  {"AM", 51},  {"AW", 533}, {"AU", 36},  {"AT", 40},  {"AZ", 31},
    {"BH", 48},  {"BD", 50},  {"BB", 52},  {"BY", 112}, {"BE", 56},  {"BZ", 84},  {"BO", 68},  {"BA", 70},  {"BR", 76},
    {"BN", 96},  {"BG", 100}, {"KH", 116}, {"CA", 124}, {"CF", 140}, {"CL", 152}, {"CN", 156}, {"CO", 170}, {"CR", 188},
    {"HR", 191}, {"CY", 196}, {"CZ", 203}, {"DK", 208}, {"DO", 214}, {"EC", 218}, {"EG", 818}, {"SV", 222}, {"EE", 233},
    {"FI", 246}, {"FR", 250}, {"GE", 268}, {"DE", 276}, {"GR", 300}, {"GL", 304}, {"GD", 308}, {"GU", 316}, {"GT", 320},
    {"HT", 332}, {"HN", 340}, {"HK", 344}, {"HU", 348}, {"IS", 352}, {"IN", 356}, {"ID", 360}, {"IR", 364}, {"IE", 372},
    {"IL", 376}, {"IT", 380}, {"JM", 388}, {"JP", 392}, {"JO", 400}, {"KZ", 398}, {"KE", 404}, {"KP", 408}, {"KR", 410},
    {"KW", 414}, {"LV", 428}, {"LB", 422}, {"LI", 438}, {"LT", 440}, {"LU", 442}, {"MO", 446}, {"MK", 807}, {"MY", 458},
    {"MT", 470}, {"MX", 484}, {"MC", 492}, {"MA", 504}, {"MZ", 508}, {"MM", 104}, {"NP", 524}, {"NL", 528}, {"AN", 530},
    {"NZ", 554}, {"NO", 578}, {"OM", 512}, {"PK", 586}, {"PA", 591}, {"PG", 598}, {"PY", 600}, {"PE", 604}, {"PH", 608},
    {"PL", 616}, {"PT", 620}, {"PR", 630}, {"QA", 634}, {"RO", 642}, {"RU", 643}, {"RW", 646}, {"SA", 682}, {"RS", 688},
    {"ME", 499}, {"SG", 702}, {"SK", 703}, {"SI", 705}, {"ZA", 710}, {"ES", 724}, {"LK", 144}, {"SD", 736}, {"SE", 752},
    {"CH", 756}, {"SY", 760}, {"TW", 158}, {"TZ", 834}, {"TH", 764}, {"TT", 780}, {"TN", 788}, {"TR", 792}, {"UA", 804},
    {"AE", 784}, {"GB", 826}, {"US", 842}, {"PS", 843}, {"UY", 858}, {"UZ", 860}, {"VE", 862}, {"VN", 704}, {"YE", 887},
    {"ZB", 894}, {"ZW", 716},
};

struct Region {
    char code;
    char country[3];
};

constexpr Region kRegions[] = {
    {'A', "US"}, {'B', "BR"}, {'C', "CN"}, {'E', "GB"}, {'I', "IL"}, {'J', "JP"},
    {'K', "KR"}, {'N', "NZ"}, {'S', "SG"}, {'T', "TW"}, {'V', "VN"}, {'Y', "MY"},
};

} // namespace

const RegulatoryCountry* simCountryByCode(const char* code)
{
    for (const RegulatoryCountry& country : kCountries)
        if (std::strcmp(country.code, code) == 0)
            return &country;
    return nullptr;
}

const RegulatoryCountry* simCountryByNumber(int number)
{
    for (const RegulatoryCountry& country : kCountries)
        if (country.number == number)
            return &country;
    return nullptr;
}

const char* simDefaultCountry(const char* regionCode)
{
    for (const Region& region : kRegions)
        if (regionCode[0] == region.code && regionCode[1] == '\0')
            return region.country;
    return nullptr;
}
