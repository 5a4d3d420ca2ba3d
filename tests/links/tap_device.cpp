// korutap.sys: its device, who may open it, and what is asked of it.

#include "tests/links/tap.h"

namespace links {
namespace {

    TEST(TapImage, IsAKernelModuleOfFewImports)
    {
        Tap tap;
        std::vector<std::string> imports = tap.image.ImportNames();
        std::sort(imports.begin(), imports.end());
        EXPECT_EQ(imports,
                  (std::vector<std::string>{"hal.dll!KfAcquireSpinLock", "hal.dll!KfReleaseSpinLock",
                                            "ntoskrnl.exe!IoCreateDevice", "ntoskrnl.exe!IoCreateSymbolicLink",
                                            "ntoskrnl.exe!IoDeleteDevice", "ntoskrnl.exe!IofCompleteRequest",
                                            "ntoskrnl.exe!PsGetCurrentProcessId", "ntoskrnl.exe!PsGetCurrentThreadId",
                                            "ntoskrnl.exe!SeSinglePrivilegeCheck"}));
        EXPECT_TRUE(tap.image.ExportNames().empty());
    }

    TEST(TapImage, IsNoDisplayDriver)
    {
        engine::PeImage image;
        EXPECT_FALSE(image.Load(ImageFile("korutap.sys")));
        EXPECT_EQ(image.Error(), "not a library image");
        engine::PeImage module(Kernel::ModuleKind());
        EXPECT_FALSE(module.Load(ImageFile("korulink.dll")));
        EXPECT_EQ(module.Error(), "not the image of a kernel module");
    }

    TEST(TapStart, MakesItsDeviceAndStaysForGood)
    {
        Tap tap;
        ASSERT_EQ(tap.Start(), StatusSuccess);
        ASSERT_TRUE(tap.kernel.device);
        EXPECT_EQ(tap.kernel.device->name, u"\\Device\\KoruTap");
        EXPECT_EQ(tap.kernel.device->type, 0x22u);
        EXPECT_EQ(tap.kernel.device->characteristics, 0x100u) << "secured as a whole, names below it, too";
        EXPECT_EQ(tap.kernel.device->object.Flags & 4, 4u) << "buffered reads";
        EXPECT_EQ(tap.kernel.link, u"\\DosDevices\\KoruTap");
        EXPECT_EQ(tap.kernel.linkTarget, u"\\Device\\KoruTap");
        EXPECT_EQ(tap.kernel.driver.DriverUnload, nullptr) << "Koru may hold its entry points";
    }

    TEST(TapStart, TakesFiveKindsOfRequests)
    {
        Tap tap;
        tap.Start();
        for (ULONG major = 0; major < MajorFunctions; ++major) {
            const bool taken = major == MajorCreate || major == MajorClose || major == MajorRead
                || major == MajorDeviceControl || major == MajorCleanup;
            EXPECT_EQ(tap.kernel.driver.MajorFunction[major] != nullptr, taken) << major;
        }
    }

    TEST(TapStart, FailsWithoutADevice)
    {
        Tap tap;
        tap.kernel.createDeviceStatus = StatusInsufficientResources;
        EXPECT_EQ(tap.Start(), StatusInsufficientResources);
        EXPECT_TRUE(tap.kernel.link.empty());
    }

    TEST(TapStart, LeavesNoDeviceBehindWithoutALink)
    {
        Tap tap;
        tap.kernel.createLinkStatus = StatusInsufficientResources;
        EXPECT_EQ(tap.Start(), StatusInsufficientResources);
        EXPECT_FALSE(tap.kernel.device);
    }

    TEST(TapOpen, NeedsTheDebugPrivilege)
    {
        Tap tap;
        tap.Start();
        tap.kernel.holdsDebugPrivilege = false;
        EXPECT_EQ(tap.Open(), StatusPrivilegeNotHeld);
        EXPECT_EQ(tap.Open(), StatusPrivilegeNotHeld);
        tap.kernel.holdsDebugPrivilege = true;
        EXPECT_EQ(tap.Open(), StatusSuccess) << "who was refused occupies nothing";
    }

