// docs/records.md against the declarations: every table, every row, in both directions.

#include "client/layouts.h"
#include "client/records.h"
#include "source_file.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace koru::client::test {
namespace {

    struct Row {
        std::string field;
        unsigned long offset, size;
        std::string meaning;
    };

    using Tables = std::map<std::string, std::vector<Row>>; // by the heading's text

    std::string Trim(const std::string& text)
    {
        const auto begin = text.find_first_not_of(' ');
        return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
    }

    // "| a | b |" as its cells.
    std::vector<std::string> Cells(const std::string& line)
    {
        std::vector<std::string> cells;
        std::istringstream text(line.substr(1));
        for (std::string cell; std::getline(text, cell, '|');)
            cells.push_back(Trim(cell));
        return cells;
    }

    Tables ReadTables()
    {
        Tables tables;
        std::istringstream lines(SourceFile("docs/records.md"));
        std::string heading;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("### "))
                heading = line.substr(4);
            else if (line.starts_with("## "))
                heading.clear();
            if (heading.empty() || !line.starts_with("| ") || line.starts_with("| Field"))
                continue;
            const auto cells = Cells(line);
            EXPECT_EQ(cells.size(), 4u) << line;
            tables[heading].push_back({cells[0], std::stoul(cells[1]), std::stoul(cells[2]), cells[3]});
        }
        return tables;
    }

    // What the meaning of a slot must begin with.
    std::string_view MeaningOf(ObjectKind kind)
    {
        constexpr std::string_view meanings[] = {
            "",
            "slot, Surface",
            "slot, Clip",
            "slot, Brush",
            "slot, Xlate",
            "slot, DeviceMode",
            "slot, DeviceInfo",
            "slot, Path",
            "slot, LineAttributes",
            "slot, String",
            "slot, Font",
            "slot, zero-terminated text",
            "slot, so many rectangles",
            "64, the offset of the entries",
            "80, the offset of the pattern handles",
            "offset of the input",
            "offset of the output",
            "offset of the mesh",
        };
        return meanings[static_cast<std::size_t>(kind)];
    }

    void ExpectDescribed(const Tables& tables, const std::string& heading, std::span<const Field> fields)
    {
        const auto table = tables.find(heading);
        ASSERT_NE(table, tables.end()) << "no table for \"" << heading << "\"";
        ASSERT_EQ(table->second.size(), fields.size()) << heading;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const Row& row = table->second[i];
            const Field& field = fields[i];
            EXPECT_EQ(row.field, field.name) << heading;
            EXPECT_EQ(row.offset, field.offset) << heading << ", " << field.name;
            EXPECT_EQ(row.size, field.size) << heading << ", " << field.name;
            EXPECT_TRUE(row.meaning.starts_with(MeaningOf(field.object))) << heading << ", " << field.name;
            EXPECT_EQ(row.meaning == "not written", field.kind == FieldKind::Unwritten)
                << heading << ", " << field.name;
            EXPECT_EQ(row.meaning == "0", field.kind == FieldKind::Zero) << heading << ", " << field.name;
        }
    }

    std::string Hex(std::uint32_t value)
    {
        std::ostringstream text;
        text << "0x" << std::hex << value;
        return text.str();
    }

    TEST(RecordsDocument, DescribesEveryRecordAndEncodingAsDeclared)
    {
        const Tables tables = ReadTables();
        ExpectDescribed(tables, "RecordHeader: 40 bytes", HeaderLayout.fields);
        for (const RecordLayout& record : RecordLayouts())
            ExpectDescribed(tables,
                            std::string(record.name) + ": " + Hex(static_cast<std::uint32_t>(record.type)) + ", "
                                + std::to_string(record.size) + " bytes",
                            record.fields);
        for (const Layout* encoding : EncodingLayouts())
            ExpectDescribed(tables, std::string(encoding->name) + ": " + std::to_string(encoding->size) + " bytes",
                            encoding->fields);
        EXPECT_EQ(tables.size(), 1 + RecordLayouts().size() + EncodingLayouts().size());
    }

    TEST(Layouts, AreFoundByType)
    {
        EXPECT_EQ(NameOf(CallType::AssertMode), "DrvAssertMode");
        EXPECT_EQ(NameOf(CallType::StrokeAndFillPath), "DrvStrokeAndFillPath");
        EXPECT_EQ(NameOf(CallType{0x40000000}), "unknown");
        EXPECT_EQ(NameOf(CallType{0}), "unknown");
        EXPECT_EQ(NameOf(CallType{0x300}), "unknown");
    }

} // namespace
} // namespace koru::client::test
