#pragma once

#include "platform/types.h"

namespace koru {

// Handles travel in records and escapes as plain 32-bit numbers.
inline ULONG NumberOf(const volatile void* pointer)
{
    return reinterpret_cast<ULONG>(pointer);
}

// A bitmap's handle is a surface handle by another name, and so is a dhsurf that names a bitmap.
inline HSURF SurfaceOf(HBITMAP bitmap)
{
    return reinterpret_cast<HSURF>(bitmap);
}
inline HSURF SurfaceOf(DHSURF dhsurf)
{
    return reinterpret_cast<HSURF>(dhsurf);
}
inline DHSURF DhsurfOf(HSURF surface)
{
    return reinterpret_cast<DHSURF>(surface);
}

} // namespace koru
