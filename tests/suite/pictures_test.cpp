// The pictures that pipes carry in drawing files: what they show, when they are drawn anew, and when nothing is
// touched.
#include "host/objectarx/db/pictures.h"

#include <cmath>
#include <initializer_list>
#include <set>

#include "gemat3d.h"
#include "host/drawing/proxygraphics.h"
#include "host/platform/codepage.h"
#include "support.h"

using namespace suitetest;
using namespace qrs::host;

namespace {

std::string numbers(std::initializer_list<double> values) {
    std::ostringstream text;
    for (const double value : values)
        text << ' ' << std::round(value * 1000.0) / 1000.0 + 0.0;
    return text.str();
}

// The shapes of an entity's picture, in short.
std::string shownOf(const Sample& sample, unsigned handle = 0x40) {
    const qrs::dxf::Drawing& drawing = DatabaseAccess::drawing(*sample.database);
    std::string shown;
    const std::string picture = proxyGraphicsOf(drawing, DatabaseAccess::recordOf(sample.byHandle(handle)));
    readProxyGraphics(drawing, picture, [&](const ProxyShape& shape) {
        const ProxyPoint at = shape.points.front();
        const char* const names[] = {"line", "polygon", "circle", "arc", "text", "endless", "ray"};
        shown += names[static_cast<int>(shape.kind)];
        if (shape.traits.isFilled) shown += " filled";
        // What the layer gives is left out.
        if (shape.traits.rgb) shown += " rgb" + numbers({static_cast<double>(*shape.traits.rgb)});
        const int color = shape.traits.colorIndex.value_or(-1);
        if (!shape.traits.rgb && color != 3) shown += " color" + numbers({static_cast<double>(color)});
        const int weight = shape.traits.lineWeight.value_or(-1);
        if (weight != 25) shown += " wide" + numbers({static_cast<double>(weight)});
        if (shape.kind == ProxyShape::Kind::Circle) shown += numbers({at.x, at.y, at.z, shape.radius});
        if (shape.kind == ProxyShape::Kind::Arc)
            shown +=
                numbers({at.x, at.y, shape.radius, shape.direction.x, shape.direction.y, shape.normal.z, shape.sweep});
        if (shape.kind == ProxyShape::Kind::Text)
            shown += numbers({at.x, at.y, shape.height, shape.direction.x, shape.direction.y}) + ' ' +
                     qrs::platform::toUtf8(shape.text);
        if (shape.radius == 0.0 && shape.height == 0.0)
            for (const ProxyPoint& point : shape.points)
                shown += numbers({point.x, point.y}) + (point.z == 0.0 ? "" : numbers({point.z}));
        shown += ';';
        return true;
    });
    return shown;
}

std::string pipeOf(const std::string& tags) {
    return drawingWith("QRS_PIPE;5=40;330=1F;100=AcDbEntity;8=PIPE;100=TDbPipePrototype;1=J;100=TDbPipe;" + tags);
}

std::string attachmentOf(const std::string& tags) {
    return drawingWith("QRS_PIPEATTACHMENT;5=40;330=1F;100=AcDbEntity;8=PIPE;100=TDbPipeAttachment;" + tags);
}

// A picture of somebody else: a circle of another size.
const std::string kForeign =
    "160=72;310=48000000010000004000000002000000000000000000F03F0000000000000000000000000000000000000000000000400000"
    "00000000000000000000000000000000000000000000F03F;";

}  // namespace

