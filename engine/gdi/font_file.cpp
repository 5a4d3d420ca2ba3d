#include "engine/gdi/font_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string_view>

#include "engine/gdi/outline.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#pragma GCC diagnostic ignored "-Wunused-but-set-variable"
#pragma GCC diagnostic ignored "-Wsign-compare"
#ifndef __clang_analyzer__ // which would look into it
#define STB_TRUETYPE_IMPLEMENTATION
#endif
#define STBTT_STATIC
// The newer one takes for granted that floats are not kept in wider registers.
#define STBTT_RASTERIZER_VERSION 1
#include <stb/stb_truetype.h>
#pragma GCC diagnostic pop

namespace engine::gdi {

namespace {

    // Glyph points before rasterising are 16-bit numbers; so many make a pixel.
    constexpr double StepsPerPixel = 32;
    // Of 255: a pixel that is covered so far is black. Thin strokes of small glyphs seldom cover half a pixel.
    constexpr int SmallGlyphCoverage = 88, GlyphCoverage = 127;
    constexpr double SmallGlyph = 18; // pixels per em

    struct VertexList {
        explicit VertexList(const stbtt_fontinfo& font, ULONG glyph)
            : font_(font)
            , count_(stbtt_GetGlyphShape(&font, static_cast<int>(glyph), &vertices_))
        {
        }
        ~VertexList() { stbtt_FreeShape(&font_, vertices_); }
        VertexList(const VertexList&) = delete;
        VertexList& operator=(const VertexList&) = delete;
        stbtt_vertex* begin() { return vertices_; }
        stbtt_vertex* end() { return vertices_ + count_; }
        int Count() const { return count_; }

    private:
        const stbtt_fontinfo& font_;
        stbtt_vertex* vertices_ = nullptr;
        int count_;
    };

    void MovePoint(stbtt_vertex_type& x, stbtt_vertex_type& y, const Transform& transform)
    {
        const PointD moved = transform.Apply({static_cast<double>(x), static_cast<double>(y)});
        const auto steps = [](double pixels) {
            return static_cast<stbtt_vertex_type>(
                std::clamp(std::floor(pixels * StepsPerPixel + 0.5), -32000.0, 32000.0));
        };
        x = steps(moved.x);
        y = steps(moved.y);
    }

    RECTL BoundsOf(VertexList& vertices)
    {
        LONG left = 32767, top = 32767, right = -32767, bottom = -32767;
        for (const stbtt_vertex& vertex : vertices) {
            const bool curve = vertex.type == STBTT_vcurve;
            left = std::min<LONG>({left, vertex.x, curve ? vertex.cx : vertex.x});
            right = std::max<LONG>({right, vertex.x, curve ? vertex.cx : vertex.x});
            top = std::min<LONG>({top, vertex.y, curve ? vertex.cy : vertex.y});
            bottom = std::max<LONG>({bottom, vertex.y, curve ? vertex.cy : vertex.y});
        }
        if (left > right)
            return {};
        const auto down = [](LONG steps) { return static_cast<LONG>(std::floor(steps / StepsPerPixel)); };
        return {down(left), down(top), down(right) + 1, down(bottom) + 1};
    }

    // Without the empty rows and columns around the black pixels.
    GlyphBitmap Threshold(const std::vector<BYTE>& coverage, SIZEL size, POINTL origin, int black)
    {
        const auto isBlack = [&](LONG x, LONG y) {
            return coverage[static_cast<std::size_t>(y * size.cx + x)] > black;
        };
        RECTL box = {};
        for (LONG y = 0; y < size.cy; ++y)
            for (LONG x = 0; x < size.cx; ++x)
                if (isBlack(x, y))
                    box = Around(box, {x, y, x + 1, y + 1});
        GlyphBitmap bitmap = {
            {origin.x + box.left, origin.y + box.top}, {box.right - box.left, box.bottom - box.top}, {}};
        const LONG rowBytes = (bitmap.size.cx + 7) / 8;
        bitmap.bits.resize(static_cast<std::size_t>(rowBytes * bitmap.size.cy));
        for (LONG y = box.top; y < box.bottom; ++y)
            for (LONG x = box.left; x < box.right; ++x)
                if (isBlack(x, y))
                    bitmap.bits[static_cast<std::size_t>((y - box.top) * rowBytes + (x - box.left) / 8)] |=
                        static_cast<BYTE>(0x80 >> ((x - box.left) & 7));
        return bitmap;
    }

