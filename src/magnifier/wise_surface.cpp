#include "magnifier/wise_surface.h"

#include "chain/module_loader.h"
#include "driver/debug_print.h"
#include "driver/locked_surface.h"
#include "magnifier/blits.h"
#include "magnifier/rectangle.h"
#include "platform/platform.h"

namespace koru::WiseSurface {

namespace {

    struct Record {
        HSURF image;
        HSURF mask; // bits that are 1 keep the picture underneath
        HSURF aux;
        ROP4 rop;
        POINTL origin; // of the client's picture, in its bitmap and in the image
        RECTL sourceRect; // of the screen: what the overlay covers
        LONG width, height; // that the image was made with
        ULONG format;
    };
    constinit Record overlay = {};

    constexpr ROP4 Copy = 0xCCCC, Keep = 0xAAAA, And = 0x8888, AndNot = 0x2222, Or = 0xEEEE;

    LONG Sum(LONG a, LONG b)
    {
        return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b));
    }
    LONG Difference(LONG a, LONG b)
    {
        return static_cast<LONG>(static_cast<ULONG>(a) - static_cast<ULONG>(b));
    }

    // The engine cannot run such an operation without a brush.
    bool NeedsPattern(ROP4 rop)
    {
        return ((rop ^ rop >> 4) & 0x0F) != 0;
    }

    bool IsSmallerThanImage(LONG width, LONG height)
    {
        return width < overlay.width || height < overlay.height;
    }

    HSURF MakeScreenBitmap(ULONG width, ULONG height, ULONG format, const char* failure)
    {
        const HSURF bitmap = MakeBitmap(width, height, format, RowBytes(width, format));
        if (!bitmap)
            DebugPrint(failure);
        return bitmap;
    }

    // A bitmap of another format counts as one that does not lock: nothing would translate its colours.
    bool LockLike(LockedSurface& surface, HSURF bitmap, const SURFOBJ& picture)
    {
        if (surface.Lock(bitmap) && surface->iBitmapFormat == picture.iBitmapFormat)
            return true;
        surface.Unlock();
        return false;
    }

    bool CanCopyToScreen()
    {
        if (RealFunction<PFN_DrvCopyBits>(INDEX_DrvCopyBits))
            return true;
        DebugPrint("CopyImage: Error copybits is not supported.\n");
        return false;
    }

    // Mask and work bitmap: inside the mask the picture as it was, outside of it the merged one.
    void MergeMasked(SURFOBJ* psoPicture, SURFOBJ* psoImage, SURFOBJ* psoMask, SURFOBJ* psoAux, const RECTL& clip,
                     const POINTL& point)
    {
        const POINTL corner = CornerOf(clip);
        if (overlay.rop == Copy) {
            CopyBitsCut(psoAux, psoImage, clip, point);
        } else {
            CopyBitsCut(psoAux, psoPicture, clip, corner);
            if (overlay.rop != Keep)
                BitBltCut(psoAux, psoImage, clip, point, overlay.rop);
        }
        BitBltCut(psoPicture, psoMask, clip, point, And);
        BitBltCut(psoAux, psoMask, clip, point, AndNot);
        BitBltCut(psoPicture, psoAux, clip, corner, Or);
    }

    void Merge(SURFOBJ* psoPicture, const RECTL& rectangle)
    {
        LockedSurface psoImage, psoMask, psoAux;
        if (!LockLike(psoImage, overlay.image, *psoPicture)) {
            DebugPrint("I cannot lock the wise surface!!!!\n");
            DebugPrintNumber("WiseSurf ", NumberOf(overlay.image));
            DebugPrintNumber("WiseRop ", overlay.rop);
            return;
        }
        RECTL clip;
        if (NeedsPattern(overlay.rop) || !IntersectRect(clip, overlay.sourceRect, rectangle))
            return;
        POINTL point = {Sum(overlay.origin.x, Difference(clip.left, overlay.sourceRect.left)),
                        Sum(overlay.origin.y, Difference(clip.top, overlay.sourceRect.top))};
        if (!CutBlit(psoPicture->sizlBitmap, psoImage->sizlBitmap, clip, point))
            return;
        if (!LockLike(psoMask, overlay.mask, *psoPicture)) {
            BitBltCut(psoPicture, psoImage.Get(), clip, point, overlay.rop);
            return;
        }
        if (!CutBlit(psoPicture->sizlBitmap, psoMask->sizlBitmap, clip, point))
            return;
        if (!LockLike(psoAux, overlay.aux, *psoPicture)) {
            BitBltCut(psoPicture, psoMask.Get(), clip, point, And);
            BitBltCut(psoPicture, psoImage.Get(), clip, point, Or);
            return;
        }
        if (CutBlit(psoAux->sizlBitmap, psoMask->sizlBitmap, clip, point))
            MergeMasked(psoPicture, psoImage.Get(), psoMask.Get(), psoAux.Get(), clip, point);
    }

} // namespace

