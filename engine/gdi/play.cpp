#include "engine/gdi/play.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "engine/gdi/picture.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    constexpr double HundredthsPerMillimetre = 100;

    Box BoxOf(const RECTL& r)
    {
        return {static_cast<double>(r.left), static_cast<double>(r.top), static_cast<double>(r.right),
                static_cast<double>(r.bottom)};
    }

    // The picture's frame in pixels of the device that it was made for; without one what is drawn.
    Box FrameOf(const MetafileHeader& header)
    {
        if (IsEmpty(header.frame)) {
            const RECTL& bounds = header.bounds;
            return {static_cast<double>(bounds.left), static_cast<double>(bounds.top), bounds.right + 1.0,
                    bounds.bottom + 1.0};
        }
        const double x = header.device.pixels.cx / (header.device.millimetres.cx * HundredthsPerMillimetre);
        const double y = header.device.pixels.cy / (header.device.millimetres.cy * HundredthsPerMillimetre);
        const Box frame = BoxOf(header.frame);
        return {frame.left * x, frame.top * y, frame.right * x, frame.bottom * y};
    }

    // As large as fits, in the middle; heights and widths keep the proportion that they have on paper.
    Transform Fit(const MetafileHeader& header, const Box& frame, const RECTL& where)
    {
        const double width = frame.right - frame.left, height = frame.bottom - frame.top;
        const double pixelWidth = static_cast<double>(header.device.millimetres.cx) / header.device.pixels.cx;
        const double pixelHeight = static_cast<double>(header.device.millimetres.cy) / header.device.pixels.cy;
        const double roomX = static_cast<double>(where.right) - where.left;
        const double roomY = static_cast<double>(where.bottom) - where.top;
        const double scale = std::min(roomX / (width * pixelWidth), roomY / (height * pixelHeight));
        const double x = scale * pixelWidth, y = scale * pixelHeight;
        return Transform::Move(-frame.left, -frame.top)
            .Then(Transform::Scale(x, y))
            .Then(Transform::Move(where.left + (roomX - width * x) / 2, where.top + (roomY - height * y) / 2));
    }

    Transform BaseOf(const MetafileHeader& header, const RECTL& where, const PlayOptions& options)
    {
        const Box frame = FrameOf(header);
        if (!options.actualSize && frame.right > frame.left && frame.bottom > frame.top)
            return Fit(header, frame, where);
        return Transform::Move(where.left - frame.left, where.top - frame.top);
    }

    void PaintPage(const DrawingTarget& target)
    {
        DeviceContext dc(target, {}, {});
        FillRectangle(dc, target.visible, LogicalBrush{.colour = 0xFFFFFF}, R2_COPYPEN);
    }

    bool PlayMetafile(const DrawingTarget& target, Bytes file, const std::string& name, PlayReport& report,
                      std::string& error, const PlayOptions& options)
    {
        MetafileReader reader(file, name);
        DeviceContext dc(target, BaseOf(reader.Header(), target.visible, options), reader.Header().device);
        MetafilePlayer player(dc, report);
        Record record;
        while (reader.Next(record))
            player.Play(record);
        error = reader.Error();
        return error.empty();
    }

    bool ReadFile(const std::string& path, std::vector<BYTE>& bytes)
    {
        std::ifstream stream(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
        return stream.good() || stream.eof();
    }

    bool PlayOn(const DrawingTarget& target, const std::string& path, PlayReport& report, std::string& error,
                const PlayOptions& options)
    {
        std::vector<BYTE> bytes;
        if (!ReadFile(path, bytes)) {
            error = path + ": cannot be read";
            return false;
        }
        return PlayBytes(target, std::span<const BYTE>(bytes), path, report, error, options);
    }

} // namespace

bool PlayBytes(const DrawingTarget& target, Bytes file, const std::string& name, PlayReport& report, std::string& error,
               const PlayOptions& options)
{
    error.clear();
    const bool metafile = MetafileReader::IsMetafile(file);
    if (!metafile && !IsPicture(file)) {
        error = name + ": neither a metafile nor a PNG or BMP picture";
        return false;
    }
    if (options.whitePage)
        PaintPage(target);
    if (metafile)
        return PlayMetafile(target, file, name, report, error, options);
    try {
        DrawPicture(target, ReadPicture(file), {target.visible.left, target.visible.top});
    } catch (const CannotPlay& problem) {
        error = name + ": " + problem.what();
    }
    return error.empty();
}

bool PlayFile(Device& device, const std::string& path, const RECTL& where, PlayReport& report, std::string& error,
              const PlayOptions& options)
{
    SURFOBJ* const surface = device.PrimarySurface();
    if (!surface) {
        error = "the device is not enabled";
        return false;
    }
    return PlayOn({surface, device.Layout(), where}, path, report, error, options);
}

bool PlayFile(Surface& surface, const std::string& path, const RECTL& where, PlayReport& report, std::string& error,
              const PlayOptions& options)
{
    return PlayOn({&surface, surface.layout, where}, path, report, error, options);
}

} // namespace engine::gdi
