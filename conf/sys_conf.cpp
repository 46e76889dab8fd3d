#include "conf/sys_conf.h"

constinit SysConfig sysConfig{};

void sysConfRefresh(SysConfig&) {}
