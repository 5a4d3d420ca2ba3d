#include "zoomers.h"

#include <bit>

namespace koru::client {
namespace {

    // Selectors of the overlay command, in C; any other value sets the image with the raster operation in bits 16..23.
    constexpr std::uint32_t SetMaskSelector = 0xFFFFFFFF, DropMaskSelector = 0xFEFFFFFF;

    std::uint32_t Word(std::int32_t value)
    {
        return static_cast<std::uint32_t>(value);
    }

    std::array<std::uint32_t, 4> Words(const Rect& area)
    {
        return std::bit_cast<std::array<std::uint32_t, 4>>(area);
    }

} // namespace

std::optional<ZoomerId> ZoomerControl::Create() const
{
    const auto id = link_.ZoomWord(ZoomCommand::Create);
    return id && *id != 0 ? std::optional(ZoomerId{*id}) : std::nullopt;
}

bool ZoomerControl::Scroll(ZoomerId id, std::int32_t dx, std::int32_t dy) const
{
    ZoomInput input = Input(id);
    input.v = {Word(dx), Word(dy)};
    return link_.ZoomDone(ZoomCommand::Scroll, input);
}

bool ZoomerControl::ShowOriginal(const Rect& area) const
{
    return link_.ZoomDone(ZoomCommand::ShowOriginalImage, {0, 0, 0, 0, Words(area)});
}

std::optional<std::int32_t> ZoomerControl::UpdateInterval() const
{
    const auto word = link_.ZoomWord(ZoomCommand::GetUpdateInterval);
    return word ? std::optional(static_cast<std::int32_t>(*word)) : std::nullopt;
}

bool ZoomerControl::SetUpdateInterval(std::int32_t milliseconds) const
{
    return link_.Zoom(ZoomCommand::SetUpdateInterval, {0, 0, 0, 0, {Word(milliseconds)}}).has_value();
}

std::optional<bool> ZoomerControl::PickColor(ZoomerId id) const
{
    const auto out = link_.Zoom(ZoomCommand::GetPickColor, Input(id), NotWritten);
    return out ? YesOrNo((*out)[0]) : std::nullopt;
}

bool ZoomerControl::SetZOrder(ZoomerId id, std::int32_t zOrder) const
{
    return Set(ZoomCommand::SetZOrder, id, zOrder);
}

std::optional<std::int32_t> ZoomerControl::ZOrder(ZoomerId id) const
{
    return Get<std::int32_t>(ZoomCommand::GetZOrder, id);
}

bool ZoomerControl::Set(ZoomCommand command, ZoomerId id, const Rect& area) const
{
    ZoomInput input = Input(id);
    input.v = Words(area);
    return link_.ZoomDone(command, input);
}

std::optional<Rect> ZoomerControl::GetRect(ZoomCommand command, ZoomerId id) const
{
    const auto out = link_.Zoom(command, Input(id));
    return out ? std::optional(std::bit_cast<Rect>(*out)) : std::nullopt;
}

std::optional<ColorPair> ColorPairControl::At(std::int32_t index) const
{
    const auto out = link_.Zoom(ZoomCommand::GetColorPair, {0, 0, 0, 0, {Word(index)}});
    return out ? std::optional(ColorPair{(*out)[0], (*out)[1]}) : std::nullopt;
}

bool WiseSurfaceControl::SetImage(std::uint8_t rop3, const Point& origin, const Rect& area) const
{
    const std::uint32_t selector = std::uint32_t(rop3) << 16;
    return link_.ZoomDone(ZoomCommand::SetWiseSurface, {0, Word(origin.x), Word(origin.y), selector, Words(area)});
}

bool WiseSurfaceControl::SetMask(const Rect& area) const
{
    return link_.ZoomDone(ZoomCommand::SetWiseSurface, {0, 0, 0, SetMaskSelector, Words(area)});
}

bool WiseSurfaceControl::DropMask() const
{
    return link_.ZoomDone(ZoomCommand::SetWiseSurface, {0, 0, 0, DropMaskSelector, {}});
}

} // namespace koru::client