    // A table of the file, in big-endian numbers.
    class Table {
    public:
        Table(const std::vector<BYTE>& data, ULONG directory, std::string_view tag)
            : data_(data)
        {
            constexpr std::size_t headSize = 12, entrySize = 16, offsetInEntry = 8;
            const std::size_t entries = WordAt(directory + 4);
            for (std::size_t at = directory + headSize; at + entrySize <= data.size(); at += entrySize) {
                if (at >= directory + headSize + entries * entrySize)
                    return;
                if (std::equal(tag.begin(), tag.end(), data.begin() + static_cast<std::ptrdiff_t>(at)))
                    start_ = std::size_t{WordAt(at + offsetInEntry)} << 16 | WordAt(at + offsetInEntry + 2);
            }
        }
        bool Exists() const { return start_ != 0; }
        USHORT Word(std::size_t offset) const { return WordAt(start_ + offset); }
        FWORD Signed(std::size_t offset) const { return static_cast<FWORD>(Word(offset)); }
        BYTE Byte(std::size_t offset) const { return start_ + offset < data_.size() ? data_[start_ + offset] : 0; }

    private:
        USHORT WordAt(std::size_t at) const
        {
            return at + 2 > data_.size() ? 0 : static_cast<USHORT>(data_[at] << 8 | data_[at + 1]);
        }

        const std::vector<BYTE>& data_;
        std::size_t start_ = 0;
    };

    constexpr ULONG FM_INFO_TECH_TRUETYPE = 0x1, FM_INFO_ARB_XFORMS = 0x10, FM_INFO_1BPP = 0x20;
    constexpr ULONG FM_INFO_CONSTANT_WIDTH = 0x1000, FM_INFO_RETURNS_OUTLINES = 0x8000;
    constexpr BYTE FixedPitch = 1, VariablePitch = 2, Roman = 0x10, Swiss = 0x20, Modern = 0x30;
    constexpr BYTE SerifsEnd = 10; // PANOSE: styles 2 to 10 have serifs

    void ReadWindowsTable(const Table& os2, IFIMETRICS& metrics)
    {
        FWORD IFIMETRICS::*const words[] = {&IFIMETRICS::fwdSubscriptXSize,     &IFIMETRICS::fwdSubscriptYSize,
                                            &IFIMETRICS::fwdSubscriptXOffset,   &IFIMETRICS::fwdSubscriptYOffset,
                                            &IFIMETRICS::fwdSuperscriptXSize,   &IFIMETRICS::fwdSuperscriptYSize,
                                            &IFIMETRICS::fwdSuperscriptXOffset, &IFIMETRICS::fwdSuperscriptYOffset,
                                            &IFIMETRICS::fwdStrikeoutSize,      &IFIMETRICS::fwdStrikeoutPosition};
        for (std::size_t i = 0; i < std::size(words); ++i)
            metrics.*words[i] = os2.Signed(10 + 2 * i);
        metrics.usWinWeight = os2.Word(4);
        metrics.fsType = os2.Word(8);
        metrics.fsSelection = os2.Word(62);
        metrics.wcFirstChar = os2.Word(64);
        metrics.wcLastChar = os2.Word(66);
        metrics.fwdTypoAscender = os2.Signed(68);
        metrics.fwdTypoDescender = os2.Signed(70);
        metrics.fwdTypoLineGap = os2.Signed(72);
        metrics.fwdWinAscender = os2.Signed(74);
        metrics.fwdWinDescender = os2.Signed(76);
        metrics.wcBreakChar = u' ';
        if (os2.Word(0) >= 2) { // older tables end before
            metrics.fwdXHeight = os2.Signed(86);
            metrics.fwdCapHeight = os2.Signed(88);
            metrics.wcDefaultChar = os2.Word(90);
            metrics.wcBreakChar = os2.Word(92);
        }
        auto* const panose = reinterpret_cast<BYTE*>(&metrics.panose);
        for (std::size_t i = 0; i < sizeof(PANOSE); ++i)
            panose[i] = os2.Byte(32 + i);
        for (std::size_t i = 0; i < sizeof(metrics.achVendId); ++i)
            metrics.achVendId[i] = os2.Byte(58 + i);
    }

