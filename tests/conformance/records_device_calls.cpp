// Random calls in the life of a device.

#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    using wire::CallType;

    // Fixed parts of the least and the whole structure that the driver records.
    constexpr ULONG RecordedDevinfo = offsetof(DEVINFO, flGraphicsCaps2);
    constexpr ULONG RecordedDevmode = 188;

    void ExpectPatterns(const Taken<wire::EnablePDEVRecord>& call, const std::vector<HSURF>& patterns)
    {
        EXPECT_EQ(call.patternCount, patterns.size());
        EXPECT_EQ(call.patterns.offset, patterns.empty() ? 0xFFFFFFFF : 80u);
        if (patterns.empty())
            return;
        const auto recorded = call.record.At(call.patterns);
        ASSERT_TRUE(recorded);
        for (std::uint32_t i = 0; i < patterns.size(); ++i)
            EXPECT_TRUE(!recorded->Intact(i) || recorded->handles[i] == Number(patterns[i])) << "pattern " << i;
    }

    void EnablePDEV(Round& round)
    {
        round.SecondDevice(Round::Stage::None);
        DEVMODEW* const mode = round.make.Mode();
        WCHAR* const address = round.make.Or(3, round.make.WideText());
        WCHAR* const name = round.make.Or(3, round.make.WideText());
        std::vector<HSURF> patterns(round.random.OneIn(3) ? 0 : round.random.Between(1, 400));
        if (!patterns.empty())
            round.random.Fill(patterns.data(), patterns.size() * sizeof(HSURF));
        GDIINFO gdi = {};
        DEVINFO info;
        round.random.Fill(info);
        DEVINFO* const infoGiven = round.make.Or(4, &info);
        const ULONG infoSize = round.random.Of<ULONG>({0, 4, RecordedDevinfo - 1, RecordedDevinfo, sizeof(DEVINFO)});
        HANDLE handle;
        round.random.Fill(handle);
        round.Start();
        const DHPDEV dhpdev = round.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            mode, address, static_cast<ULONG>(patterns.size()), patterns.data(), sizeof(gdi),
            reinterpret_cast<ULONG*>(&gdi), infoSize, infoGiven, round.SecondHandle(), name, handle);
        round.NoteSecondDevice(dhpdev, Round::Stage::Pdev);
        const auto call = round.Take<wire::EnablePDEVRecord>(1);
        ASSERT_TRUE(call);
        Expect(call->record, call->deviceMode, mode);
        Expect(call->record, call->logicalAddress, address);
        ExpectPatterns(*call, patterns);
        EXPECT_EQ(call->deviceInfoSize, infoSize);
        Expect(call->record, call->deviceInfo, infoSize >= RecordedDevinfo ? infoGiven : nullptr);
        EXPECT_EQ(call->hdev, Number(round.SecondHandle()));
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
        Expect(call->record, call->deviceName, name);
        EXPECT_EQ(call->driverHandle, Number(handle));
    }

    void CompletePDEV(Round& round)
    {
        const DHPDEV dhpdev = round.SecondDevice(Round::Stage::Pdev);
        round.Start();
        round.Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(dhpdev, round.SecondHandle());
        const auto call = round.Take<wire::CompletePDEVRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
        EXPECT_EQ(call->hdev, Number(round.SecondHandle()));
    }

    void EnableSurface(Round& round)
    {
        const DHPDEV dhpdev = round.SecondDevice(Round::Stage::Pdev);
        round.Start();
        const HSURF hsurf = round.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(dhpdev);
        round.NoteSecondDevice(dhpdev, Round::Stage::Surface);
        const auto call = round.Take<wire::EnableSurfaceRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
        EXPECT_EQ(call->hsurf, Number(hsurf));
        EXPECT_NE(hsurf, nullptr);
    }

    void DisableSurface(Round& round)
    {
        const DHPDEV dhpdev = round.SecondDevice(Round::Stage::Surface);
        round.Start();
        round.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(dhpdev);
        round.NoteSecondDevice(dhpdev, Round::Stage::Pdev);
        const auto call = round.Take<wire::DisableSurfaceRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
    }

    void DisablePDEV(Round& round)
    {
        const DHPDEV dhpdev = round.SecondDevice(Round::Stage::Pdev);
        round.Start();
        round.Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(dhpdev);
        round.NoteSecondDevice(nullptr, Round::Stage::None);
        const auto call = round.Take<wire::DisablePDEVRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
    }

    void AssertMode(Round& round)
    {
        const DHPDEV dhpdev = round.session.Device().Dhpdev();
        const BOOL enable = static_cast<BOOL>(round.random.Word());
        round.Start();
        round.Hook<PFN_DrvAssertMode>(INDEX_DrvAssertMode)(dhpdev, enable);
        const auto call = round.Take<wire::AssertModeRecord>(1);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
        EXPECT_EQ(call->enable, static_cast<ULONG>(enable));
    }

    void GetModes(Round& round)
    {
        HANDLE handle;
        round.random.Fill(handle);
        const ULONG size = round.random.Of<ULONG>({0, RecordedDevmode - 1, RecordedDevmode, sizeof(DEVMODEW) - 1,
                                                   sizeof(DEVMODEW), 3 * sizeof(DEVMODEW), 10000});
        auto* const modes =
            round.make.Or(4, reinterpret_cast<DEVMODEW*>(round.make.Bytes(size + 1).data())); // never null by itself
        round.Start();
        round.Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(handle, size, modes);
        const auto call = round.Take<wire::GetModesRecord>(0);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->driverHandle, Number(handle));
        EXPECT_EQ(call->outputSize, size);
        Expect(call->record, call->deviceMode, size >= RecordedDevmode ? modes : nullptr);
    }

} // namespace

std::vector<RecordedCall> DeviceCalls()
{
    return {{CallType::EnablePDEV, EnablePDEV},
            {CallType::CompletePDEV, CompletePDEV},
            {CallType::EnableSurface, EnableSurface},
            {CallType::DisableSurface, DisableSurface},
            {CallType::DisablePDEV, DisablePDEV},
            {CallType::AssertMode, AssertMode},
            {CallType::GetModes, GetModes}};
}

} // namespace conformance::records
