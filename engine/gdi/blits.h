#pragma once

// Bitmaps as display-driver calls. What cannot be said in such a call is CannotPlay.

#include "engine/gdi/device_context.h"

namespace engine::gdi {

constexpr BYTE RopSourceCopy = 0xCC, RopPatternCopy = 0xF0;

// Three corners of where a bitmap goes, on the target's pixels: those of its upper left, upper right and
// lower left corner.
struct Destination {
    PointD origin, right, below;
    // A rectangle in logical units; its far edges are outside.
    static Destination Logical(const DeviceContext& dc, POINTL origin, SIZEL size);
};

struct Source {
    std::shared_ptr<const Bitmap> bitmap;
    RECTL part; // right before left: mirrored; may reach over the bitmap's edges, where nothing is drawn
};

void FillWithRop(DeviceContext& dc, const Destination& destination, BYTE rop3); // of pattern and target alone
void CopyBitmap(DeviceContext& dc, const Destination& destination, const Source& source, BYTE rop3);
// `mask` has one bit per pixel; `maskOrigin` falls on the upper left corner of the source part.
void CopyMasked(DeviceContext& dc, const Destination& destination, const Source& source, const Bitmap& mask,
                POINTL maskOrigin, ROP4 rop4);
void CopyToParallelogram(DeviceContext& dc, const Destination& destination, const Source& source, const Bitmap* mask,
                         POINTL maskOrigin);
void BlendBitmap(DeviceContext& dc, const Destination& destination, const Source& source, BLENDFUNCTION blend);
void CopyTransparent(DeviceContext& dc, const Destination& destination, const Source& source, COLORREF transparent);

struct GradientMesh {
    std::vector<TRIVERTEX> vertices; // in logical units
    std::vector<ULONG> indices; // two or three per part, by mode
    ULONG mode;
};
void FillGradient(DeviceContext& dc, const GradientMesh& mesh);

void SetPixel(DeviceContext& dc, POINTL logical, COLORREF colour);

inline bool UsesSource(BYTE rop3)
{
    return ((rop3 >> 2 ^ rop3) & 0x33) != 0;
}
inline bool UsesPattern(BYTE rop3)
{
    return ((rop3 >> 4 ^ rop3) & 0x0F) != 0;
}

} // namespace engine::gdi
