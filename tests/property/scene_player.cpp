#include "tests/property/scene_player.h"

#include <cstring>
#include <sstream>

#include "engine/loader/linked_driver.h"
#include "tests/property/drawing.h"
#include "tests/property/model_cursor.h"
#include "tests/property/model_magnifier.h"
#include "tests/property/pointer_shape.h"

namespace property {

namespace {

    constexpr LONGLONG Frequency = 3579545;
    constexpr ULONG UnknownZoomer = 0x1234;
    constexpr ULONG Command = 0x11127200; // plus a number that only looks decimal

    std::string PictureDifference(const char* name, const Picture& shown, const Picture& expected)
    {
        std::ostringstream text;
        std::string map;
        for (std::int64_t y = 0; y < expected.Bounds().bottom; ++y, map += '\n')
            for (std::int64_t x = 0; x < expected.Bounds().right; ++x) {
                const bool same = shown.At(x, y) == expected.At(x, y);
                if (!same && text.str().empty())
                    text << name << " pixel (" << x << ", " << y << ") is " << std::hex << shown.At(x, y)
                         << ", the model says " << expected.At(x, y) << "\n";
                map += same ? '.' : 'X';
            }
        return text.str() + map;
    }

    class Player {
    public:
        explicit Player(const Scene& scene)
            : scene_(scene)
            , session_(SetupFor(scene))
            , magnifier_(scene.width, scene.height, scene.format)
            , cursor_(scene.width, scene.height, scene.format)
            , base_(magnifier_.virtualScreen)
            , shadow_(ToBitmap(base_, scene.format))
            , hooks_(HookCalls(session_))
            , services_(ServiceCalls())
        {
            session_.expectViolations = true; // told as differences
            session_.Engine().SetFrequency(Frequency);
            magnifier_.frequency = Frequency;
        }

        // What differs after the step; empty when nothing does.
        std::string Run(const Step& step)
        {
            wrong_.clear();
            if (step.act <= Act::Renumber)
                ChangeList(step);
            else if (step.act <= Act::Interval)
                Show(step);
            else if (step.act <= Act::DropOverlay)
                ChangeColours(step);
            else if (step.act <= Act::DrawElsewhere)
                Draw(step);
            else
                Point(step);
            Compare();
            return wrong_;
        }

    private:
        // ---- what differs

        void Compare()
        {
            ComparePicture("VirtualScreen", Load(*session_.Virtual(), scene_.format.bits), magnifier_.virtualScreen);
            ComparePicture("RealScreen", Load(*session_.Real(), scene_.format.bits), magnifier_.realScreen);
            for (const std::string& violation : session_.Engine().Violations())
                wrong_ += "engine violation: " + violation + "\n";
        }
        void ComparePicture(const char* name, const Picture& shown, const Picture& expected)
        {
            if (shown != expected)
                wrong_ += PictureDifference(name, shown, expected);
        }
        void CompareWord(const char* name, ULONG answer, ULONG expected)
        {
            if (answer != expected)
                wrong_ += std::string(name) + " is " + std::to_string(answer) + ", the model says "
                    + std::to_string(expected) + "\n";
        }
        void CompareRect(const char* name, const RECTL& answer, const Rect& expected)
        {
            const bool bothEmpty = Rect(answer).IsEmpty() && expected.IsEmpty();
            if (!bothEmpty && Rect(answer) != expected)
                wrong_ += std::string(name) + " is " + ToString(Rect(answer)) + ", the model says " + ToString(expected)
                    + "\n";
        }

        // ---- zoomers

        ULONG IdOf(const Step& step) const
        {
            return step.zoomer < ids_.size() && ids_[step.zoomer] ? ids_[step.zoomer] : UnknownZoomer;
        }
        ULONG Send(ULONG number, const Step& step, const RECTL& values, ULONG a = 0)
        {
            return session_.Zoom(Command + number, IdOf(step), values, a);
        }

        void ChangeList(const Step& step)
        {
            const RECTL value = {step.a, 0, 0, 0};
            switch (step.act) {
            case Act::Create:
                return Create(step);
            case Act::Remove:
                CompareWord("the answer", Send(0x02, step, {}), 1);
                return magnifier_.Remove(IdOf(step));
            case Act::Flush:
                CompareWord("the answer", Send(0x03, step, {}), 1);
                return magnifier_.zoomers.clear();
            case Act::Renumber:
                CompareWord("the answer", Send(0x39, step, {}), 1);
                return magnifier_.Renumber();
            case Act::ZOrder:
                CompareWord("the answer", Send(0x18, step, value), 1);
                return magnifier_.SetZOrder(IdOf(step), step.a);
            default:
                ChangeProperty(step);
            }
        }

