// korutap.sys: the consumer of Koru's records. A reader opens its device, installs the entry points found here
// in Koru, and reads what Koru then submits; korutap.h describes that side.
//
// Koru keeps the entry points until others are installed, and nothing tells this module when that is. So it has
// no unload routine: once started, it stays until the system stops.

#include "packaging/korutap/korutap.h"
#include "packaging/korutap/kernel.h"
#include "packaging/korutap/ring.h"

namespace korutap {

namespace {

    // Of the image's own memory, which is resident: sections of a driver are paged only on request.
    constinit uint8_t RingRoom[RingBytes] = {};
    constinit Ring Records(RingRoom, RingBytes);

    // Guards Records and Reading. A spin lock, as the submitting side must never wait for a thread that is not
    // running; it is held for one record's copy at most, and only resident memory is touched under it.
    constinit KSPIN_LOCK Lock = 0;
    constinit bool Reading = false; // between a reader's open and its last handle's end
    constinit LONG Opened = 0; // 1 until all I/O of the reader has ended, too

    // Koru's buffer is paged memory: a record comes here first, then under the lock into the ring.
    constinit uint8_t Stage[MostRecordBytes] = {};
    constinit LONG StageTaken = 0;

    class Locked {
    public:
        Locked() { KeAcquireSpinLock(&Lock, &before_); }
        ~Locked() { KeReleaseSpinLock(&Lock, before_); }
        Locked(const Locked&) = delete;
        Locked& operator=(const Locked&) = delete;

    private:
        KIRQL before_;
    };

    bool HasReader()
    {
        return __atomic_load_n(&Reading, __ATOMIC_RELAXED);
    }

    void SetReading(bool reading)
    {
        const Locked locked;
        Records.Clear();
        Reading = reading;
    }

    // The five entry points. Koru calls them with its semaphore held, below DISPATCH_LEVEL; none of them waits,
    // allocates or calls Koru.

    LONG NTAPI QC()
    {
        return HasReader();
    }

    LONG NTAPI QD()
    {
        return 0;
    }

    LONG Keep(const void* record, ULONG length, LONG flag)
    {
        const Locked locked;
        return Reading && Records.Put(record, length, flag);
    }

    // 1 when the record is kept. Koru submits one at a time; a second one meanwhile, of whomever, is refused.
    LONG NTAPI QP(const void* record, ULONG length, LONG flag)
    {
        if (!HasReader())
            return 0;
        if (!record || length == 0 || length > MostRecordBytes || InterlockedExchange(&StageTaken, 1) != 0)
            return Keep(nullptr, length, flag);
        memcpy(Stage, record, length);
        const LONG kept = Keep(Stage, length, flag);
        InterlockedExchange(&StageTaken, 0);
        return kept;
    }

    ULONG NTAPI GSD(LONG selector)
    {
        switch (selector) {
        case 0:
            return reinterpret_cast<ULONG>(PsGetCurrentProcessId());
        case 1:
            return reinterpret_cast<ULONG>(PsGetCurrentThreadId());
        default:
            return 0;
        }
    }

    LONG NTAPI DSF()
    {
        return 0;
    }

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

    NTSTATUS Complete(IRP* irp, NTSTATUS status, ULONG_PTR information = 0)
    {
        irp->IoStatus.Status = status;
        irp->IoStatus.Information = information;
        IoCompleteRequest(irp, IO_NO_INCREMENT);
        return status;
    }

    // Records hold all text on the screen, and the addresses are the kernel's: not for every user. The check is
    // made for callers in the kernel, too.
    bool IsAllowed()
    {
        constexpr LUID debug = {SE_DEBUG_PRIVILEGE, 0};
        return SeSinglePrivilegeCheck(debug, UserMode);
    }

    NTSTATUS NTAPI Create(DEVICE_OBJECT*, IRP* irp)
    {
        if (!IsAllowed())
            return Complete(irp, STATUS_PRIVILEGE_NOT_HELD);
        if (InterlockedCompareExchange(&Opened, 1, 0) != 0)
            return Complete(irp, STATUS_DEVICE_BUSY);
        SetReading(true);
        return Complete(irp, STATUS_SUCCESS);
    }

