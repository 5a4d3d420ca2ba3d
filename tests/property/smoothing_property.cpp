// What smoothing may read and write, seen through the commands alone: one zoomer whose image the
// RealScreen shows, and the VirtualScreen changed behind the driver's back.

#include "engine/loader/linked_driver.h"
#include "tests/conformance/session.h"
#include "tests/property/pictures.h"
#include "tests/property/test_formats.h"

namespace property {
namespace {

    constexpr std::uint64_t ScenesInAll = 1400;
    constexpr LONG Width = 60, Height = 48;
    constexpr ULONG Deferred = 2;

    class Smoothing : public testing::TestWithParam<Format> { };

    conformance::Setup SetupFor(const Format& format)
    {
        engine::ResetLinkedDriver();
        conformance::Setup setup;
        setup.mode = {static_cast<ULONG>(Width), static_cast<ULONG>(Height), format.depth};
        setup.installConsumer = false;
        return setup;
    }

    // A deferred zoomer with a random place, size and factors.
    class SmoothedView {
    public:
        SmoothedView(const Format& screen, std::uint64_t seed, ULONG improveFactor)
            : format(screen)
            , random(seed)
            , xFactor(static_cast<ULONG>(random.Between(2, 5)))
            , yFactor(static_cast<ULONG>(random.Between(2, 5)))
            , session_(SetupFor(format))
            , id_(session_.Zoom(0x11127201))
        {
            const LONG left = random.Between(-3, Width - 6), top = random.Between(-3, Height - 6);
            original = {left, top, left + random.Between(1, 11), top + random.Between(1, 9)};
            const LONG viewLeft = random.Between(-5, 5), viewTop = random.Between(-5, 5);
            destination = {viewLeft, viewTop, viewLeft + original.Width() * xFactor,
                           viewTop + original.Height() * yFactor};
            session_.Zoom(0x11127213, id_, original.ToRectl());
            session_.Zoom(0x11127215, id_, {viewLeft, viewTop, Width, Height});
            Set(0x11127231, xFactor);
            Set(0x11127233, yFactor);
            SetImproveFactor(improveFactor);
            Set(0x11127247, random.Word() & 1); // which colours grow
            Set(0x11127211, Deferred);
            Set(0x11127205, 1);
            Redraw(RandomPicture(random, format, Width, Height));
        }

        void SetImproveFactor(ULONG value) { Set(0x11127222, value); }
        // Another VirtualScreen, unseen by the driver; what is in `kept` stays.
        void RedrawOutside(const Rect& kept)
        {
            Picture other = RandomPicture(random, format, Width, Height);
            CopySame(other, Load(*session_.Virtual(), format.bits), kept);
            Redraw(other);
        }
        // What the driver is called for.
        void Fill(const Rect& rect)
        {
            if (rect.IsEmpty())
                return;
            engine::Brush brush = engine::Brush::Solid(AnyPixel(random, format) & Picture(1, 1, format.bits).Ones());
            RECTL target = rect.ToRectl();
            POINTL origin = {0, 0};
            session_.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(session_.Screen(), nullptr, nullptr, nullptr, nullptr,
                                                          &target, nullptr, nullptr, &brush, &origin, 0xF0F0);
        }
        void Update() { session_.Zoom(0x11127204); }
        Picture Refreshed()
        {
            session_.Zoom(0x11127229, id_);
            return Shown();
        }
        // The zoomer's whole image as it is: improved by nothing, it is only shown.
        Picture Image()
        {
            SetImproveFactor(0);
            session_.Zoom(0x11127230, id_);
            return Shown();
        }

        // Of a rectangle of source pixels.
        Rect PlaceOf(const Rect& source) const
        {
            const Rect part = Intersect(source, original);
            return {destination.left + (part.left - original.left) * xFactor,
                    destination.top + (part.top - original.top) * yFactor,
                    destination.left + (part.right - original.left) * xFactor,
                    destination.top + (part.bottom - original.top) * yFactor};
        }
        // A part of the original rectangle that is on the screen; empty when there is none.
        Rect AnyPart()
        {
            const RECTL whole = Intersect(original, {0, 0, Width, Height}).ToRectl();
            if (Rect(whole).IsEmpty())
                return {};
            const LONG left = random.Between(whole.left, whole.right - 1);
            const LONG top = random.Between(whole.top, whole.bottom - 1);
            return {left, top, random.Between(left + 1, whole.right), random.Between(top + 1, whole.bottom)};
        }

        const Format format;
        Random random;
        const ULONG xFactor, yFactor;
        Rect original, destination;

