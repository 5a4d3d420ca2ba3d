#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/core/engine.h"

namespace engine {

// What an image is and may import.
struct ImageKind {
    bool isLibrary; // else a kernel module, which is started by its entry point
    std::map<std::string, Exports> libraries; // by name in lower case

    static ImageKind OfDisplayDrivers(); // libraries that import the stand-in's services from win32k.sys
};

// A kernel-mode i386 image mapped into this process: sections copied to a fresh place, relocations
// applied, imports bound, pages protected as the section flags say. Each object is a fresh copy with
// globals of its own.
class PeImage {
public:
    explicit PeImage(ImageKind kind = ImageKind::OfDisplayDrivers())
        : kind_(std::move(kind))
    {
    }
    ~PeImage();
    PeImage(const PeImage&) = delete;
    PeImage& operator=(const PeImage&) = delete;

    // False with Error() (one line) for a file that is missing, damaged, of another machine or
    // subsystem, or imports what the stand-in does not offer. Any bytes are allowed.
    bool Load(const std::string& path);
    bool LoadBytes(const std::vector<unsigned char>& file);
    const std::string& Error() const { return error_; }

    PFN EntryPoint() const { return entryPoint_; } // of a display driver: DrvEnableDriver
    PFN Find(const std::string& name) const; // an export, or null; a forwarder is none
    std::vector<std::string> ExportNames() const;
    const std::vector<std::string>& ImportNames() const { return imports_; } // "win32k.sys!EngLockSurface"

private:
    void Unmap();
    std::string Map(const std::vector<unsigned char>& file); // what is wrong, or nothing

    ImageKind kind_;
    unsigned char* base_ = nullptr;
    std::size_t size_ = 0;
    PFN entryPoint_ = nullptr;
    Exports exports_;
    std::vector<std::string> imports_;
    std::string error_;
};

enum class Calls {
    Direct,
    Watched // what the image calls and is called by: a broken calling convention is a violation
};

// Registers a file as the image of this name with the current engine: each load maps it afresh.
// False with `error` set when the file does not load.
bool RegisterImageFile(const std::u16string& name, const std::string& path, std::string& error,
                       Calls calls = Calls::Direct);

} // namespace engine
