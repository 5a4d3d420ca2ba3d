#pragma once

#include <string>

namespace links {

// The built file of this name, beside koru.dll.
inline std::string ImageFile(const std::string& name)
{
    return KORU_SOURCE_DIR "/build/image/" + name;
}

} // namespace links
