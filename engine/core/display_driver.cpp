#include <algorithm>

#include "engine/core/device.h"
#include "engine/core/state.h"

namespace engine {

namespace {

    constexpr ULONG EnableDataSize = 12;

} // namespace

DisplayDriver::DisplayDriver(const std::u16string& image, ULONG engineVersion)
    : name_(image)
    , engineVersion_(engineVersion)
{
    {
        const LockedState state;
        image_ = state->images.Load(image, false);
        if (image_)
            enableDriver_ = reinterpret_cast<PFN_DrvEnableDriver>(state->images.Find(image_, "DrvEnableDriver"));
    }
    if (!image_)
        error_ = "the display driver's image does not load";
    else if (!enableDriver_)
        error_ = "the display driver has no DrvEnableDriver";
    else
        CallEnable();
}

DisplayDriver::~DisplayDriver()
{
    CallDisable();
    if (image_)
        LockedState()->images.Unload(image_, false);
}

bool DisplayDriver::CallEnable()
{
    table_ = {};
    enabled_ = enableDriver_(engineVersion_, EnableDataSize, &table_) != FALSE;
    error_ = enabled_ ? "" : "DrvEnableDriver refuses";
    if (enabled_ && table_.c != 0 && !table_.pdrvfn) {
        enabled_ = false;
        error_ = "DrvEnableDriver gives no table";
    }
    return enabled_;
}

void DisplayDriver::CallDisable()
{
    if (!enabled_)
        return;
    if (const auto disable = Function<PFN_DrvDisableDriver>(INDEX_DrvDisableDriver))
        disable();
    enabled_ = false;
}

bool DisplayDriver::EnableAgain()
{
    CallDisable();
    return enableDriver_ && CallEnable();
}

PFN DisplayDriver::Function(ULONG index) const
{
    if (!table_.pdrvfn)
        return nullptr;
    const DRVFN* const end = table_.pdrvfn + table_.c;
    const DRVFN* const found = std::find_if(const_cast<const DRVFN*>(table_.pdrvfn), end,
                                            [index](const DRVFN& entry) { return entry.iFunc == index; });
    return found == end ? nullptr : found->pfn;
}

std::vector<DEVMODEW> DisplayDriver::Modes() const
{
    const auto getModes = Function<PFN_DrvGetModes>(INDEX_DrvGetModes);
    const ULONG size = getModes ? getModes(DriverHandle, 0, nullptr) : 0;
    std::vector<DEVMODEW> modes(size / sizeof(DEVMODEW));
    if (modes.empty())
        return modes;
    const ULONG given = getModes(DriverHandle, size, modes.data());
    modes.resize(std::min<std::size_t>(modes.size(), given / sizeof(DEVMODEW)));
    for (DEVMODEW& mode : modes) {
        WCHAR* const end =
            std::copy_n(name_.begin(), std::min(name_.size(), std::size(mode.dmDeviceName) - 1), mode.dmDeviceName);
        std::fill(end, std::end(mode.dmDeviceName), u'\0');
    }
    return modes;
}

} // namespace engine
