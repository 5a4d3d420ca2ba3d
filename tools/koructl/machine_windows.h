#pragma once

#include "tools/koructl/changes.h"

namespace koructl {

// The registry and the system folder of this machine.
class WindowsMachine : public Machine {
public:
    std::optional<RegistryValue> ReadValue(const std::string& key, const std::string& name) override;
    bool WriteValue(const std::string& key, const std::string& name, const RegistryValue& value) override;
    bool RemoveValue(const std::string& key, const std::string& name) override;
    bool HasFile(const std::string& name) override;
    std::optional<std::string> ReadFile(const std::string& name) override;
    bool WriteFile(const std::string& name, const std::string& content) override;
    bool RemoveFile(const std::string& name) override;
};

} // namespace koructl
