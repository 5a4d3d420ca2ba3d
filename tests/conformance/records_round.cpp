#include "tests/conformance/records_round.h"

#include <cstring>

namespace conformance::records {

namespace {

    Consumer* current = nullptr;

    ULONG MemoryRequests()
    {
        return engine::Engine::Current().RequestCount(engine::Request::Memory);
    }

    LONG APIENTRY Qc()
    {
        return 1;
    }
    LONG APIENTRY Qp(BYTE* record, ULONG length, LONG flag)
    {
        ++current->submissions;
        current->length = length;
        current->flag = flag;
        current->requestsAfter = MemoryRequests();
        std::memcpy(current->buffer.data(), record, wire::RecordRoom);
        std::memcpy(&current->guard, record + wire::RecordRoom, sizeof(current->guard));
        return 0;
    }
    ULONG APIENTRY Gsd(LONG selector)
    {
        if (current->requestsBefore == 0)
            current->requestsBefore = MemoryRequests();
        return selector == 0 || selector == 1 ? current->identifiers[selector] : 0;
    }

} // namespace

Consumer::Consumer()
    : buffer(wire::RecordRoom)
{
}

void Consumer::Install(Session& session)
{
    current = this;
    session.Escape(KoruEscape, {36, Number(&Qc), 0, Number(&Qp), Number(&Gsd), 0});
}

void Consumer::Start()
{
    submissions = length = guard = requestsBefore = requestsAfter = 0;
}

Round::Round(ULONG seed, const Setup& setup)
    : session(setup)
    , random(seed)
    , make(session, random)
    , second_(session.Driver())
{
    consumer.Install(session);
}

Round::~Round()
{
    SecondDevice(Stage::None);
}

void Round::Start()
{
    counter_ += random.Between(0, 100000);
    session.Engine().SetCounter(counter_);
    random.Fill(consumer.identifiers);
    session.Engine().ClearDebugOutput();
    consumer.Start();
}

std::optional<wire::Record> Round::TakeRecord(LONG flag)
{
    EXPECT_EQ(consumer.submissions, 1u);
    EXPECT_EQ(consumer.flag, flag);
    EXPECT_EQ(consumer.guard, GuardWord);
    EXPECT_EQ(consumer.requestsAfter, consumer.requestsBefore) << "the capture took memory";
    if (consumer.submissions != 1)
        return std::nullopt;
    auto record = wire::Record::Decode(consumer.buffer);
    EXPECT_TRUE(record);
    if (!record)
        return record;
    EXPECT_EQ(record->length(), consumer.length);
    EXPECT_EQ(record->header().suspended, 0u);
    EXPECT_EQ(record->header().identifier0, consumer.identifiers[0]);
    EXPECT_EQ(record->header().identifier1, consumer.identifiers[1]);
    EXPECT_EQ(record->header().timeStamp, counter_);
    EXPECT_EQ(record->header().reserved0.value, 0u);
    EXPECT_EQ(record->header().reserved1.value, 0u);
    for (const wire::Range& range : UnknownRanges(*record))
        ADD_FAILURE() << "bytes " << range.begin << " to " << range.end << " of " << record->length()
                      << " belong to nothing";
    return record;
}

void Round::NoteSecondDevice(DHPDEV dhpdev, Stage stage)
{
    secondDhpdev_ = dhpdev;
    stage_ = stage;
}

DHPDEV Round::SecondDevice(Stage stage)
{
    if (stage_ == Stage::Surface && stage != Stage::Surface) {
        Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(secondDhpdev_);
        stage_ = Stage::Pdev;
    }
    if (stage_ == Stage::Pdev && stage == Stage::None) {
        Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(secondDhpdev_);
        NoteSecondDevice(nullptr, Stage::None);
    }
    if (stage_ == Stage::None && stage != Stage::None) {
        const DHPDEV dhpdev = Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            make.Mode(), nullptr, 0, nullptr, 0, nullptr, 0, nullptr, SecondHandle(), nullptr, nullptr);
        NoteSecondDevice(dhpdev, Stage::Pdev);
    }
    if (stage_ != Stage::None)
        Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(secondDhpdev_, SecondHandle());
    if (stage_ == Stage::Pdev && stage == Stage::Surface) {
        Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(secondDhpdev_);
        stage_ = Stage::Surface;
    }
    return secondDhpdev_;
}

} // namespace conformance::records
