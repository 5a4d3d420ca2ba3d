#include "engine/gdi/picture.h"

#include <algorithm>

#include "engine/gdi/blits.h"

namespace engine::gdi {

namespace {

    constexpr BYTE PngSignature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

    bool IsPng(Bytes file)
    {
        return file.Size() >= sizeof(PngSignature)
            && std::equal(std::begin(PngSignature), std::end(PngSignature), file.Data());
    }

    bool IsBmp(Bytes file)
    {
        return file.Size() >= 2 && file.Data()[0] == 'B' && file.Data()[1] == 'M';
    }

} // namespace

bool IsPicture(Bytes file)
{
    return IsPng(file) || IsBmp(file);
}

std::shared_ptr<const Bitmap> ReadPicture(Bytes file)
{
    return IsPng(file) ? ReadCompressedPicture(file) : ReadBmpFile(file);
}

void DrawPicture(const DrawingTarget& target, const std::shared_ptr<const Bitmap>& picture, POINTL corner)
{
    DeviceContext dc(target, {}, {});
    const SIZEL size = picture->Size();
    CopyBitmap(dc, Destination::Logical(dc, corner, size), {picture, picture->Pixels().Bounds()}, RopSourceCopy);
}

} // namespace engine::gdi
