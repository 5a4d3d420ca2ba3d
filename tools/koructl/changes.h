#pragma once

// Changes to a machine's registry and system folder that can be taken back as long as they are not kept.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace koructl {

struct RegistryValue {
    std::uint32_t type; // as the system numbers them; 7 is a list of texts
    std::string bytes; // as the system stores them
    bool operator==(const RegistryValue&) const = default;
};

// The parts of a machine that an installation reads and writes. What writes answers false when the system
// refused; nothing is changed then.
class Machine {
public:
    virtual ~Machine() = default;
    // Keys are below HKEY_LOCAL_MACHINE. Values are read whole; none when the key or the value is absent.
    virtual std::optional<RegistryValue> ReadValue(const std::string& key, const std::string& name) = 0;
    virtual bool WriteValue(const std::string& key, const std::string& name, const RegistryValue& value) = 0;
    virtual bool RemoveValue(const std::string& key, const std::string& name) = 0;
    // Files of the system folder (System32), small ones.
    virtual bool HasFile(const std::string& name) = 0;
    virtual std::optional<std::string> ReadFile(const std::string& name) = 0;
    virtual bool WriteFile(const std::string& name, const std::string& content) = 0;
    virtual bool RemoveFile(const std::string& name) = 0;
};

// Makes changes one by one. Unless they are kept in the end, the destructor takes back what was made.
class Changes {
public:
    explicit Changes(Machine& machine)
        : machine_(machine)
    {
    }
    ~Changes();
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    // Each puts one thing into a state; none is absence. Throws std::runtime_error when the system refuses.
    void Value(const std::string& key, const std::string& name, const std::optional<RegistryValue>& value);
    void File(const std::string& name, const std::optional<std::string>& content);
    void Keep() { undo_.clear(); }

private:
    bool Put(const std::string& key, const std::string& name, const std::optional<RegistryValue>& value);
    bool Put(const std::string& name, const std::optional<std::string>& content);

    Machine& machine_;
    std::vector<std::function<bool()>> undo_;
};

} // namespace koructl
