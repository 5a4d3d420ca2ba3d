#pragma once

#include "client/escape_codes.h"
#include "tests/fuzz/objects.h"

namespace fuzz {

// Escapes as an input chooses them, on any surface, with buffers of any size and numbers that were answered
// before.
class Escapes {
public:
    Escapes(Machine& machine, Objects& make, Input& input)
        : machine_(machine)
        , make_(make)
        , input_(input)
    {
    }
    void Make(); // one escape, or one thing that happens between two
    void Begin(); // a sequence: nothing fails, everything is captured, a few zoomers show something

private:
    void AddZoomers();
    void AddZoomer();
    ULONG Argument();
    std::vector<ULONG> KoruWords();
    std::vector<ULONG> ZoomWords();
    ULONG Send(SURFOBJ* pso, ULONG code, std::vector<BYTE> in, std::size_t outSize);
    void SendWords(ULONG code, const std::vector<ULONG>& words);
    ULONG SendZoom(koru::client::ZoomCommand command, ULONG id, const RECTL& values, ULONG c = 0); // its answer
    void SendKoru();
    void SendAnyZoom();
    void SendChain();
    void SendQuery();
    void SendOther();
    void RunShort();
    void PassTime();
    void ChangeMode();
    void ScrollZoomer();
    void AddOverlay();

    Machine& machine_;
    Objects& make_;
    Input& input_;
    std::vector<ULONG> zoomers_;
    std::vector<ULONG> answers_; // zones and other numbers that the driver gave
};

} // namespace fuzz