TEST(PipePictures, ShowWhatThePipesAre) {
    const struct {
        const char* type;
        const char* tags;
        const char* shown;
    } rows[] = {
        {"PIPE", "10=0;20=0;11=30;21=40;", "line 0 0 30 40;"},
        {"PIPE", "70=1;10=0;20=0;11=2;21=0;42=1;", "arc 1 0 1 -1 0 1 3.142;"},
        {"PIPE", "70=1;10=0;20=0;11=2;21=0;42=-1;", "arc 1 0 1 -1 0 -1 3.142;"},
        {"PIPE", "70=9;10=0;20=0;11=2;21=0;", "line 0 0;line 2 0;"},
        {"PIPE", "10=5;20=6;30=0;11=5;21=6;31=3;43=0.72;", "line wide 70 5 6 5 6 3;circle wide 70 5 6 0 100;"},
        {"PIPE", "11=5;21=6;", ""},  // without a start it is nowhere
        {"PIPENODE", "10=1;20=2;", "line 1 2;"},
        {"PIPENODE", "10=1;20=2;70=1;", "circle 1 2 0 350;"},
        {"PIPENODE", "10=1;20=2;70=1;40=8;", "circle 1 2 0 4;"},
        {"PIPENODE", "10=1;20=2;70=2;40=2;", "line 0 1 2 1;line 2 1 2 3;line 2 3 0 3;line 0 3 0 1;line 0 1 2 3;"},
        {"PIPEATTACHMENT", "10=1;20=2;70=1;", "line 1 2;"},
        {"PIPEATTACHMENT", "1=DN100;10=1;20=2;70=1;50=90;", "text 1 2 300 0 1 DN100;"},
        {"PIPEATTACHMENT", "10=0;20=0;70=2;40=10;50=180;", "polygon filled -5 0 5 -2 5 2;"},
        {"PIPEATTACHMENT", "10=0;20=0;70=3;40=4;",
         "line -2 -1 -2 1;line -2 1 2 -1;line 2 -1 2 1;line 2 1 -2 -1;line 0 -1 0 1;"},
        {"PIPEATTACHMENT", "10=0;20=0;70=7;40=2;",
         "circle 0 0 0 1;line -0.708 -0.708 0.708 0.708;line -0.966 -0.258 0.258 0.966;"
         "line -0.258 -0.966 0.966 0.258;"},
        {"PIPEATTACHMENT", "1=i;10=0;20=0;70=15;40=10;",
         "line 0 -4 7 -4;polygon filled 7 -4 -3 -2 -3 -6;text 0 0 10 1 0 i;"},
        {"PIPEATTACHMENT", "1=i;10=0;20=0;70=15;40=10;50=180;",
         "line 0 -4 -7 -4;polygon filled -7 -4 3 -6 3 -2;text -7 0 10 1 0 i;"},
        {"PIPEATTACHMENT", "1=WL;10=0;20=0;70=16;40=10;", "line 0 0 10 20;line 10 20 30 20;text 13 23 10 1 0 WL;"},
        {"PIPEATTACHMENT", "10=3;20=4;70=99;", "line 3 4;"},
    };
    for (const auto& row : rows) {
        const std::string type = row.type;
        const std::string sections = type == "PIPE"       ? "100=TDbPipePrototype;1=J;100=TDbPipe;"
                                     : type == "PIPENODE" ? "100=TDbPipeNode;"
                                                          : "100=TDbPipeAttachment;";
        std::string text = drawingWith("QRS_" + type + ";5=40;330=1F;100=AcDbEntity;8=PIPE;" + sections + row.tags);
        text.insert(text.find(dbtest::dxfText("9=$CLAYER")), dbtest::dxfText("9=$DIMSCALE;40=100.0;"));
        Sample sample(text);
        renewAllPictures(*sample.database);
        EXPECT_EQ(shownOf(sample), row.shown) << row.type << ' ' << row.tags;
        EXPECT_EQ(renewAllPictures(*sample.database).given, 0U);
    }
    // Every kind has a symbol of its own.
    std::set<std::string> symbols;
    for (int kind = 0; kind <= TDbPipeAttachment::kRoofOutlet; ++kind) {
        Sample sample(attachmentOf("1=a;10=0;20=0;70=" + std::to_string(kind) + ";"));
        renewAllPictures(*sample.database);
        EXPECT_TRUE(symbols.insert(shownOf(sample)).second) << kind;
    }
}

