// Texts in linetypes given other gaps and sizes.
#include "commands.h"
#include "PwxTool.h"

namespace qrs::test {

namespace {

class LinetypeTexts : public ToolCommands {
  protected:
    static std::string line(int handle, const std::string& head) {
        return entity(handle, "LINE;" + head + "100=AcDbLine;10=0;20=0;11=1;21=1;");
    }
    AcDbObjectId linetype(const wchar_t* name) const {
        AcDbObjectId id;
        AcDbLinetypeTablePointer(database(), AcDb::kForRead)->getAt(name, id);
        return id;
    }
    // "30 -2[J x1 @-0.5,-1] -2": lengths, and of a text its scale and its place.
    std::string pattern(const wchar_t* name) const {
        const AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype(name), AcDb::kForRead);
        if (record.openStatus() != Acad::eOk) return "-";
        std::string text;
        double sum = 0;
        for (int i = 0; i < record->numDashes(); ++i) {
            char part[128];
            std::snprintf(part, sizeof part, "%s%.4g", i ? " " : "", record->dashLengthAt(i));
            text += part;
            sum += std::fabs(record->dashLengthAt(i));
            if (record->shapeStyleAt(i).isNull()) continue;
            ACHAR* carried = nullptr;
            record->textAt(i, carried);
            const AcGeVector2d offset = record->shapeOffsetAt(i);
            std::snprintf(part, sizeof part, "[%s x%.4g @%.4g,%.4g]", taken(carried).c_str(), record->shapeScaleAt(i),
                          offset.x, offset.y);
            text += part;
        }
        EXPECT_NEAR(sum, record->patternLength(), 1e-9);
        return text;
    }
    TRegKey settings{GetRegLocation(L"PWXConfig")};
};

}  // namespace

TEST_F(LinetypeTexts, AreSpacedForTheChosenObjectsAlone) {
    ASSERT_TRUE(settings.WriteDouble(L"LineTypeTextGap", -3.0));  // no gap: the usual one counts
    openWith({{"0"}, {"shut", 4}}, line(0x201, "8=0;") + line(0x202, "8=0;6=J;") + line(0x203, "8=shut;6=J;") +
                                       line(0x204, "8=0;6=DASHED;") + line(0x205, "8=0;6=J;"));
    PwxTool::LoadQdLineType(L"DASHED");
    const AcDbObjectId j = PwxTool::LoadQdLineType(L"J");
    AcDbLayerTableRecordPointer(L"0", database(), AcDb::kForWrite)->setLinetypeObjectId(j);
    const std::string before = pattern(L"J");

    const std::string text = told({L"xxyh", L"(handent \"201\")", L"d", L"-1", L"x", L"1.5", L"(handent \"202\")", L"S",
                                   L"0", L"2", L"(handent \"203\")", L"(handent \"204\")", L""});
    EXPECT_NE(text.find("请选择待优化线型的对象[文字间隙1.000(D)/文字放大1.000倍(S)]:<退出>"), std::string::npos)
        << text;
    EXPECT_NE(text.find("请输入文字左右空隙值<1.00>:-1\n"), std::string::npos) << text;
    EXPECT_NE(text.find("请选择待优化线型的对象[文字间隙1.500(D)/文字放大1.000倍(S)]:<退出>"), std::string::npos)
        << text;
    EXPECT_NE(text.find("请输入文字放大倍数<1.00>:2\n"), std::string::npos) << text;
    EXPECT_NE(
        text.find("\n优化了2个对象的线型。\n1个对象在锁定的图层上，没有改动。\n1个对象的线型不带文字，没有改动。"),
        std::string::npos)
        << text;
    EXPECT_EQ(linetypeOf(0x201) + linetypeOf(0x202), "J$1.5$2J$1.5$2");
    EXPECT_EQ(linetypeOf(0x203) + linetypeOf(0x205), "JJ");
    EXPECT_EQ(pattern(L"J"), before);
    const AcDbObjectPointer<AcDbLinetypeTableRecord> base(j, AcDb::kForRead);
    const double height = base->shapeScaleAt(1) * 2.0;
    const double half = -base->shapeOffsetAt(1).x * 2.0;
    const AcDbObjectPointer<AcDbLinetypeTableRecord> spaced(linetype(L"J$1.5$2"), AcDb::kForRead);
    ASSERT_EQ(spaced->numDashes(), 3);
    EXPECT_EQ(spaced->dashLengthAt(0), base->dashLengthAt(0));
    EXPECT_NEAR(spaced->dashLengthAt(1), -(1.5 + half), 1e-9);
    EXPECT_NEAR(spaced->dashLengthAt(2), -(1.5 + half), 1e-9);
    EXPECT_NEAR(spaced->shapeScaleAt(1), height, 1e-9);
    EXPECT_NEAR(spaced->shapeOffsetAt(1).x, -half, 1e-9);
    EXPECT_NEAR(spaced->shapeOffsetAt(1).y, -height / 2.0, 1e-9);

    // The values are the user's from now on; a second run changes nothing, another size starts from the first linetype.
    const std::string after = saved();
    EXPECT_NE(told({L"xxyh", L"(handent \"202\")", L""}).find("[文字间隙1.500(D)/文字放大2.000倍(S)]"),
              std::string::npos);
    EXPECT_EQ(saved(), after);
    told({L"xxyh", L"S", L"1", L"(handent \"202\")", L""});
    EXPECT_EQ(linetypeOf(0x202), "J$1.5$1");
    EXPECT_NEAR(AcDbObjectPointer<AcDbLinetypeTableRecord>(linetype(L"J$1.5$1"))->shapeScaleAt(1), height / 2.0, 1e-9);
    told({L"xxyh", L"D", ScriptTerminal::kEsc});
    EXPECT_NEAR(settings.GetDouble(L"LineTypeTextGap", 0), 1.5, 1e-12);
}

