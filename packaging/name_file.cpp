#include "packaging/name_file.h"

#include "platform/services.h"

namespace koru {

namespace {

    constexpr char Extension[] = ".dll";
    constexpr ULONG ExtensionLength = sizeof(Extension) - 1;

    BYTE Lower(BYTE letter)
    {
        return letter >= 'A' && letter <= 'Z' ? static_cast<BYTE>(letter + ('a' - 'A')) : letter;
    }

    bool EndsLine(BYTE character)
    {
        return character == '\r' || character == '\n' || character == 0;
    }

    bool IsBlank(BYTE character)
    {
        return character == ' ' || character == '\t';
    }

    bool IsOfNames(BYTE character)
    {
        const BYTE lower = Lower(character);
        return (lower >= 'a' && lower <= 'z') || (lower >= '0' && lower <= '9') || lower == '_' || lower == '-';
    }

    struct Text {
        const BYTE* bytes;
        ULONG size;
    };

    Text FirstLine(const Text& file)
    {
        Text line = {file.bytes, 0};
        while (line.size < file.size && !EndsLine(line.bytes[line.size]))
            ++line.size;
        while (line.size != 0 && IsBlank(line.bytes[0]))
            line = {line.bytes + 1, line.size - 1};
        while (line.size != 0 && IsBlank(line.bytes[line.size - 1]))
            --line.size;
        return line;
    }

    bool HasExtension(const Text& line)
    {
        if (line.size < ExtensionLength)
            return false;
        for (ULONG i = 0; i < ExtensionLength; ++i)
            if (Lower(line.bytes[line.size - ExtensionLength + i]) != Extension[i])
                return false;
        return true;
    }

    bool ParseName(const Text& file, DriverName& name)
    {
        Text line = FirstLine(file);
        if (HasExtension(line))
            line.size -= ExtensionLength;
        if (line.size == 0 || line.size > MostNameCharacters)
            return false;
        for (ULONG i = 0; i < line.size; ++i) {
            if (!IsOfNames(line.bytes[i]))
                return false;
            name.text[i] = line.bytes[i];
        }
        name.text[line.size] = 0;
        name.length = line.size;
        return true;
    }

    HANDLE Open(const NameFile& file)
    {
        const HANDLE module = EngLoadModule(const_cast<WCHAR*>(file.bare));
        return module ? module : EngLoadModule(const_cast<WCHAR*>(file.path));
    }

    bool ReadName(const NameFile& file, DriverName& name)
    {
        const HANDLE module = Open(file);
        if (!module)
            return false;
        ULONG size = 0;
        const auto* const bytes = static_cast<const BYTE*>(EngMapModule(module, &size));
        const bool named = bytes && ParseName({bytes, size}, name);
        EngFreeModule(module);
        return named;
    }

} // namespace

DriverName ReadDriverName(const NameFile& file)
{
    DriverName name;
    if (ReadName(file, name))
        return name;
    for (name.length = 0; file.otherwise[name.length] != 0; ++name.length)
        name.text[name.length] = file.otherwise[name.length];
    name.text[name.length] = 0;
    return name;
}

} // namespace koru
