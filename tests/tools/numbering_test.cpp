// The next serials of a drawing's risers, the numbers of a run, and the serials of title blocks.
#include <random>

#include "commands.h"
#include "host/platform/files.h"
#include "PwxTool.h"
#include "qrs_draw.h"
#include "qrs_riser.h"
#include "qrs_search.h"

namespace qrs::test {

namespace {

class Numbering : public ToolCommands {
  protected:
    struct Pipe {
        const wchar_t* system;
        const wchar_t* serial;
        const wchar_t* building = L"";
        TPipeCurve path = TPipeCurve::Line({5, 5, 0}, {5, 5, 3000});
    };

    AcDbObjectId add(const Pipe& wanted) {
        AcDbObjectPointer<TDbPipe> pipe;
        pipe.create();
        pipe->SetCurve(wanted.path);
        pipe->SetPipeSystemName(wanted.system);
        AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, database(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, pipe.object()), Acad::eOk);
        for (const auto& [item, serial] :
             {std::pair{L"PIPE-SERIAL", wanted.serial}, {L"BUILDING-SERIAL", wanted.building}})
            if (*serial != L'\0') PwxTool::WriteXdata(pipe.object(), item, serial);
        return id;
    }
    void search() { PwxTool::InitVPipeSerials(numeric, text, L"WL-1", 1); }
    // "key=next" of both tables.
    std::string tables() const {
        std::wstring shown;
        for (const auto& [key, next] : numeric)
            shown += std::wstring(key.view()) + L"=" + std::to_wstring(next) + L" ";
        for (const auto& [key, next] : text)
            shown += L"/" + std::wstring((key + L"=" + next).view());
        return platform::toUtf8(shown);
    }

    std::map<CString, int> numeric;
    std::map<CString, CString> text;
};

}  // namespace

TEST_F(Numbering, FindsTheNextSerialOfEachSystemAndBuilding) {
    openWith({{"0"}}, entity(0x200, "QRS_PIPE;67=1;8=0;100=TDbPipePrototype;1=给水;100=TDbPipe;10=0;20=0;11=0;21=0;"));
    numeric[L"生活给水"] = 99;
    text[L"污水"] = L"X";
    text[L"雨水%%3#楼"] = L"K";
    text[L"消防"] = L"kept";
    // Two systems are drawn under their old names and numbered under the present ones.
    // All that follow "污水" are equal: the last one counts.
    // Two risers of "凝结" have exactly the serials that come next.
    const Pipe upright[] = {
        {L"凝结", L"3"},    {L"凝结", L"4"},          {L"凝结", L"A"},          {L"凝结", L"B"},
        {L"给水", L"3"},    {L"给水", L"7"},          {L"给水", L"5"},          {L"给水", L"010"},
        {L"给水", L""},     {L"热水", L""},           {L"污水", L"WL-2"},       {L"污水", L"WL-7"},
        {L"污水", L"WL-2"}, {L"给水", L"4", L"1#楼"}, {L"给水", L"A", L"2#楼"}, {L"雨水", L"A", L"3#楼"}};
    for (const Pipe& pipe : upright)
        add(pipe);
    // Of these only the last one stands upright: the ends of the first lie just as far apart as they must not.
    const TPipeCurve others[] = {TPipeCurve::Line({0, 0, 0}, {0.1, 0, 9}), TPipeCurve::Line({0, 0, 0}, {0, -0.1, 9}),
                                 TPipeCurve::Line({0, 0, 0}, {900, 0, 0}), TPipeCurve::Arc({5, 5, 0}, {5, 5, 9}, 0.0),
                                 TPipeCurve::Line({0, 0, 0}, {0.0999, -0.0999, 9})};
    for (const TPipeCurve& path : others)
        add({&path == std::end(others) - 1 ? L"废水" : L"通气", L"12", L"", path});
    const AcDbObjectId erased = add({L"给水", L"50"});
    AcDbObjectPointer<TDbPipe>(erased, AcDb::kForWrite)->erase();
    search();
    EXPECT_EQ(tables(),
              "凝结=5 废水=13 生活给水=8 生活给水%%1#楼=5 生活给水%%2#楼=1 "
              "/凝结=C/污水=WL-3/消防=kept/热水给水=1/生活给水=011/生活给水%%1#楼=WL-1/生活给水%%2#楼=B/雨水%%3#楼=B");
    // What one search found, the next one finds again.
    const std::string before = tables();
    search();
    EXPECT_EQ(tables(), before);
}

