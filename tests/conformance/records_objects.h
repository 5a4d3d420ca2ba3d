#pragma once

#include <memory>

#include "tests/conformance/records_random.h"
#include "tests/conformance/session.h"

namespace conformance::records {

// Random arguments: all kinds of objects that the engine's services can draw with. They live until Forget.
class Objects {
public:
    Objects(Session& session, Random& random);
    void Forget() { kept_.clear(); }

    SURFOBJ* Target(); // the screen, a device bitmap, a bitmap of the engine; now and then null
    engine::Surface* Source(); // at least SourceSize
    engine::Surface* Mask(); // likewise, of one bit per pixel
    engine::ClipObject* Clip(); // may be null
    // Between two surfaces of which either may be null; may be null itself.
    engine::Translation* Translation(const SURFOBJ* source, const SURFOBJ* target);
    engine::Brush* Brush();
    engine::Path* Path();
    LINEATTRS* Line();
    engine::Text* Text(bool drawable); // a drawable one has a bitmap for every glyph
    engine::Font* Font();
    engine::PaletteObject* Palette(std::size_t colours);
    DEVMODEW* Mode(); // of a screen that the frame buffer knows
    WCHAR* WideText();

    // Of a place to draw: partly outside of the screen, at most as large as SourceSize. May be empty.
    RECTL* Rectangle();
    POINTL* Point(LONG lowest = -1000, LONG highest = 1000);
    POINTFIX FixedPoint();
    std::vector<BYTE>& Bytes(std::size_t size);

    // The argument, or null one time in so many.
    template<class Object> Object* Or(ULONG times, Object* object) { return random_.OneIn(times) ? nullptr : object; }

    // The argument of a call that an engine cannot draw without. Without a target nothing is drawn: then it may
    // be missing.
    template<class Object> Object* ForDrawingOn(const SURFOBJ* target, Object* object)
    {
        return target ? object : Or(3, object);
    }

    template<class Object, class... Arguments> Object* New(Arguments&&... arguments)
    {
        const auto object = std::make_shared<Object>(std::forward<Arguments>(arguments)...);
        kept_.push_back(object);
        return object.get();
    }

    static constexpr SIZEL SourceSize = {40, 30};

private:
    void AddRun(engine::Path& path);

    Session& session_;
    Random& random_;
    std::vector<SURFOBJ*> targets_;
    std::vector<engine::Surface*> sources_, masks_, patterns_;
    std::vector<std::shared_ptr<void>> kept_;
};

} // namespace conformance::records
