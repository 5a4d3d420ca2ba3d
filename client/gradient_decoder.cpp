#include "record_decoder.h"

#include <algorithm>

namespace koru::client {
namespace {

    constexpr std::uint32_t TriangleMode = 2;

} // namespace

// Where the arrays of a gradient begin: behind the last object, which `slot` need not tell. After each array
// the driver goes on by the size of that object, whatever the array took.
std::uint32_t Record::GradientBegin(std::uint32_t slot) const
{
    const auto call = As<GradientFillRecord>();
    if (!call || slot < layout_->size || slot > length())
        return slot;

    std::uint64_t begin = slot;
    if (const auto xlate = FixedAt<Xlate>(call->xlate.offset)) {
        // A translation that announces entries and has none is 20 bytes long, and so is the last step.
        const bool listed = length() - slot != sizeof(XlateEncoding);
        begin = xlate->range.end + (listed ? std::uint64_t(xlate->fixed.count) * 4 : 0);
    } else if (const auto clip = FixedAt<Clip>(call->clip.offset)) {
        begin = clip->range.end + std::uint64_t(clip->fixed.count) * sizeof(Rect);
    } else if (const auto surface = FixedAt<Surface>(call->surface.offset)) {
        begin = surface->range.end;
    }
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(begin, slot));
}

std::optional<GradientArrays> Record::At(GradientArraysSlot slot) const
{
    const auto call = As<GradientFillRecord>();
    if (!call || slot.offset < sizeof(*call) || slot.offset > length())
        return std::nullopt;

    const std::uint32_t begin = GradientBegin(slot.offset);
    GradientArrays arrays{{begin, length()}, {}, {}, call->mode == TriangleMode ? 3u : 2u};
    // With a step of 0, or with one array alone, both begin at the same place.
    arrays.vertices = {bytes_, begin, call->vertexCount, RecordRoom};
    const std::uint32_t elementSize = arrays.numbersPerElement * 4;
    const auto room = static_cast<std::uint32_t>(bytes_.size() - slot.offset);
    const std::uint32_t elements = std::min(call->meshCount, room / elementSize);
    arrays.mesh = {bytes_, slot.offset, elements * arrays.numbersPerElement, RecordRoom};
    return arrays;
}

bool GradientArrays::Intact(std::uint32_t vertex) const
{
    const std::uint64_t begin = vertices.range().begin + std::uint64_t(vertex) * sizeof(GradientVertex);
    const Range over = mesh.range();
    return vertex < vertices.size()
        && (mesh.empty() || begin + sizeof(GradientVertex) <= over.begin || begin >= over.end);
}

} // namespace koru::client
