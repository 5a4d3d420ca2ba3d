#include "engine/loader/linked_driver.h"

#include <vector>

#include "engine/core/engine.h"

extern "C" BOOL APIENTRY DrvEnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded);

// Where driver_data.ld gathers the data of the driver's library.
extern "C" char koru_driver_data_begin[];
extern "C" char koru_driver_data_end[];

namespace engine {

namespace {

    // Byte by byte and unchecked: between the globals lie the guard zones of an instrumented build.
    __attribute__((no_sanitize("address", "undefined"), noinline)) void
    CopyUnchecked(volatile char* target, const volatile char* source, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            target[i] = source[i];
    }

} // namespace

void ResetLinkedDriver()
{
    const auto size = static_cast<std::size_t>(koru_driver_data_end - koru_driver_data_begin);
    static const std::vector<char> initial = [size] {
        std::vector<char> copy(size);
        CopyUnchecked(copy.data(), koru_driver_data_begin, size);
        return copy;
    }();
    CopyUnchecked(koru_driver_data_begin, initial.data(), size);
}

void RegisterLinkedDriver(const std::u16string& name)
{
    Engine::Current().RegisterImage(
        name,
        [] {
            ResetLinkedDriver();
            return static_cast<HANDLE>(koru_driver_data_begin);
        },
        [](HANDLE) {},
        [](HANDLE, const char* function) {
            return std::string(function) == "DrvEnableDriver" ? reinterpret_cast<PFN>(&DrvEnableDriver) : nullptr;
        });
}

} // namespace engine