    private:
        void Set(ULONG code, ULONG value) { session_.Zoom(code, id_, {static_cast<LONG>(value), 0, 0, 0}); }
        void Redraw(const Picture& picture) { Store(picture, *session_.Virtual()); }
        // The RealScreen without what is shown beside the zoomer.
        Picture Shown()
        {
            Picture shown(Width, Height, format.bits);
            CopySame(shown, Load(*session_.Real(), format.bits), {destination.left, destination.top, Width, Height});
            return shown;
        }

        conformance::Session session_;
        const ULONG id_;
    };

    bool SameInside(const Picture& first, const Picture& second, const Rect& rect)
    {
        const Rect part = Intersect(rect, first.Bounds());
        for (std::int64_t y = part.top; y < part.bottom; ++y)
            for (std::int64_t x = part.left; x < part.right; ++x)
                if (first.At(x, y) != second.At(x, y))
                    return false;
        return true;
    }

    bool SameOutside(const Picture& first, const Picture& second, const Rect& rect)
    {
        Picture repaired = second;
        CopySame(repaired, first, rect);
        return first == repaired;
    }

    template<class Check> void ForEachView(const Format& format, Check check)
    {
        ForEachSeed(ScenesInAll, [&](std::uint64_t seed) {
            const ULONG improveFactor = 1 + static_cast<ULONG>(seed % 3);
            SmoothedView view(format, seed, improveFactor);
            SCOPED_TRACE("KORU_SEED=" + std::to_string(seed));
            check(view, improveFactor);
        });
    }

    TEST_P(Smoothing, WritesNothingOutsideThePlaceOfAPartialUpdate)
    {
        ForEachView(GetParam(), [](SmoothedView& view, ULONG improveFactor) {
            const Rect part = view.AnyPart();
            const Picture before = view.Refreshed();
            view.RedrawOutside({}); // all of it would look different
            view.Fill(part);
            view.Update();
            const Rect written = view.PlaceOf(part.IsEmpty() ? part : part.Inflated(improveFactor == 3 ? 2 : 1));
            EXPECT_TRUE(SameOutside(before, view.Image(), written));
        });
    }

    TEST_P(Smoothing, WritesNothingOutsideTheMagnifiedPicture)
    {
        ForEachView(GetParam(), [](SmoothedView& view, ULONG) {
            const Picture nothing(Width, Height, GetParam().bits);
            EXPECT_TRUE(SameOutside(nothing, view.Refreshed(), view.destination));
        });
    }

    TEST_P(Smoothing, ReadsNothingOutsideTheOriginalRectangle)
    {
        ForEachView(GetParam(), [](SmoothedView& view, ULONG) {
            const Picture first = view.Refreshed();
            view.RedrawOutside(view.original);
            EXPECT_TRUE(first == view.Refreshed());
        });
    }

    // A block depends on the pixels next to its own, with factor 3 on those at most two away.
    TEST_P(Smoothing, ReadsNothingBeyondItsMargin)
    {
        ForEachView(GetParam(), [](SmoothedView& view, ULONG improveFactor) {
            const Rect part = view.AnyPart();
            const Picture first = view.Refreshed();
            view.RedrawOutside(part.Inflated(improveFactor == 3 ? 2 : 1));
            EXPECT_TRUE(SameInside(first, view.Refreshed(), view.PlaceOf(part)));
        });
    }

    TEST_P(Smoothing, GivesInPartsWhatItGivesAtOnce)
    {
        ForEachView(GetParam(), [](SmoothedView& view, ULONG improveFactor) {
            view.Refreshed();
            view.Fill(view.AnyPart());
            view.Update();
            view.Fill(view.AnyPart());
            view.Update();
            const Picture inParts = view.Image();
            view.SetImproveFactor(improveFactor);
            EXPECT_TRUE(inParts == view.Refreshed());
        });
    }

    // Guards the tests: there is something to smooth in most pictures.
    TEST_P(Smoothing, ChangesThePlainStretch)
    {
        std::size_t smoothed = 0;
        for (std::uint64_t seed = 0; seed < 60; ++seed) {
            SmoothedView view(GetParam(), seed, 1 + static_cast<ULONG>(seed % 3));
            const Picture fine = view.Refreshed();
            view.SetImproveFactor(0);
            smoothed += fine != view.Refreshed();
        }
        if (GetParam().bits == 1)
            EXPECT_EQ(smoothed, 0u) << "one bit per pixel is only stretched";
        else
            EXPECT_GE(smoothed, 8u);
    }

    INSTANTIATE_TEST_SUITE_P(Magnifier, Smoothing, testing::ValuesIn(Formats), NameOfFormat);

} // namespace
} // namespace property
