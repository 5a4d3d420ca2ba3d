#include "tests/fuzz/drawing.h"

#include <algorithm>
#include <utility>

namespace fuzz {

namespace {

    constexpr bool UsesSource(ULONG rop3)
    {
        return ((rop3 >> 2 ^ rop3) & 0x33) != 0;
    }

    struct Call {
        Machine& machine;
        Objects& make;
        Input& input;

        // Nothing happens when the driver does not offer it, as to older engines.
        template<class Pfn, class... Arguments> auto Run(ULONG index, Arguments... arguments)
        {
            using Result = decltype(std::declval<Pfn>()(arguments...));
            const auto hook = machine.Hook<Pfn>(index);
            return hook ? hook(arguments...) : Result();
        }
        DHPDEV Dhpdev() { return machine.Device().Dhpdev(); }
    };

    void BitBlt(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        engine::Surface *const picture = call.make.Picture(), *mask = call.make.Or(2, call.make.Mask());
        RECTL* const to = call.make.Or(16, call.make.Rectangle());
        ROP4 rop4 = call.input.Half();
        POINTL *from = call.make.Point(), *maskFrom = call.make.Point();
        if (target && to) {
            from = call.make.SourcePoint(picture, target, *to);
            maskFrom = mask ? call.make.SourcePoint(mask, target, *to) : nullptr;
            if (!from && (UsesSource(rop4 & 0xFF) || UsesSource(rop4 >> 8)))
                rop4 = 0x5A5A;
            if (!maskFrom)
                mask = nullptr;
        }
        SURFOBJ* const source = call.make.Or(16, picture);
        call.Run<PFN_DrvBitBlt>(INDEX_DrvBitBlt, target, source, mask, call.make.Clip(),
                                call.make.Translation(source, target), to, call.make.Or(16, from),
                                call.make.Or(16, maskFrom), call.make.Brush(), call.make.Or(4, call.make.Point()),
                                rop4);
    }

    void CopyBits(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        SURFOBJ* const source = call.make.Or(16, static_cast<SURFOBJ*>(call.make.Picture()));
        RECTL* const to = call.make.Or(16, call.make.Rectangle());
        POINTL* from = call.make.Or(16, call.make.Point());
        if (target && source && to)
            from = call.make.SourcePoint(source, target, *to);
        call.Run<PFN_DrvCopyBits>(INDEX_DrvCopyBits, target, source, call.make.Clip(),
                                  call.make.Translation(source, target), to, from);
    }

    // A copy from the screen, as an engine makes it for a program that reads pixels.
    void ReadScreen(Call call)
    {
        engine::Surface* const target = call.make.Picture();
        SURFOBJ* const screen = call.machine.Screen();
        RECTL to = call.input.Rectangle();
        POINTL* const from = call.make.SourcePoint(screen, target, to);
        call.Run<PFN_DrvCopyBits>(INDEX_DrvCopyBits, target, screen, call.make.Clip(),
                                  call.make.Translation(screen, target), &to, from);
    }

    struct Stretch {
        SURFOBJ *target, *source, *mask;
        CLIPOBJ* clip;
        XLATEOBJ* xlate;
        RECTL *to, *from;
        explicit Stretch(Call call)
            : target(call.make.Target())
            , source(call.make.Or(16, call.make.Picture()))
            , mask(call.make.Or(2, call.make.Mask()))
            , clip(call.make.Clip())
            , xlate(call.make.Translation(source, target))
            , to(call.make.Or(16, call.make.Rectangle()))
            , from(call.make.Or(16, call.make.Rectangle()))
        {
        }
    };

    void StretchBlt(Call call)
    {
        const Stretch stretch(call);
        call.Run<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt, stretch.target, stretch.source, stretch.mask, stretch.clip,
                                    stretch.xlate, nullptr, call.make.Or(2, call.make.Point()), stretch.to,
                                    stretch.from, call.make.Or(2, call.make.Point()), call.input.Number());
    }

