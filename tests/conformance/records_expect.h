#pragma once

// Whether an object in a record is the one that the call was given. A null object must have an empty slot.

#include "client/record_decoder.h"
#include "engine/core/objects.h"
#include "tests/conformance/session.h"

namespace conformance::records {

namespace wire = koru::client;

inline wire::Rect Wire(const RECTL& rectangle)
{
    return {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
}
inline wire::Point Wire(const POINTL& point)
{
    return {point.x, point.y};
}
inline wire::Point Wire(const POINTFIX& point)
{
    return {point.x, point.y};
}
inline wire::Size Wire(const SIZEL& size)
{
    return {size.cx, size.cy};
}

constexpr wire::Rect NoRect = {-1, -1, -1, -1};
constexpr wire::Point NoPoint = {-1, -1};

// An argument that may be left out.
inline wire::Rect Wire(const RECTL* rectangle, const wire::Rect& otherwise = NoRect)
{
    return rectangle ? Wire(*rectangle) : otherwise;
}
inline wire::Point Wire(const POINTL* point, const wire::Point& otherwise = NoPoint)
{
    return point ? Wire(*point) : otherwise;
}

template<class Pointer> std::uint32_t Number(Pointer* pointer)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pointer));
}

void Expect(const wire::Record& record, wire::SurfaceSlot slot, const SURFOBJ* pso);
void Expect(const wire::Record& record, wire::ClipSlot slot, const engine::ClipObject* clip);
void Expect(const wire::Record& record, wire::BrushSlot slot, const BRUSHOBJ* pbo);
void Expect(const wire::Record& record, wire::XlateSlot slot, const engine::Translation* translation);
void Expect(const wire::Record& record, wire::PathSlot slot, const engine::Path* path);
void Expect(const wire::Record& record, wire::LineAttributesSlot slot, const LINEATTRS* plineattrs);
void Expect(const wire::Record& record, wire::StringSlot slot, const engine::Text* text);
void Expect(const wire::Record& record, wire::FontSlot slot, engine::Font* font);
void Expect(const wire::Record& record, wire::DeviceModeSlot slot, const DEVMODEW* mode);
void Expect(const wire::Record& record, wire::DeviceInfoSlot slot, const DEVINFO* info);
void Expect(const wire::Record& record, wire::WideTextSlot slot, const WCHAR* text);

} // namespace conformance::records
