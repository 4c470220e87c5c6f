// Pipes brought in line with the standard, and their interfaces counted.
#include "commands.h"

namespace qrs::test {

namespace {

using testing::Test;

class Pipes : public ToolCommands {
  protected:
    static std::string pipe(int handle, const std::string& head, const std::string& system, const std::string& path) {
        return entity(handle, "QRS_PIPE;" + head + "100=TDbPipePrototype;" + system + "100=TDbPipe;" + path);
    }
    static std::string attachment(int handle, const std::string& layer, const std::string& kind) {
        return entity(handle, "QRS_PIPEATTACHMENT;8=" + layer + ";100=TDbPipeAttachment;10=0;20=0;" + kind);
    }
    double widthOf(int handle) const {
        return AcDbObjectPointer<TDbPipe>(byHandle(handle), AcDb::kForRead)->GetLineWidth();
    }
};

}  // namespace

TEST_F(Pipes, TakeLayersWidthAndNameOfTheCurrentStandardOnce) {
    // 43 stands for the layer "old text"; the attachments are 210 to 214.
    openWith(
        {{"0"}, {"old"}, {"shut", 4}, {"old text"}, {"给排-污水-管线"}},
        pipe(0x201, "8=old;", "1=生活给水;330=210;330=211;330=212;330=213;330=214;", "10=0;20=0;11=9;21=0;340=43;") +
            pipe(0x202, "8=old;", "1=给水;", "10=1;20=1;30=0;11=1.05;21=1;31=3;43=0;") +
            pipe(0x203, "8=shut;", "1=生活给水;", "10=0;20=0;11=9;21=0;") +
            entity(0x204, "QRS_PIPE;8=old;100=TDbPipePrototype;1=生活给水;") +
            pipe(0x205, "8=old;", "1=某系统;", "10=0;20=0;11=9;21=0;") +
            pipe(0x206, "8=给排-污水-管线;", "90=0;", "10=0;20=0;11=9;21=0;") +
            entity(0x207, "LINE;8=old;100=AcDbLine;10=0;20=0;11=1;21=1;") + attachment(0x210, "old", "70=1;") +
            attachment(0x211, "old text", "") + attachment(0x212, "old", "") + attachment(0x213, "shut", "70=2;") +
            attachment(0x214, "old", "70=2;"));
    const std::string first = told({L"gxgd", L""});
    EXPECT_NE(first.find("请选择需要更新的管线<全图>:\n"), std::string::npos) << first;
    EXPECT_NE(first.find("\n共更新了3根管线。\n1根管线在锁定的图层上，没有更新。\n1根管线的数据已损坏，没有更新。\n"
                         "1根管线的系统不在当前标准中，没有更新。\n1个管线附件在锁定的图层上，没有更新。\n"),
              std::string::npos)
        << first;
    EXPECT_EQ(layerOf(0x201), "给排-生活给水-管线");
    EXPECT_EQ(layerOf(0x202), "给排-生活给水-立管");
    EXPECT_EQ(layerOf(0x203), "shut");
    EXPECT_EQ(layerOf(0x205), "old");
    EXPECT_EQ(layerOf(0x206), "给排-污水-管线");
    EXPECT_EQ(layerOf(0x210) + layerOf(0x211), "给排-生活给水-管径文字给排-生活给水-管径文字");
    EXPECT_EQ(layerOf(0x212) + layerOf(0x213), "oldshut");
    EXPECT_EQ(layerOf(0x214), nameOf(AcDbObjectPointer<TDbPipe>(byHandle(0x201))->GetArrowLayerId()));
    EXPECT_EQ(nameOf(AcDbObjectPointer<TDbPipe>(byHandle(0x201))->GetDimLayerId()), "给排-生活给水-管径文字");
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(byHandle(0x202))->GetPipeSystemName(), L"生活给水");
    EXPECT_TRUE(AcDbObjectPointer<TDbPipe>(byHandle(0x206))->GetPipeSystemName().empty());
    EXPECT_EQ(widthOf(0x201), 0.5);
    EXPECT_EQ(widthOf(0x203), 0.0);
    EXPECT_TRUE(QrsExport::GetLayerIdFromString(L"给排-污水-立管").isNull()) << "made though nothing lies on it";

