// Text styles and fonts: the settings of the standard, the list of fonts, and the styles made in drawings.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "../folder.h"
#include "../objectarx/support.h"
#include "FontTool.h"
#include "host/platform/callrecord.h"
#include "PipeSystemTool.h"
#include "standard/fontlist.h"
#include "standard/holder.h"
#include "standard/startup.h"

using namespace PipeSystemTool;
using dbtest::DatabaseAccess;
using dbtest::Sample;
using dbtest::taken;
using qrs::standard::StandardHolder;
using StylePointer = AcDbObjectPointer<AcDbTextStyleTableRecord>;

namespace {

using Names = std::vector<CString>;

#if defined(_WIN32)
// The system has the fonts that it has.
class FontFolder {};
#else
// The installed fonts are those of a folder: three of one letter each, with the names and languages that the
// configuration says.
class FontFolder {
  public:
    FontFolder() {
        for (const auto& [family, spacing] : {std::pair("Song", "P"), {"Arial", "P"}, {"arial", "C"}})
            folder_.write(family + std::string(spacing) + ".bdf",
                          std::string("STARTFONT 2.1\nFONT -x-x-medium-r-normal--8-80-75-75-") + spacing +
                              "-80-iso10646-1\nSIZE 8 75 75\nFONTBOUNDINGBOX 1 1 0 0\nSTARTPROPERTIES 2\n"
                              "FAMILY_NAME \"" +
                              family + "\"\nSPACING \"" + spacing +
                              "\"\nENDPROPERTIES\n"
                              "CHARS 1\nSTARTCHAR a\nENCODING 97\nSWIDTH 500 0\nDWIDTH 4 0\nBBX 1 1 0 0\n"
                              "BITMAP\n80\nENDCHAR\nENDFONT\n");
        putFonts();
        setenv("FONTCONFIG_FILE", (folder_ / "fonts.conf").c_str(), 1);
        qrs::standard::forgetFonts();
    }
    ~FontFolder() {
        unsetenv("FONTCONFIG_FILE");
        qrs::standard::forgetFonts();
    }
    void putFonts() const {
        const auto scan = [](const char* family, const std::string& edits) {
            return std::string("<match target=\"scan\"><test name=\"family\"><string>") + family + "</string></test>" +
                   edits + "</match>";
        };
        const auto language = [](const std::string& name) {
            return "<edit name=\"lang\"><langset><string>" + name + "</string><string>en</string></langset></edit>";
        };
        const std::string path = folder_.path().string();
        folder_.write("fonts.conf",
                      "<fontconfig><dir>" + path + "</dir><cachedir>" + path + "/cache</cachedir>" +
                          "<match target=\"scan\"><edit name=\"scalable\"><bool>true</bool></edit></match>" +
                          scan("Arial", language("el")) + scan("Song", language("zh-cn")) +
                          scan("Song", "<edit name=\"family\"><string>宋体</string></edit>") +
                          "<alias><family>Arial</family><default><family>sans-serif</family></default></alias>"
                          "</fontconfig>");
    }
    void takeFonts() const { folder_.write("fonts.conf", "<fontconfig></fontconfig>"); }

  private:
    Folder folder_;
};
#endif

class TextStyles : public testing::Test {
  protected:
    void SetUp() override {
        qrs::standard::Standard standard;
        qrs::platform::Error error;
        ASSERT_TRUE(qrs::standard::parseStandard(qrs::standard::builtinStandard(), "builtin", standard, error));
        StandardHolder::instance().adopt(std::move(standard), L"C:\\pwx.qdsl");
    }
    void TearDown() override { StandardHolder::release(); }
    const FontFolder fonts_{};
    static std::vector<TextStyleNode>& nodes() { return StandardHolder::instance().standard().textStyles; }
};

TextStyleNode song() {
    TextStyleNode node;
    node.Key = L"表格文字";
    node.Name = L"表格";
    node.ChineseFont = L"宋体";
    node.EnglishFont = L"gbenor.shx";
    node.Bold = 1;
    node.FontHeigth = 3.5;
    return node;
}

}  // namespace

