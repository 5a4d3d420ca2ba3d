#pragma once

// The file of submitted records, `records.koru`. It begins with the eight bytes "KORUREC1"; then, for each
// submission, a frame: "KREC", the record's length (u32, at most 0x10000; 0 is an empty submission), the
// flag (i32) and the record itself. Little-endian, nothing is aligned.

#include "records.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <span>

namespace koru::client {

constexpr char StreamMagic[] = "KORUREC1";
constexpr char FrameMagic[] = "KREC";
constexpr std::size_t StreamHeaderSize = 8;
constexpr std::size_t FrameHeaderSize = 12;

class StreamWriter {
public:
    explicit StreamWriter(std::ostream& out); // writes the file's header
    // False when the record is longer than RecordRoom (nothing is written) or the output has failed.
    bool Write(std::span<const std::byte> record, std::int32_t flag);

private:
    std::ostream& out_;
};

struct Frame {
    std::size_t offset; // in the file
    std::int32_t flag;
    std::span<const std::byte> record; // empty for an empty submission
};

// Reads a whole file. Behind a bad place it goes on at the next frame that holds together.
class StreamReader {
public:
    explicit StreamReader(std::span<const std::byte> file);

    std::optional<Frame> Next(); // none at the end

    std::optional<std::size_t> FirstBadOffset() const { return firstBad_; } // in what was read so far
    std::size_t BadPlaces() const { return badPlaces_; }
    std::size_t SkippedBytes() const { return skipped_; }

private:
    std::optional<Frame> FrameAt(std::size_t offset) const;
    bool Plausible(std::size_t offset) const;
    void Resynchronise(std::size_t from);

    std::span<const std::byte> file_;
    std::size_t at_ = 0;
    std::optional<std::size_t> firstBad_;
    std::size_t badPlaces_ = 0;
    std::size_t skipped_ = 0;
};

} // namespace koru::client
