#include "tests/conformance/records_expect.h"

#include <cstring>

namespace conformance::records {

namespace {

    // The decoded object; none for an argument that was null, with the slot looked at in either case.
    template<class Slot> auto Given(const wire::Record& record, Slot slot, const void* argument)
    {
        auto object = record.At(slot);
        EXPECT_EQ(slot.offset != 0, argument != nullptr) << "the slot of the argument";
        EXPECT_EQ(object.has_value(), argument != nullptr) << "the object";
        if (!argument)
            object.reset();
        return object;
    }

    std::u16string Characters(const wire::Array<char16_t>& characters)
    {
        std::u16string text;
        for (const char16_t character : characters)
            text += character;
        return text;
    }

    // The part of a structure that is recorded as it is.
    void ExpectBytes(const void* recorded, const void* given, std::size_t begin, std::size_t end)
    {
        EXPECT_EQ(std::memcmp(static_cast<const BYTE*>(recorded) + begin, static_cast<const BYTE*>(given) + begin,
                              end - begin),
                  0)
            << "bytes " << begin << " to " << end;
    }

    // Subpaths without the points of nothing that may end an enumeration.
    std::size_t SubpathCount(const engine::Path& path)
    {
        const std::size_t count = path.subpaths.size();
        return count > 0 && path.subpaths.back().points.empty() ? count - 1 : count;
    }

    void ExpectFont(const std::optional<wire::LogFont>& recorded, const LOGFONTW& given)
    {
        constexpr std::size_t cutName = 31; // bytes
        ASSERT_TRUE(recorded);
        ExpectBytes(&recorded->fixed, &given, 0, offsetof(LOGFONTW, lfFaceName) + cutName);
    }

    struct FontName {
        std::optional<wire::WideText> wire::Font::*text;
        std::uint32_t wire::FontEncoding::*offset;
        std::uint32_t wire::FontEncoding::*length;
        LONG IFIMETRICS::*given;
    };

    constexpr FontName FontNames[] = {
        {&wire::Font::familyName, &wire::FontEncoding::familyOffset, &wire::FontEncoding::familyLength,
         &IFIMETRICS::dpwszFamilyName},
        {&wire::Font::styleName, &wire::FontEncoding::styleOffset, &wire::FontEncoding::styleLength,
         &IFIMETRICS::dpwszStyleName},
        {&wire::Font::faceName, &wire::FontEncoding::faceOffset, &wire::FontEncoding::faceLength,
         &IFIMETRICS::dpwszFaceName},
        {&wire::Font::uniqueName, &wire::FontEncoding::uniqueOffset, &wire::FontEncoding::uniqueLength,
         &IFIMETRICS::dpwszUniqueName},
    };

    void ExpectName(const wire::Font& font, const FontName& name, const IFIMETRICS& metrics)
    {
        const LONG offset = metrics.*name.given;
        const auto& recorded = font.*name.text;
        EXPECT_EQ(recorded.has_value(), offset != 0);
        if (!recorded || offset == 0) {
            EXPECT_EQ(font.fixed.*name.offset, 0u);
            return;
        }
        const auto* const text = reinterpret_cast<const WCHAR*>(reinterpret_cast<const BYTE*>(&metrics) + offset);
        EXPECT_EQ(Characters(recorded->characters), text);
        EXPECT_EQ(font.fixed.*name.length, std::u16string(text).size());
        EXPECT_EQ(font.fixed.*name.offset, recorded->range.begin - font.range.begin);
    }

