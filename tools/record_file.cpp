#include "tools/record_file.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tools {

using namespace koru::client;

std::vector<std::byte> ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file.is_open() || file.bad())
        throw std::runtime_error(path + ": cannot be read");
    const auto* bytes = reinterpret_cast<const std::byte*>(content.data());
    return {bytes, bytes + content.size()};
}

std::string ForEachFrame(const std::string& path, std::span<const std::byte> file,
                         const std::function<void(const Frame&)>& visit)
{
    if (file.size() < StreamHeaderSize || std::memcmp(file.data(), StreamMagic, StreamHeaderSize) != 0)
        throw std::runtime_error(path + ": is not a record stream");
    StreamReader reader(file);
    while (const auto frame = reader.Next())
        visit(*frame);
    if (!reader.FirstBadOffset())
        return "";
    char text[160];
    std::snprintf(text, sizeof(text), ": damaged at offset %zu (%zu places, %zu bytes skipped)",
                  *reader.FirstBadOffset(), reader.BadPlaces(), reader.SkippedBytes());
    return path + text;
}

} // namespace tools
