#include "summary.h"

#include <bit>
#include <cstdio>

namespace koru::client {
namespace {

    std::size_t IndexOf(CallType type)
    {
        return static_cast<std::size_t>(std::countr_zero(static_cast<std::uint32_t>(type))) % CallTypeCount;
    }

    std::string Line(std::string_view name, const Summary::Count& count)
    {
        char line[80];
        std::snprintf(line, sizeof(line), "%-22.*s %9zu %12zu\n", static_cast<int>(name.size()), name.data(),
                      count.records, count.bytes);
        return line;
    }

} // namespace

void Summary::Add(std::span<const std::byte> record)
{
    const auto decoded = Record::Decode(record);
    Count& count = record.empty() ? empty_ : decoded ? calls_[IndexOf(decoded->type())] : undecodable_;
    ++count.records;
    count.bytes += record.size();
}

const Summary::Count& Summary::Of(CallType type) const
{
    return calls_[IndexOf(type)];
}

Summary::Count Summary::Total() const
{
    Count total{empty_.records + undecodable_.records, undecodable_.bytes};
    for (const Count& call : calls_) {
        total.records += call.records;
        total.bytes += call.bytes;
    }
    return total;
}

std::string Summary::Table() const
{
    std::string table = "call                     records        bytes\n";
    for (const RecordLayout& layout : RecordLayouts())
        if (Of(layout.type).records != 0)
            table += Line(layout.name, Of(layout.type));
    if (empty_.records != 0)
        table += Line("(empty)", empty_);
    if (undecodable_.records != 0)
        table += Line("(undecodable)", undecodable_);
    return table + Line("total", Total());
}

} // namespace koru::client
