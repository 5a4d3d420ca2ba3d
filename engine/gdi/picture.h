#pragma once

// Pictures drawn without scaling.

#include "engine/gdi/device_context.h"

namespace engine::gdi {

bool IsPicture(Bytes file); // PNG or BMP, by its first bytes
std::shared_ptr<const Bitmap> ReadPicture(Bytes file); // throws DamagedData
void DrawPicture(const DrawingTarget& target, const std::shared_ptr<const Bitmap>& picture, POINTL corner);

} // namespace engine::gdi
