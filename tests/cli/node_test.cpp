#include "cli/node.h"
#include "cli/root_table.h"

#include <gtest/gtest.h>

TEST(Node, LookupIsExact)
{
    EXPECT_TRUE(isRootCommand("config"));
    EXPECT_FALSE(isRootCommand("Config"));
    EXPECT_FALSE(isRootCommand("conf"));
}
