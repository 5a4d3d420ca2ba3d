// What holds for the records of all calls.

#include "capture/call_bits.h"
#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    // One call of every kind, with every object that it can have.
    struct Call : Samples {
        SamplePath path;
        SampleText text;
        SampleFont font;
        engine::ClipObject complexClip{{{1, 2, 3, 4}, {5, 6, 7, 8}}};
        engine::PaletteObject palette;
        DEVMODEW mode = {};
        DEVINFO info = {};
        WCHAR name[3] = u"LA";
        HSURF patterns[2] = {};
        RECTL extra[2] = {{1, 2, 3, 4}, {}};
        COLORADJUSTMENT adjustment = {};
        POINTFIX corners[3] = {};
        BLENDOBJ blend = {};
        TRIVERTEX vertices[2] = {};
        GRADIENT_RECT mesh = {};
        ULONG dithered = 0;
        BYTE bytes[5] = {};
        DHPDEV device = nullptr;

        Call() { palette.colours = {1, 2, 3}; }
    };

    using Slots = std::vector<ULONG>;

    struct RecordRow {
        const char* name;
        ULONG callType, fixedSize;
        Slots slots;
        const char* message; // with a %d: a format; otherwise the room follows; null: silent
        ULONG (*write)(Call& c, BYTE* at, ULONG room);
    };

    // clang-format off
