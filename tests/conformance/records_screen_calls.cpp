// Random calls about a screen that draw no picture of their own: pointers, palettes, escapes, device bitmaps,
// saved rectangles.

#include <cstring>

#include "engine/devices/frame_buffer.h"
#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    using wire::CallType;

    void MovePointer(Round& round)
    {
        SURFOBJ* const target = round.make.Target();
        const LONG x = round.random.Between(-30, 80), y = round.random.Between(-60, 60);
        RECTL* const rectangle = round.make.Or(3, round.make.Rectangle());
        round.Start();
        round.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(target, x, y, rectangle);
        const auto call = round.Take<wire::MovePointerRecord>(0);
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, target);
        EXPECT_EQ(call->x, x);
        EXPECT_EQ(call->y, y < 0 && target ? y + target->sizlBitmap.cy : y);
        EXPECT_EQ(call->rcl, Wire(rectangle));
    }

    void SetPointerShape(Round& round)
    {
        SURFOBJ* const target = round.make.Target();
        engine::Surface* const mask = round.make.Or(4, round.make.Mask());
        engine::Surface* const color = round.make.Or(2, round.make.Source());
        engine::Translation* const xlate = round.make.Translation(color, target);
        LONG places[4];
        for (LONG& place : places)
            place = round.random.Between(-20, 70);
        RECTL* const rectangle = round.make.Or(3, round.make.Rectangle());
        const FLONG flags = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(target, mask, color, xlate, places[0], places[1],
                                                                     places[2], places[3], rectangle, flags);
        const auto call = round.Take<wire::SetPointerShapeRecord>(0);
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, target);
        Expect(call->record, call->mask, mask);
        Expect(call->record, call->color, color);
        Expect(call->record, call->xlate, xlate);
        EXPECT_EQ(call->xHot, places[0]);
        EXPECT_EQ(call->yHot, places[1]);
        EXPECT_EQ(call->x, places[2]);
        EXPECT_EQ(call->y, places[3]);
        EXPECT_EQ(call->rcl, Wire(rectangle));
        EXPECT_EQ(call->flags, flags);
        EXPECT_EQ(call->reserved.value, 0u);
    }

    void SetPalette(Round& round)
    {
        constexpr std::size_t colours = 600;
        engine::PaletteObject* const palette = round.make.Or(6, round.make.Palette(colours));
        const ULONG start = static_cast<ULONG>(round.random.Between(0, 200));
        const ULONG count = round.random.OneIn(6) ? 0 : static_cast<ULONG>(round.random.Between(1, 400));
        const FLONG flags = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(round.session.Device().Dhpdev(), palette, flags, start,
                                                           count);
        const auto call = round.Take<wire::SetPaletteRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->flags, flags);
        EXPECT_EQ(call->start, start);
        EXPECT_EQ(call->count, count);
        const auto entries = call->record.At(call->entries);
        ASSERT_EQ(entries.has_value(), palette && count != 0);
        ASSERT_TRUE(!entries || entries->size() == count);
        for (std::uint32_t i = 0; entries && i < count; ++i)
            EXPECT_EQ((*entries)[i], palette->colours[start + i]);
    }

    // One that is forwarded to the real driver.
    ULONG EscapeCode(Random& random)
    {
        return random.OneIn(3) ? QUERYESCSUPPORT : 0x10000 + random.Word() % 0x1000;
    }

    // A size that fits the record, now and then one that does not.
    ULONG DataSize(Random& random)
    {
        return static_cast<ULONG>(random.OneIn(12) ? random.Between(50000, 70000) : random.Between(4, 300));
    }

    // What of the data is in the record, which has `room` left.
    template<class Slot>
    void ExpectData(const wire::Record& record, Slot slot, const BYTE* given, ULONG size, ULONG& room)
    {
        const bool fits = given && size != 0 && size <= room;
        EXPECT_EQ(slot.offset != 0, fits);
        const auto data = record.At(slot);
        ASSERT_EQ(data.has_value(), fits);
        if (!fits)
            return;
        room -= size;
        ASSERT_EQ(data->size(), size);
        EXPECT_EQ(std::memcmp(data->bytes().data(), given, size), 0);
    }

    void Escape(Round& round)
    {
        SURFOBJ* const screen = round.session.Screen();
        const ULONG code = EscapeCode(round.random), result = round.random.Word();
        const ULONG cjIn = DataSize(round.random), cjOut = round.random.OneIn(5) ? 0 : DataSize(round.random);
        std::vector<BYTE>&in = round.make.Bytes(cjIn), &out = round.make.Bytes(cjOut + 1);
        in[0] = 0; // a query for an escape that the driver does not know
        BYTE *const pvIn = round.make.Or(6, in.data()), *const pvOut = round.make.Or(6, out.data());
        engine::AnswerEscapesWith(result);
        round.Start();
        round.Hook<PFN_DrvEscape>(INDEX_DrvEscape)(screen, code, cjIn, pvIn, cjOut, pvOut);
        const auto call = round.Take<wire::EscapeRecord>(1);
        ASSERT_TRUE(call);
        ULONG room = 0x10000 - 72 - 64; // the fixed part, the surface
        EXPECT_EQ(call->returned, result);
        Expect(call->record, call->surface, screen);
        EXPECT_EQ(call->code, code);
        EXPECT_EQ(call->inputSize, cjIn);
        ExpectData(call->record, call->input, pvIn, cjIn, room);
        EXPECT_EQ(call->outputSize, cjOut);
        ExpectData(call->record, call->output, pvOut, cjOut, room);
    }

    HBITMAP CreateDeviceBitmap(Round& round, SIZEL size, ULONG format)
    {
        return round.Hook<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap)(round.session.Device().Dhpdev(), size,
                                                                                  format);
    }

    engine::Surface* SurfaceOf(HBITMAP bitmap)
    {
        return engine::FindSurface(reinterpret_cast<HSURF>(bitmap));
    }

    void CreateDeviceBitmap(Round& round)
    {
        const SIZEL size = {round.random.Between(1, 200), round.random.Between(1, 100)};
        const ULONG format = round.random.Of({round.session.Device().Layout().iBitmapFormat, BMF_1BPP, BMF_8BPP});
        round.Start();
        const HBITMAP bitmap = CreateDeviceBitmap(round, size, format);
        const auto call = round.Take<wire::CreateDeviceBitmapRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(bitmap != nullptr, format == round.session.Device().Layout().iBitmapFormat);
        EXPECT_EQ(call->hbitmap, Number(bitmap));
        EXPECT_EQ(call->hsurfBacking, bitmap ? Number(SurfaceOf(bitmap)->dhsurf) : 0);
        EXPECT_EQ(call->dhpdev, round.session.DhpdevNumber());
        EXPECT_EQ(call->size, Wire(size));
        EXPECT_EQ(call->format, format);
        if (bitmap)
            EngDeleteSurface(reinterpret_cast<HSURF>(bitmap));
    }

    // The engine makes the call when the bitmap goes.
    void DeleteDeviceBitmap(Round& round)
    {
        const HBITMAP bitmap = CreateDeviceBitmap(round, {20, 10}, round.session.Device().Layout().iBitmapFormat);
        const DHSURF dhsurf = SurfaceOf(bitmap)->dhsurf;
        round.Start();
        EngDeleteSurface(reinterpret_cast<HSURF>(bitmap));
        const auto call = round.Take<wire::DeleteDeviceBitmapRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhsurf, Number(dhsurf));
    }

    // An identifier that is good for the mode: those of saved rectangles are used up but for saving.
    ULONG TakeSavedBits(Round& round)
    {
        if (round.savedBits.empty() || round.random.OneIn(5))
            return 0;
        const ULONG ident = round.savedBits.back();
        round.savedBits.pop_back();
        return ident;
    }

    void SaveScreenBits(Round& round)
    {
        SURFOBJ* const target = round.random.OneIn(6) ? round.make.Target() : round.session.Screen();
        const bool managed = target && target->dhpdev;
        const ULONG mode = round.random.Of({SS_SAVE, SS_SAVE, SS_RESTORE, SS_FREE, 3u, 0xFFFFFFFF});
        const bool takes = managed && (mode == SS_RESTORE || mode == SS_FREE);
        const ULONG ident = takes ? TakeSavedBits(round) : round.random.Word();
        RECTL* const rectangle = round.make.Or(5, round.make.Rectangle());
        round.Start();
        const ULONG result = round.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits)(target, mode, ident, rectangle);
        if (mode == SS_SAVE && result != 0)
            round.savedBits.push_back(result);
        const auto call = round.Take<wire::SaveScreenBitsRecord>(1);
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, target);
        EXPECT_EQ(call->mode, mode);
        EXPECT_EQ(call->ident, ident);
        EXPECT_EQ(call->rcl, Wire(rectangle));
        EXPECT_EQ(call->returned, result);
    }

} // namespace

std::vector<RecordedCall> ScreenCalls()
{
    return {{CallType::MovePointer, MovePointer},
            {CallType::SetPointerShape, SetPointerShape},
            {CallType::SetPalette, SetPalette},
            {CallType::Escape, Escape},
            {CallType::CreateDeviceBitmap, CreateDeviceBitmap},
            {CallType::DeleteDeviceBitmap, DeleteDeviceBitmap},
            {CallType::SaveScreenBits, SaveScreenBits}};
}

} // namespace conformance::records
