#include "conf/cw_lists.h"

#include "conf/cw_file.h"

int cwConfListAdd(const CwItem& item, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    if (isCwList(item) && !item.kind->list->add(value, config))
        return -1;
    config.saved = 0;
    return 0;
}

int cwConfListDelete(const CwItem& item, const char* value, CwConfig& config)
{
    cwConfRefresh(config);
    if (!isCwList(item)) {
        sayNotInList(value);
        return -1;
    }
    if (!item.kind->list->remove(value, config))
        return -1;
    config.saved = 0;
    return 0;
}