        void Create(const Step& step)
        {
            ids_.resize(std::max<std::size_t>(ids_.size(), step.zoomer + 1));
            ULONG& id = ids_[step.zoomer];
            if (id)
                return;
            id = Send(0x01, step, {});
            magnifier_.Create(id);
        }

        void ChangeProperty(const Step& step)
        {
            struct Setter {
                Act act;
                ULONG number;
                void (*set)(Zoomer& zoomer, const Step& step);
            };
            static constexpr Setter setters[] = {
                {Act::State, 0x05, [](Zoomer& z, const Step& s) { z.SetState(static_cast<ULONG>(s.a)); }},
                {Act::Mode, 0x07, [](Zoomer& z, const Step& s) { z.SetMode(static_cast<ULONG>(s.a)); }},
                {Act::Style, 0x09, [](Zoomer& z, const Step& s) { z.Set(&Zoomer::style, static_cast<ULONG>(s.a)); }},
                {Act::Behaviour, 0x11,
                 [](Zoomer& z, const Step& s) { z.Set(&Zoomer::behaviour, static_cast<ULONG>(s.a)); }},
                {Act::OriginalRect, 0x13, [](Zoomer& z, const Step& s) { z.SetOriginalRect(s.rect); }},
                {Act::ZoomedRect, 0x15, [](Zoomer& z, const Step& s) { z.SetZoomedRect(s.rect); }},
                {Act::Factor, 0x20,
                 [](Zoomer& z, const Step& s) { z.SetFactors(static_cast<ULONG>(s.a), static_cast<ULONG>(s.a)); }},
                {Act::XFactor, 0x31,
                 [](Zoomer& z, const Step& s) { z.SetFactors(static_cast<ULONG>(s.a), z.yFactor); }},
                {Act::YFactor, 0x33,
                 [](Zoomer& z, const Step& s) { z.SetFactors(z.xFactor, static_cast<ULONG>(s.a)); }},
                {Act::ImproveFactor, 0x22,
                 [](Zoomer& z, const Step& s) { z.Set(&Zoomer::improveFactor, static_cast<ULONG>(s.a)); }},
                {Act::Border, 0x24, [](Zoomer& z, const Step& s) { z.Set(&Zoomer::border, static_cast<ULONG>(s.a)); }},
                {Act::BordersSize, 0x26,
                 [](Zoomer& z, const Step& s) { z.Set(&Zoomer::bordersSize, static_cast<ULONG>(s.a)); }},
                {Act::PickColour, 0x47, [](Zoomer& z, const Step& s) { z.SetDarkerWins(s.a != 0); }},
            };
            const bool isRect = step.act == Act::OriginalRect || step.act == Act::ZoomedRect;
            Zoomer* const zoomer = magnifier_.Find(IdOf(step));
            for (const Setter& setter : setters)
                if (setter.act == step.act) {
                    const ULONG answer = Send(setter.number, step, isRect ? step.rect : RECTL{step.a, 0, 0, 0});
                    CompareWord("the answer", answer, zoomer ? 1 : 0);
                    if (zoomer)
                        setter.set(*zoomer, step);
                }
        }

        // ---- rendering

        void Show(const Step& step)
        {
            const ULONG id = IdOf(step);
            switch (step.act) {
            case Act::Update:
                CompareWord("the answer", Send(0x04, step, {}), 1);
                magnifier_.Update();
                return CompareWord("the update count", Send(0x38, step, {}), magnifier_.updateCount);
            case Act::Refresh:
                return CompareWord("the answer", Send(0x29, step, {}), magnifier_.Refresh(id));
            case Act::Improve:
                return CompareWord("the answer", Send(0x30, step, {}), magnifier_.ImproveImage(id));
            case Act::Scroll:
                return CompareWord("the answer", Send(0x28, step, {step.a, step.b, 0, 0}),
                                   magnifier_.Scroll(id, step.a, step.b));
            case Act::ShowOriginal:
                return CompareWord("the answer", Send(0x35, step, step.rect), magnifier_.ShowOriginal(step.rect));
            case Act::Interval:
                Send(0x41, step, {step.a, 0, 0, 0});
                magnifier_.updateInterval = step.a;
                return;
            default:
                magnifier_.now += step.a * Frequency / 1000;
                session_.Engine().SetCounter(magnifier_.now);
            }
        }

        // ---- colour pairs and the overlay

        void ChangeColours(const Step& step)
        {
            const RECTL first = {step.a, 0, 0, 0};
            const auto colour1 = static_cast<ULONG>(step.a), colour2 = static_cast<ULONG>(step.b);
            switch (step.act) {
            case Act::AddPair:
                CompareWord("the answer", Send(0x43, step, first, colour2), 1);
                magnifier_.choice.AddPair(colour1, colour2);
                break;
            case Act::RemovePair:
                CompareWord("the answer", Send(0x46, step, first, colour2),
                            magnifier_.choice.RemovePair(colour1, colour2));
                break;
            case Act::ClearPairs:
                CompareWord("the answer", Send(0x45, step, {}), 1);
                magnifier_.choice.ClearPairs();
                break;
            default:
                return ChangeOverlay(step);
            }
            CompareWord("the pair count", Send(0x42, step, {}), static_cast<ULONG>(magnifier_.choice.PairCount()));
        }

