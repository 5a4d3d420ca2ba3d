#pragma once

// Each writes one object of a call: the object, where to write (null: nothing is done), the room in
// bytes. Each gives the bytes it wrote, 0 when it left the object out, and says in the debug output
// what did not fit. Messages are part of what clients know, misspellings included.

#include "capture/encoding_layouts.h"

namespace koru {

// `bitsFlag`: BitsCaptureMask has the call's bit. `rectangle`: the part of the surface that the call
// reads, null for all of it. Neither leaves a trace while saving bits is switched off.
ULONG ExpandSurfObj(const SURFOBJ* pso, BYTE* at, ULONG room, ULONG bitsFlag = 0, const RECTL* rectangle = nullptr);
ULONG ExpandClipObj(CLIPOBJ* pco, BYTE* at, ULONG room);
ULONG ExpandBrushObj(const BRUSHOBJ* pbo, BYTE* at, ULONG room); // a null brush is written as -1
ULONG ExpandXLATEOBJ(XLATEOBJ* pxlo, BYTE* at, ULONG room);

ULONG ExpandDEVMODEW(const DEVMODEW* pdm, BYTE* at, ULONG room);
ULONG ExpandLogFont(const LOGFONTW* plf, BYTE* at, ULONG room);
ULONG ExpandDevInfo(const DEVINFO* pdi, BYTE* at, ULONG room);

ULONG ExpandPathObj(PATHOBJ* ppo, BYTE* at, ULONG room);
// Keeps path.subpathCount at the number of entries written. When the points do not fit, the result
// is the size of the last subpath's points, whatever was written.
ULONG ExpandPathData(PATHOBJ* ppo, PathEncoding& path, BYTE* at, ULONG room);
ULONG ExpandLineattrs(const LINEATTRS* plineattrs, BYTE* at, ULONG room);

ULONG ExpandSTROBJ(STROBJ* pstro, BYTE* at, ULONG room);
ULONG ExpandGlyphposArray(const GLYPHPOS* pgp, ULONG count, BYTE* at, ULONG room); // as many as fit
ULONG ExpandFontObj(FONTOBJ* pfo, BYTE* at, ULONG room);

// `length` characters and a terminator, cut to the room.
ULONG ExpandWSTR(const WCHAR* text, ULONG length, BYTE* at, ULONG room);

// A terminated string, of which at most `limit` characters are read. It may stand at an odd address.
constexpr ULONG NoLimit = 0xFFFFFFFF;
ULONG ExpandZWSTR(const void* text, ULONG limit, BYTE* at, ULONG room);
ULONG ExpandDrvZWSTR(const WCHAR* text, BYTE* at, ULONG room);

} // namespace koru
