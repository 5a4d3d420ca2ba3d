#include "json_writer.h"

namespace koru::client {

void JsonWriter::Separate()
{
    if (!out_.empty() && out_.back() != '{' && out_.back() != '[' && out_.back() != ':')
        out_ += ',';
}

void JsonWriter::Open(char bracket)
{
    Separate();
    out_ += bracket;
}

void JsonWriter::Close(char bracket)
{
    out_ += bracket;
}

void JsonWriter::Key(std::string_view name)
{
    Text(name);
    out_ += ':';
}

void JsonWriter::Number(std::int64_t value)
{
    Separate();
    out_ += std::to_string(value);
}

void JsonWriter::Text(std::string_view utf8)
{
    Separate();
    out_ += '"';
    for (const char c : utf8) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out_ += '\\';
            out_ += c;
        } else if (code < 0x20) {
            constexpr char digits[] = "0123456789abcdef";
            out_ += "\\u00";
            out_ += digits[code >> 4];
            out_ += digits[code & 15];
        } else {
            out_ += c;
        }
    }
    out_ += '"';
}

void JsonWriter::Null()
{
    Separate();
    out_ += "null";
}

} // namespace koru::client
