// Each kind of entity is met by picks where it is drawn, and held by windows just as large as it.
#include <cstring>
#include <map>

#include "acdbads.h"
#include "host/editor/hostselect.h"
#include "pick_support.h"

using namespace edtest;
using qrs::host::selectedIds;

namespace {

struct Spot {
    double x;
    double y;
};

struct Shape {
    const char* what;
    const char* entity;
    std::vector<Spot> on;
    std::vector<Spot> off;
    Spot low;  // the box around it; none when low.x is above high.x
    Spot high;
};

constexpr Spot kNoLow{1, 0};
constexpr Spot kNoHigh{0, 0};

constexpr const char* kBlocks =
    "0 BLOCK 8 0 2 B 70 0 10 1.0 20 0.0 0 LINE 5 B1 8 0 10 1.0 20 0.0 11 5.0 21 0.0 "
    "0 ATTDEF 5 B2 8 0 10 1.0 20 3.0 40 1.0 1 X 3 P 2 TAG 70 0 0 ENDBLK 8 0 "
    "0 BLOCK 8 0 2 *D1 70 1 10 0.0 20 0.0 0 LINE 5 B3 8 0 10 0.0 20 0.0 11 3.0 21 3.0 0 ENDBLK 8 0 "
    "0 BLOCK 8 0 2 LOOP 70 0 10 0.0 20 0.0 0 INSERT 5 B4 8 0 2 LOOP2 10 0.0 20 0.0 0 ENDBLK 8 0 "
    "0 BLOCK 8 0 2 LOOP2 70 0 10 0.0 20 0.0 0 INSERT 5 B5 8 0 2 LOOP 10 0.0 20 0.0 0 ENDBLK 8 0";

const Shape kShapes[] = {
    {"line", "0 LINE 5 A 8 0 10 1.0 20 2.0 11 11.0 21 7.0", {{6, 4.5}, {1, 2}}, {{6, 6}, {12, 7.5}}, {1, 2}, {11, 7}},
    {"circle", "0 CIRCLE 5 A 8 0 10 5.0 20 5.0 40 3.0", {{8, 5}, {6.6209, 7.5244}}, {{5, 5}}, {2, 2}, {8, 8}},
    {"circle seen from below",
     "0 CIRCLE 5 A 8 0 10 5.0 20 5.0 40 3.0 210 0.0 220 0.0 230 -1.0",
     {{-8, 5}},
     {{8, 5}},
     {-8, 2},
     {-2, 8}},
    {"circle on its edge",
     "0 CIRCLE 5 A 8 0 10 0.0 20 0.0 30 5.0 40 3.0 210 1.0 220 0.0 230 0.0",
     {{5, 2}, {5, -3}},
     {{8, 0}},
     {5, -3},
     {5, 3}},
    {"arc",
     "0 ARC 5 A 8 0 10 0.0 20 0.0 40 10.0 50 350.0 51 100.0",
     {{10, 0}, {7.0711, 7.0711}},
     {{-10, 0}, {0, -10}},
     {-1.73648, -1.73648},
     {10, 10}},
    {"ellipse",
     "0 ELLIPSE 5 A 8 0 10 0.0 20 0.0 11 4.0 21 0.0 40 0.5 41 0.0 42 3.14159265",
     {{0, 2}, {4, 0}},
     {{0, -2}, {0, 4}},
     {-4, 0},
     {4, 2}},
    {"light polyline",
     "0 LWPOLYLINE 5 A 8 0 90 2 70 1 10 0.0 20 0.0 42 1.0 10 4.0 20 0.0",
     {{2, -2}, {2, 0}},
     {{2, 2}},
     {0, -2},
     {4, 0}},
    {"wide polyline",
     "0 LWPOLYLINE 5 A 8 0 90 2 70 0 43 2.0 10 0.0 20 0.0 10 10.0 20 0.0",
     {{5, 0.9}, {5, 0}},
     {{5, 1.5}},
     {0, -1},
     {10, 1}},
    {"polyline",
     "0 POLYLINE 5 A 8 0 66 1 10 0.0 20 0.0 30 0.0 70 0 0 VERTEX 8 0 10 0.0 20 0.0 0 VERTEX 8 0 10 4.0 20 0.0 0 VERTEX "
     "8 0 10 4.0 20 3.0 0 SEQEND 8 0",
     {{4, 1.5}, {2, 0}},
     {{2, 1.5}},
     {0, 0},
     {4, 3}},
    {"mesh",
     "0 POLYLINE 5 A 8 0 66 1 70 16 71 2 72 2 0 VERTEX 8 0 10 0.0 20 0.0 70 64 0 VERTEX 8 0 10 4.0 20 0.0 70 64 0 "
     "VERTEX 8 0 10 0.0 20 3.0 70 64 0 VERTEX 8 0 10 4.0 20 3.0 70 64 0 SEQEND 8 0",
     {{4, 1.5}, {2, 3}},
     {{2, 1.5}},
     {0, 0},
     {4, 3}},
    {"spline",
     "0 SPLINE 5 A 8 0 70 8 71 2 72 6 73 3 40 0.0 40 0.0 40 0.0 40 1.0 40 1.0 40 1.0 10 0.0 20 0.0 10 2.0 20 4.0 10 "
     "4.0 20 0.0",
     {{2, 2}, {1, 1.5}},
     {{2, 4}, {2, 0}},
     {0, 0},
     {4, 2}},
    {"turned text", "0 TEXT 5 A 8 0 10 0.0 20 0.0 40 2.0 50 90.0 1 AB", {{-1, 1}}, {{1, 1}}, {-2, 0}, {0, 2.8}},
    {"centred text",
     "0 TEXT 5 A 8 0 10 0.0 20 0.0 11 10.0 21 5.0 40 2.0 72 1 73 2 1 AB",
     {{10, 5}},
     {{0, 0}},
     {8.6, 4},
     {11.4, 6}},
    {"paragraphs",
     "0 MTEXT 5 A 8 0 10 10.0 20 10.0 40 1.0 71 5 1 text 42 6.0 43 4.0",
     {{10, 10}},
     {{14, 10}},
     {7, 8},
     {13, 12}},
    {"mirrored block",
     "0 INSERT 5 A 8 0 2 b 10 10.0 20 10.0 41 -2.0 42 1.0 50 90.0",
     {{10, 5}, {10, 2}},
     {{10, 12}, {7, 10}},
     {10, 2},
     {10, 10}},
    {"array of blocks",
     "0 INSERT 5 A 8 0 2 B 10 0.0 20 0.0 70 3 71 2 44 5.0 45 7.0",
     {{12, 7}, {2, 0}},
     {{4.5, 0}},
     {0, 0},
     {14, 7}},
    {"block with attribute",
     "0 INSERT 5 A 8 0 66 1 2 B 10 0.0 20 0.0 0 ATTRIB 8 0 10 20.0 20 20.0 40 2.0 1 AB 2 TAG 70 0 0 SEQEND 8 0",
     {{21, 21}, {2, 0}},
     {{21, 23}, {0.5, 3.5}},
     {0, 0},
     {22.8, 22}},
    {"solid hatch",
     "0 HATCH 5 A 8 0 10 0.0 20 0.0 30 0.0 2 SOLID 70 1 71 0 91 2 92 3 72 0 73 1 93 4 10 0.0 20 0.0 10 9.0 20 0.0 10 "
     "9.0 20 9.0 10 0.0 20 9.0 97 0 92 1 93 1 72 2 10 4.0 20 4.0 40 2.0 50 0.0 51 360.0 73 1 97 0 75 0",
     {{8, 8}, {6, 4}},
     {{4, 4}, {10, 10}},
     {0, 0},
     {9, 9}},
    {"pattern hatch",
     "0 HATCH 5 A 8 0 10 0.0 20 0.0 30 0.0 2 ANSI31 70 0 71 0 91 1 92 2 72 0 73 1 93 3 10 0.0 20 0.0 10 9.0 20 0.0 10 "
     "9.0 20 9.0 97 0 75 0",
     {{9, 4}, {4, 4}},
     {{7, 3}},
     {0, 0},
     {9, 9}},
    {"dimension", "0 DIMENSION 5 A 8 0 2 *D1 10 50.0 20 50.0 70 1", {{2, 2}}, {{50, 50}}, {0, 0}, {3, 3}},
    {"leader", "0 LEADER 5 A 8 0 76 3 10 0.0 20 0.0 10 4.0 20 0.0 10 4.0 20 4.0", {{4, 2}}, {{2, 2}}, {0, 0}, {4, 4}},
    {"multiline",
     "0 MLINE 5 A 8 0 71 0 72 2 73 2 10 0.0 20 0.0 11 0.0 21 0.0 12 1.0 22 0.0 13 0.0 23 1.0 74 1 41 1.0 75 0 74 1 41 "
     "-1.0 75 0 11 8.0 21 0.0 12 1.0 22 0.0 13 0.0 23 1.0 74 1 41 1.0 75 0 74 1 41 -1.0 75 0",
     {{5, 1}, {5, -1}},
     {{5, 0}},
     {0, -1},
     {8, 1}},
    {"point", "0 POINT 5 A 8 0 10 3.0 20 4.0", {{3.2, 3.8}}, {{3.5, 4}}, {3, 4}, {3, 4}},
    {"solid",
     "0 SOLID 5 A 8 0 10 0.0 20 0.0 11 4.0 21 0.0 12 0.0 22 4.0 13 4.0 23 4.0",
     {{2, 2}, {2, 3.5}, {0.5, 2}},
     {{5, 2}},
     {0, 0},
     {4, 4}},
    {"face",
     "0 3DFACE 5 A 8 0 10 0.0 20 0.0 11 4.0 21 0.0 12 4.0 22 4.0 13 0.0 23 4.0 70 2",
     {{2, 0}},
     {{2, 2}, {4, 2}},
     {0, 0},
     {4, 4}},
    {"ray", "0 RAY 5 A 8 0 10 0.0 20 0.0 11 1.0 21 1.0", {{500, 500}}, {{-1, -1}}, kNoLow, kNoHigh},
    {"endless line", "0 XLINE 5 A 8 0 10 0.0 20 0.0 11 1.0 21 1.0", {{500, 500}, {-9, -9}}, {{-1, 1}}, kNoLow, kNoHigh},
    {"image",
     "0 IMAGE 5 A 8 0 10 0.0 20 0.0 11 0.01 21 0.0 12 0.0 22 0.01 13 400.0 23 300.0",
     {{4, 1.5}},
     {{2, 1.5}},
     {0, 0},
     {4, 3}},
    {"pipe",
     "0 QRS_PIPE 5 A 100 AcDbEntity 8 0 100 TDbPipePrototype 90 0 100 TDbPipe 70 1 10 0.0 20 0.0 30 0.0 11 4.0 21 0.0 "
     "31 0.0 42 1.0",
     {{2, -2}},
     {{2, 0}},
     {0, -2},
     {4, 0}},
    {"pipe node",
     "0 QRS_PIPENODE 5 A 100 AcDbEntity 8 0 100 TDbPipeNode 10 3.0 20 4.0 30 0.0",
     {{3, 4}},
     {{5, 4}},
     {3, 4},
     {3, 4}},
    {"text of a pipe",
     "0 QRS_PIPEATTACHMENT 5 A 100 AcDbEntity 8 0 100 TDbPipeAttachment 1 AB 10 0.0 20 0.0 40 10.0 70 1",
     {{7, 5}},
     {{7, -2}, {15, 5}},
     {0, 0},
     {14, 10}},
    {"unknown, shown by its picture",
     "0 WIDGET 5 A 100 AcDbEntity 8 0 160 72 310 48000000010000004000000002000000000000000000F03F0000000000000000000000"
     "000000000000000000000000400000000000000000000000000000000000000000000000F03F 100 Widget",
     {{3, 0}, {1, 2}},
     {{1, 0}},
     {-1, -2},
     {3, 2}},
};

// Nothing of these is met, however large the window.
const char* const kDamaged[] = {
    "0 LINE 5 A 8 0 10 0.0 20 0.0",
    "0 LINE 5 A 8 0 10 nan 20 0.0 11 1.0 21 1.0",
    "0 LINE 5 A 8 0 10 0.0 20 0.0 11 inf 21 1.0",
    "0 CIRCLE 5 A 8 0 10 0.0 20 0.0 40 0.0",
    "0 CIRCLE 5 A 8 0 10 0.0 20 0.0 40 -1.0",
    "0 ELLIPSE 5 A 8 0 10 0.0 20 0.0 11 0.0 21 0.0 40 0.5",
    "0 RAY 5 A 8 0 10 0.0 20 0.0 11 0.0 21 0.0",
    "0 SPLINE 5 A 8 0 71 3 40 0.0 40 1.0 10 0.0 20 0.0 10 1.0 20 1.0",
    "0 SPLINE 5 A 8 0 71 2000000000 40 0.0 10 0.0 20 0.0",
    "0 HATCH 5 A 8 0 70 1 91 2000000000 92 2 72 0 73 1 93 2000000000 10 0.0",
    "0 HATCH 5 A 8 0 70 1 91 1 92 1 93 1 72 4 94 3 73 0 74 0 95 2000000000 96 -5",
    "0 POLYLINE 5 A 8 0 66 1 70 16 71 32000 72 32000 0 VERTEX 8 0 10 0.0 20 0.0 0 SEQEND 8 0",
    "0 INSERT 5 A 8 0 2 LOOP 10 0.0 20 0.0",
    "0 INSERT 5 A 8 0 2 NOWHERE 10 0.0 20 0.0",
    "0 INSERT 5 A 8 0 2 B 10 0.0 20 nan",
    "0 TEXT 5 A 8 0 10 0.0 20 0.0 40 nan 1 AB",
    "0 MTEXT 5 A 8 0 10 0.0 20 0.0 1 AB",
    "0 IMAGE 5 A 8 0 10 0.0 20 0.0",
    "0 REGION 5 A 8 0 10 0.0 20 0.0",
    "0 WIDGET 5 A 100 AcDbEntity 8 0 160 8 310 XY 100 Widget",
};

class PickKinds : public EditorTest {
  protected:
    Folder folder;

