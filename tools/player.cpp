#include "tools/player.h"

#include <stdexcept>
#include <utility>

#include "engine/gdi/play.h"
#include "tools/arrow.h"
#include "tools/progress.h"

namespace tools {

using namespace koru::client;

namespace {

    Rect WireRect(const RECTL& r)
    {
        return {r.left, r.top, r.right, r.bottom};
    }

    void Require(bool done, const char* command)
    {
        if (!done)
            throw std::runtime_error(std::string("the driver refused the command: ") + command);
    }

    std::size_t CountDrawings(const Session& session)
    {
        std::size_t drawings = 0;
        for (const Step& step : session.steps)
            drawings += std::holds_alternative<PlayStep>(step);
        return drawings;
    }

} // namespace

Player::Player(Machine& machine)
    : machine_(machine)
    , control_([&machine](std::uint32_t escape, std::span<const std::byte> in, std::span<std::byte> out) {
        return machine.Escape(escape, in.data(), in.size(), out.data(), out.size());
    })
{
}

void Player::Run(const Session& session)
{
    Progress progress(CountDrawings(session));
    for (const Step& step : session.steps) {
        if (const auto* play = std::get_if<PlayStep>(&step))
            progress.Show(play->path);
        std::visit([this](const auto& one) { Do(one); }, step);
    }
}

void Player::Do(const PlayStep& step)
{
    const engine::Surface& screen = machine_.VirtualScreen();
    const RECTL where = step.where.value_or(screen.Bounds());
    engine::gdi::PlayReport report;
    std::string error;
    if (!engine::gdi::PlayFile(machine_.Device(), step.path, where, report, error))
        throw std::runtime_error(error);
    for (const auto& [record, count] : report.skipped)
        skipped_[record] += count;
    ++played_;
}

void Player::Do(const ZoomerStep& step)
{
    const ZoomerSettings& want = step.settings;
    const ZoomerControl zoomers = control_.Zoomers();
    const auto id = zoomers.Create();
    Require(id.has_value(), "create a zoomer");
    bool done = zoomers.SetOriginalRect(*id, WireRect(want.original));
    done &= zoomers.SetZoomedRect(*id, WireRect(want.zoomed));
    done &= zoomers.SetXFactor(*id, want.xFactor) && zoomers.SetYFactor(*id, want.yFactor);
    done &= zoomers.SetImproveFactor(*id, want.smooth) && zoomers.SetPickColor(*id, want.darkerWins);
    done &= zoomers.SetBorder(*id, want.border) && zoomers.SetBordersSize(*id, want.borderSize);
    done &= zoomers.SetStyle(*id, static_cast<ZoomerStyle>(want.style));
    done &= zoomers.SetMode(*id, static_cast<ZoomerMode>(want.mode));
    done &= zoomers.SetBehaviour(*id, static_cast<ZoomerBehaviour>(want.behaviour));
    if (want.zOrder)
        done &= zoomers.SetZOrder(*id, *want.zOrder);
    Require(done && zoomers.SetState(*id, true) && zoomers.Refresh(*id), "set a zoomer up");
    zoomers_.push_back(*id);
}

void Player::Do(const CaptureStep& step)
{
    const CaptureControl capture = control_.Capture();
    Require(capture.SetMask(step.mask) && (step.on ? capture.On() : capture.Off()), "switch capture");
}

void Player::Do(const DarkZoneStep& step)
{
    const auto dhpdev = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(machine_.Device().Dhpdev()));
    Require(control_.DarkZones().Add(dhpdev, WireRect(step.zone)).has_value(), "add a dark zone");
}

void Player::WithClientBitmap(const std::string& path, const RECTL& area, const std::function<bool()>& use)
{
    engine::Device& device = machine_.Device();
    const HSURF handle = device.CreateCompatibleBitmap(machine_.VirtualScreen().sizlBitmap);
    engine::Surface* const bitmap = engine::FindSurface(handle);
    engine::gdi::PlayReport report;
    std::string error;
    const bool drawn = bitmap && engine::gdi::PlayFile(*bitmap, path, area, report, error);
    machine_.SelectForEscapes(bitmap);
    const bool done = drawn && use();
    machine_.SelectForEscapes(nullptr);
    if (bitmap)
        device.DeleteBitmap(handle);
    if (!error.empty())
        throw std::runtime_error(error);
    Require(done, "set the overlay");
}

void Player::Do(const OverlayStep& step)
{
    const Point origin = {step.area.left, step.area.top};
    WithClientBitmap(step.image, step.area, [&] {
        return control_.WiseSurface().SetImage(static_cast<std::uint8_t>(step.rop3), origin, WireRect(step.area));
    });
    if (step.mask)
        WithClientBitmap(*step.mask, step.area, [&] { return control_.WiseSurface().SetMask(WireRect(step.area)); });
}

void Player::Do(const PointerStep& step)
{
    ShowArrow(machine_.Device(), step.x, step.y);
}

void Player::Do(const UpdateStep&)
{
    Require(control_.Zoomers().Update(), "update");
}

void Player::Do(const RepaintStep&)
{
    const ZoomerControl zoomers = control_.Zoomers();
    bool done = zoomers.ShowOriginal(WireRect(machine_.VirtualScreen().Bounds()));
    for (const ZoomerId id : zoomers_)
        done &= zoomers.Refresh(id);
    Require(done, "repaint");
}

void Player::Do(const FlushStep&)
{
    Require(control_.Zoomers().Flush(), "remove all zoomers");
    zoomers_.clear();
}

} // namespace tools
