// Pipes and sections in drawing files: made, saved, read again, changed, looked at by other programs.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "../folder.h"
#include "support.h"

using namespace suitetest;
namespace fs = std::filesystem;

namespace {

struct Handles {
    AcDbHandle pipe, arc, section, feed;
};

// Two pipes with everything, and two sections.
Handles fill(AcDbDatabase& database) {
    const AcDbObjectId layer = addLayer(database, L"给水-管线");
    const AcDbObjectId texts = addLayer(database, L"给水-管径文字");
    auto* node = new TDbPipeNode;
    node->SetPosition({10, 20, 0.1});
    const AcDbObjectId nodeId = append(database, node);
    AcDbObjectId attachments[2];
    for (AcDbObjectId& id : attachments)
        id = append(database, new TDbPipeAttachment);

    auto* pipe = new TDbPipe;
    EXPECT_EQ(pipe->setLayer(layer), Acad::eOk);
    pipe->setColorIndex(3);
    pipe->SetCurve(TPipeCurve::Line({10, 20, 0.1}, {1.0 / 3, -20, 1e-7}));
    pipe->SetPipeSystemName(L"生活\n𠮷水");
    pipe->SetPipeSysType(-7);
    pipe->SetDimLayerId(texts);
    pipe->SetArrowLayerId(layer);
    pipe->SetStartNode(nodeId);
    for (const AcDbObjectId& id : attachments)
        EXPECT_EQ(pipe->AddAttachment(id), Acad::eOk);
    EXPECT_EQ(pipe->AddAttachment(attachments[0]), Acad::eDuplicateKey);
    EXPECT_EQ(pipe->AddAttachment(nodeId), Acad::eWrongObjectType);
    EXPECT_EQ(pipe->SetEndNode(attachments[0]), Acad::eWrongObjectType);
    EXPECT_EQ(pipe->SetArrowLayerId(nodeId), Acad::eInvalidLayer);
    EXPECT_EQ(pipe->SetCurve(TPipeCurve::Line({0, 0, 0}, {0, 0, HUGE_VAL})), Acad::eInvalidInput);
    auto* arc = new TDbPipe;
    arc->SetCurve(TPipeCurve::Arc({0, 0, 0}, {2, 0, 0}, 1.0));
    EXPECT_NEAR(arc->GetCurve().Length(), 3.14159265358979, 1e-12);

    auto* section = new TDbVerticalSection;
    section->SetCrossPipeFlag(L"J", true);
    section->SetCrossPipeFlag(L"W", false);
    section->SetCrossPipeFlag(7, true);
    return {append(database, pipe).handle(), append(database, arc).handle(), append(database, section).handle(),
            append(database, new TDbVerticalSectionFeed, ACDB_PAPER_SPACE).handle()};
}

template <class Entity>
class Opened : public AcDbObjectPointer<Entity> {
  public:
    Opened(AcDbDatabase& database, AcDbHandle handle, AcDb::OpenMode mode = AcDb::kForRead) {
        AcDbObjectId id;
        database.getAcDbObjectId(id, false, handle);
        this->open(id, mode);
    }
};

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

}  // namespace

