#include "tests/unit/capture/consumer_log.h"

#include "capture/capture_state.h"

namespace capture_tests {

ConsumerLog Consumer;

namespace {

    void Note(const std::string& call)
    {
        Consumer.calls.push_back(call);
    }

    LONG APIENTRY QC()
    {
        Note("QC");
        return Consumer.qcResult;
    }

    LONG APIENTRY QD()
    {
        Note("QD");
        return 0;
    }

    LONG APIENTRY QP(BYTE* record, ULONG length, LONG flag)
    {
        const char* const name = !record ? "null" : record == koru::CaptureBuffer() ? "record" : "foreign";
        Note("QP(" + std::string(name) + ", " + std::to_string(length) + ", " + std::to_string(flag) + ")");
        return 77;
    }

    ULONG APIENTRY GSD(LONG selector)
    {
        Note("GSD(" + std::to_string(selector) + ")");
        return Consumer.ids[selector == 0 ? 0 : 1];
    }

    LONG APIENTRY DSF()
    {
        Note("DSF");
        return 0;
    }

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

} // namespace

std::vector<ULONG> ConsumerTable()
{
    return {36, AddressOf(&QC), AddressOf(&QD), AddressOf(&QP), AddressOf(&GSD), AddressOf(&DSF)};
}

} // namespace capture_tests
