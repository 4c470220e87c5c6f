// What pictures of drawings show, dot by dot.
#include <gtest/gtest.h>

#include "../dxftext.h"
#include "../folder.h"
#include "host/plot/plot.h"
#include "host/plot/textcodes.h"

#include <cairo.h>

#include <algorithm>
#include <memory>

using namespace qrs::host;

namespace {

// A page of 120 mm with ten dots a millimetre; the drawing, from 0,0 to 100,100, lies in it within 6 mm.
constexpr double kSide = 120;
constexpr double kDots = 10;
constexpr double kScale = 1.08;

constexpr long kWhite = 0xFFFFFF;
constexpr long kBlack = 0x000000;
constexpr long kRed = 0xFF0000;

class Picture {
  public:
    explicit Picture(const std::filesystem::path& file)
        : surface_(cairo_image_surface_create_from_png(file.u8string().c_str()), &cairo_surface_destroy) {}

    // At a place of the drawing: 0xRRGGBB; -1 outside of the picture.
    long at(double x, double y) const {
        return dot(static_cast<int>((6 + kScale * x) * kDots), static_cast<int>((kSide - 6 - kScale * y) * kDots));
    }
    // Whether anything is drawn in a part of the drawing.
    bool hasInk(double left, double bottom, double right, double top) const {
        for (double x = left; x <= right; x += 0.05)
            for (double y = bottom; y <= top; y += 0.05)
                if (at(x, y) != kWhite) return true;
        return false;
    }

  private:
    long dot(int x, int y) const {
        if (x < 0 || y < 0 || x >= cairo_image_surface_get_width(surface_.get()) ||
            y >= cairo_image_surface_get_height(surface_.get()))
            return -1;
        const unsigned char* const data = cairo_image_surface_get_data(surface_.get());
        const unsigned char* const place = data + y * cairo_image_surface_get_stride(surface_.get()) + x * 4;
        return place[2] << 16 | place[1] << 8 | place[0];
    }

    std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface_;
};

const std::string kFrame = "0=POINT;8=FRAME;62=3;10=0;20=0;0=POINT;8=FRAME;62=3;10=100;20=100;";

std::string drawing(const std::string& blocks, const std::string& entities, const std::string& header = {}) {
    return dxfText(
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1015;" + header +
        "0=ENDSEC;0=SECTION;2=TABLES;0=TABLE;2=LTYPE;70=1;"
        "0=LTYPE;2=DASHED;70=0;3=;72=65;73=2;40=20.0;49=10.0;49=-10.0;"
        "0=LTYPE;2=FINE;70=0;3=;72=65;73=2;40=0.000002;49=0.000001;49=-0.000001;0=ENDTAB;"
        "0=TABLE;2=LAYER;70=6;0=LAYER;2=GLASS;70=0;62=1;1001=AcCmTransparency;1071=33554559;0=LAYER;2=RED;70=0;62=1;6="
        "DASHED;370=30;0=LAYER;2=OFF;70=0;62=-1;"
        "0=LAYER;2=FROZEN;70=1;62=1;0=LAYER;2=UNPLOTTED;70=0;62=1;290=0;0=LAYER;2=PLAIN;70=0;62=1;0=ENDTAB;0=ENDSEC;"
        "0=SECTION;2=BLOCKS;" +
        blocks + "0=ENDSEC;0=SECTION;2=ENTITIES;" + kFrame + entities + "0=ENDSEC;0=EOF;");
}

std::string lineAt(int y, const std::string& looks) {
    const std::string at = std::to_string(y);
    return "0=LINE;" + looks + ";10=0;20=" + at + ";11=100;21=" + at + ";";
}

std::string square(double left, double bottom, double side) {
    const auto text = [](double value) { return std::to_string(value); };
    return "92=2;72=0;73=1;93=4;10=" + text(left) + ";20=" + text(bottom) + ";10=" + text(left + side) +
           ";20=" + text(bottom) + ";10=" + text(left + side) + ";20=" + text(bottom + side) + ";10=" + text(left) +
           ";20=" + text(bottom + side) + ";97=0;";
}

class Plot : public testing::Test {
  protected:
    PlotFailure plot(const std::string& text, const std::wstring& layout = L"Model") {
        qrs::platform::Error error;
        const std::unique_ptr<qrs::dxf::Drawing> opened = qrs::dxf::Drawing::fromBytes(text, "test.dxf", error);
        EXPECT_TRUE(opened) << error.message;
        if (!opened) return PlotFailure::CannotRead;
        request_.layout = layout;
        outcome_ = {};
        error_ = {};
        pick::References references;
        return plot::plotDrawing(
            *opened, {}, references, [](const std::wstring&) { return std::wstring(); }, request_, outcome_, error_);
    }
    Picture picture(const std::string& text) {
        EXPECT_EQ(plot(text), PlotFailure::None) << error_.message;
        return Picture(request_.file);
    }
    static PlotRequest requestFor(const std::filesystem::path& file) {
        PlotRequest request;
        request.file = file;
        request.paper = L"120x120";
        request.dotsPerInch = kDots * 25.4;
        return request;
    }

    Folder folder_;
    PlotRequest request_ = requestFor(folder_ / "picture.png");
    PlotOutcome outcome_;
    qrs::platform::Error error_;
};

}  // namespace

