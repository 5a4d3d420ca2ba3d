#include "tools/arrow.h"

#include <string_view>

namespace tools {

namespace {

    constexpr LONG Size = 16;

    // '#' black, 'o' white, '.' what is below.
    constexpr std::string_view rows[Size] = {
        "#...............", "##..............", "#o#.............", "#oo#............",
        "#ooo#...........", "#oooo#..........", "#ooooo#.........", "#oooooo#........",
        "#ooooooo#.......", "#oooooooo#......", "#ooooo#####.....", "#oo#oo#.........",
        "#o#.#oo#........", "##..#oo#........", ".....#oo#.......", "......##........",
    };

} // namespace

void ShowArrow(engine::Device& device, LONG x, LONG y)
{
    // The rows that are combined by AND stand above those that are combined by XOR.
    engine::Surface* const mask = engine::MakeBitmap({Size, 2 * Size}, engine::PixelLayout::Default(BMF_1BPP));
    for (LONG row = 0; row < Size; ++row)
        for (LONG column = 0; column < Size; ++column) {
            const char pixel = rows[row][static_cast<std::size_t>(column)];
            mask->SetPixel(column, row, pixel == '.' ? 1 : 0);
            mask->SetPixel(column, row + Size, pixel == 'o' ? 1 : 0);
        }
    RECTL covered = {};
    device.Driver().Function<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(
        device.PrimarySurface(), mask, nullptr, nullptr, 0, 0, x, y, &covered, SPS_CHANGE);
    engine::DestroyBitmap(mask);
}

} // namespace tools
