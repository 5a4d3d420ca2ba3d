#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "client/json_lines.h"
#include "client/summary.h"
#include "tools/commands.h"
#include "tools/record_file.h"
#include "tools/record_filter.h"

namespace tools {

using namespace koru::client;

namespace {

    // What depends on where things lay in memory, and when.
    const std::set<std::string> addressFields = {
        "bits",     "consumer", "dhpdev",   "dhsurf", "driverHandle",  "hbitmap",   "hdev",         "hsurf",
        "patterns", "producer", "realized", "scan0",  "realizedAgain", "timeStamp", "hsurfBacking",
    };

    void DropAddresses(nlohmann::ordered_json& value)
    {
        if (value.is_object())
            for (const std::string& name : addressFields)
                value.erase(name);
        if (value.is_structured())
            for (auto& inner : value)
                DropAddresses(inner);
    }

    std::string LineOf(const Frame& frame, const RecordsOptions& options)
    {
        std::string line = JsonLine(frame.record, frame.flag);
        if (!options.noAddresses)
            return line;
        auto value = nlohmann::ordered_json::parse(line);
        DropAddresses(value);
        return value.dump();
    }

    bool IsFiltered(const RecordsOptions& options)
    {
        return !options.calls.empty() || options.surface || options.process || options.rectangle;
    }

} // namespace

void ShowRecords(const RecordsOptions& options)
{
    CheckCallNames(options);
    const auto file = ReadFile(options.path);
    Summary summary;
    const std::string damage = ForEachFrame(options.path, file, [&](const Frame& frame) {
        if (IsFiltered(options)) {
            const auto record = Record::Decode(frame.record);
            if (!record || !Passes(*record, options))
                return;
        }
        if (options.json)
            std::cout << LineOf(frame, options) << '\n';
        else
            summary.Add(frame.record);
    });
    if (!options.json)
        std::cout << summary.Table();
    if (!damage.empty())
        throw std::runtime_error(damage);
}

} // namespace tools