TEST_F(Plot, ShowsColorsWeightsAndLinetypes) {
    // In a block: by its layer 0, by block, by a layer of its own.
    const std::string block = "0=BLOCK;8=0;2=B;70=0;10=0;20=0;" + lineAt(1, "8=0;370=100") +
                              lineAt(5, "8=PLAIN;62=0;370=100") + lineAt(9, "8=PLAIN;370=100") +
                              lineAt(3, "8=PLAIN;440=16777216;370=100") + "0=ENDBLK;8=0;";
    const Picture picture = this->picture(drawing(
        block, lineAt(10, "8=0;62=7;370=100") + lineAt(15, "8=0;62=5;370=100") +
                   lineAt(20, "8=0;62=5;420=1193046;370=200") + lineAt(25, "8=RED;6=CONTINUOUS;370=0") +
                   lineAt(30, "8=RED") + lineAt(35, "8=OFF;370=100") + lineAt(40, "8=FROZEN;370=100") +
                   lineAt(45, "8=UNPLOTTED;370=100") + lineAt(50, "8=RED;48=0.5") + lineAt(55, "8=0") +
                   "62=5;370=100;" + "0=INSERT;8=PLAIN;62=4;2=B;10=0;20=60;0=INSERT;8=0;62=4;2=B;10=0;20=100;42=-1;" +
                   "0=INSERT;8=0;440=33554559;2=B;10=0;20=80;" + lineAt(75, "8=GLASS;62=5;370=100") +
                   lineAt(70, "8=GLASS;440=33554687;370=100")));
    EXPECT_EQ(picture.at(50, 10), kBlack);
    EXPECT_EQ(picture.at(50, 15), 0x0000FF);
    EXPECT_EQ(picture.at(50, 20), 0x123456);
    EXPECT_EQ(picture.at(50, 20.8), 0x123456) << "two millimetres wide";
    EXPECT_EQ(picture.at(50, 15.8), kWhite) << "one is not";
    EXPECT_NE(picture.at(53, 25), kWhite) << "thinnest, without gaps";
    // Dashes and gaps of 10 in 100: half a dash at each end.
    EXPECT_EQ(picture.at(4, 30), kRed);
    EXPECT_EQ(picture.at(10, 30), kWhite);
    EXPECT_EQ(picture.at(20, 30), kRed);
    EXPECT_EQ(picture.at(99, 30), kRed) << "ends with a dash";
    EXPECT_EQ(picture.at(5, 50), kWhite) << "half as long";
    EXPECT_EQ(picture.at(50, 55), 0x0000FF) << "after the points, as records without marks may have it";
    for (const double hidden : {35.0, 40.0, 45.0})
        EXPECT_EQ(picture.at(50, hidden), kWhite) << hidden;
    EXPECT_EQ(picture.at(50, 61), kRed) << "layer 0 is the reference's";
    EXPECT_EQ(picture.at(50, 65), 0x00FFFF) << "by block";
    EXPECT_EQ(picture.at(50, 69), kRed);
    EXPECT_EQ(picture.at(50, 99), kBlack) << "mirrored, layer 0 without a colour";
    EXPECT_EQ(picture.at(50, 75), 0x8080FF) << "as transparent as its layer";
    EXPECT_EQ(picture.at(50, 70), kRed) << "opaque on its own";
    EXPECT_EQ(picture.at(50, 83), 0xFF8080) << "as transparent as the reference";
    EXPECT_EQ(picture.at(50, 89), kRed);

    request_.isBlack = true;
    EXPECT_EQ(this->picture(drawing({}, lineAt(10, "8=PLAIN;370=100"))).at(50, 10), kBlack);
}

TEST_F(Plot, FillsAreas) {
    const std::string head = "0=HATCH;8=0;62=1;10=0;20=0;30=0;2=P;";
    const std::string pattern = "75=0;76=1;52=0;41=1;77=0;78=1;53=0;43=0;44=0;45=0;46=10;79=2;49=5;49=-5;98=0;";
    const Picture picture = this->picture(drawing(
        {}, head + "70=1;71=0;91=2;" + square(0, 0, 40) + square(10, 10, 20) + "75=0;76=1;98=0;" + head +
                "70=0;71=0;91=1;" + square(50, 0, 40) + pattern +
                "0=SOLID;8=0;62=5;10=0;20=50;11=20;21=50;12=0;22=70;13=20;23=70;"
                "0=LWPOLYLINE;8=0;62=3;90=3;70=0;43=6;10=50;20=60;10=90;20=60;10=90;20=90;"
                "0=WIPEOUT;8=0;10=4;20=54;11=4;21=0;12=0;22=4;13=1;23=1;71=1;91=2;14=-0.5;24=-0.5;14=0.5;24=0.5;"));
    EXPECT_EQ(picture.at(5, 5), kRed);
    EXPECT_EQ(picture.at(20, 20), kWhite) << "an island";
    EXPECT_EQ(picture.at(40.2, 20), kWhite);
    EXPECT_NE(picture.at(52, 10), kWhite) << "a dash of the pattern";
    EXPECT_EQ(picture.at(57, 10), kWhite) << "its gap";
    EXPECT_EQ(picture.at(52, 15), kWhite) << "between its lines";
    EXPECT_EQ(picture.at(92, 10), kWhite) << "beyond the edge";
    EXPECT_EQ(picture.at(2, 52), 0x0000FF);
    EXPECT_EQ(picture.at(6, 56), kWhite) << "covered";
    EXPECT_EQ(picture.at(92.8, 57.2), 0x00FF00) << "the corner of a wide polyline";
    EXPECT_EQ(picture.at(47, 60), kWhite) << "its flat end";
}

