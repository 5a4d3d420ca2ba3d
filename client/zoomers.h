#pragma once

// The magnifier: zoomers, replacement colours of its smoothing, and the overlay. Reached through Control.
// All of it works on the screen of the device context that carries the escape.

#include "escape_link.h"

namespace koru::client {

enum class ZoomerId : std::uint32_t {};

enum class ZoomerMode : std::uint32_t {
    Ordinary,
    Exclusive, // nothing outside of this zoomer reaches the screen
    Moving, // updates repaint the place that it has left
};

enum class ZoomerStyle : std::uint32_t {
    Normal,
    Inverted,
};

enum class ZoomerBehaviour : std::uint32_t {
    Immediate, // magnified at each drawing call
    Full, // magnified whole at each update
    Deferred, // magnified at the next update, where drawn on
};

constexpr std::uint32_t BorderLeft = 1, BorderTop = 2, BorderRight = 4, BorderBottom = 8, BorderWhite = 16;

class ZoomerControl {
public:
    explicit ZoomerControl(const EscapeLink& link)
        : link_(link)
    {
    }

    std::optional<ZoomerId> Create() const; // off, at the bottom of the stack
    bool Remove(ZoomerId id) const { return link_.ZoomDone(ZoomCommand::Remove, Input(id)); } // true if unknown, too
    bool Flush() const { return link_.ZoomDone(ZoomCommand::Flush); } // removes all
    std::optional<std::uint32_t> Count() const { return link_.ZoomWord(ZoomCommand::GetZoomerCount); }

    bool Update() const { return link_.ZoomDone(ZoomCommand::Update); }
    bool Refresh(ZoomerId id) const { return link_.ZoomDone(ZoomCommand::Refresh, Input(id)); }
    bool ImproveImage(ZoomerId id) const { return link_.ZoomDone(ZoomCommand::ImproveImage, Input(id)); }
    // The content under the zoomer's original rectangle has moved by so many pixels.
    bool Scroll(ZoomerId id, std::int32_t dx, std::int32_t dy) const;
    bool ShowOriginal(const Rect& area) const; // unmagnified
    std::optional<std::uint32_t> UpdateCount() const { return link_.ZoomWord(ZoomCommand::GetUpdateCount); }
    std::optional<std::int32_t> UpdateInterval() const; // milliseconds between updates of the driver's own
    bool SetUpdateInterval(std::int32_t milliseconds) const;

    bool SetState(ZoomerId id, bool on) const { return Set(ZoomCommand::SetState, id, on ? 1 : 0); }
    std::optional<bool> State(ZoomerId id) const { return Get<bool>(ZoomCommand::GetState, id); }
    bool SetMode(ZoomerId id, ZoomerMode mode) const { return Set(ZoomCommand::SetMode, id, mode); }
    std::optional<ZoomerMode> Mode(ZoomerId id) const { return Get<ZoomerMode>(ZoomCommand::GetMode, id); }
    bool SetStyle(ZoomerId id, ZoomerStyle style) const { return Set(ZoomCommand::SetStyle, id, style); }
    std::optional<ZoomerStyle> Style(ZoomerId id) const { return Get<ZoomerStyle>(ZoomCommand::GetStyle, id); }
    bool SetBehaviour(ZoomerId id, ZoomerBehaviour how) const { return Set(ZoomCommand::SetBehaviour, id, how); }
    std::optional<ZoomerBehaviour> Behaviour(ZoomerId id) const
    {
        return Get<ZoomerBehaviour>(ZoomCommand::GetBehaviour, id);
    }

    bool SetOriginalRect(ZoomerId id, const Rect& area) const { return Set(ZoomCommand::SetOriginalRect, id, area); }
    std::optional<Rect> OriginalRect(ZoomerId id) const { return GetRect(ZoomCommand::GetOriginalRect, id); }
    bool SetZoomedRect(ZoomerId id, const Rect& area) const { return Set(ZoomCommand::SetZoomedRect, id, area); }
    std::optional<Rect> ZoomedRect(ZoomerId id) const { return GetRect(ZoomCommand::GetZoomedRect, id); }