    void open(const char* entity) {
        Parts parts;
        parts.blocks = kBlocks;
        parts.entities = entity;
        if (application->currentDocument()) {
            ASSERT_TRUE(application->closeDocument(error));
        }
        ASSERT_TRUE(application->openDocument(folder.write("one.dxf", drawingOf(parts)), error)) << error.message;
    }
    static bool selects(const wchar_t* mode, Spot first, Spot second) {
        const ads_point a = {first.x, first.y, 0};
        const ads_point b = {second.x, second.y, 0};
        ads_name set = {};
        const int result = acedSSGet(mode, a, mode ? b : nullptr, nullptr, set);
        if (result == RTNORM) acedSSFree(set);
        return result == RTNORM;
    }
};

TEST_F(PickKinds, MetWhereTheyAreDrawnAndHeldByTheirBox) {
    constexpr double kRoom = 0.001;
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.what);
        open(shape.entity);
        for (const Spot& spot : shape.on) {
            EXPECT_TRUE(selects(nullptr, spot, {})) << spot.x << "," << spot.y;
            EXPECT_TRUE(selects(L"C", {spot.x + 0.4, spot.y + 0.4}, {spot.x - 0.4, spot.y - 0.4})) << spot.x;
        }
        for (const Spot& spot : shape.off)
            EXPECT_FALSE(selects(nullptr, spot, {})) << spot.x << "," << spot.y;
        if (shape.low.x > shape.high.x) {
            EXPECT_FALSE(selects(L"W", {-1e6, -1e6}, {1e6, 1e6})) << "what has no end is in no window";
            continue;
        }
        const Spot low{shape.low.x - kRoom, shape.low.y - kRoom};
        const Spot high{shape.high.x + kRoom, shape.high.y + kRoom};
        EXPECT_TRUE(selects(L"W", high, low));
        EXPECT_FALSE(selects(L"W", {low.x + 2 * kRoom, low.y}, high)) << "from the left";
        EXPECT_FALSE(selects(L"W", low, {high.x - 2 * kRoom, high.y})) << "from the right";
        EXPECT_FALSE(selects(L"W", {low.x, low.y + 2 * kRoom}, high)) << "from below";
        EXPECT_FALSE(selects(L"W", low, {high.x, high.y - 2 * kRoom})) << "from above";
    }
}

