#include "tools/koructl/machine_windows.h"

#include "tools/windows/system_windows.h"

namespace koructl {

namespace {

    constexpr DWORD MostFileBytes = 0x10000; // one-line files are read, images are not

    // A key below HKEY_LOCAL_MACHINE, or null.
    class Key {
    public:
        Key(const std::string& path, REGSAM access) { RegOpenKeyExW(HKEY_LOCAL_MACHINE, Wide(path), 0, access, &key_); }
        explicit Key(const std::string& path)
        {
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, Wide(path), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key_, nullptr);
        }
        ~Key()
        {
            if (key_)
                RegCloseKey(key_);
        }
        Key(const Key&) = delete;
        Key& operator=(const Key&) = delete;
        HKEY get() const { return key_; }

    private:
        const WCHAR* Wide(const std::string& path)
        {
            path_ = tools::Widen(path);
            return path_.c_str();
        }
        std::wstring path_;
        HKEY key_ = nullptr;
    };

    std::wstring SystemPath(const std::string& name)
    {
        WCHAR folder[MAX_PATH] = {};
        GetSystemDirectoryW(folder, MAX_PATH);
        return std::wstring(folder) + L'\\' + tools::Widen(name);
    }

    class File {
    public:
        File(const std::string& name, DWORD access, DWORD disposition)
            : file_(CreateFileW(SystemPath(name).c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr))
        {
        }
        ~File()
        {
            if (IsOpen())
                CloseHandle(file_);
        }
        File(const File&) = delete;
        File& operator=(const File&) = delete;
        bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
        HANDLE get() const { return file_; }

    private:
        HANDLE file_;
    };

} // namespace

std::optional<RegistryValue> WindowsMachine::ReadValue(const std::string& path, const std::string& name)
{
    const Key key(path, KEY_QUERY_VALUE);
    const std::wstring wide = tools::Widen(name);
    DWORD type = 0, size = 0;
    if (!key.get() || RegQueryValueExW(key.get(), wide.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::string bytes(size, '\0');
    if (RegQueryValueExW(key.get(), wide.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size)
        != ERROR_SUCCESS)
        return std::nullopt;
    bytes.resize(size);
    return RegistryValue{type, bytes};
}

bool WindowsMachine::WriteValue(const std::string& path, const std::string& name, const RegistryValue& value)
{
    const Key key(path);
    return key.get()
        && RegSetValueExW(key.get(), tools::Widen(name).c_str(), 0, value.type,
                          reinterpret_cast<const BYTE*>(value.bytes.data()), static_cast<DWORD>(value.bytes.size()))
        == ERROR_SUCCESS;
}

bool WindowsMachine::RemoveValue(const std::string& path, const std::string& name)
{
    const Key key(path, KEY_SET_VALUE);
    return key.get() && RegDeleteValueW(key.get(), tools::Widen(name).c_str()) == ERROR_SUCCESS;
}

bool WindowsMachine::HasFile(const std::string& name)
{
    return GetFileAttributesW(SystemPath(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::string> WindowsMachine::ReadFile(const std::string& name)
{
    const File file(name, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen())
        return std::nullopt;
    const DWORD size = GetFileSize(file.get(), nullptr);
    if (size > MostFileBytes)
        return std::nullopt;
    std::string content(size, '\0');
    DWORD read = 0;
    if (!::ReadFile(file.get(), content.data(), size, &read, nullptr) || read != size)
        return std::nullopt;
    return content;
}

bool WindowsMachine::WriteFile(const std::string& name, const std::string& content)
{
    const File file(name, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    const auto size = static_cast<DWORD>(content.size());
    return file.IsOpen() && ::WriteFile(file.get(), content.data(), size, &written, nullptr) && written == size;
}

bool WindowsMachine::RemoveFile(const std::string& name)
{
    return DeleteFileW(SystemPath(name).c_str());
}

} // namespace koructl
