// Blocks rebuilt from chosen entities.
#include "commands.h"
#include "tools/drawing.h"

namespace qrs::test {

namespace {

class Blocks : public ToolCommands {
  protected:
    // Block "B" (1E, base point 1,1) holds a line and an attribute definition; 201 shows it at 100,0, twice as large
    // and turned by a quarter; 202 shows it plainly.
    void openBlocks(const std::string& inSpace, const std::string& scale = "41=2;42=2;43=2;") {
        std::string text = drawingText({{"0"}, {"shut", 4}}, {});
        const std::string reference = "100=AcDbBlockReference;2=B;";
        text.insert(text.rfind("0\nENDSEC\n0\nEOF"),
                    entity(0x201, "INSERT;8=0;" + reference + "10=100;20=0;30=0;" + scale + "50=90;") +
                        entity(0x202, "INSERT;8=0;" + reference + "10=0;20=0;30=0;") + inSpace);
        text.insert(text.find("0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS"),
                    "0\nBLOCK_RECORD\n5\n1E\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\nB\n");
        const std::string begin = "0\nSECTION\n2\nBLOCKS\n";
        text.insert(
            text.find(begin) + begin.size(),
            entity(0x22, "BLOCK;8=0;100=AcDbBlockBegin;2=B;70=2;10=1;20=1;30=0;3=B;1=;", "1E") +
                entity(0x24, "LINE;8=0;100=AcDbLine;10=0;20=0;11=5;21=5;", "1E") +
                entity(0x25, "ATTDEF;8=0;100=AcDbText;10=0;20=0;40=1;1=x;100=AcDbAttributeDefinition;3=?;2=T;70=0;",
                       "1E") +
                entity(0x23, "ENDBLK;8=0;100=AcDbBlockEnd;", "1E"));
        open(text);
    }
    // The entities of the block by kind, lines with their ends, circles with centre and radius.
    std::string content() const {
        std::string text;
        for (const AcDbObjectId& id : tools::entitiesOf(byHandle(0x1E), nullptr)) {
            char part[128] = "";
            const AcDbObjectPointer<AcDbLine> line(id);
            const AcDbObjectPointer<AcDbCircle> circle(id);
            const AcDbObjectPointer<TDbPipe> pipe(id);
            if (line.openStatus() == Acad::eOk)
                std::snprintf(part, sizeof part, " %.6g,%.6g>%.6g,%.6g", line->startPoint().x, line->startPoint().y,
                              line->endPoint().x, line->endPoint().y);
            if (circle.openStatus() == Acad::eOk)
                std::snprintf(part, sizeof part, " %.6g,%.6g r%.6g", circle->center().x, circle->center().y,
                              circle->radius());
            if (pipe.openStatus() == Acad::eOk)
                std::snprintf(part, sizeof part, " %.6g,%.6g>%.6g,%.6g", pipe->GetStartPoint().x,
                              pipe->GetStartPoint().y, pipe->GetEndPoint().x, pipe->GetEndPoint().y);
            text += platform::toUtf8(id.objectClass()->dxfName()) + part + "; ";
        }
        return text;
    }
    bool isThere(int handle) const { return byHandle(handle).isValid() && !byHandle(handle).isErased(); }

    const std::string entities = entity(0x210, "LINE;8=0;100=AcDbLine;10=100;20=0;11=100;21=20;") +
                                 entity(0x211, "CIRCLE;8=0;100=AcDbCircle;10=102;20=0;40=4;") +
                                 entity(0x212, "LINE;8=shut;100=AcDbLine;10=0;20=0;11=1;21=1;") +
                                 entity(0x213,
                                        "QRS_PIPE;8=0;100=TDbPipePrototype;1=J;330=214;100=TDbPipe;10=100;20=2;"
                                        "11=100;21=4;") +
                                 entity(0x214, "QRS_PIPEATTACHMENT;8=0;100=TDbPipeAttachment;10=100;20=3;");
};

}  // namespace

TEST_F(Blocks, AreRebuiltAsTheReferenceShowsThem) {
    openBlocks(entities);
    const std::string text =
        told({L"cztk", L"(handent \"210\")", L"(handent \"201\")", L"ALL", L"R", L"(handent \"202\")", L""});
    EXPECT_NE(text.find("请选择需要重置的图块<退出>:(handent \"210\")\n所选对象不是图块！"), std::string::npos) << text;
    EXPECT_NE(text.find("请选择构造新块需要的图元<退出>:ALL"), std::string::npos) << text;
    EXPECT_NE(text.find("\n1个图元在锁定的图层上，没有放入图块。\n1个图元就是该图块或含有该图块，没有放入图块。\n"
                        "图块已由4个图元重新构造。"),
              std::string::npos)
        << text;
    // Turned back by a quarter, halved, put beside the base point.
    EXPECT_EQ(content(), "ATTDEF; LINE 1,1>11,1; CIRCLE 1,0 r2; QRS_PIPE 2,1>3,1; QRS_PIPEATTACHMENT; ");
    EXPECT_TRUE(isThere(0x201) && isThere(0x202) && isThere(0x212));
    EXPECT_FALSE(isThere(0x210) || isThere(0x211) || isThere(0x213) || isThere(0x214));
    AcDbObjectIdArray attachments;
    for (const AcDbObjectId& id : tools::entitiesOf(byHandle(0x1E), TDbPipe::desc()))
        AcDbObjectPointer<TDbPipe>(id)->GetAttachments(attachments);
    ASSERT_EQ(attachments.length(), 1);
    EXPECT_EQ(AcDbEntityPointer(attachments[0])->ownerId(), byHandle(0x1E));
}

// Mirrored and then turned: taken back in the other order.
TEST_F(Blocks, AreRebuiltFromMirroredReferences) {
    openBlocks(entities, "41=2;42=-2;43=2;");
    told({L"cztk", L"(handent \"201\")", L"(handent \"210\")", L"(handent \"213\")", L""});
    EXPECT_EQ(content(), "ATTDEF; LINE 1,1>11,1; QRS_PIPE 2,1>3,1; ");
}

TEST_F(Blocks, StayAsTheyAreWhenNothingCanBeTakenOrWritten) {
    openBlocks(entities, "41=2;42=3;43=2;");
    told({L"cztk", L""});
    told({L"cztk", L"(handent \"201\")", L""});
    EXPECT_NE(told({L"cztk", L"(handent \"201\")", L"(handent \"202\")", L""}).find("没有可以放入图块的图元"),
              std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
    const std::string text = told({L"cztk", L"(handent \"201\")", L"(handent \"210\")", L"(handent \"211\")", L""});
    EXPECT_NE(text.find("\n2个图元不能按图块的比例和方向改写，图块没有改动。"), std::string::npos) << text;
    EXPECT_EQ(content(), "LINE 0,0>5,5; ATTDEF; ");
    EXPECT_TRUE(isThere(0x210) && isThere(0x211));
}

}  // namespace qrs::test
