#include <algorithm>

#include "engine/gdi/dib.h"

namespace engine::gdi {

namespace {

    constexpr BYTE EndOfRow = 0, EndOfBitmap = 1, Delta = 2;

    // Where the runs go: rows count from the bottom.
    class RunTarget {
    public:
        explicit RunTarget(Surface& surface)
            : surface_(surface)
            , nibbles_(surface.iBitmapFormat == BMF_4BPP)
        {
        }

        bool IsBelowTop() const { return y_ < surface_.sizlBitmap.cy; }
        bool HasNibbles() const { return nibbles_; }
        void NextRow() { MoveTo(0, y_ + 1); }
        void Skip(BYTE right, BYTE up) { MoveTo(x_ + right, y_ + up); }
        void Put(BYTE pixel)
        {
            if (x_ < surface_.sizlBitmap.cx && IsBelowTop())
                surface_.SetPixel(x_, surface_.sizlBitmap.cy - 1 - y_, pixel);
            MoveTo(x_ + 1, y_);
        }

    private:
        void MoveTo(LONG x, LONG y) // no further than just outside
        {
            x_ = std::min(x, surface_.sizlBitmap.cx);
            y_ = std::min(y, surface_.sizlBitmap.cy);
        }

        Surface& surface_;
        bool nibbles_;
        LONG x_ = 0, y_ = 0;
    };

    BYTE PixelOf(BYTE packed, ULONG index, bool nibbles)
    {
        if (!nibbles)
            return packed;
        return index & 1 ? packed & 0xF : packed >> 4;
    }

    // Pixels one by one, padded to 16 bits. Gives the bytes that they took.
    std::size_t PutLiterally(Bytes pixels, ULONG count, RunTarget& target)
    {
        const std::size_t bytes = target.HasNibbles() ? (count + 1) / 2 : count;
        const Bytes literal = pixels.Part(0, bytes);
        for (ULONG i = 0; i < count; ++i)
            target.Put(PixelOf(literal.Data()[target.HasNibbles() ? i / 2 : i], i, target.HasNibbles()));
        return (bytes + 1) & ~std::size_t{1};
    }

} // namespace

void ExpandRunLengths(Bytes runs, Surface& surface)
{
    RunTarget target(surface);
    std::size_t at = 0;
    while (at + 2 <= runs.Size() && target.IsBelowTop()) {
        const BYTE count = runs.Get<BYTE>(at), value = runs.Get<BYTE>(at + 1);
        at += 2;
        if (count != 0) {
            for (ULONG i = 0; i < count; ++i)
                target.Put(PixelOf(value, i, target.HasNibbles()));
        } else if (value == EndOfRow) {
            target.NextRow();
        } else if (value == EndOfBitmap) {
            return;
        } else if (value == Delta) {
            target.Skip(runs.Get<BYTE>(at), runs.Get<BYTE>(at + 1));
            at += 2;
        } else {
            at += PutLiterally(runs.From(at), value, target);
        }
    }
}

} // namespace engine::gdi
