// Linetypes of linetype.dbf brought into drawings.
#include "../config/support.h"
#include "../folder.h"
#include "../objectarx/support.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/text.h"

using namespace qrs::standard;
using namespace dbtest;
namespace platform = qrs::platform;

namespace {

using LinetypePointer = AcDbObjectPointer<AcDbLinetypeTableRecord>;

class Listener : public qrs::host::Terminal {
  public:
    qrs::host::Reply readLine(const std::wstring&, std::wstring&) override { return qrs::host::Reply::End; }
    void print(std::wstring_view text) override { printed += text; }
    void error(std::wstring_view) override {}
    std::wstring taken() { return std::exchange(printed, L""); }
    std::wstring printed;
};

struct Row {
    std::string name, num, scale, length, content;
};

class Linetypes : public testing::Test {
  protected:
    Linetypes() : application(listener) {
        StandardHolder::release();
        QrsExport::SetSystemFolder(platform::innerPath(std::filesystem::path(QRS_SOURCE_DIR) / "data"));
    }
    ~Linetypes() override { StandardHolder::release(); }

    // A table of these rows in place of the shipped one.
    void useTable(const std::vector<Row>& rows) const {
        const auto padded = [](std::string text, std::size_t size) { return text.append(size - text.size(), ' '); };
        std::vector<std::string> records;
        for (const Row& row : rows)
            records.push_back(" " + padded(row.name, 16) + padded("remark", 8) + padded(row.num, 4) +
                              padded(row.scale, 8) + padded(row.length, 8) + padded(row.content, 80));
        scratch.write("linetype.dbf", tableBytes(0x03,
                                                 {{"Name", 'C', 16},
                                                  {"Comment", 'C', 8},
                                                  {"Num", 'N', 4},
                                                  {"Scale", 'N', 8, 3},
                                                  {"Length", 'N', 8, 3},
                                                  {"Content", 'C', 80}},
                                                 records));
        QrsExport::SetSystemFolder(platform::innerPath(scratch.path()));
    }

    Folder scratch;
    Listener listener;
    qrs::host::Application application;
};

// Everything a linetype says: "NAME: length = dash dash[style text scale (x, y)] ...".
std::wstring saidBy(AcDbObjectId id) {
    const LinetypePointer linetype(id);
    if (linetype.openStatus() != Acad::eOk) return L"none";
    const ACHAR* name = nullptr;
    linetype->getName(name);
    const auto number = [](double value) {
        std::wostringstream text;
        text << value;
        return text.str();
    };
    std::wstring said = name + (L": " + number(linetype->patternLength())) + L" =";
    for (int i = 0; i < linetype->numDashes(); ++i) {
        said += L" " + number(linetype->dashLengthAt(i));
        ACHAR* text = nullptr;
        linetype->textAt(i, text);
        const std::wstring shown = taken(text);
        if (shown.empty()) continue;
        const AcDbObjectPointer<AcDbTextStyleTableRecord> style(linetype->shapeStyleAt(i));
        const ACHAR* styleName = L"?";
        if (style.openStatus() == Acad::eOk) style->getName(styleName);
        const AcGeVector2d offset = linetype->shapeOffsetAt(i);
        said += std::wstring(L"[") + styleName + L" " + shown + L" " + number(linetype->shapeScaleAt(i)) + L" (" +
                number(offset.x) + L", " + number(offset.y) + L")]";
    }
    return said;
}

}  // namespace