    void StretchBltROP(Call call)
    {
        const Stretch stretch(call);
        call.Run<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP, stretch.target, stretch.source, stretch.mask,
                                       stretch.clip, stretch.xlate, nullptr, call.make.Or(2, call.make.Point()),
                                       stretch.to, stretch.from, call.make.Or(2, call.make.Point()),
                                       call.input.Number(), call.make.Brush(), call.input.Half());
    }

    void PlgBlt(Call call)
    {
        const Stretch stretch(call);
        POINTFIX corners[3];
        for (POINTFIX& corner : corners) {
            const ULONG scale = call.input.OneIn(4) ? 1 : 16;
            const POINTL point = call.input.Point();
            corner = {static_cast<FIX>(static_cast<ULONG>(point.x) * scale),
                      static_cast<FIX>(static_cast<ULONG>(point.y) * scale)};
        }
        call.Run<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt, stretch.target, stretch.source, stretch.mask, stretch.clip,
                                stretch.xlate, nullptr, call.make.Or(2, call.make.Point()), call.make.Or(16, corners),
                                stretch.from, call.make.Or(2, call.make.Point()), call.input.Number());
    }

    void AlphaBlend(Call call)
    {
        const Stretch stretch(call);
        BLENDOBJ blend = {
            {AC_SRC_OVER, 0, static_cast<BYTE>(call.input.Byte()), static_cast<BYTE>(call.input.Below(3))}};
        call.Run<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend, stretch.target, stretch.source, stretch.clip, stretch.xlate,
                                    stretch.to, stretch.from, call.make.Or(16, &blend));
    }

    void TransparentBlt(Call call)
    {
        const Stretch stretch(call);
        call.Run<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt, stretch.target, stretch.source, stretch.clip,
                                        stretch.xlate, stretch.to, stretch.from, call.input.Word(), call.input.Word());
    }

    void GradientFill(Call call)
    {
        std::vector<TRIVERTEX> vertices(call.input.OneIn(128) ? 5000 : 1 + call.input.Below(12));
        for (std::size_t i = 0; i < vertices.size() && i < 12; ++i) {
            const POINTL point = call.input.Point();
            vertices[i] = {point.x, point.y, static_cast<COLOR16>(call.input.Half()), 0x8000, 0xFF00, 0};
        }
        const ULONG mode = call.input.Below(4);
        const ULONG perElement = mode == GRADIENT_FILL_TRIANGLE ? 3 : 2;
        std::vector<ULONG> mesh(perElement * (call.input.OneIn(128) ? 5000 : call.input.Below(6)) + perElement);
        for (std::size_t i = 0; i < mesh.size(); ++i)
            mesh[i] = i < 18 ? call.input.Byte() % static_cast<ULONG>(vertices.size()) : 0;
        SURFOBJ* const target = call.make.Target();
        call.Run<PFN_DrvGradientFill>(
            INDEX_DrvGradientFill, target, call.make.Clip(), call.make.Translation(nullptr, target), vertices.data(),
            static_cast<ULONG>(vertices.size()), call.make.Or(16, mesh.data()),
            static_cast<ULONG>(mesh.size()) / perElement, call.make.Or(16, call.make.Rectangle()),
            call.make.Or(2, call.make.Point()), mode);
    }

    void StrokePath(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        call.Run<PFN_DrvStrokePath>(INDEX_DrvStrokePath, target, call.make.Or(16, call.make.Path()), call.make.Clip(),
                                    nullptr, call.make.Brush(), call.make.Point(), call.make.Or(16, call.make.Line()),
                                    call.input.Half());
    }

    void FillPath(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        call.Run<PFN_DrvFillPath>(INDEX_DrvFillPath, target, call.make.Or(16, call.make.Path()), call.make.Clip(),
                                  call.make.Brush(), call.make.Or(4, call.make.Point()), call.input.Half(),
                                  call.input.Number());
    }

    void StrokeAndFillPath(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        call.Run<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath, target, call.make.Or(16, call.make.Path()),
                                           call.make.Clip(), nullptr, call.make.Brush(),
                                           call.make.Or(16, call.make.Line()), call.make.Brush(),
                                           call.make.Or(4, call.make.Point()), call.input.Half(), call.input.Number());
    }

    void Paint(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        call.Run<PFN_DrvPaint>(INDEX_DrvPaint, target, call.make.Clip(), call.make.Brush(),
                               call.make.Or(4, call.make.Point()), call.input.Half());
    }

    void LineTo(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        const RECTL line = call.input.Rectangle();
        call.Run<PFN_DrvLineTo>(INDEX_DrvLineTo, target, call.make.Clip(), call.make.Brush(), line.left, line.top,
                                line.right, line.bottom, call.make.Or(16, call.make.Rectangle()), call.input.Half());
    }

    void TextOut(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        std::vector<RECTL> extra(call.input.OneIn(128) ? 5000 : call.input.Below(4), {1, 2, 3, 4});
        for (std::size_t i = 0; i < extra.size() && i < 4; ++i)
            extra[i] = call.input.Rectangle();
        extra.push_back({});
        call.Run<PFN_DrvTextOut>(INDEX_DrvTextOut, target, call.make.Or(8, call.make.Text()),
                                 call.make.Or(8, call.make.Font()), call.make.Clip(), call.make.Or(2, extra.data()),
                                 call.make.Or(2, call.make.Rectangle()), call.make.Brush(), call.make.Brush(),
                                 call.make.Or(4, call.make.Point()), call.input.Half());
    }

    void RealizeBrush(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        engine::Surface* const pattern = call.make.Or(4, call.make.Picture());
        call.Run<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush, call.make.Or(4, call.make.Brush()), target, pattern,
                                      call.make.Or(2, call.make.Mask()), call.make.Translation(pattern, target),
                                      call.input.Number());
    }

    void DitherColor(Call call)
    {
        ULONG output[64] = {};
        call.Run<PFN_DrvDitherColor>(INDEX_DrvDitherColor, call.Dhpdev(), call.input.Number(), call.input.Word(),
                                     output);
    }

    void SetPalette(Call call)
    {
        const ULONG have = call.input.OneIn(16) ? 20000 : 2 * call.input.Byte();
        engine::PaletteObject* const palette = call.make.Or(8, call.make.Palette(have));
        const ULONG start = call.input.Number(), count = call.input.OneIn(8) ? have : call.input.Number();
        call.Run<PFN_DrvSetPalette>(INDEX_DrvSetPalette, call.Dhpdev(), palette, call.input.Number(), start, count);
        const ULONG given = start < have ? have - start : 0;
        if (palette && given < std::min<ULONG>(count, 256)) // too few colours; without memory they are not looked at
            call.machine.SemaphoreMayBeHeldOnceMore();
    }

    void MovePointer(Call call)
    {
        const POINTL to = call.input.Point();
        call.Run<PFN_DrvMovePointer>(INDEX_DrvMovePointer, call.make.Target(), to.x, to.y,
                                     call.make.Or(2, call.make.Rectangle()));
    }

    void SetPointerShape(Call call)
    {
        SURFOBJ* const target = call.make.Target();
        const SIZEL size = call.make.PointerSize();
        engine::Surface* const mask = call.input.OneIn(32) ? call.make.Mask() : call.make.PointerMask(size);
        engine::Surface* const color =
            call.make.Or(2, call.input.OneIn(32) ? call.make.Picture() : call.make.PointerPicture(size));
        const RECTL places = call.input.Rectangle();
        call.Run<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape, target, call.make.Or(4, mask), color,
                                         call.make.Translation(color, target), places.left, places.top, places.right,
                                         places.bottom, call.make.Or(2, call.make.Rectangle()), call.input.Byte());
    }

    void SaveScreenBits(Call call)
    {
        // What is saved is freed at once, perhaps after it was put back.
        const auto run = [&](SURFOBJ* pso, ULONG mode, ULONG ident, RECTL* rectangle) {
            return call.Run<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits, pso, mode, ident, rectangle);
        };
        SURFOBJ* const target = call.make.Target();
        const ULONG saved = run(target, SS_SAVE, call.input.Word(), call.make.Or(8, call.make.Rectangle()));
        const bool back = call.input.OneIn(2);
        run(target, back ? SS_RESTORE : SS_FREE, saved, call.make.Or(8, call.make.Rectangle()));
        run(target, 3 + call.input.Number() % 9, call.input.Word(), call.make.Or(8, call.make.Rectangle()));
    }

    void CreateDeviceBitmap(Call call)
    {
        const SIZEL usual = call.input.OneIn(4) ? LargestScreen : UsualScreen;
        const POINTL size = call.input.OneIn(32) ? call.input.Point() : POINTL{usual.cx, usual.cy};
        const ULONG format = call.input.OneIn(8) ? call.input.Number() : call.machine.Device().Layout().iBitmapFormat;
        const auto bitmap = call.Run<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap, call.Dhpdev(),
                                                                SIZEL{size.x, size.y}, format);
        if (bitmap)
            call.make.AddDeviceBitmap(reinterpret_cast<HSURF>(bitmap));
    }

    void DeleteDeviceBitmap(Call call)
    {
        if (const HSURF bitmap = call.make.TakeDeviceBitmap())
            EngDeleteSurface(bitmap);
    }

    void GetModes(Call call)
    {
        std::vector<BYTE> modes(call.input.OneIn(2) ? call.input.Byte() : 4 * sizeof(DEVMODEW));
        call.Run<PFN_DrvGetModes>(INDEX_DrvGetModes, nullptr, static_cast<ULONG>(modes.size()),
                                  modes.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(modes.data()));
    }

    void Synchronize(Call call)
    {
        RECTL rectangle = call.input.Rectangle();
        call.machine.Device().Synchronize(call.make.Or(2, &rectangle), call.input.Number());
        call.machine.Device().AssertMode(call.input.OneIn(2));
    }

    struct Row {
        const char* name;
        void (*make)(Call call);
    };

    constexpr Row Calls[] = {
        {"DrvBitBlt", BitBlt},
        {"DrvCopyBits", CopyBits},
        {"DrvCopyBits from the screen", ReadScreen},
        {"DrvStretchBlt", StretchBlt},
        {"DrvStretchBltROP", StretchBltROP},
        {"DrvPlgBlt", PlgBlt},
        {"DrvAlphaBlend", AlphaBlend},
        {"DrvTransparentBlt", TransparentBlt},
        {"DrvGradientFill", GradientFill},
        {"DrvStrokePath", StrokePath},
        {"DrvFillPath", FillPath},
        {"DrvStrokeAndFillPath", StrokeAndFillPath},
        {"DrvPaint", Paint},
        {"DrvLineTo", LineTo},
        {"DrvTextOut", TextOut},
        {"DrvRealizeBrush", RealizeBrush},
        {"DrvDitherColor", DitherColor},
        {"DrvSetPalette", SetPalette},
        {"DrvMovePointer", MovePointer},
        {"DrvSetPointerShape", SetPointerShape},
        {"DrvSaveScreenBits", SaveScreenBits},
        {"DrvCreateDeviceBitmap", CreateDeviceBitmap},
        {"DrvDeleteDeviceBitmap", DeleteDeviceBitmap},
        {"DrvGetModes", GetModes},
        {"DrvSynchronize", Synchronize},
    };

} // namespace

void Draw(Machine& machine, Objects& make, Input& input)
{
    const Row& row = input.Of(Calls);
    row.make({machine, make, input});
    machine.Check(row.name);
    make.Forget();
}

void DeleteDeviceBitmaps(Objects& make)
{
    while (const HSURF bitmap = make.TakeDeviceBitmap())
        EngDeleteSurface(bitmap);
}

} // namespace fuzz
