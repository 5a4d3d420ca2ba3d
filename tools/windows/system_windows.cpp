#include "tools/windows/system_windows.h"

#include <memory>
#include <stdexcept>

namespace tools {

Screen OpenWindowsScreen()
{
    const HDC created = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
    if (!created)
        throw std::runtime_error("there is no screen");
    const std::shared_ptr<HDC__> context(created, DeleteDC);
    const auto escape = [context](std::uint32_t code, std::span<const std::byte> in, std::span<std::byte> out) {
        return std::int32_t(ExtEscape(context.get(), static_cast<int>(code), static_cast<int>(in.size()),
                                      reinterpret_cast<const char*>(in.data()), static_cast<int>(out.size()),
                                      out.empty() ? nullptr : reinterpret_cast<char*>(out.data())));
    };
    return {escape, GetDeviceCaps(created, HORZRES), GetDeviceCaps(created, VERTRES)};
}

std::string SystemError(const std::string& what, DWORD error)
{
    char text[256] = {};
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                                  sizeof(text), nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' || text[length - 1] == ' '))
        --length;
    return what + ": " + (length ? std::string(text, length) : "error " + std::to_string(error));
}

std::wstring Widen(const std::string& ansi)
{
    const int size = static_cast<int>(ansi.size());
    std::wstring wide(ansi.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, wide.data(), size)));
    return wide;
}

std::vector<std::string> Arguments(int argc, char** argv)
{
    return {argv + 1, argv + argc};
}

} // namespace tools