        void ChangeOverlay(const Step& step)
        {
            if (step.act == Act::DropOverlay) {
                CompareWord("the answer", Send(0x37, step, {}), 1);
                magnifier_.overlay = {};
                magnifier_.recompose = true;
                return;
            }
            if (step.a < 0) { // the client's picture is the screen
                CompareWord("the answer", SendOverlay(step, session_.Screen()), 1);
                return ChangeModelOverlay(step, magnifier_.virtualScreen);
            }
            const SIZEL size = {step.a ? step.a : scene_.width, step.a ? step.a : scene_.height};
            const HSURF handle = session_.Device().CreateCompatibleBitmap(size);
            engine::Surface* const client = engine::FindSurface(handle);
            Random random(step.seed);
            const Picture picture = RandomPicture(random, scene_.format, size.cx, size.cy);
            Store(picture, *engine::FindSurface(reinterpret_cast<HSURF>(client->dhsurf)));
            CompareWord("the answer", SendOverlay(step, client), 1);
            session_.Device().DeleteBitmap(handle);
            ChangeModelOverlay(step, picture);
        }

        ULONG SendOverlay(const Step& step, SURFOBJ* client)
        {
            const bool image = step.act == Act::OverlayImage;
            const ULONG selector = image       ? static_cast<ULONG>(step.b) << 16
                : step.act == Act::OverlayMask ? 0xFFFFFFFF
                                               : 0xFEFFFFFF;
            ULONG in[9] = {Command + 0x36, 0, static_cast<ULONG>(step.second.left), static_cast<ULONG>(step.second.top),
                           selector};
            std::memcpy(in + 5, &step.rect, sizeof(step.rect));
            ULONG out[4] = {};
            session_.Hook<PFN_DrvEscape>(INDEX_DrvEscape)(client, conformance::ZoomEscape, sizeof(in), in, sizeof(out),
                                                          out);
            return out[0];
        }

        void ChangeModelOverlay(const Step& step, const Picture& client)
        {
            Overlay& overlay = magnifier_.overlay;
            if (step.act == Act::OverlayMask)
                return overlay.SetMask(magnifier_.Empty(), client, step.rect);
            if (step.act == Act::DropMask)
                return overlay.mask.reset();
            overlay.SetImage(magnifier_.Empty(), client, static_cast<BYTE>(step.b), {step.second.left, step.second.top},
                             step.rect);
            magnifier_.recompose = true;
        }

        // ---- drawing

        void Draw(const Step& step)
        {
            if (step.act == Act::SaveAndRestore)
                return SaveAndRestore(step);
            if (step.act == Act::ReadArea)
                return ReadArea(step);
            if (step.act == Act::DrawElsewhere)
                return DrawElsewhere(step);
            const Drawing drawing = MakeDrawing(step, scene_);
            if (!drawing.run)
                return;
            drawing.run(hooks_, session_.Screen());
            DrawOnModel(drawing);
        }

        void DrawOnModel(const Drawing& drawing)
        {
            const bool pointerIsOff = Meets(drawing.written, cursor_.OnScreen())
                || (drawing.read && Meets(*drawing.read, cursor_.OnScreen()));
            const bool readsPointer = drawing.read && !pointerIsOff;
            Store(readsPointer ? magnifier_.virtualScreen : base_, *shadow_);
            drawing.run(services_, shadow_);
            Picture result = Load(*shadow_, scene_.format.bits);
            if (readsPointer) // what is kept under the pointer
                CopySame(result, base_, cursor_.OnScreen());
            base_ = std::move(result);
            ShowPointer();
            magnifier_.AfterDraw(drawing.shown);
            magnifier_.UpdateIfDue();
        }

        void ShowPointer()
        {
            magnifier_.virtualScreen = base_;
            cursor_.DrawOn(magnifier_.virtualScreen);
        }

        void SaveAndRestore(const Step& step)
        {
            if (Rect(step.rect).IsEmpty())
                return;
            const auto hook = session_.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
            RECTL rect = step.rect;
            const ULONG saved = hook(session_.Screen(), SS_SAVE, 0, &rect);
            CompareWord("the saved bitmap is there", saved != 0, 1);
            const Picture before = base_;
            magnifier_.UpdateIfDue();
            Step fill = step;
            fill.act = Act::Fill;
            Draw(fill);
            const bool restores = step.seed % 4 != 0;
            CompareWord("the answer", hook(session_.Screen(), restores ? SS_RESTORE : SS_FREE, saved, &rect), 1);
            if (restores) {
                CopySame(base_, before, step.rect);
                ShowPointer();
                magnifier_.AfterDraw(step.rect);
            }
            magnifier_.UpdateIfDue();
        }