const RecordRow Rows[] = {
    {"AssertMode", 0x1, 48, {}, "ExpandDrvAssertMode: Error the buffer is too small ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvAssertMode(c.device, 1, at, room); }},
    {"EnablePDEV", 0x2, 80, {40, 44, 60, 72}, "ExpandDrvEnablePDEV: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvEnablePDEV(&c.mode, c.name, 2, c.patterns, 0, nullptr, sizeof(c.info), &c.info, nullptr, c.name,
                                    nullptr, c.device, at, room);
     }},
    {"DisablePDEV", 0x4, 48, {}, "ExpandDrvDisablePDEV: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvDisablePDEV(c.device, at, room); }},
    {"CompletePDEV", 0x8, 48, {}, "ExpandDrvCompletePDEV: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvCompletePDEV(c.device, nullptr, at, room); }},
    {"EnableSurface", 0x10, 48, {}, "ExpandDrvEnableSurface: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvEnableSurface(c.device, nullptr, at, room); }},
    {"DisableSurface", 0x20, 48, {}, "ExpandDrvDisableSurface: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvDisableSurface(c.device, at, room); }},
    {"CreateDeviceBitmap", 0x40, 64, {}, "ExpandDrvCreateDeviceBitmap: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvCreateDeviceBitmap(c.device, {1, 2}, 3, nullptr, nullptr, at, room);
     }},
    {"DeleteDeviceBitmap", 0x80, 48, {}, "ExpandDrvDeleteDeviceBitmap: Error the buffer is too small ",
     [](Call&, BYTE* at, ULONG room) { return ExpandDrvDeleteDeviceBitmap(nullptr, at, room); }},
    {"BitBlt", 0x100, 112, {40, 44, 48, 52, 56, 60}, "ExpandDrvBitBlt: Error the buffer is too small, ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvBitBlt(&c.target, &c.source, &c.mask, &c.complexClip, &c.xlate, &c.rectangle, &c.point, &c.point,
                                &c.brush, &c.point, 0, at, room);
     }},
    {"StretchBlt", 0x200, 96, {40, 44, 48, 52, 56}, "ExpandDrvStretchBlt: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvStretchBlt(&c.target, &c.source, &c.mask, &c.complexClip, &c.xlate, &c.adjustment, &c.point,
                                    &c.rectangle, &c.rectangle, &c.point, 3, at, room);
     }},
    {"FillPath", 0x400, 72, {40, 44, 48, 52}, "ExpandDrvFillPath: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvFillPath(&c.target, &c.path, &c.complexClip, &c.brush, &c.point, 1, 2, at, room);
     }},
    {"LineTo", 0x800, 72, {40, 44, 48}, "ExpandDrvLineTo: Error the buffer is too small ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvLineTo(&c.target, &c.complexClip, &c.brush, 1, 2, 3, 4, &c.rectangle, 5, at, room);
     }},
    {"MovePointer", 0x1000, 72, {40}, "ExpandDrvMovePointer: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvMovePointer(&c.target, 1, 2, &c.rectangle, at, room); }},
    {"SetPointerShape", 0x2000, 96, {40, 44, 48, 52}, nullptr,
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvSetPointerShape(&c.target, &c.mask, &c.source, &c.xlate, 1, 2, 3, 4, &c.rectangle, 5, at, room);
     }},
    {"Paint", 0x4000, 64, {40, 44, 48}, "ExpandDrvPaint: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvPaint(&c.target, &c.complexClip, &c.brush, &c.point, 1, at, room);
     }},
    {"StrokePath", 0x8000, 72, {40, 44, 48, 52, 56}, "ExpandDrvStrokePath: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvStrokePath(&c.target, &c.path, &c.complexClip, nullptr, &c.brush, &c.point, &c.lineAttrs, 1, at,
                                    room);
     }},
    {"TextOut", 0x10000, 104, {40, 44, 48, 52, 60, 64, 68}, "ExpandDrvTextOut: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvTextOut(&c.target, &c.text, &c.font, &c.complexClip, c.extra, &c.rectangle, &c.brush,
                                 &c.otherBrush, &c.point, 1, at, room);
     }},
    {"RealizeBrush", 0x20000, 64, {40, 44, 48, 52, 56}, "ExpandDrvRealizeBrush: Error the buffer is too small ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvRealizeBrush(&c.brush, &c.target, &c.source, &c.mask, &c.xlate, 1, at, room);
     }},
    {"DitherColor", 0x40000, 64, {}, "ExpandDrvDitherColor: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvDitherColor(c.device, 1, 2, &c.dithered, 3, at, room); }},
    {"GetModes", 0x80000, 56, {48}, "ExpandDrvGetModes: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvGetModes(nullptr, sizeof(c.mode), &c.mode, at, room); }},
    {"CopyBits", 0x100000, 80, {40, 44, 48, 52}, "ExpandDrvCopyBits: Error, The buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvCopyBits(&c.target, &c.source, &c.complexClip, &c.xlate, &c.rectangle, &c.point, at, room);
     }},
    {"SetPalette", 0x400000, 64, {56}, "ExpandDrvSetPalette: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) { return ExpandDrvSetPalette(c.device, &c.palette, 1, 0, 3, at, room); }},
    {"Escape", 0x800000, 72, {44, 56, 64}, "ExpandDrvEscape: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvEscape(&c.target, 1, sizeof(c.bytes), c.bytes, sizeof(c.bytes), c.bytes, 2, at, room);
     }},
    {"AlphaBlend", 0x1000000, 96, {40, 44, 48, 52}, "ExpandDrvAlphaBlend: Error, The buffer is too small. %d\n",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvAlphaBlend(&c.target, &c.source, &c.complexClip, &c.xlate, &c.rectangle, &c.rectangle, &c.blend,
                                    at, room);
     }},
    {"GradientFill", 0x2000000, 96, {40, 44, 48}, "ExpandDrvGradientFill: Error, The buffer is too small. %d\n",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvGradientFill(&c.target, &c.complexClip, &c.xlate, c.vertices, 2, &c.mesh, 1, &c.rectangle,
                                      &c.point, 0, at, room);
     }},
    {"TransparentBlt", 0x4000000, 96, {40, 44, 48, 52},
     "ExpandDrvTransparentBlt: Error, The buffer is too small. %d\n",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvTransparentBlt(&c.target, &c.source, &c.complexClip, &c.xlate, &c.rectangle, &c.rectangle, 1, 2,
                                        at, room);
     }},
    {"StretchBltROP", 0x8000000, 144, {40, 44, 48, 52, 56, 136},
     "ExpandDrvStretchBltROP: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvStretchBltROP(&c.target, &c.source, &c.mask, &c.complexClip, &c.xlate, &c.adjustment, &c.point,
                                       &c.rectangle, &c.rectangle, &c.point, 3, &c.brush, 0, at, room);
     }},
    {"PlgBlt", 0x10000000, 144, {40, 44, 48, 52, 56}, "ExpandDrvPlgBlt: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvPlgBlt(&c.target, &c.source, &c.mask, &c.complexClip, &c.xlate, &c.adjustment, &c.point,
                                c.corners, &c.rectangle, &c.point, 3, at, room);
     }},
    {"StrokeAndFillPath", 0x20000000, 80, {40, 44, 48, 52, 56, 60},
     "ExpandDrvStrokeAndFillPath: Error the buffer is too small. ",
     [](Call& c, BYTE* at, ULONG room) {
         return ExpandDrvStrokeAndFillPath(&c.target, &c.path, &c.complexClip, nullptr, &c.brush, &c.lineAttrs,
                                           &c.otherBrush, &c.point, 1, 2, at, room);
     }},
};
// DrvSaveScreenBits is not among them: it refuses rooms in a way of its own.
    // clang-format on

    std::string TooSmallMessage(const RecordRow& row, ULONG room)
    {
        if (!row.message)
            return "";
        const std::string message = row.message;
        const std::size_t number = message.find("%d");
        if (number == std::string::npos)
            return NumberMessage(message, room);
        return "KORU:" + std::string(message).replace(number, 2, std::to_string(room));
    }

    class EveryRecord : public CaptureTest, public testing::WithParamInterface<RecordRow> {
    protected:
        Writer Calling()
        {
            return [this](BYTE* at, ULONG room) { return GetParam().write(call, at, room); };
        }

        Call call;
    };

    TEST_P(EveryRecord, IsNotWrittenNowhere)
    {
        EXPECT_EQ(Calling()(nullptr, 0x10000), 0u);
        EXPECT_EQ(Calling()(nullptr, 0), 0u);
        EXPECT_EQ(engine.DebugOutput(), "");
        EXPECT_EQ(Consumer.calls, std::vector<std::string>());
    }

    TEST_P(EveryRecord, IsNotWrittenIntoLessThanItsFixedPart)
    {
        for (ULONG room = 0; room < GetParam().fixedSize; ++room) {
            const Written written = Write(Calling(), room);
            ASSERT_EQ(written.size, 0u) << "room " << room;
            ASSERT_TRUE(IsOnly(written.memory, {})) << "room " << room;
            ASSERT_EQ(written.messages, TooSmallMessage(GetParam(), room));
        }
        EXPECT_EQ(Consumer.calls, std::vector<std::string>());
    }

    TEST_P(EveryRecord, IsItsFixedPartWithEmptySlotsWhereNothingElseFits)
    {
        const ULONG size = GetParam().fixedSize;
        const Written written = Write(Calling(), size);
        EXPECT_EQ(written.size, size);
        EXPECT_EQ(Bytes(written.memory.begin(), written.memory.begin() + 40), Header(size, GetParam().callType));
        for (const ULONG slot : GetParam().slots)
            EXPECT_EQ(WordAt(written.memory, slot), 0u) << "slot " << slot;
        EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + size, written.memory.end()), {}));
    }

    TEST_P(EveryRecord, StaysWithinEveryRoom)
    {
        const ULONG full = Write(Calling(), 0x10000).size;
        for (ULONG room = GetParam().fixedSize; room <= full + 8; ++room) {
            const Written written = Write(Calling(), room);
            ASSERT_LE(written.size, room);
            ASSERT_EQ(WordAt(written.memory, 0), written.size);
            ASSERT_TRUE(IsOnly(Bytes(written.memory.begin() + room, written.memory.end()), {})) << "room " << room;
            for (const ULONG slot : GetParam().slots)
                ASSERT_TRUE(WordAt(written.memory, slot) == 0 || WordAt(written.memory, slot) < written.size)
                    << "room " << room << ", slot " << slot;
        }
    }

    TEST_P(EveryRecord, HoldsAllItsObjectsInTheCaptureBuffersRoom)
    {
        const Written written = Write(Calling(), 0x10000);
        ULONG last = 0;
        for (const ULONG slot : GetParam().slots) {
            EXPECT_GE(WordAt(written.memory, slot), GetParam().fixedSize) << "slot " << slot;
            last = std::max(last, WordAt(written.memory, slot));
        }
        EXPECT_LE(last, written.size);
        EXPECT_EQ(written.messages, "");
    }

    TEST_P(EveryRecord, AsksTheConsumerForBothIdentifiersOnce)
    {
        Write(Calling(), 0x10000);
        EXPECT_EQ(Consumer.calls, std::vector<std::string>({"GSD(0)", "GSD(1)"}));
    }

    TEST_P(EveryRecord, AllocatesNothing)
    {
        const ULONG before = engine.RequestCount(engine::Request::Memory);
        Write(Calling(), 0x10000);
        EXPECT_EQ(engine.RequestCount(engine::Request::Memory), before);
    }

    INSTANTIATE_TEST_SUITE_P(, EveryRecord, testing::ValuesIn(Rows), [](const testing::TestParamInfo<RecordRow>& info) {
        return std::string(info.param.name);
    });

} // namespace
} // namespace capture_tests
