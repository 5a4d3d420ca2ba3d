// The examples that open the headers: they compile, they work, and they stand in the headers letter by letter.

#include "client/control.h"
#include "client/record_decoder.h"
#include "source_file.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace koru::client::test {
namespace {

    // clang-format off
// [record_decoder.h]
void PrintText(std::span<const std::byte> bytes)
{
    const auto record = Record::Decode(bytes);
    const auto call = record ? record->As<TextOutRecord>() : std::nullopt;
    const auto string = call ? record->At(call->string) : std::nullopt;
    if (!string || !string->text)
        return;
    for (const GlyphPosition glyph : string->glyphs)
        std::printf("(%d, %d) ", int(glyph.position.x), int(glyph.position.y));
    std::printf("%s\n", ToUtf8(string->text->characters).c_str());
}
// [end]

// [control.h]
bool MagnifyTopLeft(Transport transport, std::uint32_t dhpdev, const ConsumerFunctions& consumer)
{
    const Control koru(std::move(transport));
    if (!koru.Answers(Escape::Koru) || koru.InterfaceVersion() != 303)
        return false;

    // Records of text and blits, but not those of the top bar.
    koru.Capture().Install(consumer);
    koru.Capture().SetMask(MaskBit(CallType::TextOut) | MaskBit(CallType::BitBlt));
    const auto bar = koru.DarkZones().Add(dhpdev, { 0, 0, 1024, 30 });
    koru.Capture().On();

    // A view of 100 x 80 pixels, three times as large, in the middle of the screen.
    const auto zoomer = koru.Zoomers().Create();
    if (!bar || !zoomer)
        return false;
    koru.Zoomers().SetFactor(*zoomer, 3);
    koru.Zoomers().SetOriginalRect(*zoomer, { 0, 0, 100, 80 });
    koru.Zoomers().SetZoomedRect(*zoomer, { 300, 200, 600, 440 });
    koru.Zoomers().SetBehaviour(*zoomer, ZoomerBehaviour::Deferred);
    koru.Zoomers().SetImproveFactor(*zoomer, 2);
    koru.Zoomers().SetBorder(*zoomer, BorderLeft | BorderTop | BorderRight | BorderBottom);
    koru.Zoomers().SetState(*zoomer, true);
    koru.Zoomers().Update();

    // ... and everything off again.
    koru.Zoomers().Remove(*zoomer);
    koru.DarkZones().Delete(dhpdev, *bar);
    return koru.Capture().Off();
}
// [end]
    // clang-format on

    // The lines of this file between a header's mark and the end, as they must stand in that header.
    std::string ExampleOf(const std::string& header)
    {
        std::istringstream lines(SourceFile("tests/client/examples_test.cpp"));
        std::string example;
        bool inside = false;
        for (std::string line; std::getline(lines, line);) {
            if (line == "// [end]")
                inside = false;
            if (inside)
                example += line.empty() ? "//\n" : "//     " + line + "\n";
            if (line == "// [" + header + "]")
                inside = true;
        }
        return example;
    }

    TEST(Examples, StandInTheHeadersAsTheyCompileHere)
    {
        for (const std::string header : {"record_decoder.h", "control.h"}) {
            const std::string example = ExampleOf(header);
            EXPECT_GT(example.size(), 300u);
            EXPECT_NE(SourceFile("client/" + header).find("//\n" + example), std::string::npos)
                << header << " should hold\n"
                << example;
        }
    }

    TEST(Examples, PrintTextShowsGlyphPositionsAndCharacters)
    {
        const WireBytes string = WireBytes()
                                     .Words({0, 0, 0, 0, 0, 0, 0, 2, 40, 96})
                                     .Words({0x41, 100, -5, 0, 0, 0, 0, 0x42, 108, -5, 0, 0, 0, 0})
                                     .Text(std::u16string_view(u"Hi\0", 3));
        testing::internal::CaptureStdout();
        PrintText(RecordOf(0x10000, {0, 104, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, string));
        PrintText(RecordOf(0x1, {0, 0}));
        PrintText({});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "(100, -5) (108, -5) Hi\n");
    }

    TEST(Examples, MagnifyTopLeftRunsToItsEnd)
    {
        int escapes = 0;
        const auto driver = [&](std::uint32_t, std::span<const std::byte> in, std::span<std::byte> out) {
            ++escapes;
            const auto command = Load<std::uint32_t>(in, 0);
            const std::uint32_t answer = command == 91 ? 303 : 1;
            if (out.size() >= 4)
                std::memcpy(out.data(), &answer, 4);
            return 1;
        };
        EXPECT_TRUE(MagnifyTopLeft(driver, 0x11, {}));
        EXPECT_EQ(escapes, 18);
    }

} // namespace
} // namespace koru::client::test
