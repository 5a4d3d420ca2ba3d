#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/platform.h"

namespace engine {

// A function that one side of an interface calls on the other, and what both have agreed on.
struct SeamFunction {
    std::string name; // for reports: "the driver's DrvBitBlt"
    PFN target = nullptr;
    ULONG argumentBytes = 0; // that the caller puts on the stack, a multiple of 4
    bool calleeTakesThem = true; // stdcall; else cdecl
    // If set, called after each call with its arguments and its result; the caller gets what it gives.
    std::function<ULONG(const ULONG* arguments, ULONG result)> finish;
};

// What a seam is found to do at one call.
struct SeamExit;

// Functions behind a few bytes of code that call them with a copy of the arguments and then compare the stack
// pointer and the registers that belong to the caller. What is wrong becomes a violation of the current engine, one
// line for each call; the caller goes on as if all had been right.
class Seams {
public:
    Seams();
    ~Seams();
    Seams(const Seams&) = delete;
    Seams& operator=(const Seams&) = delete;

    // What the other side is given instead of the target: callable while these seams live. Null when there is no
    // room left.
    PFN Add(SeamFunction function);

private:
    // The first three words are what the code at the seam reads.
    struct Seam {
        PFN target;
        ULONG argumentBytes, takenBytes;
        SeamFunction function;
    };
    friend struct SeamExit;
    friend void Leave(SeamExit& exit);

    unsigned char* code_;
    std::deque<Seam> seams_;
};

} // namespace engine
