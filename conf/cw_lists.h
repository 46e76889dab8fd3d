// The two lists of access controllers: static addresses and host names.

#ifndef CONF_CW_LISTS_H
#define CONF_CW_LISTS_H

#include "conf/cw_kinds.h"

/// What an item that is a list has besides its kind. Entries are counted from 0.
struct CwList {
    int (*count)(const CwConfig& config);
    void (*clear)(CwConfig& config);
    const char* countName; ///< how the display names the number of values
    const char* addHelp;
    const char* deleteHelp;
    /// The commands `add` and `del`. False: the record is as it was, and they said why.
    bool (*add)(const char* value, CwConfig& config);
    bool (*remove)(const char* value, CwConfig& config);
    /// Replaces an entry. A list that is too short gets the value as often as it takes to have the entry. False as
    /// above.
    bool (*put)(int entry, const char* value, CwConfig& config);
    /// Formats the value of an entry alone.
    void (*format)(const CwConfig& config, int entry, std::span<char> text);
};

extern const CwKind kAcAddresses; ///< each value that is set is one more entry of the list
extern const CwKind kAcHostnames; ///< likewise

inline constexpr char kAddAcAddressHelp[] = "Add AC static IP address (A.B.C.D).";
inline constexpr char kDeleteAcAddressHelp[] = "Delete AC static IP address (A.B.C.D).";
inline constexpr char kAddAcHostnameHelp[] = "Add AC hostname (1 - 255 string).";
inline constexpr char kDeleteAcHostnameHelp[] = "Delete AC hostname (1 - 255 string).";

/// `add`: a new address is checked against the limit of the commands and the list; a surplus name is dropped silently;
/// an item that is no list takes nothing. Marks the record changed and returns 0, or says why not and returns -1.
int cwConfListAdd(const CwItem& item, const char* value, CwConfig& config);

/// `del`: marks the record changed and returns 0, or says why not and returns -1.
int cwConfListDelete(const CwItem& item, const char* value, CwConfig& config);

/// Puts the value in an entry of a list and marks the record changed. A value that is refused is answered by a message.
void cwConfListPut(const CwItem& item, int entry, const char* value, CwConfig& config);

#endif
