// The services that are neither surfaces nor drawing: images, modules, semaphores, memory, the clock.

#include "engine/core/state.h"

using namespace engine;

namespace {

bool Fails(Request request)
{
    return LockedState()->faults.Fails(request);
}

} // namespace

extern "C" {

HANDLE APIENTRY EngLoadImage(WCHAR* pwszDriver)
{
    if (!IsGiven(pwszDriver, "EngLoadImage: the name") || Fails(Request::Load))
        return nullptr;
    return LockedState()->images.Load(pwszDriver, true);
}

void APIENTRY EngUnloadImage(HANDLE hModule)
{
    LockedState()->images.Unload(hModule, true);
}

void* APIENTRY EngFindImageProcAddress(HANDLE hModule, char* lpProcName)
{
    if (!IsGiven(lpProcName, "EngFindImageProcAddress: the name"))
        return nullptr;
    return reinterpret_cast<void*>(LockedState()->images.Find(hModule, lpProcName));
}

HANDLE APIENTRY EngLoadModule(WCHAR* pwsz)
{
    if (!IsGiven(pwsz, "EngLoadModule: the name") || Fails(Request::Load))
        return nullptr;
    return LockedState()->images.LoadModule(pwsz);
}

void* APIENTRY EngMapModule(HANDLE h, ULONG* pulSize)
{
    if (!IsGiven(pulSize, "EngMapModule: the size") || Fails(Request::Load))
        return nullptr;
    return const_cast<BYTE*>(LockedState()->images.Map(h, *pulSize));
}

void APIENTRY EngFreeModule(HANDLE h)
{
    LockedState()->images.FreeModule(h);
}

HSEMAPHORE APIENTRY EngCreateSemaphore()
{
    return Fails(Request::CreateSemaphore) ? nullptr : Engine::Current().Internals().semaphores.Create();
}

void APIENTRY EngAcquireSemaphore(HSEMAPHORE hsem)
{
    Engine::Current().Internals().semaphores.Acquire(hsem);
}

void APIENTRY EngReleaseSemaphore(HSEMAPHORE hsem)
{
    Engine::Current().Internals().semaphores.Release(hsem);
}

void* APIENTRY EngAllocMem(ULONG fl, ULONG cj, ULONG tag)
{
    return Fails(Request::Memory) ? nullptr : LockedState()->pool.Allocate(fl, cj, tag);
}

void APIENTRY EngFreeMem(void* pv)
{
    LockedState()->pool.Free(pv);
}

void APIENTRY EngQueryPerformanceCounter(LONGLONG* pcounter)
{
    if (!IsGiven(pcounter, "EngQueryPerformanceCounter: the counter"))
        return;
    const LockedState state;
    *pcounter = state->counter;
    state->counter += state->counterStep;
}

void APIENTRY EngQueryPerformanceFrequency(LONGLONG* pfrequency)
{
    if (IsGiven(pfrequency, "EngQueryPerformanceFrequency: the frequency"))
        *pfrequency = LockedState()->frequency;
}

} // extern "C"
