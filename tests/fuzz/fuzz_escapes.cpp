// libFuzzer entry: escapes of every family with hostile buffers, drawing calls and shortages between them.

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
        if (input.OneIn(4))
            Draw(machine, make, input);
        else
            escapes.Make();
    DeleteDeviceBitmaps(make);
    return 0;
}
