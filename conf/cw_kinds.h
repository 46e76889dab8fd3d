// How the values of a CAPWAP item are checked, applied and formatted.

#ifndef CONF_CW_KINDS_H
#define CONF_CW_KINDS_H

#include <cstdint>
#include <span>
#include <string_view>

#include "conf/cw_conf.h"

struct CwList;

/// Refers to a field of the record that holds a number.
struct CwNumber {
    enum class Type : std::uint8_t { kByte = 1, kWord = 2, kDoubleWord = 4 }; ///< size in bytes

    constexpr CwNumber(std::uint8_t CwConfig::*member) : type(Type::kByte), byte(member) {}
    constexpr CwNumber(std::uint16_t CwConfig::*member) : type(Type::kWord), word(member) {}
    constexpr CwNumber(std::uint32_t CwConfig::*member) : type(Type::kDoubleWord), doubleWord(member) {}

    Type type;
    union {
        std::uint8_t CwConfig::*byte;
        std::uint16_t CwConfig::*word;
        std::uint32_t CwConfig::*doubleWord;
    };
};

using CwAddress = std::uint32_t CwConfig::*;
using CwText = std::span<char> (*)(CwConfig&);
using CwVersion = const char* CwConfig::*;

/// The field of the record that holds the value of an item. The item's kind tells which member is in use.
union CwField {
    constexpr CwField() : address(nullptr) {}
    constexpr CwField(CwNumber field) : number(field) {}
    constexpr CwField(CwAddress field) : address(field) {}
    constexpr CwField(CwText field) : text(field) {}
    constexpr CwField(CwVersion field) : version(field) {}

    CwNumber number;
    CwAddress address;
    CwText text;
    CwVersion version;
};

struct CwKind;

/// One CAPWAP item.
struct CwItem {
    std::string_view key; ///< a string literal, so a zero follows its last character
    const CwKind* kind;
    CwField field;
    int low; ///< the closed range from `low` to `high`, if the kind checks a range
    int high;
    int keyWidth; ///< width of the key in the single-item display; 0: the display omits the item
};

struct CwKind {
    /// Applies a value. If the value is refused, returns false and leaves the record unchanged. Null if no value can be
    /// set.
    bool (*set)(const CwItem& item, const char* value, CwConfig& config);
    /// Formats the value of the item or, if the item is a list, the entry `index`. Null if the item is never shown.
    void (*format)(const CwItem& item, const CwConfig& config, int index, std::span<char> text);
    const CwList* list; ///< null if the item has one value
};

/// A kind whose items have one field of the type `Field`. A table row with a field of another type does not compile.
template <typename Field>
struct CwFieldKind {
    CwKind kind;
};

extern const CwFieldKind<CwNumber> kStored;  ///< a number; bits that do not fit into the field are dropped
extern const CwFieldKind<CwNumber> kChecked; ///< digits only, within the range
extern const CwFieldKind<CwNumber> kIgnored; ///< any value is accepted and changes nothing
extern const CwFieldKind<CwNumber> kVlan;    ///< like kChecked; two reserved numbers print a message and change nothing
extern const CwFieldKind<CwNumber> kDiscoveryType; ///< a number or its keyword
extern const CwFieldKind<CwAddress>
    kAddress; ///< an address; a bad one prints a message and changes nothing, but is no error
extern const CwFieldKind<CwAddress> kOwnAddress; ///< like kAddress; the system record shows the address too
extern const CwFieldKind<CwAddress> kMulticast;  ///< like kAddress, with another message
extern const CwFieldKind<CwText> kText;          ///< a text, truncated to the field
extern const CwFieldKind<CwText> kPassword;      ///< a text that is shown and cannot be set
extern const CwFieldKind<CwVersion> kVersion;    ///< a text of any length
extern const CwKind kAddrMode;                   ///< "static" or "dhcp"
extern const CwKind kSecurity;                   ///< list of data channel options
extern const CwKind kScanTimers;                 ///< one number for all three scan report timers

#endif
