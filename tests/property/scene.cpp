#include "tests/property/scene.h"

#include <sstream>

namespace property {

namespace {

    const char* const Names[] = {
        "Create", "Remove", "Flush", "State", "Mode", "Style", "Behaviour", "OriginalRect", "ZoomedRect", "ZOrder", "Factor",
        "XFactor", "YFactor", "ImproveFactor", "Border", "BordersSize", "PickColour", "Renumber",
        "Update", "Refresh", "Improve", "Scroll", "ShowOriginal", "Wait", "Interval",
        "AddPair", "RemovePair", "ClearPairs", "OverlayImage", "OverlayMask", "DropMask", "DropOverlay",
        "Fill", "Picture", "CopyBits", "MoveArea", "Line", "Stretch", "StretchArea", "Gradient", "Blend", "Transparent",
        "Parallelogram", "Paint", "Text", "FillPath", "StrokePath", "SaveAndRestore", "DrawElsewhere",
        "MovePointer", "Pointer",
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
        }

        Scene Write()
        {
            Add({Act::Picture, 0, 0, 0, {0, 0, scene_.width, scene_.height}, {}, {}, random_.Word()});
            AddZoomers(random_.Of({0, 1, 1, 1, 2, 2, 3, 4, 6}));
            for (LONG count = random_.Between(6, 24); count > 0; --count)
                AddAny();
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
            if (dice < 40)
                AddDrawing();
            else if (dice < 62)
                AddRendering();
            else if (dice < 80)
                AddProperty(LivingZoomer());
            else if (dice < 87)
                AddOverlay();
            else if (dice < 95)
                AddPointer();
            else
                AddListChange();
        }

        void AddZoomers(LONG count)
        {
            while (count-- > 0) {
                const ULONG zoomer = made_++;
                Add({Act::Create, zoomer});
                Add({Act::OriginalRect, zoomer, 0, 0, random_.Percent(80) ? SmallRect() : AnyRect()});
                Add({Act::ZoomedRect, zoomer, 0, 0, random_.Percent(80) ? InnerRect() : AnyRect()});
                for (LONG more = random_.Between(0, 5); more > 0; --more)
                    AddProperty(zoomer);
                Add({Act::State, zoomer, random_.Percent(90) ? 1 : 0});
            }
        }

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
                return Add({Act::Mode, zoomer, random_.Of({0, 0, 1, 2, 2, 3})});
            case 2:
                return Add({Act::Style, zoomer, random_.Of({0, 1, 1, 2})});
            case 3:
            case 4:
                return Add({Act::Behaviour, zoomer, random_.Of({0, 1, 2, 2, 2, 3})});
            case 5:
                return Add({Act::OriginalRect, zoomer, 0, 0, AnyRect()});
            case 6:
            case 7:
                return Add({Act::ZoomedRect, zoomer, 0, 0, AnyRect()});
            case 8:
                return Add({Act::ZOrder, zoomer, random_.Between(-2, 3)});
            case 9:
                return Add({Act::Factor, zoomer, random_.Of({0, 1, 2, 3, 4, 5, 7, 0x103})});
            case 10:
                return Add({random_.Percent(50) ? Act::XFactor : Act::YFactor, zoomer, random_.Of({0, 1, 2, 3, 4, 5, 6})});
            case 11:
            case 12:
                return Add({Act::ImproveFactor, zoomer, random_.Of({0, 1, 1, 2, 2, 3, 3, 4})});
            case 13:
                return Add({Act::Border, zoomer, random_.Of({0, 1, 2, 4, 8, 15, 31, 31, 18, 16, 32})});
            case 14:
                return Add({Act::BordersSize, zoomer, random_.Of({0, 1, 2, 3, 5, 100, -1})});
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
                return Add({Act::Scroll, LivingZoomer(), random_.Of({0, 0, 1, -1, 2, -2, 3, 9, -30}),
                            random_.Of({0, 0, 1, -1, 2, -3, 4, -8, 40})});
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

        void AddOverlay()
        {
            // ROP3s without a pattern, and two with one.
            const LONG levels[] = {0xCC, 0xCC, 0xCC, 0x88, 0xEE, 0x66, 0xAA, 0x22, 0x33, 0x44, 0x55,
                                   0x11, 0x77, 0x99, 0xBB, 0xDD, 0x00, 0xFF, 0xF0, 0x5A};
            const LONG level = levels[random_.Between(0, static_cast<LONG>(std::size(levels)) - 1)];
            const LONG size = random_.Percent(70) ? 0 : random_.Between(1, 20); // 0: as large as the screen
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
                const RECTL origin = {atCorner ? covered.left : random_.Between(-4, 20),
                                      atCorner ? covered.top : random_.Between(-4, 20), 0, 0};
                return Add({Act::OverlayImage, 0, size, level, covered, origin, {}, random_.Word()});
            }
            }
        }

        void AddPointer()
        {
            if (random_.Percent(40))
                return Add({Act::Pointer, 0, PointerX(), PointerY(),
                            {random_.Between(0, 4), random_.Between(0, 4), 0, 0}, {}, {}, random_.Word()});
            Add({Act::MovePointer, 0, PointerX(), PointerY()});
        }
        LONG PointerX() { return random_.Percent(12) ? -1 : random_.Between(0, scene_.width + 2); }
        LONG PointerY() { return random_.Between(-3, scene_.height + 2); }

        void AddDrawing()
        {
            Step step = {};
            step.act = static_cast<Act>(random_.Between(static_cast<LONG>(Act::Fill), static_cast<LONG>(Act::DrawElsewhere)));
            if (random_.Percent(50))
                step.act = random_.Of({Act::Fill, Act::Picture, Act::CopyBits, Act::Line, Act::MoveArea});
            step.rect = random_.Percent(85) ? InnerRect() : AnyRect();
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
        RECTL SmallRect()
        {
            const RECTL rect = InnerRect();
            return {rect.left, rect.top, std::min(rect.right, rect.left + 12), std::min(rect.bottom, rect.top + 12)};
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
            if (dice < 97)
                return {inner.left, inner.top, inner.left + 1, inner.top + 1};
            return {inner.right, inner.top, inner.left, inner.bottom};
        }
        LONG AnyWireColour()
        {
            return random_.Of({0xFFFFFF, 0x800000, 0xC0C0C0, 0x808080, 0x808000, 0x000000, 0x0000FF, 0x00FF00});
        }

        Random random_;
        Scene scene_;
        ULONG made_ = 0;
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
    text << scene.width << " x " << scene.height << ", " << scene.format.depth << " bits\n";
    for (std::size_t i = 0; i < scene.steps.size(); ++i)
        text << "  " << i << ": " << ToString(scene.steps[i]) << "\n";
    return text.str();
}

} // namespace property
