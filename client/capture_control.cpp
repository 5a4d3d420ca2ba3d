#include "capture_control.h"

namespace koru::client {
namespace {

    std::uint32_t Word(std::int32_t value)
    {
        return static_cast<std::uint32_t>(value);
    }

} // namespace

bool CaptureControl::Install(const ConsumerFunctions& consumer) const
{
    return link_.KoruDone(KoruCommand::InitializeFunctions2,
                          {consumer.QC, consumer.QD, consumer.QP, consumer.GSD, consumer.DSF});
}

bool CaptureControl::SetBitsLimits(std::int32_t pixels, std::uint32_t callMask) const
{
    return link_.KoruDone(KoruCommand::SetBitsLimits, {Word(pixels), callMask});
}

std::optional<ZoneHandle> DarkZoneControl::Add(std::uint32_t dhpdev, const Rect& zone) const
{
    const auto handle = link_.Koru(KoruCommand::AddDarkZone,
                                   {Word(zone.left), Word(zone.top), Word(zone.right), Word(zone.bottom), dhpdev});
    return handle && *handle != 0 ? std::optional(ZoneHandle{*handle}) : std::nullopt;
}

bool DarkZoneControl::Delete(std::uint32_t dhpdev, ZoneHandle zone) const
{
    return link_.KoruDone(KoruCommand::DeleteDarkZone, {static_cast<std::uint32_t>(zone), 0, 0, 0, dhpdev});
}

bool DarkZoneControl::Clear(std::uint32_t dhpdev) const
{
    return link_.KoruDone(KoruCommand::ClearDarkZones, {0, 0, 0, 0, dhpdev});
}

std::optional<bool> CacheControl::Add(CacheType type, std::uint32_t item) const
{
    return YesOrNo(link_.Koru(KoruCommand::AddCacheItem, {static_cast<std::uint32_t>(type), item}, NotWritten));
}

bool CacheControl::Delete(CacheType type, std::uint32_t item) const
{
    return link_.KoruDone(KoruCommand::DeleteCacheItem, {static_cast<std::uint32_t>(type), item});
}

bool CacheControl::Clear(CacheType type, std::uint32_t bitsCallMask) const
{
    return link_.KoruDone(KoruCommand::ClearCache, {static_cast<std::uint32_t>(type), bitsCallMask});
}

} // namespace koru::client
