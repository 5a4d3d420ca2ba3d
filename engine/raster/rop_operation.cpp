#include "engine/raster/rop_operation.h"

namespace engine::raster {

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
    if (brushChooses_)
        LetBrushChoose(row);
    if (row.hasChoices)
        CombineChosen(row);
    else
        Rop3Function(ForegroundRop(rop4_))(pattern_.data(), row.source, row.target, row.count);
}

void RopOperation::LetBrushChoose(Row& row) const
{
    row.hasChoices = true;
    for (LONG i = 0; i < row.count; ++i)
        if (row.choices[i] != Choice::Nothing && !brush_.IsForeground(row.x + i, row.y))
            row.choices[i] = Choice::Background;
}

void RopOperation::CombineChosen(Row& row) const
{
    foreground_.assign(row.target, row.target + row.count);
    background_ = foreground_;
    Rop3Function(ForegroundRop(rop4_))(pattern_.data(), row.source, foreground_.data(), row.count);
    Rop3Function(BackgroundRop(rop4_))(pattern_.data(), row.source, background_.data(), row.count);
    for (std::size_t i = 0; i < foreground_.size(); ++i)
        if (row.choices[i] != Choice::Nothing)
            row.target[i] = row.choices[i] == Choice::Foreground ? foreground_[i] : background_[i];
}

} // namespace engine::raster
