#include "engine/core/faults.h"

namespace engine {

bool FaultPlan::Next()
{
    const bool failed = seen_ >= position_;
    ++position_;
    seen_ = faults_ = 0;
    return failed;
}

bool FaultPlan::Fails()
{
    ++seen_;
    const bool fails = seen_ == position_ || (forGood_ && seen_ > position_);
    faults_ += fails;
    return fails;
}

bool Faults::Fails(Request request)
{
    Kind& kind = KindOf(request);
    ++kind.seen;
    const bool planned = plan_ && plan_->Fails();
    return planned
        || (kind.failFrom != 0 && (kind.seen == kind.failFrom || (kind.forGood && kind.seen > kind.failFrom)));
}

void Faults::Fail(Request request, ULONG nth, bool forGood)
{
    Kind& kind = KindOf(request);
    kind.failFrom = kind.seen + nth;
    kind.forGood = forGood;
}

void Faults::Stop()
{
    plan_ = nullptr;
    refused_.clear();
    for (Kind& kind : kinds_)
        kind.failFrom = 0;
}

} // namespace engine
