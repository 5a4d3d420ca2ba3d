#include "tests/property/scene.h"

#include <sstream>

namespace property {

namespace {

    const char* const Names[] = {
        "Create",     "Remove",         "Flush",         "State",         "Mode",           "Style",
        "Behaviour",  "OriginalRect",   "ZoomedRect",    "ZOrder",        "Factor",         "XFactor",
        "YFactor",    "ImproveFactor",  "Border",        "BordersSize",   "PickColour",     "Renumber",
        "Update",     "Refresh",        "Improve",       "Scroll",        "ShowOriginal",   "Wait",
        "Interval",   "AddPair",        "RemovePair",    "ClearPairs",    "OverlayImage",   "OverlayMask",
        "DropMask",   "DropOverlay",    "Fill",          "Picture",       "CopyBits",       "MoveArea",
        "Line",       "Stretch",        "StretchArea",   "StretchRop",    "StretchAreaRop", "Gradient",
        "Blend",      "Transparent",    "Parallelogram", "Paint",         "Text",           "FillPath",
        "StrokePath", "SaveAndRestore", "ReadArea",      "DrawElsewhere", "MovePointer",    "Pointer",
    };
    static_assert(std::size(Names) == static_cast<std::size_t>(Act::Count));

    constexpr ULONG ZoomersPerScene = 6;

    class Writer {
    public:
        Writer(const Format& format, std::uint64_t seed)
            : random_(seed * 64 + format.depth)
        {
            scene_.format = format;
            scene_.width = random_.Between(5, 40);
            scene_.height = random_.Between(5, 30);
            const LONG row = (scene_.width * static_cast<LONG>(format.bits) + 31) / 32 * 4;
            scene_.lDelta = random_.Of({0, 0, 0, row + 8, -row});
            mode_ = random_.Of({0, 0, 1, 2, 2});
            behaviour_ = random_.Of({0, 1, 2, 2, 2});
            improveFactor_ = random_.Of({0, 1, 2, 3, 3});
            smallDrawings_ = random_.Percent(50);
        }

        Scene Write()
        {
            Add({Act::Picture, 0, 0, 0, {0, 0, scene_.width, scene_.height}, {}, {}, random_.Word()});
            AddZoomers(random_.Of({0, 1, 1, 1, 2, 2, 3, 4, 6}));
            for (LONG count = random_.Between(6, 24); count > 0; --count)
                AddAny();
            return scene_;
        }

        Scene WritePointerScene()
        {
            for (LONG count = random_.Between(10, 40); count > 0; --count) {
                if (random_.Percent(50))
                    AddDrawing();
                else
                    AddPointer();
            }
            Add({Act::MovePointer, 0, -1, 0});
            return scene_;
        }

    private:
        void Add(Step step) { scene_.steps.push_back(std::move(step)); }
        ULONG AnyZoomer() { return static_cast<ULONG>(random_.Between(0, static_cast<LONG>(ZoomersPerScene) - 1)); }
        // One that was made, as a rule.
        ULONG LivingZoomer() { return made_ == 0 || random_.Percent(3) ? AnyZoomer() : random_.Word() % made_; }

        void AddAny()
        {
            const LONG dice = random_.Between(0, 99);
            if (dice < 40) {
                AddDrawing();
                if (random_.Percent(20))
                    Add({Act::Update});
            } else if (dice < 62) {
                AddRendering();
            } else if (dice < 80) {
                AddProperty(LivingZoomer());
            } else if (dice < 87) {
                AddOverlay();
            } else if (dice < 95) {
                AddPointer();
            } else {
                AddListChange();
            }
        }

        void AddZoomers(LONG count)
        {
            while (count-- > 0) {
                const ULONG zoomer = made_++;
                Add({Act::Create, zoomer});
                Add({Act::OriginalRect, zoomer, 0, 0, random_.Percent(80) ? SmallRect() : AnyRect()});
                Add({Act::ZoomedRect, zoomer, 0, 0, random_.Percent(80) ? InnerRect() : AnyRect()});
                Add({Act::Mode, zoomer, Liked(mode_, 0)});
                Add({Act::Behaviour, zoomer, Liked(behaviour_, 0)});
                Add({Act::ImproveFactor, zoomer, Liked(improveFactor_, 0)});
                for (LONG more = random_.Between(0, 5); more > 0; --more)
                    AddProperty(zoomer);
                Add({Act::State, zoomer, random_.Percent(90) ? 1 : 0});
            }
        }

