#include "client/json_writer.h"
#include "client/utf8.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

namespace koru::client::test {
namespace {

    std::string Utf8Of(std::u16string_view text)
    {
        const WireBytes bytes = WireBytes().Text(text);
        return ToUtf8(Array<char16_t>(bytes, 0, static_cast<std::uint32_t>(text.size()), 1000));
    }

    TEST(Utf8, TakesOneToFourBytes)
    {
        EXPECT_EQ(Utf8Of(u"a\u007F"), "a\x7F");
        EXPECT_EQ(Utf8Of(u"\u0080\u07FF"), "\xC2\x80\xDF\xBF");
        EXPECT_EQ(Utf8Of(u"\u0800\uFFFD"), "\xE0\xA0\x80\xEF\xBF\xBD");
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xD83D), char16_t(0xDE00)}), "\xF0\x9F\x98\x80");
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xDBFF), char16_t(0xDFFF)}), "\xF4\x8F\xBF\xBF");
    }

    TEST(Utf8, ReplacesLoneSurrogates)
    {
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xD83D)}), "\xEF\xBF\xBD");
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xDE00), u'x'}), "\xEF\xBF\xBDx");
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xD83D), u'x'}), "\xEF\xBF\xBDx");
        EXPECT_EQ(Utf8Of(std::u16string{char16_t(0xD83D), char16_t(0xD83D), char16_t(0xDE00)}),
                  "\xEF\xBF\xBD\xF0\x9F\x98\x80");
    }

    TEST(Utf8, FixedFieldsEndAtAZeroOrAtTheirEnd)
    {
        EXPECT_EQ(ToUtf8(std::span<const std::byte>(WireBytes().Text(std::u16string_view(u"ab\0c", 4)))), "ab");
        EXPECT_EQ(ToUtf8(std::span<const std::byte>(WireBytes().Text(u"abcd"))), "abcd");
        EXPECT_EQ(ToUtf8(std::span<const std::byte>()), "");
    }

    TEST(JsonWriter, SetsCommasBetweenElementsAndMembers)
    {
        JsonWriter json;
        json.Open('{');
        json.Key("a");
        json.Open('[');
        json.Number(-1);
        json.Null();
        json.Open('{');
        json.Close('}');
        json.Close(']');
        json.Key("b");
        json.Text("[");
        json.Key("c");
        json.Number(4294967295);
        json.Close('}');
        EXPECT_EQ(json.Take(), R"({"a":[-1,null,{}],"b":"[","c":4294967295})");
    }

    TEST(JsonWriter, EscapesWhatMustNotStandInText)
    {
        JsonWriter json;
        json.Text(std::string_view("\"\\/\n\t\x1F\0\x7F\xC3\xA9", 10));
        EXPECT_EQ(json.Take(), "\"\\\"\\\\/\\u000a\\u0009\\u001f\\u0000\x7F\xC3\xA9\"");
    }

} // namespace
} // namespace koru::client::test
