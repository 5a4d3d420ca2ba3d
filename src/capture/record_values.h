#pragma once

#include "capture/capture_state.h"
#include "capture/encoders.h"

namespace koru {

// What a record holds where the call gave nothing.
constexpr POINTL NoPoint = {-1, -1};
constexpr RECTL NoRectangle = {-1, -1, -1, -1};

template<class Value> Value Given(const Value* value, const Value& otherwise = {})
{
    return value ? *value : otherwise;
}

// The part of a source or mask that a call reads: from a point on, as large as the target.
class SourcePart {
public:
    SourcePart(const POINTL* origin, const RECTL* target)
        : isKnown_(origin && target)
    {
        if (isKnown_)
            part_ = {origin->x, origin->y, Sum(origin->x, target->right, target->left),
                     Sum(origin->y, target->bottom, target->top)};
    }
    const RECTL* Rectangle() const { return isKnown_ ? &part_ : nullptr; }

private:
    // Unsigned: callers' coordinates may be anything.
    static LONG Sum(ULONG origin, ULONG end, ULONG start) { return static_cast<LONG>(origin + end - start); }

    RECTL part_ = {};
    bool isKnown_;
};

// Encodes a surface that a call reads, with the call's bit of BitsCaptureMask.
class SourceSurface {
public:
    explicit SourceSurface(ULONG callType, const RECTL* part = nullptr)
        : bitsFlag_(BitsCaptureMask & callType)
        , part_(bitsFlag_ != 0 ? part : nullptr)
    {
    }
    ULONG operator()(const SURFOBJ* pso, BYTE* at, ULONG room) const
    {
        return ExpandSurfObj(pso, at, room, bitsFlag_, part_);
    }

private:
    ULONG bitsFlag_;
    const RECTL* part_;
};

// Encodes the surface that a call draws on.
inline ULONG TargetSurface(const SURFOBJ* pso, BYTE* at, ULONG room)
{
    return ExpandSurfObj(pso, at, room);
}

} // namespace koru
