#pragma once

#include "platform/types.h"

namespace koru {

// Unique numbers of engine objects that the client already holds.
enum CacheType : ULONG { CacheOfClips = 1, CacheOfSurfaces = 2, CacheOfFonts = 4 };

// Any other type prints a message and answers 0, in each of these.
BOOL AddCacheItem(ULONG type, ULONG value);
BOOL RemoveCacheItem(ULONG type, ULONG value);
BOOL ClearCache(ULONG type);
BOOL IsCached(ULONG type, ULONG value);

} // namespace koru
