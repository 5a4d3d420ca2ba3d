#pragma once

// A stand-in for the kernel around one module: what korutap.sys imports, and the sending of requests as the
// I/O manager makes them. One at a time. What a real kernel would not survive fails the test at once.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/loader/pe_image.h"
#include "tests/links/kernel_structures.h"

namespace links {

struct CreatedDevice {
    std::u16string name;
    ULONG type, characteristics;
    bool exclusive;
    DEVICE_OBJECT object;
};

struct Answer {
    NTSTATUS status;
    ULONG information;
    std::vector<BYTE> output; // `information` bytes
};

class Kernel {
public:
    Kernel();
    ~Kernel();
    Kernel(const Kernel&) = delete;
    Kernel& operator=(const Kernel&) = delete;
    static Kernel& Current();

    static engine::ImageKind ModuleKind(); // imports from ntoskrnl.exe and hal.dll

    NTSTATUS Start(const engine::PeImage& module); // calls its DriverEntry

    // One request as the I/O manager sends it: `output` bytes behind each other in a system buffer that is not
    // cleared, none for a size of 0. The module must complete it once, with the status that it returns.
    Answer Send(BYTE major, ULONG output = 0, ULONG code = 0, ULONG input = 0);

    bool holdsDebugPrivilege = true;
    NTSTATUS createDeviceStatus = StatusSuccess, createLinkStatus = StatusSuccess; // to answer with
    ULONG processId = 0x123, threadId = 0x456;
    // Called when a spin lock is about to be taken: what another processor does just then.
    std::function<void()> beforeLock;
    // Pages that fault while a spin lock is held, as paged memory may.
    void MakePageable(void* pages, std::size_t size);

    std::optional<CreatedDevice> device;
    std::u16string link, linkTarget;
    DRIVER_OBJECT driver = {};
    bool lockHeld = false;
    ULONG locksTaken = 0;

    // The imported functions' bodies.
    void ProtectPageable(bool held);
    ULONG completions = 0;

private:
    void* pageable_ = nullptr;
    std::size_t pageableSize_ = 0;
};

} // namespace links
