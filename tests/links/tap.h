#pragma once

// korutap.sys started in the kernel's stand-in, and its reader.

#include <gtest/gtest.h>

#include <cstring>

#include "packaging/korutap/korutap.h"
#include "tests/links/images.h"
#include "tests/links/kernel.h"

namespace links {

constexpr ULONG ReadSize = 0x20000;

class Tap {
public:
    Tap()
        : image(Kernel::ModuleKind())
    {
        EXPECT_TRUE(image.Load(ImageFile("korutap.sys"))) << image.Error();
    }

    NTSTATUS Start() { return kernel.Start(image); }
    NTSTATUS Open() { return kernel.Send(MajorCreate).status; }
    NTSTATUS Cleanup() { return kernel.Send(MajorCleanup).status; }
    NTSTATUS Close() { return kernel.Send(MajorClose).status; }
    Answer Read(ULONG size = ReadSize) { return kernel.Send(MajorRead, size); }
    Answer Control(ULONG code, ULONG output, ULONG input = 0)
    {
        return kernel.Send(MajorDeviceControl, output, code, input);
    }
    korutap::EntryPoints EntryPoints() { return Structure<korutap::EntryPoints>(korutap::GetEntryPoints); }
    korutap::Statistics Statistics() { return Structure<korutap::Statistics>(korutap::GetStatistics); }

    // The consumer's functions, as Koru calls them.
    LONG QC() { return Function<LONG(APIENTRY*)()>(EntryPoints().qc)(); }
    LONG QD() { return Function<LONG(APIENTRY*)()>(EntryPoints().qd)(); }
    LONG QP(const void* record, ULONG length, LONG flag)
    {
        return Function<LONG(APIENTRY*)(const void*, ULONG, LONG)>(EntryPoints().qp)(record, length, flag);
    }
    ULONG GSD(LONG selector) { return Function<ULONG(APIENTRY*)(LONG)>(EntryPoints().gsd)(selector); }
    LONG DSF() { return Function<LONG(APIENTRY*)()>(EntryPoints().dsf)(); }

    Kernel kernel;
    engine::PeImage image;

private:
    template<class Pointer> static Pointer Function(ULONG address) { return reinterpret_cast<Pointer>(address); }
    template<class T> T Structure(ULONG code)
    {
        T structure = {};
        const Answer answer = Control(code, sizeof(T));
        EXPECT_EQ(answer.status, StatusSuccess);
        EXPECT_EQ(answer.output.size(), sizeof(T));
        if (answer.output.size() == sizeof(T))
            std::memcpy(&structure, answer.output.data(), sizeof(T));
        return structure;
    }
};

// Started and opened.
class OpenTap : public Tap {
public:
    OpenTap()
    {
        EXPECT_EQ(Start(), StatusSuccess);
        EXPECT_EQ(Open(), StatusSuccess);
    }
};

} // namespace links