TEST_F(Plot, SetsTextsWhereTheyBelong) {
    struct Row {
        const char* tags;
        bool left, right, up, down;  // of the anchor at 50,50
    };
    for (const Row& row :
         {Row{"10=50;20=50", false, true, true, false}, Row{"10=0;20=0;11=50;21=50;72=2", true, false, true, false},
          Row{"10=0;20=0;11=50;21=50;72=1;73=3", true, true, false, true},
          Row{"10=50;20=50;71=2", true, false, true, false}, Row{"10=50;20=50;71=4", false, true, false, true},
          Row{"10=50;20=50;50=180", true, false, false, true},
          Row{"10=50;20=50;210=0;220=0;230=-1", true, false, true, false}}) {
        std::string tags = row.tags;
        // Coordinates of a plane that is seen from below are mirrored.
        if (tags.find("230") != std::string::npos) tags.replace(0, 5, "10=-50");
        const Picture picture = this->picture(drawing({}, "0=TEXT;8=0;40=8;1=HEH;" + tags + ";"));
        const bool isUp = row.up;
        EXPECT_EQ(picture.hasInk(25, isUp ? 52 : 44, 49, isUp ? 56 : 48), row.left) << row.tags;
        EXPECT_EQ(picture.hasInk(51, isUp ? 52 : 44, 75, isUp ? 56 : 48), row.right) << row.tags;
        EXPECT_EQ(picture.hasInk(25, 50.5, 75, 57), row.up) << row.tags;
        EXPECT_EQ(picture.hasInk(25, 43, 75, 49.5), row.down) << row.tags;
        EXPECT_FALSE(picture.hasInk(25, 58.5, 75, 70)) << "capitals are as high as the text: " << row.tags;
    }
    // A character of two surrogates is one, in whatever font has it.
    const Picture rare = this->picture(drawing({}, "0=TEXT;8=0;40=8;1=\\U+D842\\U+DFB7;10=50;20=50;"));
    EXPECT_TRUE(rare.hasInk(50, 50, 57, 58));
    EXPECT_FALSE(rare.hasInk(60, 44, 75, 62));
    // Two paragraphs, the second one in the middle of the width; the anchor is the upper left corner.
    // Two have a ground, one of the paper's colour; a block shows its constant attribute, not the pattern of another.
    const std::string ground = "0=SOLID;8=0;62=5;10=0;20=0;11=20;21=0;12=0;22=48;13=20;23=48;";
    std::string text = drawing(
        "0=BLOCK;8=0;2=B;70=0;10=0;20=0;0=ATTDEF;8=0;10=0;20=0;40=8;1=H;2=HEHEHE;70=2;"
        "0=ATTDEF;8=0;10=0;20=20;40=8;1=H;2=HEHEHE;70=0;0=ENDBLK;8=0;",
        ground +
            "0=MTEXT;8=0;10=8;20=40;40=6;71=1;1=H;90=1;63=3;45=1.5;"
            "0=MTEXT;8=0;10=8;20=20;40=6;71=1;1=H;90=3;63=3;45=1.5;0=INSERT;8=0;2=B;10=50;20=10;"
            "0=MTEXT;8=0;10=0;20=90;40=6;41=100;71=1;1=\\C1!H{\\W1!E}\\P\\pxqc!{\\H2x!I};");
    std::replace(text.begin(), text.end(), '!', ';');
    const Picture picture = this->picture(text);
    EXPECT_TRUE(picture.hasInk(0, 84, 6, 90));
    EXPECT_FALSE(picture.hasInk(0, 50, 40, 83.5));
    EXPECT_EQ(picture.at(7, 41), 0x00FF00);
    EXPECT_EQ(picture.at(7, 21), kWhite);
    EXPECT_TRUE(picture.hasInk(50, 10, 58, 18)) << "the constant attribute";
    EXPECT_FALSE(picture.hasInk(60, 10, 100, 18)) << "its tag";
    EXPECT_FALSE(picture.hasInk(50, 20, 100, 45)) << "a pattern";
    EXPECT_TRUE(picture.hasInk(45, 64, 55, 76)) << "twice as high";
    EXPECT_FALSE(picture.hasInk(45, 77, 55, 90));
}