        // Scenes have habits, so that rare combinations meet.
        LONG Liked(LONG habit, LONG otherwise) { return random_.Percent(60) ? habit : otherwise; }

        void AddListChange()
        {
            switch (random_.Between(0, 5)) {
            case 0:
                Add({Act::Remove, LivingZoomer()});
                break;
            case 1:
                if (random_.Percent(30))
                    Add({Act::Flush});
                break;
            case 2:
                Add({Act::Renumber});
                break;
            default:
                if (made_ < ZoomersPerScene)
                    AddZoomers(1);
            }
        }

        void AddProperty(ULONG zoomer)
        {
            switch (random_.Between(0, 15)) {
            case 0:
                return Add({Act::State, zoomer, random_.Of({0, 1, 1, 2})});
            case 1:
                return Add({Act::Mode, zoomer, Liked(mode_, random_.Of({0, 0, 1, 2, 2, 3}))});
            case 2:
                return Add({Act::Style, zoomer, random_.Of({0, 1, 1, 2})});
            case 3:
            case 4:
                return Add({Act::Behaviour, zoomer, Liked(behaviour_, random_.Of({0, 1, 2, 2, 2, 3}))});
            case 5:
                return Add({Act::OriginalRect, zoomer, 0, 0, AnyRect()});
            case 6:
            case 7:
                return Add({Act::ZoomedRect, zoomer, 0, 0, AnyRect()});
            case 8:
                return Add({Act::ZOrder, zoomer, random_.Between(-2, 3)});
            case 9:
                return Add({Act::Factor, zoomer, random_.Of({0, 1, 2, 3, 4, 5, 7, 0x103, 255})});
            case 10:
                return Add(
                    {random_.Percent(50) ? Act::XFactor : Act::YFactor, zoomer, random_.Of({0, 1, 2, 3, 4, 5, 6})});
            case 11:
            case 12:
                return Add({Act::ImproveFactor, zoomer, Liked(improveFactor_, random_.Of({0, 1, 1, 2, 2, 3, 3, 4}))});
            case 13:
                return Add({Act::Border, zoomer, random_.Of({0, 1, 2, 4, 8, 15, 31, 31, 18, 16, 16, 32})});
            case 14:
                return Add({Act::BordersSize, zoomer, random_.Of({0, 1, 2, 3, 5, 100, -1, INT32_MIN, INT32_MAX})});
            default:
                return Add({Act::PickColour, zoomer, random_.Of({0, 1, 2})});
            }
        }

        void AddRendering()
        {
            switch (random_.Between(0, 14)) {
            case 0:
            case 1:
                return Add({Act::Refresh, LivingZoomer()});
            case 2:
            case 3:
                return Add({Act::Improve, LivingZoomer()});
            case 4:
            case 5:
            case 6:
                return Add({Act::Scroll, LivingZoomer(), ScrollDistance(), ScrollDistance()});
            case 7:
                return Add({Act::ShowOriginal, 0, 0, 0, AnyRect()});
            case 8:
            case 9:
                return Add({Act::Wait, 0, random_.Of({10, 50, 51, 100, 1000000})});
            case 10:
                return Add({Act::Interval, 0, random_.Of({50, 50, 0, -1, 100})});
            default:
                return Add({Act::Update});
            }
        }

        LONG ScrollDistance()
        {
            const LONG distance = random_.Of({0, 0, 0, 1, -1, 2, -2, 3, -3, 5, -8, 30});
            return random_.Percent(3) ? AnyNumber(distance) : distance;
        }

