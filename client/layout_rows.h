#pragma once

// How a row of a layout table is made: kind and size come from the member's type, the stated offset is
// checked by the compiler.

#include "layouts.h"

#include <cstddef>
#include <type_traits>

namespace koru::client {

// What the type of a member says about its field.
template<class T> struct Describe {
    static constexpr FieldKind kind = std::is_signed_v<T> ? FieldKind::Signed : FieldKind::Unsigned;
};
template<> struct Describe<Rect> {
    static constexpr FieldKind kind = FieldKind::Rect;
};
template<> struct Describe<Point> {
    static constexpr FieldKind kind = FieldKind::Point;
};
template<std::size_t Count> struct Describe<Point[Count]> : Describe<Point> {
};
template<> struct Describe<Size> {
    static constexpr FieldKind kind = FieldKind::Size;
};
template<> struct Describe<Zero> {
    static constexpr FieldKind kind = FieldKind::Zero;
};
template<unsigned Length> struct Describe<Unwritten<Length>> {
    static constexpr FieldKind kind = FieldKind::Unwritten;
};
template<std::size_t Length> struct Describe<char16_t[Length]> {
    static constexpr FieldKind kind = FieldKind::Text;
};
template<std::size_t Length> struct Describe<std::uint8_t[Length]> {
    static constexpr FieldKind kind = FieldKind::Bytes;
};
template<ObjectKind Object> struct Describe<SlotTo<Object>> {
    static constexpr FieldKind kind = FieldKind::Slot;
    static constexpr ObjectKind object = Object;
};
template<> struct Describe<BlendFunction> {
    static constexpr FieldKind kind = FieldKind::Struct;
    static constexpr const Layout* layout = &BlendFunctionLayout;
};
template<> struct Describe<ColorAdjustment> {
    static constexpr FieldKind kind = FieldKind::Struct;
    static constexpr const Layout* layout = &ColorAdjustmentLayout;
};

template<class Member, std::size_t Actual, std::size_t Stated> constexpr Field MakeField(std::string_view name)
{
    static_assert(Actual == Stated, "the member does not stand where the table says");
    Field field{name, std::uint16_t(Actual), std::uint16_t(sizeof(Member)), Describe<Member>::kind};
    if constexpr (requires { Describe<Member>::object; })
        field.object = Describe<Member>::object;
    if constexpr (requires { Describe<Member>::layout; })
        field.layout = Describe<Member>::layout;
    return field;
}

// Whether the fields, in their order, fill the bytes from `begin` to `end` without gap or overlap.
template<std::size_t Count> constexpr bool Tile(const Field (&fields)[Count], std::size_t begin, std::size_t end)
{
    for (const Field& field : fields) {
        if (field.offset != begin)
            return false;
        begin += field.size;
    }
    return begin == end;
}

#define KORU_FIELD(type, member, at) MakeField<decltype(type::member), offsetof(type, member), at>(#member)

} // namespace koru::client
