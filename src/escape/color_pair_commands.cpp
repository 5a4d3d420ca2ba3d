#include "escape/color_pair_list.h"
#include "escape/zoom_commands.h"

namespace koru {

void CountColorPairs(ZoomCall& call)
{
    call.Answer(ColorPairList::Count());
}

void AddColorPair(ZoomCall& call)
{
    const ColourBytes colour1 = ColourOf(call.in.v[0]);
    const ColourBytes colour2 = ColourOf(call.in.a);
    const bool present = ColorPairList::ContainsExactly(colour1, colour2);
    call.Answer(present || ColorPairList::Add(colour1, colour2) ? 1 : 0);
}

void GetColorPair(ZoomCall& call)
{
    const ColorPair* const pair = ColorPairList::Get(static_cast<LONG>(call.in.v[0]));
    if (!pair)
        return;
    const COLORREF colours[2] = {ColorRefOf(pair->colour1), ColorRefOf(pair->colour2)};
    memcpy(call.out, colours, sizeof(colours));
}

void ClearColorPairs(ZoomCall& call)
{
    ColorPairList::Clear();
    call.Answer(1);
}

void RemoveColorPair(ZoomCall& call)
{
    call.Answer(ColorPairList::Remove(ColourOf(call.in.v[0]), ColourOf(call.in.a)));
}

} // namespace koru
