#include <gtest/gtest.h>

#include "engine/core/engine.h"

namespace {

using namespace engine;

void Print(const char* prefix, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    EngDebugPrint(const_cast<char*>(prefix), const_cast<char*>(format), arguments);
    va_end(arguments);
}

template<class... Arguments> std::string Printed(const char* format, Arguments... arguments)
{
    Engine engine;
    Print("", format, arguments...);
    EXPECT_TRUE(engine.Violations().empty());
    return engine.DebugOutput();
}

TEST(DebugPrint, JoinsPrefixAndText)
{
    Engine engine;
    Print("KORU:", "one\n");
    Print("KORU: ", "two %d\n", 2);
    EXPECT_EQ(engine.DebugOutput(), "KORU:one\nKORU: two 2\n");
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:one\nKORU: two 2\n");
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST(DebugPrint, FormatsNumbers)
{
    EXPECT_EQ(Printed("%d|%i|%u", -5, 7, 0xFFFFFFFFu), "-5|7|4294967295");
    EXPECT_EQ(Printed("%x|%X|%lx|%lX", 0xBEEF, 0xBEEF, 0xBEEFul, 0xBEEFul), "beef|BEEF|beef|BEEF");
    EXPECT_EQ(Printed("%08X|%08x", 6, 0xABCDEF01), "00000006|abcdef01");
    EXPECT_EQ(Printed("%4d|%-4d|%04d|%.3d", 12, 12, -12, 5), "  12|12  |-012|005");
    EXPECT_EQ(Printed("%lu|%ld|%hd|%hu", 4000000000ul, -1l, 0x1FFFF, 0x1FFFF), "4000000000|-1|-1|65535");
    EXPECT_EQ(Printed("%I64d|%llu", -10000000000ll, 18446744073709551615ull), "-10000000000|18446744073709551615");
    EXPECT_EQ(Printed("%d", static_cast<int>(0x80000000)), "-2147483648");
    EXPECT_EQ(Printed("%p", reinterpret_cast<void*>(0xABC)), "00000ABC");
    EXPECT_EQ(Printed("100%%"), "100%");
}

TEST(DebugPrint, FormatsNarrowStringsAndCharacters)
{
    EXPECT_EQ(Printed("<%s>", "text"), "<text>");
    EXPECT_EQ(Printed("<%6s|%-6s|%.2s>", "text", "text", "text"), "<  text|text  |te>");
    EXPECT_EQ(Printed("%c%c", 'o', 'k'), "ok");
    EXPECT_EQ(Printed("%s", static_cast<char*>(nullptr)), "(null)");
    EXPECT_EQ(Printed("%hS", "narrow"), "narrow");
}

TEST(DebugPrint, TakesWideStringsAsSixteenBitCharacters)
{
    EXPECT_EQ(Printed("%S", u"framebuf.dll"), "framebuf.dll");
    EXPECT_EQ(Printed("%ls|%ws", u"one", u"two"), "one|two");
    EXPECT_EQ(Printed("%S", u"\u00E4\u20AC\U0001F600"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(Printed("%C%lc", u'\u00E4', u'b'),
              "\xC3\xA4"
              "b");
    EXPECT_EQ(Printed("%S", static_cast<WCHAR*>(nullptr)), "(null)");
    const WCHAR unterminated[3] = {u'a', u'b', u'c'};
    EXPECT_EQ(Printed("%.3S", unterminated), "abc");
}

TEST(DebugPrint, ReportsUnknownConversionsAndNull)
{
    Engine engine;
    Print("p:", "before %q after", 1);
    EXPECT_EQ(engine.DebugOutput(), "p:before ");
    Print("", "%");
    Print(nullptr, "x");
    Print("p", nullptr);
    EXPECT_EQ(engine.Violations(),
              (std::vector<std::string>{"EngDebugPrint: unknown conversion %q", "EngDebugPrint: unknown conversion %",
                                        "EngDebugPrint: the prefix is null", "EngDebugPrint: the message is null"}));
}

} // namespace