TEST_F(PickKinds, DamagedOnesAreNotMet) {
    for (const char* entity : kDamaged) {
        SCOPED_TRACE(entity);
        open(entity);
        EXPECT_FALSE(selects(L"C", {-1e9, -1e9}, {1e9, 1e9}));
        EXPECT_FALSE(selects(nullptr, {0, 0}, {}));
    }
    // A billion copies in one place, none of which lies there.
    open("0 INSERT 5 A 8 0 2 B 10 0.0 20 0.0 50 45.0 70 32767 71 32767 44 0.0 45 0.0");
    EXPECT_FALSE(selects(nullptr, {2, 1}, {}));
}

// Handles and middles of the lines, and tops of the circles, of the model space of an ASCII drawing.
std::map<std::string, Spot> placesIn(const std::filesystem::path& path) {
    std::map<std::string, Spot> places;
    std::ifstream file(path, std::ios::binary);
    std::map<int, std::string> values;
    std::string type;
    std::string section;
    const auto number = [&](int code) { return std::strtod(values[code].c_str(), nullptr); };
    const auto finish = [&] {
        const bool inPlan =
            values.count(67) == 0 && values.count(210) == 0 && values.count(5) != 0 && section == "ENTITIES";
        if (inPlan && type == "LINE")
            places[values[5]] = {(number(10) + number(11)) / 2, (number(20) + number(21)) / 2};
        if (inPlan && type == "CIRCLE") places[values[5]] = {number(10), number(20) + number(40)};
        if (type == "SECTION") section = values[2];
    };
    std::string code;
    std::string value;
    while (std::getline(file, code) && std::getline(file, value)) {
        if (!value.empty() && value.back() == '\r') value.pop_back();
        const int group = std::atoi(code.c_str());
        if (group == 0) {
            finish();
            values.clear();
            type = value;
        }
        values.emplace(group, value);
    }
    return places;
}

