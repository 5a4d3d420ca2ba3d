#include "engine/gdi/dib.h"

#include <algorithm>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#ifndef __clang_analyzer__ // which would look into it
#define STB_IMAGE_IMPLEMENTATION
#endif
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

    // The decoder's own reader of memory believes sizes that lead far behind the end.
    class PictureFile {
    public:
        explicit PictureFile(Bytes bytes)
            : bytes_(bytes)
        {
        }

        static int Read(void* file, char* data, int size)
        {
            auto& self = *static_cast<PictureFile*>(file);
            const auto count = std::min(static_cast<std::size_t>(size), self.bytes_.Size() - self.at_);
            std::copy_n(self.bytes_.Data() + self.at_, count, data);
            self.at_ += count;
            return static_cast<int>(count);
        }
        static void Skip(void* file, int size)
        {
            auto& self = *static_cast<PictureFile*>(file);
            const std::int64_t to = static_cast<std::int64_t>(self.at_) + size;
            self.at_ = static_cast<std::size_t>(
                std::clamp<std::int64_t>(to, 0, static_cast<std::int64_t>(self.bytes_.Size())));
        }
        static int IsAtEnd(void* file)
        {
            const auto& self = *static_cast<PictureFile*>(file);
            return self.at_ == self.bytes_.Size();
        }

    private:
        Bytes bytes_;
        std::size_t at_ = 0;
    };

    constexpr stbi_io_callbacks Callbacks = {PictureFile::Read, PictureFile::Skip, PictureFile::IsAtEnd};

    ULONG OverWhite(BYTE component, BYTE alpha)
    {
        return (component * alpha + 255u * (255u - alpha) + 127) / 255;
    }

    void CopyPixels(const stbi_uc* pixel, Surface& target)
    {
        for (LONG y = 0; y < target.sizlBitmap.cy; ++y)
            for (LONG x = 0; x < target.sizlBitmap.cx; ++x, pixel += Channels)
                target.SetPixel(x, y,
                                OverWhite(pixel[0], pixel[3]) << 16 | OverWhite(pixel[1], pixel[3]) << 8
                                    | OverWhite(pixel[2], pixel[3]));
    }

} // namespace

std::shared_ptr<const Bitmap> ReadCompressedPicture(Bytes file)
{
    int width = 0, height = 0, channels = 0;
    PictureFile header(file), whole(file);
    if (!stbi_info_from_callbacks(&Callbacks, &header, &width, &height, &channels))
        throw DamagedData("picture that cannot be read");
    if (width <= 0 || height <= 0 || std::int64_t{width} * height > MostExpandedPixels)
        throw DamagedData("picture too large");
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_callbacks(&Callbacks, &whole, &width, &height, &channels, Channels), stbi_image_free);
    if (!pixels)
        throw DamagedData("picture that cannot be read");
    auto bitmap = std::make_shared<Bitmap>(SIZEL{width, height}, PixelLayout::Default(BMF_32BPP));
    CopyPixels(pixels.get(), bitmap->Pixels());
    return bitmap;
}

} // namespace engine::gdi
