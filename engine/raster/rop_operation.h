#pragma once

#include "engine/raster/brush.h"
#include "engine/raster/rop.h"
#include "engine/raster/rows.h"
#include "engine/raster/translate.h"

namespace engine::raster {

// A quaternary raster operation of pattern, translated source and target.
class RopOperation : public RowOperation {
public:
    // Without a mask the brush's own decides between foreground and background.
    RopOperation(ROP4 rop4, const Translator& translator, const BrushPattern& brush, bool hasMask);
    void Run(Row& row) const override;

private:
    void LetBrushChoose(Row& row) const;
    void CombineChosen(Row& row) const;

    ROP4 rop4_;
    const Translator& translator_;
    const BrushPattern& brush_;
    bool brushChooses_;
    mutable std::vector<ULONG> pattern_, foreground_, background_; // of one row; kept for their memory
};

} // namespace engine::raster
