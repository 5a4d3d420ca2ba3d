#pragma once

#include "platform/objects.h"

namespace koru {

// The client's overlay, merged into every picture on its way to the RealScreen. One for the driver.
namespace WiseSurface {

    bool IsActive(); // there is an image; a mask alone is not enough

    // `psoClient` is the client's bitmap (already its locked backing where it has one), `hdev` the
    // device of the bitmap as the client gave it. 0 when the image could not be made.
    BOOL SetImage(ULONG width, ULONG height, ULONG format, ULONG level, const POINTL& origin, const RECTL& sourceRect,
                  SURFOBJ* psoClient, HDEV hdev);
    // 0 when mask and work bitmap could not be made or do not lock.
    BOOL SetMask(ULONG width, ULONG height, ULONG format, const RECTL& rectangle, SURFOBJ* psoClient);
    void DropMask();
    void Destroy();

    // Copies to the screen with the real driver's DrvCopyBits, the overlay merged. `psoWork` may be
    // null: then nothing is copied while there is an image.
    BOOL CopyImage(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoWork, const RECTL& rectangle);

    // Merges the overlay into `psoPicture` and copies that to the screen. 0, with a message and without
    // merging, when the real driver has no DrvCopyBits.
    BOOL MergeAndCopy(SURFOBJ* psoDest, SURFOBJ* psoPicture, const RECTL& rectangle);

    // The same without the overlay, for a picture that must stay as it is.
    BOOL CopyUnmerged(SURFOBJ* psoDest, SURFOBJ* psoPicture, const RECTL& rectangle);

} // namespace WiseSurface

} // namespace koru
