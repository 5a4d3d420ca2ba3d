#pragma once

// The fixed parts of the records of calls that draw nothing: devices, surfaces, pointer, colours,
// escapes. As those of the drawing calls.

#include "capture/record_header.h"

namespace koru {

struct AssertModeRecord {
    RecordHeader header;
    ULONG dhpdev;
    LONG bEnable;
};
static_assert(sizeof(AssertModeRecord) == 48);
FIELD_AT(AssertModeRecord, header, 0);
FIELD_AT(AssertModeRecord, dhpdev, 40);
FIELD_AT(AssertModeRecord, bEnable, 44);

struct EnablePdevRecord {
    RecordHeader header;
    SLOT devMode, logAddress;
    ULONG patternCount;
    ULONG patterns; // where their handles begin, -1 without any
    ULONG devInfoSize;
    SLOT devInfo;
    ULONG hdev, dhpdevReturned;
    SLOT deviceName;
    ULONG hDriver;
};
static_assert(sizeof(EnablePdevRecord) == 80);
FIELD_AT(EnablePdevRecord, header, 0);
FIELD_AT(EnablePdevRecord, devMode, 40);
FIELD_AT(EnablePdevRecord, logAddress, 44);
FIELD_AT(EnablePdevRecord, patternCount, 48);
FIELD_AT(EnablePdevRecord, patterns, 52);
FIELD_AT(EnablePdevRecord, devInfoSize, 56);
FIELD_AT(EnablePdevRecord, devInfo, 60);
FIELD_AT(EnablePdevRecord, hdev, 64);
FIELD_AT(EnablePdevRecord, dhpdevReturned, 68);
FIELD_AT(EnablePdevRecord, deviceName, 72);
FIELD_AT(EnablePdevRecord, hDriver, 76);

struct CompletePdevRecord {
    RecordHeader header;
    ULONG dhpdev, hdev;
};
static_assert(sizeof(CompletePdevRecord) == 48);
FIELD_AT(CompletePdevRecord, header, 0);
FIELD_AT(CompletePdevRecord, dhpdev, 40);
FIELD_AT(CompletePdevRecord, hdev, 44);

struct DisablePdevRecord {
    RecordHeader header;
    ULONG dhpdev, unwritten;
};
static_assert(sizeof(DisablePdevRecord) == 48);
FIELD_AT(DisablePdevRecord, header, 0);
FIELD_AT(DisablePdevRecord, dhpdev, 40);
FIELD_AT(DisablePdevRecord, unwritten, 44);

struct EnableSurfaceRecord {
    RecordHeader header;
    ULONG dhpdev, hsurfReturned;
};
static_assert(sizeof(EnableSurfaceRecord) == 48);
FIELD_AT(EnableSurfaceRecord, header, 0);
FIELD_AT(EnableSurfaceRecord, dhpdev, 40);
FIELD_AT(EnableSurfaceRecord, hsurfReturned, 44);

struct DisableSurfaceRecord {
    RecordHeader header;
    ULONG dhpdev, unwritten;
};
static_assert(sizeof(DisableSurfaceRecord) == 48);
FIELD_AT(DisableSurfaceRecord, header, 0);
FIELD_AT(DisableSurfaceRecord, dhpdev, 40);
FIELD_AT(DisableSurfaceRecord, unwritten, 44);

struct GetModesRecord {
    RecordHeader header;
    ULONG hDriver, cjSize;
    SLOT devMode;
    ULONG unwritten;
};
static_assert(sizeof(GetModesRecord) == 56);
FIELD_AT(GetModesRecord, header, 0);
FIELD_AT(GetModesRecord, hDriver, 40);
FIELD_AT(GetModesRecord, cjSize, 44);
FIELD_AT(GetModesRecord, devMode, 48);
FIELD_AT(GetModesRecord, unwritten, 52);

struct CreateDeviceBitmapRecord {
    RecordHeader header;
    ULONG hbmReturned, hsurfBacking, dhpdev;
    SIZEL sizl;
    ULONG iFormat;
};
static_assert(sizeof(CreateDeviceBitmapRecord) == 64);
FIELD_AT(CreateDeviceBitmapRecord, header, 0);
FIELD_AT(CreateDeviceBitmapRecord, hbmReturned, 40);
FIELD_AT(CreateDeviceBitmapRecord, hsurfBacking, 44);
FIELD_AT(CreateDeviceBitmapRecord, dhpdev, 48);
FIELD_AT(CreateDeviceBitmapRecord, sizl, 52);
FIELD_AT(CreateDeviceBitmapRecord, iFormat, 60);

struct DeleteDeviceBitmapRecord {
    RecordHeader header;
    ULONG dhsurf, unwritten;
};
static_assert(sizeof(DeleteDeviceBitmapRecord) == 48);
FIELD_AT(DeleteDeviceBitmapRecord, header, 0);
FIELD_AT(DeleteDeviceBitmapRecord, dhsurf, 40);
FIELD_AT(DeleteDeviceBitmapRecord, unwritten, 44);

struct MovePointerRecord {
    RecordHeader header;
    SLOT surface;
    LONG x, y;
    RECTL rcl;
    ULONG unwritten;
};
static_assert(sizeof(MovePointerRecord) == 72);
FIELD_AT(MovePointerRecord, header, 0);
FIELD_AT(MovePointerRecord, surface, 40);
FIELD_AT(MovePointerRecord, x, 44);
FIELD_AT(MovePointerRecord, y, 48);
FIELD_AT(MovePointerRecord, rcl, 52);
FIELD_AT(MovePointerRecord, unwritten, 68);

struct SetPointerShapeRecord {
    RecordHeader header;
    SLOT surface, mask, color, xlate;
    LONG xHot, yHot, x, y;
    RECTL rcl;
    ULONG fl, zero;
};
static_assert(sizeof(SetPointerShapeRecord) == 96);
FIELD_AT(SetPointerShapeRecord, header, 0);
FIELD_AT(SetPointerShapeRecord, surface, 40);
FIELD_AT(SetPointerShapeRecord, mask, 44);
FIELD_AT(SetPointerShapeRecord, color, 48);
FIELD_AT(SetPointerShapeRecord, xlate, 52);
FIELD_AT(SetPointerShapeRecord, xHot, 56);
FIELD_AT(SetPointerShapeRecord, yHot, 60);
FIELD_AT(SetPointerShapeRecord, x, 64);
FIELD_AT(SetPointerShapeRecord, y, 68);
FIELD_AT(SetPointerShapeRecord, rcl, 72);
FIELD_AT(SetPointerShapeRecord, fl, 88);
FIELD_AT(SetPointerShapeRecord, zero, 92);

struct RealizeBrushRecord {
    RecordHeader header;
    SLOT brush, surface, pattern, mask, xlate;
    ULONG iHatch;
};
static_assert(sizeof(RealizeBrushRecord) == 64);
FIELD_AT(RealizeBrushRecord, header, 0);
FIELD_AT(RealizeBrushRecord, brush, 40);
FIELD_AT(RealizeBrushRecord, surface, 44);
FIELD_AT(RealizeBrushRecord, pattern, 48);
FIELD_AT(RealizeBrushRecord, mask, 52);
FIELD_AT(RealizeBrushRecord, xlate, 56);
FIELD_AT(RealizeBrushRecord, iHatch, 60);

struct DitherColorRecord {
    RecordHeader header;
    ULONG dhpdev, iMode, rgb;
    ULONG firstDithered, returned, unwritten;
};
static_assert(sizeof(DitherColorRecord) == 64);
FIELD_AT(DitherColorRecord, header, 0);
FIELD_AT(DitherColorRecord, dhpdev, 40);
FIELD_AT(DitherColorRecord, iMode, 44);
FIELD_AT(DitherColorRecord, rgb, 48);
FIELD_AT(DitherColorRecord, firstDithered, 52);
FIELD_AT(DitherColorRecord, returned, 56);
FIELD_AT(DitherColorRecord, unwritten, 60);

struct SetPaletteRecord {
    RecordHeader header;
    ULONG unwritten;
    ULONG fl, iStart, cColors;
    SLOT entries;
    ULONG unwrittenEnd;
};
static_assert(sizeof(SetPaletteRecord) == 64);
FIELD_AT(SetPaletteRecord, header, 0);
FIELD_AT(SetPaletteRecord, unwritten, 40);
FIELD_AT(SetPaletteRecord, fl, 44);
FIELD_AT(SetPaletteRecord, iStart, 48);
FIELD_AT(SetPaletteRecord, cColors, 52);
FIELD_AT(SetPaletteRecord, entries, 56);
FIELD_AT(SetPaletteRecord, unwrittenEnd, 60);

struct SaveScreenBitsRecord {
    RecordHeader header;
    SLOT surface;
    ULONG iMode, ident;
    RECTL rcl;
    ULONG returned;
};
static_assert(sizeof(SaveScreenBitsRecord) == 72);
FIELD_AT(SaveScreenBitsRecord, header, 0);
FIELD_AT(SaveScreenBitsRecord, surface, 40);
FIELD_AT(SaveScreenBitsRecord, iMode, 44);
FIELD_AT(SaveScreenBitsRecord, ident, 48);
FIELD_AT(SaveScreenBitsRecord, rcl, 52);
FIELD_AT(SaveScreenBitsRecord, returned, 68);

struct EscapeRecord {
    RecordHeader header;
    ULONG returned;
    SLOT surface;
    ULONG iEsc, cjIn;
    SLOT input;
    ULONG cjOut;
    SLOT output;
    ULONG unwritten;
};
static_assert(sizeof(EscapeRecord) == 72);
FIELD_AT(EscapeRecord, header, 0);
FIELD_AT(EscapeRecord, returned, 40);
FIELD_AT(EscapeRecord, surface, 44);
FIELD_AT(EscapeRecord, iEsc, 48);
FIELD_AT(EscapeRecord, cjIn, 52);
FIELD_AT(EscapeRecord, input, 56);
FIELD_AT(EscapeRecord, cjOut, 60);
FIELD_AT(EscapeRecord, output, 64);
FIELD_AT(EscapeRecord, unwritten, 68);

} // namespace koru
