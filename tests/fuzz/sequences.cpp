#include "tests/fuzz/sequences.h"

#include "tests/fuzz/drawing.h"
#include "tests/fuzz/escapes.h"

namespace fuzz {

void RunSequences(const std::uint8_t* data, std::size_t size, ULONG drawing)
{
    Input input(data, size);
    Machine machine(input);
    Objects make(machine, input);
    Escapes escapes(machine, make, input);
    while (!input.IsAtEnd()) {
        escapes.Begin();
        for (ULONG calls = 4 + input.Below(6); calls > 0 && !input.IsAtEnd(); --calls, ++CallsRun)
            if (input.Below(16) < drawing)
                Draw(machine, make, input);
            else
                escapes.Make();
        SequencesRun += !input.IsAtEnd(); // the last one is cut somewhere
    }
    DeleteDeviceBitmaps(make);
}

} // namespace fuzz
