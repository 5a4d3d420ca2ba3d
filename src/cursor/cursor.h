#pragma once

#include "platform/platform.h"

namespace koru {

// The pointer as the driver draws it into the VirtualScreen. One for the driver; every call works on
// the Screen of the surface it is given.
class CCursor {
public:
    // Forgets the shape; at the centre of a screen of this size.
    void Initialise(const SIZEL& screen);
    // Forgets the shape; hidden.
    void Reset();

    // The size of the last shape taken, 0 x 0 when there is none.
    SIZEL Size() const;

    // DrvSetPointerShape: takes the shape and draws it. `touched` is what must be shown anew. Always
    // SPS_ACCEPT_NOEXCLUDE. `pso` is the surface as the engine gave it and may be null.
    ULONG ChangeShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot, LONG x,
                      LONG y, RECTL* prcl, FLONG fl, RECTL& touched);

    ULONG SetShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot, LONG x,
                   LONG y, RECTL* prcl, FLONG fl);
    // What must be shown anew.
    RECTL Move(SURFOBJ* pso, LONG x, LONG y, RECTL* prclBounds);
    void Draw(SURFOBJ* pso);
    bool SaveIntoUnderCursor(SURFOBJ* pso);
    void RestoreFromUnderCursor(SURFOBJ* pso);

    // Takes the cursor off where a drawing call writes or reads; surfaces as the engine gave them, any
    // of them and of the rectangles null.
    void ExcludeBeforeDrawing(SURFOBJ* psoTrg, const RECTL* prclTrg, SURFOBJ* psoSrc, const RECTL* prclSrc);
    // Puts it back afterwards.
    void RedrawAfterDrawing(SURFOBJ* psoTrg, SURFOBJ* psoSrc);

private:
    bool IsVisible() const;
    void PlaceAt(LONG x, LONG y, LONG screenHeight);
    void MeasureShape(const SURFOBJ* psoMask, const SURFOBJ* psoColor);
    void TakeXlate(const XLATEOBJ* pxlo);
    void FreeXlate();
    void MakeWorkBitmaps(ULONG format);
    bool IsOnScreenOf(const SURFOBJ* pso) const;
    void FollowFormatOf(const SURFOBJ* pso);
    void ReleaseShape();
    // `part` of `psoCursor`, which holds the background; that may be null.
    void ComposeColour(SURFOBJ* psoCursor, const RECTL& part, const BYTE* colourTable);
    void ComposeMonochrome(SURFOBJ* psoCursor, const RECTL& part);

    HSURF UnderCursor = nullptr;
    HSURF Cursor = nullptr;
    HSURF mask_ = nullptr;
    HSURF colour_ = nullptr;
    XLATEOBJ* xlate_ = nullptr;
    ULONG screenWidth_ = 0, screenHeight_ = 0;
    BYTE redraw_ = 0;
    ULONG width_ = 0, height_ = 0;
    LONG x_ = -1, y_ = 0;
    LONG xHot_ = 0, yHot_ = 0;
    RECTL rect_ = {};
    bool isSaved_ = false; // UnderCursor holds what the cursor covers
    DHPDEV device_ = nullptr; // on whose screen it was drawn last
    ULONG format_ = 0; // that UnderCursor and Cursor were last asked for in
};

extern CCursor SoftwareCursor;

} // namespace koru