    // Of a factor the driver keeps the low eight bits.
    bool SetFactor(ZoomerId id, std::uint32_t factor) const { return Set(ZoomCommand::SetFactor, id, factor); }
    std::optional<std::uint32_t> Factor(ZoomerId id) const { return Get(ZoomCommand::GetFactor, id); } // horizontal
    bool SetXFactor(ZoomerId id, std::uint32_t factor) const { return Set(ZoomCommand::SetXFactor, id, factor); }
    std::optional<std::uint32_t> XFactor(ZoomerId id) const { return Get(ZoomCommand::GetXFactor, id); }
    bool SetYFactor(ZoomerId id, std::uint32_t factor) const { return Set(ZoomCommand::SetYFactor, id, factor); }
    std::optional<std::uint32_t> YFactor(ZoomerId id) const { return Get(ZoomCommand::GetYFactor, id); }
    // Smoothing, 0 (none) to 3.
    bool SetImproveFactor(ZoomerId id, std::uint32_t level) const
    {
        return Set(ZoomCommand::SetImproveFactor, id, level);
    }
    std::optional<std::uint32_t> ImproveFactor(ZoomerId id) const { return Get(ZoomCommand::GetImproveFactor, id); }
    bool SetPickColor(ZoomerId id, bool darkerWins) const
    {
        return Set(ZoomCommand::SetPickColor, id, darkerWins ? 1 : 0);
    }
    std::optional<bool> PickColor(ZoomerId id) const; // none for an unknown zoomer

    // Border bits, and the frame's thickness in pixels.
    bool SetBorder(ZoomerId id, std::uint32_t bits) const { return Set(ZoomCommand::SetBorder, id, bits); }
    std::optional<std::uint32_t> Border(ZoomerId id) const { return Get(ZoomCommand::GetBorder, id); }
    bool SetBordersSize(ZoomerId id, std::uint32_t size) const { return Set(ZoomCommand::SetBordersSize, id, size); }
    std::optional<std::uint32_t> BordersSize(ZoomerId id) const { return Get(ZoomCommand::GetBordersSize, id); }

    // The zoomer with the smallest value lies on top; among equals the one that was moved last. The driver
    // answers -1 for an unknown zoomer.
    bool SetZOrder(ZoomerId id, std::int32_t zOrder) const;
    std::optional<std::int32_t> ZOrder(ZoomerId id) const;
    bool RenumberZOrder() const { return link_.ZoomDone(ZoomCommand::RenumberZOrder); } // count, count - 1, ... 1

private:
    static ZoomInput Input(ZoomerId id) { return {static_cast<std::uint32_t>(id)}; }
    bool Set(ZoomCommand command, ZoomerId id, const Rect& area) const;
    template<class Value> bool Set(ZoomCommand command, ZoomerId id, Value value) const
    {
        ZoomInput input = Input(id);
        input.v[0] = static_cast<std::uint32_t>(value);
        return link_.ZoomDone(command, input);
    }
    template<class Value = std::uint32_t> std::optional<Value> Get(ZoomCommand command, ZoomerId id) const
    {
        const auto word = link_.ZoomWord(command, Input(id));
        return word ? std::optional(static_cast<Value>(*word)) : std::nullopt;
    }
    std::optional<Rect> GetRect(ZoomCommand command, ZoomerId id) const;

    const EscapeLink& link_;
};

// Red in bits 0..7, green in 8..15, blue in 16..23.
constexpr std::uint32_t Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    return red | std::uint32_t(green) << 8 | std::uint32_t(blue) << 16;
}

struct ColorPair { // colours as Rgb makes them
    std::uint32_t first, second;
    bool operator==(const ColorPair&) const = default;
};

// Where the two colours of a pair meet, smoothing lets the first one grow. Driver-wide.
class ColorPairControl {
public:
    explicit ColorPairControl(const EscapeLink& link)
        : link_(link)
    {
    }

    std::optional<std::uint32_t> Count() const { return link_.ZoomWord(ZoomCommand::GetColorPairCount); }
    bool Add(const ColorPair& pair) const { return link_.ZoomDone(ZoomCommand::AddColorPair, Input(pair)); }
    bool Delete(const ColorPair& pair) const { return link_.ZoomDone(ZoomCommand::DeleteColorPair, Input(pair)); }
    bool Clear() const { return link_.ZoomDone(ZoomCommand::ClearColorPairs); }
    // 0 is the one added last; black and black when there are not so many.
    std::optional<ColorPair> At(std::int32_t index) const;

private:
    static ZoomInput Input(const ColorPair& pair) { return {0, pair.second, 0, 0, {pair.first}}; }
    const EscapeLink& link_;
};

// The overlay merged into every picture on its way to the screen. The pixels are those of the bitmap
// selected into the device context that carries the escape; it must be compatible with the screen.
class WiseSurfaceControl {
public:
    explicit WiseSurfaceControl(const EscapeLink& link)
        : link_(link)
    {
    }

    // `rop3` merges the image: 0xCC covers what is below. `origin` is where the picture lies in the bitmap,
    // `area` the part of the screen that it covers.
    bool SetImage(std::uint8_t rop3, const Point& origin, const Rect& area) const;
    bool SetMask(const Rect& area) const; // where the bitmap has ones, the picture below stays
    bool DropMask() const;
    bool Destroy() const { return link_.ZoomDone(ZoomCommand::DestroyWiseSurface); } // false without a screen

private:
    const EscapeLink& link_;
};

} // namespace koru::client