TEST(PipePictures, AreDrawnAnewWhenTheShapeChangesAndOnlyThen) {
    const std::string tags = "10=0;20=0;11=30;21=40;";
    Sample bare(pipeOf(tags));
    const AcDbObjectId id = bare.byHandle(0x40);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetPipeSystemName(L"J");
    EXPECT_EQ(bare.changes(), "") << "nothing was changed";
    DatabaseAccess::beginStep(*bare.database, L"one");
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetPipeSystemName(L"W");
    EXPECT_EQ(shownOf(bare), "line 0 0 30 40;") << "one without a picture gets it with any change";
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetLineWidth(0.5);
    EXPECT_EQ(shownOf(bare), "line wide 50 0 0 30 40;");
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->transformBy(AcGeMatrix3d::translation({1, 2, 0}));
    EXPECT_EQ(shownOf(bare), "line wide 50 1 2 31 42;");
    // So is what tells colour, layer and weight: other programs know the picture alone.
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->setColorIndex(1);
    EXPECT_EQ(shownOf(bare), "line color 1 wide 50 1 2 31 42;");
    AcCmColor color;
    color.setRGB(0, 1, 2);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->setColor(color);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetLineWidth(0.0);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->setLineWeight(AcDb::kLnWt100);
    EXPECT_EQ(shownOf(bare), "line rgb 258 wide 100 1 2 31 42;");
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->setColorIndex(256);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->setLayer(L"0");
    EXPECT_EQ(shownOf(bare), "line color -1 wide 100 1 2 31 42;") << "a block reference may give layer 0 another";
    std::wstring step;
    ASSERT_TRUE(DatabaseAccess::takeBack(*bare.database, step));
    EXPECT_EQ(bare.changes(), "");

    // One without a picture gets it when its colour changes; then it follows its layer, and is known in any colour.
    Sample plain(pipeOf(tags));
    const AcDbObjectId pipe = plain.byHandle(0x40);
    AcDbObjectPointer<TDbPipe>(pipe, AcDb::kForWrite)->setColorIndex(256);
    EXPECT_EQ(plain.changes(), "") << "nothing was changed";
    DatabaseAccess::beginStep(*plain.database, L"one");
    AcDbObjectPointer<TDbPipe>(pipe, AcDb::kForWrite)->setColorIndex(1);
    EXPECT_EQ(shownOf(plain), "line color 1 0 0 30 40;");
    AcDbObjectPointer<TDbPipe>(pipe, AcDb::kForWrite)->setColorIndex(256);
    const auto paintLayer = [](Sample& sample) {
        {
            AcDbObjectPointer<AcDbLayerTableRecord> layer(sample.byHandle(0x11), AcDb::kForWrite);
            AcCmColor blue;
            blue.setColorIndex(5);
            EXPECT_EQ(layer->setColor(blue), Acad::eOk);
            EXPECT_EQ(layer->setLineWeight(AcDb::kLnWt100), Acad::eOk);
        }
        DatabaseAccess::beginStep(*sample.database, L"two");
    };
    paintLayer(plain);
    EXPECT_EQ(shownOf(plain), "line color 5 wide 100 0 0 30 40;");
    EXPECT_EQ(shownOf(plain, 0x41), "") << "the pipe itself was not changed";
    ASSERT_TRUE(DatabaseAccess::takeBack(*plain.database, step));
    EXPECT_EQ(plain.changes(), "");

    // So it follows the scale of symbols.
    Sample scaled(drawingWith("QRS_PIPENODE;5=40;330=1F;100=AcDbEntity;8=PIPE;100=TDbPipeNode;10=1;20=2;70=1;"));
    renewAllPictures(*scaled.database);
    DatabaseAccess::beginStep(*scaled.database, L"three");
    resbuf scale = {};
    scale.restype = RTREAL;
    scale.resval.rreal = 100.0;
    ASSERT_EQ(setHeaderVariable(scaled.database.get(), L"DIMSCALE", scale), Acad::eOk);
    EXPECT_EQ(shownOf(scaled), "circle 1 2 0 350;");
    AcDbObjectPointer<TDbPipeNode>(scaled.byHandle(0x40), AcDb::kForWrite)->setColorIndex(1);
    EXPECT_EQ(shownOf(scaled), "circle color 1 1 2 0 350;");
    ASSERT_TRUE(DatabaseAccess::takeBack(*scaled.database, step));
    EXPECT_EQ(shownOf(scaled), "circle 1 2 0 3.5;");

    // What others drew stays until the pipe looks otherwise.
    std::string foreign = pipeOf(tags);
    const std::size_t end = foreign.find(dbtest::dxfText("100=TDbPipePrototype"));
    // One that shows nothing is nobody's.
    std::string unreadable = foreign;
    Sample broken(unreadable.insert(end, dbtest::dxfText("160=3;310=010203;")));
    AcDbObjectPointer<TDbPipe>(broken.byHandle(0x40), AcDb::kForWrite)->setColorIndex(1);
    EXPECT_EQ(shownOf(broken), "line color 1 0 0 30 40;");
    Sample drawn(foreign.insert(end, dbtest::dxfText(kForeign)));
    const AcDbObjectId other = drawn.byHandle(0x40);
    AcDbObjectPointer<TDbPipe>(other, AcDb::kForWrite)->SetPipeSystemName(L"W");
    AcDbObjectPointer<TDbPipe>(other, AcDb::kForWrite)->SetStartNode(drawn.byHandle(0x41));
    AcDbObjectPointer<TDbPipe>(other, AcDb::kForWrite)->setColorIndex(1);
    EXPECT_EQ(drawn.changes(), " +62=1 -1=J +1=W +331=41");
    paintLayer(drawn);
    EXPECT_EQ(drawn.changes(), " -62=3 +62=5 -370=25 +370=100 +62=1 -1=J +1=W +331=41");
    AcDbObjectPointer<TDbPipe>(other, AcDb::kForWrite)->SetCurve(TPipeCurve::Line({0, 0, 0}, {1, 0, 0}));
    EXPECT_EQ(shownOf(drawn), "line color 1 wide 100 0 0 1 0;");
    // Copies bring theirs along; new entities get one.
    AcDbObjectPointer<TDbPipe>(append(*drawn.database, new TDbPipeNode), AcDb::kForWrite);
    EXPECT_EQ(shownOf(drawn, 0x50), "line color -1 wide -1 0 0;");
    // R12 has no place for pictures.
    std::string old = pipeOf(tags);
    old.replace(old.find("AC1024"), 6, "AC1009");
    Sample r12(old);
    AcDbObjectPointer<TDbPipe>(r12.byHandle(0x40), AcDb::kForWrite)->SetLineWidth(1.0);
    EXPECT_EQ(r12.changes(), " +43=1.0");
    EXPECT_EQ(renewAllPictures(*r12.database).given, 0U);
}

