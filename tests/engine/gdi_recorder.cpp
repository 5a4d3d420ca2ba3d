#include "tests/engine/gdi_recorder.h"

#include <cstdio>

namespace gdi_tests {

using namespace engine;

Lines calls;
Lines glyphs;
std::vector<BYTE> fontMetrics;
std::u16string textDrawn;

namespace {

    HDEV device;

    std::string Hex(ULONG value)
    {
        char text[9];
        std::snprintf(text, sizeof(text), "%X", static_cast<unsigned>(value));
        return text;
    }
    std::string Pixels(FIX value)
    {
        char text[24];
        std::snprintf(text, sizeof(text), "%g", value / 16.0);
        return text;
    }
    std::string Show(const POINTL* p)
    {
        return p ? "(" + std::to_string(p->x) + "," + std::to_string(p->y) + ")" : "-";
    }
    std::string Show(const POINTFIX& p)
    {
        return "(" + Pixels(p.x) + "," + Pixels(p.y) + ")";
    }
    std::string Show(const RECTL* r)
    {
        return r ? "(" + std::to_string(r->left) + "," + std::to_string(r->top) + "," + std::to_string(r->right) + ","
                + std::to_string(r->bottom) + ")"
                 : "-";
    }

    std::string Show(CLIPOBJ* pco)
    {
        if (!pco)
            return "clip -";
        if (pco->iDComplexity != DC_COMPLEX)
            return (pco->iDComplexity == DC_TRIVIAL ? "clip all" : "clip rect") + Show(&pco->rclBounds);
        std::string text = "clip parts" + Show(&pco->rclBounds) + ":";
        for (const RECTL& rectangle : static_cast<ClipObject*>(pco)->rectangles)
            text += Show(&rectangle);
        return text;
    }

    std::string Show(const BRUSHOBJ* pbo)
    {
        if (!pbo)
            return "brush -";
        const auto& brush = static_cast<const Brush&>(*pbo);
        if (brush.IsSolid())
            return "brush " + Hex(brush.iSolidColor);
        if (brush.hatch < HS_DDI_MAX)
            return "hatch " + std::to_string(brush.hatch) + " " + Hex(brush.forePixel) + " on " + Hex(brush.backPixel);
        std::string text = "pattern";
        for (LONG y = 0; y < brush.pattern->sizlBitmap.cy; ++y)
            for (LONG x = 0; x < brush.pattern->sizlBitmap.cx; ++x)
                text += (x == 0 ? " | " : " ") + Hex(brush.pattern->Pixel(x, y));
        return text;
    }

    std::string Show(PATHOBJ* ppo)
    {
        std::string text = "path";
        for (const Path::Subpath& run : static_cast<Path*>(ppo)->subpaths) {
            if (run.flags & PD_BEGINSUBPATH)
                text += " m";
            text += run.flags & PD_BEZIERS ? "c" : "l";
            for (const POINTFIX& point : run.points)
                text += Show(point);
            if (run.flags & PD_CLOSEFIGURE)
                text += "z";
        }
        return text;
    }

    std::string Show(const LINEATTRS& line)
    {
        if (!(line.fl & LA_GEOMETRIC)) {
            std::string text = "line " + std::to_string(line.elWidth.l);
            text += line.fl & LA_ALTERNATE ? " alternate" : line.fl & LA_STARTGAP ? " gaps" : "";
            for (ULONG i = 0; i < line.cstyle; ++i)
                text += (i == 0 ? " style " : ",") + std::to_string(line.pstyle[i].l);
            return text;
        }
        char buffer[80];
        std::snprintf(buffer, sizeof(buffer), "wide %g join %u cap %u limit %g", line.elWidth.e,
                      static_cast<unsigned>(line.iJoin), static_cast<unsigned>(line.iEndCap), line.eMiterLimit);
        std::string text = buffer;
        for (ULONG i = 0; i < line.cstyle; ++i) {
            std::snprintf(buffer, sizeof(buffer), "%s%g", i == 0 ? " style " : ",", line.pstyle[i].e);
            text += buffer;
        }
        return text;
    }

    std::string Show(const SURFOBJ* source)
    {
        if (!source)
            return "source -";
        return "source " + std::to_string(source->sizlBitmap.cx) + "x" + std::to_string(source->sizlBitmap.cy) + "/"
            + std::to_string(static_cast<const Surface*>(source)->layout.BitsPerPixel());
    }

    BOOL Note(const std::string& line)
    {
        calls.push_back(line);
        return TRUE;
    }

    BOOL APIENTRY NoteBitBlt(SURFOBJ*, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ*, RECTL* prclTrg,
                             POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4)
    {
        std::string line = "BitBlt " + Show(prclTrg) + " rop " + Hex(rop4) + " " + Show(pbo);
        if (psoSrc)
            line += " " + Show(psoSrc) + " at " + Show(pptlSrc);
        if (psoMask)
            line += " mask at " + Show(pptlMask);
        if (pptlBrush->x != 0 || pptlBrush->y != 0)
            line += " origin " + Show(pptlBrush);
        return Note(line + " " + Show(pco));
    }