    TEST(TapOpen, IsForOneReaderUntilAllOfItHasEnded)
    {
        OpenTap tap;
        EXPECT_EQ(tap.Open(), StatusDeviceBusy);
        EXPECT_EQ(tap.QC(), 1) << "the reader is not disturbed";
        EXPECT_EQ(tap.Cleanup(), StatusSuccess);
        EXPECT_EQ(tap.Open(), StatusDeviceBusy) << "requests of the reader may still be running";
        EXPECT_EQ(tap.Close(), StatusSuccess);
        EXPECT_EQ(tap.Open(), StatusSuccess);
        EXPECT_EQ(tap.Open(), StatusDeviceBusy);
    }

    struct ControlCase {
        const char* name;
        ULONG code, size;
    };
    class TapControl : public testing::TestWithParam<ControlCase> { };

    TEST_P(TapControl, RefusesEveryShorterOutputAndFillsLongerOnes)
    {
        OpenTap tap;
        const ULONG size = GetParam().size;
        for (ULONG output = 0; output < size; ++output) {
            const Answer answer = tap.Control(GetParam().code, output, size);
            EXPECT_EQ(answer.status, StatusBufferTooSmall) << output;
            EXPECT_EQ(answer.information, 0u) << output;
        }
        for (ULONG output : {size, size + 1, size + 1000}) {
            for (ULONG input : {0u, 1u, 4096u}) {
                const Answer answer = tap.Control(GetParam().code, output, input);
                EXPECT_EQ(answer.status, StatusSuccess) << output;
                EXPECT_EQ(answer.information, size) << output;
            }
        }
    }

    INSTANTIATE_TEST_SUITE_P(Codes, TapControl,
                             testing::Values(ControlCase{"EntryPoints", 0x00226000, 24},
                                             ControlCase{"Statistics", 0x00226004, 48}),
                             [](const auto& info) { return info.param.name; });

    TEST(TapControl, RefusesUnknownCodes)
    {
        OpenTap tap;
        for (ULONG code : {0u, 0x00222000u, 0x00226001u, 0x00226008u, 0x0022A000u, 0xFFFFFFFFu}) {
            const Answer answer = tap.Control(code, 1000, 1000);
            EXPECT_EQ(answer.status, StatusInvalidDeviceRequest) << code;
            EXPECT_EQ(answer.information, 0u);
        }
    }

    TEST(TapControl, TellsItsVersionAndFiveDifferentFunctions)
    {
        OpenTap tap;
        const korutap::EntryPoints points = tap.EntryPoints();
        EXPECT_EQ(points.version, 1u);
        std::vector<ULONG> functions = {points.qc, points.qp, points.gsd};
        std::sort(functions.begin(), functions.end());
        EXPECT_EQ(std::unique(functions.begin(), functions.end()), functions.end());
        for (ULONG function : {points.qc, points.qd, points.qp, points.gsd, points.dsf})
            EXPECT_NE(function, 0u);
    }

    TEST(TapFunctions, IdentifyTheCaller)
    {
        OpenTap tap;
        tap.kernel.processId = 0x888;
        tap.kernel.threadId = 0x777;
        EXPECT_EQ(tap.GSD(0), 0x888u);
        EXPECT_EQ(tap.GSD(1), 0x777u);
        for (LONG selector : {-1, 2, 0x7FFFFFFF})
            EXPECT_EQ(tap.GSD(selector), 0u);
    }

    TEST(TapFunctions, TellWhetherThereIsAReader)
    {
        OpenTap tap;
        EXPECT_EQ(tap.QC(), 1);
        EXPECT_EQ(tap.QD(), 0);
        EXPECT_EQ(tap.DSF(), 0);
        tap.Cleanup();
        EXPECT_EQ(tap.QC(), 0);
        EXPECT_EQ(tap.GSD(0), 0x123u) << "Koru's dark processes do not depend on the reader";
        tap.Close();
        tap.Open();
        EXPECT_EQ(tap.QC(), 1);
    }

} // namespace
} // namespace links
