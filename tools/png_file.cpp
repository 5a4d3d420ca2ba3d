#include "tools/png_file.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wshadow"
#ifndef __clang_analyzer__ // which would look into it
#define STB_IMAGE_WRITE_IMPLEMENTATION
#endif
#define STB_IMAGE_WRITE_STATIC
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace tools {

std::vector<unsigned char> EncodePng(const engine::Surface& bitmap)
{
    const int width = bitmap.sizlBitmap.cx;
    const int height = bitmap.sizlBitmap.cy;
    std::vector<unsigned char> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    for (LONG y = 0; y < height; ++y)
        for (LONG x = 0; x < width; ++x) {
            const COLORREF colour = bitmap.layout.ColourOf(bitmap.Pixel(x, y));
            for (const int shift : {0, 8, 16})
                pixels.push_back(static_cast<unsigned char>(colour >> shift));
        }
    std::vector<unsigned char> file;
    stbi_write_png_to_func(
        [](void* target, void* data, int size) {
            const auto* bytes = static_cast<const unsigned char*>(data);
            static_cast<std::vector<unsigned char>*>(target)->insert(
                static_cast<std::vector<unsigned char>*>(target)->end(), bytes, bytes + size);
        },
        &file, width, height, 3, pixels.data(), width * 3);
    return file;
}

} // namespace tools