bool IsActive()
{
    return overlay.image != nullptr;
}

BOOL SetImage(ULONG width, ULONG height, ULONG format, ULONG level, const POINTL& origin, const RECTL& sourceRect,
              SURFOBJ* psoClient, HDEV hdev)
{
    // A larger request keeps a smaller image.
    if (IsSmallerThanImage(static_cast<LONG>(width), static_cast<LONG>(height)) || format != overlay.format)
        DropBitmap(overlay.image);
    if (!overlay.image) {
        overlay.width = static_cast<LONG>(width);
        overlay.height = static_cast<LONG>(height);
        overlay.format = format;
        overlay.image = MakeScreenBitmap(width, height, format, "Failed to create hBmp !!!! \n");
        if (!overlay.image)
            return FALSE;
    }
    if (!EngAssociateSurface(overlay.image, hdev, HOOK_SYNCHRONIZEACCESS))
        DebugPrint("Associate Failed!!!!\n");
    overlay.rop = level * 0x0101;
    overlay.origin = origin;
    overlay.sourceRect = sourceRect;
    const LockedSurface psoImage(overlay.image);
    const RECTL target = {origin.x, origin.y, Sum(origin.x, Difference(sourceRect.right, sourceRect.left)),
                          Sum(origin.y, Difference(sourceRect.bottom, sourceRect.top))};
    if (psoImage)
        CopyBitsCut(psoImage.Get(), psoClient, target, origin);
    return TRUE;
}

BOOL SetMask(ULONG width, ULONG height, ULONG format, const RECTL& rectangle, SURFOBJ* psoClient)
{
    if (IsSmallerThanImage(static_cast<LONG>(width), static_cast<LONG>(height)))
        DropMask();
    if (!overlay.mask) {
        DropBitmap(overlay.aux); // left over when the mask could not be made
        overlay.mask = MakeScreenBitmap(width, height, format, "Failed to create Mask !!!! \n");
        overlay.aux = MakeScreenBitmap(width, height, format, "Failed to create Aux !!!! \n");
    }
    if (!overlay.mask || !overlay.aux)
        return FALSE;
    const LockedSurface psoMask(overlay.mask);
    if (!psoMask) {
        DebugPrint("Mask is not created!!!! \n");
        return FALSE;
    }
    return CopyBitsCut(psoMask.Get(), psoClient, rectangle, CornerOf(rectangle));
}

void DropMask()
{
    DropBitmap(overlay.mask);
    DropBitmap(overlay.aux);
}

void Destroy()
{
    DropBitmap(overlay.image);
    DropMask();
    overlay = {};
}

BOOL CopyImage(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoWork, const RECTL& rectangle)
{
    if (!overlay.image)
        return CopyToScreenCut(psoDest, psoSrc, rectangle);
    if (!psoWork)
        return FALSE;
    CopyBitsCut(psoWork, psoSrc, rectangle, CornerOf(rectangle));
    return MergeAndCopy(psoDest, psoWork, rectangle);
}

BOOL MergeAndCopy(SURFOBJ* psoDest, SURFOBJ* psoPicture, const RECTL& rectangle)
{
    if (!CanCopyToScreen())
        return FALSE;
    if (overlay.image)
        Merge(psoPicture, rectangle);
    return CopyToScreenCut(psoDest, psoPicture, rectangle);
}

BOOL CopyUnmerged(SURFOBJ* psoDest, SURFOBJ* psoPicture, const RECTL& rectangle)
{
    return CanCopyToScreen() ? CopyToScreenCut(psoDest, psoPicture, rectangle) : FALSE;
}

} // namespace koru::WiseSurface
