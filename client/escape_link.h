#pragma once

#include "escape_codes.h"
#include "wire_types.h"

#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>

namespace koru::client {

// Carries one escape to the driver and gives its result. The input is copied before, the output filled
// after; a result below 1 means that the escape was not answered. On Windows this is ExtEscape; some
// commands work on the surface of the device context that it is called with.
using Transport =
    std::function<std::int32_t(std::uint32_t escape, std::span<const std::byte> in, std::span<std::byte> out)>;

// What an answer holds before the driver writes it, where the driver may write nothing. Some engines hand
// the driver an output of their own, with anything in it.
constexpr std::uint32_t NotWritten = 0xFFFFFFFF;

// The answer to a yes-or-no question: 1, 0, or none when it was not written.
constexpr std::optional<bool> YesOrNo(std::optional<std::uint32_t> word)
{
    return word && *word <= 1 ? std::optional(*word == 1) : std::nullopt;
}

struct ZoomInput { // Escape::Zoom, behind the command
    std::uint32_t zoomer = 0;
    std::uint32_t a = 0, b = 0, c = 0;
    std::array<std::uint32_t, 4> v{};
};

using ZoomOutput = std::array<std::uint32_t, 4>;

// Puts commands into buffers and takes the answers out. None when the escape was not answered.
class EscapeLink {
public:
    explicit EscapeLink(Transport transport)
        : transport_(std::move(transport))
    {
    }

    // Words 1 to 5 of the input; `before` is what the answer holds before the call.
    std::optional<std::uint32_t> Koru(KoruCommand command, std::initializer_list<std::uint32_t> words = {},
                                      std::uint32_t before = 0) const;
    std::optional<ZoomOutput> Zoom(ZoomCommand command, const ZoomInput& input = {}, std::uint32_t before = 0) const;
    std::optional<std::uint32_t> Chain(std::uint32_t function) const;
    std::int32_t Send(Escape escape, std::span<const std::byte> in, std::span<std::byte> out) const;

    // The first word of the answer.
    std::optional<std::uint32_t> ZoomWord(ZoomCommand command, const ZoomInput& input = {}) const;
    // Whether that word is 1: the command was carried out.
    bool ZoomDone(ZoomCommand command, const ZoomInput& input = {}) const { return ZoomWord(command, input) == 1; }
    bool KoruDone(KoruCommand command, std::initializer_list<std::uint32_t> words = {}) const
    {
        return Koru(command, words) == 1;
    }

private:
    Transport transport_;
};

} // namespace koru::client
