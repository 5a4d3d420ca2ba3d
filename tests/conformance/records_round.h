#pragma once

#include "tests/conformance/records_expect.h"
#include "tests/conformance/records_objects.h"

namespace conformance::records {

constexpr ULONG GuardWord = 0x0F0D0F0D; // stands behind the driver's buffer

// The consumer of a round: keeps the driver's whole buffer as it was at the last submission.
class Consumer {
public:
    Consumer();
    void Install(Session& session); // in place of the session's; there is one at a time
    void Start(); // forgets what was submitted

    ULONG submissions = 0, length = 0;
    LONG flag = 0;
    std::vector<std::byte> buffer;
    ULONG guard = 0; // the word behind the buffer
    // Of the engine's memory: when the driver first asked for an identifier, and when it submitted.
    ULONG requestsBefore = 0, requestsAfter = 0;
    ULONG identifiers[2] = {};
};

// What a call gave: its record and the fixed part of that.
template<class Fixed> struct Taken : Fixed {
    wire::Record record;
};

// A machine that random calls are made on, one at a time.
class Round {
public:
    Round(ULONG seed, const Setup& setup = {});
    ~Round();

    Consumer consumer; // hears of the session's end
    Session session;
    Random random;
    Objects make;

    template<class Pfn> Pfn Hook(ULONG index) { return session.Hook<Pfn>(index); }

    void Start(); // before each call
    // After it: the one record that it must have given, of this type, wholly accounted for.
    template<class Fixed> std::optional<Taken<Fixed>> Take(LONG flag)
    {
        const auto record = TakeRecord(flag);
        const auto fixed = record ? record->template As<Fixed>() : std::nullopt;
        EXPECT_TRUE(fixed) << "another type of record";
        return fixed ? std::optional(Taken<Fixed>{*fixed, *record}) : std::nullopt;
    }
    std::optional<wire::Record> TakeRecord(LONG flag); // of any type
    // The flag of a call that draws on `target`.
    LONG FlagOf(const SURFOBJ* target) { return target && target == session.Screen() ? 0 : 1; }

    // A second device, brought as far as a call of its life needs it.
    enum class Stage { None, Pdev, Surface };
    DHPDEV SecondDevice(Stage stage);
    HDEV SecondHandle() const { return second_.Handle(); }
    void NoteSecondDevice(DHPDEV dhpdev, Stage stage);

    std::vector<ULONG> savedBits; // by DrvSaveScreenBits

private:
    engine::Device second_; // known to the engine, its calls are made here
    DHPDEV secondDhpdev_ = nullptr;
    Stage stage_ = Stage::None;
    LONGLONG counter_ = 0;
};

// One row per captured call: makes it with random arguments and compares the record with them.
struct RecordedCall {
    wire::CallType type;
    void (*makeAndCompare)(Round& round);
};
std::vector<RecordedCall> BlitCalls();
std::vector<RecordedCall> BrushCalls(); // lines, areas, text, brushes
std::vector<RecordedCall> DeviceCalls();
std::vector<RecordedCall> ScreenCalls(); // pointers, palettes, escapes, bitmaps, saves

} // namespace conformance::records
