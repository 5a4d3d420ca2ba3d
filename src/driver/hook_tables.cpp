#include "driver/hook_tables.h"

#include "driver/device_calls.h"
#include "escape/escape.h"
#include "hooks/entry_points.h"
#include "platform/constants.h"

namespace koru {

namespace {

    // A DRVFN whose pointer has kept its type, so that the tables are constant data.
    template<ULONG Index, class Function> struct Hook {
        ULONG iFunc;
        Function pfn;
    };
    template<ULONG Index, class Function> consteval Hook<Index, Function> Row(Function function)
    {
        static_assert(sizeof(Hook<Index, Function>) == sizeof(DRVFN));
        return {Index, function};
    }
    template<class... Hooks> struct Rows : Hooks... {
    };
    template<class... Hooks> Rows(Hooks...) -> Rows<Hooks...>;

    constinit const Rows LegacyRows = {
        Row<INDEX_DrvEnablePDEV>(DrvEnablePDEV),
        Row<INDEX_DrvCompletePDEV>(DrvCompletePDEV),
        Row<INDEX_DrvDisablePDEV>(DrvDisablePDEV),
        Row<INDEX_DrvEnableSurface>(DrvEnableSurface),
        Row<INDEX_DrvDisableSurface>(DrvDisableSurface),
        Row<INDEX_DrvRealizeBrush>(DrvRealizeBrush),
        Row<INDEX_DrvCreateDeviceBitmap>(DrvCreateDeviceBitmap),
        Row<INDEX_DrvDeleteDeviceBitmap>(DrvDeleteDeviceBitmap),
        Row<INDEX_DrvBitBlt>(DrvBitBlt),
        Row<INDEX_DrvStretchBlt>(DrvStretchBlt),
        Row<INDEX_DrvTextOut>(DrvTextOut),
        Row<INDEX_DrvStrokePath>(DrvStrokePath),
        Row<INDEX_DrvCopyBits>(DrvCopyBits),
        Row<INDEX_DrvAssertMode>(DrvAssertMode),
        Row<INDEX_DrvGetModes>(DrvGetModes),
        Row<INDEX_DrvFillPath>(DrvFillPath),
        Row<INDEX_DrvPaint>(DrvPaint),
        Row<INDEX_DrvLineTo>(DrvLineTo),
        Row<INDEX_DrvSetPalette>(DrvSetPalette),
        Row<INDEX_DrvDitherColor>(DrvDitherColor),
        Row<INDEX_DrvMovePointer>(DrvMovePointer),
        Row<INDEX_DrvSetPointerShape>(DrvSetPointerShape),
        Row<INDEX_DrvSaveScreenBits>(DrvSaveScreenBits),
        Row<INDEX_DrvEscape>(DrvEscape),
        Row<INDEX_DrvSynchronize>(DrvSynchronize),
        Row<INDEX_DrvStrokeAndFillPath>(DrvStrokeAndFillPath),
    };

    constinit const Rows CurrentRows = {
        Row<INDEX_DrvEnablePDEV>(DrvEnablePDEV),
        Row<INDEX_DrvCompletePDEV>(DrvCompletePDEV),
        Row<INDEX_DrvDisablePDEV>(DrvDisablePDEV),
        Row<INDEX_DrvEnableSurface>(DrvEnableSurface),
        Row<INDEX_DrvDisableSurface>(DrvDisableSurface),
        Row<INDEX_DrvBitBlt>(DrvBitBlt),
        Row<INDEX_DrvTextOut>(DrvTextOut),
        Row<INDEX_DrvCopyBits>(DrvCopyBits),
        Row<INDEX_DrvStrokePath>(DrvStrokePath),
        Row<INDEX_DrvEscape>(DrvEscape),
        Row<INDEX_DrvGetModes>(DrvGetModes),
        Row<INDEX_DrvAssertMode>(DrvAssertMode),
        Row<INDEX_DrvCreateDeviceBitmap>(DrvCreateDeviceBitmap),
        Row<INDEX_DrvDeleteDeviceBitmap>(DrvDeleteDeviceBitmap),
        Row<INDEX_DrvSetPalette>(DrvSetPalette),
        Row<INDEX_DrvDitherColor>(DrvDitherColor),
        Row<INDEX_DrvSynchronize>(DrvSynchronize),
        Row<INDEX_DrvRealizeBrush>(DrvRealizeBrush),
        Row<INDEX_DrvStretchBlt>(DrvStretchBlt),
        Row<INDEX_DrvFillPath>(DrvFillPath),
        Row<INDEX_DrvPaint>(DrvPaint),
        Row<INDEX_DrvLineTo>(DrvLineTo),
        Row<INDEX_DrvMovePointer>(DrvMovePointer),
        Row<INDEX_DrvSetPointerShape>(DrvSetPointerShape),
        Row<INDEX_DrvSaveScreenBits>(DrvSaveScreenBits),
        Row<INDEX_DrvStrokeAndFillPath>(DrvStrokeAndFillPath),
        Row<INDEX_DrvSynchronizeSurface>(DrvSynchronizeSurface),
        Row<INDEX_DrvAlphaBlend>(DrvAlphaBlend),
        Row<INDEX_DrvGradientFill>(DrvGradientFill),
        Row<INDEX_DrvTransparentBlt>(DrvTransparentBlt),
        Row<INDEX_DrvStretchBltROP>(DrvStretchBltROP),
        Row<INDEX_DrvPlgBlt>(DrvPlgBlt),
        Row<INDEX_DrvIcmSetDeviceGammaRamp>(DrvIcmSetDeviceGammaRamp),
    };

    static_assert(sizeof(LegacyRows) == 26 * sizeof(DRVFN) && sizeof(CurrentRows) == 33 * sizeof(DRVFN));

    // The engine only reads the rows, through a pointer that is not const.
    template<class AnyRows> HookTable TableOf(const AnyRows& rows)
    {
        return {reinterpret_cast<DRVFN*>(const_cast<AnyRows*>(&rows)), sizeof(rows) / sizeof(DRVFN)};
    }

} // namespace

HookTable LegacyHookTable()
{
    return TableOf(LegacyRows);
}

HookTable CurrentHookTable()
{
    return TableOf(CurrentRows);
}

} // namespace koru
