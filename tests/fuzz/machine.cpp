#include "tests/fuzz/machine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "client/json_lines.h"
#include "client/record_decoder.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/linked_driver.h"

namespace fuzz {

namespace {

    namespace client = koru::client;

    constexpr ULONG KoruEscape = 0x490914;
    constexpr ULONG CaptureOn = 2, InstallFunctions = 36, SetMask = 57;
    constexpr ULONG GuardWord = 0x0F0D0F0D;

    void CheckRecord(std::span<const std::byte> bytes)
    {
        const auto record = client::Record::Decode(bytes);
        if (!record || record->length() != bytes.size())
            Fail("a record that does not decode");
        if (!client::UnknownRanges(*record).empty())
            Fail("a record with unknown bytes: " + client::JsonLine(bytes, 0));
    }

    LONG APIENTRY Ready()
    {
        return 1;
    }
    LONG APIENTRY TakeRecord(BYTE* buffer, ULONG length, LONG)
    {
        if (!buffer)
            return length == 0 ? 0 : (Fail("a record without a buffer"), 0);
        ULONG guard = 0;
        std::memcpy(&guard, buffer + client::RecordRoom, sizeof(guard));
        if (guard != GuardWord || length > client::RecordRoom)
            Fail("a record ran over the buffer");
        if (length != 0)
            CheckRecord(std::as_bytes(std::span(buffer, length)));
        return 0;
    }
    ULONG APIENTRY Identifier(LONG selector)
    {
        return static_cast<ULONG>(selector) + 1;
    }

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

    engine::Mode ModeOf(Input& input)
    {
        constexpr ULONG depths[] = {32, 8, 16, 24, 4, 15};
        const SIZEL most = input.OneIn(16) ? LargestScreen : UsualScreen;
        return {1 + input.Below(static_cast<ULONG>(most.cx)), 1 + input.Below(static_cast<ULONG>(most.cy)),
                input.Of(depths)};
    }

    engine::FrameBufferOptions FrameBufferOf(Input& input, ULONG stride)
    {
        constexpr ULONG optional[] = {INDEX_DrvCopyBits,    INDEX_DrvEscape,      INDEX_DrvRealizeBrush,
                                      INDEX_DrvDitherColor, INDEX_DrvMovePointer, INDEX_DrvSetPointerShape,
                                      INDEX_DrvSetPalette,  INDEX_DrvGetModes,    INDEX_DrvSynchronize};
        engine::FrameBufferOptions options;
        options.fiveFiveFive = input.OneIn(2);
        if (input.OneIn(4))
            options.lDelta = static_cast<LONG>(stride) * (input.OneIn(2) ? -1 : 1);
        if (input.OneIn(4))
            options.missing.insert(input.Of(optional));
        return options;
    }

    ULONG VersionOf(Input& input)
    {
        constexpr ULONG versions[] = {DDI_DRIVER_VERSION_NT5_01, DDI_DRIVER_VERSION_NT5_01, DDI_DRIVER_VERSION_NT5,
                                      DDI_DRIVER_VERSION_NT4};
        return input.Of(versions);
    }

} // namespace

void Fail(const std::string& reason)
{
    std::fprintf(stderr, "%s\n", reason.c_str());
    std::abort();
}

Machine::Machine(Input& input)
{
    const engine::Mode mode = ModeOf(input);
    constexpr ULONG widestRow = static_cast<ULONG>(LargestScreen.cx) * 4;
    engine::RegisterChainManager();
    engine::RegisterFrameBuffer(FrameBufferOf(input, widestRow));
    if (input.OneIn(2)) {
        std::vector<BYTE> options(input.Below(12));
        for (BYTE& option : options)
            option = static_cast<BYTE>('0' + input.Below(12));
        engine_.RegisterModule(u"KORU.ini", options);
    }
    engine::RegisterLinkedDriver();
    driver_ = std::make_unique<engine::DisplayDriver>(u"koru", VersionOf(input));
    device_ = std::make_unique<engine::Device>(*driver_);
    if (!device_->Enable(mode))
        Fail("the screen could not be brought up: " + driver_->Error() + device_->Error());
    if (input.OneIn(4)) {
        second_ = std::make_unique<engine::Device>(*driver_);
        if (!second_->Enable(ModeOf(input)))
            Fail("the second screen could not be brought up: " + second_->Error());
    }
    locksAtRest_ = engine_.Outstanding().locks;
    engine_.StepCounter(358 * 100); // every reading of the clock is 10 ms later
    StartCapture();
    Check("start");
}

Machine::~Machine()
{
    engine_.StopFailing();
    device_.reset();
    second_.reset();
    driver_.reset();
    engine_.CheckGuards();
    Check("end");
}

std::vector<ULONG> Machine::ConsumerFunctions()
{
    return {AddressOf(&Ready), 0, AddressOf(&TakeRecord), AddressOf(&Identifier), 0};
}

ULONG Machine::Escape(const std::vector<ULONG>& in)
{
    std::vector<ULONG> input = in;
    ULONG output[4] = {};
    Hook<PFN_DrvEscape>(INDEX_DrvEscape)(Screen(), KoruEscape, static_cast<ULONG>(input.size() * sizeof(ULONG)),
                                         input.data(), sizeof(output), output);
    return output[0];
}

void Machine::StartCapture()
{
    Escape({CaptureOn, 0, 0, 0, 0, 0});
    std::vector<ULONG> install = ConsumerFunctions();
    install.insert(install.begin(), InstallFunctions);
    Escape(install);
    Escape({SetMask, 0xFFFFFFFF, 0, 0, 0, 0});
}

void Machine::ChangeMode(Input& input)
{
    engine::ChangeMode(device_, ModeOf(input));
}

void Machine::SemaphoreMayBeHeldOnceMore()
{
    if (engine_.Outstanding().semaphoreHolds == expectedHolds_ + 1)
        ++expectedHolds_;
}

void Machine::Check(const char* call)
{
    if (!engine_.Violations().empty())
        Fail(std::string(call) + ": " + engine_.Violations().front());
    const engine::Resources resources = engine_.Outstanding();
    if (resources.locks != locksAtRest_)
        Fail(std::string(call) + ": a lock is left");
    if (resources.semaphoreHolds != expectedHolds_ && driver_)
        Fail(std::string(call) + ": the semaphore is held " + std::to_string(resources.semaphoreHolds) + " times, not "
             + std::to_string(expectedHolds_));
    engine_.ClearDebugOutput();
}

} // namespace fuzz
