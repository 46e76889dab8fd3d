#include "diag/get_tree.h"

constinit cli_node getTable[5] = {};
