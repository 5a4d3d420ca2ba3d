#pragma once

// What the tests of the escapes share: escapes on any surface with any buffers, and what became of them.

#include "tests/conformance/session.h"

namespace conformance {

constexpr ULONG Untouched = 0xDEADBEEF;

using Words = std::vector<ULONG>;

template<class Pointer> ULONG AddressOf(Pointer* pointer)
{
    return reinterpret_cast<ULONG>(pointer);
}

struct Reply {
    ULONG result;
    Words out; // as the driver left it; it started as Untouched
    std::string messages;
};

// After every escape nothing may be locked and, but for the one case that is meant, nothing held.
class EscapeTest : public testing::Test {
protected:
    explicit EscapeTest(const conformance::Setup& setup = {})
        : session(setup)
        , locksBefore(session.Engine().Outstanding().locks)
    {
    }

    ULONG Call(SURFOBJ* pso, ULONG code, ULONG cjIn, void* in, ULONG cjOut, void* out)
    {
        const auto escape = session.Hook<PFN_DrvEscape>(INDEX_DrvEscape);
        const ULONG result = escape(pso, code, cjIn, in, cjOut, out);
        EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, expectedHolds);
        EXPECT_EQ(session.Engine().Outstanding().locks, locksBefore);
        return result;
    }

    Reply Send(SURFOBJ* pso, ULONG code, Words in, std::size_t outWords = 4)
    {
        Words out(outWords, Untouched);
        const ULONG result = Call(pso, code, BytesOf(in), in.data(), BytesOf(out), out.data());
        return {result, out, session.Engine().TakeDebugOutput()};
    }
    Reply Send(ULONG code, Words in, std::size_t outWords = 4)
    {
        return Send(session.Screen(), code, std::move(in), outWords);
    }

    static ULONG BytesOf(const Words& words) { return static_cast<ULONG>(words.size() * sizeof(ULONG)); }

    // A bitmap that belongs to no device.
    SURFOBJ* PlainBitmap() { return engine::MakeBitmap({8, 8}, engine::PixelLayout::Default(BMF_32BPP)); }

    // A drawing call as applications make it; how many records it gave.
    std::size_t RecordsOfDrawing(RECTL rectangle)
    {
        session.records.clear();
        engine::CallBitBlt(session.Screen(), nullptr, nullptr, nullptr, nullptr, &rectangle, nullptr, nullptr, nullptr,
                           nullptr, 0x0000);
        return session.records.size();
    }

    Session session;
    ULONG locksBefore;
    ULONG expectedHolds = 0;
};

} // namespace conformance