        void AddOverlay()
        {
            // ROP3s without a pattern, and two with one.
            const LONG levels[] = {0xCC, 0xCC, 0xCC, 0x88, 0xEE, 0x66, 0xAA, 0x22, 0x33, 0x44,
                                   0x55, 0x11, 0x77, 0x99, 0xBB, 0xDD, 0x00, 0xFF, 0xF0, 0x5A};
            const LONG level = levels[random_.Between(0, static_cast<LONG>(std::size(levels)) - 1)];
            const LONG size =
                random_.Of({0, 0, 0, 0, -1, -1, random_.Between(1, 20)}); // 0: as large as the screen, -1: itself
            switch (random_.Between(0, 10)) {
            case 0:
                return Add({Act::AddPair, 0, AnyWireColour(), AnyWireColour()});
            case 1:
                return Add({Act::RemovePair, 0, AnyWireColour(), AnyWireColour()});
            case 2:
                if (random_.Percent(30))
                    Add({Act::ClearPairs});
                return;
            case 3:
            case 4:
                return Add({Act::OverlayMask, 0, size, 0, AnyRect(), {}, {}, random_.Word()});
            case 5:
                return Add({Act::DropMask});
            case 6:
                return Add({Act::DropOverlay});
            default: {
                const RECTL covered = AnyRect();
                const bool atCorner = random_.Percent(60);
                RECTL origin = {atCorner ? covered.left : random_.Between(-4, 20),
                                atCorner ? covered.top : random_.Between(-4, 20), 0, 0};
                if (random_.Percent(3))
                    origin = {AnyNumber(origin.left), AnyNumber(origin.top), 0, 0};
                return Add({Act::OverlayImage, 0, size, level, covered, origin, {}, random_.Word()});
            }
            }
        }

        void AddPointer()
        {
            if (random_.Percent(40))
                return Add(
                    {Act::Pointer, 0, PointerX(), PointerY(), {HotSpot(), HotSpot(), 0, 0}, {}, {}, random_.Word()});
            Add({Act::MovePointer, 0, PointerX(), PointerY()});
        }
        LONG PointerX()
        {
            const LONG x = random_.Percent(12) ? -1 : random_.Between(0, scene_.width + 2);
            return random_.Percent(2) ? random_.Of({0x10000, 0x40000000}) : x;
        }
        LONG PointerY()
        {
            const LONG y = random_.Between(-3, scene_.height + 2);
            return random_.Percent(2) ? random_.Of({-0x40000000, 0x10000}) : y;
        }
        LONG HotSpot()
        {
            const LONG at = random_.Between(0, 4);
            return random_.Percent(2) ? random_.Of({-0x10000, 0x40000000}) : at;
        }

        void AddDrawing()
        {
            Step step = {};
            step.act =
                static_cast<Act>(random_.Between(static_cast<LONG>(Act::Fill), static_cast<LONG>(Act::DrawElsewhere)));
            if (random_.Percent(50))
                step.act = random_.Of({Act::Fill, Act::Picture, Act::CopyBits, Act::Line, Act::MoveArea});
            step.rect = smallDrawings_ ? TinyRect() : random_.Percent(85) ? InnerRect() : AnyPlace();
            step.second = InnerRect();
            step.seed = random_.Word();
            step.a = random_.Between(0, 40);
            step.b = random_.Between(0, 40);
            if (random_.Percent(35))
                step.clip = AnyClip();
            Add(std::move(step));
        }

        // One rectangle, or disjoint bands from top to bottom.
        std::vector<RECTL> AnyClip()
        {
            if (random_.Percent(60))
                return {InnerRect()};
            std::vector<RECTL> clip;
            for (LONG y = random_.Between(0, 4); y < scene_.height && clip.size() < 4; y += random_.Between(2, 8)) {
                const RECTL wide = InnerRect();
                clip.push_back({wide.left, y, wide.right, std::min<LONG>(y + random_.Between(1, 2), scene_.height)});
            }
            return clip.empty() ? std::vector<RECTL>{InnerRect()} : clip;
        }