// Linetypes as other programs make them: the text hangs on the dash before its gap, or off the gap's end; two texts in
// one gap; a text on a dash.
TEST_F(LinetypeTexts, OfEveryFormAreFoundAndOthersLeft) {
    const auto record = [](const std::string& handle, const std::string& name, const std::string& dashes, int count) {
        std::string tags;
        for (std::size_t at = 0; at < dashes.size();) {
            const std::size_t equals = dashes.find('=', at);
            const std::size_t end = dashes.find(';', at);
            tags += dashes.substr(at, equals - at) + "\n" + dashes.substr(equals + 1, end - equals - 1) + "\n";
            at = end + 1;
        }
        return "0\nLTYPE\n5\n" + handle + "\n100\nAcDbSymbolTableRecord\n100\nAcDbLinetypeTableRecord\n2\n" + name +
               "\n70\n0\n3\n\n72\n65\n73\n" + std::to_string(count) + "\n40\n10\n" + tags;
    };
    const std::string text = "75=0;340=60;46=2;50=0;44=-1;45=-1;9=A;";
    const std::string tables =
        "0\nTABLE\n2\nLTYPE\n5\n5\n100\nAcDbSymbolTable\n70\n5\n" +
        record("50", "ONDASH", "49=6;74=2;" + text + "49=-4;74=0;", 2) +
        record("51", "UPRIGHT", "49=6;74=0;49=-2;74=2;75=0;340=60;46=2;50=90;44=0;45=0;9=A;49=-2;74=0;", 3) +
        record("52", "TWO", "49=6;74=0;49=-2;74=2;" + text + "49=-2;74=2;" + text + "49=-1;74=0;", 4) +
        record("53", "DRAWN", "49=6;74=2;" + text + "49=4;74=0;", 2) +
        record("54", "LOST$1$2", "49=6;74=0;49=-4;74=2;" + text + "49=-4;74=0;", 3) +
        "0\nENDTAB\n0\nTABLE\n2\nSTYLE\n5\n6\n100\nAcDbSymbolTable\n70\n1\n0\nSTYLE\n5\n60\n100\nAcDbSymbolTableRecord"
        "\n"
        "100\nAcDbTextStyleTableRecord\n2\nS\n70\n0\n40\n0\n41\n1\n50\n0\n71\n0\n42\n2\n3\ntxt\n4\n\n0\nENDTAB\n";
    openWith({{"0"}},
             line(0x201, "8=0;6=ONDASH;") + line(0x202, "8=0;6=UPRIGHT;") + line(0x203, "8=0;6=TWO;") +
                 line(0x204, "8=0;6=DRAWN;") + line(0x205, "8=0;6=BYBLOCK;") + line(0x206, "8=0;6=GONE;") +
                 line(0x207, "8=0;6=LOST$1$2;"),
             tables);
    const std::string shown = told({L"xxyh", L"S", L"3", L"ALL", L""});
    EXPECT_NE(shown.find("\n优化了3个对象的线型。\n4个对象的线型不带文字，没有改动。"), std::string::npos) << shown;
    // A letter of height 6 is 4 long; upright, it is 6 along the line.
    EXPECT_EQ(pattern(L"ONDASH$1$3"), "6 -3[A x6 @-2,-3] -3");
    EXPECT_EQ(pattern(L"UPRIGHT$1$3"), "6 -4[A x6 @3,-2] -4");
    // What it was made from is gone; its text is twice as large already.
    EXPECT_EQ(pattern(L"LOST$1$3"), "6 -2[A x3 @-1,-1.5] -2");
}

TEST_F(LinetypeTexts, AreAskedForInADialogToo) {
    openWith({{"0"}}, line(0x202, "8=0;6=J;"));
    PwxTool::LoadQdLineType(L"J");
    const std::string text = told({L"xxyh2", L"文字左右空隙值=-2", L"文字左右空隙值=2.5", L"文字放大倍数=1000001",
                                   L"文字放大倍数=0.0009", L"", L"ALL", L""});
    EXPECT_EQ(linetypeOf(0x202), "J$2.5$1") << text;
    EXPECT_NE(text.find("文字左右空隙值应在0到1000000之间！"), std::string::npos) << text;
    EXPECT_EQ(count(platform::fromUtf8(text), L"文字放大倍数应在0.001到1000000之间！"), 2u) << text;
    const std::string after = saved();
    told({L"xxyh2", L"文字左右空隙值=9", ScriptTerminal::kEsc, L"ALL", L""});
    EXPECT_EQ(saved(), after);
    EXPECT_NEAR(settings.GetDouble(L"LineTypeTextGap", 0), 2.5, 1e-12);
}

TEST_F(LinetypeTexts, AreNotInDrawingsThatCannotHoldThem) {
    std::string text = drawingText({{"0"}}, {{"0"}});
    text.replace(text.find("AC1021"), 6, "AC1009");
    open(text);
    const AcDbObjectId j = PwxTool::LoadQdLineType(L"J");
    AcDbLayerTableRecordPointer(L"0", database(), AcDb::kForWrite)->setLinetypeObjectId(j);
    const std::string before = saved();
    EXPECT_NE(told({L"xxyh", L"ALL", L""}).find("\n1个对象的线型不带文字，没有改动。"), std::string::npos);
    EXPECT_EQ(saved(), before);
}

}  // namespace qrs::test
