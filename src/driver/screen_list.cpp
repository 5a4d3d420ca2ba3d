#include "driver/screen_list.h"

#include "driver/pool.h"
#include "platform/runtime.h"

namespace koru::ScreenList {

namespace {

    constexpr ULONG SlotSize = sizeof(void*);
    constinit Screen** Slots = nullptr;
    constinit ULONG SlotCount = 0;

    bool Grow()
    {
        auto** const grown = static_cast<Screen**>(AllocateFromPool((SlotCount + 1) * SlotSize));
        if (!grown)
            return false;
        if (Slots)
            memcpy(grown, Slots, SlotCount * SlotSize);
        FreeToPool(Slots);
        Slots = grown;
        ++SlotCount;
        return true;
    }

    Screen** TakeSlot()
    {
        for (ULONG i = 0; i < SlotCount; ++i)
            if (!Slots[i])
                return &Slots[i];
        return Grow() ? &Slots[SlotCount - 1] : nullptr;
    }

} // namespace

Screen* Add(DHPDEV dhpdevReal)
{
    Screen** const slot = TakeSlot();
    if (!slot)
        return nullptr;
    *slot = AllocateRecord<Screen>();
    if (*slot)
        (*slot)->dhpdevReal = dhpdevReal;
    return *slot;
}

bool Remove(Screen* screen)
{
    if (!screen)
        return false;
    for (ULONG i = SlotCount; i-- > 0;) {
        if (Slots[i] != screen)
            continue;
        FreeToPool(screen);
        Slots[i] = nullptr;
        return true;
    }
    return false;
}

Screen* Find(DHPDEV dhpdev)
{
    for (ULONG i = 0; i < SlotCount; ++i)
        if (Slots[i] && Slots[i]->dhpdevReal == dhpdev)
            return Slots[i];
    return nullptr;
}

bool IsScreenDevice(DHPDEV dhpdev, HDEV hdev)
{
    for (ULONG i = 0; i < SlotCount; ++i)
        if (Slots[i] && Slots[i]->dhpdevReal == dhpdev && Slots[i]->hdev == hdev)
            return true;
    return false;
}

void ForEach(FunctionRef<void(Screen&)> visit)
{
    for (ULONG i = 0; i < SlotCount; ++i)
        if (Slots[i])
            visit(*Slots[i]);
}

} // namespace koru::ScreenList
