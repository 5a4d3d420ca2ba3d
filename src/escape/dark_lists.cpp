#include "escape/dark_lists.h"

namespace koru {

constinit SortedIdSet DarkProcessList = {};
constinit SortedIdSet DarkIdList = {};
constinit SortedIdSet DarkSurfaceList = {};

} // namespace koru
