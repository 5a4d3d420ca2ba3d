#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "driver/debug_print.h"
#include "driver/handles.h"
#include "driver/screen_list.h"
#include "escape/command_table.h"
#include "escape/dark_lists.h"
#include "escape/dark_zones.h"
#include "escape/escape_call.h"
#include "escape/item_cache.h"
#include "escape/koru_commands.h"

namespace koru {

constinit ULONG ClientFlag = 0;

namespace {

    constexpr ULONG Refused = 0;
    constexpr ULONG Done = 1;
    constexpr ULONG WordSize = 4;
    constexpr USHORT InterfaceVersion = 303;

    template<ULONG Enabled> void SwitchCapture(KoruCall&)
    {
        CaptureEnabled = Enabled;
    }

    void AddDarkZone(KoruCall& call)
    {
        RECTL zone;
        memcpy(&zone, &call.in[1], sizeof(zone));
        call.Answer(InsertDarkZone(call.screen->DarkZones, zone));
    }

    void DeleteDarkZone(KoruCall& call)
    {
        call.Answer(call.screen->DarkZones.DeleteItem(call.in[1]));
    }

    // An unknown device clears them all, and answers 0.
    void ClearDarkZones(KoruCall& call)
    {
        if (!call.screen)
            return ScreenList::ForEach([](Screen& screen) { screen.DarkZones.Clear(); });
        call.screen->DarkZones.Clear();
        call.Answer(1);
    }

    template<SortedIdSet& Set> void AddTo(KoruCall& call)
    {
        call.Answer(Set.Insert(call.in[1]));
    }

    template<SortedIdSet& Set> void RemoveFrom(KoruCall& call)
    {
        call.Answer(Set.Remove(call.in[1]));
    }

    template<SortedIdSet& Set> void Empty(KoruCall& call)
    {
        Set.Clear();
        call.Answer(1);
    }

    void AddDarkSurface(KoruCall& call)
    {
        if (call.pso)
            call.Answer(DarkSurfaceList.Insert(NumberOf(call.pso->hsurf)));
    }

    void RemoveDarkSurface(KoruCall& call)
    {
        if (call.pso)
            call.Answer(DarkSurfaceList.Remove(NumberOf(call.pso->hsurf)));
    }

    void SetClientFlag(KoruCall& call)
    {
        ClientFlag = 1;
        call.Answer(1);
    }

    void InstallConsumer(KoruCall& call)
    {
        call.Answer(InitializeFunctions2(call.in));
    }

    void DeleteDarkProcess(KoruCall& call)
    {
        DebugPrintNumber("DeleteDarkProcess.. Removing a dark process: ", call.in[1]);
        RemoveFrom<DarkProcessList>(call);
    }

    void SetCaptureMask(KoruCall& call)
    {
        CaptureMask = call.in[1];
        call.Answer(1);
    }

    // Clients have always read 1 here, never the mask.
    void GetCaptureMask(KoruCall& call)
    {
        call.Answer(1);
    }

    // Half a word: the other half keeps what the client had there.
    void GetInterfaceVersion(KoruCall& call)
    {
        memcpy(call.out, &InterfaceVersion, sizeof(InterfaceVersion));
    }

    void GetDeviceSurface(KoruCall& call)
    {
        if (call.screen)
            call.Answer(NumberOf(call.screen->hsurfDevice));
    }

    // Clients see only the number 0 added; with any other they get no answer at all.
    void AddToCache(KoruCall& call)
    {
        if (call.in[2] == 0)
            call.Answer(AddCacheItem(call.in[1], call.in[2]));
    }

    void RemoveFromCache(KoruCall& call)
    {
        call.Answer(RemoveCacheItem(call.in[1], call.in[2]));
    }

    void SetBitsLimits(KoruCall& call)
    {
        BitsSizeLimit = static_cast<LONG>(call.in[1]);
        BitsCaptureMask = call.in[2];
        call.Answer(1);
    }

    // Takes the cache type for a limit as well: what clears a cache also sets the limits.
    void EmptyCache(KoruCall& call)
    {
        const BOOL cleared = ClearCache(call.in[1]);
        SetBitsLimits(call);
        call.Answer(cleared);
    }

} // namespace

constexpr KoruCommand KoruCommands[] = {
    {1, 0, nullptr, SwitchCapture<0>, nullptr},
    {2, 0, nullptr, SwitchCapture<1>, nullptr},
    {3, 4, "AddDarkZone", AddDarkZone, "AddDarkZone: Error Bad dhpdev\n"},
    {4, 4, "DeleteDarkZone", DeleteDarkZone, "ESC DeleteDarkZone: Error, invalid screen.\n"},
    {5, 4, nullptr, ClearDarkZones, nullptr},
    {23, 4, nullptr, AddTo<DarkIdList>, nullptr},
    {24, 4, nullptr, RemoveFrom<DarkIdList>, nullptr},
    {25, 4, nullptr, Empty<DarkIdList>, nullptr},
    {32, 4, nullptr, AddDarkSurface, nullptr},
    {33, 4, nullptr, RemoveDarkSurface, nullptr},
    {34, 4, nullptr, Empty<DarkSurfaceList>, nullptr},
    {35, 4, nullptr, SetClientFlag, nullptr},
    {36, 4, "InitializeFunctions2", InstallConsumer, nullptr},
    {37, 4, nullptr, AddTo<DarkProcessList>, nullptr},
    {38, 4, "DeleteDarkProcess", DeleteDarkProcess, nullptr},
    {39, 4, nullptr, Empty<DarkProcessList>, nullptr},
    {57, 4, nullptr, SetCaptureMask, nullptr},
    {58, 4, nullptr, GetCaptureMask, nullptr},
    {91, 0, nullptr, GetInterfaceVersion, nullptr},
    {92, 4, nullptr, GetDeviceSurface, nullptr},
    {96, 0, "AddCacheItem", AddToCache, nullptr},
    {97, 4, nullptr, RemoveFromCache, nullptr},
    {98, 4, nullptr, EmptyCache, nullptr},
    {112, 4, nullptr, SetBitsLimits, nullptr},
};
static_assert(CodesRise(KoruCommands));

ULONG RunKoruEscape(const EscapeCall& escape)
{
    if (!HasBuffers(escape, sizeof(KoruCall::in), WordSize))
        return Refused;
    KoruCall call = {};
    memcpy(call.in, escape.pvIn, sizeof(call.in));
    const KoruCommand* const command = FindCommand(KoruCommands, call.in[0]);
    if (!command) {
        DebugPrint("Unknown KORU Escape");
        return Done;
    }
    call.pso = escape.pso;
    call.out = static_cast<BYTE*>(escape.pvOut);
    call.screen = ScreenList::Find(reinterpret_cast<DHPDEV>(call.in[5]));
    memset(call.out, 0, command->cleared);
    if (!call.screen && command->withoutScreen)
        DebugPrint(command->withoutScreen);
    else
        command->run(call);
    return Done;
}

} // namespace koru
