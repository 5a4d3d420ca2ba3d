#pragma once

// Text as DrvTextOut calls.

#include "engine/gdi/device_context.h"

namespace engine::gdi {

constexpr ULONG TA_UPDATECP = 1, TA_RIGHT = 2, TA_CENTER = 6, TA_BOTTOM = 8, TA_BASELINE = 24;
constexpr ULONG ETO_OPAQUE = 0x2, ETO_CLIPPED = 0x4, ETO_GLYPH_INDEX = 0x10, ETO_NO_RECT = 0x100;
constexpr ULONG ETO_SMALL_CHARS = 0x200, ETO_PDY = 0x2000;

struct TextLine {
    POINTL reference = {}; // in logical units, as all here
    std::u16string text;
    ULONG options = 0; // ETO_*
    RECTL rectangle = {};
    std::vector<LONG> advances; // to the next character; with ETO_PDY pairs of along and up; empty: the font's own
    bool advanced = false; // turned and mirrored as the coordinates are, not only scaled
};

void DrawText(DeviceContext& dc, const TextLine& line); // throws CannotPlay

// Of the character set of western Windows.
std::u16string FromCodePage1252(const std::string& text);

} // namespace engine::gdi
