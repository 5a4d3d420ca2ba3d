#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace koru::client::test {

// The text of a file of the source tree.
inline std::string SourceFile(const std::string& path)
{
    std::ifstream file(KORU_SOURCE_DIR "/" + path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace koru::client::test
