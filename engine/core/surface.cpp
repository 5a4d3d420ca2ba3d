#include "engine/core/surface.h"

#include "engine/core/guards.h"
#include "engine/core/state.h"

namespace engine {

namespace {

    constexpr ULONG BitsPerFormat[] = {0, 1, 4, 8, 16, 24, 32};
    constexpr std::uintptr_t FirstHandle = 0x05000001;
    constexpr std::size_t RemovedKept = 1024;

    // The guards stand round the bits in `storage`.
    bool GuardsWhole(const Surface& surface)
    {
        const std::vector<BYTE>& storage = surface.storage;
        return storage.empty()
            || (IsFilled(storage.data(), GuardSize, GuardByte)
                && IsFilled(storage.data() + storage.size() - GuardSize, GuardSize, GuardByte));
    }

    std::string Name(const Surface& surface)
    {
        return std::to_string(surface.sizlBitmap.cx) + " x " + std::to_string(surface.sizlBitmap.cy) + " bitmap";
    }

} // namespace

ULONG RowBytes(ULONG iBitmapFormat, LONG width)
{
    if (iBitmapFormat > BMF_32BPP || width <= 0)
        return 0;
    return static_cast<ULONG>((static_cast<ULONGLONG>(width) * BitsPerFormat[iBitmapFormat] + 7) / 8);
}

BYTE* Surface::Row(LONG y) const
{
    return pvScan0 ? static_cast<BYTE*>(pvScan0) + y * lDelta : nullptr;
}

ULONG Surface::Pixel(LONG x, LONG y) const
{
    const BYTE* const row = Row(y);
    if (!row)
        return 0;
    switch (iBitmapFormat) {
    case BMF_1BPP:
        return row[x / 8] >> (7 - x % 8) & 1;
    case BMF_4BPP:
        return x % 2 ? row[x / 2] & 0x0F : row[x / 2] >> 4;
    case BMF_8BPP:
        return row[x];
    case BMF_16BPP:
        return row[2 * x] | row[2 * x + 1] << 8;
    case BMF_24BPP:
        return static_cast<ULONG>(row[3 * x] | row[3 * x + 1] << 8 | row[3 * x + 2] << 16);
    default:
        return row[4 * x] | row[4 * x + 1] << 8 | row[4 * x + 2] << 16 | static_cast<ULONG>(row[4 * x + 3]) << 24;
    }
}

void Surface::SetPixel(LONG x, LONG y, ULONG pixel)
{
    BYTE* const row = Row(y);
    if (!row)
        return;
    if (iBitmapFormat == BMF_1BPP) {
        const int bit = 0x80 >> x % 8;
        row[x / 8] = static_cast<BYTE>(pixel & 1 ? row[x / 8] | bit : row[x / 8] & ~bit);
        return;
    }
    if (iBitmapFormat == BMF_4BPP) {
        row[x / 2] =
            static_cast<BYTE>(x % 2 ? (row[x / 2] & 0xF0) | (pixel & 0x0F) : (row[x / 2] & 0x0F) | (pixel & 0x0F) << 4);
        return;
    }
    const ULONG bytes = BitsPerFormat[iBitmapFormat] / 8;
    for (ULONG i = 0; i < bytes; ++i)
        row[static_cast<ULONG>(x) * bytes + i] = static_cast<BYTE>(pixel >> 8 * i);
}

Surface* Surfaces::Add(std::unique_ptr<Surface> surface)
{
    Surface* const added = surface.get();
    added->hsurf = reinterpret_cast<HSURF>(FirstHandle + handles_++);
    added->iUniq = NextUniqueNumber();
    byAddress_[added] = added;
    byHandle_[added->hsurf] = std::move(surface);
    return added;
}

Surface* Surfaces::Find(HSURF handle) const
{
    const auto found = byHandle_.find(handle);
    return found == byHandle_.end() ? nullptr : found->second.get();
}

Surface* Surfaces::FindByAddress(const SURFOBJ* pso) const
{
    const auto found = byAddress_.find(pso);
    return found == byAddress_.end() ? nullptr : found->second;
}

void Surfaces::Remove(Surface* surface)
{
    if (!GuardsWhole(*surface))
        engine_.Report("surface: written outside the bits of a " + Name(*surface));
    byAddress_.erase(surface);
    auto owner = byHandle_.extract(surface->hsurf);
    if (!GuardsPresent)
        return;
    surface->storage = std::vector<BYTE>();
    Fill(reinterpret_cast<BYTE*>(static_cast<SURFOBJ*>(surface)), sizeof(SURFOBJ), FreedByte);
    removed_.push_back(std::move(owner.mapped()));
    if (removed_.size() > RemovedKept)
        removed_.pop_front();
}

void Surfaces::CheckGuards()
{
    for (const auto& [handle, surface] : byHandle_) {
        if (GuardsWhole(*surface))
            continue;
        engine_.Report("surface: written outside the bits of a " + Name(*surface));
        Fill(surface->storage.data(), GuardSize, GuardByte);
        Fill(surface->storage.data() + surface->storage.size() - GuardSize, GuardSize, GuardByte);
    }
}

void Surfaces::ForgetDevice(const Device* device)
{
    for (const auto& [handle, surface] : byHandle_)
        if (surface->device == device)
            surface->device = nullptr;
}

ULONG Surfaces::OfTheDriver() const
{
    ULONG count = 0;
    for (const auto& [handle, surface] : byHandle_)
        count += !surface->ofTheEngine;
    return count;
}

ULONG Surfaces::Locks() const
{
    ULONG locks = 0;
    for (const auto& [handle, surface] : byHandle_)
        locks += surface->locks;
    return locks;
}

Surface* SurfaceBehind(const SURFOBJ* pso)
{
    if (!pso)
        return nullptr;
    const LockedState state;
    Surface* const surface = state->surfaces.FindByAddress(pso);
    if (!surface)
        Engine::Current().Report("a foreign or deleted SURFOBJ");
    return surface;
}

Surface* FindSurface(HSURF hsurf)
{
    return LockedState()->surfaces.Find(hsurf);
}

} // namespace engine
