#include <filesystem>
#include <stdexcept>

#include "client/control.h"
#include "engine/gdi/picture.h"
#include "engine/gdi/play.h"
#include "tools/commands.h"
#include "tools/machine.h"
#include "tools/output_folder.h"
#include "tools/player.h"
#include "tools/png_file.h"
#include "tools/record_file.h"

namespace tools {

using namespace koru::client;

namespace {

    SIZEL SizeOfPicture(const std::string& path)
    {
        const auto file = ReadFile(path);
        const std::span bytes(reinterpret_cast<const BYTE*>(file.data()), file.size());
        if (!engine::gdi::IsPicture(bytes))
            throw std::runtime_error(path + ": is no PNG or BMP picture");
        const engine::Engine engine; // bitmaps belong to one
        try {
            return engine::gdi::ReadPicture(bytes)->Size();
        } catch (const engine::gdi::DamagedData& damage) {
            throw std::runtime_error(path + ": " + damage.what());
        }
    }

    // A screen that holds the picture and, over it, its view with the frame around.
    Session SceneOf(const MagnifyOptions& options, const SIZEL& picture)
    {
        ZoomerSettings zoomer = options.zoomer;
        const LONG margin = (zoomer.border & 15) != 0 ? static_cast<LONG>(zoomer.borderSize) : 0;
        const LONG width = picture.cx * static_cast<LONG>(zoomer.xFactor);
        const LONG height = picture.cy * static_cast<LONG>(zoomer.yFactor);
        zoomer.original = {0, 0, picture.cx, picture.cy};
        zoomer.zoomed = {margin, margin, margin + width, margin + height};
        Session session;
        session.width = static_cast<ULONG>(width + 2 * margin);
        session.height = static_cast<ULONG>(height + 2 * margin);
        session.depth = options.depth;
        session.steps = {PlayStep{options.in, RECTL{0, 0, picture.cx, picture.cy}}, ZoomerStep{zoomer}};
        return session;
    }

    void SetColorPairs(Machine& machine, const std::vector<ColorPair>& pairs)
    {
        const Control control(
            [&machine](std::uint32_t escape, std::span<const std::byte> in, std::span<std::byte> out) {
                return machine.Escape(escape, in.data(), in.size(), out.data(), out.size());
            });
        if (pairs.empty())
            return;
        bool done = control.ColorPairs().Clear();
        for (const ColorPair& pair : pairs)
            done &= control.ColorPairs().Add(pair);
        if (!done)
            throw std::runtime_error("the driver refused the colour pairs");
    }

} // namespace

void Magnify(const MagnifyOptions& options)
{
    const Session session = SceneOf(options, SizeOfPicture(options.in));
    CheckSession(session);
    const std::filesystem::path out(options.out);
    OutputFolder folder(out.has_parent_path() ? out.parent_path().string() : ".");
    Machine machine({{session.width, session.height, session.depth}, options.image});
    machine.InstallConsumer([](const BYTE*, ULONG, LONG) {});
    SetColorPairs(machine, options.colorPairs);
    Player player(machine);
    player.Run(session);
    folder.Write(out.filename().string(), EncodePng(machine.RealScreen()));
    folder.Finish();
}

} // namespace tools
