#include "tools/koruspy/spy.h"

#include <cstring>
#include <stdexcept>
#include <vector>

#include "client/byte_view.h"
#include "client/record_decoder.h"
#include "client/record_stream.h"
#include "tools/control/driver.h"

namespace koruspy {

using namespace koru::client;
using tools::Require;

namespace {

    constexpr std::size_t ReadBytes = 2 * korutap::MostRecordBytes;
    static_assert(ReadBytes >= korutap::ReadRoom && korutap::MostRecordBytes == RecordRoom);

    // Capture with a consumer. Ended by its owner, or by whatever goes wrong.
    class Capture {
    public:
        Capture(const Control& koru, const korutap::EntryPoints& entries, std::uint32_t mask)
            : koru_(koru)
        {
            const bool installed =
                koru.Capture().Install({entries.qc, entries.qd, entries.qp, entries.gsd, entries.dsf});
            if (installed && koru.Capture().SetMask(mask) && koru.Capture().On())
                return;
            End();
            throw std::runtime_error("Koru refused to start the capture");
        }
        ~Capture() { End(); }
        Capture(const Capture&) = delete;
        Capture& operator=(const Capture&) = delete;

        bool End()
        {
            if (ended_)
                return true;
            ended_ = true;
            const bool off = koru_.Capture().Off();
            return koru_.Capture().SetMask(0) && koru_.Capture().Install({}) && off;
        }

    private:
        const Control& koru_;
        bool ended_ = false;
    };

    // The device of a call on a screen's own surface, which is the first surface of its record.
    std::optional<std::uint32_t> DeviceOf(std::span<const std::byte> bytes)
    {
        const auto record = Record::Decode(bytes);
        if (!record)
            return std::nullopt;
        for (const Field& field : record->layout().fields)
            if (field.kind == FieldKind::Slot && field.object == ObjectKind::Surface) {
                const auto surface = record->At(SurfaceSlot{Load<std::uint32_t>(bytes, field.offset)});
                return surface && surface->fixed.dhpdev != 0 ? std::optional(surface->fixed.dhpdev) : std::nullopt;
            }
        return std::nullopt;
    }

    class Writer {
    public:
        explicit Writer(std::ostream& stream)
            : stream_(stream)
        {
        }

        // Writes the frames that a read gave.
        void Take(std::span<const std::byte> frames)
        {
            while (!frames.empty()) {
                Require(frames.size() >= sizeof(korutap::FrameHeader), "korutap gave half a frame");
                const auto header = Load<korutap::FrameHeader>(frames, 0);
                frames = frames.subspan(sizeof(header));
                Require(header.magic == korutap::FrameMagic && header.length <= frames.size(),
                        "korutap gave something that is no frame");
                Take(header, frames.first(header.length));
                frames = frames.subspan(header.length);
            }
        }

        SpyReport report;

    private:
        void Take(const korutap::FrameHeader& header, std::span<const std::byte> record)
        {
            Require(stream_.Write(record, header.flag), "the records cannot be written; is the disk full?");
            report.missed += header.sequence - nextSequence_; // modulo 2^32
            nextSequence_ = header.sequence + 1;
            ++report.records;
            report.empty += record.empty();
            if (!report.device && header.flag == 0)
                report.device = DeviceOf(record);
        }

        StreamWriter stream_;
        std::uint32_t nextSequence_ = 0;
    };

} // namespace

SpyReport Spy(const Control& koru, Tap& tap, std::uint32_t mask, std::ostream& stream, const Pause& pause)
{
    const korutap::EntryPoints entries = tap.EntryPoints();
    Require(entries.version == korutap::Version, "korutap.sys is of another version than this program");
    Writer writer(stream);
    std::vector<std::byte> room(ReadBytes);
    const auto readOnce = [&] {
        const std::size_t size = tap.Read(room);
        writer.Take(std::span(room).first(size));
        return size != 0;
    };

    Capture capture(koru, entries, mask);
    bool idle = false;
    while (pause(idle))
        idle = !readOnce();
    Require(capture.End(), "Koru refused to end the capture");
    while (readOnce()) { // what came before the end
    }
    const korutap::Statistics statistics = tap.Statistics();
    writer.report.refused = statistics.refused;
    stream.flush();
    Require(stream.good(), "the records cannot be written; is the disk full?");
    return writer.report;
}

} // namespace koruspy
