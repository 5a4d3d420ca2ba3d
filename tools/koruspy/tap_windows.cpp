#include "tools/koruspy/tap_windows.h"

#include <stdexcept>

#include "tools/windows/system_windows.h"

namespace koruspy {

using tools::SystemError;

namespace {

    constexpr char ServiceName[] = "korutap";
    constexpr char NotInstalled[] = "korutap.sys is not installed; install koru.inf, or use --install-module";

    [[noreturn]] void Fail(const std::string& what)
    {
        throw std::runtime_error(SystemError(what));
    }

    class WindowsTap : public Tap {
    public:
        explicit WindowsTap(HANDLE device)
            : device_(device)
        {
        }
        ~WindowsTap() override { CloseHandle(device_); }

        korutap::EntryPoints EntryPoints() override { return Ask<korutap::EntryPoints>(korutap::GetEntryPoints); }
        korutap::Statistics Statistics() override { return Ask<korutap::Statistics>(korutap::GetStatistics); }
        std::size_t Read(std::span<std::byte> room) override
        {
            DWORD size = 0;
            if (!ReadFile(device_, room.data(), static_cast<DWORD>(room.size()), &size, nullptr))
                Fail("korutap cannot be read");
            return size;
        }

    private:
        template<class Answer> Answer Ask(DWORD code)
        {
            Answer answer{};
            DWORD size = 0;
            if (!DeviceIoControl(device_, code, nullptr, 0, &answer, sizeof(answer), &size, nullptr))
                Fail("korutap does not answer");
            if (size != sizeof(answer))
                throw std::runtime_error("korutap.sys is of another version than this program");
            return answer;
        }

        HANDLE device_;
    };

    // A failure shows when the device is opened.
    void EnableDebugPrivilege()
    {
        HANDLE token = nullptr;
        if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token))
            return;
        TOKEN_PRIVILEGES privileges = {1, {{{}, SE_PRIVILEGE_ENABLED}}};
        if (LookupPrivilegeValueA(nullptr, "SeDebugPrivilege", &privileges.Privileges[0].Luid))
            AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
        CloseHandle(token);
    }

    struct CloseService {
        void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
    };
    using Service = std::unique_ptr<SC_HANDLE__, CloseService>;

    Service OpenManager(DWORD access)
    {
        Service manager(OpenSCManagerA(nullptr, nullptr, access));
        if (!manager)
            Fail("the services cannot be reached");
        return manager;
    }

    Service OpenModule(const Service& manager, DWORD access)
    {
        Service module(OpenServiceA(manager.get(), ServiceName, access));
        if (!module && GetLastError() == ERROR_SERVICE_DOES_NOT_EXIST)
            throw std::runtime_error(NotInstalled);
        if (!module)
            Fail("the service korutap cannot be opened");
        return module;
    }

    void Start(const Service& module)
    {
        if (!StartServiceA(module.get(), 0, nullptr) && GetLastError() != ERROR_SERVICE_ALREADY_RUNNING)
            Fail("korutap.sys cannot be started");
    }

    HANDLE OpenDevice()
    {
        return CreateFileA(korutap::DevicePath, GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    }

} // namespace

std::unique_ptr<Tap> OpenWindowsTap()
{
    EnableDebugPrivilege();
    HANDLE device = OpenDevice();
    if (device == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND) {
        const Service manager = OpenManager(SC_MANAGER_CONNECT);
        Start(OpenModule(manager, SERVICE_START));
        device = OpenDevice();
    }
    if (device != INVALID_HANDLE_VALUE)
        return std::make_unique<WindowsTap>(device);
    switch (GetLastError()) {
    case ERROR_BUSY:
        throw std::runtime_error("korutap has a reader already; is another koruspy running?");
    case ERROR_PRIVILEGE_NOT_HELD:
    case ERROR_ACCESS_DENIED:
        throw std::runtime_error("korutap answers administrators only: the debug privilege is needed");
    default:
        Fail("korutap cannot be opened");
    }
}

void InstallModule(const std::string& path)
{
    char full[MAX_PATH] = {};
    char* name = nullptr;
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, full, &name);
    if (length == 0 || length >= MAX_PATH || GetFileAttributesA(full) == INVALID_FILE_ATTRIBUTES)
        throw std::runtime_error(path + " cannot be found");
    const Service manager = OpenManager(SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE);
    Service module(CreateServiceA(manager.get(), ServiceName, "Koru record tap", SERVICE_START, SERVICE_KERNEL_DRIVER,
                                  SERVICE_DEMAND_START, SERVICE_ERROR_IGNORE, full, nullptr, nullptr, nullptr, nullptr,
                                  nullptr));
    if (!module && GetLastError() == ERROR_SERVICE_EXISTS)
        throw std::runtime_error("the service korutap is there already; --remove-module removes it");
    if (!module)
        Fail("the service korutap cannot be made");
    Start(module);
}

void RemoveModule()
{
    const Service manager = OpenManager(SC_MANAGER_CONNECT);
    const Service module = OpenModule(manager, DELETE);
    if (!DeleteService(module.get()))
        Fail("the service korutap cannot be removed");
}

} // namespace koruspy
