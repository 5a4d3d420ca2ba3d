#include "magnifier/zoomer_list.h"

#include "driver/debug_print.h"
#include "driver/handles.h"
#include "driver/pool.h"
#include "magnifier/bitmaps.h"
#include "magnifier/palette.h"
#include "magnifier/stride.h"

namespace koru {

static_assert(offsetof(ZoomerList, head) == 0 && offsetof(ZoomerList, count) == 4
              && offsetof(ZoomerList, hBmpStretchDest) == 8);
static_assert(offsetof(ZoomerList, hBmpAux) == 12 && offsetof(ZoomerList, width) == 16
              && offsetof(ZoomerList, height) == 20);
static_assert(offsetof(ZoomerList, format) == 24 && offsetof(ZoomerList, recompose) == 28
              && offsetof(ZoomerList, colourTable) == 32);

namespace {

    // How far a zoomer's bitmap exceeds the screen, right and below.
    constexpr ULONG Margin = 48;

    void SetDefaults(Zoomer& zoomer)
    {
        zoomer.xFactor = zoomer.yFactor = 2;
        zoomer.bordersSize = 1;
        zoomer.originalRect = zoomer.pendingRect = {0, 0, 50, 50};
        zoomer.zoomedRect = zoomer.previousZoomedRect = zoomer.destRect = {0, 0, 100, 100};
        zoomer.pending = zoomer.changed = 1;
    }

} // namespace

void ZoomerList::Initialise(ULONG screenWidth, ULONG screenHeight, ULONG screenFormat, LONG lDelta)
{
    if (hBmpStretchDest)
        DebugPrint("Error: MultiZoom Init !! hBmpStretchDest != NULL \n");
    Release();
    width = screenWidth;
    height = screenHeight;
    format = screenFormat;
    recompose = 0;
    const LONG stride = StrideHoldingRow(lDelta, static_cast<LONG>(width), PlainFormat(format));
    hBmpStretchDest = MakeBitmap(width, height, format, stride);
    if (!hBmpStretchDest)
        DebugPrint("Failed to create hBmpStretchDest \n");
    hBmpAux = MakeBitmap(width, height, format, stride);
    if (!hBmpAux)
        DebugPrint("Failed to create hBmpAux\n");
    colourTable = DefaultColourTable(format);
}

void ZoomerList::Release()
{
    Flush();
    DropBitmap(hBmpStretchDest);
    DropBitmap(hBmpAux);
    FreeToPool(colourTable);
    colourTable = nullptr;
}

Zoomer* ZoomerList::Create()
{
    auto* const zoomer = AllocateRecord<Zoomer>();
    if (!zoomer)
        return nullptr;
    SetDefaults(*zoomer);
    zoomer->screenWidth = width;
    zoomer->screenHeight = height;
    const ULONG bitmapWidth = width + Margin;
    zoomer->hBmp = MakeBitmap(bitmapWidth, height + Margin, format, RowBytes(bitmapWidth, format));
    if (!zoomer->hBmp) {
        DebugPrint("Faliled to create hBmp !!!! \n");
        DebugPrint("Error creating zoom bitmap \n");
        FreeToPool(zoomer);
        return nullptr;
    }
    zoomer->hBmpAux = hBmpAux;
    zoomer->colourTable = colourTable;
    zoomer->next = head;
    head = zoomer;
    ++count;
    return zoomer;
}

void ZoomerList::Delete(Zoomer* zoomer)
{
    DropBitmap(zoomer->hBmp);
    FreeToPool(zoomer);
}

void ZoomerList::Unlink(Zoomer* zoomer)
{
    Zoomer** link = &head;
    while (*link != zoomer)
        link = &(*link)->next;
    *link = zoomer->next;
}

void ZoomerList::Remove(ULONG id)
{
    Zoomer* const zoomer = Find(id);
    if (!zoomer)
        return;
    Unlink(zoomer);
    Delete(zoomer);
    --count;
}

void ZoomerList::Flush()
{
    while (head) {
        Zoomer* const zoomer = head;
        head = zoomer->next;
        Delete(zoomer);
    }
    count = 0;
}

Zoomer* ZoomerList::Find(ULONG id) const
{
    Zoomer* zoomer = head;
    while (zoomer && NumberOf(zoomer) != id)
        zoomer = zoomer->next;
    return zoomer;
}

void ZoomerList::SetZOrder(ULONG id, LONG zOrder)
{
    Zoomer* const zoomer = Find(id);
    if (!zoomer)
        return;
    ULONG oldPosition = 0;
    for (const Zoomer* other = head; other != zoomer; other = other->next)
        ++oldPosition;
    zoomer->zOrder = zOrder;
    Unlink(zoomer);

    ULONG position = 0;
    Zoomer** link = &head;
    for (; *link && (*link)->zOrder >= zOrder; link = &(*link)->next)
        ++position;
    zoomer->next = *link;
    *link = zoomer;
    if (position != oldPosition)
        recompose = 1;
}

LONG ZoomerList::GetZOrder(ULONG id) const
{
    const Zoomer* const zoomer = Find(id);
    return zoomer ? zoomer->zOrder : -1;
}

void ZoomerList::Renumber()
{
    ULONG number = count;
    for (Zoomer* zoomer = head; zoomer; zoomer = zoomer->next)
        zoomer->zOrder = static_cast<LONG>(number--);
}

ULONG ZoomerList::CountActive() const
{
    ULONG active = 0;
    for (const Zoomer* zoomer = head; zoomer; zoomer = zoomer->next)
        active += zoomer->IsOn();
    return active;
}

} // namespace koru
