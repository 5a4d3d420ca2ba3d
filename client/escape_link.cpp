#include "escape_link.h"

#include <algorithm>
#include <cstring>

namespace koru::client {
namespace {

    struct KoruBuffer {
        std::uint32_t command;
        std::uint32_t words[5];
    };
    static_assert(sizeof(KoruBuffer) == 24);

    struct ZoomBuffer {
        std::uint32_t command;
        ZoomInput input;
    };
    static_assert(sizeof(ZoomBuffer) == 36);

    struct ChainBuffer {
        char driver[264]; // terminated
        std::uint32_t function;
        std::uint32_t unused;
    };
    static_assert(sizeof(ChainBuffer) == 272);

    template<class T> std::span<const std::byte> BytesOf(const T& value)
    {
        return std::as_bytes(std::span(&value, 1));
    }

    template<class T> std::span<std::byte> WritableBytesOf(T& value)
    {
        return std::as_writable_bytes(std::span(&value, 1));
    }

} // namespace

std::int32_t EscapeLink::Send(Escape escape, std::span<const std::byte> in, std::span<std::byte> out) const
{
    return transport_(static_cast<std::uint32_t>(escape), in, out);
}

std::optional<std::uint32_t> EscapeLink::Koru(KoruCommand command, std::initializer_list<std::uint32_t> words,
                                              std::uint32_t before) const
{
    KoruBuffer in{static_cast<std::uint32_t>(command), {}};
    std::copy_n(words.begin(), std::min(words.size(), std::size(in.words)), in.words);
    std::uint32_t out = before;
    return Send(Escape::Koru, BytesOf(in), WritableBytesOf(out)) > 0 ? std::optional(out) : std::nullopt;
}

std::optional<ZoomOutput> EscapeLink::Zoom(ZoomCommand command, const ZoomInput& input, std::uint32_t before) const
{
    const ZoomBuffer in{static_cast<std::uint32_t>(command), input};
    ZoomOutput out{before};
    return Send(Escape::Zoom, BytesOf(in), WritableBytesOf(out)) > 0 ? std::optional(out) : std::nullopt;
}

std::optional<std::uint32_t> EscapeLink::ZoomWord(ZoomCommand command, const ZoomInput& input) const
{
    const auto out = Zoom(command, input);
    return out ? std::optional((*out)[0]) : std::nullopt;
}

std::optional<std::uint32_t> EscapeLink::Chain(std::uint32_t function) const
{
    ChainBuffer in{};
    std::memcpy(in.driver, "koru", sizeof("koru"));
    in.function = function;
    std::uint32_t out = NotWritten;
    return Send(Escape::Chain, BytesOf(in), WritableBytesOf(out)) > 0 ? std::optional(out) : std::nullopt;
}

} // namespace koru::client
