#include "capture/consumer.h"

#include "driver/debug_print.h"
#include "driver/driver_values.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    constinit ConsumerFunctions consumer = {};
    static_assert(sizeof(consumer) == 20);

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

    void PrintFunctions(const char* format, const ConsumerFunctions& functions)
    {
        DebugPrint(format, AddressOf(functions.QC), AddressOf(functions.QD), AddressOf(functions.QP),
                   AddressOf(functions.GSD), AddressOf(functions.DSF));
    }

    LONG CallQC()
    {
        return consumer.QC ? consumer.QC() : 0;
    }

    void CallDSF()
    {
        if (consumer.DSF)
            consumer.DSF();
    }

} // namespace

BOOL InitializeFunctions2(const ULONG* table)
{
    if (!table)
        return FALSE;
    ConsumerFunctions functions;
    memcpy(&functions, &table[1], sizeof(functions)); // behind the command word
    PrintFunctions("InitializeFunctions2: from ~file: QC %lx, QD %lx, QP %lx, GSD %lx DSF %lx\n", consumer);
    PrintFunctions("InitializeFunctions2: got from SED: QC %lx, QD %lx, QP %lx, GSD %lx DSF %lx\n", functions);
    consumer = functions;
    if (CallQC() == 0 && LegacyDdi)
        CallDSF();
    return TRUE;
}

ULONG SubmitRecord(BYTE* record, ULONG length, LONG flag)
{
    return consumer.QP ? static_cast<ULONG>(consumer.QP(record, length, flag)) : 0;
}

ULONG GetConsumerId(LONG selector)
{
    return consumer.GSD ? consumer.GSD(selector) : 0;
}

} // namespace koru
