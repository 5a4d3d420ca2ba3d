#include "tests/links/kernel.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <utility>

#define FASTCALL __attribute__((fastcall))

namespace links {

namespace {

    Kernel* current = nullptr;

    constexpr BYTE PassiveLevel = 0, UserMode = 1;
    constexpr ULONG DebugPrivilege = 20;

    std::u16string TextOf(const UNICODE_STRING& string)
    {
        EXPECT_EQ(string.MaximumLength, string.Length + 2);
        return {string.Buffer, string.Length / sizeof(WCHAR)};
    }

    void ExpectPassive(const char* function)
    {
        EXPECT_FALSE(current->lockHeld) << function << " called with a spin lock held";
    }

    NTSTATUS APIENTRY CreateDevice(DRIVER_OBJECT* driver, ULONG extension, UNICODE_STRING* name, ULONG type,
                                   ULONG characteristics, BYTE exclusive, DEVICE_OBJECT** device)
    {
        ExpectPassive("IoCreateDevice");
        EXPECT_EQ(driver, &current->driver);
        EXPECT_EQ(extension, 0u);
        if (current->createDeviceStatus != StatusSuccess)
            return current->createDeviceStatus;
        current->device = {TextOf(*name), type, characteristics, exclusive != 0, {}};
        *device = &current->device->object;
        return StatusSuccess;
    }

    void APIENTRY DeleteDevice(DEVICE_OBJECT* device)
    {
        ExpectPassive("IoDeleteDevice");
        ASSERT_TRUE(current->device);
        EXPECT_EQ(device, &current->device->object);
        current->device.reset();
    }

    NTSTATUS APIENTRY CreateSymbolicLink(UNICODE_STRING* link, UNICODE_STRING* target)
    {
        ExpectPassive("IoCreateSymbolicLink");
        if (current->createLinkStatus != StatusSuccess)
            return current->createLinkStatus;
        current->link = TextOf(*link);
        current->linkTarget = TextOf(*target);
        return StatusSuccess;
    }

    void FASTCALL CompleteRequest(IRP*, signed char boost)
    {
        ExpectPassive("IoCompleteRequest");
        EXPECT_EQ(boost, 0);
        ++current->completions;
    }

    BYTE APIENTRY SinglePrivilegeCheck(LUID privilege, signed char mode)
    {
        ExpectPassive("SeSinglePrivilegeCheck");
        EXPECT_EQ(privilege.LowPart, DebugPrivilege);
        EXPECT_EQ(privilege.HighPart, 0);
        return mode != UserMode || current->holdsDebugPrivilege;
    }

    HANDLE APIENTRY CurrentProcessId()
    {
        return reinterpret_cast<HANDLE>(current->processId);
    }

    HANDLE APIENTRY CurrentThreadId()
    {
        return reinterpret_cast<HANDLE>(current->threadId);
    }

    BYTE FASTCALL AcquireSpinLock(ULONG* lock)
    {
        if (const auto other = std::exchange(current->beforeLock, nullptr))
            other();
        EXPECT_EQ(*lock, 0u) << "a deadlock: the lock is held already";
        *lock = 1;
        current->lockHeld = true;
        ++current->locksTaken;
        current->ProtectPageable(true);
        return PassiveLevel;
    }

    void FASTCALL ReleaseSpinLock(ULONG* lock, BYTE level)
    {
        current->ProtectPageable(false);
        EXPECT_EQ(*lock, 1u) << "the lock is not held";
        EXPECT_EQ(level, PassiveLevel);
        *lock = 0;
        current->lockHeld = false;
    }

    template<class Function> PFN Export(Function* function)
    {
        return reinterpret_cast<PFN>(function);
    }

} // namespace

Kernel::Kernel()
{
    current = this;
}

Kernel::~Kernel()
{
    EXPECT_FALSE(lockHeld);
    current = nullptr;
}

Kernel& Kernel::Current()
{
    return *current;
}

engine::ImageKind Kernel::ModuleKind()
{
    const engine::Exports kernel = {
        {"IoCreateDevice", Export(CreateDevice)},
        {"IoCreateSymbolicLink", Export(CreateSymbolicLink)},
        {"IoDeleteDevice", Export(DeleteDevice)},
        {"IofCompleteRequest", Export(CompleteRequest)},
        {"PsGetCurrentProcessId", Export(CurrentProcessId)},
        {"PsGetCurrentThreadId", Export(CurrentThreadId)},
        {"SeSinglePrivilegeCheck", Export(SinglePrivilegeCheck)},
    };
    const engine::Exports hardware = {{"KfAcquireSpinLock", Export(AcquireSpinLock)},
                                      {"KfReleaseSpinLock", Export(ReleaseSpinLock)}};
    return {false, {{"ntoskrnl.exe", kernel}, {"hal.dll", hardware}}};
}

NTSTATUS Kernel::Start(const engine::PeImage& module)
{
    const auto entry =
        reinterpret_cast<NTSTATUS(APIENTRY*)(DRIVER_OBJECT*, const UNICODE_STRING*)>(module.EntryPoint());
    const UNICODE_STRING registryPath = {0, 0, nullptr};
    return entry(&driver, &registryPath);
}

Answer Kernel::Send(BYTE major, ULONG output, ULONG code, ULONG input)
{
    constexpr BYTE untouched = 0xA5;
    constexpr ULONG guard = 64;
    const PDRIVER_DISPATCH function = driver.MajorFunction[major];
    if (!function || !device) {
        ADD_FAILURE() << "nothing takes request " << int{major};
        return {};
    }
    const ULONG size = std::max(output, input);
    std::vector<BYTE> buffer(size + guard, untouched);
    IO_STACK_LOCATION location = {};
    location.MajorFunction = major;
    if (major == MajorRead)
        location.Parameters.Read.Length = output;
    else
        location.Parameters.DeviceIoControl = {output, input, code, nullptr};
    location.DeviceObject = &device->object;
    IRP irp = {};
    irp.AssociatedIrp.SystemBuffer = size == 0 ? nullptr : buffer.data();
    irp.RequestorMode = UserMode;
    irp.Tail.Overlay.CurrentStackLocation = &location;

    completions = 0;
    const NTSTATUS status = function(&device->object, &irp);
    EXPECT_EQ(completions, 1u);
    EXPECT_EQ(status, irp.IoStatus.Status);
    EXPECT_LE(irp.IoStatus.Information, output);
    const ULONG written = std::min(irp.IoStatus.Information, output);
    for (ULONG i = written; i < buffer.size(); ++i)
        if (buffer[i] != untouched) {
            ADD_FAILURE() << "byte " << i << " is written, " << written << " are announced";
            break;
        }
    return {status, irp.IoStatus.Information, {buffer.begin(), buffer.begin() + written}};
}

void Kernel::MakePageable(void* pages, std::size_t size)
{
    pageable_ = pages;
    pageableSize_ = size;
}

void Kernel::ProtectPageable(bool held)
{
    if (!pageable_)
        return;
    EXPECT_EQ(mprotect(pageable_, pageableSize_, held ? PROT_NONE : PROT_READ | PROT_WRITE), 0);
}

} // namespace links
