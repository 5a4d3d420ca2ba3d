#include "driver/screen_list.h"

#include <gtest/gtest.h>

#include "engine/core/engine.h"
#include "hooks/device_bitmaps.h"

namespace {

using namespace koru;

DHPDEV Dhpdev(ULONG number)
{
    return reinterpret_cast<DHPDEV>(number);
}
HDEV Hdev(ULONG number)
{
    return reinterpret_cast<HDEV>(number);
}
HSURF Handle(ULONG number)
{
    return reinterpret_cast<HSURF>(number);
}

class TheScreenList : public testing::Test {
protected:
    engine::Engine engine;
};

TEST_F(TheScreenList, KnowsADeviceByBothItsHandles)
{
    Screen* const first = ScreenList::Add(Dhpdev(1));
    Screen* const second = ScreenList::Add(Dhpdev(2));
    first->hdev = Hdev(10);
    second->hdev = Hdev(20);
    EXPECT_TRUE(ScreenList::IsScreenDevice(Dhpdev(1), Hdev(10)));
    EXPECT_TRUE(ScreenList::IsScreenDevice(Dhpdev(2), Hdev(20)));
    EXPECT_FALSE(ScreenList::IsScreenDevice(Dhpdev(1), Hdev(20)));
    EXPECT_FALSE(ScreenList::IsScreenDevice(Dhpdev(2), Hdev(10)));
    EXPECT_FALSE(ScreenList::IsScreenDevice(Dhpdev(3), Hdev(10)));
    EXPECT_TRUE(ScreenList::Remove(first));
    EXPECT_FALSE(ScreenList::Remove(first));
    EXPECT_FALSE(ScreenList::Remove(nullptr));
    EXPECT_FALSE(ScreenList::IsScreenDevice(Dhpdev(1), Hdev(10)));
    EXPECT_TRUE(ScreenList::Remove(second));
}

TEST_F(TheScreenList, StartsAScreenEmpty)
{
    Screen* const screen = ScreenList::Add(Dhpdev(1));
    EXPECT_EQ(screen->dhpdevReal, Dhpdev(1));
    EXPECT_EQ(screen->DeviceBitmaps, nullptr);
    EXPECT_EQ(screen->DeviceBitmapCount, 0u);
    EXPECT_EQ(screen->hsurfDevice, nullptr);
    EXPECT_EQ(screen->hdev, nullptr);
    ScreenList::Remove(screen);
}

TEST(FindBacking, AnswersTheFirstEntryOfADeviceBitmap)
{
    DeviceBitmap entries[] = {{Handle(1), Handle(11)}, {Handle(2), Handle(12)}, {Handle(2), Handle(13)}};
    Screen screen = {};
    screen.DeviceBitmaps = entries;
    screen.DeviceBitmapCount = 3;
    EXPECT_EQ(FindBacking(screen, reinterpret_cast<HBITMAP>(2)), Handle(12));
    EXPECT_EQ(FindBacking(screen, reinterpret_cast<HBITMAP>(1)), Handle(11));
    EXPECT_EQ(FindBacking(screen, reinterpret_cast<HBITMAP>(3)), nullptr);
}

} // namespace
