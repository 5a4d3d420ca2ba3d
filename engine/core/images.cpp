#include "engine/core/images.h"

#include <algorithm>

#include "engine/core/exports.h"

namespace engine {

namespace {

    constexpr std::uintptr_t FirstHandle = 0x0D000100, HandleStep = 0x100;

    // "\SystemRoot\System32\X.DLL", "x.dll" and "x" are one name; folders do not count.
    std::u16string BareName(const std::u16string& path)
    {
        std::u16string name = path.substr(path.find_last_of(u'\\') + 1);
        for (WCHAR& letter : name)
            if (letter >= u'A' && letter <= u'Z')
                letter = static_cast<WCHAR>(letter + (u'a' - u'A'));
        return name;
    }

    std::u16string ImageName(const std::u16string& path)
    {
        const std::u16string name = BareName(path);
        return name.ends_with(u".dll") ? name.substr(0, name.size() - 4) : name;
    }

} // namespace

Images::~Images()
{
    for (auto& [handle, image] : images_)
        image.kind.unload(image.inner);
}

HANDLE Images::NextHandle()
{
    return reinterpret_cast<HANDLE>(FirstHandle + HandleStep * handles_++);
}

void Images::Register(const std::u16string& name, Kind kind)
{
    kinds_[ImageName(name)] = std::move(kind);
}

void Images::RegisterModule(const std::u16string& name, const std::vector<BYTE>& content)
{
    files_[BareName(name)] = content;
}

void Images::HideService(const std::string& name)
{
    hidden_.insert(LowerCase(name));
}

bool Images::IsLoaded(const std::u16string& name) const
{
    return std::any_of(images_.begin(), images_.end(),
                       [bare = ImageName(name)](const auto& entry) { return entry.second.name == bare; });
}

HANDLE Images::Load(const std::u16string& path, bool byDriver)
{
    const std::u16string name = ImageName(path);
    const auto loaded =
        std::find_if(images_.begin(), images_.end(), [&name](const auto& entry) { return entry.second.name == name; });
    if (loaded != images_.end()) {
        ++loaded->second.loads;
        loaded->second.driverLoads += byDriver;
        return loaded->first;
    }
    const auto kind = kinds_.find(name);
    if (kind == kinds_.end())
        return nullptr;
    const HANDLE inner = kind->second.load();
    if (!inner)
        return nullptr;
    const HANDLE handle = NextHandle();
    images_[handle] = {name, kind->second, inner, 1, byDriver ? 1u : 0u};
    return handle;
}

void Images::Unload(HANDLE handle, bool byDriver)
{
    const auto found = images_.find(handle);
    if (found == images_.end() || (byDriver && found->second.driverLoads == 0)) {
        engine_.Report("EngUnloadImage: not a loaded image");
        return;
    }
    found->second.driverLoads -= byDriver;
    if (--found->second.loads != 0)
        return;
    const Image image = found->second;
    images_.erase(found);
    image.kind.unload(image.inner);
}

PFN Images::Find(HANDLE handle, const char* function)
{
    if (!handle) {
        servicesAskedFor_.push_back(function);
        return hidden_.contains(LowerCase(function)) ? nullptr : FindService(function);
    }
    const auto found = images_.find(handle);
    if (found != images_.end())
        return found->second.kind.find(found->second.inner, function);
    engine_.Report("EngFindImageProcAddress: not a loaded image");
    return nullptr;
}

HANDLE Images::LoadModule(const std::u16string& name)
{
    const auto file = files_.find(BareName(name));
    if (file == files_.end())
        return nullptr;
    const std::vector<BYTE>& content = file->second;
    Module module{std::unique_ptr<BYTE[]>(new BYTE[content.size()]), static_cast<ULONG>(content.size())};
    std::copy(content.begin(), content.end(), module.content.get());
    const HANDLE handle = NextHandle();
    modules_.emplace(handle, std::move(module));
    return handle;
}

const BYTE* Images::Map(HANDLE module, ULONG& size)
{
    const auto found = modules_.find(module);
    if (found == modules_.end()) {
        engine_.Report("EngMapModule: not a loaded module");
        return nullptr;
    }
    size = found->second.size;
    return found->second.content.get();
}

void Images::FreeModule(HANDLE module)
{
    if (modules_.erase(module) == 0)
        engine_.Report("EngFreeModule: not a loaded module");
}

ULONG Images::LoadedByDriver() const
{
    ULONG loads = 0;
    for (const auto& [handle, image] : images_)
        loads += image.driverLoads;
    return loads;
}

} // namespace engine
