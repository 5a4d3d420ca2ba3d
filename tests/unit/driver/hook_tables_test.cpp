#include "driver/hook_tables.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace koru;

TEST(HookTables, ServeAnIndexWithOneFunctionInBoth)
{
    std::map<ULONG, PFN> current;
    for (ULONG i = 0; i < CurrentHookTable().count; ++i)
        current[CurrentHookTable().entries[i].iFunc] = CurrentHookTable().entries[i].pfn;
    EXPECT_EQ(current.size(), 33u);
    const HookTable legacy = LegacyHookTable();
    ASSERT_EQ(legacy.count, 26u);
    for (ULONG i = 0; i < legacy.count; ++i) {
        ASSERT_NE(legacy.entries[i].pfn, nullptr);
        EXPECT_EQ(legacy.entries[i].pfn, current[legacy.entries[i].iFunc]) << legacy.entries[i].iFunc;
    }
}

} // namespace
