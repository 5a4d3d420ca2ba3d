// Every record type: literal bytes and the line that they must give. Slots hold small numbers, which lead
// nowhere, so that each one is seen to stand at its own offset.

#include "client/json_lines.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

namespace koru::client::test {
namespace {

    struct RecordCase {
        const char* name;
        std::uint32_t type;
        WireBytes body; // from offset 40
        std::string expected; // behind the header's fields
    };

    std::string Bad(int slot)
    {
        return "{\"badOffset\":" + std::to_string(slot) + "}";
    }

    WireBytes Words(std::initializer_list<std::int64_t> words)
    {
        return WireBytes().Words(words);
    }

    const std::string NoSlots2 = R"("surface":null,"source":null)";

    const RecordCase Cases[] = {
        {"DrvAssertMode", 0x1, Words({0x11, 1}), R"("dhpdev":17,"enable":1)"},
        {"DrvEnablePDEV", 0x2, Words({1, 2, 0, -1, 300, 4, 0x21, 0x22, 5, 0x23}),
         R"("patternCount":0,"deviceInfoSize":300,"hdev":33,"dhpdev":34,"driverHandle":35,"deviceMode":)" + Bad(1)
             + R"(,"logicalAddress":)" + Bad(2) + R"(,"patterns":null,"deviceInfo":)" + Bad(4) + R"(,"deviceName":)"
             + Bad(5)},
        {"DrvDisablePDEV", 0x4, Words({0x11, 0xEEEEEEEE}), R"("dhpdev":17)"},
        {"DrvCompletePDEV", 0x8, Words({0x11, 0x12}), R"("dhpdev":17,"hdev":18)"},
        {"DrvEnableSurface", 0x10, Words({0x11, 0xFFFFFFFF}), R"("dhpdev":17,"hsurf":4294967295)"},
        {"DrvDisableSurface", 0x20, Words({0x11, 0xEEEEEEEE}), R"("dhpdev":17)"},
        {"DrvCreateDeviceBitmap", 0x40, Words({0x51, 0x52, 0x53, 640, 480, 5}),
         R"("hbitmap":81,"hsurfBacking":82,"dhpdev":83,"size":[640,480],"format":5)"},
        {"DrvDeleteDeviceBitmap", 0x80, Words({0x51, 0xEEEEEEEE}), R"("dhsurf":81)"},
        {"DrvBitBlt", 0x100, Words({1, 2, 3, 4, 5, 6, -10, -20, 30, 40, 50, 60, -1, -1, 70, 80, 0xCCCC, 0xEEEEEEEE}),
         R"("rclTrg":[-10,-20,30,40],"ptlSrc":[50,60],"ptlMask":[-1,-1],"ptlBrush":[70,80],"rop4":52428,"surface":)"
             + Bad(1) + R"(,"source":)" + Bad(2) + R"(,"mask":)" + Bad(3) + R"(,"clip":)" + Bad(4) + R"(,"xlate":)"
             + Bad(5) + R"(,"brush":)" + Bad(6)},
        {"DrvStretchBlt", 0x200, Words({1, 2, 3, 4, 5, 100, 0, 0, 50, 10, 20, 30, 40, 3}),
         R"("rclDest":[100,0,0,50],"rclSrc":[10,20,30,40],"mode":3,"surface":)" + Bad(1) + R"(,"source":)" + Bad(2)
             + R"(,"mask":)" + Bad(3) + R"(,"clip":)" + Bad(4) + R"(,"xlate":)" + Bad(5)},
        {"DrvFillPath", 0x400, Words({1, 2, 3, 4, -1, -1, 0xD0D, 1}),
         R"("ptlBrush":[-1,-1],"mix":3341,"options":1,"surface":)" + Bad(1) + R"(,"path":)" + Bad(2) + R"(,"clip":)"
             + Bad(3) + R"(,"brush":)" + Bad(4)},
        {"DrvLineTo", 0x800, Words({1, 2, 3, -4, 5, 6, -7, 0xD0D}),
         R"("x1":-4,"y1":5,"x2":6,"y2":-7,"mix":3341,"surface":)" + Bad(1) + R"(,"clip":)" + Bad(2) + R"(,"brush":)"
             + Bad(3)},
        {"DrvMovePointer", 0x1000, Words({1, 5, 767, 1, 2, 3, 4, 0xEEEEEEEE}),
         R"("x":5,"y":767,"rcl":[1,2,3,4],"surface":)" + Bad(1)},
        {"DrvSetPointerShape", 0x2000, Words({1, 2, 3, 4, 8, 9, 100, 101, -1, -1, -1, -1, 1, 0}),
         R"("xHot":8,"yHot":9,"x":100,"y":101,"rcl":[-1,-1,-1,-1],"flags":1,"surface":)" + Bad(1) + R"(,"mask":)"
             + Bad(2) + R"(,"color":)" + Bad(3) + R"(,"xlate":)" + Bad(4)},
        {"DrvPaint", 0x4000, Words({1, 2, 3, 11, 12, 0xF0F}),
         R"("ptlBrush":[11,12],"mix":3855,"surface":)" + Bad(1) + R"(,"clip":)" + Bad(2) + R"(,"brush":)" + Bad(3)},
        {"DrvStrokePath", 0x8000, Words({1, 2, 3, 4, 5, 11, 12, 0xF0F}),
         R"("ptlBrush":[11,12],"mix":3855,"surface":)" + Bad(1) + R"(,"path":)" + Bad(2) + R"(,"clip":)" + Bad(3)
             + R"(,"brush":)" + Bad(4) + R"(,"lineAttributes":)" + Bad(5)},
        {"DrvTextOut", 0x10000, Words({1, 2, 3, 4, 0, 6, 7, 8, 10, 20, 30, 40, 11, 12, 0xD0D, 0xEEEEEEEE}),
         R"("extraCount":0,"rclOpaque":[10,20,30,40],"ptlOrigin":[11,12],"mix":3341,"surface":)" + Bad(1)
             + R"(,"string":)" + Bad(2) + R"(,"font":)" + Bad(3) + R"(,"clip":)" + Bad(4) + R"(,"extra":)" + Bad(6)
             + R"(,"foreBrush":)" + Bad(7) + R"(,"opaqueBrush":)" + Bad(8)},
        {"DrvRealizeBrush", 0x20000, Words({1, 2, 3, 4, 5, 6}),
         R"("hatch":6,"brush":)" + Bad(1) + R"(,"target":)" + Bad(2) + R"(,"pattern":)" + Bad(3) + R"(,"mask":)"
             + Bad(4) + R"(,"xlate":)" + Bad(5)},
        {"DrvDitherColor", 0x40000, Words({0x11, 1, 0x00FF8000, 0x01020304, 2, 0xEEEEEEEE}),
         R"("dhpdev":17,"mode":1,"rgb":16744448,"dither":16909060,"returned":2)"},
        {"DrvGetModes", 0x80000, Words({0x11, 440, 1, 0xEEEEEEEE}),
         R"("driverHandle":17,"outputSize":440,"deviceMode":)" + Bad(1)},
        {"DrvCopyBits", 0x100000, Words({1, 2, 3, 4, 10, 20, 30, 40, 50, 60}),
         R"("rclDest":[10,20,30,40],"ptlSrc":[50,60],"surface":)" + Bad(1) + R"(,"source":)" + Bad(2) + R"(,"clip":)"
             + Bad(3) + R"(,"xlate":)" + Bad(4)},
        {"DrvSaveScreenBits", 0x200000, Words({1, 2, 0x99, 10, 20, 30, 40, 1}),
         R"("mode":2,"ident":153,"rcl":[10,20,30,40],"returned":1,"surface":)" + Bad(1)},
        {"DrvSetPalette", 0x400000, Words({0xEEEEEEEE, 3, 16, 2, 64, 0xEEEEEEEE, 0x0000FF, 0x00FF00}),
         R"("flags":3,"start":16,"count":2,"entries":[255,65280])"},
        {"DrvEscape", 0x800000, Words({77, 1, 0x1234, 3, 72, 2, 75, 0xEEEEEEEE}).Bytes({0xAB, 0xCD, 0xEF, 0x01, 0x02}),
         R"("returned":77,"code":4660,"inputSize":3,"outputSize":2,"surface":)" + Bad(1)
             + R"(,"input":"abcdef","output":"0102")"},
        {"DrvAlphaBlend", 0x1000000,
         Words({0, 0, 0, 4, 10, 20, 30, 40, 1, 2, 3, 4}).Bytes({0, 1, 128, 2}).Words({0xEEEEEEEE}),
         R"("rclDest":[10,20,30,40],"rclSrc":[1,2,3,4],"blend":{"operation":0,"flags":1,"alpha":128,"format":2},)"
             + NoSlots2 + R"(,"clip":null,"xlate":)" + Bad(4)},
        {"DrvGradientFill", 0x2000000, Words({1, 2, 3, 4, 0, 0, 0, 10, 20, 30, 40, 5, 6, 2}),
         R"("vertexCount":0,"meshCount":0,"rclExtents":[10,20,30,40],"ptlDither":[5,6],"mode":2,"surface":)" + Bad(1)
             + R"(,"clip":)" + Bad(2) + R"(,"xlate":)" + Bad(3) + R"(,"arrays":)" + Bad(4)},
        {"DrvTransparentBlt", 0x4000000, Words({0, 0, 3, 4, 10, 20, 30, 40, 1, 2, 3, 4, 0xFF00FF, 5}),
         R"("rclDest":[10,20,30,40],"rclSrc":[1,2,3,4],"transparentColor":16711935,"reserved":5,)" + NoSlots2
             + R"(,"clip":)" + Bad(3) + R"(,"xlate":)" + Bad(4)},
        {"DrvStretchBltROP", 0x8000000,
         Words({0, 0, 3, 4, 5})
             .Halves({24, 1, 2, 3, 4, 5, 6, 7, -8, -9, -10, -11})
             .Words({1, 2, 10, 20, 30, 40, 11, 21, 31, 41, 12, 13, 4, 6, 0xAACC}),
         R"("adjustment":{"size":24,"flags":1,"illuminant":2,"redGamma":3,"greenGamma":4,"blueGamma":5,)"
         R"("referenceBlack":6,"referenceWhite":7,"contrast":-8,"brightness":-9,"colorfulness":-10,)"
         R"("redGreenTint":-11},)"
         R"("ptlHalftone":[1,2],"rclDest":[10,20,30,40],"rclSrc":[11,21,31,41],"ptlMask":[12,13],"mode":4,)"
         R"("rop4":43724,)"
             + NoSlots2 + R"(,"mask":)" + Bad(3) + R"(,"clip":)" + Bad(4) + R"(,"xlate":)" + Bad(5) + R"(,"brush":)"
             + Bad(6)},
        {"DrvPlgBlt", 0x10000000,
         Words({0, 0, 3, 4, 5}).Fill(24, 0).Words({1, 2, 16, 32, 48, 64, 80, -96, 11, 21, 31, 41, 12, 13, 4}),
         R"("adjustment":{"size":0,"flags":0,"illuminant":0,"redGamma":0,"greenGamma":0,"blueGamma":0,)"
         R"("referenceBlack":0,"referenceWhite":0,"contrast":0,"brightness":0,"colorfulness":0,"redGreenTint":0},)"
         R"("ptlBrush":[1,2],"corners":[[16,32],[48,64],[80,-96]],"rclSrc":[11,21,31,41],"ptlMask":[12,13],"mode":4,)"
             + NoSlots2 + R"(,"mask":)" + Bad(3) + R"(,"clip":)" + Bad(4) + R"(,"xlate":)" + Bad(5)},
        {"DrvStrokeAndFillPath", 0x20000000, Words({1, 2, 3, 4, 5, 6, 11, 12, 0xD0D, 2}),
         R"("ptlBrush":[11,12],"mixFill":3341,"options":2,"surface":)" + Bad(1) + R"(,"path":)" + Bad(2) + R"(,"clip":)"
             + Bad(3) + R"(,"strokeBrush":)" + Bad(4) + R"(,"lineAttributes":)" + Bad(5) + R"(,"fillBrush":)" + Bad(6)},
    };

