#pragma once

// One pixel wide lines by grid intersection quantization: of each column (of a line that is rather flat; else
// row) that the line crosses the nearest pixel, the upper (left) one of two equally near. A line lights the
// pixels whose diamonds it leaves (the diamond-exit rule of J. D. Hobby): not the one in which it ends.

#include <vector>

#include "engine/raster/rectangles.h"
#include "engine/raster/scan_converter.h"

namespace engine::raster {

class CosmeticLine {
public:
    CosmeticLine(const FixPoint& from, const FixPoint& to);

    std::int64_t Count() const { return count_; } // pixels, numbered from 0 in drawing order
    bool IsFlat() const { return flat_; } // columns rather than rows are counted

    // The numbers of the pixels that may lie within bounds: [first, behind).
    struct Stretch {
        std::int64_t first, behind;
    };
    Stretch Within(const RECTL& bounds) const;

    // Adds those pixels of bounds, of a part of the line, as rectangles of one row or column. In drawing order.
    void AddRuns(Stretch part, const RECTL& bounds, std::vector<RECTL>& runs) const;

private:
    std::int64_t MinorOf(std::int64_t major) const;

    bool flat_;
    bool forwards_; // towards greater major coordinates
    std::int64_t first_ = 0, count_ = 0; // major coordinate of pixel 0, how many
    FixPoint low_; // the end with the lesser major coordinate, as {major, minor}
    std::int64_t majorSize_, minorSize_; // from it to the other end
};

} // namespace engine::raster