    void ReadOtherTables(const Table& head, const Table& hhea, const Table& post, IFIMETRICS& metrics)
    {
        metrics.fwdUnitsPerEm = head.Signed(18);
        metrics.rclFontBox = {head.Signed(36), head.Signed(42), head.Signed(40), head.Signed(38)};
        metrics.fwdLowestPPEm = head.Signed(46);
        metrics.fwdMacAscender = hhea.Signed(4);
        metrics.fwdMacDescender = hhea.Signed(6);
        metrics.fwdMacLineGap = hhea.Signed(8);
        metrics.fwdMaxCharInc = hhea.Signed(10);
        metrics.ptlCaret = {hhea.Signed(20), hhea.Signed(18)};
        metrics.ptlBaseline = {1, 0};
        metrics.ptlAspect = {1, 1};
        metrics.lItalicAngle = post.Signed(4) * 10; // whole degrees to tenths
        metrics.fwdUnderscorePosition = post.Signed(8);
        metrics.fwdUnderscoreSize = post.Signed(10);
        const bool fixed = (post.Word(12) | post.Word(14)) != 0;
        metrics.flInfo = FM_INFO_TECH_TRUETYPE | FM_INFO_ARB_XFORMS | FM_INFO_1BPP | FM_INFO_RETURNS_OUTLINES
            | (fixed ? FM_INFO_CONSTANT_WIDTH : 0);
        const BYTE serif = metrics.panose.bSerifStyle;
        const BYTE family = fixed ? Modern : serif >= 2 && serif <= SerifsEnd ? Roman : Swiss;
        metrics.jWinPitchAndFamily = static_cast<BYTE>((fixed ? FixedPitch : VariablePitch) | family);
    }