TEST_F(Plot, SetsTextsInColumns) {
    for (const auto& [version, columns] :
         {std::pair{"AC1032", "101=Embedded Object;70=1;40=20;41=0;71=2;72=3;44=20;45=10;73=0;74=0;46=20;46=40;46=0;"},
          std::pair{"AC1015",
                    "1001=ACAD;1000=ACAD_MTEXT_COLUMN_INFO_BEGIN;1070=75;1070=2;1070=79;1070=0;1070=76;1070=3;"
                    "1070=78;1070=0;1070=48;1040=20;1070=49;1040=10;1070=50;1070=3;1040=20;1040=40;1040=0;"
                    "1000=ACAD_MTEXT_COLUMN_INFO_END;1000=ACAD_MTEXT_COLUMNS_BEGIN;1070=47;1070=3;1005=C2;"
                    "1000=ACAD_MTEXT_COLUMNS_END;0=MTEXT;5=C2;8=0;10=30;20=90;40=6;41=80;71=1;1=H\\NE;"}}) {
        const auto pictureWith = [&, version = version, columns = columns](const std::string& looks) {
            std::string text = drawing({}, "0=MTEXT;8=0;10=0;20=90;40=6;41=20;71=1;" + looks + columns);
            text.replace(text.find("AC1015"), 6, version);
            return this->picture(text);
        };
        // In old drawings the second column's text is another's.
        const std::string shown = version == std::string("AC1032") ? "1=H\\PE\\PH\\NE;" : "1=H\\PE\\P;";
        const Picture picture = pictureWith(shown);
        EXPECT_TRUE(picture.hasInk(0, 72, 8, 90));
        EXPECT_FALSE(picture.hasInk(0, 40, 8, 70)) << "two lines in the first column of " << version;
        EXPECT_TRUE(picture.hasInk(30, 84, 38, 90)) << "one in the second";
        EXPECT_FALSE(picture.hasInk(30, 40, 38, 82));
        EXPECT_TRUE(picture.hasInk(60, 84, 68, 90)) << "the break";
        const Picture grounds = pictureWith("90=1;63=3;45=1.5;" + shown);
        EXPECT_EQ(grounds.at(48, 55), 0x00FF00) << "under the second column";
        EXPECT_EQ(grounds.at(25, 75), kWhite) << "between columns";
    }
}

TEST(TextCodes, AreRead) {
    EXPECT_EQ(plot::lineRuns(L"a^Ib^ c^M^J^")[0].text, L"a b^c^");
    const auto runs = plot::lineRuns(L"%%c100 %%uA%%u%%%5%%065%%x%%");
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[0].text,
              L"\x2300"
              L"100 ");
    EXPECT_TRUE(runs[1].isUnderlined && runs[1].text == L"A");
    EXPECT_EQ(runs[2].text, L"%5A%%x%%");
    EXPECT_FALSE(runs[2].isUnderlined);

    const auto paragraphs =
        plot::paragraphRuns(L"a\\fSimSun|b1|i0;{\\H5;b\\L\\C3;c}\\S1^2;d\\~\\\\\\P\\pi-2,l4,qr;%%p\\Sx/y;{{", 2.5);
    ASSERT_EQ(paragraphs.size(), 2u);
    const auto& first = paragraphs[0].runs;
    ASSERT_EQ(first.size(), 6u);
    EXPECT_TRUE(first[0].font.empty() && !first[0].isBold);
    EXPECT_TRUE(first[1].font == L"SimSun" && first[1].isBold && first[1].height == 2.0 && !first[1].color);
    EXPECT_TRUE(first[2].isUnderlined && first[2].color == 3);
    EXPECT_TRUE(first[3].lift == plot::Lift::Over && first[4].lift == plot::Lift::Under && first[3].text == L"1");
    EXPECT_EQ(first[5].text, L"d\x00A0\\");
    EXPECT_TRUE(paragraphs[1].column == 2 && paragraphs[1].indent == 1.6 && paragraphs[1].firstIndent == -0.8);
    EXPECT_EQ(paragraphs[1].runs[0].text, L"\x00B1");
}