    BOOL APIENTRY NoteCopyBits(SURFOBJ*, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ*, RECTL* prclDest, POINTL* pptlSrc)
    {
        return Note("CopyBits " + Show(prclDest) + " " + Show(psoSrc) + " at " + Show(pptlSrc) + " " + Show(pco));
    }

    BOOL APIENTRY NoteStretchBlt(SURFOBJ*, SURFOBJ* psoSrc, SURFOBJ*, CLIPOBJ* pco, XLATEOBJ*, COLORADJUSTMENT* pca,
                                 POINTL*, RECTL* prclDest, RECTL* prclSrc, POINTL*, ULONG iMode)
    {
        return Note("StretchBlt " + Show(prclDest) + " from " + Show(prclSrc) + " " + Show(psoSrc) + " mode "
                    + std::to_string(iMode) + (pca ? " adjusted " : " ") + Show(pco));
    }

    BOOL APIENTRY NoteStretchBltRop(SURFOBJ*, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ*,
                                    COLORADJUSTMENT*, POINTL*, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                                    ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4)
    {
        return Note("StretchBltROP " + Show(prclDest) + " from " + Show(prclSrc) + " " + Show(psoSrc) + " mode "
                    + std::to_string(iMode) + " rop " + Hex(rop4) + " " + Show(pbo)
                    + (psoMask ? " mask at " + Show(pptlMask) : "") + " " + Show(pco));
    }

    BOOL APIENTRY NotePlgBlt(SURFOBJ*, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ*, COLORADJUSTMENT*,
                             POINTL*, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl, ULONG iMode)
    {
        return Note("PlgBlt " + Show(pptfx[0]) + Show(pptfx[1]) + Show(pptfx[2]) + " from " + Show(prcl) + " "
                    + Show(psoSrc) + (psoMsk ? " mask at " + Show(pptl) : "") + " mode " + std::to_string(iMode) + " "
                    + Show(pco));
    }

    BOOL APIENTRY NoteStrokePath(SURFOBJ*, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ*, BRUSHOBJ* pbo, POINTL*,
                                 LINEATTRS* plineattrs, MIX mix)
    {
        return Note("StrokePath " + Show(ppo) + " " + Show(*plineattrs) + " " + Show(pbo) + " mix " + Hex(mix) + " "
                    + Show(pco));
    }

    BOOL APIENTRY NoteFillPath(SURFOBJ*, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL*, MIX mix, FLONG flOptions)
    {
        return Note("FillPath " + Show(ppo) + " " + Show(pbo) + " mix " + Hex(mix) + " options " + Hex(flOptions) + " "
                    + Show(pco));
    }

    BOOL APIENTRY NoteStrokeAndFillPath(SURFOBJ*, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ*, BRUSHOBJ* pboStroke,
                                        LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL*, MIX mixFill, FLONG flOptions)
    {
        return Note("StrokeAndFillPath " + Show(ppo) + " " + Show(*plineattrs) + " " + Show(pboStroke) + " over "
                    + Show(pboFill) + " mix " + Hex(mixFill) + " options " + Hex(flOptions) + " " + Show(pco));
    }

    BOOL APIENTRY NotePaint(SURFOBJ*, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL*, MIX mix)
    {
        return Note("Paint " + Show(pbo) + " mix " + Hex(mix) + " " + Show(pco));
    }

    std::string ShowGlyph(const GLYPHPOS& glyph)
    {
        const GLYPHBITS& bits = *glyph.pgdf->pgb;
        std::string text = Show(&glyph.ptl) + " + " + Show(&bits.ptlOrigin) + " " + std::to_string(bits.sizlBitmap.cx)
            + "x" + std::to_string(bits.sizlBitmap.cy);
        const LONG rowBytes = (bits.sizlBitmap.cx + 7) / 8;
        for (LONG y = 0; y < bits.sizlBitmap.cy; ++y) {
            text += ' ';
            for (LONG x = 0; x < bits.sizlBitmap.cx; ++x)
                text += bits.aj[y * rowBytes + x / 8] & 0x80 >> x % 8 ? '#' : '.';
        }
        return text;
    }

