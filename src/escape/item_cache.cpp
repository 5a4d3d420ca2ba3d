#include "escape/item_cache.h"

#include "driver/debug_print.h"
#include "escape/sorted_id_set.h"

namespace koru {

namespace {

    constinit SortedIdSet ClipCache = {};
    constinit SortedIdSet SurfaceCache = {};
    constinit SortedIdSet FontCache = {};

    SortedIdSet* CacheOf(ULONG type)
    {
        switch (type) {
        case CacheOfClips:
            return &ClipCache;
        case CacheOfSurfaces:
            return &SurfaceCache;
        case CacheOfFonts:
            return &FontCache;
        default:
            DebugPrintPiece("AddCacheItem. Cache type is unknown\n");
            return nullptr;
        }
    }

} // namespace

BOOL AddCacheItem(ULONG type, ULONG value)
{
    SortedIdSet* const cache = CacheOf(type);
    return cache ? cache->Insert(value) : FALSE;
}

BOOL RemoveCacheItem(ULONG type, ULONG value)
{
    SortedIdSet* const cache = CacheOf(type);
    return cache ? cache->Remove(value) : FALSE;
}

BOOL ClearCache(ULONG type)
{
    SortedIdSet* const cache = CacheOf(type);
    if (!cache)
        return FALSE;
    cache->Clear();
    return TRUE;
}

BOOL IsCached(ULONG type, ULONG value)
{
    const SortedIdSet* const cache = CacheOf(type);
    return cache && cache->Contains(value);
}

} // namespace koru
