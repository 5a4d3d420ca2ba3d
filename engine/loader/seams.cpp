#include "engine/loader/seams.h"

#include <sys/mman.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/core/engine.h"

namespace engine {

namespace {

    constexpr std::size_t CodeSize = 0x1000, EntrySize = 10;
    constexpr unsigned char PushWord = 0x68, Jump = 0xE9;
    constexpr ULONG DirectionFlag = 0x400;

    void Report(const std::string& violation)
    {
        if (Engine::Exists())
            return Engine::Current().Report(violation);
        std::fprintf(stderr, "%s\n", violation.c_str());
        std::abort();
    }

} // namespace

// As engine_seam leaves it on the stack, from the lowest address upward.
struct SeamExit {
    ULONG stack, edi, esi, ebx, flags, eax, edx, expectedStack;
    ULONG savedEdi, savedEsi, savedEbx, frame;
    Seams::Seam* seam;
    ULONG returnAddress;
    ULONG arguments[1]; // as many as the seam says
};

void Leave(SeamExit& exit)
{
    const Seams::Seam& seam = *exit.seam;
    const std::string& name = seam.function.name;
    if (exit.stack != exit.expectedStack)
        Report(name + " takes " + std::to_string(static_cast<LONG>(seam.takenBytes + exit.stack - exit.expectedStack))
               + " bytes of arguments off the stack instead of " + std::to_string(seam.takenBytes));
    // Before the call they held the seam, its complement and the frame.
    const ULONG kept = reinterpret_cast<ULONG>(exit.seam);
    if (exit.ebx != kept || exit.esi != ~kept || exit.edi != reinterpret_cast<ULONG>(&exit.frame))
        Report(name + " changes a register that belongs to its caller");
    if (exit.flags & DirectionFlag)
        Report(name + " leaves the direction flag set");
    if (seam.function.finish)
        exit.eax = seam.function.finish(exit.arguments, exit.eax);
}

extern "C" void engine_seam_leave(SeamExit* exit)
{
    Leave(*exit);
}

// On entry: the seam, the return address, the arguments.
asm(R"(
    .text
engine_seam:
    push %ebp
    mov %esp, %ebp
    push %ebx
    push %esi
    push %edi
    mov 4(%ebp), %ebx
    mov 4(%ebx), %ecx           # bytes of arguments
    push %eax                   # room for the expected stack pointer
    sub %ecx, %esp
    and $-16, %esp
    mov 8(%ebx), %eax           # bytes that the callee takes
    add %esp, %eax
    mov %eax, -16(%ebp)
    lea 12(%ebp), %esi
    mov %esp, %edi
    shr $2, %ecx
    cld
    rep movsl
    mov %ebx, %esi
    not %esi
    mov %ebp, %edi
    call *(%ebx)
    mov %esp, %ecx
    lea -16(%ebp), %esp         # whatever the callee did to it
    push %edx
    push %eax
    pushf
    push %ebx
    push %esi
    push %edi
    push %ecx
    cld
    mov %esp, %eax
    and $-16, %esp
    sub $12, %esp
    push %eax
    call engine_seam_leave
    mov -24(%ebp), %eax
    mov -20(%ebp), %edx
    mov -4(%ebp), %ebx
    mov -8(%ebp), %esi
    mov -12(%ebp), %edi
    push %eax
    mov 4(%ebp), %ecx           # the return address goes behind the arguments that the caller is rid of
    mov 8(%ecx), %ecx
    mov 8(%ebp), %eax
    mov %eax, 8(%ebp,%ecx)
    lea 8(%ebp,%ecx), %ecx
    pop %eax
    mov (%ebp), %ebp
    mov %ecx, %esp
    ret
)");
extern "C" void engine_seam();

Seams::Seams()
{
    void* const place = mmap(nullptr, CodeSize, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    code_ = place == MAP_FAILED ? nullptr : static_cast<unsigned char*>(place);
}

Seams::~Seams()
{
    if (code_)
        munmap(code_, CodeSize);
}

PFN Seams::Add(SeamFunction function)
{
    if (!code_ || (seams_.size() + 1) * EntrySize > CodeSize)
        return nullptr;
    unsigned char* const entry = code_ + seams_.size() * EntrySize;
    const ULONG taken = function.calleeTakesThem ? function.argumentBytes : 0;
    seams_.push_back({function.target, function.argumentBytes, taken, std::move(function)});
    const auto seam = reinterpret_cast<ULONG>(&seams_.back());
    const auto distance = reinterpret_cast<ULONG>(&engine_seam) - reinterpret_cast<ULONG>(entry + EntrySize);
    entry[0] = PushWord;
    std::memcpy(entry + 1, &seam, sizeof(seam));
    entry[5] = Jump;
    std::memcpy(entry + 6, &distance, sizeof(distance));
    return reinterpret_cast<PFN>(entry);
}

} // namespace engine
