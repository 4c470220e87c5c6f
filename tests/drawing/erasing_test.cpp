// What is erased leaves nothing behind: one row for each kind of reference, and chains and lists of any length.
#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "../dxftext.h"
#include "host/drawing/eraser.h"

namespace qrs::host::test {
namespace {

// The records of each section of a drawing.
struct Sections {
    std::string tables;
    std::string blocks;
    std::string entities;
    std::string objects;
    std::string data;
};

std::string drawingOf(const Sections& sections) {
    return dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=TABLES;" + sections.tables +
                   "0=ENDSEC;0=SECTION;2=BLOCKS;" + sections.blocks + "0=ENDSEC;0=SECTION;2=ENTITIES;" +
                   sections.entities + "0=ENDSEC;0=SECTION;2=OBJECTS;" + sections.objects +
                   "0=ENDSEC;0=SECTION;2=ACDSDATA;" + sections.data + "0=ENDSEC;0=EOF");
}

struct Opened {
    explicit Opened(const std::string& bytes) {
        platform::Error error;
        drawing = dxf::Drawing::fromBytes(bytes, "test", error);
        EXPECT_NE(drawing, nullptr) << error.message;
        contents = std::make_unique<Contents>(*drawing);
        eraser = std::make_unique<Eraser>(*contents);
    }
    dxf::RecordId find(std::uint64_t handle) const { return drawing->findHandle(handle); }