// A block of lines cut to the right half of what it was; leaders with a text; a mesh; what cannot be drawn is counted.
TEST_F(Plot, ShowsClipsLeadersAndMeshes) {
    const std::string lines = "0=LINE;8=0;370=100;10=10;20=0;11=30;21=0;0=LINE;8=0;370=100;10=10;20=10;11=30;21=10;";
    std::string text = drawing(
        "0=BLOCK;8=0;2=B;70=0;10=10;20=0;" + lines + "0=ENDBLK;8=0;",
        "0=INSERT;5=A1;102={ACAD_XDICTIONARY;360=A2;102=};8=0;2=B;10=40;20=20;"
        "0=MULTILEADER;5=A5;8=0;370=100;300=CONTEXT_DATA{;40=1;41=8;140=4;171=1;290=1;304=HEH;12=60;22=70;13=1;23=0;"
        "302=LEADER{;290=1;10=50;20=66;11=1;21=0;40=8;304=LEADER_LINE{;10=10;20=66;305=};303=};301=};291=1;"
        "0=MESH;5=A6;8=0;370=100;92=3;10=10;20=80;30=0;10=30;20=80;30=0;10=10;20=95;30=0;93=4;90=3;90=0;90=1;90=2;94=0;"
        "0=REGION;5=A7;8=0;0=REGION;5=A8;8=0;");
    // Cut when the block lay ten to the left: from the middle on, below the second line.
    text.insert(text.rfind(dxfText("0=EOF")),
                dxfText("0=SECTION;2=OBJECTS;0=DICTIONARY;5=A2;330=A1;3=ACAD_FILTER;360=A3;0=DICTIONARY;5=A3;330=A2;"
                        "3=SPATIAL;360=A4;0=SPATIAL_FILTER;5=A4;330=A3;70=2;10=40;20=15;10=60;20=25;71=1;72=0;73=0;"
                        "40=1;40=0;40=0;40=-20;40=0;40=1;40=0;40=-20;40=0;40=0;40=1;40=0;"
                        "40=1;40=0;40=0;40=0;40=0;40=1;40=0;40=0;40=0;40=0;40=1;40=0;0=ENDSEC;"));
    // The same with a hole in place of an edge: what the first shows is left out.
    std::string inverted = text;
    const std::string filter = dxfText("0=SPATIAL_FILTER;5=A4;");
    inverted.replace(inverted.find(filter), filter.size(),
                     dxfText("0=DICTIONARY;5=AA;330=A4;3=ACAD_XREC_ROUNDTRIP;360=AB;0=XRECORD;5=AB;330=AA;280=1;"
                             "102=ACAD_INVERTEDCLIP_ROUNDTRIP;10=40;20=15;10=60;20=25;"
                             "102=ACAD_INVERTEDCLIP_ROUNDTRIP_COMPARE;10=0;20=0;10=1;20=0;10=1;20=1;") +
                         filter + dxfText("102={ACAD_XDICTIONARY;360=AA;102=};"));
    const Picture hole = this->picture(inverted);
    EXPECT_EQ(hole.at(55, 20), kWhite) << "the hole";
    EXPECT_EQ(hole.at(45, 20), kBlack);
    EXPECT_EQ(hole.at(55, 30), kBlack);
    const Picture picture = this->picture(text);
    EXPECT_EQ(picture.at(55, 20), kBlack);
    EXPECT_EQ(picture.at(45, 20), kWhite) << "cut off";
    EXPECT_EQ(picture.at(55, 30), kWhite) << "cut off";
    EXPECT_EQ(picture.at(30, 66), kBlack) << "the leader's line";
    EXPECT_EQ(picture.at(56, 66), kBlack) << "its foot";
    EXPECT_TRUE(picture.hasInk(60, 62, 78, 70)) << "its text";
    EXPECT_EQ(picture.at(20, 80), kBlack) << "an edge";
    EXPECT_EQ(outcome_.notes, std::vector<std::wstring>{L"Entities of a kind that cannot be drawn: 2 x REGION."});
    // A character for private use, which no font has, is told once.
    this->picture(::drawing("", "0=TEXT;8=0;10=20;20=20;40=5;1=a\\U+F8FE-\\U+F8FE;"));
    EXPECT_EQ(outcome_.notes,
              std::vector<std::wstring>{L"Characters that no installed font has were drawn as boxes: 1 (\xF8FE)."});
}

// A block with the text of its attribute at the end of a leader; attributes in each cell of an array; boxes with texts.
TEST_F(Plot, ShowsBlocksOfLeadersArraysAndTolerances) {
    std::string text = drawing(
        "0=BLOCK;5=C1;8=0;2=C;70=0;10=10;20=0;0=LINE;5=C3;8=0;370=100;10=10;20=0;11=20;21=0;"
        "0=ATTDEF;5=C2;8=0;10=10;20=4;40=6;1=;2=T;70=0;0=ENDBLK;8=0;",
        "0=MULTILEADER;5=A5;8=0;300=CONTEXT_DATA{;290=0;296=1;341=C0;14=0;24=0;34=1;15=40;25=60;35=0;16=2;26=1;36=1;"
        "46=1.5707963;301=};291=0;330=C2;177=0;44=0;302=H;"
        "0=INSERT;5=A6;8=0;66=1;2=C;10=0;20=20;70=2;71=1;44=50;0=ATTRIB;5=A7;8=0;10=20;20=20;40=6;1=H;2=T;70=0;"
        "0=SEQEND;5=A8;8=0;0=TOLERANCE;5=A9;8=0;370=100;3=STANDARD;10=10;20=90;11=1;21=0;1={\\Fgdt!j}%%v0.1%%vA;");
    text.replace(text.find('!'), 1, ";");
    text.insert(text.find(dxfText("0=TABLE;2=LAYER")),
                dxfText("0=TABLE;2=BLOCK_RECORD;70=1;0=BLOCK_RECORD;5=C0;2=C;0=ENDTAB;"));
    const Picture picture = this->picture(text);
    EXPECT_EQ(picture.at(40, 78), kBlack) << "the block, turned and twice as long";
    EXPECT_TRUE(picture.hasInk(29, 60, 36, 70)) << "its attribute";
    EXPECT_EQ(picture.at(58, 20), kBlack) << "the second cell";
    EXPECT_TRUE(picture.hasInk(20, 20, 26, 26));
    EXPECT_TRUE(picture.hasInk(70, 20, 76, 26)) << "its attribute";
    for (const double edge : {10.0, 15.5, 23.25, 27.5})
        EXPECT_EQ(picture.at(edge, 90), kBlack) << edge;
    EXPECT_EQ(picture.at(20, 92.5), kBlack);
    EXPECT_EQ(picture.at(12, 90), kBlack) << "a symbol";
    EXPECT_TRUE(picture.hasInk(17, 88.5, 22, 91.5)) << "a number";
}

