#pragma once

#include "platform/services.h"

namespace koru {

// An image's export as a Function, or null. The null image is the engine itself.
template<class Function> Function FindExport(HANDLE image, const char* name)
{
    return reinterpret_cast<Function>(EngFindImageProcAddress(image, const_cast<char*>(name)));
}

} // namespace koru
