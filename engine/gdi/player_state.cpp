// Records that change attributes, coordinates and the saved states.

#include "engine/gdi/metafile_player.h"
#include "engine/gdi/record_fields.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t First = 8; // the first field of a record, behind type and size
    constexpr ULONG MWT_IDENTITY = 1, MWT_LEFTMULTIPLY = 2, MWT_RIGHTMULTIPLY = 3, MWT_SET = 4;

    void Require(bool holds, const char* otherwise)
    {
        if (!holds)
            throw DamagedData(otherwise);
    }

    template<auto Field> void SetNumber(Playing& playing, const Bytes& record)
    {
        playing.dc.Now().*Field = record.Get<ULONG>(First);
    }

    // A number that other values than these cannot replace.
    template<auto Field, ULONG Least, ULONG Most> void SetWithin(Playing& playing, const Bytes& record)
    {
        const ULONG value = record.Get<ULONG>(First);
        Require(value >= Least && value <= Most, "no such mode");
        playing.dc.Now().*Field = value;
    }

    void SetMapMode(Playing& playing, const Bytes& record)
    {
        Require(playing.dc.Now().mapping.SetMode(record.Get<ULONG>(First)), "no such mode");
    }

    template<auto Set> void SetExtent(Playing& playing, const Bytes& record)
    {
        Require((playing.dc.Now().mapping.*Set)(record.Get<SIZEL>(First)), "extent of zero");
    }

    template<auto Set> void SetOrigin(Playing& playing, const Bytes& record)
    {
        (playing.dc.Now().mapping.*Set)(record.Get<POINTL>(First));
    }

    template<auto Scale> void ScaleExtent(Playing& playing, const Bytes& record)
    {
        Require((playing.dc.Now().mapping.*Scale)(record.Get<LONG>(First), record.Get<LONG>(First + 4),
                                                  record.Get<LONG>(First + 8), record.Get<LONG>(First + 12)),
                "scale of zero");
    }

    void SetWorld(Playing& playing, const Transform& world)
    {
        Require(!world.IsFlat(), "transform that maps to a line");
        playing.dc.Now().world = world;
    }

    void SetWorldTransform(Playing& playing, const Bytes& record)
    {
        SetWorld(playing, record.Get<Xform>(First));
    }

    void ModifyWorldTransform(Playing& playing, const Bytes& record)
    {
        const Transform given = record.Get<Xform>(First), world = playing.dc.Now().world;
        switch (record.Get<ULONG>(First + sizeof(Xform))) {
        case MWT_IDENTITY:
            return SetWorld(playing, {});
        case MWT_LEFTMULTIPLY:
            return SetWorld(playing, given.Then(world));
        case MWT_RIGHTMULTIPLY:
            return SetWorld(playing, world.Then(given));
        case MWT_SET:
            return SetWorld(playing, given);
        default:
            throw DamagedData("no such mode");
        }
    }

    void SaveDc(Playing& playing, const Bytes&)
    {
        if (!playing.dc.Save())
            throw CannotPlay("nested too deeply");
    }

    void RestoreDc(Playing& playing, const Bytes& record)
    {
        if (!playing.dc.Restore(record.Get<LONG>(First)))
            throw CannotPlay("nothing saved");
    }

    void SetBrushOrigin(Playing& playing, const Bytes& record)
    {
        playing.dc.SetBrushOrigin(record.Get<POINTL>(First));
    }

    // Written as a whole number by some and as a floating-point one by others, whose bits are far larger.
    void SetMiterLimit(Playing& playing, const Bytes& record)
    {
        constexpr ULONG mostWhole = 0xFFFF;
        const ULONG number = record.Get<ULONG>(First);
        const double limit = number <= mostWhole ? static_cast<double>(number) : record.Get<FLOATL>(First);
        playing.dc.Now().miterLimit = limit >= 1 ? limit : 1;
    }

    void SetColourAdjustment(Playing& playing, const Bytes& record)
    {
        playing.dc.Now().colourAdjustment = record.Get<COLORADJUSTMENT>(First);
    }

    void SetTextJustification(Playing& playing, const Bytes& record)
    {
        const LONG extra = record.Get<LONG>(First), breaks = record.Get<LONG>(First + 4);
        playing.dc.Now().breakExtra = breaks > 0 ? static_cast<double>(extra) / breaks : 0;
    }

    void SetLayout(Playing&, const Bytes& record)
    {
        if (record.Get<ULONG>(First) != 0)
            throw CannotPlay("from right to left");
    }

    void MoveToRecord(Playing& playing, const Bytes& record)
    {
        MoveTo(playing.dc, ToPoint(record.Get<POINTL>(First)));
    }

    constexpr RecordHandler Handlers[] = {
        {9, "SETWINDOWEXTEX", SetExtent<&Mapping::SetWindowExtent>},
        {10, "SETWINDOWORGEX", SetOrigin<&Mapping::SetWindowOrigin>},
        {11, "SETVIEWPORTEXTEX", SetExtent<&Mapping::SetViewportExtent>},
        {12, "SETVIEWPORTORGEX", SetOrigin<&Mapping::SetViewportOrigin>},
        {13, "SETBRUSHORGEX", SetBrushOrigin},
        {17, "SETMAPMODE", SetMapMode},
        {18, "SETBKMODE", SetWithin<&Attributes::backMode, TRANSPARENT, OPAQUE>},
        {19, "SETPOLYFILLMODE", SetWithin<&Attributes::polyFillMode, ALTERNATE, WINDING>},
        {20, "SETROP2", SetWithin<&Attributes::rop2, 1, R2_WHITE>},
        {21, "SETSTRETCHBLTMODE", SetWithin<&Attributes::stretchMode, 1, HALFTONE>},
        {22, "SETTEXTALIGN", SetNumber<&Attributes::textAlign>},
        {23, "SETCOLORADJUSTMENT", SetColourAdjustment},
        {24, "SETTEXTCOLOR", SetNumber<&Attributes::textColour>},
        {25, "SETBKCOLOR", SetNumber<&Attributes::backColour>},
        {27, "MOVETOEX", MoveToRecord},
        {31, "SCALEVIEWPORTEXTEX", ScaleExtent<&Mapping::ScaleViewport>},
        {32, "SCALEWINDOWEXTEX", ScaleExtent<&Mapping::ScaleWindow>},
        {33, "SAVEDC", SaveDc},
        {34, "RESTOREDC", RestoreDc},
        {35, "SETWORLDTRANSFORM", SetWorldTransform},
        {36, "MODIFYWORLDTRANSFORM", ModifyWorldTransform},
        {57, "SETARCDIRECTION", SetWithin<&Attributes::arcDirection, AD_COUNTERCLOCKWISE, AD_CLOCKWISE>},
        {58, "SETMITERLIMIT", SetMiterLimit},
        {115, "SETLAYOUT", SetLayout},
        {120, "SETTEXTJUSTIFICATION", SetTextJustification},
    };

} // namespace

std::span<const RecordHandler> StateRecords()
{
    return Handlers;
}

} // namespace engine::gdi
