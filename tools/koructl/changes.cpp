#include "tools/koructl/changes.h"

#include <stdexcept>

namespace koructl {

// What cannot be taken back stays: there is nobody left to tell, and the rest is taken back all the same.
Changes::~Changes()
{
    for (auto step = undo_.rbegin(); step != undo_.rend(); ++step)
        (*step)();
}

void Changes::Value(const std::string& key, const std::string& name, const std::optional<RegistryValue>& value)
{
    const auto before = machine_.ReadValue(key, name);
    if (before == value)
        return;
    undo_.push_back([=, this] { return Put(key, name, before); });
    if (!Put(key, name, value))
        throw std::runtime_error("the registry value " + name + " of " + key
                                 + " cannot be changed; are you an administrator?");
}

void Changes::File(const std::string& name, const std::optional<std::string>& content)
{
    const auto before = machine_.ReadFile(name);
    if (before == content)
        return;
    if (!before && machine_.HasFile(name))
        throw std::runtime_error("the file " + name + " of the system folder cannot be read");
    undo_.push_back([=, this] { return Put(name, before); }); // a failed write may leave a part
    if (!Put(name, content))
        throw std::runtime_error("the file " + name + " of the system folder cannot be written");
}

bool Changes::Put(const std::string& key, const std::string& name, const std::optional<RegistryValue>& value)
{
    if (value)
        return machine_.WriteValue(key, name, *value);
    return !machine_.ReadValue(key, name) || machine_.RemoveValue(key, name);
}

bool Changes::Put(const std::string& name, const std::optional<std::string>& content)
{
    if (content)
        return machine_.WriteFile(name, *content);
    return !machine_.HasFile(name) || machine_.RemoveFile(name);
}

} // namespace koructl