TEST_F(PickKinds, RealDrawingsAreMetOnTheirLines) {
    const std::filesystem::path corpus = std::filesystem::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dxf";
    if (!std::filesystem::exists(corpus)) GTEST_SKIP() << "no corpus";
    int picked = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() != ".dxf" || entry.file_size() > 400000 || picked > 3000) continue;
        if (!application->openDocument(entry.path(), error)) continue;  // damaged or binary
        resbuf on{};
        on.restype = RTSHORT;
        on.resval.rint = 1;
        acedSetVar(L"TILEMODE", &on);
        run({L"-LAYER", L"ON", L"*", L""});
        ads_name set = {};
        if (acedSSGet(L"A", nullptr, nullptr, nullptr, set) != RTNORM) continue;
        for (const auto& [handle, spot] : placesIn(entry.path())) {
            ads_name entity = {};
            const std::wstring wide(handle.begin(), handle.end());
            if (acdbHandEnt(wide.c_str(), entity) != RTNORM || acedSSMemb(entity, set) != RTNORM) continue;
            const ads_point point = {spot.x, spot.y, 0};
            ads_name met = {};
            const int result = acedSSGet(L":E", point, nullptr, nullptr, met);
            const bool hasIt = result == RTNORM && acedSSMemb(entity, met) == RTNORM;
            acedSSFree(met);
            EXPECT_TRUE(hasIt) << entry.path() << " " << handle << " at " << spot.x << "," << spot.y;
            ++picked;
        }
        acedSSFree(set);
        ASSERT_TRUE(application->closeDocument(error));
    }
    EXPECT_GT(picked, 100);
}

}  // namespace