    // The last handle is closed; a read on another thread may still be running.
    NTSTATUS NTAPI Cleanup(DEVICE_OBJECT*, IRP* irp)
    {
        SetReading(false);
        return Complete(irp, STATUS_SUCCESS);
    }

    NTSTATUS NTAPI Close(DEVICE_OBJECT*, IRP* irp)
    {
        InterlockedExchange(&Opened, 0);
        return Complete(irp, STATUS_SUCCESS);
    }

    ULONG TakeOne(UCHAR* target, ULONG room)
    {
        const Locked locked;
        return Records.Take(target, room);
    }

    // The lock is given back between records, so that a long read does not hold up the submitting side.
    NTSTATUS NTAPI Read(DEVICE_OBJECT*, IRP* irp)
    {
        const ULONG room = IoGetCurrentIrpStackLocation(irp)->Parameters.Read.Length;
        if (room < ReadRoom)
            return Complete(irp, STATUS_BUFFER_TOO_SMALL);
        auto* const target = static_cast<UCHAR*>(irp->AssociatedIrp.SystemBuffer);
        ULONG done = 0;
        while (const ULONG taken = TakeOne(target + done, room - done))
            done += taken;
        return Complete(irp, STATUS_SUCCESS, done);
    }

    EntryPoints OwnEntryPoints()
    {
        return {.version = Version,
                .qc = AddressOf(&QC),
                .qd = AddressOf(&QD),
                .qp = AddressOf(&QP),
                .gsd = AddressOf(&GSD),
                .dsf = AddressOf(&DSF)};
    }

    Statistics CurrentStatistics()
    {
        const Locked locked;
        return Records.Counts();
    }

    template<class Answer> NTSTATUS CompleteWith(IRP* irp, const Answer& answer)
    {
        if (IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength < sizeof(answer))
            return Complete(irp, STATUS_BUFFER_TOO_SMALL);
        *static_cast<Answer*>(irp->AssociatedIrp.SystemBuffer) = answer;
        return Complete(irp, STATUS_SUCCESS, sizeof(answer));
    }

    constexpr ULONG ControlCode(ULONG number)
    {
        return CTL_CODE(FILE_DEVICE_UNKNOWN, 0x800 + number, METHOD_BUFFERED, FILE_READ_ACCESS);
    }
    static_assert(GetEntryPoints == ControlCode(0) && GetStatistics == ControlCode(1));

    NTSTATUS NTAPI DeviceControl(DEVICE_OBJECT*, IRP* irp)
    {
        switch (IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.IoControlCode) {
        case GetEntryPoints:
            return CompleteWith(irp, OwnEntryPoints());
        case GetStatistics:
            return CompleteWith(irp, CurrentStatistics());
        default:
            return Complete(irp, STATUS_INVALID_DEVICE_REQUEST);
        }
    }

    template<size_t Size> UNICODE_STRING StringOf(const WCHAR (&text)[Size])
    {
        return {sizeof(text) - sizeof(WCHAR), sizeof(text), const_cast<WCHAR*>(text)};
    }

    NTSTATUS CreateDevice(DRIVER_OBJECT* driver)
    {
        UNICODE_STRING name = StringOf(L"\\Device\\KoruTap");
        UNICODE_STRING link = StringOf(L"\\DosDevices\\KoruTap");
        DEVICE_OBJECT* device = nullptr;
        NTSTATUS status =
            IoCreateDevice(driver, 0, &name, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN, FALSE, &device);
        if (!NT_SUCCESS(status))
            return status;
        device->Flags |= DO_BUFFERED_IO;
        status = IoCreateSymbolicLink(&link, &name);
        if (!NT_SUCCESS(status))
            IoDeleteDevice(device);
        return status;
    }

} // namespace

} // namespace korutap

extern "C" NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING*)
{
    driver->MajorFunction[IRP_MJ_CREATE] = korutap::Create;
    driver->MajorFunction[IRP_MJ_CLEANUP] = korutap::Cleanup;
    driver->MajorFunction[IRP_MJ_CLOSE] = korutap::Close;
    driver->MajorFunction[IRP_MJ_READ] = korutap::Read;
    driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = korutap::DeviceControl;
    return korutap::CreateDevice(driver);
}