TEST_F(Linetypes, CentreTheirTextsInTheGaps) {
    Sample sample(newerDrawing());
    LinetypeTextSettings& settings = StandardHolder::instance().linetypeText();
    settings.chineseShx = L"hz.shx";
    settings.height = 6.0;
    settings.scale = 0.5;
    // Two letters: 5/3 of the height, half as wide. The table's spelling of the name counts.
    const AcDbObjectId id = PwxTool::LoadQdLineType(L"xh");
    EXPECT_EQ(saidBy(id), L"XH: 36.5 = 30 -3.25[文字线形 XH 6 (-2.5, -3)] -3.25");
    // Chinese characters fill their squares.
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"给水")), L"给水: 38 = 30 -4[文字线形 给水 6 (-3, -3)] -4");
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"center")), L"CENTER: 50.8 = 31.75 -6.35 6.35 -6.35");
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(sample.in<AcDbTextStyleTable>(L"文字线形"));
    ASSERT_EQ(style.openStatus(), Acad::eOk);
    EXPECT_EQ(style->textSize(), 0.0);
    EXPECT_EQ(style->xScale(), 0.5);
    ACHAR* file = nullptr;
    style->bigFontFileName(file);
    EXPECT_EQ(taken(file), L"hz.shx");
    style->fileName(file);
    EXPECT_EQ(taken(file), L"txt.shx");

    const std::string before = sample.text();
    settings.height = 3.0;
    EXPECT_EQ(PwxTool::LoadQdLineType(L"Xh"), id);
    EXPECT_TRUE(PwxTool::LoadQdLineType(L"unknown").isNull());
    EXPECT_TRUE(PwxTool::LoadQdLineType(L"").isNull());
    EXPECT_FALSE(PwxTool::UpdateLinetype(L"unknown") || PwxTool::UpdateLinetype(L"F")) << "not in both";
    EXPECT_EQ(sample.text(), before);
    EXPECT_TRUE(PwxTool::UpdateLinetype(L"xh"));
    EXPECT_EQ(saidBy(id), L"XH: 36.5 = 30 -3.25[文字线形 XH 3 (-1.25, -1.5)] -3.25");
    EXPECT_EQ(listener.printed, L"");
}

TEST_F(Linetypes, TakeWhatTheDrawingHas) {
    // A style of a fixed height and other width; settings that are no sizes count as not set.
    Sample sample(newerDrawing());
    StandardHolder::instance().linetypeText().height = -1.0;
    {
        AcDbObjectPointer<AcDbTextStyleTableRecord> style;
        style.create();
        style->setName(L"文字线形");
        style->setTextSize(1.5);
        style->setXScale(1.0);
        AcDbTextStyleTablePointer table(sample.database.get(), AcDb::kForWrite);
        EXPECT_EQ(table->add(style.object()), Acad::eOk);
    }
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"J")), L"J: 34.5 = 30 -2.25[文字线形 J 2 (-1, -1.5)] -2.25");

    // An old drawing holds no texts, and gets no style for them. Names take the drawing's code page.
    Sample old(oldDrawing());
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"排水")), L"排水: 38 = 30 -8");
    EXPECT_EQ(old.changes(),
              " -70=     1 +70=     2 +0=LTYPE +2=\xC5\xC5\xCB\xAE +70=     0 +3=\xC5\xC5\xCB\xAE\xB9\xDC \xA9\xA4\xA9"
              "\xA4 \xC5\xC5\xCB\xAE \xA9\xA4\xA9\xA4 \xC5\xC5\xCB\xAE \xA9\xA4\xA9\xA4 +72=    65 +73=     2 +40=38.0"
              " +49=30.0 +49=-8.0");

    // A code page without Chinese.
    std::string western = newerDrawing();
    western.replace(western.find("AC1024"), 6, "AC1015").replace(western.find("ANSI_936"), 8, "ANSI_1252");
    Sample escaped(western);
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"排水")), L"排水: 38 = 30 -4[文字线形 排水 3 (-2.1, -1.5)] -4");
    EXPECT_NE(escaped.text().find("\n  9\n\\U+6392\\U+6C34\n"), std::string::npos);
    EXPECT_NE(escaped.text().find("\n  2\n\\U+6587\\U+5B57\\U+7EBF\\U+5F62\n"), std::string::npos);
}

