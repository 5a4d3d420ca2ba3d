#include "driver/option_file.h"

#include "platform/services.h"

namespace koru {

namespace {

    // Any byte counts as a digit: letters give values above 9, bytes below '0' wrap to huge ones.
    ULONG DigitAt(const BYTE* bytes, ULONG position)
    {
        return ULONG{bytes[position]} - '0';
    }

    BYTE TwoDigitsAt(const BYTE* bytes, ULONG position)
    {
        return static_cast<BYTE>(DigitAt(bytes, position) * 10 + DigitAt(bytes, position + 1));
    }

} // namespace

void ApplyOptions(const BYTE* bytes, ULONG size, Options& options)
{
    if (size > 0)
        options.AdjustDeviceCaps = DigitAt(bytes, 0);
    if (size > 1) {
        const BYTE mode = static_cast<BYTE>(DigitAt(bytes, 1));
        options.PointerMode = mode > PointerForwarded ? BYTE{PointerDrawnHere} : mode;
    }
    if (size > 2)
        options.FilterPointerCopies = DigitAt(bytes, 2);
    if (size > 4)
        options.CapsBitsPixel = TwoDigitsAt(bytes, 3);
    if (size > 6)
        options.CapsPlanes = TwoDigitsAt(bytes, 5);
}

void ReadOptionFile()
{
    const HANDLE module = EngLoadModule(const_cast<WCHAR*>(u"KORU.ini"));
    if (!module)
        return;
    ULONG size = 0;
    if (const void* const bytes = EngMapModule(module, &size))
        ApplyOptions(static_cast<const BYTE*>(bytes), size, DriverOptions);
    EngFreeModule(module);
}

} // namespace koru