    TEST(RecordJson, WritesEveryFieldOfEveryRecord)
    {
        EXPECT_EQ(std::size(Cases), 30u);
        for (const RecordCase& row : Cases) {
            const auto length = static_cast<std::uint32_t>(40 + row.body.size());
            const WireBytes bytes = Header(length, row.type).Add(row.body);
            const std::string expected = std::string("{\"call\":\"") + row.name + "\",\"flag\":1,\"totalLength\":"
                + std::to_string(length) + ",\"callType\":" + std::to_string(row.type)
                + R"(,"suspended":0,"identifier0":7,"identifier1":9,"timeStamp":4294967312,)" + row.expected + "}";
            EXPECT_EQ(JsonLine(bytes, 1), expected);
        }
    }

    TEST(RecordJson, ShowsReservedWordsThatAreNotZero)
    {
        WireBytes bytes = RecordOf(0x1, {0x11, 1});
        bytes.SetWord(36, 5);
        EXPECT_NE(JsonLine(bytes, 0).find(R"("timeStamp":4294967312,"reserved1":5,"dhpdev":17)"), std::string::npos);
    }

    TEST(RecordJson, ListsBytesThatBelongToNothing)
    {
        // A brush at 80 in a record with four bytes in front of it and eight behind.
        const WireBytes bytes =
            RecordOf(0x4000, {0, 0, 68, 0, 0, 0}, WireBytes().Words({0xEEEEEEEE, 0xFF, 0x10, 0x10, 1, 2}));
        EXPECT_NE(JsonLine(bytes, 0).find(R"("brush":{"at":68,"solidColor":255,"realized":16,"realizedAgain":16},)"
                                          R"("unknown":[[64,68],[80,88]]})"),
                  std::string::npos);
    }

    TEST(RecordJson, SaysWhyBytesAreNoRecord)
    {
        EXPECT_EQ(JsonLine({}, -1), R"({"error":"empty","flag":-1,"bytes":0})");
        EXPECT_EQ(JsonLine(WireBytes().Fill(39, 1), 0), R"({"error":"too short","flag":0,"bytes":39})");
        EXPECT_EQ(JsonLine(RecordOf(0x40000000, {0, 0}), 0), R"({"error":"unknown type","flag":0,"bytes":48})");
        EXPECT_EQ(JsonLine(RecordOf(0x3, {0, 0}), 0), R"({"error":"unknown type","flag":0,"bytes":48})");
        EXPECT_EQ(JsonLine(RecordOf(0x1, {0}), 0), R"({"error":"bad length","flag":0,"bytes":44})");
        WireBytes tooLong = RecordOf(0x1, {0, 0});
        tooLong.SetWord(0, 49);
        EXPECT_EQ(JsonLine(tooLong, 0), R"({"error":"bad length","flag":0,"bytes":48})");
    }

} // namespace
} // namespace koru::client::test