TEST_F(TextStyles, AnswerAMissWithoutAStandard) {
    StandardHolder::release();
    Sample sample(dbtest::newerDrawing());
    std::vector<TextStyleNode> all(1);
    TextStyleNode info = song();
    EXPECT_EQ(GetTextStyleName(kPipeDnTextStyle), L"");
    EXPECT_EQ(GetTextStyleHeight(L"", 7.5), 7.5);
    EXPECT_EQ(GetTextStyleScale(kWellTextStyle, 0.25), 0.25);
    EXPECT_FALSE(SetTextStyleHeight(kPipeDnTextStyle, 1.0) || SetTextStyleScale(L"", 1.0));
    EXPECT_FALSE(GetTextStyleInfo(kPipeDnTextStyle, info) || SetTextStyleInfo(L"", info) || IsModified(info));
    EXPECT_FALSE(GetAllTextStyleInfo(all));
    EXPECT_EQ(all.size(), 1u);
    EXPECT_TRUE(InitTextStyle(L"Standard").isNull() && InitTextStyle(kPipeDnTextStyle).isNull());
    EXPECT_FALSE(UpdateTextStyle(L"Standard") || UpdateTextStyle(kPipeDnTextStyle));
    EXPECT_EQ(sample.changes(), "");
}

TEST_F(TextStyles, AreFoundByNameAndByKind) {
    const Names keys{L"管径标注", L"立管标注", L"管线文字", L"圆中文字", L"洁具标注",
                     L"标高文字", L"井标注",   L"表格文字", L"其他标注", L"文字线形"};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        TextStyleNode info;
        ASSERT_TRUE(GetTextStyleInfo(static_cast<TextStyleEnum>(i), info));
        EXPECT_EQ(info.Key, keys[i]);
        EXPECT_EQ(GetTextStyleName(static_cast<TextStyleEnum>(i)), info.Name);
    }
    EXPECT_EQ(GetTextStyleHeight(0, -1.0), GetTextStyleHeight(kPipeDnTextStyle, -2.0)) << "a number, no null pointer";
    EXPECT_TRUE(SetTextStyleScale(0, 0.25));
    EXPECT_EQ(GetTextStyleScale(kPipeDnTextStyle, 1.0), 0.25);
    EXPECT_TRUE(SetTextStyleScale(0, 0.7));
    EXPECT_EQ(GetTextStyleName(static_cast<TextStyleEnum>(10)), L"");

    // Of two settings the first one counts; names and keys are exact.
    nodes().assign(2, song());
    nodes()[1].FontHeigth = 9.0;
    EXPECT_EQ(GetTextStyleHeight(L"表格", 1.0), 3.5);
    EXPECT_EQ(GetTextStyleHeight(kOtherTextStyle, 1.0), 1.0);
    EXPECT_TRUE(SetTextStyleHeight(L"表格", 4.0) && SetTextStyleScale(kTableTextStyle, 0.8));
    EXPECT_EQ(nodes()[0].FontHeigth, 4.0);
    EXPECT_EQ(GetTextStyleScale(L"表格", 1.0), 0.8);
    EXPECT_EQ(nodes()[1].FontHeigth, 9.0);
    EXPECT_EQ(nodes()[1].WHScale, 0.0);
    nodes()[0].Name = L"Table";
    EXPECT_FALSE(SetTextStyleHeight(L"TABLE", 1.0));
    EXPECT_FALSE(SetTextStyleScale(kOtherTextStyle, 1.0));

    // The key is a field like the others.
    TextStyleNode other = song();
    other.Key = L"其他标注";
    EXPECT_TRUE(SetTextStyleInfo(L"Table", other));
    EXPECT_EQ(GetTextStyleHeight(kOtherTextStyle, 1.0), 3.5);
    EXPECT_EQ(GetTextStyleHeight(kTableTextStyle, 1.0), 9.0);
    EXPECT_FALSE(SetTextStyleInfo(kWellTextStyle, other));
    std::vector<TextStyleNode> all(5);
    EXPECT_TRUE(GetAllTextStyleInfo(all));
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[1].FontHeigth, 9.0);
}

