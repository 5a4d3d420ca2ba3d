#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace koru::client {

// Builds one line of JSON, left to right; commas are its own business.
class JsonWriter {
public:
    void Open(char bracket); // '{' or '['
    void Close(char bracket); // '}' or ']'
    void Key(std::string_view name); // its value comes next
    void Number(std::int64_t value);
    void Text(std::string_view utf8);
    void Null();

    std::string Take() { return std::move(out_); }

private:
    void Separate();
    std::string out_;
};

} // namespace koru::client