// Risers as other programs may have left them, read at one go and by the getters.
TEST_F(Numbering, ReadsRisersAsTheirGettersTellThem) {
    std::mt19937 random(7);
    const auto any = [&](std::initializer_list<const char*> choices) {
        return std::string(choices.begin()[random() % choices.size()]);
    };
    const auto often = [&](const std::string& usual, std::initializer_list<const char*> others) {
        return random() % 12 != 0 ? usual : any(others);
    };
    std::string entities;
    constexpr int kFirst = 0x1000, kCount = 3000;
    for (int handle = kFirst; handle < kFirst + kCount; ++handle) {
        const std::string name = any({"1=给水;", "1=J;", "1=a^Jb;", "1=\\U+4E00;", "1=x^@y;", "1=~^ ;", ""});
        entities += entity(
            handle,
            "QRS_PIPE;" + often("8=0;", {"8=0;102={ACAD_REACTORS;330=1F;100=TDbPipe;102=};", "101=E;", "102={X;"}) +
                often("100=TDbPipePrototype;", {"100= TDbPipePrototype;", "", "100=TDbPipe;10=0;20=0;11=0;21=0;"}) +
                often(name, {"1=first;1=second;", "10=3;", "102={G;1=hidden;102=};"}) +
                often("90=2;", {"90=+4;", "90=x;", "90=99999999999;", "90=1;90=3;"}) +
                often("100=TDbPipe;", {"100=TDbPipe ;", "", "100=Other;"}) +
                often("70=0;", {"70=1;", "70=70000;", "", "70=1;70=0;"}) +
                often("10=1;20=1;30=0;", {"10=1;999=note;20=1;", "20=1;", "10=1;", "10=x;20=1;", "10=1;30=1;", ""}) +
                often("11=1.05;21=1;31=3000;",
                      {"11=1.1;21=1;31=9;", "11=1;20=7;21=1;", "11=1;31=1;", "", "11=7;21=7;"}) +
                often("", {"42=0.5;", "100=Behind;1=no;", "20=1;", "11=1.0;21=1.0;", "30=4;"}) +
                often("1001=PIPE-SERIAL;1000=" + std::to_string(handle) + ";",
                      {"1001=pipe-serial;1000=立-1;", "1001=PIPE-SERIAL;1001=PIPE-SERIAL;1000=2;", "1001=PIPE-SERIAL;",
                       "1001=PIPE-SERIAL;1070=1;1000=3;", "1001=PIPE-SERIAL;1000=;", "1001=X;1000=4;"}) +
                often(any({"", "1001=BUILDING-SERIAL;1000=1#楼;"}),
                      {"1001=BUILDING-SERIAL;1000=a^@b;", "1001=PIPE-SERIAL;1000=again;", "1000=loose;", "8=0;"}));
    }
    openWith({{"0"}}, entities);
    TRiserReader reader({L"PIPE-SERIAL", L"BUILDING-SERIAL"});
    TRiser riser;
    int upright = 0;
    for (int handle = kFirst; handle < kFirst + kCount; ++handle) {
        const AcDbObjectPointer<TDbPipe> pipe(byHandle(handle), AcDb::kForRead);
        ASSERT_EQ(pipe.openStatus(), Acad::eOk) << handle;
        const bool isUpright = reader.Read(*pipe.object(), riser);
        ASSERT_EQ(isUpright, pipe->GetCurve().IsVertical()) << handle;
        if (!isUpright) continue;
        ++upright;
        ASSERT_EQ(riser.systemName, pipe->GetPipeSystemName()) << handle;
        ASSERT_EQ(riser.sysType, pipe->GetPipeSysType()) << handle;
        ASSERT_EQ(riser.items[0], PwxTool::ReadXdata(pipe.object(), L"PIPE-SERIAL").view()) << handle;
        ASSERT_EQ(riser.items[1], PwxTool::ReadXdata(pipe.object(), L"BUILDING-SERIAL").view()) << handle;
    }
    EXPECT_GT(upright, kCount / 2);
    EXPECT_LT(upright, kCount);
    // What was set and not written yet counts as well.
    AcDbObjectPointer<TDbPipe> changed(add({L"给水", L"1"}), AcDb::kForWrite);
    changed->SetPipeSystemName(L"废水");
    EXPECT_TRUE(reader.Read(*changed.object(), riser));
    EXPECT_EQ(riser.systemName, L"废水");
}

