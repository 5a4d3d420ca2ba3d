#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "engine/core/engine.h"

namespace engine {

// Images (loaded code) and modules (mapped files) by name.
class Images {
public:
    struct Kind { // a registered image
        std::function<HANDLE()> load;
        std::function<void(HANDLE)> unload;
        std::function<PFN(HANDLE, const char*)> find;
    };

    explicit Images(Engine& engine)
        : engine_(engine)
    {
    }
    ~Images(); // unloads what is still loaded
    Images(const Images&) = delete;
    Images& operator=(const Images&) = delete;

    void Register(const std::u16string& name, Kind kind);
    void RegisterModule(const std::u16string& name, const std::vector<BYTE>& content);
    void HideService(const std::string& name);
    bool IsLoaded(const std::u16string& name) const;

    // A second load of a loaded image answers the same handle. Loads of the engine's own side are not counted.
    HANDLE Load(const std::u16string& name, bool byDriver);
    void Unload(HANDLE image, bool byDriver);
    PFN Find(HANDLE image, const char* function); // null image: the engine's services
    const std::vector<std::string>& ServicesAskedFor() const { return servicesAskedFor_; }

    HANDLE LoadModule(const std::u16string& name);
    const BYTE* Map(HANDLE module, ULONG& size);
    void FreeModule(HANDLE module);

    ULONG LoadedByDriver() const;
    ULONG Modules() const { return static_cast<ULONG>(modules_.size()); }

private:
    struct Image {
        std::u16string name;
        Kind kind;
        HANDLE inner = nullptr;
        ULONG loads = 0, driverLoads = 0;
    };
    struct Module {
        std::unique_ptr<BYTE[]> content;
        ULONG size = 0;
    };
    HANDLE NextHandle();

    Engine& engine_;
    std::map<std::u16string, Kind> kinds_;
    std::map<std::u16string, std::vector<BYTE>> files_;
    std::set<std::string> hidden_;
    std::vector<std::string> servicesAskedFor_;
    std::map<HANDLE, Image> images_;
    std::map<HANDLE, Module> modules_;
    ULONG handles_ = 0;
};

} // namespace engine
