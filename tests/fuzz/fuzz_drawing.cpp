// libFuzzer entry: drawing calls with hostile numbers and missing arguments, under zoomers.

#include "tests/fuzz/drawing.h"
#include "tests/fuzz/escapes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    fuzz::Machine machine(input);
    fuzz::Objects make(machine, input);
    fuzz::Escapes escapes(machine, make, input);
    escapes.AddZoomers();
    while (!input.IsAtEnd())
        Draw(machine, make, input);
    DeleteDeviceBitmaps(make);
    return 0;
}