TEST_F(Numbering, DrawsTheNumbersOfARunBesideItsNodes) {
    const auto node = [](int handle, const std::string& values) {
        return entity(handle, "QRS_PIPENODE;8=0;100=TDbPipeNode;" + values + ";");
    };
    std::string drawing = drawingText({{"0"}}, {{"0"}});
    drawing.replace(drawing.find("9\n$CLAYER"), 0, "9\n$DIMSCALE\n40\n50.0\n");
    drawing.insert(drawing.find("0\nTABLE\n2\nBLOCK_RECORD"), "0\nTABLE\n2\nSTYLE\n5\n3\n70\n0\n0\nENDTAB\n");
    drawing.insert(drawing.rfind("0\nENDSEC\n0\nEOF"), node(0x201, "10=1000;20=2000;30=7;70=1") +
                                                           node(0x202, "10=-5;20=0") + node(0x203, "10=0;20=0;70=2"));
    open(drawing);
    g_nWellRadius = 6;
    SSearchPipeList run[] = {{byHandle(0x201), 1, L"", &run[1]},  {byHandle(0x100), 0, L"", &run[2]},
                             {byHandle(0x202), -1, L"", &run[3]}, {byHandle(0x203), 2, L"", &run[4]},
                             {byHandle(0x201), 1, L"5", &run[5]}, {byHandle(0x202), 1, L"", nullptr}};
    EXPECT_EQ(PwxTool::DoSerialNumber2(run, 7), 10);
    std::wstring serials;
    for (const SSearchPipeList& element : run)
        serials += std::wstring(element.serial.view()) + L"|";
    EXPECT_EQ(serials, L"7||8|9|5||");

    // Half of what a well measures, or a millimetre on paper, up and to the right.
    const AcGePoint3d places[] = {{1150, 2150, 7}, {45, 50, 0}, {50, 50, 0}};
    AcDbBlockTableRecordIterator* walk = nullptr;
    const AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, database(), AcDb::kForRead);
    ASSERT_EQ(space->newIterator(walk), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(walk);
    int texts = 0;
    for (AcDbObjectId id; !walk->done(); walk->step()) {
        walk->getEntityId(id);
        const AcDbObjectPointer<AcDbText> label(id, AcDb::kForRead);
        if (label.openStatus() != Acad::eOk) continue;
        ASSERT_LT(texts, 3);
        EXPECT_EQ(taken(label->textString()), std::to_string(7 + texts));
        EXPECT_LT(label->alignmentPoint().distanceTo(places[texts++]), 1e-9);
        EXPECT_EQ(label->horizontalMode(), AcDb::kTextLeft);
        EXPECT_EQ(label->verticalMode(), AcDb::kTextBottom);
        EXPECT_EQ(label->height(), 3.5 * 50.0);
        EXPECT_EQ(label->widthFactor(), 0.7);
        EXPECT_EQ(taken(label->layer()), "给排-计算文字");
        EXPECT_EQ(nameOf(label->textStyle()), "给排-标注");
    }
    EXPECT_EQ(texts, 3);

    // What is no node bears its number, and ends the numbering.
    SSearchPipeList line{byHandle(0x100), SSearchPipeList::kWell, CString(), &run[5]};
    EXPECT_EQ(PwxTool::DoSerialNumber2(&line, 3), 3);
    EXPECT_EQ(line.serial + L"|" + run[5].serial, L"3|");
    EXPECT_EQ(PwxTool::DoSerialNumber2(nullptr, 4), 4);
    EXPECT_FALSE(PwxTool::DoDimSerialNumber(AcDbObjectId(), 1));
    g_nWellRadius = 4;
}

TEST_F(Numbering, ListsTheSerialsOfTitleBlocksOnce) {
    const auto list = [&](const wchar_t* category, const wchar_t* block = nullptr) {
        const CString directory(platform::innerPath(folder.path()));
        std::vector<CString> serials{L"TK-9"};
        block != nullptr ? PwxTool::SearchTkBlkSerial(directory, category, serials, block)
                         : PwxTool::SearchTkBlkSerial(directory, category, serials);
        std::string joined;
        for (const CString& serial : serials)
            joined += platform::toUtf8(serial.view()) + " ";
        return joined;
    };
    EXPECT_EQ(list(L"施工图"), "TK-9 ");
    const std::string cache =
        "QRS title blocks 1\r\n; category\n施工图\tA1\tTK-02\n\n方案图\tA1\tTK-01\n施工图\tA2\tTK-02\n"
        "\tA3\tTK-03\n施工图\tA0\tTK-9\n施工图\tA0\ttk-01";
    folder.write("titleblocks.txt", cache);
    EXPECT_EQ(list(L"施工图"), "TK-9 TK-02 tk-01 ");
    EXPECT_EQ(list(L""), "TK-9 TK-02 TK-01 tk-01 ");
    EXPECT_EQ(list(L"", L"a2"), "TK-9 TK-02 ");
    EXPECT_EQ(list(L"平面图"), "TK-9 ");
    for (const std::string& damaged : {cache + "\tmore", cache + "\nA\tB", "x" + cache, cache + "\xFF"}) {
        folder.write("titleblocks.txt", damaged);
        EXPECT_EQ(list(L""), "TK-9 ") << damaged;
    }
}

}  // namespace qrs::test
