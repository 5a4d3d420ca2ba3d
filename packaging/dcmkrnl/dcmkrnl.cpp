// dcmkrnl.dll: tells Koru which display driver comes behind it, on machines without a display chain
// manager of their own.

#include "packaging/name_file.h"
#include "platform/structures.h"

namespace koru {

namespace {

    constexpr NameFile ChainFile = {
        .bare = u"dcmkrnl.ini", .path = u"\\SystemRoot\\System32\\dcmkrnl.ini", .otherwise = u"korulink"};
    constexpr WCHAR OnlyAsker[] = u"koru";

    enum Status : ULONG { Success = 0, InvalidParameter = 2, DriverNotFound = 3, InsufficientBuffer = 6 };

    WCHAR Lower(WCHAR letter)
    {
        return letter >= u'A' && letter <= u'Z' ? static_cast<WCHAR>(letter + (u'a' - u'A')) : letter;
    }

    bool IsOnlyAsker(const WCHAR* asker)
    {
        for (ULONG i = 0; i < sizeof(OnlyAsker) / sizeof(WCHAR); ++i)
            if (Lower(asker[i]) != OnlyAsker[i])
                return false;
        return true;
    }

} // namespace

} // namespace koru

// The name of the driver behind `asker`, terminated and without extension, into `buffer` of `room` characters.
// The first two numbers select nothing. On failure the buffer is left as it is:
//     2  a null pointer
//     3  another asker than "koru" (letters of any case): nothing else is in this chain
//     6  the name and its terminator do not fit
extern "C" ULONG __attribute__((cdecl)) GetNextDriver(ULONG, ULONG, const WCHAR* asker, WCHAR* buffer, ULONG room)
{
    if (!asker || !buffer)
        return koru::InvalidParameter;
    if (!koru::IsOnlyAsker(asker))
        return koru::DriverNotFound;
    const koru::DriverName name = koru::ReadDriverName(koru::ChainFile);
    if (room <= name.length)
        return koru::InsufficientBuffer;
    for (ULONG i = 0; i <= name.length; ++i)
        buffer[i] = name.text[i];
    return koru::Success;
}

// The image's entry point, which engines call when it is installed as a display driver by mistake.
extern "C" BOOL APIENTRY DrvEnableDriver(ULONG, ULONG, DRVENABLEDATA*)
{
    return FALSE;
}
