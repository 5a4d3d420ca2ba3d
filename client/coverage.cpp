#include "record_decoder.h"

#include <algorithm>

namespace koru::client {
namespace {

    // The bytes that an object takes in the record.
    struct RangeOf {
        Range operator()(const std::monostate&) const { return {}; }
        Range operator()(const PatternHandles&) const { return {}; } // the record's objects stand on them
        template<class T> Range operator()(const Array<T>& array) const { return array.range(); }
        template<class View> Range operator()(const View& view) const { return view.range; }
    };

} // namespace

std::vector<Range> UnknownRanges(const Record& record)
{
    std::vector<Range> known{{0, record.layout().size}};
    for (const Field& field : record.layout().fields)
        if (field.kind == FieldKind::Slot)
            known.push_back(std::visit(RangeOf(), record.ObjectOf(field)));
    std::sort(known.begin(), known.end(), [](const Range& a, const Range& b) { return a.begin < b.begin; });

    std::vector<Range> unknown;
    std::uint32_t at = 0;
    for (const Range& range : known) {
        if (range.begin > at)
            unknown.push_back({at, range.begin});
        at = std::max(at, range.end);
    }
    if (at < record.length())
        unknown.push_back({at, record.length()});
    return unknown;
}

} // namespace koru::client