TEST(PipeEntities, AreEqualWhenSavedAndReadAgain) {
    AcDbDatabase made;
    acdbHostApplicationServices()->setWorkingDatabase(&made);
    const Handles handles = fill(made);
    const std::string text = DatabaseAccess::bytes(made);
    EXPECT_EQ(countOf(text, "\r\nCLASS\r\n  1\r\nQRS_PIPE\r\n  2\r\nTDbPipe\r\n"), 1u) << "one record for both pipes";
    EXPECT_NE(text.find("TDbPipe\r\n  3\r\nqrs_pipewire\r\n 90\r\n0\r\n 91\r\n2\r\n280\r\n0\r\n281\r\n1\r\n"),
              std::string::npos);

    Sample again(text);
    {
        const Opened<TDbPipe> before(made, handles.pipe), after(*again.database, handles.pipe);
        ASSERT_EQ(after.openStatus(), Acad::eOk);
        EXPECT_EQ(dbtest::taken(after->layer()), L"给水-管线");
        EXPECT_EQ(after->colorIndex(), 3);
        EXPECT_EQ(after->GetPipeSystemName(), L"生活\n𠮷水");
        EXPECT_EQ(after->GetPipeSysType(), -7);
        EXPECT_EQ(after->GetCurve(), before->GetCurve());
        EXPECT_EQ(after->GetDimLayerId(), again.layer(L"给水-管径文字"));
        EXPECT_EQ(after->GetArrowLayerId(), again.layer(L"给水-管线"));
        EXPECT_EQ(after->GetStartNode().handle(), before->GetStartNode().handle());
        EXPECT_TRUE(after->GetEndNode().isNull());
        AcDbObjectIdArray attachments;
        after->GetAttachments(attachments);
        EXPECT_EQ(attachments.length(), 2);
        const AcDbObjectPointer<TDbPipeNode> node(after->GetStartNode());
        EXPECT_EQ(node->GetPosition(), AcGePoint3d(10, 20, 0.1));
        EXPECT_EQ(Opened<TDbPipe>(*again.database, handles.arc)->GetCurve(), TPipeCurve::Arc({0, 0, 0}, {2, 0, 0}, 1));
        const Opened<TDbVerticalSection> section(*again.database, handles.section);
        EXPECT_TRUE(section->GetCrossPipeFlag(L"J") && section->GetCrossPipeFlag(7));
        EXPECT_FALSE(section->GetCrossPipeFlag(L"W") || section->GetCrossPipeFlag(L"?") ||
                     section->GetCrossPipeFlag(8));
        EXPECT_TRUE(section->GetFields().Find(L"W"));
        const Opened<TDbVerticalSectionFeed> feed(*again.database, handles.feed);
        EXPECT_TRUE(feed->GetFields().All().empty());
        EXPECT_EQ(feed->blockId(), again.in<AcDbBlockTable>(ACDB_PAPER_SPACE));
        // Open for reading: nothing can be set.
        EXPECT_EQ(const_cast<TDbPipe*>(after.object())->SetPipeSysType(1), Acad::eNotOpenForWrite);
    }
    EXPECT_EQ(again.changes(), "");
}

TEST(PipeEntities, ChangesTouchTheirTagsAlone) {
    // Spellings, comments, groups, sections and items that somebody else put there stay.
    Sample sample(drawingWith(
        "QRS_PIPE;5=40;330=1F;100=AcDbEntity;8=PIPE;62=     1;100=TDbPipePrototype;1=J;90=        1;290=1;330=FFFF;"
        "330=42;330=43;100=Somebody;1=else;70=abc;100=TDbPipe;999=by hand;70=     1;102={NOTE;1=x;102=};10=1;20=2;"
        "11=+4.0E0;21=5.00;42=.5;40=7.5;340=10;341=EEEE;331=41;1001=PIPE-SERIAL;1000=JL-1;"));
    const AcDbObjectId id = sample.byHandle(0x40);
    {
        AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForWrite);
        pipe->SetCurve(pipe->GetCurve());
        pipe->SetPipeSystemName(L"J");
        pipe->SetDimLayerId(pipe->GetDimLayerId());
        EXPECT_TRUE(pipe->GetArrowLayerId().isNull());
        EXPECT_EQ(pipe->GetCurve(), TPipeCurve::Arc({1, 2, 0}, {4, 5, 0}, 0.5));
    }
    EXPECT_EQ(sample.changes(), "");
    {
        AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForWrite);
        pipe->SetPipeSysType(12);
        pipe->SetArrowLayerId(sample.layer(L"PIPE"));
        pipe->SetEndNode(sample.byHandle(0x41));
        EXPECT_EQ(pipe->RemoveAttachment(sample.byHandle(0x42)), Acad::eOk);
        EXPECT_EQ(pipe->RemoveAttachment(sample.byHandle(0x42)), Acad::eKeyNotFound);
        TPipeCurve curve = pipe->GetCurve();
        curve.end.y = 6;
        pipe->SetCurve(curve);
    }
    EXPECT_EQ(besidePictures(sample.changes()),
              " -90=        1 +90=       12 -330=42 -11=+4.0E0 -21=5.00 +11=4.0 +21=6.0 +31=0.0 -341=EEEE +341=11"
              " +332=41");
    {
        // What is still open when the drawing is saved is written too; a line has no bulge.
        AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForWrite);
        pipe->SetCurve(TPipeCurve::Line({0, 0, 0}, {0, 0, 9}));
        EXPECT_NE(sample.text().find(dbtest::dxfText("31=9.0;40=7.5;")), std::string::npos) << sample.changes();
        EXPECT_EQ(pipe->downgradeOpen(), Acad::eOk);
    }
    const dbtest::Chain serial(AcDbObjectPointer<TDbPipe>(id)->xData(L"PIPE-SERIAL"));
    EXPECT_STREQ(serial->rbnext->resval.rstring, L"JL-1");
}