    BOOL APIENTRY NoteTextOut(SURFOBJ*, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                              BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL*, MIX mix)
    {
        glyphs.clear();
        for (ULONG i = 0; i < pstro->cGlyphs; ++i)
            glyphs.push_back(ShowGlyph(pstro->pgp[i]));
        textDrawn = pstro->pwszOrg;
        const auto* const metrics = reinterpret_cast<const BYTE*>(FONTOBJ_pifi(pfo));
        fontMetrics.assign(metrics, metrics + FONTOBJ_pifi(pfo)->cjThis);
        std::string line = "TextOut " + std::to_string(pstro->cGlyphs) + " glyphs in " + Show(&pstro->rclBkGround)
            + " accel " + Hex(pstro->flAccel) + " inc " + std::to_string(pstro->ulCharInc);
        for (; prclExtra && (prclExtra->right != 0 || prclExtra->bottom != 0); ++prclExtra)
            line += " extra " + Show(prclExtra);
        if (prclOpaque)
            line += " opaque " + Show(prclOpaque) + " " + Show(pboOpaque);
        return Note(line + " " + Show(pboFore) + " mix " + Hex(mix) + " " + Show(pco));
    }

    BOOL APIENTRY NoteLineTo(SURFOBJ*, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2,
                             RECTL* prclBounds, MIX mix)
    {
        const POINTL from = {x1, y1}, to = {x2, y2};
        return Note("LineTo " + Show(&from) + "-" + Show(&to) + " in " + Show(prclBounds) + " " + Show(pbo) + " mix "
                    + Hex(mix) + " " + Show(pco));
    }

    BOOL APIENTRY NoteAlphaBlend(SURFOBJ*, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ*, RECTL* prclDest, RECTL* prclSrc,
                                 BLENDOBJ* pBlendObj)
    {
        const BLENDFUNCTION& blend = pBlendObj->BlendFunction;
        return Note("AlphaBlend " + Show(prclDest) + " from " + Show(prclSrc) + " " + Show(psoSrc) + " alpha "
                    + Hex(blend.SourceConstantAlpha) + " format " + Hex(blend.AlphaFormat) + " " + Show(pco));
    }

    BOOL APIENTRY NoteGradientFill(SURFOBJ*, CLIPOBJ* pco, XLATEOBJ*, TRIVERTEX* pVertex, ULONG nVertex, void* pMesh,
                                   ULONG nMesh, RECTL* prclExtents, POINTL*, ULONG ulMode)
    {
        std::string line = "GradientFill";
        for (ULONG i = 0; i < nVertex; ++i)
            line += " (" + std::to_string(pVertex[i].x) + "," + std::to_string(pVertex[i].y) + ") "
                + Hex(pVertex[i].Red) + "/" + Hex(pVertex[i].Green) + "/" + Hex(pVertex[i].Blue);
        line += " mesh";
        for (ULONG i = 0; i < nMesh * (ulMode == GRADIENT_FILL_TRIANGLE ? 3 : 2); ++i)
            line += " " + std::to_string(static_cast<ULONG*>(pMesh)[i]);
        return Note(line + " mode " + std::to_string(ulMode) + " in " + Show(prclExtents) + " " + Show(pco));
    }

    BOOL APIENTRY NoteTransparentBlt(SURFOBJ*, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ*, RECTL* prclDst, RECTL* prclSrc,
                                     ULONG iTransColor, ULONG)
    {
        return Note("TransparentBlt " + Show(prclDst) + " from " + Show(prclSrc) + " " + Show(psoSrc) + " but "
                    + Hex(iTransColor) + " " + Show(pco));
    }

    SIZEL size;

    DHPDEV APIENTRY EnablePdev(DEVMODEW* pdm, WCHAR*, ULONG, HSURF*, ULONG, ULONG*, ULONG, DEVINFO*, HDEV, WCHAR*,
                               HANDLE)
    {
        size = {static_cast<LONG>(pdm->dmPelsWidth), static_cast<LONG>(pdm->dmPelsHeight)};
        return reinterpret_cast<DHPDEV>(1);
    }
    void APIENTRY CompletePdev(DHPDEV, HDEV hdev)
    {
        device = hdev;
    }
    void APIENTRY DisablePdev(DHPDEV) { }
    HBITMAP screen;
    HSURF APIENTRY EnableSurface(DHPDEV)
    {
        constexpr FLONG hooks = HOOK_BITBLT | HOOK_COPYBITS | HOOK_STRETCHBLT | HOOK_STRETCHBLTROP | HOOK_PLGBLT
            | HOOK_STROKEPATH | HOOK_FILLPATH | HOOK_STROKEANDFILLPATH | HOOK_PAINT | HOOK_TEXTOUT | HOOK_LINETO
            | HOOK_ALPHABLEND | HOOK_GRADIENTFILL | HOOK_TRANSPARENTBLT;
        screen = EngCreateBitmap(size, size.cx * 4, BMF_32BPP, BMF_TOPDOWN, nullptr);
        EngAssociateSurface(reinterpret_cast<HSURF>(screen), device, hooks);
        return reinterpret_cast<HSURF>(screen);
    }
    void APIENTRY DisableSurface(DHPDEV)
    {
        EngDeleteSurface(reinterpret_cast<HSURF>(screen));
    }

