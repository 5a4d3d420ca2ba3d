#pragma once

// A registry and a system folder in memory, which can refuse any one change.

#include <map>

#include "tools/koructl/changes.h"

namespace koructl::test {

class FakeMachine : public Machine {
public:
    std::map<std::pair<std::string, std::string>, RegistryValue> values;
    std::map<std::string, std::string> files;
    int changes = 0; // that were asked for
    int refuse = -1; // the number of the change that fails, from 0; negative: none

    std::optional<RegistryValue> ReadValue(const std::string& key, const std::string& name) override
    {
        const auto found = values.find({key, name});
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    bool WriteValue(const std::string& key, const std::string& name, const RegistryValue& value) override
    {
        if (Refuses())
            return false;
        values[{key, name}] = value;
        return true;
    }
    bool RemoveValue(const std::string& key, const std::string& name) override
    {
        return !Refuses() && values.erase({key, name}) == 1;
    }
    bool HasFile(const std::string& name) override { return files.contains(name); }
    std::optional<std::string> ReadFile(const std::string& name) override
    {
        const auto found = files.find(name);
        return found == files.end() ? std::nullopt : std::optional(found->second);
    }
    bool WriteFile(const std::string& name, const std::string& content) override
    {
        if (Refuses()) {
            files[name] = content.substr(0, content.size() / 2); // as a full disk leaves it
            return false;
        }
        files[name] = content;
        return true;
    }
    bool RemoveFile(const std::string& name) override { return !Refuses() && files.erase(name) == 1; }

private:
    bool Refuses() { return changes++ == refuse; }
};

} // namespace koructl::test
