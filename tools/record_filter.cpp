#include "tools/record_filter.h"

#include <algorithm>
#include <stdexcept>

namespace tools {

using namespace koru::client;

namespace {

    // The surface that a call draws on comes first in every record that has one.
    std::optional<std::uint32_t> TargetOf(const Record& record)
    {
        for (const Field& field : record.layout().fields) {
            if (field.kind != FieldKind::Slot || field.object != ObjectKind::Surface)
                continue;
            const Object object = record.ObjectOf(field);
            const auto* surface = std::get_if<Surface>(&object);
            return surface ? std::optional(surface->fixed.hsurf) : std::nullopt;
        }
        return std::nullopt;
    }

    // Where a call draws: its own rectangle, or the bounds of its clip.
    std::optional<Rect> PlaceOf(const Record& record)
    {
        constexpr Rect absent = {-1, -1, -1, -1};
        for (const Field& field : record.layout().fields)
            if (field.kind == FieldKind::Rect && Load<Rect>(record.bytes(), field.offset) != absent)
                return Load<Rect>(record.bytes(), field.offset);
        for (const Field& field : record.layout().fields) {
            const Object object = field.kind == FieldKind::Slot ? record.ObjectOf(field) : Object();
            if (const auto* clip = std::get_if<Clip>(&object))
                return clip->fixed.bounds;
        }
        return std::nullopt;
    }

    bool Meets(const std::optional<Rect>& place, const RECTL& rectangle)
    {
        return place && std::max(place->left, rectangle.left) < std::min(place->right, rectangle.right)
            && std::max(place->top, rectangle.top) < std::min(place->bottom, rectangle.bottom);
    }

} // namespace

bool Passes(const Record& record, const RecordsOptions& options)
{
    const auto& calls = options.calls;
    if (!calls.empty() && std::find(calls.begin(), calls.end(), NameOf(record.type())) == calls.end())
        return false;
    if (options.surface && TargetOf(record) != options.surface)
        return false;
    if (options.process && record.header().identifier0 != *options.process)
        return false;
    return !options.rectangle || Meets(PlaceOf(record), *options.rectangle);
}

void CheckCallNames(const RecordsOptions& options)
{
    for (const std::string& call : options.calls) {
        const auto layouts = RecordLayouts();
        const bool known = std::any_of(layouts.begin(), layouts.end(),
                                       [&](const RecordLayout& layout) { return NameOf(layout.type) == call; });
        if (!known)
            throw std::runtime_error("--call: there is no call named " + call);
    }
}

} // namespace tools
