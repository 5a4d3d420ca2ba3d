#include "record_stream.h"

#include "byte_view.h"

namespace koru::client {
namespace {

    struct FrameHeader {
        char magic[4];
        std::uint32_t length;
        std::int32_t flag;
    };
    static_assert(sizeof(FrameHeader) == FrameHeaderSize);

} // namespace

StreamWriter::StreamWriter(std::ostream& out)
    : out_(out)
{
    out_.write(StreamMagic, StreamHeaderSize);
}

bool StreamWriter::Write(std::span<const std::byte> record, std::int32_t flag)
{
    if (record.size() > RecordRoom)
        return false;
    FrameHeader header{{}, static_cast<std::uint32_t>(record.size()), flag};
    std::memcpy(header.magic, FrameMagic, sizeof(header.magic));
    out_.write(reinterpret_cast<const char*>(&header), sizeof(header));
    out_.write(reinterpret_cast<const char*>(record.data()), static_cast<std::streamsize>(record.size()));
    return out_.good();
}

StreamReader::StreamReader(std::span<const std::byte> file)
    : file_(file)
{
    if (file.size() >= StreamHeaderSize && std::memcmp(file.data(), StreamMagic, StreamHeaderSize) == 0)
        at_ = StreamHeaderSize;
    else
        Resynchronise(0);
}

std::optional<Frame> StreamReader::Next()
{
    while (at_ < file_.size()) {
        const auto frame = FrameAt(at_);
        if (frame) {
            at_ += FrameHeaderSize + frame->record.size();
            return frame;
        }
        Resynchronise(at_);
    }
    return std::nullopt;
}

std::optional<Frame> StreamReader::FrameAt(std::size_t offset) const
{
    const auto rest = file_.subspan(offset);
    if (rest.size() < FrameHeaderSize)
        return std::nullopt;
    const auto header = Load<FrameHeader>(rest, 0);
    if (std::memcmp(header.magic, FrameMagic, sizeof(header.magic)) != 0 || header.length > RecordRoom
        || header.length > rest.size() - FrameHeaderSize)
        return std::nullopt;
    return Frame{offset, header.flag, rest.subspan(FrameHeaderSize, header.length)};
}

// Whether a frame found by searching is one: the magic may also be data. A record's first word is its length.
bool StreamReader::Plausible(std::size_t offset) const
{
    const auto frame = FrameAt(offset);
    return frame && Load<std::uint32_t>(frame->record, 0) == frame->record.size();
}

void StreamReader::Resynchronise(std::size_t from)
{
    if (!firstBad_)
        firstBad_ = from;
    ++badPlaces_;
    at_ = from;
    while (at_ < file_.size() && !Plausible(at_))
        ++at_;
    skipped_ += at_ - from;
}

} // namespace koru::client