// What a tag says that is not there holds before and after, so a change of something else does not bring it.
TEST(PipeEntities, KeepWhatTheyDoNotNameUnnamed) {
    const struct {
        const char* tags;
        const char* changes;
    } rows[] = {
        {"100=TDbPipePrototype;100=TDbPipe;10=1;20=2;", " +43=0.5"},
        {"100=TDbPipePrototype;1=;90=x;100=TDbPipe;10=1;20=2;42=0;", " +43=0.5"},
        {"100=TDbPipe;70=x;11=4;21=5;43=0;", " -43=0 +43=0.5"},  // damaged: no start, no prototype
        {"100=TDbPipePrototype;1=J;", " +100=TDbPipe +43=0.5"},
    };
    for (const auto& row : rows) {
        Sample damaged(drawingWith(std::string("QRS_PIPE;5=40;330=1F;100=AcDbEntity;8=PIPE;") + row.tags));
        AcDbObjectPointer<TDbPipe>(damaged.byHandle(0x40), AcDb::kForWrite)->SetLineWidth(0.5);
        EXPECT_EQ(besidePictures(damaged.changes()), row.changes) << row.tags;
        AcDbObjectPointer<TDbPipe>(damaged.byHandle(0x40), AcDb::kForWrite)->SetCurve(TPipeCurve());
        EXPECT_TRUE(AcDbObjectPointer<TDbPipe>(damaged.byHandle(0x40))->GetEndPoint() == AcGePoint3d()) << row.tags;
        EXPECT_NE(damaged.changes().find("+10=0.0"), std::string::npos) << "said, not implied";
    }
    Sample sample(
        drawingWith("QRS_PIPE;5=40;330=1F;100=AcDbEntity;8=PIPE;100=TDbPipePrototype;1=J;90=1;330=42;"
                    "100=TDbPipe;10=1;20=2;11=4;21=5;"));
    const AcDbObjectId id = sample.byHandle(0x40);
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetPipeSysType(12);
    EXPECT_EQ(sample.changes().find("+70="), std::string::npos) << sample.changes();
    AcDbObjectPointer<TDbPipe>(id, AcDb::kForWrite)->SetCurve(TPipeCurve::Arc({1, 2, 0}, {4, 5, 0}, 0.5));
    EXPECT_NE(sample.changes().find("+70=1"), std::string::npos) << sample.changes();
}

