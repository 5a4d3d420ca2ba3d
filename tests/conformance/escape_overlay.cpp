// The overlay and the colour pairs: the commands of KORU_ZOOM_ESCAPE that belong to no zoomer.

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    constexpr ULONG SetOverlay = 0x11127236, DestroyOverlay = 0x11127237, ShowOriginal = 0x11127235;
    constexpr ULONG Mask = 0xFFFFFFFF, DropMask = 0xFEFFFFFF, Copy = 0x00CC0000;

    class EscapeOverlay : public EscapeTest {
    protected:
        EscapeOverlay()
        {
            bitmap = session.Device().CreateCompatibleBitmap({64, 48});
            pso = engine::FindSurface(bitmap);
            locksBefore = session.Engine().Outstanding().locks;
            for (LONG x = 0; x < 4; ++x)
                Pixels()->SetPixel(x, 0, 0);
        }
        ~EscapeOverlay() override
        {
            Run(DestroyOverlay);
            session.Device().DeleteBitmap(bitmap);
        }

        Reply Run(ULONG code, const RECTL& v = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0)
        {
            return RunOn(pso, code, v, a, b, c);
        }
        Reply RunOn(SURFOBJ* surface, ULONG code, const RECTL& v = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0)
        {
            const Reply reply = Send(surface, ZoomEscape,
                                     {code, 0, a, b, c, static_cast<ULONG>(v.left), static_cast<ULONG>(v.top),
                                      static_cast<ULONG>(v.right), static_cast<ULONG>(v.bottom)});
            EXPECT_EQ(reply.result, 1u);
            return reply;
        }
        // Where the client's drawing lands.
        engine::Surface* Pixels()
        {
            return pso->dhsurf ? engine::FindSurface(reinterpret_cast<HSURF>(pso->dhsurf)) : pso;
        }
        void ExpectWord(ULONG word, const Reply& reply)
        {
            EXPECT_EQ(reply.out, (Words{word, Untouched, Untouched, Untouched}));
            EXPECT_EQ(reply.messages, "");
        }
        std::string Glass()
        {
            RunOn(session.Screen(), ShowOriginal, {0, 0, 4, 1});
            return PictureOf(*session.Real(), {0, 0, 4, 1}, {{0x00AA00, 'a'}, {0x0000BB, 'b'}});
        }

        HSURF bitmap;
        engine::Surface* pso;
    };

    TEST_F(EscapeOverlay, IsMergedIntoWhatIsShownUntilItIsDestroyed)
    {
        session.Virtual()->SetPixel(0, 0, 0x0000BB);
        Pixels()->SetPixel(1, 0, 0x00AA00);
        ExpectWord(1, Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy));
        EXPECT_EQ(Glass(), ".a..\n");
        ExpectWord(1, Run(DestroyOverlay));
        EXPECT_EQ(Glass(), "b...\n");
    }

    TEST_F(EscapeOverlay, KeepsThePictureBelowItsMask)
    {
        session.Virtual()->SetPixel(0, 0, 0x0000BB);
        session.Virtual()->SetPixel(1, 0, 0x0000BB);
        Pixels()->SetPixel(0, 0, 0x00AA00);
        Pixels()->SetPixel(1, 0, 0x00AA00);
        ExpectWord(1, Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy));
        Pixels()->SetPixel(0, 0, 0xFFFFFF);
        Pixels()->SetPixel(1, 0, 0);
        ExpectWord(1, Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Mask));
        EXPECT_EQ(Glass(), "ba..\n");
        ExpectWord(1, Run(SetOverlay, {}, 0, 0, DropMask));
        EXPECT_EQ(Glass(), "aa..\n");
    }

    TEST_F(EscapeOverlay, TakesTheRasterOperationFromTheSelector)
    {
        session.Virtual()->SetPixel(0, 0, 0x0000BB);
        session.Virtual()->SetPixel(1, 0, 0x0000BB);
        Pixels()->SetPixel(0, 0, 0xFFFFFF);
        ExpectWord(1, Run(SetOverlay, {0, 0, 2, 1}, 0, 0, 0xFF88FFFF)); // 0x88: AND
        EXPECT_EQ(Glass(), "b...\n");
    }

    TEST_F(EscapeOverlay, IsReadFromTheDevicesOwnSurfaceToo)
    {
        session.Virtual()->SetPixel(1, 0, 0x00AA00);
        session.records.clear();
        ExpectWord(1, RunOn(session.Screen(), SetOverlay, {0, 0, 2, 1}, 0, 0, Copy));
        EXPECT_TRUE(session.records.empty());
        session.Virtual()->SetPixel(1, 0, 0);
        EXPECT_EQ(Glass(), ".a..\n");
    }

    TEST_F(EscapeOverlay, ShowsThePictureAtItsOriginWithinTheBitmapWhereItBelongs)
    {
        Pixels()->SetPixel(5, 3, 0x00AA00);
        Pixels()->SetPixel(6, 3, 0x0000BB);
        ExpectWord(1, Run(SetOverlay, {0, 0, 1, 1}, 5, 3, Copy));
        EXPECT_EQ(Glass(), "a...\n");
        ExpectWord(1, Run(SetOverlay, {2, 0, 4, 1}, 5, 3, Copy));
        EXPECT_EQ(Glass(), "..ab\n");
    }

    TEST_F(EscapeOverlay, BelongsToTheDeviceOfTheBitmapAsTheClientGaveIt)
    {
        session.expectViolations = true;
        const HDEV device = pso->hdev;
        pso->hdev = reinterpret_cast<HDEV>(0x77); // the bitmap behind it keeps the real one
        const Reply reply = Run(SetOverlay, {0, 0, 1, 1}, 0, 0, Copy);
        pso->hdev = device;
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, "KORU:Associate Failed!!!!\n");
        EXPECT_EQ(session.Engine().Violations(), std::vector<std::string>{"EngAssociateSurface: not a device"});
    }

    TEST_F(EscapeOverlay, IsGivenToTheDeviceAtEveryRequest)
    {
        ExpectWord(1, Run(SetOverlay, {0, 0, 1, 1}, 0, 0, Copy));
        session.expectViolations = true;
        const HDEV device = pso->hdev;
        pso->hdev = reinterpret_cast<HDEV>(0x77);
        const Reply reply = Run(SetOverlay, {0, 0, 1, 1}, 0, 0, Copy);
        pso->hdev = device;
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, "KORU:Associate Failed!!!!\n");
        EXPECT_EQ(session.Engine().Violations(), std::vector<std::string>{"EngAssociateSurface: not a device"});
    }

    // A device-managed surface without a bitmap behind it: only the hooks can read it.
    TEST_F(EscapeOverlay, IsCopiedAsTheDriversOwnDrawing)
    {
        const auto managed = reinterpret_cast<HSURF>(EngCreateDeviceBitmap(nullptr, {64, 48}, BMF_32BPP));
        ASSERT_TRUE(EngAssociateSurface(managed, session.Device().Handle(), HOOK_COPYBITS));
        for (const ULONG selector : {Mask, Copy}) {
            session.records.clear();
            const Reply reply = RunOn(engine::FindSurface(managed), SetOverlay, {0, 0, 2, 1}, 0, 0, selector);
            EXPECT_EQ(reply.out[0], selector == Mask ? 0u : 1u)
                << "the copy fails, and a mask answers as its copy does";
            EXPECT_EQ(reply.messages, "") << selector;
            EXPECT_TRUE(session.records.empty()) << selector;
        }
        EngDeleteSurface(managed);
    }

    TEST_F(EscapeOverlay, NeedsASurfaceOfADeviceAndSaysNothingWithout)
    {
        for (const ULONG selector : {Mask, DropMask, Copy}) {
            ExpectWord(0, RunOn(nullptr, SetOverlay, {0, 0, 2, 1}, 0, 0, selector));
            ExpectWord(0, RunOn(PlainBitmap(), SetOverlay, {0, 0, 2, 1}, 0, 0, selector));
        }
    }

    TEST_F(EscapeOverlay, IsNotSetWhenItsBitmapCannotBeLocked)
    {
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        ExpectWord(0, RunOn(session.Screen(), SetOverlay, {0, 0, 2, 1}, 0, 0, Copy));
        ExpectWord(0, RunOn(session.Screen(), SetOverlay, {0, 0, 2, 1}, 0, 0, Mask));
        ExpectWord(1, RunOn(session.Screen(), SetOverlay, {}, 0, 0, DropMask));
        session.Engine().StopFailing();
    }

    TEST_F(EscapeOverlay, IsNotSetWithoutMemory)
    {
        session.Engine().Fail(engine::Request::CreateSurface);
        Reply reply = Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU:Failed to create hBmp !!!! \n");
        session.Engine().Fail(engine::Request::CreateSurface);
        reply = Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Mask);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU:Failed to create Mask !!!! \n");
    }

    TEST_F(EscapeOverlay, IsSetAlsoWhenItCannotBeAssociated)
    {
        session.Engine().Fail(engine::Request::Associate);
        Reply reply = Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy);
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, "KORU:Associate Failed!!!!\n");
        session.Engine().Fail(engine::Request::Associate);
        reply = Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy);
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, "KORU:Associate Failed!!!!\n") << "an image that is there already";
    }

    TEST_F(EscapeOverlay, IsSetAlsoWhenItsNewImageCannotBeLocked)
    {
        session.Virtual()->SetPixel(0, 0, 0x0000BB);
        Pixels()->SetPixel(0, 0, 0x00AA00);
        const ULONG locks = pso->dhsurf ? 2 : 1; // the client's bitmap, the image
        session.Engine().Fail(engine::Request::Lock, locks);
        ExpectWord(1, Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy));
        EXPECT_EQ(Glass(), "....\n") << "nothing was copied into it";
    }

    TEST_F(EscapeOverlay, IsDestroyedWhateverTheSurface)
    {
        session.Virtual()->SetPixel(1, 0, 0x0000BB);
        Pixels()->SetPixel(1, 0, 0x00AA00);
        for (SURFOBJ* const surface : {static_cast<SURFOBJ*>(nullptr), PlainBitmap()}) {
            Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy);
            EXPECT_EQ(Glass(), ".a..\n");
            ExpectWord(0, RunOn(surface, DestroyOverlay));
            EXPECT_EQ(Glass(), ".b..\n");
        }
        ExpectWord(1, RunOn(session.Screen(), DestroyOverlay));
    }

    TEST_F(EscapeOverlay, ShowsItselfAtTheNextUpdateOfAZoomedScreen)
    {
        RunOn(session.Screen(), 0x11127201);
        RunOn(session.Screen(), 0x11127204);
        Pixels()->SetPixel(1, 0, 0x00AA00);
        Run(SetOverlay, {0, 0, 2, 1}, 0, 0, Copy);
        EXPECT_EQ(session.Real()->Pixel(1, 0), 0u);
        RunOn(session.Screen(), 0x11127204);
        EXPECT_EQ(session.Real()->Pixel(1, 0), 0x00AA00u);
        Run(DestroyOverlay);
        RunOn(session.Screen(), 0x11127204);
        EXPECT_EQ(session.Real()->Pixel(1, 0), 0u);
    }

    class EscapeColourPairs : public EscapeTest {
    protected:
        static constexpr ULONG CountPairs = 0x11127242, Add = 0x11127243, Read = 0x11127244, Clear = 0x11127245,
                               Remove = 0x11127246;

        // Without a surface: the pairs belong to no screen.
        Words Run(ULONG code, ULONG v0 = 0, ULONG a = 0)
        {
            const Reply reply = Send(nullptr, ZoomEscape, {code, 0, a, 0, 0, v0, 0, 0, 0});
            EXPECT_EQ(reply.result, 1u);
            EXPECT_EQ(reply.messages, "");
            return reply.out;
        }
        static Words Word(ULONG word) { return {word, Untouched, Untouched, Untouched}; }
    };

    TEST_F(EscapeColourPairs, StartAsThreeDefaults)
    {
        EXPECT_EQ(Run(CountPairs), Word(3));
        EXPECT_EQ(Run(Read, 0), (Words{0xFFFFFF, 0x808000, 0, 0}));
        EXPECT_EQ(Run(Read, 1), (Words{0xC0C0C0, 0x808080, 0, 0}));
        EXPECT_EQ(Run(Read, 2), (Words{0xFFFFFF, 0x800000, 0, 0}));
    }

    TEST_F(EscapeColourPairs, AreReadFromTheNewest)
    {
        EXPECT_EQ(Run(Add, 0xAA112233, 0x445566), Word(1));
        EXPECT_EQ(Run(CountPairs), Word(4));
        EXPECT_EQ(Run(Read, 0), (Words{0x112233, 0x445566, 0, 0}));
        EXPECT_EQ(Run(Read, 0xFFFFFFFF), (Words{0x112233, 0x445566, 0, 0}));
        EXPECT_EQ(Run(Read, 4), (Words{0, 0, 0, 0}));
        EXPECT_EQ(Run(Read, 0x7FFFFFFF), (Words{0, 0, 0, 0}));
    }

    TEST_F(EscapeColourPairs, AreKeptOncePerOrder)
    {
        Run(Clear);
        EXPECT_EQ(Run(Add, 1, 2), Word(1));
        EXPECT_EQ(Run(Add, 1, 2), Word(1));
        EXPECT_EQ(Run(CountPairs), Word(1));
        EXPECT_EQ(Run(Add, 2, 1), Word(1));
        EXPECT_EQ(Run(CountPairs), Word(2));
        EXPECT_EQ(Run(Add, 1, 2), Word(1)); // behind the reversed one
        EXPECT_EQ(Run(CountPairs), Word(2));
    }

    TEST_F(EscapeColourPairs, AreRemovedInEitherOrder)
    {
        Run(Clear);
        Run(Add, 1, 2);
        EXPECT_EQ(Run(Remove, 1, 3), Word(0));
        EXPECT_EQ(Run(Remove, 2, 1), Word(1));
        EXPECT_EQ(Run(Remove, 2, 1), Word(0));
        EXPECT_EQ(Run(CountPairs), Word(0));
    }

    TEST_F(EscapeColourPairs, AreAllCleared)
    {
        EXPECT_EQ(Run(Clear), Word(1));
        EXPECT_EQ(Run(CountPairs), Word(0));
        EXPECT_EQ(Run(Read, 0xFFFFFFFF), (Words{0, 0, 0, 0}));
        EXPECT_EQ(Run(Clear), Word(1));
    }

    TEST_F(EscapeColourPairs, AreNotAddedWithoutMemory)
    {
        session.Engine().Fail(engine::Request::Memory);
        EXPECT_EQ(Run(Add, 1, 2), Word(0));
        EXPECT_EQ(Run(CountPairs), Word(3));
    }

    TEST_F(EscapeColourPairs, AreReadFromTheBufferTheyAnswerInto)
    {
        Run(Clear);
        Words both = {Add, 0, 0x222222, 0, 0, 0x111111, 0, 0, 0};
        EXPECT_EQ(Call(nullptr, ZoomEscape, 36, both.data(), 36, both.data()), 1u);
        EXPECT_EQ(both[0], 1u);
        both = {Read, 0, 0, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(Call(nullptr, ZoomEscape, 36, both.data(), 36, both.data()), 1u);
        EXPECT_EQ(both, (Words{0x111111, 0x222222, 0, 0, 0, 0, 0, 0, 0}));
    }

} // namespace
} // namespace conformance
