// The two lists of access controllers: static addresses and host names.

#ifndef CONF_CW_LISTS_H
#define CONF_CW_LISTS_H

#include "conf/cw_kinds.h"

/// The operations of an item that is a list. Entries are counted from 0.
struct CwList {
    int (*count)(const CwConfig& config);
    void (*clear)(CwConfig& config);
    const char* countName; ///< the name of the number of values in the display
    const char* addHelp;
    const char* deleteHelp;
    /// The commands `add` and `del`. If the value is refused, they print a message and return false; the record is then
    /// unchanged.
    bool (*add)(const char* value, CwConfig& config);
    bool (*remove)(const char* value, CwConfig& config);
    /// Replaces an entry. If the list is too short, appends the value until the list has the entry. If the value is
    /// refused, prints a message and returns false.
    bool (*put)(int entry, const char* value, CwConfig& config);
    /// Formats the address or the name of an entry. Does not append `inUse`.
    void (*format)(const CwConfig& config, int entry, std::span<char> text);
};

extern const CwKind kAcAddresses; ///< setting a value appends it to the list
extern const CwKind kAcHostnames; ///< setting a value appends it to the list

inline constexpr char kAddAcAddressHelp[] = "Add AC static IP address (A.B.C.D).";
inline constexpr char kDeleteAcAddressHelp[] = "Delete AC static IP address (A.B.C.D).";
inline constexpr char kAddAcHostnameHelp[] = "Add AC hostname (1 - 255 string).";
inline constexpr char kDeleteAcHostnameHelp[] = "Delete AC hostname (1 - 255 string).";

/// The command `add`. If an address is not valid, is in the list already, or the list is full, prints a message.
/// Otherwise marks the record as changed, also in two cases in which no value changes: the list of names is full, or
/// the item is no list.
void cwConfListAdd(const CwItem& item, const char* value, CwConfig& config);

/// The command `del`. If the value is not in the list, or the item is no list, prints a message. Otherwise marks the
/// record as changed.
void cwConfListDelete(const CwItem& item, const char* value, CwConfig& config);

/// Puts a value in an entry of a list, as CwList::put() does, and marks the record as changed. Prints a message if the
/// value is refused.
void cwConfListPut(const CwItem& item, int entry, const char* value, CwConfig& config);

#endif