        RECTL InnerRect()
        {
            const LONG left = random_.Between(0, scene_.width - 1), top = random_.Between(0, scene_.height - 1);
            return {left, top, random_.Between(left + 1, scene_.width), random_.Between(top + 1, scene_.height)};
        }
        RECTL TinyRect()
        {
            const RECTL rect = InnerRect();
            return {rect.left, rect.top, std::min(rect.right, rect.left + 3), std::min(rect.bottom, rect.top + 3)};
        }
        RECTL SmallRect()
        {
            const RECTL rect = InnerRect();
            return {rect.left, rect.top, std::min(rect.right, rect.left + 12), std::min(rect.bottom, rect.top + 12)};
        }
        // Of one that engines draw: it may reach over the screen's edges.
        RECTL AnyPlace()
        {
            const RECTL inner = InnerRect();
            return {inner.left - random_.Between(0, 20), inner.top - random_.Between(0, 20),
                    inner.right + random_.Between(0, 30), inner.bottom + random_.Between(0, 30)};
        }
        RECTL AnyRect()
        {
            const RECTL inner = InnerRect();
            const LONG dice = random_.Between(0, 99);
            if (dice < 50)
                return inner;
            if (dice < 75) // partly or wholly off the screen
                return {inner.left - random_.Between(0, 20), inner.top - random_.Between(0, 20),
                        inner.right + random_.Between(0, 50), inner.bottom + random_.Between(0, 50)};
            if (dice < 80)
                return {inner.left - 30, inner.top - 5, inner.right - 20, inner.bottom};
            if (dice < 88)
                return {0, 0, scene_.width, scene_.height};
            if (dice < 91)
                return {inner.left, inner.top, inner.left, inner.bottom}; // empty
            if (dice < 94)
                return {inner.right, inner.bottom, inner.left, inner.top}; // reversed
            if (dice < 96)
                return {inner.left, inner.top, inner.left + 1, inner.top + 1};
            if (dice < 98)
                return {inner.right, inner.top, inner.left, inner.bottom};
            return {AnyNumber(inner.left), AnyNumber(inner.top), AnyNumber(inner.right), AnyNumber(inner.bottom)};
        }
        // What a hostile client sends; often a number that makes sense.
        LONG AnyNumber(LONG sensible)
        {
            const LONG extreme = random_.Of({INT32_MIN, INT32_MIN + 1, -0x40000000, -0x10000, 0x10000, 0x40000000,
                                             INT32_MAX - 40, INT32_MAX - 1, INT32_MAX});
            return random_.Percent(50) ? sensible : extreme;
        }
        LONG AnyWireColour()
        {
            return random_.Of({0xFFFFFF, 0x800000, 0xC0C0C0, 0x808080, 0x808000, 0x000000, 0x0000FF, 0x00FF00});
        }

        Random random_;
        Scene scene_;
        ULONG made_ = 0;
        LONG mode_, behaviour_, improveFactor_; // that most zoomers get
        bool smallDrawings_;
    };

    std::string ToString(const RECTL& rect)
    {
        return ToString(Rect(rect));
    }

} // namespace

const char* NameOf(Act act)
{
    return Names[static_cast<std::size_t>(act)];
}

Scene RandomScene(const Format& format, std::uint64_t seed)
{
    return Writer(format, seed).Write();
}

Scene RandomPointerScene(const Format& format, std::uint64_t seed)
{
    return Writer(format, seed).WritePointerScene();
}

std::string ToString(const Step& step)
{
    std::ostringstream text;
    text << NameOf(step.act) << " zoomer " << step.zoomer << " a " << step.a << " b " << step.b << " "
         << ToString(step.rect) << " " << ToString(step.second) << " seed " << step.seed;
    for (const RECTL& rect : step.clip)
        text << " clip " << ToString(rect);
    return text.str();
}

std::string ToString(const Scene& scene)
{
    std::ostringstream text;
    text << scene.width << " x " << scene.height << ", " << scene.format.depth << " bits, lDelta " << scene.lDelta
         << "\n";
    for (std::size_t i = 0; i < scene.steps.size(); ++i)
        text << "  " << i << ": " << ToString(scene.steps[i]) << "\n";
    return text.str();
}

} // namespace property
