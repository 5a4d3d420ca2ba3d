#pragma once

// Pictures as text, a letter a pixel, so that tests show what they expect.
//     . black   W white   R red   G green   B blue   N navy   K grey   S silver   T teal   Y yellow   M maroon

#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "engine/core/surface.h"

namespace pictures {

// The pixel formats that there are kernels for, 16 bits in both layouts.
enum class Form { Bits4, Bits8, Bits565, Bits555, Bits24, Bits32 };
constexpr Form AllForms[] = {Form::Bits4, Form::Bits8, Form::Bits565, Form::Bits555, Form::Bits24, Form::Bits32};
std::string NameOf(Form form);
ULONG FormatOf(Form form); // BMF_*
engine::PixelLayout LayoutOf(Form form);
ULONG DepthOf(Form form); // as a mode asks for it: 15 for 5-5-5

ULONG PixelOf(char letter, Form form);

// Lines of equal length, each ended by a line end: what EXPECT_EQ shows line by line.
std::string Lines(std::initializer_list<const char*> lines);
std::string Filled(LONG width, LONG height, char letter);
std::string Stretched(const std::string& picture, LONG xFactor, LONG yFactor);
std::string Part(const std::string& picture, const RECTL& rectangle);
std::string WithRectangle(std::string picture, const RECTL& rectangle, char letter);
std::string WithPicture(std::string picture, LONG x, LONG y, const std::string& other);
// Letters swapped two for two: "WR" turns white to red and red to white.
std::string Swapped(std::string picture, char one, char other);
std::string RandomPicture(std::mt19937& random, LONG width, LONG height, const std::string& letters);

SIZEL SizeOf(const std::string& picture);
engine::Surface* MakeSurface(const std::string& picture, Form form, LONG lDelta = 0);
void Paint(engine::Surface& surface, LONG x, LONG y, const std::string& picture, Form form);
std::string PictureOf(const engine::Surface& surface, Form form); // '?' for pixels without a letter
std::string PictureOf(const engine::Surface& surface, Form form, const RECTL& rectangle);
engine::Surface& SurfaceBehind(HSURF surface); // a test failure's end when there is none

} // namespace pictures

bool operator==(const RECTL& a, const RECTL& b);
bool operator==(const POINTL& a, const POINTL& b);
bool operator==(const SIZEL& a, const SIZEL& b);
std::ostream& operator<<(std::ostream& out, const RECTL& r);
std::ostream& operator<<(std::ostream& out, const POINTL& p);
