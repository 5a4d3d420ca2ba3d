#pragma once

// Arguments of drawing calls as an input chooses them: hostile in their numbers, but objects of the engine. They
// live until Forget.

#include <memory>

#include "tests/fuzz/machine.h"

namespace fuzz {

class Objects {
public:
    Objects(Machine& machine, Input& input);
    void Forget() { kept_.clear(); }

    SURFOBJ* Target(); // may be null
    engine::Surface* Picture(); // of any format and size
    engine::Surface* Mask(); // of one bit per pixel
    SIZEL PointerSize(); // mostly small
    engine::Surface* PointerPicture(SIZEL size);
    engine::Surface* PointerMask(SIZEL size); // two masks, one above the other
    engine::ClipObject* Clip(); // may be null
    engine::Translation* Translation(const SURFOBJ* source, const SURFOBJ* target); // may be null
    engine::Brush* Brush();
    engine::Path* Path();
    LINEATTRS* Line();
    engine::Text* Text();
    engine::Font* Font();
    engine::PaletteObject* Palette(std::size_t colours);

    RECTL* Rectangle() { return New<RECTL>(input_.Rectangle()); }
    POINTL* Point() { return New<POINTL>(input_.Point()); }
    template<class Object> Object* Or(ULONG times, Object* object) { return input_.OneIn(times) ? nullptr : object; }

    // A point of a surface such that a blit reads nothing outside of it, whatever the target's rectangle. Null
    // when the surface is too small for that.
    POINTL* SourcePoint(const SURFOBJ* source, const SURFOBJ* target, const RECTL& rectangle);

    void AddDeviceBitmap(HSURF bitmap) { deviceBitmaps_.push_back(bitmap); }
    HSURF TakeDeviceBitmap(); // null when there is none

    template<class Object, class... Arguments> Object* New(Arguments&&... arguments)
    {
        const auto object = std::make_shared<Object>(std::forward<Arguments>(arguments)...);
        kept_.push_back(object);
        return object.get();
    }

private:
    const engine::PixelLayout& LayoutOf(const SURFOBJ* pso);

    Machine& machine_;
    Input& input_;
    std::vector<HSURF> deviceBitmaps_;
    std::vector<std::shared_ptr<void>> kept_;
};

} // namespace fuzz
