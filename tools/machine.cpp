#include "tools/machine.h"

#include <stdexcept>

#include "client/control.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/linked_driver.h"
#include "engine/loader/pe_image.h"

namespace tools {

namespace {

    // The consumer's functions carry no context, and there is one machine at a time.
    Machine::RecordSink recordSink;

    LONG APIENTRY ConsumerReady()
    {
        return 1;
    }
    LONG APIENTRY TakeRecord(BYTE* record, ULONG length, LONG flag)
    {
        recordSink(record, length, flag);
        return 0;
    }
    ULONG APIENTRY CallerIdentifier(LONG selector)
    {
        return selector == 0 ? 1 : 0;
    }

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

    void RegisterDriver(const std::string& image)
    {
        std::string error;
        if (image.empty())
            engine::RegisterLinkedDriver();
        else if (!engine::RegisterImageFile(u"koru", image, error))
            throw std::runtime_error(image + ": " + error);
    }

} // namespace

Machine::Machine(const MachineSetup& setup)
    : engine_(std::make_unique<engine::Engine>())
{
    engine::RegisterChainManager();
    engine::RegisterFrameBuffer();
    RegisterDriver(setup.image);
    engine_->StepCounter(358); // every reading of the clock is 0.1 ms later
    driver_ = std::make_unique<engine::DisplayDriver>(u"koru");
    if (!driver_->IsEnabled())
        throw std::runtime_error("the driver refused to start: " + driver_->Error());
    device_ = std::make_unique<engine::Device>(*driver_);
    if (!device_->Enable(setup.mode))
        throw std::runtime_error("the screen could not be brought up: " + device_->Error());
}

Machine::~Machine()
{
    device_.reset();
    driver_.reset();
    engine_.reset();
    recordSink = nullptr;
}

engine::Surface& Machine::VirtualScreen()
{
    return *engine::FindSurface(reinterpret_cast<HSURF>(device_->PrimarySurface()->dhsurf));
}

engine::Surface& Machine::RealScreen()
{
    return *engine::FrameBufferPicture(device_->Dhpdev());
}

std::int32_t Machine::Escape(ULONG code, const void* in, std::size_t inSize, void* out, std::size_t outSize)
{
    const auto escape = driver_->Function<PFN_DrvEscape>(INDEX_DrvEscape);
    return static_cast<std::int32_t>(escape(selected_ ? selected_ : device_->PrimarySurface(), code,
                                            static_cast<ULONG>(inSize), const_cast<void*>(in),
                                            static_cast<ULONG>(outSize), out));
}

void Machine::InstallConsumer(RecordSink sink)
{
    recordSink = std::move(sink);
    const ULONG input[6] = {36, AddressOf(&ConsumerReady), 0, AddressOf(&TakeRecord), AddressOf(&CallerIdentifier), 0};
    ULONG output = 0;
    Escape(0x490914, input, sizeof(input), &output, sizeof(output));
}

} // namespace tools
