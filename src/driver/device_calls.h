#pragma once

#include <type_traits>

#include "platform/entry_points.h"

// The entry points of devices and their surfaces. The aliases keep every one of them to the
// interface's type.
namespace koru {

std::remove_pointer_t<PFN_DrvEnablePDEV> DrvEnablePDEV;
std::remove_pointer_t<PFN_DrvCompletePDEV> DrvCompletePDEV;
std::remove_pointer_t<PFN_DrvDisablePDEV> DrvDisablePDEV;
std::remove_pointer_t<PFN_DrvEnableSurface> DrvEnableSurface;
std::remove_pointer_t<PFN_DrvDisableSurface> DrvDisableSurface;
std::remove_pointer_t<PFN_DrvAssertMode> DrvAssertMode;
std::remove_pointer_t<PFN_DrvGetModes> DrvGetModes;
std::remove_pointer_t<PFN_DrvSynchronize> DrvSynchronize;
std::remove_pointer_t<PFN_DrvSynchronizeSurface> DrvSynchronizeSurface;
std::remove_pointer_t<PFN_DrvIcmSetDeviceGammaRamp> DrvIcmSetDeviceGammaRamp;

} // namespace koru
