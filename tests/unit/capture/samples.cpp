#include "tests/unit/capture/samples.h"

namespace capture_tests {

SamplePath::SamplePath()
{
    Add(3, {{0x51, -0x52}});
    fl = 0x53;
    cCurves = 0x54;
}

SampleText::SampleText()
{
    AddGlyph(0x61, {-100, 200}, {1, -9}, {8, 1}, {0xFF});
    SetString(u"a");
    flAccel = 6;
    ulCharInc = 8;
    rclBkGround = {1, 2, 3, 4};
}

SampleFont::SampleFont()
{
    static_cast<FONTOBJ&>(*this) = {0x701,
                                    0x702,
                                    0x703,
                                    0x704,
                                    0x705,
                                    0x706,
                                    {96, 72},
                                    0x709,
                                    reinterpret_cast<void*>(0x70A),
                                    reinterpret_cast<void*>(0x70B)};
}

Bytes TargetBytes()
{
    return Words({0xCCCCCC00, 0x110A, 0x1101, 0x1102, 0x1103, 0x1104, 1024, 768, 0x300000, 0x1107, 0x1108, 4096, 6,
                  0x02030001, 0, 0});
}

Bytes SourceBytes()
{
    return Words({0xCCCCCC00, 0x120A, 0, 0x1202, 0, 0, 16, 8, 128, 0x1207, 0x127F, 0xFFFFFFF0, 3, 0x00010000, 0, 0});
}

Bytes MaskBytes()
{
    return Words({0xCCCCCC00, 0, 0, 0x1302, 0, 0, 32, 2, 8, 0x1307, 0x1308, 4, 1, 3, 0, 0});
}

Bytes ClipBytes()
{
    return Words({0xCCCCCC00, 0x2201, 0xFFFFFFFF, 2, 300, 400, 0x03000201, 0, 0});
}

Bytes XlateBytes()
{
    return Words({0x3301, 2, 0x00080001, 2, 20, 0x00112233, 0x00445566});
}

Bytes BrushBytes()
{
    return Words({0x00ABCDEF, 0x4402, 0x4402});
}

Bytes OtherBrushBytes()
{
    return Words({0xFFFFFFFF, 0x4502, 0x4502});
}

Bytes LineAttrsBytes()
{
    return Words({2, 1, 2, 7, 0x41200000, 2, 0, 9, 3, 5}); // the miter limit is the float 10
}

Bytes PathBytes()
{
    return Words({0x53, 0x54, Canary, 1, 20, 3, 1, 0, 0x51, 0xFFFFFFAE});
}

Bytes TextBytes()
{
    return Words({1252, 6, 8, 1, 2, 3, 4, 1, 40, 68}) + Words({0x61, 0xFFFFFF9C, 200, 1, 0xFFFFFFF7, 8, 1})
        + Halves({u'a', 0});
}

Bytes FontHeadBytes()
{
    return Words({0xCCCCCC00, 0x701, 0x702, 0x703, 0x704, 0x705, 0x706, 96, 72, 0x709, 0x70A, 0x70B});
}

Bytes FontBytes()
{
    return FontHeadBytes() + Filled(184, 0) + Filled(16);
}

} // namespace capture_tests
