// Damaged pipes: what they lack, or have wrong, is answered as a new one answers.
#include "support.h"

using namespace suitetest;

namespace {

// One pipe's answers, as text.
std::string answers(const TDbPipe& pipe) {
    const TPipeCurve curve = pipe.GetCurve();
    AcDbObjectIdArray attachments;
    pipe.GetAttachments(attachments);
    std::ostringstream told;
    told << (pipe.GetPipeSystemName() == L"J"   ? "J"
             : pipe.GetPipeSystemName().empty() ? "-"
                                                : "?")
         << ' ' << pipe.GetPipeSysType() << ' ' << attachments.length() << ' ' << curve.kind << ' ' << curve.start.x
         << ',' << curve.start.y << ',' << curve.start.z << ' ' << curve.end.x << ',' << curve.end.y << ','
         << curve.end.z << ' ' << curve.bulge << ' ' << !pipe.GetDimLayerId().isNull()
         << !pipe.GetArrowLayerId().isNull() << !pipe.GetStartNode().isNull() << !pipe.GetEndNode().isNull();
    return told.str();
}

std::string answersOf(const std::string& entity) {
    Sample sample(drawingWith(entity));
    const AcDbObjectPointer<TDbPipe> pipe(sample.byHandle(0x40));
    return pipe.openStatus() == Acad::eOk ? answers(*pipe.object()) : "none";
}

std::string with(std::string text, const std::string& part, const std::string& other) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
    return text.replace(text.find(part), part.size(), other);
}

}  // namespace

