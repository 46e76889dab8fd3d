// How the values of a CAPWAP item are checked, applied and rendered.

#ifndef CONF_CW_KINDS_H
#define CONF_CW_KINDS_H

#include <cstdint>
#include <span>
#include <string_view>

#include "conf/cw_conf.h"

struct CwKind;

/// The field of the record that a simple item lives in.
struct CwField {
    enum class Type : std::uint8_t { None, Byte, Word, DoubleWord, Text, Version };

    constexpr CwField() : type(Type::None), byte(nullptr) {}
    constexpr CwField(std::uint8_t CwConfig::*member) : type(Type::Byte), byte(member) {}
    constexpr CwField(std::uint16_t CwConfig::*member) : type(Type::Word), word(member) {}
    constexpr CwField(std::uint32_t CwConfig::*member) : type(Type::DoubleWord), doubleWord(member) {}
    constexpr CwField(std::span<char> (*member)(CwConfig&)) : type(Type::Text), text(member) {}
    constexpr CwField(const char* CwConfig::*member) : type(Type::Version), version(member) {}

    Type type;
    union {
        std::uint8_t CwConfig::*byte;
        std::uint16_t CwConfig::*word;
        std::uint32_t CwConfig::*doubleWord;
        std::span<char> (*text)(CwConfig&);
        const char* CwConfig::*version;
    };
};

/// One CAPWAP item.
struct CwItem {
    std::string_view key; ///< a literal, so its text is terminated
    const CwKind* kind;
    CwField field;
    int low; ///< closed range, where the kind checks one
    int high;
    int keyWidth; ///< of the key in the single-item display, which leaves the item out when this is 0
};

/// What an item of several values has besides.
struct CwList {
    int (*count)(const CwConfig& config);
    void (*clear)(CwConfig& config);
    const char* countName; ///< how the display names the number of values
    const char* addHelp;
    const char* deleteHelp;
    /// The commands `add` and `del`. False, and the record is as it was, when they said why not.
    bool (*add)(const char* value, CwConfig& config);
    bool (*remove)(const char* value, CwConfig& config);
};

struct CwKind {
    /// Applies a value; false when it is refused, with the record as it was. Null: no value can be set.
    bool (*set)(const CwItem& item, const char* value, CwConfig& config);
    /// Renders a value; `index` counts the entries of a list. Null: the item is never rendered.
    void (*render)(const CwItem& item, const CwConfig& config, int index, std::span<char> text);
    const CwList* list; ///< null: one value
};

extern const CwKind kStored;        ///< a number, cut to the field
extern const CwKind kChecked;       ///< digits only, within the range
extern const CwKind kIgnored;       ///< accepted, changes nothing
extern const CwKind kVlan;          ///< checked; two reserved numbers are answered by a message
extern const CwKind kDiscoveryType; ///< a number or its keyword
extern const CwKind kAddrMode;      ///< "static" or "dhcp"
extern const CwKind kAddress;       ///< an address; a bad one is answered by a message, and accepted
extern const CwKind kOwnAddress;    ///< the same; the system record shows it too
extern const CwKind kMulticast;     ///< the same with another message
extern const CwKind kSecurity;      ///< list of data channel options
extern const CwKind kText;          ///< cut to the field
extern const CwKind kPassword;      ///< a text that no key sets
extern const CwKind kVersion;       ///< a text of any length
extern const CwKind kScanTimers;    ///< one number for all three scan report timers
extern const CwKind kAcAddresses;   ///< each value is one more entry of the list
extern const CwKind kAcHostnames;   ///< likewise

/// Parses an address of an access controller; one that is none is answered by a message and false.
bool parseAcAddress(const char* value, std::uint32_t* address);

/// Says that a list does not hold the value.
void sayNotInList(const char* value);

inline constexpr char kAddAcAddressHelp[] = "Add AC static IP address (A.B.C.D).";
inline constexpr char kDeleteAcAddressHelp[] = "Delete AC static IP address (A.B.C.D).";
inline constexpr char kAddAcHostnameHelp[] = "Add AC hostname (1 - 255 string).";
inline constexpr char kDeleteAcHostnameHelp[] = "Delete AC hostname (1 - 255 string).";

#endif
