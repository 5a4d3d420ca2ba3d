// docs/escapes.md is what client authors read: its tables and the driver's are the same.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "escape/koru_commands.h"
#include "escape/zoom_commands.h"

namespace {

using Cells = std::vector<std::string>;

std::string Trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The rows of the table whose header line begins so, without header and rule.
std::vector<Cells> TableBelow(const std::string& header)
{
    std::ifstream file(KORU_SOURCE_DIR "/docs/escapes.md");
    EXPECT_TRUE(file.is_open());
    std::vector<Cells> rows;
    std::string line;
    while (std::getline(file, line) && !line.starts_with(header)) { }
    std::getline(file, line);
    while (std::getline(file, line) && line.starts_with("|")) {
        Cells cells;
        std::istringstream stream(line.substr(1));
        for (std::string cell; std::getline(stream, cell, '|');)
            cells.push_back(Trimmed(cell));
        rows.push_back(cells);
    }
    return rows;
}

std::string NameInDocument(const char* name)
{
    return name ? "`" + std::string(name) + "`" : "–";
}

const char* KindInDocument(koru::ZoomKind kind)
{
    using enum koru::ZoomKind;
    switch (kind) {
    case NoScreen:
        return "no screen";
    case OnScreen:
        return "screen";
    case OnScreenSilent:
        return "screen, silent";
    case OnScreenLocked:
        return "screen, locked";
    case PerZoomer:
        return "zoomer";
    case PerZoomerSilent:
        return "zoomer, silent";
    }
    return "?";
}

TEST(EscapesDocument, ListsEveryKoruSubCommand)
{
    const std::vector<Cells> rows = TableBelow("| Sub-command |");
    ASSERT_EQ(rows.size(), std::size(koru::KoruCommands));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const koru::KoruCommand& command = koru::KoruCommands[i];
        ASSERT_EQ(rows[i].size(), 6u) << rows[i][0];
        EXPECT_EQ(rows[i][0], std::to_string(command.code));
        EXPECT_EQ(rows[i][1], NameInDocument(command.name)) << command.code;
        EXPECT_EQ(rows[i][2], std::to_string(command.cleared)) << command.code;
    }
}

TEST(EscapesDocument, ListsEveryZoomCommand)
{
    const std::vector<Cells> rows = TableBelow("| Code | Name | Kind |");
    ASSERT_EQ(rows.size(), std::size(koru::ZoomCommands));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const koru::ZoomCommand& command = koru::ZoomCommands[i];
        ASSERT_EQ(rows[i].size(), 7u) << rows[i][0];
        std::ostringstream code;
        code << "0x" << std::hex << command.code;
        EXPECT_EQ(rows[i][0], code.str());
        EXPECT_EQ(rows[i][1], NameInDocument(command.name)) << rows[i][0];
        EXPECT_EQ(rows[i][2], KindInDocument(command.kind)) << rows[i][0];
        EXPECT_EQ(rows[i][3], std::to_string(command.cleared)) << rows[i][0];
    }
}

} // namespace