// Sizes and angles follow; a mirrored text can be read, in the place of its image.
TEST(PipePictures, FollowTransformations) {
    AcGeMatrix3d across;  // from left to right
    across(0, 0) = -1.0;
    AcGeMatrix3d down;  // from above to below
    down(1, 1) = -1.0;
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(1.5707963267948966, AcGeVector3d::kZAxis);
    const struct {
        const char* tags;
        AcGeMatrix3d matrix;
        const char* shown;
    } rows[] = {
        {"1=DN50;10=1;20=2;70=1;40=10;", turn, "text -2 1 10 0 1 DN50;"},
        {"1=DN50;10=1;20=2;70=1;40=10;", AcGeMatrix3d::scaling(2.0), "text 2 4 20 1 0 DN50;"},
        {"1=DN50;10=1;20=2;70=1;40=10;", across, "text -29 2 10 1 0 DN50;"},
        {"1=DN50;10=1;20=2;70=1;40=10;", down, "text 1 -12 10 1 0 DN50;"},
        {"1=W;10=0;20=0;70=16;40=10;", across, "line 0 0 10 20;line 10 20 23 20;text 13 23 10 1 0 W;"},
        {"10=0;20=0;70=2;40=10;", across, "polygon filled -5 0 5 -2 5 2;"},
    };
    for (const auto& row : rows) {
        Sample sample(attachmentOf(row.tags));
        AcDbObjectPointer<TDbPipeAttachment>(sample.byHandle(0x40), AcDb::kForWrite)->transformBy(row.matrix);
        EXPECT_EQ(shownOf(sample), row.shown) << row.tags;
    }
    Sample moved(attachmentOf("10=0;20=0;70=2;"));
    AcDbObjectPointer<TDbPipeAttachment>(moved.byHandle(0x40), AcDb::kForWrite)
        ->transformBy(AcGeMatrix3d::translation({1, 0, 0}));
    EXPECT_EQ(moved.changes().find("+50="), std::string::npos) << "what was not named stays unnamed";
}
