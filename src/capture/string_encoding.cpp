#include "capture/byte_cursor.h"
#include "capture/encoders.h"

namespace koru {

namespace {

    constexpr WCHAR Terminator = 0;

    bool Ends(const WCHAR* text, ULONG index, ULONG limit)
    {
        return index == limit || text[index] == Terminator;
    }

} // namespace

ULONG ExpandWSTR(const WCHAR* text, ULONG length, BYTE* at, ULONG room)
{
    if (!at || room < sizeof(Terminator))
        return 0;
    const ULONG fitting = room / sizeof(WCHAR) - 1; // beside the terminator
    if (length > fitting)
        DebugPrintPiece("ExpandWSTR: Error the string is truncated, the buffer is too small.\n");
    ByteCursor cursor(at, room);
    cursor.Write(text, sizeof(WCHAR) * (length < fitting ? length : fitting));
    cursor.Write(&Terminator, sizeof(Terminator));
    return cursor.Offset();
}

ULONG ExpandZWSTR(const WCHAR* text, ULONG limit, BYTE* at, ULONG room)
{
    if (!at)
        return 0;
    ByteCursor cursor(at, room);
    BYTE* last = nullptr;
    for (ULONG i = 0; !Ends(text, i, limit) && cursor.Holds(1, sizeof(WCHAR)); ++i) {
        last = cursor.At();
        cursor.Write(&text[i], sizeof(WCHAR));
    }
    if (cursor.Holds(1, sizeof(Terminator))) {
        cursor.Write(&Terminator, sizeof(Terminator));
        return cursor.Offset();
    }
    DebugPrintPiece("ExpandDrvZWSTR: Warning!!! There isn't size enough for the string. String truncated or missing\n");
    if (last)
        memcpy(last, &Terminator, sizeof(Terminator));
    return cursor.Offset();
}

ULONG ExpandDrvZWSTR(const WCHAR* text, BYTE* at, ULONG room)
{
    return ExpandZWSTR(text, NoLimit, at, room);
}

} // namespace koru
