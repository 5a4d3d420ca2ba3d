#include "capture/byte_cursor.h"
#include "capture/encoders.h"

namespace koru {

namespace {

    constexpr WCHAR Terminator = 0;

    // Metrics may put a name at an odd address.
    WCHAR CharacterAt(const BYTE* text)
    {
        WCHAR character;
        memcpy(&character, text, sizeof(character));
        return character;
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

ULONG ExpandZWSTR(const void* text, ULONG limit, BYTE* at, ULONG room)
{
    if (!at)
        return 0;
    ByteCursor cursor(at, room);
    BYTE* last = nullptr;
    const BYTE* next = static_cast<const BYTE*>(text);
    for (ULONG i = 0; i < limit && CharacterAt(next) != Terminator && cursor.Holds(1, sizeof(WCHAR)); ++i) {
        last = cursor.At();
        cursor.Write(next, sizeof(WCHAR));
        next += sizeof(WCHAR);
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
