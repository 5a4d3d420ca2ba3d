#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>

#include "tests/engine/gdi_dib_writer.h"
#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    class GdiMetafile : public Painted {
    protected:
        GdiMetafile() { target_ = engine::MakeBitmap({40, 30}, engine::PixelLayout::Default(BMF_32BPP)); }
        bool PlayBytes(const std::vector<BYTE>& bytes)
        {
            report_ = {};
            return engine::gdi::PlayBytes({target_, target_->layout, target_->Bounds()}, std::span<const BYTE>(bytes),
                                          "a.emf", report_, error_);
        }
        std::string ErrorOf(const std::vector<BYTE>& bytes)
        {
            EXPECT_FALSE(PlayBytes(bytes));
            return error_;
        }
        engine::Surface* target_;
    };

    TEST_F(GdiMetafile, CountsWhatItPlays)
    {
        EXPECT_TRUE(PlayBytes(Metafile().Add(LineTo, Words(1, 1)).Add(LineTo, Words(2, 2)).End().bytes));
        EXPECT_EQ(report_.played, Counts({{"HEADER", 1}, {"LINETO", 2}, {"EOF", 1}}));
        EXPECT_EQ(report_.skipped, Counts());
        EXPECT_EQ(error_, "");
    }

    TEST_F(GdiMetafile, CountsWhatItSkips)
    {
        Metafile metafile;
        metafile.Add(Comment, Words(4, 0x2B464D45)).Add(Comment, Words(4, 0x43494447)).Add(98, Words(1)).Add(53);
        metafile.Add(200).Add(0).Add(69).Add(0xFFFFFFFF).Add(SetLayout, Words(1)).Add(SetLayout, Words(0));
        EXPECT_TRUE(PlayBytes(metafile.End().bytes));
        EXPECT_EQ(report_.skipped,
                  Counts({{"comment", 2},
                          {"SETICMMODE", 1},
                          {"EXTFLOODFILL", 1},
                          {"record type 0", 1},
                          {"record type 69", 1},
                          {"record type 200", 1},
                          {"record type 4294967295", 1},
                          {"SETLAYOUT: from right to left", 1}}));
    }

    TEST_F(GdiMetafile, EveryRecordOfTheFormatHasAName)
    {
        Metafile metafile;
        for (ULONG type = 2; type <= 122; ++type)
            if (type != 14 && type != 69 && type != 107 && type != 117)
                metafile.Add(type);
        EXPECT_TRUE(PlayBytes(metafile.End().bytes));
        for (const auto& [name, count] : report_.skipped)
            EXPECT_EQ(name.find("record type"), std::string::npos) << name;
    }

    TEST_F(GdiMetafile, StopsAtTheEndRecord)
    {
        Metafile metafile;
        metafile.End().Add(LineTo, Words(1, 1));
        EXPECT_TRUE(PlayBytes(metafile.bytes));
        EXPECT_EQ(report_.played, Counts({{"HEADER", 1}, {"EOF", 1}}));
    }

    TEST_F(GdiMetafile, TellsWhereARecordIsDamaged)
    {
        Metafile metafile;
        metafile.Add(LineTo, Words(1, 1)); // at 88; the next at 104
        std::vector<BYTE> bytes = metafile.bytes;
        EXPECT_EQ(ErrorOf(bytes), "a.emf: offset 0x68: the file ends without an end record");
        const auto with = [&](ULONG size) {
            std::vector<BYTE> longer = bytes;
            const Words head(54, size);
            longer.insert(longer.end(), head.bytes.begin(), head.bytes.end());
            return longer;
        };
        EXPECT_EQ(ErrorOf(with(0)), "a.emf: offset 0x68: record of a wrong size");
        EXPECT_EQ(ErrorOf(with(4)), "a.emf: offset 0x68: record of a wrong size");
        EXPECT_EQ(ErrorOf(with(10)), "a.emf: offset 0x68: record of a wrong size");
        EXPECT_EQ(ErrorOf(with(12)), "a.emf: offset 0x68: record reaches past the end of the file");
        EXPECT_EQ(ErrorOf(with(0xFFFFFFFC)), "a.emf: offset 0x68: record reaches past the end of the file");
        EXPECT_EQ(report_.played["LINETO"], 1u) << "what came before stays";
    }

    TEST_F(GdiMetafile, RefusesDamagedHeaders)
    {
        Metafile metafile;
        metafile.End();
        const auto with = [&](std::size_t at, ULONG word) {
            Metafile changed = metafile;
            changed.Set(at, word);
            return changed.bytes;
        };
        EXPECT_EQ(ErrorOf(with(4, 80)), "a.emf: offset 0x0: metafile header of a wrong size");
        EXPECT_EQ(ErrorOf(with(4, 0x10000)), "a.emf: offset 0x0: metafile header of a wrong size");
        EXPECT_EQ(ErrorOf(with(4, 90)), "a.emf: offset 0x0: record of a wrong size");
        EXPECT_EQ(ErrorOf(with(40, 0)), "a.emf: neither a metafile nor a PNG or BMP picture");
        EXPECT_EQ(ErrorOf(with(0, 2)), "a.emf: neither a metafile nor a PNG or BMP picture");
        EXPECT_EQ(ErrorOf({}), "a.emf: neither a metafile nor a PNG or BMP picture");
    }

    TEST_F(GdiMetafile, ADeviceWithoutASizeIsTakenForAnUsualOne)
    {
        Metafile metafile;
        metafile.Set(72, 0);
        EXPECT_TRUE(PlayBytes(metafile.End().bytes));
    }

    TEST_F(GdiMetafile, FilesAreToldApartByContent)
    {
        const std::string path = testing::TempDir() + "gdi_metafile_test";
        std::ofstream(path, std::ios::binary).write("GIF", 3);
        EXPECT_FALSE(engine::gdi::PlayFile(*target_, path, target_->Bounds(), report_, error_));
        EXPECT_EQ(error_, path + ": neither a metafile nor a PNG or BMP picture");
        Metafile metafile;
        metafile.End();
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(metafile.bytes.data()),
                   static_cast<std::streamsize>(metafile.bytes.size()));
        EXPECT_TRUE(engine::gdi::PlayFile(*target_, path, target_->Bounds(), report_, error_));
        std::remove(path.c_str());
        EXPECT_FALSE(engine::gdi::PlayFile(*target_, path, target_->Bounds(), report_, error_));
        EXPECT_EQ(error_, path + ": cannot be read");
    }

    // Something of everything.
    Metafile Sampler()
    {
        constexpr ULONG fontRecordSize = 4 + sizeof(LOGFONTW);
        Metafile metafile;
        Words polygon = NoBounds, text = NoBounds, region(48, 5, 32, 1, 1, 16, 0, 0, 9, 9, 2, 2, 30, 20),
              polys = NoBounds;
        polygon.Put(LONG{3}).Halves(1, 1, 30, 3, 15, 25);
        polys.Put(Words(2, 6, 3, 3)).Halves(1, 1, 9, 1, 5, 9, 11, 1, 19, 1, 15, 9);
        text.Put(Words(1, 1.0f, 1.0f, 3, 5, 2, 76, 2, 0, 0, 20, 20, 80)).Text(u"Ab").Put(Words(6, 7));
        metafile.Add(CreateFont, Words(3, -12).Zeros(fontRecordSize - 8)).Add(SelectObject, Words(3));
        metafile.Add(CreatePen, Words(1, 1, 1, 0, 255)).Add(SelectObject, Words(1)).Add(Polygon16, polygon);
        metafile.Add(ExtCreatePen, Words(2, 0, 0, 0, 0, 0x12107, 3, 0, 255, 0, 2, 3, 1)).Add(SelectObject, Words(2));
        metafile.Add(SaveDc).Add(SelectClipRgn, region).Add(Ellipse, Words(4, 4, 30, 25)).Add(RestoreDc, Words(-1));
        metafile.Add(TextOutW, text).Add(PolyPolygon16, polys);
        metafile.Add(StretchDiBits, StretchDibWords({5, 6, 8, 4}, {0, 0, 2, 2}, FourColours()));
        metafile.Add(BitBlt, BlitWords({5, 6, 4, 4}, {0, 0}, FourBits(), SrcInvert, {}));
        metafile.Add(BeginPath).Add(Arc, Words(2, 4, 18, 20, 30, 12, 10, -9)).Add(EndPath).Add(StrokePath, NoBounds);
        metafile.Add(GradientFill,
                     Words(NoBounds).Put(Words(2, 1, 0, 2, 3)).Halves(255, 0, 0, 0).Put(Words(12, 9, 0, 0, 0, 1)));
        return metafile.End();
    }

    TEST_F(GdiMetafile, CutAnywhereItEndsWithOneError)
    {
        const Metafile whole = Sampler();
        ASSERT_TRUE(PlayBytes(whole.bytes)) << error_;
        EXPECT_EQ(report_.skipped, Counts());
        for (const std::size_t offset : whole.offsets)
            for (int around = -5; around <= 9; ++around) {
                const std::size_t size =
                    std::min(whole.bytes.size() - 1, offset + static_cast<std::size_t>(around + 5) - 5);
                const std::vector<BYTE> cut(whole.bytes.begin(),
                                            whole.bytes.begin() + static_cast<std::ptrdiff_t>(size));
                EXPECT_FALSE(PlayBytes(cut)) << size;
                EXPECT_EQ(error_.find("a.emf: "), 0u) << size;
                EXPECT_EQ(error_.find('\n'), std::string::npos) << size;
                if (offset == 0)
                    break; // nothing before the first record
            }
    }

    TEST_F(GdiMetafile, SurvivesAnyByteBeingAnother)
    {
        const Metafile whole = Sampler();
        std::mt19937 random(1);
        for (int run = 0; run < 800; ++run) {
            std::vector<BYTE> bytes = whole.bytes;
            for (int i = 0; i <= run % 4; ++i)
                bytes[88 + random() % (bytes.size() - 88)] = static_cast<BYTE>(random());
            PlayBytes(bytes);
        }
        EXPECT_EQ(engine_.Violations(), Lines());
    }

    TEST_F(GdiMetafile, SurvivesAnyWordBeingExtreme)
    {
        const Metafile whole = Sampler();
        for (const ULONG word : {0u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x7FC00000u})
            for (std::size_t at = 8; at + 4 <= whole.bytes.size(); at += 4) {
                Metafile changed = whole;
                changed.Set(at, word);
                PlayBytes(changed.bytes);
            }
        EXPECT_EQ(engine_.Violations(), Lines());
    }

} // namespace
} // namespace gdi_tests
