#include "record_decoder.h"

#include <algorithm>

namespace koru::client {
namespace {

    constexpr std::uint64_t PointSize = sizeof(Point);
    constexpr std::uint64_t GatherRoom = 0x10000; // the driver gathers a path's points in a buffer of this size

    // What the entries tell about the points, going the way that the driver went.
    struct Gathered {
        std::uint64_t size = 0; // bytes of the points that were kept
        std::uint32_t firstKept = 0;
    };

    Gathered Gather(const Array<PathEntry>& entries)
    {
        Gathered gathered;
        gathered.firstKept = entries.size();
        for (std::uint32_t i = 0; i < entries.size(); ++i) {
            const std::uint64_t size = entries[i].pointCount * PointSize;
            if (size >= GatherRoom - gathered.size)
                continue; // lost
            if (size != 0 && gathered.size == 0)
                gathered.firstKept = i;
            gathered.size += size;
        }
        return gathered;
    }

} // namespace

std::optional<Path> Record::At(PathSlot slot) const
{
    auto path = FixedAt<Path>(slot.offset);
    if (!path || path->fixed.dataOffset != sizeof(PathEncoding))
        return path;

    const std::uint32_t limit = LimitOf(slot.offset);
    const std::uint32_t table = path->range.end;
    path->record = bytes_;
    path->entries = {bytes_, table, path->fixed.entryCount, limit};
    path->state = Path::State::CutShort;
    if (path->entries.size() != path->fixed.entryCount) {
        path->range.end = std::max(table, limit); // the last entries were written over
        return path;
    }

    const Gathered gathered = Gather(path->entries);
    path->firstKept = gathered.firstKept;
    path->pointsBegin = path->entries.range().end;
    const std::uint64_t end = path->pointsBegin + gathered.size;
    if (end <= limit && end < RecordRoom) {
        path->state = Path::State::Complete;
        path->range.end = static_cast<std::uint32_t>(end);
        return path;
    }
    // Without points, a path takes as many bytes as the points of its last entry would have.
    const std::uint32_t count = path->entries.size();
    const std::uint64_t taken = count ? path->entries[count - 1].pointCount * PointSize : 0;
    path->range.end =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(table + taken, table, std::max(table, limit)));
    return path;
}

Subpath Path::operator[](std::uint32_t index) const
{
    Subpath subpath;
    subpath.entry = entries[index];
    if (subpath.entry.pointCount == 0)
        return subpath;

    subpath.lost = true;
    if (state != State::Complete)
        return subpath;
    std::uint64_t at = entries.range().begin + std::uint64_t(index) * sizeof(PathEntry) + subpath.entry.pointsOffset;
    if (subpath.entry.pointsOffset == 0)
        at = index == firstKept ? pointsBegin : 0;
    if (at < pointsBegin || at > range.end || subpath.entry.pointCount > (range.end - at) / PointSize)
        return subpath;
    subpath.lost = false;
    subpath.points = {record, static_cast<std::uint32_t>(at), subpath.entry.pointCount, range.end};
    return subpath;
}

} // namespace koru::client