TEST_F(Plot, ShowsTheModelInViewports) {
    // One unit of the sheet is ten of the model, turned by a quarter; the layer PLAIN is frozen there.
    const std::string line =
        "0=LINE;8=0;370=100;10=-200;20=0;11=200;21=0;0=LINE;8=PLAIN;370=100;10=0;20=-200;11=0;21=200;";
    const std::string sheet =
        "0=POINT;8=0;67=1;10=0;20=0;0=POINT;8=0;67=1;10=100;20=100;"
        "0=VIEWPORT;8=OFF;67=1;10=50;20=50;40=100;41=100;68=1;69=1;12=0;22=0;45=100;"
        "0=VIEWPORT;8=OFF;67=1;10=50;20=50;40=30;41=30;68=2;69=2;12=0;22=0;16=0;26=0;36=1;45=300;51=90;";
    const std::string frozen =
        "1001=ACAD;1000=MVIEW;1002={;1070=16;1010=0;1020=0;1030=0;1010=0;1020=0;1030=1;1040=0;1040=300;1040=0;1040=0;"
        "1040=50;1040=0;1040=0;1070=0;1070=100;1070=1;1070=3;1070=0;1070=0;1070=0;1070=0;1040=0;1040=0;1040=0;1040=10;"
        "1040=10;1040=10;1040=10;1070=0;1002={;1003=PLAIN;1002=};1002=};";
    std::string text = drawing({}, line + sheet + frozen);
    const std::string version = "AC1015";
    text.replace(text.find(version), version.size(), "AC1009");
    ASSERT_EQ(plot(text, L"Layout1"), PlotFailure::None) << error_.message;
    const Picture picture(request_.file);
    EXPECT_EQ(picture.at(50, 60), kBlack) << "the line upright";
    EXPECT_EQ(picture.at(60, 50), kWhite) << "frozen";
    EXPECT_EQ(picture.at(50, 66), kWhite) << "beyond the viewport";
    EXPECT_EQ(outcome_.layout, L"Layout1");

    EXPECT_EQ(plot(text, L"elsewhere"), PlotFailure::Misuse);
    EXPECT_EQ(error_.message, "there is no layout \"elsewhere\"; the drawing has Model, Layout1");
}

// A viewport gives a layer a colour and a weight of its own.
TEST_F(Plot, ShowsLayersAsTheViewportHasThem) {
    std::string text = drawing({},
                               "0=LINE;8=RED;6=CONTINUOUS;10=-200;20=0;11=200;21=0;"
                               "0=VIEWPORT;5=B1;8=0;67=1;10=0;20=0;40=1;41=1;68=1;69=1;12=0;22=0;45=1;"
                               "0=VIEWPORT;5=B2;8=0;67=1;10=50;20=75;40=100;41=50;68=2;69=2;12=0;22=0;45=50;"
                               "0=VIEWPORT;5=B3;8=0;67=1;10=50;20=25;40=100;41=50;68=3;69=3;12=0;22=0;45=50;");
    const std::string layer = dxfText("0=LAYER;2=RED;");
    text.replace(text.find(layer), layer.size(), dxfText("0=LAYER;5=B4;102={ACAD_XDICTIONARY;360=B5;102=};2=RED;"));
    text.insert(text.rfind(dxfText("0=EOF")),
                dxfText("0=SECTION;2=OBJECTS;0=DICTIONARY;5=B5;330=B4;3=ADSK_XREC_LAYER_COLOR_OVR;360=B6;"
                        "3=ADSK_XREC_LAYER_LINEWT_OVR;360=B7;0=XRECORD;5=B6;330=B5;280=1;102={ADSK_LYR_COLOR_OVERRIDE;"
                        "335=B3;420=-1040187137;102=};0=XRECORD;5=B7;330=B5;280=1;102={ADSK_LYR_LINEWT_OVERRIDE;335=B3;"
                        "91=200;102=};0=ENDSEC;"));
    ASSERT_EQ(plot(text, L"Layout1"), PlotFailure::None) << error_.message;
    const Picture picture(request_.file);
    EXPECT_EQ(picture.at(50, 75), kRed);
    EXPECT_EQ(picture.at(50, 75.8), kWhite);
    EXPECT_EQ(picture.at(50, 25.8), 0x0000FF);
}

