#pragma once

// A real driver whose table a test fills by itself, for what the frame buffer does not do: entries listed
// twice, entries that look at the world when they are called, structures with chosen figures.

#include <list>
#include <vector>

#include "tests/conformance/session.h"

namespace conformance {

class RealDriver {
public:
    // Offers only DrvEnablePDEV (with the figures below), DrvEnableSurface and the calls that go with
    // them, and takes the place of "framebuf" for the session's driver, which is enabled once more.
    explicit RealDriver(Session& session);
    ~RealDriver();
    RealDriver(const RealDriver&) = delete;
    RealDriver& operator=(const RealDriver&) = delete;
    static RealDriver& Current();

    template<class Function> void Offer(ULONG index, Function* function) // in front of what is there
    {
        table.insert(table.begin(), DRVFN{index, reinterpret_cast<PFN>(function)});
        EnableAgain();
    }
    void Withdraw(ULONG index);

    std::vector<DRVFN> table;
    std::list<std::vector<DRVFN>> given; // copies that the driver was given: it reads the last one until the next
    GDIINFO gdi = {};
    DEVINFO info = {};
    engine::Surface* surface = nullptr; // what DrvEnableSurface gives; made with the first PDEV
    std::vector<DHPDEV> dhpdevs = {reinterpret_cast<DHPDEV>(0xD0000)}; // given in turn, the last for good

private:
    void EnableAgain();
    Session& session_;
};

} // namespace conformance