    BYTE AnsiOf(WCHAR character, BYTE otherwise)
    {
        return character < 0x100 ? static_cast<BYTE>(character) : otherwise;
    }

} // namespace

struct FontFile::Parsed {
    stbtt_fontinfo font = {};
};

FontFile::FontFile() = default;
FontFile::~FontFile() = default;

std::unique_ptr<FontFile> FontFile::Load(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return nullptr;
    std::unique_ptr<FontFile> file(new FontFile);
    file->data_.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    file->parsed_ = std::make_unique<Parsed>();
    const int offset = file->data_.empty() ? -1 : stbtt_GetFontOffsetForIndex(file->data_.data(), 0);
    if (offset < 0 || !stbtt_InitFont(&file->parsed_->font, file->data_.data(), offset) || !file->ReadMetrics())
        return nullptr;
    return file;
}

bool FontFile::ReadMetrics()
{
    const auto directory = static_cast<ULONG>(parsed_->font.fontstart);
    const Table os2(data_, directory, "OS/2"), head(data_, directory, "head"), hhea(data_, directory, "hhea"),
        post(data_, directory, "post");
    if (!os2.Exists() || !head.Exists() || !hhea.Exists() || !post.Exists())
        return false;
    ReadWindowsTable(os2, metrics_);
    ReadOtherTables(head, hhea, post, metrics_);
    metrics_.fwdAveCharWidth = AverageWidth();
    if (metrics_.fwdXHeight == 0) {
        metrics_.fwdXHeight = HeightOf(u'x');
        metrics_.fwdCapHeight = HeightOf(u'H');
    }
    metrics_.chFirstChar = AnsiOf(metrics_.wcFirstChar, 0x20);
    metrics_.chLastChar = AnsiOf(metrics_.wcLastChar, 0xFF);
    metrics_.chDefaultChar = AnsiOf(metrics_.wcDefaultChar, 0x1F);
    metrics_.chBreakChar = AnsiOf(metrics_.wcBreakChar, 0x20);
    return metrics_.fwdUnitsPerEm > 0;
}

// Of letters as often as texts have them. Files differ in what they take for their average.
FWORD FontFile::AverageWidth() const
{
    constexpr LONG thousandths[] = {64, 14, 27, 35, 100, 20, 14, 42, 63, 3,  6, 35, 20,
                                    56, 56, 17, 4,  49,  56, 71, 31, 10, 18, 3, 18, 2};
    constexpr LONG thousandthsOfBlank = 166;
    LONG sum = Advance(GlyphOf(u' ')) * thousandthsOfBlank;
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        sum += Advance(GlyphOf(letter)) * thousandths[letter - u'a'];
    return static_cast<FWORD>(sum / 1000);
}

FWORD FontFile::HeightOf(char16_t letter) const
{
    int left = 0, bottom = 0, right = 0, top = 0;
    stbtt_GetGlyphBox(&parsed_->font, static_cast<int>(GlyphOf(letter)), &left, &bottom, &right, &top);
    return static_cast<FWORD>(top);
}

std::u16string FontFile::Name(int id) const
{
    int length = 0;
    const char* const name = stbtt_GetFontNameString(&parsed_->font, &length, STBTT_PLATFORM_ID_MICROSOFT,
                                                     STBTT_MS_EID_UNICODE_BMP, STBTT_MS_LANG_ENGLISH, id);
    std::u16string text;
    for (int i = 0; name && i + 1 < length; i += 2)
        text.push_back(static_cast<char16_t>(static_cast<BYTE>(name[i]) << 8 | static_cast<BYTE>(name[i + 1])));
    return text;
}

void FontFile::SetNames(Font& font) const
{
    constexpr int family = 1, style = 2, unique = 3, face = 4;
    font.SetNames(Name(family), Name(style), Name(face), Name(unique));
    IFIMETRICS metrics = metrics_;
    IFIMETRICS& target = *font.Metrics();
    metrics.cjThis = target.cjThis;
    metrics.dpwszFamilyName = target.dpwszFamilyName;
    metrics.dpwszStyleName = target.dpwszStyleName;
    metrics.dpwszFaceName = target.dpwszFaceName;
    metrics.dpwszUniqueName = target.dpwszUniqueName;
    target = metrics;
}

ULONG FontFile::GlyphOf(char16_t character) const
{
    return static_cast<ULONG>(stbtt_FindGlyphIndex(&parsed_->font, character));
}

LONG FontFile::Advance(ULONG glyph) const
{
    int advance = 0, bearing = 0;
    stbtt_GetGlyphHMetrics(&parsed_->font, static_cast<int>(glyph), &advance, &bearing);
    return advance;
}

GlyphBitmap FontFile::Bitmap(ULONG glyph, const Transform& toDevice) const
{
    VertexList vertices(parsed_->font, glyph);
    for (stbtt_vertex& vertex : vertices) {
        MovePoint(vertex.x, vertex.y, toDevice);
        if (vertex.type == STBTT_vcurve)
            MovePoint(vertex.cx, vertex.cy, toDevice);
    }
    const RECTL box = BoundsOf(vertices);
    const SIZEL size = {box.right - box.left, box.bottom - box.top};
    if (size.cx <= 0 || size.cy <= 0 || size.cx > 2 * LargestGlyph || size.cy > 2 * LargestGlyph)
        return {};
    std::vector<BYTE> coverage(static_cast<std::size_t>(size.cx * size.cy));
    stbtt__bitmap bitmap = {size.cx, size.cy, size.cx, coverage.data()};
    constexpr float scale = 1 / static_cast<float>(StepsPerPixel), flatness = 0.2f;
    stbtt_Rasterize(&bitmap, flatness, vertices.begin(), vertices.Count(), scale, scale, 0, 0, box.left, box.top, 0,
                    nullptr);
    const bool small = toDevice.MeanScale() * UnitsPerEm() < SmallGlyph;
    return Threshold(coverage, size, {box.left, box.top}, small ? SmallGlyphCoverage : GlyphCoverage);
}

void FontFile::AddOutline(ULONG glyph, const Transform& toDevice, Outline& outline) const
{
    VertexList vertices(parsed_->font, glyph);
    ShapePen pen(outline, toDevice);
    PointD last;
    bool started = false;
    for (const stbtt_vertex& vertex : vertices) {
        const PointD point = {static_cast<double>(vertex.x), static_cast<double>(vertex.y)};
        if (vertex.type == STBTT_vmove) {
            if (started)
                pen.Close();
            pen.MoveTo(point);
            started = true;
        } else if (vertex.type == STBTT_vline) {
            pen.LineTo(point);
        } else { // quadratic: the same curve as a cubic one
            const PointD control = {static_cast<double>(vertex.cx), static_cast<double>(vertex.cy)};
            pen.BezierTo({last.x + 2 * (control.x - last.x) / 3, last.y + 2 * (control.y - last.y) / 3},
                         {point.x + 2 * (control.x - point.x) / 3, point.y + 2 * (control.y - point.y) / 3}, point);
        }
        last = point;
    }
    if (started)
        pen.Close();
}

} // namespace engine::gdi
