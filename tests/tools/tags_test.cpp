// Tags of entities: put on from the panel, cleared by the command.
#include "commands.h"
#include "tools/layertag.h"

namespace qrs::test {

namespace {

class Tags : public ToolCommands {
  protected:
    static std::string line(int handle, const std::string& layer, const std::string& xdata) {
        return entity(handle, "LINE;8=" + layer + ";100=AcDbLine;10=0;20=0;11=1;21=1;" + xdata);
    }
    std::string tagOf(int handle) const {
        const AcDbEntityPointer opened(byHandle(handle), AcDb::kForRead);
        return platform::toUtf8(tools::layerTag(*opened.object()).GetString());
    }
    const std::string asked = "请选择要清除建筑标识的图元[清除全部A]<退出>";
    const std::string apps =
        "0\nTABLE\n2\nAPPID\n5\n3\n100\nAcDbSymbolTable\n70\n2\n0\nAPPID\n5\n30\n"
        "100\nAcDbSymbolTableRecord\n100\nAcDbRegAppTableRecord\n2\nLAYER-TAG\n70\n0\n0\nENDTAB\n";
};

constexpr const char* kArchitecture = "1001=LAYER-TAG;1000=建筑;";

}  // namespace

TEST_F(Tags, OfArchitectureAreClearedFromPickedEntitiesOrFromAll) {
    openWith({{"0"}, {"shut", 4}, {"off", 0, -7}},
             line(0x201, "0", kArchitecture) + line(0x202, "0", "1001=LAYER-TAG;1000=给排水;") +
                 line(0x203, "shut", kArchitecture) +
                 line(0x204, "off", std::string("1001=PIPE-SERIAL;1000=JL-1;") + kArchitecture) + line(0x205, "0", "") +
                 line(0x206, "0", "67=1;" + std::string(kArchitecture)),
             apps);
    EXPECT_NE(told({L"CleanOvraLayTag", ScriptTerminal::kEsc}).find(asked), std::string::npos);
    EXPECT_NE(
        told({L"CleanOvraLayTag", L"(handent \"202\")", L"(handent \"205\")", L""}).find("没有找到带建筑标识的图元！"),
        std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_NE(
        told({L"CleanOvraLayTag", L"(handent \"201\")", L"(handent \"202\")", L""}).find("\n清除了1个图元的建筑标识。"),
        std::string::npos);
    EXPECT_EQ(tagOf(0x201) + tagOf(0x202) + tagOf(0x203), "给排水建筑");
    const std::string all = told({L"CleanOvraLayTag", L"a"});
    EXPECT_NE(all.find("\n清除了2个图元的建筑标识。\n1个图元在锁定的图层上，没有清除。"), std::string::npos) << all;
    EXPECT_EQ(tagOf(0x203) + tagOf(0x204) + tagOf(0x206), "建筑");
    EXPECT_NE(saved().find("1001\nPIPE-SERIAL\n1000\nJL-1\n"), std::string::npos);
}

TEST_F(Tags, ArePutOnFromThePanelInDrawingsThatNeverHadThem) {
    // An entity holds 16 KB of extended data; that of another program leaves no room on the last one.
    std::string full = "1001=ACAD;";
    for (int i = 0; i < 82; ++i)
        full += "1000=" + std::string(196, 'x') + ";";
    openWith({{"0"}, {"shut", 4}},
             line(0x201, "0", "") + line(0x202, "shut", "") + line(0x203, "0", "") + line(0x204, "0", full));
    EXPECT_NE(told({L"gpsbs"}).find("此命令不能单独使用"), std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
    terminal.script = {L"ALL", L""};
    terminal.transcript.clear();
    tools::tagPicked(tools::kPlumbingTag);
    EXPECT_EQ(tagOf(0x201) + tagOf(0x202) + tagOf(0x203), "给排水给排水");
    terminal.script = {L"ALL", L""};
    tools::tagPicked(tools::kPlumbingTag);
    const std::string text = platform::toUtf8(terminal.transcript);
    EXPECT_NE(text.find("\n请选择要加给排水标识的图元<退出>:ALL"), std::string::npos) << text;
    EXPECT_NE(text.find("\n2个图元加了给排水标识。\n1个图元在锁定的图层上，没有加标识。\n1个图元不能修改，"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n0个图元加了给排水标识。\n2个图元已有该标识，没有改动。"), std::string::npos) << text;
}

}  // namespace qrs::test
