#include "chain/next_driver.h"

#include <type_traits>

#include "driver/debug_print.h"
#include "driver/image_export.h"
#include "driver/pool.h"
#include "platform/runtime.h"
#include "platform/services.h"

namespace koru {

namespace {

    constexpr ULONG NameLength = 40; // characters that the chain manager may write
    constexpr WCHAR Extension[] = u".dll";
    constexpr ULONG FileNameLength = NameLength + sizeof(Extension) / sizeof(WCHAR);
    static_assert(FileNameLength == 45);

    using PFN_GetNextDriver = ULONG(__attribute__((cdecl)) *)(ULONG, ULONG, const WCHAR* module, WCHAR* name,
                                                              ULONG nameLength);

    const char* MessageFor(ULONG status)
    {
        switch (status) {
        case 1:
            return "DCMGetNextDriver returned DCERR_REGISTRY_ACCESS error: %08X\n";
        case 2:
            return "DCMGetNextDriver returned DCERR_INVALID_PARAM error: %08X\n";
        case 3:
            return "DCMGetNextDriver returned DCERR_IDD_NOT_FOUND error: %08X\n";
        case 4:
            return "DCMGetNextDriver returned DCERR_CHAINDRIVER_NOTFOUND error: %08X\n";
        case 6:
            return "DCMGetNextDriver returned DCERR_INSUFFICIENT_BUFFER error: %08X\n";
        default:
            return "DCMGetNextDriver returned unknown error: %08X\n";
        }
    }

    // A name that fills its buffer gets no extension.
    WCHAR* FileNameOf(const WCHAR (&name)[NameLength + 1])
    {
        auto* const fileName = static_cast<WCHAR*>(AllocateFromPool(FileNameLength * sizeof(WCHAR)));
        if (!fileName)
            return nullptr;
        memcpy(fileName, name, NameLength * sizeof(WCHAR));
        ULONG length = 0;
        while (length < NameLength && fileName[length] != 0)
            ++length;
        if (length < NameLength)
            memcpy(fileName + length, Extension, sizeof(Extension));
        return fileName;
    }

    WCHAR* AskChainManager(PFN_GetNextDriver getNextDriver)
    {
        WCHAR name[NameLength + 1] = {}; // one more than the chain manager knows of: always terminated
        const ULONG status = getNextDriver(1, 0, u"koru", name, NameLength);
        if (status != 0) {
            DebugPrint(MessageFor(status), status);
            return nullptr;
        }
        DebugPrint("DCMGetNextDriver success: %S\n", name);
        return FileNameOf(name);
    }

} // namespace

WCHAR* DCMGetNextDriver()
{
    const HANDLE manager = EngLoadImage(const_cast<WCHAR*>(u"dcmkrnl.dll"));
    if (!manager) {
        DebugPrint("Unable to load dcmkrnl.dll\n");
        return nullptr;
    }
    WCHAR* fileName = nullptr;
    if (const auto getNextDriver = FindExport<PFN_GetNextDriver>(manager, "GetNextDriver"))
        fileName = AskChainManager(getNextDriver);
    else
        DebugPrint("Unable to find GetNextDriver entry point in dcmkrnl.dll\n");
    EngUnloadImage(manager);
    return fileName;
}

} // namespace koru