TEST(PipeEntities, JoinADrawingInItsOwnForm) {
    Sample newer(dbtest::newerDrawing());
    std::unique_ptr<TDbPipe> lost(new TDbPipe);
    ASSERT_EQ(lost->setLayer(L"pipe"), Acad::eOk);
    EXPECT_EQ(lost->layerId(), newer.layer(L"PIPE"));
    auto* pipe = new TDbPipe;
    pipe->setLayer(L"pipe");
    pipe->setVisibility(AcDb::kInvisible);
    append(*newer.database, pipe, ACDB_PAPER_SPACE);
    EXPECT_EQ(besidePictures(newer.changes()),
              " -5=50 +5=51 +2=CLASSES +0=CLASS +1=QRS_PIPE +2=TDbPipe +3=qrs_pipewire +90=0 +91=1 +280=0 +281=1"
              " +0=ENDSEC +0=SECTION"
              " +0=QRS_PIPE +5=50 +330=1B +100=AcDbEntity +67=1 +8=PIPE +60=1 +100=TDbPipePrototype +1= +90=0"
              " +100=TDbPipe +70=0 +10=0.0 +20=0.0 +30=0.0 +11=0.0 +21=0.0 +31=0.0");
    const AcDbObjectId inBlock = append(*newer.database, new TDbPipe, L"PUMP");
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(inBlock)->blockId(), newer.in<AcDbBlockTable>(L"PUMP"));

    Sample old(dbtest::oldDrawing());
    {
        AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, old.database.get(), AcDb::kForRead);
        EXPECT_EQ(space->appendAcDbEntity(lost.get()), Acad::eNotOpenForWrite);
        space->upgradeOpen();
        EXPECT_EQ(space->appendAcDbEntity(lost.get()), Acad::eNotApplicable) << "R12 has no classes";
        EXPECT_EQ(space->appendAcDbEntity(nullptr), Acad::eNullObjectPointer);
        const std::unique_ptr<AcDbEntity> nothing(new AcDbEntity);
        EXPECT_EQ(space->appendAcDbEntity(nothing.get()), Acad::eNotApplicable);
    }
    EXPECT_EQ(old.changes(), "");
    AcDbDatabase other;
    AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, &other, AcDb::kForWrite);
    EXPECT_EQ(space->appendAcDbEntity(lost.get()), Acad::eInvalidLayer);
    lost->setLayer(other.layerZero());
    EXPECT_EQ(space->appendAcDbEntity(lost.get()), Acad::eOk);
    EXPECT_EQ(space->appendAcDbEntity(lost.get()), Acad::eAlreadyInDb);
    lost.release()->close();
}

TEST(PipeEntities, PassAnotherProgramsAudit) {
    if (std::system("/usr/bin/python3 -c 'import ezdxf' >/dev/null 2>&1") != 0) GTEST_SKIP() << "no other program";
    AcDbDatabase made;
    acdbHostApplicationServices()->setWorkingDatabase(&made);
    fill(made);
    const Folder folder;
    qrs::platform::Error error;
    ASSERT_TRUE(DatabaseAccess::save(made, folder / "pipes.dxf", false, error)) << error.message;
    // It reads, audits, and writes the pipes again, as objects unknown to it.
    std::ofstream(folder / "audit.py") << "import ezdxf, sys\n"
                                          "doc = ezdxf.readfile(sys.argv[1])\n"
                                          "auditor = doc.audit()\n"
                                          "assert not auditor.errors and not auditor.fixes, auditor.errors\n"
                                          "assert len(doc.modelspace().query('QRS_PIPE')) == 2\n"
                                          "doc.saveas(sys.argv[2])\n";
    const auto quoted = [&](const char* name) { return " '" + (folder / name).string() + "'"; };
    EXPECT_EQ(
        std::system(("/usr/bin/python3" + quoted("audit.py") + quoted("pipes.dxf") + quoted("again.dxf")).c_str()), 0);
    const std::unique_ptr<AcDbDatabase> again = DatabaseAccess::open(folder / "again.dxf", error);
    ASSERT_TRUE(again) << error.message;
    const std::string text = DatabaseAccess::bytes(*again);
    EXPECT_NE(text.find("QRS_PIPE"), std::string::npos);
    EXPECT_EQ(countOf(text, "TDbPipePrototype"), 2u);
}