TEST_F(Linetypes, OfDamagedRowsAreToldAndNotMade) {
    useTable({{"GOOD", "3", "100", "9", "5,0,-4[a,b]"},
              {"good", "2", "1", "9", "5,-4"},
              {"LINE", "0", "1", "0", ""},
              {"", "2", "1", "9", "5,-4"},
              {"COUNT", "3", "1", "9", "5,-4"},
              {"SUM", "2", "1", "8", "5,-4"},
              {"NOSCALE", "2", "", "9", "5,-4"},
              {"WORDS", "2", "1", "9", "5,four"},
              {"NONUMBER", "2", "1", "9", "5,nan"},
              {"EMPTY", "3", "1", "9", "5,,-4"},
              {"OPEN", "2", "1", "9", "5,-4[J"},
              {"NOTEXT", "2", "1", "9", "5,-4[]"},
              {"BEHIND", "2", "1", "9", "5,-4[J]J"},
              {"ONDASH", "2", "1", "9", "5[J],-4"},
              {"GAPFIRST", "2", "1", "9", "-4,5"},
              {"SINGLE", "1", "1", "9", "9"},
              {"DOTS", "2", "1", "0", "0,0"},
              {"A*B", "2", "1", "9", "5,-4"},
              {"LONG", "12", "1", "12", "1,-1,1,-1,1,-1,1,-1,1,-1,1,-1[J]"}});
    Sample sample(newerDrawing());
    std::vector<LinetypeNode> rows;
    ASSERT_TRUE(PwxTool::GetAllLinetype(rows));
    ASSERT_EQ(rows.size(), 17u);
    EXPECT_EQ(rows[0].Name + L" " + rows[0].Comment, L"GOOD remark");
    int told = 0;
    for (std::size_t i = 2; i < rows.size(); ++i) {
        const std::string name = toUtf8(rows[i].Name);
        EXPECT_TRUE(PwxTool::LoadQdLineType(rows[i].Name).isNull()) << name;
        const std::wstring message = listener.taken();
        EXPECT_NE(message.find(L"\"" + rows[i].Name + L"\""), std::wstring::npos) << name;
        EXPECT_EQ(message.find(L"linetype.dbf"), message.rfind(L"linetype.dbf")) << name;
        ++told;
    }
    EXPECT_EQ(told, 15);
    EXPECT_EQ(sample.changes(), "");
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"line")), L"LINE: 0 =");
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"good")), L"GOOD: 900 = 500 0 -200[文字线形 a,b 3 (-2.8, -1.5)] -200");

    std::filesystem::remove(scratch / "linetype.dbf");
    EXPECT_TRUE(PwxTool::LoadQdLineType(L"J").isNull());
    EXPECT_EQ(listener.taken(), L"\n对不起，没有发现linetype.dbf文件！");
    EXPECT_FALSE(PwxTool::GetAllLinetype(rows));
    EXPECT_TRUE(rows.empty());
    EXPECT_EQ(saidBy(PwxTool::LoadQdLineType(L"GOOD")).substr(0, 4), L"GOOD") << "the drawing has it";
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_TRUE(PwxTool::LoadQdLineType(L"J").isNull());
    EXPECT_EQ(listener.taken(), L"");
}

TEST_F(Linetypes, OfLayersFallBackToTheContinuousOne) {
    Sample bare(dxfText("0=SECTION;2=ENTITIES;0=ENDSEC;0=EOF"));
    LayerNode node;
    node.LayerName = L"Pipe";
    node.LayerColor.setColorIndex(256);
    node.LineWeight = AcDb::kLnWtByLayer;
    for (const wchar_t* linetype : {L"unknown", L"BYLAYER", L"ByBlock", L"", L"HIDDEN"}) {
        node.LineStyle = linetype;
        node.LayerName += L"-";
        const AcDbLayerTableRecordPointer layer(node.CreateLayer(), AcDb::kForRead);
        ASSERT_EQ(layer.openStatus(), Acad::eOk);
        EXPECT_EQ(saidBy(layer->linetypeObjectId()),
                  CString(linetype) == L"HIDDEN" ? L"HIDDEN: 9.525 = 6.35 -3.175" : L"Continuous: 0 =");
        EXPECT_EQ(layer->color().colorIndex(), 7);
        EXPECT_EQ(layer->lineWeight(), AcDb::kLnWtByLwDefault);
    }
    EXPECT_EQ(listener.printed, L"");
}
