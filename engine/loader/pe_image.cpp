#include "engine/loader/pe_image.h"

#include <sys/mman.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>

#include "engine/core/exports.h"
#include "engine/loader/boundary.h"
#include "engine/loader/pe_file.h"

namespace engine {

namespace {

    constexpr std::uint32_t MostNames = 0x10000;
    constexpr std::size_t PageSize = 0x1000;

    // An image at its place in memory while it is still writable.
    struct Mapped {
        unsigned char* base;
        const PeFile& file;

        Bytes View() const { return {base, file.header.imageSize}; }
        const pe::Directory& Directory(unsigned index) const { return file.directories[index]; }
        void Write(std::uint32_t at, std::uint32_t value) const { std::memcpy(base + at, &value, sizeof(value)); }
    };

    std::string RelocateBlock(const Mapped& image, std::uint32_t at, const pe::RelocationBlock& block)
    {
        const Bytes view = image.View();
        const auto delta =
            static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(image.base)) - image.file.header.imageBase;
        for (std::uint32_t offset = sizeof(block); offset + 2 <= block.size; offset += 2) {
            const std::uint16_t entry = *view.Read<std::uint16_t>(at + offset);
            const unsigned type = entry >> 12;
            const std::uint64_t target = std::uint64_t(block.address) + (entry & 0xFFF);
            if (type == pe::RelocateNothing)
                continue;
            const auto value = view.Read<std::uint32_t>(target);
            if (type != pe::RelocateWord32 || !value)
                return "an image with a bad relocation";
            image.Write(static_cast<std::uint32_t>(target), *value + delta);
        }
        return {};
    }

    std::string Relocate(const Mapped& image)
    {
        const pe::Directory& directory = image.Directory(pe::RelocationDirectory);
        const Bytes view = image.View();
        if (!view.Holds(directory.address, directory.size))
            return "an image with bad relocations";
        std::uint32_t done = 0;
        while (directory.size - done >= sizeof(pe::RelocationBlock)) {
            const std::uint32_t at = directory.address + done;
            const auto block = *view.Read<pe::RelocationBlock>(at);
            if (block.size < sizeof(block) || block.size > directory.size - done)
                return "an image with bad relocations";
            if (std::string error = RelocateBlock(image, at, block); !error.empty())
                return error;
            done += block.size;
        }
        return {};
    }

    std::string BindFunctions(const Mapped& image, const pe::ImportDescriptor& descriptor, const std::string& library,
                              const Exports& functions, std::vector<std::string>& imports)
    {
        const Bytes view = image.View();
        const std::uint32_t names = descriptor.names ? descriptor.names : descriptor.addresses;
        for (std::uint64_t offset = 0;; offset += 4) {
            const auto nameAt = view.Read<std::uint32_t>(names + offset);
            if (!nameAt || !view.Holds(descriptor.addresses + offset, 4) || imports.size() >= MostNames)
                return "an image with a bad import table";
            if (*nameAt == 0)
                return {};
            const auto name = *nameAt & pe::ByOrdinal ? std::nullopt : view.ReadName(std::uint64_t(*nameAt) + 2);
            if (!name)
                return "an image that imports by number";
            const auto function = functions.find(*name);
            if (function == functions.end())
                return "an image that imports the unknown service " + *name;
            const auto address = reinterpret_cast<std::uintptr_t>(function->second);
            image.Write(static_cast<std::uint32_t>(descriptor.addresses + offset), static_cast<std::uint32_t>(address));
            imports.push_back(library + "!" + *name);
        }
    }

    std::string NamesOf(const std::map<std::string, Exports>& libraries)
    {
        std::string names;
        for (const auto& [name, functions] : libraries)
            names += (names.empty() ? "" : " or ") + name;
        return names;
    }

    std::string Bind(const Mapped& image, const std::map<std::string, Exports>& libraries,
                     std::vector<std::string>& imports)
    {
        const pe::Directory& directory = image.Directory(pe::ImportDirectory);
        if (directory.size == 0)
            return {};
        for (std::uint64_t at = directory.address;; at += sizeof(pe::ImportDescriptor)) {
            const auto descriptor = image.View().Read<pe::ImportDescriptor>(at);
            if (!descriptor)
                return "an image with a bad import table";
            if (descriptor->library == 0 && descriptor->addresses == 0)
                return {};
            const auto name = image.View().ReadName(descriptor->library);
            const auto library = name ? libraries.find(LowerCase(*name)) : libraries.end();
            if (library == libraries.end())
                return "an image that imports from something else than " + NamesOf(libraries);
            if (std::string error = BindFunctions(image, *descriptor, library->first, library->second, imports);
                !error.empty())
                return error;
        }
    }

