#pragma once

// One object of each kind that calls carry, each beside the bytes that stand for it in a record.

#include "engine/core/objects.h"
#include "tests/unit/capture/bytes.h"

namespace capture_tests {

struct Samples {
    SURFOBJ target = {reinterpret_cast<DHSURF>(0x1101),
                      reinterpret_cast<HSURF>(0x1102),
                      reinterpret_cast<DHPDEV>(0x1103),
                      reinterpret_cast<HDEV>(0x1104),
                      {1024, 768},
                      0x300000,
                      reinterpret_cast<void*>(0x1107),
                      reinterpret_cast<void*>(0x1108),
                      4096,
                      0x110A,
                      6,
                      1,
                      0x0203};
    SURFOBJ source = {nullptr,
                      reinterpret_cast<HSURF>(0x1202),
                      nullptr,
                      nullptr,
                      {16, 8},
                      128,
                      reinterpret_cast<void*>(0x1207),
                      reinterpret_cast<void*>(0x127F),
                      -16,
                      0x120A,
                      3,
                      0,
                      0x0001};
    SURFOBJ mask = {nullptr,
                    reinterpret_cast<HSURF>(0x1302),
                    nullptr,
                    nullptr,
                    {32, 2},
                    8,
                    reinterpret_cast<void*>(0x1307),
                    reinterpret_cast<void*>(0x1308),
                    4,
                    0,
                    1,
                    3,
                    0};
    CLIPOBJ clip = {0x2201, {-1, 2, 300, 400}, 1, 2, 0, 3};
    ULONG table[2] = {0x00112233, 0x00445566};
    XLATEOBJ xlate = {0x3301, 2, 1, 8, 2, table};
    BRUSHOBJ brush = {0x00ABCDEF, reinterpret_cast<void*>(0x4402), 0x4403};
    BRUSHOBJ otherBrush = {0xFFFFFFFF, reinterpret_cast<void*>(0x4502), 0x4503};
    FLOAT_LONG styles[2] = {{.l = 3}, {.l = 5}};
    LINEATTRS lineAttrs = {2, 1, 2, {.l = 7}, 10.0F, 2, styles, {.l = 9}};
    RECTL rectangle = {10, 20, 110, 220};
    RECTL otherRectangle = {-5, -6, 7, 8};
    POINTL point = {30, -40};
    POINTL otherPoint = {50, 60};
    POINTL thirdPoint = {70, 80};
};

// One subpath of one point.
struct SamplePath : engine::Path {
    SamplePath();
};

// One glyph and the string "a".
struct SampleText : engine::Text {
    SampleText();
};

// Without metrics.
struct SampleFont : engine::Font {
    SampleFont();
};

Bytes TargetBytes(); // 64
Bytes SourceBytes(); // 64
Bytes MaskBytes(); // 64
Bytes ClipBytes(); // 36
Bytes XlateBytes(); // 28
Bytes BrushBytes(); // 12
Bytes OtherBrushBytes(); // 12
Bytes LineAttrsBytes(); // 40
Bytes PathBytes(); // 40
Bytes TextBytes(); // 72
Bytes FontHeadBytes(); // 48: what stands before the metrics
Bytes FontBytes(); // 248

} // namespace capture_tests
