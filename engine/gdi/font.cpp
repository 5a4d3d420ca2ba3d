#include "engine/gdi/font.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "engine/gdi/bytes.h"

namespace engine::gdi {

namespace {

    constexpr double DefaultHeight = 16; // logical units
    constexpr LONG BoldFrom = 600;
    constexpr ULONG LogicalDpi = 96;
    constexpr std::size_t MostBitmapBytes = 1 << 21;
    constexpr BYTE FixedPitch = 1, FamilyMask = 0x70, RomanFamily = 0x10, ModernFamily = 0x30;

    enum Family { Sans, Serif, Mono, NarrowSans, OtherSans, OtherSerif, OtherMono };

    struct FamilyFiles {
        const char* directory;
        const char* plain;
        const char* bold;
        const char* italic;
        const char* boldItalic;
    };
    constexpr FamilyFiles Files[] = {
        {"liberation", "LiberationSans-Regular", "LiberationSans-Bold", "LiberationSans-Italic",
         "LiberationSans-BoldItalic"},
        {"liberation", "LiberationSerif-Regular", "LiberationSerif-Bold", "LiberationSerif-Italic",
         "LiberationSerif-BoldItalic"},
        {"liberation", "LiberationMono-Regular", "LiberationMono-Bold", "LiberationMono-Italic",
         "LiberationMono-BoldItalic"},
        {"liberation", "LiberationSansNarrow-Regular", "LiberationSansNarrow-Bold", "LiberationSansNarrow-Italic",
         "LiberationSansNarrow-BoldItalic"},
        {"dejavu", "DejaVuSans", "DejaVuSans-Bold", "DejaVuSans-Oblique", "DejaVuSans-BoldOblique"},
        {"dejavu", "DejaVuSerif", "DejaVuSerif-Bold", "DejaVuSerif-Italic", "DejaVuSerif-BoldItalic"},
        {"dejavu", "DejaVuSansMono", "DejaVuSansMono-Bold", "DejaVuSansMono-Oblique", "DejaVuSansMono-BoldOblique"},
    };

    struct FaceStart {
        std::u16string_view start; // of the face's name, in lower case
        Family family;
    };
    constexpr FaceStart Faces[] = {
        {u"arial narrow", NarrowSans},
        {u"arial", Sans},
        {u"helv", Sans},
        {u"liberation sans narrow", NarrowSans},
        {u"liberation sans", Sans},
        {u"ms sans serif", Sans},
        {u"ms shell dlg", Sans},
        {u"microsoft sans", Sans},
        {u"system", Sans},
        {u"tms rmn", Serif},
        {u"times", Serif},
        {u"liberation serif", Serif},
        {u"ms serif", Serif},
        {u"courier", Mono},
        {u"liberation mono", Mono},
        {u"terminal", Mono},
        {u"fixedsys", Mono},
        {u"dejavu serif", OtherSerif},
        {u"dejavu sans mono", OtherMono},
    };

    std::u16string_view FaceName(const LOGFONTW& font)
    {
        const auto* const end = std::find(std::begin(font.lfFaceName), std::end(font.lfFaceName), u'\0');
        return {font.lfFaceName, static_cast<std::size_t>(end - font.lfFaceName)};
    }

    bool StartsAlike(std::u16string_view name, std::u16string_view lowerCaseStart)
    {
        const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
        return name.size() >= lowerCaseStart.size()
            && std::equal(lowerCaseStart.begin(), lowerCaseStart.end(), name.begin(),
                          [lower](char16_t wanted, char16_t given) { return wanted == lower(given); });
    }

    Family FamilyOf(const LOGFONTW& font)
    {
        for (const FaceStart& face : Faces)
            if (StartsAlike(FaceName(font), face.start))
                return face.family;
        const BYTE family = font.lfPitchAndFamily & FamilyMask;
        if (family == ModernFamily || (font.lfPitchAndFamily & 3) == FixedPitch)
            return OtherMono;
        return family == RomanFamily ? OtherSerif : OtherSans;
    }

    // Each file is read once; null when it is not there.
    const FontFile* File(const char* directory, const char* name)
    {
        static std::map<std::string, std::unique_ptr<FontFile>> files;
        const std::string path = std::string("/usr/share/fonts/truetype/") + directory + "/" + name + ".ttf";
        const auto found = files.find(path);
        return (found != files.end() ? found : files.emplace(path, FontFile::Load(path)).first)->second.get();
    }

    struct Choice {
        const FontFile* file;
        bool slanted; // by shearing the upright face
    };

    Choice Choose(const LOGFONTW& font)
    {
        const bool bold = font.lfWeight >= BoldFrom;
        for (const Family family : {FamilyOf(font), OtherSans, Sans}) {
            const FamilyFiles& files = Files[family];
            if (font.lfItalic)
                if (const FontFile* const file = File(files.directory, bold ? files.boldItalic : files.italic))
                    return {file, false};
            if (const FontFile* const file = File(files.directory, bold ? files.bold : files.plain))
                return {file, font.lfItalic != 0};
        }
        throw DamagedData("no font file");
    }

