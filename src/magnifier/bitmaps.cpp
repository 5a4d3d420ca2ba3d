#include "magnifier/bitmaps.h"

#include "driver/handles.h"
#include "platform/constants.h"
#include "platform/services.h"

namespace koru {

ULONG BitsPerPixel(ULONG iBitmapFormat)
{
    static constexpr ULONG bits[] = {0, 1, 4, 8, 16, 24, 32}; // by BMF_*
    return iBitmapFormat <= BMF_32BPP ? bits[iBitmapFormat] : 0;
}

ULONG PlainFormat(ULONG iBitmapFormat)
{
    if (iBitmapFormat == BMF_4RLE)
        return BMF_4BPP;
    return iBitmapFormat == BMF_8RLE ? BMF_8BPP : iBitmapFormat;
}

LONG RowBytes(ULONG width, ULONG format)
{
    return static_cast<LONG>((BitsPerPixel(PlainFormat(format)) * width + 7) / 8);
}

HSURF MakeBitmap(ULONG width, ULONG height, ULONG format, LONG stride)
{
    const ULONG plain = PlainFormat(format);
    if (BitsPerPixel(plain) == 0)
        return nullptr;
    const SIZEL size = {static_cast<LONG>(width), static_cast<LONG>(height)};
    return SurfaceOf(EngCreateBitmap(size, stride, plain, BMF_TOPDOWN, nullptr));
}

void DropBitmap(HSURF& bitmap)
{
    if (bitmap)
        EngDeleteSurface(bitmap);
    bitmap = nullptr;
}

} // namespace koru