    std::string ReadExports(const Mapped& image, Exports& exports)
    {
        const pe::Directory& directory = image.Directory(pe::ExportDirectory);
        if (directory.size == 0)
            return {};
        const Bytes view = image.View();
        const auto table = view.Read<pe::ExportTable>(directory.address);
        if (!table || table->nameCount > MostNames || !view.Holds(table->names, table->nameCount * 4ull)
            || !view.Holds(table->ordinals, table->nameCount * 2ull)
            || !view.Holds(table->functions, table->functionCount * 4ull))
            return "an image with a bad export table";
        for (std::uint32_t i = 0; i < table->nameCount; ++i) {
            const auto name = view.ReadName(*view.Read<std::uint32_t>(table->names + i * 4));
            const std::uint16_t ordinal = *view.Read<std::uint16_t>(table->ordinals + i * 2);
            if (!name || ordinal >= table->functionCount)
                return "an image with a bad export table";
            const std::uint32_t address = *view.Read<std::uint32_t>(table->functions + ordinal * 4);
            const bool forwarder = view.Holds(directory.address, directory.size) && address >= directory.address
                && address - directory.address < directory.size;
            if (!forwarder && address < image.file.header.imageSize)
                exports[*name] = reinterpret_cast<PFN>(image.base + address);
        }
        return {};
    }

    int Protection(std::uint32_t characteristics)
    {
        return (characteristics & pe::MayRead ? PROT_READ : 0) | (characteristics & pe::MayWrite ? PROT_WRITE : 0)
            | (characteristics & pe::MayExecute ? PROT_EXEC : 0);
    }

    std::string Protect(const Mapped& image, std::size_t size)
    {
        bool done = mprotect(image.base, size, PROT_READ) == 0;
        for (const pe::Section& section : image.file.sections)
            done = done
                && mprotect(image.base + section.address, section.virtualSize, Protection(section.characteristics))
                    == 0;
        return done ? std::string() : "an image whose pages cannot be protected";
    }

    struct LoadedFile {
        explicit LoadedFile(Calls calls)
            : boundary(calls == Calls::Watched ? std::make_unique<Boundary>() : nullptr)
            , image({true, {{"win32k.sys", boundary ? boundary->Services() : Services()}}})
        {
        }
        PFN Find(const std::string& function)
        {
            if (LowerCase(function) != "drvenabledriver")
                return image.Find(function);
            return boundary ? boundary->EnableDriver(image.EntryPoint()) : image.EntryPoint();
        }

        std::unique_ptr<Boundary> boundary;
        PeImage image;
    };

} // namespace

ImageKind ImageKind::OfDisplayDrivers()
{
    return {true, {{"win32k.sys", Services()}}};
}

PeImage::~PeImage()
{
    Unmap();
}

void PeImage::Unmap()
{
    if (base_)
        munmap(base_, size_);
    base_ = nullptr;
    entryPoint_ = nullptr;
    exports_.clear();
    imports_.clear();
}

bool PeImage::Load(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        Unmap();
        error_ = "the image file cannot be opened";
        return false;
    }
    return LoadBytes({std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()});
}

bool PeImage::LoadBytes(const std::vector<unsigned char>& file)
{
    Unmap();
    error_ = Map(file);
    if (!error_.empty())
        Unmap();
    return error_.empty();
}

std::string PeImage::Map(const std::vector<unsigned char>& file)
{
    PeFile parsed;
    if (std::string error = parsed.Read({file.data(), file.size()}, kind_.isLibrary); !error.empty())
        return error;
    size_ = (parsed.header.imageSize + PageSize - 1) & ~(PageSize - 1);
    void* const place = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED)
        return "no memory for the image";
    base_ = static_cast<unsigned char*>(place);
    std::copy_n(file.begin(), parsed.header.headersSize, base_);
    for (const pe::Section& section : parsed.sections)
        std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(section.fileAt),
                    std::min(section.fileSize, section.virtualSize), base_ + section.address);
    const Mapped image = {base_, parsed};
    std::string error = Relocate(image);
    if (error.empty())
        error = Bind(image, kind_.libraries, imports_);
    if (error.empty())
        error = ReadExports(image, exports_);
    if (error.empty() && !parsed.IsCode(parsed.header.entryPoint))
        error = "an image without an entry point";
    if (error.empty())
        error = Protect(image, size_);
    if (error.empty())
        entryPoint_ = reinterpret_cast<PFN>(base_ + parsed.header.entryPoint);
    return error;
}

PFN PeImage::Find(const std::string& name) const
{
    const auto found = exports_.find(name);
    return found == exports_.end() ? nullptr : found->second;
}

std::vector<std::string> PeImage::ExportNames() const
{
    std::vector<std::string> names;
    for (const auto& [name, function] : exports_)
        names.push_back(name);
    return names;
}

bool RegisterImageFile(const std::u16string& name, const std::string& path, std::string& error, Calls calls)
{
    std::ifstream stream(path, std::ios::binary);
    const auto file = std::make_shared<std::vector<unsigned char>>(std::istreambuf_iterator<char>(stream),
                                                                   std::istreambuf_iterator<char>());
    PeImage trial;
    if (!stream.is_open() || !trial.LoadBytes(*file)) {
        error = stream.is_open() ? trial.Error() : "the image file cannot be opened";
        return false;
    }
    const auto load = [file, calls]() -> HANDLE {
        auto loaded = std::make_unique<LoadedFile>(calls);
        return loaded->image.LoadBytes(*file) ? loaded.release() : nullptr;
    };
    const auto unload = [](HANDLE loaded) { delete static_cast<LoadedFile*>(loaded); };
    const auto find = [](HANDLE loaded, const char* function) {
        return static_cast<LoadedFile*>(loaded)->Find(function);
    };
    Engine::Current().RegisterImage(name, load, unload, find);
    return true;
}

} // namespace engine
