#include "engine/gdi/dib.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_NO_STDIO
#define STBI_MAX_DIMENSIONS 32768
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

namespace engine::gdi {

namespace {

    constexpr int Channels = 4; // red, green, blue, alpha

    ULONG OverWhite(BYTE component, BYTE alpha)
    {
        return (component * alpha + 255u * (255u - alpha) + 127) / 255;
    }

    void CopyPixels(const stbi_uc* pixel, Surface& target)
    {
        for (LONG y = 0; y < target.sizlBitmap.cy; ++y)
            for (LONG x = 0; x < target.sizlBitmap.cx; ++x, pixel += Channels)
                target.SetPixel(x, y, OverWhite(pixel[0], pixel[3]) << 16 | OverWhite(pixel[1], pixel[3]) << 8
                                          | OverWhite(pixel[2], pixel[3]));
    }

} // namespace

std::shared_ptr<const Bitmap> ReadCompressedPicture(Bytes file)
{
    int width = 0, height = 0, channels = 0;
    const auto size = static_cast<int>(file.Size());
    if (file.IsEmpty() || !stbi_info_from_memory(file.Data(), size, &width, &height, &channels))
        throw DamagedData("picture that cannot be read");
    if (width <= 0 || height <= 0 || std::int64_t{width} * height > MostExpandedPixels)
        throw DamagedData("picture too large");
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_memory(file.Data(), size, &width, &height, &channels, Channels), stbi_image_free);
    if (!pixels)
        throw DamagedData("picture that cannot be read");
    auto bitmap = std::make_shared<Bitmap>(SIZEL{width, height}, PixelLayout::Default(BMF_32BPP));
    CopyPixels(pixels.get(), bitmap->Pixels());
    return bitmap;
}

} // namespace engine::gdi