TEST_F(TextStyles, AreComparedFieldByField) {
    nodes().push_back(song());
    nodes()[7].Key = L"";
    const TextStyleNode same = song();
    EXPECT_FALSE(IsModified(same));
    using Change = std::function<void(TextStyleNode&)>;
    const std::vector<Change> changes{[](TextStyleNode& node) { node.Name = L"表格2"; },
                                      [](TextStyleNode& node) { node.ChineseFont = L"黑体"; },
                                      [](TextStyleNode& node) { node.EnglishFont = L"GBENOR.SHX"; },
                                      [](TextStyleNode& node) { node.WinFont = 1; },
                                      [](TextStyleNode& node) { node.FontHeigth += 1e-5; },
                                      [](TextStyleNode& node) { node.WHScale -= 1e-5; },
                                      [](TextStyleNode& node) { node.Bold = 0; },
                                      [](TextStyleNode& node) { node.Italic = 1; },
                                      [](TextStyleNode& node) { node.Encoded = L"chinese_gb2312"; }};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        TextStyleNode node = same;
        changes[i](node);
        EXPECT_TRUE(IsModified(node)) << i;
    }
    TextStyleNode close = same;
    close.FontHeigth += 1e-7;
    close.WHScale -= 1e-7;
    EXPECT_FALSE(IsModified(close));
    close.Key = L"没有";
    close.Name = L"别的";
    EXPECT_FALSE(IsModified(close)) << "no setting has that key";
}

#if !defined(_WIN32)  // with the fonts of the folder

