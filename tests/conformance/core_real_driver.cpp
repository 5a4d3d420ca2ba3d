#include "tests/conformance/core_real_driver.h"

#include <algorithm>
#include <cstring>

namespace conformance {

namespace {

    RealDriver* current = nullptr;

    BOOL APIENTRY EnableDriver(ULONG iEngineVersion, ULONG, DRVENABLEDATA* pded)
    {
        std::vector<DRVFN>& table = current->given.emplace_back(current->table);
        *pded = {iEngineVersion, static_cast<ULONG>(table.size()), table.data()};
        return TRUE;
    }

    DHPDEV APIENTRY EnablePdev(DEVMODEW*, WCHAR*, ULONG, HSURF*, ULONG cjCaps, ULONG* pdevcaps, ULONG cjDevInfo,
                               DEVINFO* pdi, HDEV, WCHAR*, HANDLE)
    {
        if (pdevcaps)
            std::memcpy(pdevcaps, &current->gdi, std::min<std::size_t>(cjCaps, sizeof(GDIINFO)));
        if (pdi)
            std::memcpy(pdi, &current->info, std::min<std::size_t>(cjDevInfo, sizeof(DEVINFO)));
        const DHPDEV dhpdev = current->dhpdevs.front();
        if (current->dhpdevs.size() > 1)
            current->dhpdevs.erase(current->dhpdevs.begin());
        return dhpdev;
    }

    void APIENTRY CompletePdev(DHPDEV, HDEV) { }
    void APIENTRY DisablePdev(DHPDEV) { }

    HSURF APIENTRY EnableSurface(DHPDEV)
    {
        return current->surface ? current->surface->hsurf : nullptr;
    }
    void APIENTRY DisableSurface(DHPDEV) { }

    template<class Function> DRVFN Entry(ULONG index, Function* function)
    {
        return {index, reinterpret_cast<PFN>(function)};
    }

} // namespace

RealDriver::RealDriver(Session& session)
    : session_(session)
{
    current = this;
    table = {
        Entry(INDEX_DrvEnablePDEV, EnablePdev),         Entry(INDEX_DrvCompletePDEV, CompletePdev),
        Entry(INDEX_DrvDisablePDEV, DisablePdev),       Entry(INDEX_DrvEnableSurface, EnableSurface),
        Entry(INDEX_DrvDisableSurface, DisableSurface),
    };
    surface = engine::MakeBitmap({64, 48}, engine::PixelLayout::Default(BMF_32BPP));
    session.Engine().RegisterImage(u"framebuf",
                                   engine::Exports{{"DrvEnableDriver", reinterpret_cast<PFN>(&EnableDriver)}});
    EnableAgain();
}

// The session disables its device without this real driver.
RealDriver::~RealDriver()
{
    session_.Device().Disable();
    current = nullptr;
}

RealDriver& RealDriver::Current()
{
    return *current;
}

void RealDriver::Withdraw(ULONG index)
{
    std::erase_if(table, [index](const DRVFN& entry) { return entry.iFunc == index; });
    EnableAgain();
}

void RealDriver::EnableAgain()
{
    EXPECT_TRUE(session_.Driver().EnableAgain());
    session_.InstallConsumer();
    session_.SetCaptureMask(0xFFFFFFFF);
    session_.records.clear();
    session_.selectorsAsked.clear();
    session_.Engine().ClearDebugOutput();
}

} // namespace conformance
