// Classes that an application brings: registered, kept in drawings, and gone again.
#include <cmath>

#include "dbfiler.h"
#include "support.h"

using namespace dbtest;

namespace {

// Keeps one value of each kind; tells what its filer said.
class TMarker : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(TMarker)

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override {
        if (AcDbEntity::dxfInFields(filer) != Acad::eOk || filer->atSubclassData(L"Nobody") ||
            !filer->atSubclassData(L"TMarker"))
            return filer->filerStatus();
        resbuf item;
        while (filer->readResBuf(&item) == Acad::eOk) {
            read += std::to_string(item.restype) + " ";
            if (item.restype == 40) radius = item.resval.rreal;
            if (item.restype == 310) bytes.assign(item.resval.rbinary.buf, item.resval.rbinary.clen);
        }
        return Acad::eOk;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        AcDbEntity::dxfOutFields(filer);
        if (writesTooEarly) filer->writeDouble(40, radius);
        filer->writeItem(AcDb::kDxfSubclass, L"TMarker");
        if (writesNonsense) filer->writeInt16(40, 1);
        filer->writeBool(290, true);
        return filer->writeDouble(40, radius);
    }
    double getRadius() const { return assertReadEnabled(), radius; }
    void setRadius(double value) { assertWriteEnabled(), radius = value; }

    std::string read, bytes;
    double radius = 1.0;
    bool writesTooEarly = false;
    bool writesNonsense = false;
};
ACRX_DXF_DEFINE_MEMBERS(TMarker, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 127, TEST_MARKER, "Tests")

Acad::ErrorStatus append(Sample& sample, std::unique_ptr<TMarker>& marker, AcDbObjectId& id) {
    AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, sample.database.get(), AcDb::kForWrite);
    const Acad::ErrorStatus status = space->appendAcDbEntity(id, marker.get());
    if (status == Acad::eOk) marker.release()->close();
    return status;
}

}  // namespace

TEST(DbClasses, ComeAndGoWithTheirApplication) {
    Sample sample(newerDrawing());
    AcDbObjectId id;
    auto marker = std::make_unique<TMarker>();
    EXPECT_EQ(append(sample, marker, id), Acad::eNotApplicable) << "not registered";
    TMarker::rxInit();
    acrxBuildClassHierarchy();
    marker->writesTooEarly = true;
    EXPECT_EQ(append(sample, marker, id), Acad::eInvalidInput);
    marker->writesTooEarly = false;
    marker->writesNonsense = true;
    EXPECT_EQ(append(sample, marker, id), Acad::eInvalidInput);
    marker->writesNonsense = false;
    marker->radius = HUGE_VAL;
    EXPECT_EQ(append(sample, marker, id), Acad::eInvalidInput);
    EXPECT_EQ(sample.changes(), "") << "the drawing is as it was";
    marker->radius = 2.5;
    ASSERT_EQ(append(sample, marker, id), Acad::eOk);
    EXPECT_EQ(id.objectClass(), TMarker::desc());
    EXPECT_NE(sample.text().find(dxfText("1=TEST_MARKER;2=TMarker;3=Tests;90=127;")), std::string::npos);

    const std::string more =
        "310=00ff;310=0;71=99999;10=1.0;20=2.0;5=1F;330=2A;102={X;40=8.0;102=};101=Embedded Object;40=9.0;";
    std::string text = sample.text();
    const std::string end = dxfText("290=1;40=2.5;");
    ASSERT_NE(text.find(end), std::string::npos);
    text.insert(text.find(end) + end.size(), dxfText(more));
    Sample again(text);
    {
        AcDbObjectPointer<TMarker> read(again.byHandle(static_cast<unsigned>(id.handle())), AcDb::kForWrite);
        ASSERT_EQ(read.openStatus(), Acad::eOk);
        EXPECT_EQ(read->getRadius(), 2.5);
        EXPECT_EQ(read->read, "290 40 310 10 5 330 ");
        EXPECT_EQ(read->bytes, std::string("\0\xff", 2));
        read->setRadius(3.5);
        EXPECT_TRUE(read->isModified());
    }
    EXPECT_EQ(again.changes(), " -40=2.5 +40=3.5") << "what it does not write, or another object carries, stays";
    deleteAcRxClass(TMarker::desc());
    const AcDbEntityPointer unknown(again.byHandle(static_cast<unsigned>(id.handle())));
    ASSERT_EQ(unknown.openStatus(), Acad::eOk);
    EXPECT_EQ(TMarker::cast(unknown.object()), nullptr);
    EXPECT_STREQ(unknown->isA()->dxfName(), L"TEST_MARKER");
    // The editor's own classes cannot be taken away.
    deleteAcRxClass(AcDbLayerTableRecord::desc());
    EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(again.layer(L"PIPE")).openStatus(), Acad::eOk);
}