TEST(DamagedPipes, AnswerWithDefaults) {
    EXPECT_EQ(answersOf(kPipe), "J 1 1 1 1,2,3 4,5,6 0.5 1111");
    const struct {
        const char* part;
        const char* other;
        const char* expected;
    } cases[] = {
        {"1=J;", "", "- 1 1 1 1,2,3 4,5,6 0.5 1111"},
        {"90=1;", "90=many;", "J 0 1 1 1,2,3 4,5,6 0.5 1111"},
        {"90=1;", "90=99999999999;", "J 0 1 1 1,2,3 4,5,6 0.5 1111"},
        {"70=1;", "70=70000;", "J 1 1 0 1,2,3 4,5,6 0.5 1111"},
        {"70=1;", "70=9;", "J 1 1 9 1,2,3 4,5,6 0.5 1111"},
        {"20=2.0;", "20=nan;", "J 1 1 1 0,0,0 4,5,6 0.5 1111"},
        {"30=3.0;", "", "J 1 1 1 1,2,0 4,5,6 0.5 1111"},
        {"11=4.0;21=5.0;31=6.0;", "", "J 1 1 1 1,2,3 1,2,3 0.5 1111"},
        {"11=4.0;", "11=1e999;", "J 1 1 1 1,2,3 1,2,3 0.5 1111"},
        {"42=0.5;", "42=;", "J 1 1 1 1,2,3 4,5,6 0 1111"},
        {"330=42;", "330=41;330=43;330=42;330=DEAD;330=zz;330=42;330=0;", "J 1 1 1 1,2,3 4,5,6 0.5 1111"},
        {"340=10;", "340=41;", "J 1 1 1 1,2,3 4,5,6 0.5 0111"},
        {"341=10;", "341=FFFFFFFFFFFFFFFFFF;", "J 1 1 1 1,2,3 4,5,6 0.5 1011"},
        {"331=41;332=41;", "331=40;332=43;", "J 1 1 1 1,2,3 4,5,6 0.5 1100"},
        {"100=TDbPipePrototype;", "", "- 0 0 1 1,2,3 4,5,6 0.5 1111"},
        {"100=TDbPipe;", "", "J 1 1 0 0,0,0 0,0,0 0 0000"},
        {"100=AcDbEntity;8=PIPE;", "", "J 1 1 1 1,2,3 4,5,6 0.5 1111"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(answersOf(with(kPipe, one.part, one.other)), one.expected) << one.part << " -> " << one.other;
    EXPECT_EQ(answersOf("QRS_PIPE;5=40;"), "- 0 0 0 0,0,0 0,0,0 0 0000");
    // A pipe where none can be: an object of the name is no entity.
    std::string text = drawingWith(kPipe);
    text.insert(text.rfind(dbtest::dxfText("0=ENDSEC")), dbtest::dxfText("0=QRS_PIPE;5=44;330=C"));
    Sample sample(text);
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(sample.byHandle(0x44)).openStatus(), Acad::eNotThatKindOfClass);
}

// Every tag in turn is left out, doubled or spoilt; the pipe is read, changed, saved and read again as it was left.
TEST(DamagedPipes, TakeChangesAllTheSame) {
    const std::string spoilt[] = {"", "=\x01\xff", "=-1", "=FFFFFFFFFFFFFFFF", "=1e308", "={", "=TDbPipe"};
    std::size_t tried = 0;
    for (std::size_t begin = kPipe.find("5=40;"); begin < kPipe.size(); begin = kPipe.find(';', begin) + 1) {
        const std::size_t end = kPipe.find(';', begin);
        const std::string tag = kPipe.substr(begin, end + 1 - begin);
        const std::string code = tag.substr(0, tag.find('='));
        for (std::size_t i = 0; i <= std::size(spoilt); ++i, ++tried) {
            const std::string other = i == std::size(spoilt) ? tag + tag
                                      : spoilt[i].empty()    ? ""
                                                             : code + spoilt[i] + ";";
            std::string text = kPipe;
            text.replace(begin, tag.size(), other);
            Sample sample(drawingWith(text));
            AcDbObjectId id = sample.byHandle(0x40);
            if (id.isNull()) continue;  // the handle itself was spoilt
            std::string left;
            {
                AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForWrite);
                ASSERT_EQ(pipe.openStatus(), Acad::eOk) << other;
                const TPipeCurve curve = TPipeCurve::Arc({7, 8, 9}, {1, 1, 1}, -0.25);
                EXPECT_EQ(pipe->SetCurve(curve), Acad::eOk);
                EXPECT_EQ(pipe->SetPipeSystemName(L"J"), Acad::eOk);
                EXPECT_EQ(pipe->SetPipeSysType(5), Acad::eOk);
                EXPECT_EQ(pipe->SetDimLayerId(sample.layer(L"0")), Acad::eOk);
                EXPECT_EQ(pipe->SetStartNode(sample.byHandle(0x41)), Acad::eOk);
                EXPECT_EQ(pipe->GetCurve(), curve);
                left = answers(*pipe.object());
            }
            Sample again(sample.text());
            const AcDbObjectPointer<TDbPipe> pipe(again.byHandle(0x40));
            ASSERT_EQ(pipe.openStatus(), Acad::eOk) << other;
            EXPECT_EQ(answers(*pipe.object()), left) << tag << " -> " << other;
        }
    }
    EXPECT_GT(tried, 150u);
}

TEST(DamagedPipes, SectionsKeepTheFlagsThatMeanSomething) {
    Sample sample(
        drawingWith("QRS_VERTICALSECTION;5=40;330=1F;100=AcDbEntity;8=PIPE;100=TDbSectionDrawing;290=1;291=1;"
                    "300=J;300=W;290=1;300=J;290=x;91=x;291=1;91=3;291=1;91=4;40=2.5;"));
    {
        AcDbObjectPointer<TDbVerticalSection> section(sample.byHandle(0x40), AcDb::kForWrite);
        ASSERT_EQ(section.openStatus(), Acad::eOk);
        EXPECT_TRUE(section->GetCrossPipeFlag(L"W") && section->GetCrossPipeFlag(3));
        EXPECT_FALSE(section->GetCrossPipeFlag(L"J") || section->GetCrossPipeFlag(4) || section->GetCrossPipeFlag(0));
        section->SetCrossPipeFlag(L"J", true);
        section->SetCrossPipeFlag(4, true);
    }
    Sample again(sample.text());
    const AcDbObjectPointer<TDbVerticalSection> read(again.byHandle(0x40));
    EXPECT_TRUE(read->GetCrossPipeFlag(L"W") && read->GetCrossPipeFlag(3) && read->GetCrossPipeFlag(L"J") &&
                read->GetCrossPipeFlag(4));
    EXPECT_NE(again.text().find(dbtest::dxfText("40=2.5")), std::string::npos);
}
