// The table of the CAPWAP items, and their order in the file and the displays.

#ifndef CONF_CW_ITEMS_H
#define CONF_CW_ITEMS_H

#include <span>
#include <string_view>

#include "conf/cw_conf.h"
#include "conf/cw_lists.h"

/// Size of the buffer for a formatted value; a longer value is truncated.
inline constexpr std::size_t kCwValueSize = 512;

/// The line that frames the file and the display of the whole record.
inline constexpr char kCwFrameLine[] = "#=====================CW CONF PARAMs========================\n";

/// A section of the file and of the display of the whole record.
struct CwSection {
    const char* fileTitle;
    const char* showTitle;
    std::span<const CwItem* const> items;
};

/// Every item, in the order in which cwConfShowItem() prints them.
extern const std::span<const CwItem> cwItems;

/// The sections of the file in their order.
extern const std::span<const CwSection> cwSections;

/// The item with this key, or null.
const CwItem* cwConfItem(std::string_view key);

/// Checks a value and applies it to the item of `key`. Marks the record as changed and returns 0. If the key is unknown
/// or the value is refused, prints a message and returns -1; the record is then unchanged.
int cwConfSetItem(const char* key, const char* value, CwConfig& config);

/// Whether two records have the same values of an item. The item must be in a section of the file.
bool cwConfItemIsSame(const CwItem& item, const CwConfig& one, const CwConfig& other);

/// Copies the values of an item from one record to another. The item must be in a section of the file.
void cwConfCopyItem(const CwItem& item, const CwConfig& from, CwConfig& to);

/// Whether the item is a list of values.
inline bool isCwList(const CwItem& item)
{
    return item.kind->list != nullptr;
}

inline int cwValueCount(const CwItem& item, const CwConfig& config)
{
    return isCwList(item) ? item.kind->list->count(config) : 1;
}

/// Calls `line(key, value)` for every value of an item.
template <typename Line>
void forEachValue(const CwItem& item, const CwConfig& config, Line line)
{
    const int count = cwValueCount(item, config);
    for (int i = 0; i < count; ++i) {
        char value[kCwValueSize];
        item.kind->format(item, config, i, std::span(value));
        line(item.key.data(), value);
    }
}

#endif