    const std::string after = saved();
    const std::string second = told({L"gxgd", L"ALL", L""});
    EXPECT_NE(second.find("\n3根管线与当前标准一致，没有改动。"), std::string::npos) << second;
    EXPECT_EQ(second.find("共更新了"), std::string::npos) << second;
    EXPECT_EQ(saved(), after);
}

TEST_F(Pipes, OfThoseSelectedAloneAreUpdatedAndEscLeavesAll) {
    openWith({{"0"}}, pipe(0x201, "8=0;", "1=生活给水;", "10=0;20=0;11=9;21=0;") +
                          pipe(0x202, "8=0;", "1=生活给水;", "10=0;20=0;11=9;21=0;") +
                          entity(0x207, "LINE;8=0;100=AcDbLine;10=0;20=0;11=1;21=1;"));
    told({L"gxgd", ScriptTerminal::kEsc});
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_NE(told({L"gxgd", L"(handent \"207\")", L""}).find("\n没有找到管线！"), std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_NE(told({L"gxgd", L"(handent \"202\")", L"(handent \"207\")", L""}).find("\n共更新了1根管线。"),
              std::string::npos);
    EXPECT_EQ(layerOf(0x201), "0");
    EXPECT_EQ(layerOf(0x202), "给排-生活给水-管线");
}

// A run along x with a branch at 4, one beside it, a crossing one that ends nowhere near, an arc and a riser.
TEST_F(Pipes, CountTheirEndsAndThoseThatMeetThem) {
    const auto line = [](int handle, const std::string& path) { return pipe(handle, "8=0;", "1=生活给水;", path); };
    openWith({{"0"}}, line(0x201, "10=0;20=0;11=9;21=0;331=210;") + line(0x202, "10=4;20=0.05;11=4;21=7;") +
                          line(0x203, "10=9;20=0;11=20;21=0;332=211;") + line(0x204, "10=6;20=-5;11=6;21=5;") +
                          line(0x205, "10=2;20=0;30=0.5;11=2;21=8;31=0.5;") +
                          line(0x206, "70=1;10=20;20=0;11=30;21=0;42=1;") + line(0x207, "10=25;20=-5;11=25;21=-9;") +
                          line(0x208, "10=25;20=5;11=25;21=9;") + line(0x209, "10=4;20=7;30=-1;11=4;21=7;31=3;") +
                          entity(0x20A, "QRS_PIPE;8=0;100=TDbPipePrototype;") +
                          entity(0x20B, "LINE;8=0;100=AcDbLine;10=4;20=0;11=4;21=9;") +
                          entity(0x210, "QRS_PIPENODE;8=0;100=TDbPipeNode;10=100;20=100;") +
                          entity(0x211, "QRS_PIPENODE;8=0;100=TDbPipeNode;10=20;20=0.1;70=1;"));
    const auto counted = [&](const wchar_t* handle) {
        const std::string text = told({L"jcjk", std::wstring(L"(handent \"") + handle + L"\")"});
        const std::string sentence = "\n该对象的接口数为";
        const std::size_t at = text.find(sentence);
        EXPECT_NE(text.find("\n1根管线的数据已损坏，没有计入。"), std::string::npos) << text;
        return at == std::string::npos ? -1 : std::stoi(text.substr(at + sentence.size()));
    };
    EXPECT_EQ(counted(L"201"), 3) << "the branch; neither the run's next pipe, the crossing nor the higher one";
    EXPECT_EQ(counted(L"204"), 2);
    EXPECT_EQ(counted(L"206"), 3) << "the pipe below; the arc turns counterclockwise, so none lies above";
    EXPECT_EQ(counted(L"209"), 3) << "the branch ends at the riser, between its ends";
    EXPECT_EQ(counted(L"210"), 1) << "tied to it, though far away";
    EXPECT_EQ(counted(L"211"), 2);
    const std::string text = told({L"jcjk", L"(handent \"20B\")", L"(handent \"20A\")", L"(handent \"FFF\")", L""});
    EXPECT_EQ(count(platform::fromUtf8(text), L"所选对象不是管线对象"), 2u) << text;
    EXPECT_EQ(text.find("接口数为"), std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
}

}  // namespace qrs::test