    template<class Function> DRVFN Entry(ULONG index, Function* function)
    {
        return {index, reinterpret_cast<PFN>(function)};
    }

    BOOL APIENTRY EnableDriver(ULONG, ULONG, DRVENABLEDATA* pded)
    {
        static DRVFN table[] = {
            Entry(INDEX_DrvEnablePDEV, EnablePdev),
            Entry(INDEX_DrvCompletePDEV, CompletePdev),
            Entry(INDEX_DrvDisablePDEV, DisablePdev),
            Entry(INDEX_DrvEnableSurface, EnableSurface),
            Entry(INDEX_DrvDisableSurface, DisableSurface),
            Entry(INDEX_DrvBitBlt, NoteBitBlt),
            Entry(INDEX_DrvCopyBits, NoteCopyBits),
            Entry(INDEX_DrvStretchBlt, NoteStretchBlt),
            Entry(INDEX_DrvStretchBltROP, NoteStretchBltRop),
            Entry(INDEX_DrvPlgBlt, NotePlgBlt),
            Entry(INDEX_DrvStrokePath, NoteStrokePath),
            Entry(INDEX_DrvFillPath, NoteFillPath),
            Entry(INDEX_DrvStrokeAndFillPath, NoteStrokeAndFillPath),
            Entry(INDEX_DrvPaint, NotePaint),
            Entry(INDEX_DrvTextOut, NoteTextOut),
            Entry(INDEX_DrvLineTo, NoteLineTo),
            Entry(INDEX_DrvAlphaBlend, NoteAlphaBlend),
            Entry(INDEX_DrvGradientFill, NoteGradientFill),
            Entry(INDEX_DrvTransparentBlt, NoteTransparentBlt),
        };
        *pded = {DDI_DRIVER_VERSION_NT5_01, std::size(table), table};
        return TRUE;
    }

} // namespace

Recorded::Recorded()
{
    engine_.RegisterImage(u"recorder", Exports{{"DrvEnableDriver", reinterpret_cast<PFN>(EnableDriver)}});
    driver_ = std::make_unique<DisplayDriver>(u"recorder");
    device_ = std::make_unique<Device>(*driver_);
    EXPECT_TRUE(device_->Enable({40, 30, 32})) << device_->Error();
    calls.clear();
}

Recorded::~Recorded()
{
    device_.reset();
    driver_.reset();
    engine_.CheckGuards();
    EXPECT_EQ(engine_.Violations(), Lines());
}

Lines Recorded::Play(Metafile metafile, bool whitePage)
{
    metafile.End();
    const gdi::DrawingTarget target = {device_->PrimarySurface(), device_->Layout(), {0, 0, 40, 30}};
    calls.clear();
    gdi::PlayBytes(target, std::span<const BYTE>(metafile.bytes), "test", report_, error_, {false, whitePage});
    EXPECT_EQ(error_, "");
    return calls;
}

Lines Recorded::PlayInto(Metafile metafile, const RECTL& where, bool actualSize)
{
    metafile.End();
    calls.clear();
    const gdi::DrawingTarget target = {device_->PrimarySurface(), device_->Layout(), where};
    gdi::PlayBytes(target, std::span<const BYTE>(metafile.bytes), "test", report_, error_, {actualSize, false});
    EXPECT_EQ(error_, "");
    return calls;
}

Surface& Painted::Play(Metafile metafile, ULONG format, LONG width, LONG height)
{
    metafile.End();
    Surface& surface = *MakeBitmap({width, height}, PixelLayout::Default(format));
    const gdi::DrawingTarget target = {&surface, surface.layout, surface.Bounds()};
    gdi::PlayBytes(target, std::span<const BYTE>(metafile.bytes), "test", report_, error_, {});
    EXPECT_EQ(error_, "");
    return surface;
}

COLORREF Painted::ColourAt(const Surface& surface, LONG x, LONG y)
{
    const COLORREF colour = surface.layout.ColourOf(surface.Pixel(x, y));
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | colour >> 16;
}

std::string Painted::Row(const Surface& surface, LONG y)
{
    std::string text;
    for (LONG x = 0; x < surface.sizlBitmap.cx;) {
        const COLORREF colour = ColourAt(surface, x, y);
        LONG end = x;
        while (end < surface.sizlBitmap.cx && ColourAt(surface, end, y) == colour)
            ++end;
        char run[24];
        std::snprintf(run, sizeof(run), "%s%d*%06X", x == 0 ? "" : " ", static_cast<int>(end - x),
                      static_cast<unsigned>(colour));
        text += run;
        x = end;
    }
    return text;
}

void Painted::TearDown()
{
    engine_.CheckGuards();
    EXPECT_EQ(engine_.Violations(), Lines());
}

} // namespace gdi_tests
