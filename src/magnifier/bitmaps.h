#pragma once

#include "platform/types.h"

// Engine bitmaps for the driver's own use: top-down, zeroed.
namespace koru {

// Bits per pixel of a plain format, 0 for others.
ULONG BitsPerPixel(ULONG iBitmapFormat);

// The plain format of an RLE one; other formats unchanged.
ULONG PlainFormat(ULONG iBitmapFormat);

// Bytes of a row as the screen-sized bitmaps ask for them. The engine may lay rows out wider: address
// pixels by the locked surface's own delta.
LONG RowBytes(ULONG width, ULONG format);

// Null when there is no such format or memory is short.
HSURF MakeBitmap(ULONG width, ULONG height, ULONG format, LONG stride);

// Deletes the bitmap, if there is one, and forgets it.
void DropBitmap(HSURF& bitmap);

} // namespace koru
