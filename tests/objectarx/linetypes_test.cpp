// Linetypes that carry texts and shapes.
#include <cmath>

#include "support.h"

using namespace dbtest;

namespace {

using LinetypePointer = AcDbObjectPointer<AcDbLinetypeTableRecord>;

// A line with a text in its gap, added to the sample.
AcDbObjectId addWaterLine(const Sample& sample, AcDbObjectId style) {
    LinetypePointer linetype;
    linetype.create();
    linetype->setName(L"给水");
    linetype->setComments(L"── J ──");
    linetype->setPatternLength(34.5);
    linetype->setNumDashes(3);
    linetype->setDashLengthAt(0, 30.0);
    linetype->setDashLengthAt(1, -2.25);
    linetype->setDashLengthAt(2, -2.25);
    EXPECT_EQ(linetype->setShapeStyleAt(1, AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(linetype->setShapeStyleAt(1, sample.database->layerZero()), Acad::eWrongObjectType);
    // A style of an old drawing has no handle to be named by.
    EXPECT_EQ(linetype->setShapeStyleAt(1, style), style.handle().isNull() ? Acad::eNullHandle : Acad::eOk);
    EXPECT_EQ(linetype->setShapeOffsetAt(1, {-1.5, -1.0}), Acad::eOk);
    EXPECT_EQ(linetype->setShapeScaleAt(1, 3.0), Acad::eOk);
    EXPECT_EQ(linetype->setTextAt(1, L"给J"), Acad::eOk);
    AcDbObjectId id;
    AcDbLinetypeTablePointer table(sample.database.get(), AcDb::kForWrite);
    EXPECT_EQ(table->add(id, linetype.object()), Acad::eOk);
    return id;
}

AcDbObjectId addStyle(const Sample& sample) {
    AcDbObjectPointer<AcDbTextStyleTableRecord> style;
    style.create();
    style->setName(L"线");
    AcDbObjectId id;
    AcDbTextStyleTablePointer table(sample.database.get(), AcDb::kForWrite);
    EXPECT_EQ(table->add(id, style.object()), Acad::eOk);
    return id;
}

std::string textBetween(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t begin = text.find(from);
    return begin == std::string::npos ? text : text.substr(begin, text.find(to, begin) - begin);
}

}  // namespace

TEST(DbLinetypes, CarryTextsInDrawingsThatKnowThem) {
    Sample sample(newerDrawing());
    EXPECT_EQ(sample.database->originalFileVersion(), AcDb::kDHL_1024);
    const AcDbObjectId style = addStyle(sample);
    const AcDbObjectId id = addWaterLine(sample, style);
    EXPECT_EQ(textBetween(sample.changes(), "+2=给水", " +2=STYLE"),
              "+2=给水 +70=0 +3=── J ── +72=65 +73=3 +40=34.5 +49=30.0 +74=0 +49=-2.25 +74=2 +75=0 +340=51 +46=3.0"
              " +50=0.0 +44=-1.5 +45=-1.0 +9=给J +49=-2.25 +74=0");
    LinetypePointer linetype(id, AcDb::kForWrite);
    EXPECT_EQ(linetype->shapeStyleAt(1), style);
    EXPECT_TRUE(linetype->shapeStyleAt(0).isNull() && linetype->shapeStyleAt(9).isNull());
    ACHAR* text = nullptr;
    linetype->textAt(1, text);
    EXPECT_EQ(taken(text), L"给J");
    linetype->textAt(2, text);
    EXPECT_EQ(taken(text), L"");

    // Each change reaches its own dash, and no other tag.
    EXPECT_EQ(linetype->setShapeRotationAt(2, std::acos(-1.0)), Acad::eOk);
    EXPECT_EQ(linetype->setShapeNumberAt(1, 132), Acad::eOk);
    EXPECT_EQ(linetype->setShapeIsUcsOrientedAt(1, true), Acad::eOk);
    EXPECT_EQ(linetype->setIsScaledToFit(true), Acad::eOk);
    EXPECT_EQ(linetype->shapeNumberAt(1), 132);
    EXPECT_DOUBLE_EQ(linetype->shapeRotationAt(2), std::acos(-1.0));
    EXPECT_EQ(linetype->shapeRotationAt(1), 0.0);
    EXPECT_TRUE(linetype->shapeIsUcsOrientedAt(1) && !linetype->shapeIsUcsOrientedAt(2) && linetype->isScaledToFit());
    EXPECT_EQ(textBetween(sample.changes(), "+2=给水", " +2=STYLE"),
              "+2=给水 +70=0 +3=── J ── +72=83 +73=3 +40=34.5 +49=30.0 +74=0 +49=-2.25 +74=5 +75=132 +340=51 +46=3.0"
              " +50=0.0 +44=-1.5 +45=-1.0 +49=-2.25 +74=2 +75=0 +340=0 +46=1.0 +50=180.0 +44=0.0 +45=0.0 +9=");

    // Fewer dashes take along what they carried; new ones carry nothing.
    linetype->setNumDashes(1);
    linetype->setNumDashes(2);
    linetype->setDashLengthAt(1, -2.0);
    EXPECT_EQ(textBetween(sample.changes(), "+73=2", " +2=STYLE"), "+73=2 +40=34.5 +49=30.0 +74=0 +49=-2.0 +74=0");
    EXPECT_EQ(linetype->setTextAt(2, L"x"), Acad::eInvalidIndex);
    EXPECT_EQ(linetype->setTextAt(1, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(linetype->setShapeStyleAt(1, Sample(newerDrawing()).layer(L"0")), Acad::eWrongDatabase);
}

TEST(DbLinetypes, LoseTheirTextsInOldDrawings) {
    Sample sample(oldDrawing());
    EXPECT_EQ(sample.database->originalFileVersion(), AcDb::kDHL_1009);
    const AcDbObjectId id = addWaterLine(sample, addStyle(sample));
    EXPECT_EQ(textBetween(sample.changes(), "+73=     3", " +0="), "+73=     3 +40=34.5 +49=30.0 +49=-2.25 +49=-2.25");
    LinetypePointer linetype(id, AcDb::kForWrite);
    const std::string before = sample.text();
    EXPECT_EQ(linetype->setTextAt(1, L"J"), Acad::eNotApplicable);
    EXPECT_EQ(linetype->setShapeScaleAt(1, 2.0), Acad::eNotApplicable);
    EXPECT_EQ(sample.text(), before);
}
