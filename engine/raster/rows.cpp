#include "engine/raster/rows.h"

#include <algorithm>

namespace engine::raster {

void DrawRows(const Bitmap& target, const std::vector<RECTL>& parts, const RowSource* source,
              const RowOperation& operation)
{
    std::vector<ULONG> targetPixels, sourcePixels;
    std::vector<Choice> choices;
    for (const RECTL& part : parts) {
        const LONG count = part.right - part.left;
        targetPixels.resize(static_cast<std::size_t>(count));
        sourcePixels.resize(static_cast<std::size_t>(count));
        for (LONG y = part.top; y < part.bottom; ++y) {
            choices.assign(static_cast<std::size_t>(count), Choice::Foreground);
            Row row = {part.left, y, count, targetPixels.data(), sourcePixels.data(), choices.data(), false};
            if (source)
                source->Fetch(row);
            target.Read(part.left, y, count, row.target);
            operation.Run(row);
            target.Write(part.left, y, count, row.target);
        }
    }
}

} // namespace engine::raster