        // Into a bitmap of the engine's: without the pointer.
        void ReadArea(const Step& step)
        {
            const Rect part = Intersect(step.rect, base_.Bounds());
            if (part.IsEmpty())
                return;
            RECTL rect = part.ToRectl();
            POINTL from = {rect.left, rect.top};
            Picture expected = magnifier_.Empty();
            engine::Surface* const bitmap = ToBitmap(expected, scene_.format);
            hooks_.copyBits(bitmap, session_.Screen(), nullptr, nullptr, &rect, &from);
            CopySame(expected, base_, part);
            ComparePicture("what was read", Load(*bitmap, scene_.format.bits), expected);
            engine::DestroyBitmap(bitmap);
        }

        // On a device bitmap, which then goes to the screen.
        void DrawElsewhere(const Step& step)
        {
            const HSURF handle = session_.Device().CreateCompatibleBitmap({scene_.width, scene_.height});
            engine::Surface* const bitmap = engine::FindSurface(handle);
            Random random(step.seed);
            const Picture picture = RandomPicture(random, scene_.format, scene_.width, scene_.height);
            engine::Surface* const source = ToBitmap(picture, scene_.format);
            RECTL all = {0, 0, scene_.width, scene_.height};
            POINTL origin = {0, 0};
            hooks_.copyBits(bitmap, source, nullptr, nullptr, &all, &origin);
            magnifier_.UpdateIfDue();
            const Rect shown = Intersect(step.rect, Rect(all));
            const auto copy = [&](const DrawCalls& calls, SURFOBJ* screen) {
                RECTL rect = shown.ToRectl();
                POINTL from = {rect.left, rect.top};
                calls.copyBits(screen, &calls == &hooks_ ? bitmap : source, nullptr, nullptr, &rect, &from);
            };
            if (!shown.IsEmpty()) {
                copy(hooks_, session_.Screen());
                DrawOnModel({shown, shown, {}, copy});
            }
            engine::DestroyBitmap(source);
            session_.Device().DeleteBitmap(handle);
        }

        // ---- the pointer

        void Point(const Step& step)
        {
            RECTL bounds = {-7, -7, -7, -7};
            Rect touched;
            if (step.act == Act::MovePointer) {
                session_.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session_.Screen(), step.a, step.b, &bounds);
                touched = cursor_.Move(step.a, step.b);
            } else {
                Random random(step.seed);
                PointerShape shape(random, scene_.format);
                const ULONG answer = session_.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(
                    session_.Screen(), shape.mask, shape.colours, shape.translation.get(), step.rect.left,
                    step.rect.top, step.a, step.b, &bounds, SPS_CHANGE);
                CompareWord("the answer", answer, SPS_ACCEPT_NOEXCLUDE);
                touched = cursor_.SetShape(shape.shape, {step.rect.left, step.rect.top}, step.a, step.b);
            }
            CompareRect("the pointer's rectangle", bounds, cursor_.OnScreen());
            ShowPointer();
            if (!touched.IsEmpty())
                magnifier_.AfterDraw(touched);
            magnifier_.UpdateIfDue();
        }

        const Scene& scene_;
        conformance::Session session_;
        Magnifier magnifier_;
        Cursor cursor_;
        Picture base_; // the VirtualScreen without the pointer
        engine::Surface* shadow_; // where the services draw what the hooks must have drawn
        DrawCalls hooks_, services_;
        std::vector<ULONG> ids_; // of zoomers, by the scene's numbers; those removed stay
        std::string wrong_;
    };

} // namespace

std::optional<Difference> Play(const Scene& scene)
{
    engine::ResetLinkedDriver();
    Player player(scene);
    for (std::size_t i = 0; i < scene.steps.size(); ++i) {
        std::string text = player.Run(scene.steps[i]);
        if (!text.empty())
            return Difference{i, std::move(text)};
    }
    return std::nullopt;
}

Scene CutDown(Scene scene)
{
    if (const auto difference = Play(scene))
        scene.steps.resize(difference->step + 1);
    bool shorter = true;
    while (shorter) {
        shorter = false;
        for (std::size_t i = scene.steps.size(); i-- > 0;) {
            Scene without = scene;
            without.steps.erase(without.steps.begin() + static_cast<std::ptrdiff_t>(i));
            if (Play(without)) {
                scene = std::move(without);
                shorter = true;
            }
        }
    }
    return scene;
}

} // namespace property
