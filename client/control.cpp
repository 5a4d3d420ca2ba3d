#include "control.h"

namespace koru::client {
namespace {

    constexpr std::uint32_t AreYouActive = 1, Extension = 0xFFFFF; // functions of the chain manager's escape

} // namespace

bool Control::Answers(Escape escape) const
{
    const auto code = static_cast<std::uint32_t>(escape);
    return link_.Send(Escape::QuerySupport, std::as_bytes(std::span(&code, 1)), {}) > 0;
}

std::optional<std::uint16_t> Control::InterfaceVersion() const
{
    const auto word = link_.Koru(KoruCommand::InterfaceVersion);
    return word ? std::optional(static_cast<std::uint16_t>(*word)) : std::nullopt; // 16 bits are written
}

std::optional<std::uint32_t> Control::ScreenSurface(std::uint32_t dhpdev) const
{
    return link_.Koru(KoruCommand::ScreenSurface, {0, 0, 0, 0, dhpdev});
}

std::optional<bool> Control::ChainAreYouActive() const
{
    return YesOrNo(link_.Chain(AreYouActive));
}

bool Control::ChainExtension() const
{
    return link_.Chain(Extension).has_value();
}

DarkIdControl Control::DarkProcesses() const
{
    return {link_, KoruCommand::AddDarkProcess, KoruCommand::DeleteDarkProcess, KoruCommand::ClearDarkProcesses};
}

DarkIdControl Control::DarkIds() const
{
    return {link_, KoruCommand::AddDarkId, KoruCommand::DeleteDarkId, KoruCommand::ClearDarkIds};
}

} // namespace koru::client
