#pragma once

// The loop of every pixel operation: row by row, part by part, a source fetches its pixels and an
// operation combines them with the target's. Formats differ in reading and writing a row alone.

#include <vector>

#include "engine/raster/bitmap.h"

namespace engine::raster {

// How a pixel is drawn. A mask chooses between foreground and background.
enum class Choice : BYTE {
    Background,
    Foreground,
    Nothing, // the target's pixel stays
};

struct Row {
    LONG x, y, count; // target coordinates
    ULONG* target; // the pixels as they are, then as they become
    ULONG* source; // as the source surface has them
    Choice* choices; // Foreground, unless the source says otherwise
    bool hasChoices; // it did
};

class RowSource {
public:
    virtual ~RowSource() = default;
    virtual void Fetch(Row& row) const = 0;
};

class RowOperation {
public:
    virtual ~RowOperation() = default;
    virtual void Run(Row& row) const = 0;
};

// The parts lie in the target's area. `source` is null for operations without one.
void DrawRows(const Bitmap& target, const std::vector<RECTL>& parts, const RowSource* source,
              const RowOperation& operation);

} // namespace engine::raster
