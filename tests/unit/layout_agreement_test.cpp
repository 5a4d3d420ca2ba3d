// What the driver writes and what clients read are declared twice, once for each side. Both are one layout.

#include <gtest/gtest.h>

#include <ostream>
#include <utility>
#include <vector>

#include "capture/call_bits.h"
#include "capture/capture_state.h"
#include "capture/device_record_layouts.h"
#include "capture/drawing_record_layouts.h"
#include "capture/encoding_layouts.h"
#include "client/records.h"

namespace {

namespace client = koru::client;

struct Place {
    std::size_t offset, size;
    friend bool operator==(const Place&, const Place&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Place& place)
    {
        return out << place.size << " bytes at " << place.offset;
    }
};

struct Pair {
    const char* field; // the driver's name of it
    Place driver, client;
};

// One structure as both sides declare it.
struct Agreement {
    const char* name;
    std::size_t driverSize, clientSize;
    std::vector<Pair> pairs; // all fields, in their order
    friend std::ostream& operator<<(std::ostream& out, const Agreement& agreement) { return out << agreement.name; }
};

// clang-format off
#define PLACE(Structure, field) Place{offsetof(Structure, field), sizeof(std::declval<Structure&>().field)}
#define PAIR(driverField, clientField) Pair{#driverField, PLACE(Driver, driverField), PLACE(Client, clientField)}
#define SAME(field) PAIR(field, field)
#define AGREEMENT(name, DriverType, ClientType, ...)                                                                   \
    [] {                                                                                                               \
        using Driver = DriverType;                                                                                     \
        using Client = client::ClientType;                                                                             \
        return Agreement{name, sizeof(Driver), sizeof(Client), {__VA_ARGS__}};                                         \
    }()
// clang-format on

std::vector<Agreement> Records()
{
    return {
        AGREEMENT("AssertMode", koru::AssertModeRecord, AssertModeRecord, SAME(header), SAME(dhpdev),
                  PAIR(bEnable, enable)),
        AGREEMENT("EnablePDEV", koru::EnablePdevRecord, EnablePDEVRecord, SAME(header), PAIR(devMode, deviceMode),
                  PAIR(logAddress, logicalAddress), SAME(patternCount), SAME(patterns),
                  PAIR(devInfoSize, deviceInfoSize), PAIR(devInfo, deviceInfo), SAME(hdev),
                  PAIR(dhpdevReturned, dhpdev), SAME(deviceName), PAIR(hDriver, driverHandle)),
        AGREEMENT("DisablePDEV", koru::DisablePdevRecord, DisablePDEVRecord, SAME(header), SAME(dhpdev),
                  SAME(unwritten)),
        AGREEMENT("CompletePDEV", koru::CompletePdevRecord, CompletePDEVRecord, SAME(header), SAME(dhpdev), SAME(hdev)),
        AGREEMENT("EnableSurface", koru::EnableSurfaceRecord, EnableSurfaceRecord, SAME(header), SAME(dhpdev),
                  PAIR(hsurfReturned, hsurf)),
        AGREEMENT("DisableSurface", koru::DisableSurfaceRecord, DisableSurfaceRecord, SAME(header), SAME(dhpdev),
                  SAME(unwritten)),
        AGREEMENT("CreateDeviceBitmap", koru::CreateDeviceBitmapRecord, CreateDeviceBitmapRecord, SAME(header),
                  PAIR(hbmReturned, hbitmap), SAME(hsurfBacking), SAME(dhpdev), PAIR(sizl, size),
                  PAIR(iFormat, format)),
        AGREEMENT("DeleteDeviceBitmap", koru::DeleteDeviceBitmapRecord, DeleteDeviceBitmapRecord, SAME(header),
                  SAME(dhsurf), SAME(unwritten)),
        AGREEMENT("BitBlt", koru::BitBltRecord, BitBltRecord, SAME(header), SAME(surface), SAME(source), SAME(mask),
                  SAME(clip), SAME(xlate), SAME(brush), SAME(rclTrg), SAME(ptlSrc), SAME(ptlMask), SAME(ptlBrush),
                  SAME(rop4), SAME(unwritten)),
        AGREEMENT("StretchBlt", koru::StretchBltRecord, StretchBltRecord, SAME(header), SAME(surface), SAME(source),
                  SAME(mask), SAME(clip), SAME(xlate), SAME(rclDest), SAME(rclSrc), PAIR(iMode, mode)),
        AGREEMENT("FillPath", koru::FillPathRecord, FillPathRecord, SAME(header), SAME(surface), SAME(path), SAME(clip),
                  SAME(brush), PAIR(ptlBrushOrg, ptlBrush), SAME(mix), PAIR(flOptions, options)),
        AGREEMENT("LineTo", koru::LineToRecord, LineToRecord, SAME(header), SAME(surface), SAME(clip), SAME(brush),
                  SAME(x1), SAME(y1), SAME(x2), SAME(y2), SAME(mix)),
        AGREEMENT("MovePointer", koru::MovePointerRecord, MovePointerRecord, SAME(header), SAME(surface), SAME(x),
                  SAME(y), SAME(rcl), SAME(unwritten)),
        AGREEMENT("SetPointerShape", koru::SetPointerShapeRecord, SetPointerShapeRecord, SAME(header), SAME(surface),
                  SAME(mask), SAME(color), SAME(xlate), SAME(xHot), SAME(yHot), SAME(x), SAME(y), SAME(rcl),
                  PAIR(fl, flags), PAIR(zero, reserved)),
        AGREEMENT("Paint", koru::PaintRecord, PaintRecord, SAME(header), SAME(surface), SAME(clip), SAME(brush),
                  PAIR(ptlBrushOrg, ptlBrush), SAME(mix)),
        AGREEMENT("StrokePath", koru::StrokePathRecord, StrokePathRecord, SAME(header), SAME(surface), SAME(path),
                  SAME(clip), SAME(brush), PAIR(lineAttrs, lineAttributes), PAIR(ptlBrushOrg, ptlBrush), SAME(mix)),
        AGREEMENT("TextOut", koru::TextOutRecord, TextOutRecord, SAME(header), SAME(surface), SAME(string), SAME(font),
                  SAME(clip), SAME(extraCount), SAME(extra), SAME(foreBrush), SAME(opaqueBrush), SAME(rclOpaque),
                  PAIR(ptlOrg, ptlOrigin), SAME(mix), SAME(unwritten)),
        AGREEMENT("RealizeBrush", koru::RealizeBrushRecord, RealizeBrushRecord, SAME(header), SAME(brush),
                  PAIR(surface, target), SAME(pattern), SAME(mask), SAME(xlate), PAIR(iHatch, hatch)),
        AGREEMENT("DitherColor", koru::DitherColorRecord, DitherColorRecord, SAME(header), SAME(dhpdev),
                  PAIR(iMode, mode), SAME(rgb), PAIR(firstDithered, dither), SAME(returned), SAME(unwritten)),
        AGREEMENT("GetModes", koru::GetModesRecord, GetModesRecord, SAME(header), PAIR(hDriver, driverHandle),
                  PAIR(cjSize, outputSize), PAIR(devMode, deviceMode), SAME(unwritten)),
        AGREEMENT("CopyBits", koru::CopyBitsRecord, CopyBitsRecord, SAME(header), SAME(surface), SAME(source),
                  SAME(clip), SAME(xlate), SAME(rclDest), SAME(ptlSrc)),
        AGREEMENT("SaveScreenBits", koru::SaveScreenBitsRecord, SaveScreenBitsRecord, SAME(header), SAME(surface),
                  PAIR(iMode, mode), SAME(ident), SAME(rcl), SAME(returned)),
        AGREEMENT("SetPalette", koru::SetPaletteRecord, SetPaletteRecord, SAME(header), PAIR(unwritten, unwritten0),
                  PAIR(fl, flags), PAIR(iStart, start), PAIR(cColors, count), SAME(entries),
                  PAIR(unwrittenEnd, unwritten1)),
        AGREEMENT("Escape", koru::EscapeRecord, EscapeRecord, SAME(header), SAME(returned), SAME(surface),
                  PAIR(iEsc, code), PAIR(cjIn, inputSize), SAME(input), PAIR(cjOut, outputSize), SAME(output),
                  SAME(unwritten)),
        AGREEMENT("AlphaBlend", koru::AlphaBlendRecord, AlphaBlendRecord, SAME(header), SAME(surface), SAME(source),
                  SAME(clip), SAME(xlate), SAME(rclDest), SAME(rclSrc), PAIR(blendFunction, blend), SAME(unwritten)),
        AGREEMENT("GradientFill", koru::GradientFillRecord, GradientFillRecord, SAME(header), SAME(surface), SAME(clip),
                  SAME(xlate), PAIR(array, arrays), PAIR(nVertex, vertexCount), PAIR(zero, reserved),
                  PAIR(nMesh, meshCount), SAME(rclExtents), PAIR(ptlDitherOrg, ptlDither), PAIR(ulMode, mode)),
        AGREEMENT("TransparentBlt", koru::TransparentBltRecord, TransparentBltRecord, SAME(header), SAME(surface),
                  SAME(source), SAME(clip), SAME(xlate), PAIR(rclDst, rclDest), SAME(rclSrc),
                  PAIR(iTransColor, transparentColor), PAIR(ulReserved, reserved)),
        AGREEMENT("StretchBltROP", koru::StretchBltRopRecord, StretchBltROPRecord, SAME(header), SAME(surface),
                  SAME(source), SAME(mask), SAME(clip), SAME(xlate), PAIR(ca, adjustment), PAIR(ptlHTOrg, ptlHalftone),
                  SAME(rclDest), SAME(rclSrc), SAME(ptlMask), PAIR(iMode, mode), SAME(brush), SAME(rop4)),
        AGREEMENT("PlgBlt", koru::PlgBltRecord, PlgBltRecord, SAME(header), SAME(surface), SAME(source), SAME(mask),
                  SAME(clip), SAME(xlate), PAIR(ca, adjustment), PAIR(ptlBrushOrg, ptlBrush), SAME(corners),
                  SAME(rclSrc), SAME(ptlMask), PAIR(iMode, mode)),
        AGREEMENT("StrokeAndFillPath", koru::StrokeAndFillPathRecord, StrokeAndFillPathRecord, SAME(header),
                  SAME(surface), SAME(path), SAME(clip), SAME(strokeBrush), PAIR(lineAttrs, lineAttributes),
                  SAME(fillBrush), PAIR(ptlBrushOrg, ptlBrush), SAME(mixFill), PAIR(flOptions, options)),
    };
}

std::vector<Agreement> Others()
{
    return {
        AGREEMENT("RecordHeader", koru::RecordHeader, RecordHeader, PAIR(length, totalLength), SAME(callType),
                  SAME(suspended), PAIR(process, identifier0), PAIR(secondId, identifier1), SAME(unwritten),
                  SAME(timeStamp), PAIR(reserved[0], reserved0), PAIR(reserved[1], reserved1)),
        AGREEMENT("Surface", koru::SurfaceEncoding, SurfaceEncoding, SAME(cached), SAME(unwritten), PAIR(iUniq, unique),
                  SAME(dhsurf), SAME(hsurf), SAME(dhpdev), SAME(hdev), PAIR(sizlBitmap, size), PAIR(cjBits, bitsSize),
                  PAIR(pvBits, bits), PAIR(pvScan0, scan0), SAME(lDelta), PAIR(iBitmapFormat, format),
                  PAIR(iType, type), PAIR(fjBitmap, flags), SAME(savedBits), SAME(reserved)),
        AGREEMENT("Clip", koru::ClipEncoding, ClipEncoding, SAME(cached), SAME(unwritten), PAIR(iUniq, unique),
                  PAIR(rclBounds, bounds), PAIR(iDComplexity, complexity), PAIR(iFComplexity, rectComplexity),
                  PAIR(iMode, mode), PAIR(fjOptions, options), PAIR(rectangleCount, count),
                  PAIR(rectangles, rectanglesOffset)),
        AGREEMENT("Brush", koru::BrushEncoding, BrushEncoding, PAIR(iSolidColor, solidColor), PAIR(pvRbrush, realized),
                  PAIR(pvRbrushAgain, realizedAgain)),
        AGREEMENT("Xlate", koru::XlateEncoding, XlateEncoding, PAIR(iUniq, unique), PAIR(flXlate, flags),
                  PAIR(iSrcType, sourceType), PAIR(iDstType, destType), PAIR(cEntries, count),
                  PAIR(entries, entriesOffset)),
        AGREEMENT("DeviceMode", koru::DevModeEncoding, DeviceModeEncoding, PAIR(dmDeviceName, deviceName),
                  PAIR(dmSpecVersion, specVersion), PAIR(dmDriverVersion, driverVersion), PAIR(dmSize, size),
                  PAIR(dmDriverExtra, driverExtra), PAIR(dmFields, fields), PAIR(dmOrientation, orientation),
                  PAIR(dmPaperSize, paperSize), PAIR(dmPaperLength, paperLength), PAIR(dmPaperWidth, paperWidth),
                  PAIR(dmScale, scale), PAIR(dmCopies, copies), PAIR(dmDefaultSource, defaultSource),
                  PAIR(unwritten, printQuality), PAIR(dmColor, color), PAIR(dmDuplex, duplex),
                  PAIR(dmYResolution, yResolution), PAIR(dmTTOption, ttOption), PAIR(dmCollate, collate),
                  PAIR(dmFormName, formName), PAIR(dmLogPixels, logPixels), PAIR(dmBitsPerPel, bitsPerPel),
                  PAIR(dmPelsWidth, width), PAIR(dmPelsHeight, height), PAIR(dmDisplayFlags, displayFlags),
                  PAIR(dmDisplayFrequency, frequency)),
        AGREEMENT("LogFont", koru::LogFontEncoding, LogFontEncoding, PAIR(lfHeight, height), PAIR(lfWidth, width),
                  PAIR(lfEscapement, escapement), PAIR(lfOrientation, orientation), PAIR(lfWeight, weight),
                  PAIR(lfItalic, italic), PAIR(lfUnderline, underline), PAIR(lfStrikeOut, strikeOut),
                  PAIR(lfCharSet, charSet), PAIR(lfOutPrecision, outPrecision), PAIR(lfClipPrecision, clipPrecision),
                  PAIR(lfQuality, quality), PAIR(lfPitchAndFamily, pitchAndFamily), PAIR(lfFaceName, faceName)),
        AGREEMENT("DeviceInfo", koru::DevInfoEncoding, DeviceInfoEncoding, PAIR(flGraphicsCaps, graphicsCaps),
                  PAIR(defaultFont, defaultFontOffset), PAIR(ansiVarFont, ansiVariableFontOffset),
                  PAIR(ansiFixFont, ansiFixedFontOffset), PAIR(cFonts, fontCount), PAIR(iDitherFormat, ditherFormat),
                  PAIR(cxDither, ditherWidth), PAIR(cyDither, ditherHeight), PAIR(hpalDefault, defaultPalette)),
        AGREEMENT("Path", koru::PathEncoding, PathEncoding, PAIR(fl, flags), PAIR(cCurves, curves), SAME(unwritten),
                  PAIR(subpathCount, entryCount), PAIR(pathData, dataOffset)),
        AGREEMENT("PathEntry", koru::SubpathEncoding, PathEntry, SAME(flags), PAIR(count, pointCount),
                  PAIR(points, pointsOffset)),
        AGREEMENT("LineAttributes", koru::LineAttrsEncoding, LineAttributesEncoding, PAIR(fl, flags), PAIR(iJoin, join),
                  PAIR(iEndCap, endCap), PAIR(elWidth, width), PAIR(eMiterLimit, miterLimit), PAIR(cstyle, styleCount),
                  PAIR(pstyle, styles), PAIR(elStyleState, styleState)),
        AGREEMENT("String", koru::StringEncoding, StringEncoding, SAME(codePage), PAIR(flAccel, accelFlags),
                  PAIR(ulCharInc, charInc), PAIR(rclBkGround, rclBackground), PAIR(cGlyphs, glyphCount),
                  PAIR(glyphs, glyphsOffset), PAIR(string, textOffset)),
        AGREEMENT("GlyphPosition", koru::GlyphEncoding, GlyphPosition, PAIR(hg, glyph), PAIR(ptl, position),
                  PAIR(ptlOrigin, origin), PAIR(sizlBitmap, size)),
        AGREEMENT("Font", koru::FontEncoding, FontEncoding, SAME(cached), SAME(unwritten), PAIR(iUniq, unique),
                  PAIR(iFace, face), PAIR(cxMax, maxWidth), PAIR(flFontType, fontType), PAIR(iTTUniq, ttUnique),
                  PAIR(iFile, file), PAIR(sizLogResPpi, resolution), PAIR(ulStyleSize, styleSize),
                  PAIR(pvConsumer, consumer), PAIR(pvProducer, producer), PAIR(metrics.cjThis, metricsSize),
                  PAIR(metrics.cjIfiExtra, metricsExtra), PAIR(metrics.names[0], familyOffset),
                  PAIR(metrics.names[1], styleOffset), PAIR(metrics.names[2], faceOffset),
                  PAIR(metrics.names[3], uniqueOffset), PAIR(metrics.others, metrics),
                  PAIR(nameLengths[0], familyLength), PAIR(nameLengths[1], styleLength),
                  PAIR(nameLengths[2], faceLength), PAIR(nameLengths[3], uniqueLength)),
        AGREEMENT("GradientVertex", TRIVERTEX, GradientVertex, SAME(x), SAME(y), PAIR(Red, red), PAIR(Green, green),
                  PAIR(Blue, blue), PAIR(Alpha, alpha)),
        AGREEMENT("BlendFunction", BLENDFUNCTION, BlendFunction, PAIR(BlendOp, operation), PAIR(BlendFlags, flags),
                  PAIR(SourceConstantAlpha, alpha), PAIR(AlphaFormat, format)),
        AGREEMENT("ColorAdjustment", COLORADJUSTMENT, ColorAdjustment, PAIR(caSize, size), PAIR(caFlags, flags),
                  PAIR(caIlluminantIndex, illuminant), PAIR(caRedGamma, redGamma), PAIR(caGreenGamma, greenGamma),
                  PAIR(caBlueGamma, blueGamma), PAIR(caReferenceBlack, referenceBlack),
                  PAIR(caReferenceWhite, referenceWhite), PAIR(caContrast, contrast), PAIR(caBrightness, brightness),
                  PAIR(caColorfulness, colorfulness), PAIR(caRedGreenTint, redGreenTint)),
        AGREEMENT("Rect", RECTL, Rect, SAME(left), SAME(top), SAME(right), SAME(bottom)),
        AGREEMENT("Point", POINTL, Point, SAME(x), SAME(y)),
        AGREEMENT("FixedPoint", POINTFIX, Point, SAME(x), SAME(y)),
        AGREEMENT("Size", SIZEL, Size, SAME(cx), SAME(cy)),
    };
}

class EveryLayout : public testing::TestWithParam<Agreement> { };

TEST_P(EveryLayout, HasEachFieldAtOnePlace)
{
    for (const Pair& pair : GetParam().pairs)
        EXPECT_EQ(pair.driver, pair.client) << pair.field;
    EXPECT_EQ(GetParam().driverSize, GetParam().clientSize);
}

TEST_P(EveryLayout, IsComparedToItsLastByte)
{
    std::size_t end = 0;
    for (const Pair& pair : GetParam().pairs) {
        EXPECT_EQ(pair.driver.offset, end) << pair.field;
        end = pair.driver.offset + pair.driver.size;
    }
    EXPECT_EQ(end, GetParam().driverSize);
}

std::string NameOf(const testing::TestParamInfo<Agreement>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Records, EveryLayout, testing::ValuesIn(Records()), NameOf);
INSTANTIATE_TEST_SUITE_P(Objects, EveryLayout, testing::ValuesIn(Others()), NameOf);

TEST(RecordTypes, AreTheBitsOfTheCalls)
{
    constexpr std::pair<koru::CallBit, client::CallType> types[] = {
        {koru::CALL_ASSERTMODE, client::CallType::AssertMode},
        {koru::CALL_ENABLEPDEV, client::CallType::EnablePDEV},
        {koru::CALL_DISABLEPDEV, client::CallType::DisablePDEV},
        {koru::CALL_COMPLETEPDEV, client::CallType::CompletePDEV},
        {koru::CALL_ENABLESURFACE, client::CallType::EnableSurface},
        {koru::CALL_DISABLESURFACE, client::CallType::DisableSurface},
        {koru::CALL_CREATEDEVICEBITMAP, client::CallType::CreateDeviceBitmap},
        {koru::CALL_DELETEDEVICEBITMAP, client::CallType::DeleteDeviceBitmap},
        {koru::CALL_BITBLT, client::CallType::BitBlt},
        {koru::CALL_STRETCHBLT, client::CallType::StretchBlt},
        {koru::CALL_FILLPATH, client::CallType::FillPath},
        {koru::CALL_LINETO, client::CallType::LineTo},
        {koru::CALL_MOVEPOINTER, client::CallType::MovePointer},
        {koru::CALL_SETPOINTERSHAPE, client::CallType::SetPointerShape},
        {koru::CALL_PAINT, client::CallType::Paint},
        {koru::CALL_STROKEPATH, client::CallType::StrokePath},
        {koru::CALL_TEXTOUT, client::CallType::TextOut},
        {koru::CALL_REALIZEBRUSH, client::CallType::RealizeBrush},
        {koru::CALL_DITHERCOLOR, client::CallType::DitherColor},
        {koru::CALL_GETMODES, client::CallType::GetModes},
        {koru::CALL_COPYBITS, client::CallType::CopyBits},
        {koru::CALL_SAVESCREENBITS, client::CallType::SaveScreenBits},
        {koru::CALL_SETPALETTE, client::CallType::SetPalette},
        {koru::CALL_ESCAPE, client::CallType::Escape},
        {koru::CALL_ALPHABLEND, client::CallType::AlphaBlend},
        {koru::CALL_GRADIENTFILL, client::CallType::GradientFill},
        {koru::CALL_TRANSPARENTBLT, client::CallType::TransparentBlt},
        {koru::CALL_STRETCHBLTROP, client::CallType::StretchBltROP},
        {koru::CALL_PLGBLT, client::CallType::PlgBlt},
        {koru::CALL_STROKEANDFILLPATH, client::CallType::StrokeAndFillPath},
    };
    ULONG all = 0;
    for (const auto& [bit, type] : types) {
        EXPECT_EQ(bit, static_cast<ULONG>(type));
        all |= bit;
    }
    EXPECT_EQ(all, client::AllCalls);
    EXPECT_EQ(Records().size(), client::CallTypeCount);
}

TEST(RecordRoom, IsTheDriversBuffer)
{
    EXPECT_EQ(koru::CaptureBufferSize, client::RecordRoom);
}

} // namespace
