#include "engine/raster/rop_operation.h"

namespace engine::raster {
namespace {

// By far the most frequent operation of those that come here.
void CopyChosen(const Row& row)
{
    for (LONG i = 0; i < row.count; ++i)
        row.target[i] = row.choices[i] == Choice::Nothing ? row.target[i] : row.source[i];
}

} // namespace

RopOperation::RopOperation(ROP4 rop4, const Translator& translator, const BrushPattern& brush, bool hasMask)
    : rop4_(rop4)
    , translator_(translator)
    , brush_(brush)
    , brushChooses_(!hasMask && ForegroundRop(rop4) != BackgroundRop(rop4))
{
}

void RopOperation::Run(Row& row) const
{
    pattern_.resize(static_cast<std::size_t>(row.count));
    if (UsesPattern(rop4_))
        brush_.Fetch(row.x, row.y, row.count, pattern_.data());
    if (UsesSource(rop4_))
        translator_.Apply(row.source, row.count);
    if (rop4_ == CopySource) {
        CopyChosen(row);
        return;
    }
    const RopFunction functions[] = {Rop3Function(BackgroundRop(rop4_)), Rop3Function(ForegroundRop(rop4_))};
    for (LONG i = 0; i < row.count; ++i) {
        Choice choice = row.choices[i];
        if (choice == Choice::Nothing)
            continue;
        if (brushChooses_ && !brush_.IsForeground(row.x + i, row.y))
            choice = Choice::Background;
        row.target[i] = functions[static_cast<int>(choice)](pattern_[static_cast<std::size_t>(i)], row.source[i],
                                                            row.target[i]);
    }
}

} // namespace engine::raster
