#include "capture/byte_cursor.h"
#include "capture/encoders.h"
#include "platform/services.h"

namespace koru {

namespace {

    void WriteGlyph(const GLYPHPOS& glyph, GlyphEncoding& encoding)
    {
        const GLYPHBITS* const bits = glyph.pgdf ? glyph.pgdf->pgb : nullptr;
        encoding.hg = glyph.hg;
        encoding.ptl = glyph.ptl;
        encoding.ptlOrigin = bits ? bits->ptlOrigin : POINTL{};
        encoding.sizlBitmap = bits ? bits->sizlBitmap : SIZEL{};
    }

    ULONG ExpandNextGlyphs(STROBJ* pstro, BYTE* at, ULONG room, bool& more)
    {
        constexpr BOOL Error = -1;
        ULONG count = 0;
        GLYPHPOS* pgp = nullptr;
        const BOOL result = STROBJ_bEnum(pstro, &count, &pgp);
        more = result != FALSE && result != Error;
        return result != Error && pgp ? ExpandGlyphposArray(pgp, count, at, room) : 0;
    }

    ULONG ExpandEnumeratedGlyphs(STROBJ* pstro, BYTE* at, ULONG room)
    {
        ByteCursor cursor(at, room);
        STROBJ_vEnumStart(pstro);
        for (bool more = true; more;) {
            const ULONG size = ExpandNextGlyphs(pstro, cursor.At(), cursor.Left(), more);
            cursor.Advance(size);
            if (size == 0)
                break;
        }
        STROBJ_vEnumStart(pstro); // whoever draws the string begins anew
        return cursor.Offset();
    }

    void AppendGlyphs(STROBJ* pstro, StringEncoding& encoding, ByteCursor& cursor)
    {
        const ULONG size = pstro->pgp ? ExpandGlyphposArray(pstro->pgp, pstro->cGlyphs, cursor.At(), cursor.Left())
                                      : ExpandEnumeratedGlyphs(pstro, cursor.At(), cursor.Left());
        const bool isComplete = size / sizeof(GlyphEncoding) == pstro->cGlyphs;
        if (!pstro->pgp && !isComplete) {
            DebugPrintPiece("STROBJ_bEnum != dwGlyphs");
            return; // the string overwrites them
        }
        if (pstro->pgp && size == 0)
            return;
        encoding.glyphs = cursor.Offset();
        cursor.Advance(size);
    }

} // namespace

ULONG ExpandSTROBJ(STROBJ* pstro, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<StringEncoding>(at, room, "ExpandSTROBJ: Buffer too small. ");
    if (!encoding)
        return 0;
    encoding->codePage = STROBJ_dwGetCodePage(pstro);
    encoding->flAccel = pstro->flAccel;
    encoding->ulCharInc = pstro->ulCharInc;
    encoding->rclBkGround = pstro->rclBkGround;
    encoding->cGlyphs = pstro->cGlyphs;
    encoding->glyphs = 0;
    encoding->string = 0;

    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    AppendGlyphs(pstro, *encoding, cursor);
    if (pstro->pwszOrg) {
        encoding->string = cursor.Offset();
        cursor.Advance(ExpandWSTR(pstro->pwszOrg, pstro->cGlyphs, cursor.At(), cursor.Left()));
    }
    return cursor.Offset();
}

ULONG ExpandGlyphposArray(const GLYPHPOS* pgp, ULONG count, BYTE* at, ULONG room)
{
    if (!at)
        return 0;
    ByteCursor cursor(at, room);
    for (ULONG i = 0; i < count && cursor.Holds(1, sizeof(GlyphEncoding)); ++i) {
        WriteGlyph(pgp[i], *reinterpret_cast<GlyphEncoding*>(cursor.At()));
        cursor.Advance(sizeof(GlyphEncoding));
    }
    if (!cursor.Holds(1, sizeof(GlyphEncoding))) // also when the last one just fitted
        DebugPrintNumber("ExpandGlyphposArray. Warning buffer too small. ", cursor.Left());
    return cursor.Offset();
}

} // namespace koru