    std::unique_ptr<dxf::Drawing> drawing;
    std::unique_ptr<Contents> contents;
    std::unique_ptr<Eraser> eraser;
};

struct Row {
    const char* what;
    std::vector<std::uint64_t> erased;
    Sections before;
    Sections after;
};

const std::string kLine = "0=LINE;5=A1;330=1F;100=AcDbEntity;8=0;100=AcDbLine;";
const std::string kOther = "0=LINE;5=A2;330=1F;100=AcDbEntity;8=0;100=AcDbLine;";
const std::string kLayers = "0=TABLE;2=LAYER;5=2;70=2;0=LAYER;5=10;2=0;70=0;";
const std::string kPipes = "0=LAYER;5=11;2=pipes;70=0;";

std::vector<Row> rows() {
    std::vector<Row> rows;
    const auto add = [&](const char* what, std::vector<std::uint64_t> erased, Sections before, Sections after) {
        rows.push_back({what, std::move(erased), std::move(before), std::move(after)});
    };
    // The other line stays, the object is changed.
    const auto object = [&](const char* what, const std::string& before, const std::string& after) {
        add(what, {0xA1}, {"", "", kLine + kOther, before, ""}, {"", "", kOther, after, ""});
    };
    const auto entity = [&](const char* what, const std::string& before, const std::string& after) {
        add(what, {0xA1}, {"", "", kLine + kOther + before, "", ""}, {"", "", kOther + after, "", ""});
    };
    const auto layer = [&](const char* what, const std::string& entities, const std::string& objects,
                           const std::string& entitiesAfter, const std::string& objectsAfter) {
        add(what, {0x11}, {kLayers + kPipes + "0=ENDTAB;", "", entities, objects, ""},
            {"0=TABLE;2=LAYER;5=2;70=1;0=LAYER;5=10;2=0;70=0;0=ENDTAB;", "", entitiesAfter, objectsAfter, ""});
    };

    // --- groups of any record
    entity("some of the reactors", "0=ARC;5=B;102={ACAD_REACTORS;330=A1;330=A2;330=A1;102=};100=AcDbEntity;8=0;",
           "0=ARC;5=B;102={ACAD_REACTORS;330=A2;102=};100=AcDbEntity;8=0;");
    entity("the last reactor", "0=ARC;5=B;102={ACAD_REACTORS;330=A1;102=};330=1F;100=AcDbEntity;8=0;",
           "0=ARC;5=B;330=1F;100=AcDbEntity;8=0;");
    add("insert list", {0xA1, 0xA2},
        {"0=TABLE;2=BLOCK_RECORD;5=1;70=1;0=BLOCK_RECORD;5=20;100=AcDbBlockTableRecord;2=B;340=0;102={BLKREFS;331=A1;"
         "331=A2;102=};0=ENDTAB;",
         "", kLine + kOther, "", ""},
        {"0=TABLE;2=BLOCK_RECORD;5=1;70=1;0=BLOCK_RECORD;5=20;100=AcDbBlockTableRecord;2=B;340=0;0=ENDTAB;", "", "", "",
         ""});
    object("groups of applications",
           "0=XRECORD;5=B;330=C;100=AcDbXrecord;102={ATTRRECORD;341=A1;102=};102={ADSK_LYR_COLOR_OVERRIDE;335=A1;420=5;"
           "102=};102={ADSK_LYR_COLOR_OVERRIDE;335=A2;420=6;102=};",
           "0=XRECORD;5=B;330=C;100=AcDbXrecord;102={ATTRRECORD;341=0;102=};102={ADSK_LYR_COLOR_OVERRIDE;335=A2;420=6;"
           "102=};");

    // --- entities
    entity("a viewport's outline", "0=VIEWPORT;5=B;100=AcDbEntity;8=0;100=AcDbViewport;90=884832;340=A1;345=A1;331=A2;",
           "0=VIEWPORT;5=B;100=AcDbEntity;8=0;100=AcDbViewport;90=819296;331=A2;");
    const auto coordinates = [](const char* table, const char* view, const char* viewport, const char* layout) {
        return Sections{std::string("0=TABLE;2=UCS;5=7;") + table +
                            "0=UCS;5=A2;2=V;0=ENDTAB;0=TABLE;2=VIEW;5=6;70=1;"
                            "0=VIEW;5=9;100=AcDbViewTableRecord;2=W;" +
                            view + "0=ENDTAB;",
                        "", std::string("0=VIEWPORT;5=B;100=AcDbEntity;8=0;100=AcDbViewport;71=1;") + viewport,
                        std::string("0=LAYOUT;5=C;100=AcDbPlotSettings;1=;100=AcDbLayout;1=L;330=1F;") + layout, ""};
    };
    add("the coordinate systems of a view, a viewport, a layout", {0xA1},
        coordinates("70=2;0=UCS;5=A1;2=U;", "345=A1;346=A2;", "345=A1;346=A2;", "345=A2;346=A1;"),
        coordinates("70=1;", "346=A2;", "346=A2;", "345=A2;"));
    entity(
        "one boundary of a hatch",
        "0=HATCH;5=B;100=AcDbEntity;8=0;100=AcDbHatch;70=1;71=1;91=2;92=1;93=1;97=     2;330=A1;330=A2;92=1;97=1;330="
        "A2;75=1;0=ARC;5=C;102={ACAD_REACTORS;330=B;102=};8=0;",
        "0=HATCH;5=B;100=AcDbEntity;8=0;100=AcDbHatch;70=1;71=0;91=2;92=1;93=1;97=     0;92=1;97=0;75=1;0=ARC;5=C;102={"
        "ACAD_REACTORS;330=B;102=};8=0;");
    entity("what a leader leads from", "0=LEADER;5=B;100=AcDbEntity;8=0;100=AcDbLeader;3=S;73=0;76=2;340=A1;211=1.0;",
           "0=LEADER;5=B;100=AcDbEntity;8=0;100=AcDbLeader;3=S;73=3;76=2;211=1.0;");
    entity("an attribute of a multileader",
           "0=MULTILEADER;5=B;100=AcDbEntity;8=0;100=AcDbMLeader;330=A2;177=0;44=1.0;302=a;330=A1;177=1;44=2.0;302=b;"
           "294=0;",
           "0=MULTILEADER;5=B;100=AcDbEntity;8=0;100=AcDbMLeader;330=A2;177=0;44=1.0;302=a;294=0;");
    entity("a pipe's attachments and nodes",
           "0=QRS_PIPE;5=B;100=AcDbEntity;8=0;100=TDbPipePrototype;90=0;330=A1;330=A2;100=TDbPipe;70=0;331=A1;332=A2;",
           "0=QRS_PIPE;5=B;100=AcDbEntity;8=0;100=TDbPipePrototype;90=0;330=A2;100=TDbPipe;70=0;332=A2;");
    entity("handles in extended data", "0=ARC;5=B;8=0;1001=APP;1005=a1;1000=x;1005=A2;1005=  A1;",
           "0=ARC;5=B;8=0;1001=APP;1005=0;1000=x;1005=A2;1005=   0;");
    entity("a material", "0=ARC;5=B;100=AcDbEntity;8=0;347=A1;100=AcDbCircle;40=1.0;",
           "0=ARC;5=B;100=AcDbEntity;8=0;100=AcDbCircle;40=1.0;");
    entity("handles kept whether or not a record has them", "0=ARC;5=B;100=AcDbEntity;8=0;100=Own;320=A1;",
           "0=ARC;5=B;100=AcDbEntity;8=0;100=Own;320=A1;");
    entity("what the table does not know",
           "0=FOREIGN;5=B;100=AcDbEntity;8=0;100=Own;330=A1;340=A1;350=A1;360=A1;480=A1;330=A2;101=Embedded "
           "Object;330=A1;",
           "0=FOREIGN;5=B;100=AcDbEntity;8=0;100=Own;330=0;340=0;350=0;360=0;480=0;330=A2;101=Embedded Object;330=0;");

    // --- objects
    object("entries of dictionaries",
           "0=DICTIONARY;5=C;330=0;100=AcDbDictionary;281=1;3=a;360=A1;3=b;350=A2;3=c;350=A1;",
           "0=DICTIONARY;5=C;330=0;100=AcDbDictionary;281=1;3=b;350=A2;");
    object("a member of a group", "0=GROUP;5=B;100=AcDbGroup;300=;340=A2;340=A1;",
           "0=GROUP;5=B;100=AcDbGroup;300=;340=A2;");
    object("the last member of a group",
           "0=DICTIONARY;5=C;330=0;100=AcDbDictionary;3=G;350=B;0=GROUP;5=B;102={ACAD_REACTORS;330=C;102=};330=C;100="
           "AcDbGroup;300=;340=A1;340=A1;",
           "0=DICTIONARY;5=C;330=0;100=AcDbDictionary;");
    object("a draw order", "0=SORTENTSTABLE;5=B;100=AcDbSortentsTable;330=1F;331=A2;5=A1;331=A1;5=A2;",
           "0=SORTENTSTABLE;5=B;100=AcDbSortentsTable;330=1F;331=A2;5=A1;");
    object("a layout's last viewport", "0=LAYOUT;5=B;100=AcDbPlotSettings;1=;100=AcDbLayout;1=L;330=1F;331=A1;",
           "0=LAYOUT;5=B;100=AcDbPlotSettings;1=;100=AcDbLayout;1=L;330=1F;");
    object(
        "what a dimension measures",
        "0=DICTIONARY;5=C;330=A2;100=AcDbDictionary;3=ACAD_DIMASSOC;360=B;0=DIMASSOC;5=B;330=C;100=AcDbDimAssoc;330=A2;"
        "90=3;1=AcDbOsnapPointRef;331=A2;1=AcDbOsnapPointRef;331=A1;",
        "0=DICTIONARY;5=C;330=A2;100=AcDbDictionary;");
    object("sets, with their count or without",
           "0=FIELDLIST;5=B;100=AcDbIdSet;90=3;330=A1;330=A2;330=A1;100=AcDbFieldList;0=IDBUFFER;5=C;330=D;100="
           "AcDbIdBuffer;330=A1;330=A2;",
           "0=FIELDLIST;5=B;100=AcDbIdSet;90=1;330=A2;100=AcDbFieldList;0=IDBUFFER;5=C;330=D;100=AcDbIdBuffer;330=A2;");
    object("what an action of a dynamic block moves",
           "0=BLOCKMOVEACTION;5=B;100=AcDbBlockElement;1071=0;100=AcDbBlockAction;70=0;71=2;330=A1;330=A2;1010=5.0;",
           "0=BLOCKMOVEACTION;5=B;100=AcDbBlockElement;1071=0;100=AcDbBlockAction;70=0;71=1;330=A2;1010=5.0;");
    object("a field", "0=FIELD;5=B;100=AcDbField;90=1;360=A1;97=2;331=A1;331=A2;93=0;",
           "0=FIELD;5=B;100=AcDbField;90=0;97=2;331=0;331=A2;93=0;");
    object("lists of dynamic blocks",
           "0=BLOCKVISIBILITYPARAMETER;5=B;100=AcDbBlockElement;1071=0;1010=5.0;100=AcDbBlockVisibilityParameter;93=2;"
           "331=A1;"
           "331=A2;303=S;94=1;332=A1;95=1;333=A2;303=T;94=2;332=A2;332=A1;95=0;",
           "0=BLOCKVISIBILITYPARAMETER;5=B;100=AcDbBlockElement;1071=0;1010=5.0;100=AcDbBlockVisibilityParameter;93=1;"
           "331=A2;"
           "303=S;94=0;95=1;333=A2;303=T;94=1;332=A2;95=0;");
    object("records of values", "0=XRECORD;5=B;330=C;100=AcDbXrecord;280=1;330=A1;90=8;340=A2;",
           "0=XRECORD;5=B;330=C;100=AcDbXrecord;280=1;330=0;90=8;340=A2;");
    object("what an entity owns and does not name",
           "0=FOREIGN;5=B;330=A1;100=Own;70=1;0=FOREIGN;5=C;330=B;0=FOREIGN;5=D;330=A2;", "0=FOREIGN;5=D;330=A2;");
    add("an image's reactor", {0xA1},
        {"", "", "0=IMAGE;5=A1;100=AcDbEntity;8=0;100=AcDbRasterImage;340=B;360=C;",
         "0=IMAGEDEF;5=B;102={ACAD_REACTORS;330=D;330=C;102=};330=D;1=i;0=IMAGEDEF_REACTOR;5=C;330=A1;100="
         "AcDbRasterImageDefReactor;90=2;330=A1;0=DICTIONARY;5=D;330=0;100=AcDbDictionary;3=i;350=B;",
         ""},
        {"", "", "",
         "0=IMAGEDEF;5=B;102={ACAD_REACTORS;330=D;102=};330=D;1=i;0=DICTIONARY;5=D;330=0;100=AcDbDictionary;3=i;350=B;",
         ""});
    add("what lies below an extension dictionary, attributes' too", {0xA1},
        {"", "",
         "0=INSERT;5=A1;102={ACAD_XDICTIONARY;360=B;102=};8=0;66=1;2=X;0=ATTRIB;5=A3;102={ACAD_XDICTIONARY;360=D;102=};"
         "8=0;"
         "0=SEQEND;5=A4;8=0;" +
             kOther,
         "0=DICTIONARY;5=B;330=A1;100=AcDbDictionary;280=1;3=a;360=C;3=mine no more;360=E;0=XRECORD;5=C;330=B;100="
         "AcDbXrecord;0=DICTIONARY;5=D;330=A3;100=AcDbDictionary;0=XRECORD;5=E;330=F;0=DICTIONARY;5=F;330=0;100="
         "AcDbDictionary;3=e;360=E;",
         ""},
        {"", "", kOther, "0=XRECORD;5=E;330=F;0=DICTIONARY;5=F;330=0;100=AcDbDictionary;3=e;360=E;", ""});
    add("the body of a solid", {0xA1},
        {"", "", kLine, "", "0=ACDSRECORD;90=1;2=AcDbDs::ID;280=10;320=A1;2=ASM_Data;310=00;0=ACDSRECORD;90=1;320=A2;"},
        {"", "", "", "", "0=ACDSRECORD;90=1;320=A2;"});

    // --- layers
    layer("frozen layers of a viewport",
          "0=VIEWPORT;5=B;100=AcDbEntity;8=0;100=AcDbViewport;331=10;331=11;341=11;90=32800;", "",
          "0=VIEWPORT;5=B;100=AcDbEntity;8=0;100=AcDbViewport;331=10;90=32800;", "");
    layer(
        "layers by name",
        "0=VIEWPORT;5=B;8=0;1001=ACAD;1000=MVIEW;1002={;1002={;1003=PIPES;1003=0;1002=};1002=};"
        "0=ARC;5=C;8=0;1001=APP;1003=Pipes;1003=else;",
        "",
        "0=VIEWPORT;5=B;8=0;1001=ACAD;1000=MVIEW;1002={;1002={;1003=0;1002=};1002=};0=ARC;5=C;8=0;1001=APP;1003=0;1003="
        "else;",
        "");
    layer(
        "layer states, groups of layers, indices", "",
        "0=XRECORD;5=B;330=F;100=AcDbXrecord;91=1;330=11;90=8;330=10;90=8;0=XRECORD;5=C;330=F;100=AcDbXrecord;280=1;1="
        "AcLyLayerGroup;90=1;330=10;330=11;0=LAYER_FILTER;5=D;100=AcDbFilter;100=AcDbLayerFilter;8=pipes;8=0;"
        "0=LAYER_INDEX;5=E;100=AcDbIndex;40=1.0;100=AcDbLayerIndex;8=0;360=E1;90=1;8=PIPES;360=E2;90=0;0=IDBUFFER;5=E1;"
        "330=0;"
        "100=AcDbIdBuffer;330=A2;0=IDBUFFER;5=E2;330=0;100=AcDbIdBuffer;",
        "",
        "0=XRECORD;5=B;330=F;100=AcDbXrecord;91=1;330=0;90=8;330=10;90=8;0=XRECORD;5=C;330=F;100=AcDbXrecord;280=1;1="
        "AcLyLayerGroup;90=1;330=10;0=LAYER_FILTER;5=D;100=AcDbFilter;100=AcDbLayerFilter;8=0;0=LAYER_INDEX;5=E;100="
        "AcDbIndex;40=1.0;100=AcDbLayerIndex;8=0;360=E1;90=1;0=IDBUFFER;5=E1;330=0;100=AcDbIdBuffer;330=A2;");
    return rows;
}

TEST(Erasing, LeavesNothingBehind) {
    for (const Row& row : rows()) {
        const std::string before = drawingOf(row.before);
        Opened opened(before);
        opened.drawing->beginStep(L"erase");
        for (const std::uint64_t handle : row.erased)
            opened.eraser->erase(opened.find(handle));
        EXPECT_TRUE(opened.eraser->settle());
        EXPECT_EQ(opened.drawing->toBytes(), drawingOf(row.after)) << row.what;
        opened.drawing->takeBack();
        EXPECT_EQ(opened.drawing->toBytes(), before) << row.what;
    }
}

// The picture of a dimension or table goes with the last that shows it.
TEST(Erasing, TakesThePictureOfWhatItErases) {
    const auto block = [](const char* name, const char* handle) {
        const std::string record = handle;
        return Sections{"0=BLOCK_RECORD;5=" + record + ";330=1;100=AcDbBlockTableRecord;2=" + name + ";340=0;",
                        "0=BLOCK;5=" + record + "1;330=" + record + ";8=0;2=" + name + ";0=POINT;5=" + record +
                            "2;330=" + record + ";8=0;0=ENDBLK;5=" + record + "3;330=" + record + ";8=0;",
                        "", "", ""};
    };
    const Sections owned = block("*D1", "D");
    const Sections shared = block("*D2", "E");
    const Sections pointedTo = block("*D3", "F");
    const Sections named = block("named", "C");
    const auto table = [](int count, const std::string& records) {
        return "0=TABLE;2=BLOCK_RECORD;5=1;70=" + std::to_string(count) + ";" + records + "0=ENDTAB;";
    };
    const auto dimension = [](const char* handle, const char* name) {
        return std::string("0=DIMENSION;5=") + handle + ";100=AcDbEntity;8=0;100=AcDbDimension;2=" + name + ";";
    };
    const std::string erased =
        dimension("A1", "*d1") + dimension("A2", "*D2") + dimension("A3", "*D3") + dimension("A4", "named");
    const std::string left = "0=ARC_DIMENSION;5=A5;100=AcDbEntity;8=0;100=AcDbDimension;2=*D2;";
    const std::string user = "0=XRECORD;5=B;330=0;100=AcDbXrecord;340=F;";
    const std::string before =
        drawingOf({table(4, owned.tables + shared.tables + pointedTo.tables + named.tables),
                   owned.blocks + shared.blocks + pointedTo.blocks + named.blocks, erased + left, user, ""});
    Opened opened(before);
    std::vector<dxf::RecordId> dimensions;
    for (std::uint64_t handle = 0xA1; handle <= 0xA4; ++handle)
        dimensions.push_back(opened.find(handle));
    for (const dxf::RecordId id : dimensions)
        opened.eraser->erase(id);
    opened.eraser->settle();
    EXPECT_EQ(opened.drawing->toBytes(), drawingOf({table(3, shared.tables + pointedTo.tables + named.tables),
                                                    shared.blocks + pointedTo.blocks + named.blocks, left, user, ""}));
    EXPECT_EQ(opened.contents->blocks().find(L"*D1"), nullptr);
    for (const dxf::RecordId id : dimensions)
        EXPECT_TRUE(opened.eraser->bringBack(id));
    EXPECT_EQ(opened.drawing->toBytes(), before) << "they come back with what they show";
}

TEST(Erasing, TouchesNothingThatIsStillThere) {
    const std::string reactors = "0=ARC;5=B;102={ACAD_REACTORS;330=A1;102=};8=0;";
    const std::string before = drawingOf({"", "", kLine + kOther + reactors, "", ""});
    Opened opened(before);
    const dxf::RecordId line = opened.find(0xA1);
    opened.eraser->erase(line);
    EXPECT_TRUE(opened.eraser->bringBack(line));
    EXPECT_FALSE(opened.eraser->bringBack(line));
    opened.eraser->settle();
    EXPECT_EQ(opened.drawing->toBytes(), before);
    EXPECT_FALSE(opened.eraser->bringBack(opened.find(0xA2))) << "it was never erased";

    // In a damaged drawing another record has the handle, too.
    const std::string twice = drawingOf({"", "", kLine + kLine + reactors, "", ""});
    Opened damaged(twice);
    damaged.eraser->erase(damaged.find(0xA1));
    damaged.eraser->settle();
    EXPECT_EQ(damaged.drawing->toBytes(), drawingOf({"", "", kLine + reactors, "", ""}));
}

std::string hexOf(int number) {
    return dxf::handleText(static_cast<std::uint64_t>(0x1000 + number));
}

// Seconds of work that erasing a line and all that hangs on it takes; none of it may be left.
double secondsToErase(const std::string& line, const std::string& objects) {
    Opened opened(drawingOf({"", "", line + kOther, objects, ""}));
    const std::clock_t start = std::clock();
    opened.eraser->erase(opened.find(0xA1));
    opened.eraser->settle();
    const std::clock_t end = std::clock();
    EXPECT_EQ(opened.drawing->toBytes(), drawingOf({"", "", kOther, "", ""})) << objects.substr(0, 40);
    return static_cast<double>(end - start) / CLOCKS_PER_SEC;
}

// However long a chain of owners, however long a list: no depth is too great, and the time grows as they do.
TEST(Erasing, TakesLongChainsAndLists) {
    constexpr int kLess = 15000;
    constexpr int kMore = 4 * kLess;
    const auto line = [](const char* first) {
        return std::string("0=LINE;5=A1;102={ACAD_XDICTIONARY;360=") + first + ";102=};100=AcDbEntity;8=0;";
    };
    const struct {
        std::string line;
        std::string head;
        std::string (*one)(int i);
    } hangings[] = {
        {line("1000"), "",
         [](int i) {
             return "0=DICTIONARY;5=" + hexOf(i) + ";330=" + (i == 0 ? "A1" : hexOf(i - 1)) +
                    ";100=AcDbDictionary;3=x;360=" + hexOf(i + 1) + ";";
         }},
        {kLine, "", [](int i) { return "0=FOREIGN;5=" + hexOf(i) + ";330=" + (i == 0 ? "A1" : hexOf(i - 1)) + ";"; }},
        {line("1000"), "0=DICTIONARY;5=1000;330=A1;100=AcDbDictionary;",
         [](int i) {
             return i % 2 == 0 ? "3=x;360=" + hexOf(i + 1) + ";"
                               : "0=XRECORD;5=" + hexOf(i) + ";330=1000;100=AcDbXrecord;340=A2;";
         }},
    };
    for (const auto& hanging : hangings) {
        bool growsAsTheyDo = false;
        // A machine that is busy with other things may spoil a measurement.
        for (int attempt = 0; attempt < 3 && !growsAsTheyDo; ++attempt) {
            double seconds[2] = {};
            for (const int count : {kLess, kMore}) {
                std::string objects = hanging.head;
                for (int i = 0; i < count; ++i) {
                    // In a list the entries come first.
                    if (hanging.head.empty() || i % 2 == 0) objects += hanging.one(i);
                }
                for (int i = 1; i < count && !hanging.head.empty(); i += 2)
                    objects += hanging.one(i);
                seconds[count == kMore] = secondsToErase(hanging.line, objects);
            }
            growsAsTheyDo = seconds[1] < 9 * seconds[0];
        }
        EXPECT_TRUE(growsAsTheyDo) << "four times as many";
    }
    // Two that own each other, as damage may have it.
    secondsToErase(line("C"),
                   "0=DICTIONARY;5=C;330=A1;100=AcDbDictionary;3=d;360=D;"
                   "0=DICTIONARY;5=D;330=C;100=AcDbDictionary;3=c;360=C;");
}

// Half of as many reactors of one record, and of entries of one list, go.
TEST(Erasing, ThinsLongLists) {
    constexpr int kCount = 60000;
    std::string lines;
    std::string linesLeft;
    std::string reactors = "0=ARC;5=B;102={ACAD_REACTORS;";
    std::string reactorsLeft = reactors;
    std::string set = "0=FIELDLIST;5=C;100=AcDbIdSet;90=" + std::to_string(kCount) + ";";
    std::string setLeft = "0=FIELDLIST;5=C;100=AcDbIdSet;90=" + std::to_string(kCount / 2) + ";";
    for (int i = 0; i < kCount; ++i) {
        const std::string one = "0=LINE;5=" + hexOf(i) + ";8=0;";
        lines += one;
        reactors += "330=" + hexOf(i) + ";";
        set += "330=" + hexOf(i) + ";";
        if (i % 2 == 0) continue;
        linesLeft += one;
        reactorsLeft += "330=" + hexOf(i) + ";";
        setLeft += "330=" + hexOf(i) + ";";
    }
    Opened opened(drawingOf({"", "", lines + reactors + "102=};8=0;", set, ""}));
    for (int i = 0; i < kCount; i += 2)
        opened.eraser->erase(opened.find(static_cast<std::uint64_t>(0x1000 + i)));
    opened.eraser->settle();
    EXPECT_EQ(opened.drawing->toBytes(), drawingOf({"", "", linesLeft + reactorsLeft + "102=};8=0;", setLeft, ""}));
}

}  // namespace
}  // namespace qrs::host::test