    bool IsSame(const TextScale& first, const TextScale& second)
    {
        return first.along.x == second.along.x && first.along.y == second.along.y && first.down.x == second.down.x
            && first.down.y == second.down.y;
    }

    // Pixels at which rows of letters look even.
    Transform WithEvenLetterHeight(const Transform& toDevice, FWORD letterHeight)
    {
        constexpr double mostPixels = 20;
        const double pixels = letterHeight * -toDevice.m22;
        if (!toDevice.IsAxisAligned() || pixels < 1 || pixels > mostPixels)
            return toDevice;
        Transform even = toDevice;
        even.m22 *= std::round(pixels) / pixels;
        return even;
    }

} // namespace

RealizedFont::RealizedFont(const FontFile& file, const LOGFONTW& font, bool slanted, const TextScale& scale)
    : file_(file)
{
    const IFIMETRICS& metrics = file.Metrics();
    const double height = font.lfHeight == 0 ? DefaultHeight : std::fabs(static_cast<double>(font.lfHeight));
    const LONG unitsOfHeight =
        font.lfHeight < 0 ? metrics.fwdUnitsPerEm : metrics.fwdWinAscender + metrics.fwdWinDescender;
    unitHeight_ = height / std::max<LONG>(unitsOfHeight, 1);
    unitWidth_ = font.lfWidth == 0
        ? unitHeight_
        : std::fabs(static_cast<double>(font.lfWidth)) / std::max<LONG>(metrics.fwdAveCharWidth, 1);
    const double pixelHeight = unitHeight_ * std::hypot(scale.down.x, scale.down.y);
    const double pixelWidth = unitWidth_ * std::hypot(scale.along.x, scale.along.y);
    pixelsPerEm_ = std::max(pixelHeight, pixelWidth) * metrics.fwdUnitsPerEm;
    toDevice_ = {scale.along.x * unitWidth_,
                 scale.along.y * unitWidth_,
                 -scale.down.x * unitHeight_,
                 -scale.down.y * unitHeight_,
                 0,
                 0};
    if (slanted) {
        constexpr double slant = 0.2;
        toDevice_ = Transform{1, 0, slant, 1, 0, 0}.Then(toDevice_);
    }
    toBitmap_ = WithEvenLetterHeight(toDevice_, metrics.fwdXHeight);
    FillObject(font);
}

void RealizedFont::FillObject(const LOGFONTW& font)
{
    file_.SetNames(object_);
    object_.Metrics()->jWinCharSet = font.lfCharSet;
    object_.flFontType = FO_TYPE_TRUETYPE;
    object_.iFace = 1;
    object_.iFile = object_.iTTUniq = NextUniqueNumber();
    object_.sizLogResPpi = {LogicalDpi, LogicalDpi};
    object_.ulStyleSize = static_cast<ULONG>(ToLong(pixelsPerEm_ * 72 / LogicalDpi));
    const RECTL& box = file_.Metrics().rclFontBox;
    object_.cxMax = static_cast<ULONG>(ToLong((box.right - box.left) * std::hypot(toDevice_.m11, toDevice_.m12)) + 1);
}

ULONG RealizedFont::GlyphOf(char16_t character) const
{
    if (character < u' ')
        return file_.GlyphOf(u' ');
    // Symbol faces keep their characters in a private range.
    const bool isPrivate = character >= 0xF020 && character <= 0xF0FF;
    return file_.GlyphOf(isPrivate ? character & 0xFF : character);
}

const GlyphBitmap& RealizedFont::Bitmap(ULONG glyph)
{
    if (const auto found = bitmaps_.find(glyph); found != bitmaps_.end())
        return found->second;
    if (bitmapBytes_ > MostBitmapBytes) {
        bitmaps_.clear();
        bitmapBytes_ = 0;
    }
    const GlyphBitmap& bitmap = bitmaps_[glyph] = file_.Bitmap(glyph, toBitmap_);
    bitmapBytes_ += bitmap.bits.size();
    return bitmap;
}

void RealizedFont::AddOutline(ULONG glyph, PointD position, Outline& outline) const
{
    file_.AddOutline(glyph, toDevice_.Then(Transform::Move(position.x, position.y)), outline);
}

double RealizedFont::UnderlineTop() const
{
    const IFIMETRICS& metrics = file_.Metrics();
    return (-metrics.fwdUnderscorePosition - metrics.fwdUnderscoreSize / 2.0) * unitHeight_;
}

bool RealizedFont::IsFixedPitch() const
{
    return (file_.Metrics().jWinPitchAndFamily & 3) == FixedPitch;
}

RealizedFont& FontCache::Realize(const LOGFONTW& font, const TextScale& scale)
{
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return std::memcmp(&entry.request, &font, sizeof(font)) == 0 && IsSame(entry.scale, scale);
    });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
        return entries_.front().font;
    }
    if (entries_.size() >= MostEntries)
        entries_.pop_back();
    const Choice choice = Choose(font);
    entries_.push_front({font, scale, RealizedFont(*choice.file, font, choice.slanted, scale)});
    return entries_.front().font;
}

} // namespace engine::gdi