TEST_F(TextStyles, FontsAreListedByFaceAndScript) {
    Names list{L"left over"};
    FontTool::GetWinFont(L"greek", list, false);
    EXPECT_EQ(list, (Names{L"Arial", L"arial"}));
    FontTool::GetFontEncoded(L"ARIAL", list, false);
    EXPECT_EQ(list, (Names{L"GREEK", L"WESTERN"}));
    FontTool::GetFontEncoded(list, false);
    EXPECT_EQ(list, (Names{L"CHINESE_GB2312", L"GREEK", L"WESTERN"}));
    FontTool::GetFontEncoded(L"nobody", list, false);
    EXPECT_TRUE(list.empty());
    int charset = -1, pitchAndFamily = -1;
    EXPECT_FALSE(FontTool::IsWinFont(L"ARIAL", L"Greek", &charset, &pitchAndFamily, false)) << "the face is exact";
    EXPECT_EQ(charset, -1);
    EXPECT_TRUE(FontTool::IsWinFont(L"Arial", L"gReEk", &charset, &pitchAndFamily, false));
    EXPECT_EQ(charset, 161);
    EXPECT_EQ(pitchAndFamily, 34);
    EXPECT_TRUE(FontTool::IsWinFont(L"宋体", L"CHINESE_GB2312", nullptr, nullptr, false));
    // What was gathered stays until it is asked for anew.
    fonts_.takeFonts();
    FontTool::GetWinFont(L"Western", list, false);
    EXPECT_EQ(list, (Names{L"Arial", L"arial", L"宋体"}));
    FontTool::GetWinFont(L"Western", list, true);
    EXPECT_TRUE(list.empty());
    // It ends with the module, which a sibling may keep in memory.
    fonts_.putFonts();
    qrs::standard::releaseStandard();
    FontTool::GetWinFont(L"Western", list, false);
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(TextStyles, AreMadeWithFontFilesOrATypeface) {
    nodes()[kTableTextStyle] = song();
    nodes()[kTableTextStyle].WinFont = 0;  // the list of fonts counts
    nodes()[kOtherTextStyle].WinFont = 1;
    nodes()[kOtherTextStyle].Name = L"其他";
    Sample sample(dbtest::newerDrawing());
    qrs::platform::CallRecorder recorder;
    const AcDbObjectId table = InitTextStyle(L"表格");
    const AcDbObjectId other = InitTextStyle(kOtherTextStyle);
    ASSERT_TRUE(table.isValid() && other.isValid());
    const std::vector<std::string> expected{"AcDbSymbolTableRecord::setName(表格)",
                                            "AcDbTextStyleTableRecord::setTextSize(表格, 3.5)",
                                            "AcDbTextStyleTableRecord::setXScale(表格, 1.0)",
                                            "AcDbTextStyleTableRecord::setFileName(表格, 宋体)",
                                            "AcDbTextStyleTableRecord::setBigFontFileName(表格, gbenor.shx)",
                                            "AcDbTextStyleTableRecord::setFont(表格, 宋体, 1, 0, 134, 2)",
                                            "AcDbSymbolTable::add(STYLE, 表格)",
                                            "AcDbSymbolTableRecord::setName(其他)",
                                            "AcDbTextStyleTableRecord::setTextSize(其他, 3.5)",
                                            "AcDbTextStyleTableRecord::setXScale(其他, 0.7)",
                                            "AcDbTextStyleTableRecord::setFileName(其他, gbenor.shx)",
                                            "AcDbTextStyleTableRecord::setBigFontFileName(其他, gbcbig.shx)",
                                            "AcDbSymbolTable::add(STYLE, 其他)"};
    EXPECT_EQ(recorder.calls(), expected);
    const std::string changes = sample.changes();
    EXPECT_NE(changes.find("+2=表格 +70=0 +40=3.5 +41=1.0 +50=0.0 +71=0 +42=2.5 +3=宋体 +4=gbenor.shx"
                           " +1001=ACAD +1000=宋体 +1071=33588738 +0=STYLE"),
              std::string::npos)
        << changes;
    EXPECT_NE(changes.find("+3=gbenor.shx +4=gbcbig.shx +0=ENDTAB"), std::string::npos) << changes;

    // What the drawing has is taken as it is, and found without regard to case.
    nodes()[kOtherTextStyle].Name = L"Label";
    nodes()[kOtherTextStyle].FontHeigth = 5.0;
    const AcDbObjectId label = InitTextStyle(L"Label");
    SetTextStyleHeight(L"Label", 6.0);
    const std::string before = sample.text();
    EXPECT_EQ(InitTextStyle(L"Label"), label);
    EXPECT_EQ(InitTextStyle(kOtherTextStyle), label);
    EXPECT_EQ(InitTextStyle(L"LABEL"), label);
    EXPECT_TRUE(InitTextStyle(L"nobody").isNull());
    nodes()[kOtherTextStyle].Name = L"no|name";
    EXPECT_TRUE(InitTextStyle(kOtherTextStyle).isNull());
    EXPECT_EQ(sample.text(), before);

    // A drawing without the application's record gets one; an old one cannot hold the typeface.
    Sample old(dbtest::oldDrawing());
    ASSERT_TRUE(InitTextStyle(kTableTextStyle).isValid());
    EXPECT_EQ(old.text().find("ACAD\n"), std::string::npos);
    EXPECT_NE(old.text().find(dbtest::dxfText("3=\xCB\xCE\xCC\xE5;4=gbenor.shx;0=ENDTAB")), std::string::npos);
    Sample bare(dbtest::dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1015;0=ENDSEC;0=EOF"));
    ASSERT_TRUE(InitTextStyle(kTableTextStyle).isValid());
    EXPECT_FALSE(bare.in<AcDbRegAppTable>(L"ACAD").isNull());
}

TEST_F(TextStyles, AreRewrittenFromTheStandard) {
    Sample sample(dbtest::newerDrawing());
    nodes()[kTableTextStyle] = song();
    nodes()[kOtherTextStyle] = song();
    nodes()[kOtherTextStyle].Name = L"别的";
    const AcDbObjectId id = InitTextStyle(kTableTextStyle);
    const std::string typeface = sample.text();
    EXPECT_TRUE(UpdateTextStyle(L"表格") && UpdateTextStyle(kTableTextStyle));
    EXPECT_EQ(sample.text(), typeface);

    // From a typeface to font files and back.
    nodes()[kTableTextStyle].ChineseFont = L"gbcbig.shx";
    nodes()[kTableTextStyle].WHScale = 0.5;
    EXPECT_TRUE(UpdateTextStyle(L"表格"));
    {
        const StylePointer style(id);
        ACHAR* face = nullptr;
        bool bold = true, italic = true;
        int charset = 1, pitchAndFamily = 1;
        EXPECT_EQ(style->font(face, bold, italic, charset, pitchAndFamily), Acad::eOk);
        EXPECT_EQ(taken(face), L"");
        EXPECT_FALSE(bold || italic || charset != 0 || pitchAndFamily != 0);
        EXPECT_EQ(style->xScale(), 0.5);
    }
    EXPECT_EQ(sample.text().find("1071"), std::string::npos);
    nodes()[kTableTextStyle] = song();
    EXPECT_TRUE(UpdateTextStyle(kTableTextStyle));
    EXPECT_EQ(sample.text(), typeface);

    // A style that somebody reads is not written; neither is one that only the drawing, or only the standard, knows.
    SetTextStyleHeight(L"表格", 8.0);
    {
        const StylePointer reader(id);
        EXPECT_TRUE(UpdateTextStyle(L"表格") && UpdateTextStyle(kTableTextStyle));
    }
    SetTextStyleInfo(L"表格", nodes()[kOtherTextStyle]);
    EXPECT_TRUE(UpdateTextStyle(L"表格"));
    EXPECT_TRUE(UpdateTextStyle(kTableTextStyle)) << "the standard has the setting";
    EXPECT_FALSE(UpdateTextStyle(L"别的"));
    EXPECT_TRUE(UpdateTextStyle(kPipeDnTextStyle)) << "the drawing lacks the style";
    EXPECT_FALSE(UpdateTextStyle(static_cast<TextStyleEnum>(-1)));
    EXPECT_EQ(sample.text(), typeface);

    // The standard's spelling of the name is written too.
    nodes()[0].Name = L"label";
    const AcDbObjectId label = InitTextStyle(L"label");
    nodes()[0].Name = L"LABEL";
    EXPECT_TRUE(UpdateTextStyle(kPipeDnTextStyle));
    const StylePointer style(label);
    const ACHAR* name = nullptr;
    style->getName(name);
    EXPECT_STREQ(name, L"LABEL");
}

// --- an independent program reads what was written

namespace {

constexpr const char* kPython = "/usr/bin/python3";

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return output;
    for (int character; (character = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(character);
    pclose(pipe);
    return output;
}

}  // namespace

TEST_F(TextStyles, PassTheAuditInEveryVersion) {
    const std::string python = kPython;
    if (outputOf(python + " -c 'import ezdxf; print(1)'") != "1\n") GTEST_SKIP() << "no ezdxf";
    nodes()[kTableTextStyle] = song();
    const Folder folder;
    const std::vector<std::string> versions{"R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"};
    const std::string program = (folder / "program.py").string();
    std::ofstream(program) << R"(import sys, ezdxf, ezdxf.recover
for name in sys.argv[2:]:
    if sys.argv[1] == "make":
        ezdxf.new(name.split("/")[-1][:-4]).saveas(name)
    else:
        # Tells what is wrong, and what stands in the styles. This reader alone knows escaped characters.
        drawing, audit = ezdxf.recover.readfile(name)
        styles = [style for style in drawing.styles if style.dxf.name != "Standard"]
        faces = [tag.value for style in styles if style.has_xdata("ACAD") for tag in style.get_xdata("ACAD")]
        print(drawing.acad_release, len(audit.errors) + len(audit.fixes), len(styles), *faces)
)";
    std::string files;
    for (const std::string& version : versions)
        files += " '" + (folder / (version + ".dxf")).string() + "'";
    EXPECT_EQ(outputOf(python + " " + program + " make" + files), "");
    const auto initialiseAll = [] {
        for (int kind = kPipeDnTextStyle; kind <= kLinetypeTextStyle; ++kind)
            EXPECT_TRUE(InitTextStyle(static_cast<TextStyleEnum>(kind)).isValid()) << kind;
    };
    for (const std::string& version : versions) {
        const auto file = folder / (version + ".dxf");
        Sample sample(fileBytes(file));
        initialiseAll();
        std::ofstream(file, std::ios::binary) << sample.text();
        // A second run finds everything in place.
        const Sample again(fileBytes(file));
        initialiseAll();
        for (int kind = kPipeDnTextStyle; kind <= kLinetypeTextStyle; ++kind)
            EXPECT_TRUE(UpdateTextStyle(static_cast<TextStyleEnum>(kind)));
        EXPECT_FALSE(DatabaseAccess::isModified(*again.database)) << version;
    }
    std::string expected;
    for (const std::string& version : versions)
        expected += version + " 0 10" + (version == "R12" ? "" : " 宋体 33588738") + "\n";
    EXPECT_EQ(outputOf(python + " " + program + " check" + files), expected);
    const std::string audit = outputOf(python + " -m ezdxf audit" + files);
    std::size_t clean = 0;
    for (std::size_t at = 0; (at = audit.find("No errors found.", at)) != audit.npos; ++at)
        ++clean;
    EXPECT_EQ(clean, versions.size()) << audit;
}

#endif