    void ExpectMetrics(const wire::Font& font, const IFIMETRICS* metrics)
    {
        constexpr std::size_t metricsAt = offsetof(wire::FontEncoding, metricsSize);
        const auto* const recorded = reinterpret_cast<const BYTE*>(&font.fixed) + metricsAt;
        if (!metrics) {
            const BYTE zeros[184] = {};
            ExpectBytes(recorded, zeros, 0, sizeof(zeros));
            return;
        }
        ExpectBytes(recorded, metrics, 0, 8);
        ExpectBytes(recorded, metrics, 24, 184);
        for (const FontName& name : FontNames)
            ExpectName(font, name, *metrics);
    }

} // namespace

void Expect(const wire::Record& record, wire::SurfaceSlot slot, const SURFOBJ* pso)
{
    const auto surface = Given(record, slot, pso);
    if (!surface)
        return;
    const wire::SurfaceEncoding& fixed = surface->fixed;
    EXPECT_EQ(fixed.cached, 0);
    EXPECT_EQ(fixed.unique, pso->iUniq);
    EXPECT_EQ(fixed.dhsurf, Number(pso->dhsurf));
    EXPECT_EQ(fixed.hsurf, Number(pso->hsurf));
    EXPECT_EQ(fixed.dhpdev, Number(pso->dhpdev));
    EXPECT_EQ(fixed.hdev, Number(pso->hdev));
    EXPECT_EQ(fixed.size, Wire(pso->sizlBitmap));
    EXPECT_EQ(fixed.bitsSize, pso->cjBits);
    EXPECT_EQ(fixed.bits, Number(pso->pvBits));
    EXPECT_EQ(fixed.scan0, Number(pso->pvScan0));
    EXPECT_EQ(fixed.lDelta, pso->lDelta);
    EXPECT_EQ(fixed.format, pso->iBitmapFormat);
    EXPECT_EQ(fixed.type, pso->iType);
    EXPECT_EQ(fixed.flags, pso->fjBitmap);
    EXPECT_EQ(fixed.savedBits.value, 0u);
    EXPECT_EQ(fixed.reserved.value, 0u);
}

void Expect(const wire::Record& record, wire::ClipSlot slot, const engine::ClipObject* clip)
{
    const auto recorded = Given(record, slot, clip);
    if (!recorded)
        return;
    const wire::ClipEncoding& fixed = recorded->fixed;
    EXPECT_EQ(fixed.cached, 0);
    EXPECT_EQ(fixed.unique, clip->iUniq);
    EXPECT_EQ(fixed.bounds, Wire(clip->rclBounds));
    EXPECT_EQ(fixed.complexity, clip->iDComplexity);
    EXPECT_EQ(fixed.rectComplexity, clip->iFComplexity);
    EXPECT_EQ(fixed.mode, clip->iMode);
    EXPECT_EQ(fixed.options, clip->fjOptions);
    const std::size_t listed = clip->iDComplexity == DC_COMPLEX ? clip->rectangles.size() : 0;
    EXPECT_EQ(fixed.count, listed);
    EXPECT_EQ(fixed.rectanglesOffset, listed ? 36u : 0u);
    ASSERT_EQ(recorded->rectangles.size(), listed);
    for (std::uint32_t i = 0; i < listed; ++i)
        EXPECT_EQ(recorded->rectangles[i], Wire(clip->rectangles[i]));
}

void Expect(const wire::Record& record, wire::BrushSlot slot, const BRUSHOBJ* pbo)
{
    const auto brush = Given(record, slot, pbo);
    if (!brush)
        return;
    EXPECT_EQ(brush->fixed.solidColor, pbo->iSolidColor);
    EXPECT_EQ(brush->fixed.realized, Number(pbo->pvRbrush));
    EXPECT_EQ(brush->fixed.realizedAgain, Number(pbo->pvRbrush));
}

void Expect(const wire::Record& record, wire::XlateSlot slot, const engine::Translation* translation)
{
    const auto xlate = Given(record, slot, translation);
    if (!xlate)
        return;
    EXPECT_EQ(xlate->fixed.unique, translation->iUniq);
    EXPECT_EQ(xlate->fixed.flags, translation->flXlate);
    EXPECT_EQ(xlate->fixed.sourceType, translation->iSrcType);
    EXPECT_EQ(xlate->fixed.destType, translation->iDstType);
    const bool asked = !translation->pulXlate && translation->iSrcType == PAL_INDEXED;
    const bool announced = translation->pulXlate || asked;
    EXPECT_EQ(xlate->fixed.count, announced ? translation->cEntries : 0);
    EXPECT_EQ(xlate->fixed.entriesOffset, announced ? 20u : 0u);
    const std::vector<ULONG>& entries = asked ? translation->vector : translation->table;
    const std::size_t listed = announced && !entries.empty() ? translation->cEntries : 0;
    ASSERT_EQ(xlate->entries.size(), listed);
    for (std::uint32_t i = 0; i < listed; ++i)
        EXPECT_EQ(xlate->entries[i], entries[i]);
}

void Expect(const wire::Record& record, wire::PathSlot slot, const engine::Path* path)
{
    const auto recorded = Given(record, slot, path);
    if (!recorded)
        return;
    EXPECT_EQ(recorded->fixed.flags, path->fl);
    EXPECT_EQ(recorded->fixed.curves, path->cCurves);
    const std::size_t count = SubpathCount(*path);
    ASSERT_EQ(recorded->entries.size(), count);
    EXPECT_EQ(recorded->fixed.entryCount, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        const wire::Subpath subpath = (*recorded)[i];
        const std::vector<POINTFIX>& points = path->subpaths[i].points;
        EXPECT_EQ(subpath.entry.flags, path->subpaths[i].flags);
        EXPECT_EQ(subpath.entry.pointCount, points.size());
        EXPECT_FALSE(subpath.lost);
        ASSERT_EQ(subpath.points.size(), points.size());
        for (std::uint32_t j = 0; j < points.size(); ++j)
            EXPECT_EQ(subpath.points[j], Wire(points[j]));
    }
}

void Expect(const wire::Record& record, wire::LineAttributesSlot slot, const LINEATTRS* plineattrs)
{
    const auto line = Given(record, slot, plineattrs);
    if (!line)
        return;
    ExpectBytes(&line->fixed, plineattrs, 0, offsetof(LINEATTRS, pstyle));
    EXPECT_EQ(line->fixed.styles.value, 0u);
    EXPECT_EQ(line->fixed.styleState, static_cast<ULONG>(plineattrs->elStyleState.l));
    const ULONG listed = plineattrs->pstyle ? plineattrs->cstyle : 0;
    ASSERT_EQ(line->styles.size(), listed);
    for (ULONG i = 0; i < listed; ++i)
        EXPECT_EQ(line->styles[i], static_cast<ULONG>(plineattrs->pstyle[i].l));
}

void Expect(const wire::Record& record, wire::StringSlot slot, const engine::Text* text)
{
    const auto string = Given(record, slot, text);
    if (!string)
        return;
    EXPECT_EQ(string->fixed.codePage, text->codePage);
    EXPECT_EQ(string->fixed.accelFlags, text->flAccel);
    EXPECT_EQ(string->fixed.charInc, text->ulCharInc);
    EXPECT_EQ(string->fixed.rclBackground, Wire(text->rclBkGround));
    EXPECT_EQ(string->fixed.glyphCount, text->glyphs.size());
    ASSERT_EQ(string->glyphs.size(), text->glyphs.size());
    for (std::uint32_t i = 0; i < text->glyphs.size(); ++i) {
        const GLYPHPOS& glyph = text->glyphs[i];
        const GLYPHBITS* const bits = glyph.pgdf ? glyph.pgdf->pgb : nullptr;
        const wire::GlyphPosition recorded = string->glyphs[i];
        EXPECT_EQ(recorded.glyph, glyph.hg);
        EXPECT_EQ(recorded.position, Wire(glyph.ptl));
        EXPECT_EQ(recorded.origin, bits ? Wire(bits->ptlOrigin) : wire::Point());
        EXPECT_EQ(recorded.size, bits ? Wire(bits->sizlBitmap) : wire::Size());
    }
    ASSERT_EQ(string->text.has_value(), text->pwszOrg != nullptr);
    if (!string->text)
        return;
    EXPECT_EQ(Characters(string->text->characters), text->text);
}

void Expect(const wire::Record& record, wire::FontSlot slot, engine::Font* font)
{
    const auto recorded = Given(record, slot, font);
    if (!recorded)
        return;
    EXPECT_EQ(recorded->fixed.cached, 0);
    ExpectBytes(reinterpret_cast<const BYTE*>(&recorded->fixed) + offsetof(wire::FontEncoding, unique),
                static_cast<const FONTOBJ*>(font), 0, sizeof(FONTOBJ));
    ExpectMetrics(*recorded, font->Metrics());
}

void Expect(const wire::Record& record, wire::DeviceModeSlot slot, const DEVMODEW* mode)
{
    const auto recorded = Given(record, slot, mode);
    if (!recorded)
        return;
    // Without the last character of both names and the print quality.
    ExpectBytes(&recorded->fixed, mode, 0, 62);
    ExpectBytes(&recorded->fixed, mode, 64, 90);
    ExpectBytes(&recorded->fixed, mode, 92, 164);
    ExpectBytes(&recorded->fixed, mode, 166, 188);
    EXPECT_EQ(recorded->fixed.deviceName[31], 0);
    EXPECT_EQ(recorded->fixed.formName[31], 0);
}

void Expect(const wire::Record& record, wire::DeviceInfoSlot slot, const DEVINFO* info)
{
    const auto recorded = Given(record, slot, info);
    if (!recorded)
        return;
    const wire::DeviceInfoEncoding& fixed = recorded->fixed;
    EXPECT_EQ(fixed.graphicsCaps, info->flGraphicsCaps);
    EXPECT_EQ(fixed.fontCount, info->cFonts);
    EXPECT_EQ(fixed.ditherFormat, info->iDitherFormat);
    EXPECT_EQ(fixed.ditherWidth, info->cxDither);
    EXPECT_EQ(fixed.ditherHeight, info->cyDither);
    EXPECT_EQ(fixed.defaultPalette, Number(info->hpalDefault));
    ExpectFont(recorded->defaultFont, info->lfDefaultFont);
    ExpectFont(recorded->ansiVariableFont, info->lfAnsiVarFont);
    ExpectFont(recorded->ansiFixedFont, info->lfAnsiFixFont);
}

void Expect(const wire::Record& record, wire::WideTextSlot slot, const WCHAR* text)
{
    const auto recorded = Given(record, slot, text);
    if (!recorded)
        return;
    EXPECT_EQ(Characters(recorded->characters), text);
}

} // namespace conformance::records
