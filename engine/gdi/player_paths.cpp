// Records that build a path and do something with it.

#include "engine/gdi/metafile_player.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    void BeginPath(Playing& playing, const Bytes&)
    {
        playing.dc.Bracket().Begin();
    }

    void EndPath(Playing& playing, const Bytes&)
    {
        if (!playing.dc.Bracket().End())
            throw CannotPlay("no path begun");
    }

    void AbortPath(Playing& playing, const Bytes&)
    {
        playing.dc.Bracket().Abort();
    }

    void CloseFigure(Playing& playing, const Bytes&)
    {
        if (!playing.dc.Bracket().IsOpen())
            throw CannotPlay("no path begun");
        playing.dc.Bracket().Building().Close();
    }

    template<void (*Use)(DeviceContext&)> void UsePath(Playing& playing, const Bytes&)
    {
        if (!playing.dc.Bracket().IsComplete())
            throw CannotPlay("no path completed");
        Use(playing.dc);
    }

    void FlattenPath(DeviceContext& dc)
    {
        dc.Bracket().Flatten();
    }

    void SelectClipPath(Playing& playing, const Bytes& record)
    {
        DeviceContext& dc = playing.dc;
        if (!dc.Bracket().IsComplete())
            throw CannotPlay("no path completed");
        const ULONG mode = record.Get<ULONG>(8);
        if (mode < RGN_AND || mode > RGN_COPY)
            throw DamagedData("no such mode");
        const Path path = dc.Bracket().Take().ToPath();
        const FLONG options = dc.Now().polyFillMode == WINDING ? FP_WINDINGMODE : FP_ALTERNATEMODE;
        if (!dc.CombineClip(RegionOfPath(&path, options, dc.VisibleBounds()), mode))
            throw CannotPlay("clip of too many parts");
    }

    constexpr RecordHandler Handlers[] = {
        {59, "BEGINPATH", BeginPath},
        {60, "ENDPATH", EndPath},
        {61, "CLOSEFIGURE", CloseFigure},
        {62, "FILLPATH", UsePath<FillPath>},
        {63, "STROKEANDFILLPATH", UsePath<StrokeAndFillPath>},
        {64, "STROKEPATH", UsePath<StrokePath>},
        {65, "FLATTENPATH", UsePath<FlattenPath>},
        {66, "WIDENPATH", nullptr},
        {67, "SELECTCLIPPATH", SelectClipPath},
        {68, "ABORTPATH", AbortPath},
    };

} // namespace

std::span<const RecordHandler> PathRecords()
{
    return Handlers;
}

} // namespace engine::gdi