TEST_F(Plot, ComesToAnEndWithHostileDrawings) {
    const std::string line = "0=LINE;8=0;370=100;10=0;20=50;11=100;21=50;";
    struct Row {
        std::string blocks, entities;
        bool isNoted;
    };
    // Blocks in blocks deeper than is looked into.
    std::string deep;
    for (int i = 0; i < 70; ++i) {
        const std::string next = "0=INSERT;8=0;2=N" + std::to_string(i + 1) + ";10=0;20=0;";
        deep += "0=BLOCK;8=0;2=N" + std::to_string(i) + ";70=0;10=0;20=0;" + line + next + "0=ENDBLK;8=0;";
    }
    const std::string fine = "75=0;76=1;52=0;41=1;77=0;78=1;53=0;43=0;44=0;45=0;46=0.000001;79=0;98=0;";
    for (const Row& row :
         {Row{"0=BLOCK;8=0;2=A;70=0;10=0;20=0;" + line +
                  "0=INSERT;8=0;2=B;10=0;20=0;0=ENDBLK;8=0;"
                  "0=BLOCK;8=0;2=B;70=0;10=0;20=0;0=INSERT;8=0;2=A;10=0;20=0;0=ENDBLK;8=0;",
              "0=INSERT;8=0;2=A;10=0;20=0;", false},
          Row{deep, "0=INSERT;8=0;2=N0;10=0;20=0;", false},
          Row{{}, line + "0=HATCH;8=0;10=0;20=0;30=0;2=P;70=0;71=0;91=1;" + square(0, 0, 40) + fine, true},
          Row{{}, line + "0=LINE;8=0;6=FINE;10=0;20=20;11=100;21=20;0=XLINE;8=0;6=DASHED;10=0;20=20;11=1;21=0;", false},
          Row{{},
              line + "0=LINE;8=FROZEN;10=-1e300;20=0;11=1e300;21=0;0=TEXT;8=0;60=1;10=0;20=0;40=1e200;1=A;",
              false}}) {
        const Picture picture = this->picture(drawing(row.blocks, row.entities));
        EXPECT_EQ(picture.at(50, 50), kBlack) << row.entities;
        EXPECT_EQ(!outcome_.notes.empty(), row.isNoted) << row.entities;
    }
}

TEST_F(Plot, ComparesTwoDrawings) {
    const auto line = [](const char* handle, int y, int end) {
        return "0=LINE;5=" + std::string(handle) + ";8=0;370=100;10=0;20=" + std::to_string(y) +
               ";11=" + std::to_string(end) + ";21=" + std::to_string(y) + ";";
    };
    const auto first =
        folder_.write("first.dxf", drawing({}, line("A1", 10, 100) + line("A2", 20, 100) + line("A3", 30, 50)));
    std::string text = drawing("0=BLOCK;8=0;2=*PAPER_SPACE0;70=0;10=0;20=0;0=ENDBLK;8=0;",
                               line("A1", 10, 100) + line("A3", 30, 100) + line("A4", 40, 100));
    text.insert(text.find(dxfText("0=TABLE;2=LAYER")),
                dxfText("0=TABLE;2=BLOCK_RECORD;70=1;0=BLOCK_RECORD;5=E0;2=*PAPER_SPACE0;0=ENDTAB;"));
    text.insert(text.rfind(dxfText("0=EOF")),
                dxfText("0=SECTION;2=OBJECTS;0=LAYOUT;5=E1;100=AcDbLayout;1=A1;71=1;330=E0;0=ENDSEC;"));
    const auto second = folder_.write("second.dxf", text);
    ASSERT_EQ(plotComparison(first, second, request_, outcome_, error_), PlotFailure::None) << error_.message;
    const Picture picture(request_.file);
    EXPECT_EQ(picture.at(50, 10), 0xAAAAAA);
    EXPECT_EQ(picture.at(50, 20), 0xD20000) << "gone";
    EXPECT_EQ(picture.at(75, 30), 0x009600) << "changed";
    EXPECT_EQ(picture.at(50, 40), 0x009600) << "new";
    EXPECT_EQ(outcome_.notes, (std::vector<std::wstring>{L"Only the first drawing has the layout \"Layout1\".",
                                                         L"Only the second drawing has the layout \"A1\"."}));
}

