// Device bitmaps: made, drawn on, found again, deleted.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    HBITMAP Create(Session& session, SIZEL size, ULONG format = BMF_32BPP)
    {
        return session.Hook<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap)(session.Device().Dhpdev(), size,
                                                                                    format);
    }
    engine::Surface* Surface(HBITMAP bitmap)
    {
        return engine::FindSurface(reinterpret_cast<HSURF>(bitmap));
    }
    engine::Surface* Backing(HBITMAP bitmap)
    {
        return engine::FindSurface(reinterpret_cast<HSURF>(Surface(bitmap)->dhsurf));
    }
    void Delete(HBITMAP bitmap) // as the engine does when a program gives up its bitmap
    {
        EngDeleteSurface(reinterpret_cast<HSURF>(bitmap));
    }
    void CallDelete(Session& session, const engine::Surface* backing)
    {
        const auto dhsurf = reinterpret_cast<DHSURF>(backing ? backing->hsurf : nullptr);
        session.Hook<PFN_DrvDeleteDeviceBitmap>(INDEX_DrvDeleteDeviceBitmap)(dhsurf);
    }

    TEST(CreateDeviceBitmap, IsBackedByABitmapWithTheScreensStride)
    {
        auto setup = InMode({64, 48, 32});
        setup.frameBuffer.lDelta = 4096;
        Session session(setup);
        const HBITMAP bitmap = Create(session, {10, 10});
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(Surface(bitmap)->iType, STYPE_DEVBITMAP);
        EXPECT_EQ(Surface(bitmap)->sizlBitmap.cx, 10);
        EXPECT_EQ(Surface(bitmap)->hdev, session.Device().Handle());
        EXPECT_EQ(Surface(bitmap)->hooks, 0x3F53Bu);
        const engine::Surface* const backing = Backing(bitmap);
        ASSERT_NE(backing, nullptr);
        EXPECT_EQ(std::abs(backing->lDelta), 4096);
        EXPECT_EQ(backing->sizlBitmap.cx, 10);
        EXPECT_EQ(backing->sizlBitmap.cy, 10);
        EXPECT_EQ(backing->iBitmapFormat, BMF_32BPP);
        EXPECT_EQ(backing->fjBitmap & BMF_TOPDOWN, 0u);
        EXPECT_EQ(backing->fjBitmap & BMF_NOZEROINIT, BMF_NOZEROINIT);
        EXPECT_EQ(backing->hooks, 0x4000u);
        EXPECT_EQ(backing->hdev, session.Device().Handle());
        Delete(bitmap);
    }

    TEST(CreateDeviceBitmap, WiderThanTheScreenHasRowsOfItsOwn)
    {
        Session session(InMode({64, 48, 24}));
        const HBITMAP bitmap = Create(session, {101, 3}, BMF_24BPP);
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(std::abs(Backing(bitmap)->lDelta), 304) << "303 bytes, rounded up to 4";
        Delete(bitmap);
    }

    TEST(CreateDeviceBitmap, OnABottomUpScreenHasRowsOfItsOwn)
    {
        auto setup = InMode({64, 48, 8});
        setup.frameBuffer.lDelta = -64;
        Session session(setup);
        const HBITMAP bitmap = Create(session, {10, 3}, BMF_8BPP);
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(std::abs(Backing(bitmap)->lDelta), 12);
        Delete(bitmap);
    }

    TEST(CreateDeviceBitmap, IsRecordedWithFlagOneAndItsBacking)
    {
        Session session;
        const HBITMAP bitmap = Create(session, {10, 20});
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x40u);
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(record.length, 64u);
        EXPECT_EQ(record.Word(40), reinterpret_cast<ULONG>(bitmap));
        EXPECT_EQ(record.Word(44), reinterpret_cast<ULONG>(Backing(bitmap)->hsurf));
        EXPECT_EQ(record.Word(48), session.DhpdevNumber());
        EXPECT_EQ(record.Word(52), 10u);
        EXPECT_EQ(record.Word(56), 20u);
        EXPECT_EQ(record.Word(60), BMF_32BPP);
        session.SetCaptureMask(~0x40U);
        Create(session, {10, 20});
        EXPECT_TRUE(session.records.empty());
    }

    TEST(CreateDeviceBitmap, RefusesAnotherFormatWithBothMessages)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        EXPECT_EQ(Create(session, {10, 10}, BMF_8BPP), nullptr);
        EXPECT_EQ(session.Engine().DebugOutput(),
                  "KORU:DrvCreateDeviceBitmap: Bitmap format is not supported: 3\n"
                  "KORU: The device created bitmap is NULL.\n");
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.Word(40), 0u);
        EXPECT_EQ(record.Word(44), 0u);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces);
        EXPECT_EQ(session.Engine().Outstanding().poolBlocks, before.poolBlocks + 1) << "the entry array stays";
    }

    TEST(CreateDeviceBitmap, AnswersZeroUncapturedWithoutScreen)
    {
        Session session;
        EXPECT_EQ(session.Hook<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap)(reinterpret_cast<DHPDEV>(0x777),
                                                                                       {10, 10}, BMF_32BPP),
                  nullptr);
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    struct FailureCase {
        const char* name;
        engine::Request request;
        ULONG nth;
        std::string message;
    };
    class FailingDeviceBitmap : public testing::TestWithParam<FailureCase> { };

    TEST_P(FailingDeviceBitmap, LeavesNothingBehindAndIsCaptured)
    {
        Session session;
        Delete(Create(session, {10, 10})); // the array exists from here on
        session.records.clear();
        const engine::Resources before = session.Engine().Outstanding();
        session.Engine().Fail(GetParam().request, GetParam().nth);
        EXPECT_EQ(Create(session, {10, 10}), nullptr);
        session.Engine().StopFailing();
        EXPECT_EQ(session.Engine().TakeDebugOutput(), GetParam().message);
        EXPECT_EQ(session.Engine().Outstanding(), before);
        const SubmittedRecord record = session.TakeOnlyRecord(); // and none of the deletion
        EXPECT_EQ(record.Word(40), 0u);
        EXPECT_EQ(record.Word(44), 0u);

        const ULONG requests = session.Engine().RequestCount(engine::Request::Memory);
        const HBITMAP next = Create(session, {10, 10});
        EXPECT_NE(next, nullptr);
        EXPECT_EQ(session.Engine().RequestCount(engine::Request::Memory), requests) << "the entry is free again";
        Delete(next);
    }

    INSTANTIATE_TEST_SUITE_P(Steps, FailingDeviceBitmap,
                             testing::Values(FailureCase{"BackingNotMade", engine::Request::CreateSurface, 1,
                                                         "KORU: The device created bitmap is NULL.\n"},
                                             FailureCase{"BackingNotAssociated", engine::Request::Associate, 1,
                                                         "KORU: CreateDeviceBitmap: first AssociateSurface failed\n"},
                                             FailureCase{"BitmapNotMade", engine::Request::CreateSurface, 2,
                                                         "KORU: CreateDeviceBitmap: second AssociateSurface failed\n"},
                                             FailureCase{"BitmapNotAssociated", engine::Request::Associate, 2,
                                                         "KORU: CreateDeviceBitmap: second AssociateSurface failed\n"}),
                             [](const auto& info) { return info.param.name; });

    TEST(CreateDeviceBitmap, AnswersZeroWithoutMemoryForTheEntryAndIsCaptured)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        session.Engine().Fail(engine::Request::Memory);
        EXPECT_EQ(Create(session, {10, 10}), nullptr);
        EXPECT_EQ(session.TakeOnlyRecord().Word(40), 0u);
        EXPECT_EQ(session.Engine().Outstanding(), before);
        EXPECT_EQ(session.Engine().DebugOutput(), "");

        const HBITMAP first = Create(session, {10, 10});
        session.Engine().Fail(engine::Request::Memory);
        EXPECT_EQ(Create(session, {10, 10}), nullptr) << "the array cannot grow";
        EXPECT_NE(Surface(first), nullptr);
        Delete(first);
    }

    TEST(DeviceBitmapEntries, AreReusedFirstFreeFirst)
    {
        Session session;
        HBITMAP bitmaps[3];
        for (HBITMAP& bitmap : bitmaps)
            bitmap = Create(session, {10, 10});
        const ULONG requests = session.Engine().RequestCount(engine::Request::Memory);
        Delete(bitmaps[1]);
        bitmaps[1] = Create(session, {10, 10});
        EXPECT_EQ(session.Engine().RequestCount(engine::Request::Memory), requests)
            << "the second entry is taken again";
        const HBITMAP fourth = Create(session, {10, 10});
        EXPECT_EQ(session.Engine().RequestCount(engine::Request::Memory), requests + 1);
        for (const HBITMAP bitmap : {bitmaps[0], bitmaps[1], bitmaps[2], fourth})
            Delete(bitmap);
    }

    TEST(DeleteDeviceBitmap, DeletesTheBackingAndIsRecordedWithFlagOne)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        const HBITMAP bitmap = Create(session, {10, 10});
        const auto backing = reinterpret_cast<ULONG>(Backing(bitmap)->hsurf);
        session.records.clear();
        Delete(bitmap);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces);
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x80u);
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(record.Word(40), backing);
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST(DeleteDeviceBitmap, LeavesTheDeviceBitmapsOwnHandleToTheEngine)
    {
        Session session;
        const HBITMAP bitmap = Create(session, {10, 10});
        CallDelete(session, Backing(bitmap));
        EXPECT_NE(Surface(bitmap), nullptr);
        EXPECT_EQ(Backing(bitmap), nullptr);
        session.records.clear();
        EXPECT_EQ(FillRectangle(session, Surface(bitmap), {0, 0, 4, 4}), FALSE) << "nothing behind it any more";
        EXPECT_EQ(session.records.size(), 1u);
        Delete(bitmap);
        EXPECT_EQ(session.records.size(), 1u) << "a backing that does not lock: nothing is done or captured";
    }

    TEST(DeleteDeviceBitmap, OfAnUnknownBitmapSaysSoAndIsCaptured)
    {
        Session session;
        engine::Surface* const foreign = MakePicture(session, {4, 4});
        EngAssociateSurface(foreign->hsurf, session.Device().Handle(), 0);
        CallDelete(session, foreign);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:Error the bitmap to delete was not found.\n");
        EXPECT_EQ(session.records.size(), 1u);
        EXPECT_EQ(engine::FindSurface(foreign->hsurf), foreign);
    }

    TEST(DeleteDeviceBitmap, WithoutScreenIsSilentAndCaptured)
    {
        Session session;
        CallDelete(session, MakePicture(session, {4, 4}));
        EXPECT_EQ(session.Engine().DebugOutput(), "");
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(DeleteDeviceBitmap, OfNothingDoesNothing)
    {
        Session session;
        CallDelete(session, nullptr);
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST(DeleteDeviceBitmap, WhoseBackingStopsLockingFreesTheEntryAlone)
    {
        Session session;
        const HBITMAP bitmap = Create(session, {10, 10});
        engine::Surface* const backing = Backing(bitmap);
        session.records.clear();
        session.Engine().Fail(engine::Request::Lock, 2);
        CallDelete(session, backing);
        session.Engine().StopFailing();
        EXPECT_NE(engine::FindSurface(backing->hsurf), nullptr);
        EXPECT_EQ(session.records.size(), 1u);
        CallDelete(session, backing);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:Error the bitmap to delete was not found.\n");
        EngDeleteSurface(backing->hsurf);
    }

    TEST(DeviceBitmapsUnderFaults, LeaveNothingBehind)
    {
        for (const bool forGood : {false, true}) {
            engine::FaultPlan plan(forGood);
            do {
                Session session;
                Delete(Create(session, {10, 10}));
                const engine::Resources before = session.Engine().Outstanding();
                session.Engine().Obey(plan);
                const HBITMAP bitmap = Create(session, {10, 10});
                EXPECT_TRUE(bitmap || plan.FaultsSeen() > 0);
                session.Engine().StopFailing();
                if (bitmap)
                    Delete(bitmap);
                EXPECT_EQ(session.Engine().Outstanding(), before) << "fault " << plan.Position();
            } while (plan.Next());
        }
    }

} // namespace
} // namespace conformance