// Layers, invisibility and viewports: the same records, seen in one drawing alone.
TEST_F(Plot, ComparesWhatCanBeSeen) {
    constexpr long kGone = 0xD20000;
    constexpr long kNew = 0x009600;
    constexpr long kSame = 0xAAAAAA;
    const std::string block = "0=BLOCK;5=C0;8=0;2=B;70=0;10=0;20=0;" + lineAt(0, "5=C1;8=0;370=100") +
                              lineAt(10, "5=C2;8=PLAIN;370=100") + "0=ENDBLK;5=C3;8=0;";
    const std::string before = lineAt(10, "5=A1;8=RED;6=CONTINUOUS;370=100") + lineAt(15, "5=A2;8=0;370=100;60=1") +
                               lineAt(20, "5=A3;8=FROZEN;370=100") + "0=INSERT;5=A4;8=OFF;2=B;10=0;20=30;" +
                               "0=INSERT;5=A5;8=FROZEN;2=B;10=0;20=50;" + lineAt(70, "5=A6;8=UNPLOTTED;370=100");
    std::string first = drawing(block, before);
    const auto swap = [](std::string text, const std::string& from, const std::string& to) {
        return text.replace(text.find(dxfText(from)), dxfText(from).size(), dxfText(to));
    };
    std::string second = swap(first, "2=RED;70=0;", "2=RED;70=1;");
    second = swap(second, "2=OFF;70=0;62=-1;", "2=OFF;70=0;62=1;");
    second = swap(second, "2=FROZEN;70=1;", "2=FROZEN;70=0;");
    second = swap(second, "290=0;", "290=1;");
    const auto compared = [&](const std::string& a, const std::string& b) {
        EXPECT_EQ(plotComparison(folder_.write("a.dxf", a), folder_.write("b.dxf", b), request_, outcome_, error_),
                  PlotFailure::None)
            << error_.message;
        return Picture(request_.file);
    };
    const Picture shown = compared(first, second);
    const Picture hidden = compared(second, first);
    for (const auto& [y, color] : {std::pair{10.0, kGone},
                                   {15.0, kWhite},
                                   {20.0, kNew},
                                   {30.0, kNew},
                                   {40.0, kSame},
                                   {50.0, kNew},
                                   {60.0, kNew},
                                   {70.0, kNew}}) {
        EXPECT_EQ(shown.at(50, y), color) << y;
        EXPECT_EQ(hidden.at(50, y), color == kGone ? kNew : color == kNew ? kGone : color) << y;
    }

    // What a viewport shows differs where the viewport was moved, but not where a layer was frozen in it alone.
    const std::string sheet = lineAt(0, "5=A1;8=PLAIN;370=100") + lineAt(10, "5=A2;8=0;370=100") +
                              "0=POINT;8=0;67=1;10=0;20=0;0=POINT;8=0;67=1;10=100;20=100;"
                              "0=VIEWPORT;5=B1;8=0;67=1;10=0;20=0;40=1;41=1;68=1;69=1;12=0;22=0;45=1;";
    const auto window = [](const std::string& handle, const char* at) {
        return "0=VIEWPORT;5=" + handle + ";8=0;67=1;10=50;" + at + "40=100;41=30;68=2;69=2;12=50;22=5;45=30;";
    };
    first = drawing({}, sheet + window("B2", "20=20;") + window("B3", "20=60;"));
    second = drawing({}, sheet + window("B2", "20=20;331=D1;") + window("B3", "20=65;"));
    for (std::string* text : {&first, &second})
        *text = swap(*text, "0=LAYER;2=PLAIN;", "0=LAYER;5=D1;2=PLAIN;");
    request_.layout = L"Layout1";
    const Picture sheets = compared(first, second);
    EXPECT_EQ(sheets.at(50, 15), kGone) << "frozen in the viewport";
    EXPECT_EQ(sheets.at(50, 25), kSame);
    EXPECT_EQ(sheets.at(50, 55), kGone) << "where the viewport was";
    EXPECT_EQ(sheets.at(50, 60), kNew) << "where it is";
}

// Records that say the same, on layers that look otherwise in the other drawing.
TEST_F(Plot, ComparesLooks) {
    constexpr long kNew = 0x009600;
    constexpr long kSame = 0xAAAAAA;
    const std::string block = "0=BLOCK;5=C1;8=0;2=B;70=0;10=0;20=0;" + lineAt(0, "5=C2;8=0;370=100") +
                              lineAt(5, "5=C3;8=0;62=3;370=100") + lineAt(10, "5=C4;8=RED;62=0;6=CONTINUOUS;370=100") +
                              lineAt(15, "5=C5;8=PLAIN;6=CONTINUOUS;370=100") + "0=ENDBLK;5=C6;8=0;";
    std::string text = drawing(
        block,
        lineAt(5, "5=A1;8=PLAIN;370=100") + lineAt(10, "5=A2;8=PLAIN") +
            lineAt(15, "5=A3;8=PLAIN;62=3;6=CONTINUOUS;370=100") +
            "0=INSERT;5=A4;8=PLAIN;2=B;10=0;20=20;0=INSERT;5=A5;8=0;2=B;10=0;20=40;"
            "0=MULTILEADER;5=A6;8=PLAIN;6=CONTINUOUS;370=100;300=CONTEXT_DATA{;40=1;41=0;296=1;341=C0;15=0;25=60;"
            "16=1;26=1;36=1;302=LEADER{;10=50;20=85;11=1;21=0;40=8;304=LEADER_LINE{;10=10;20=85;305=};303=};301=};"
            "291=0;");
    text.insert(text.find(dxfText("0=TABLE;2=LAYER")),
                dxfText("0=TABLE;2=BLOCK_RECORD;70=1;0=BLOCK_RECORD;5=C0;2=B;0=ENDTAB;"));
    const struct {
        const char* plain;      // what the layer has in place of its colour
        std::vector<int> news;  // lines, by their height
    } rows[] = {
        {"62=1;", {}},
        {"62=2;", {5, 10, 20, 30, 35, 55, 60, 70, 75, 85}},
        {"62=1;1001=AcCmTransparency;1071=33554559;", {5, 10, 15, 20, 25, 35, 55, 60, 65, 75, 85}},
        {"62=1;370=50;", {10}},
        {"62=1;6=DASHED;", {5, 10, 20, 25, 60, 65}},
        {"62=-1;", {5, 10, 15, 20, 25, 35, 55, 60, 65, 75, 85}},
    };
    for (const auto& row : rows) {
        std::string other = text;
        const std::string layer = dxfText("2=PLAIN;70=0;62=1;");
        other.replace(other.find(layer), layer.size(), dxfText("2=PLAIN;70=0;") + dxfText(row.plain));
        ASSERT_EQ(
            plotComparison(folder_.write("a.dxf", other), folder_.write("b.dxf", text), request_, outcome_, error_),
            PlotFailure::None)
            << error_.message;
        const Picture picture(request_.file);
        for (const int y : {5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 85}) {
            const bool isNew = std::find(row.news.begin(), row.news.end(), y) != row.news.end();
            EXPECT_EQ(picture.at(45, y), isNew ? kNew : kSame) << row.plain << ' ' << y;
        }
    }
}
