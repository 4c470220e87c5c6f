// The tree: borrowed layers, renaming, moving, ownership, copies.
#include <gtest/gtest.h>

#include "PipeNodes.h"

namespace {

LayerNode* makeLayer(const wchar_t* type, const wchar_t* name, const wchar_t* system = L"") {
    auto* layer = new LayerNode;
    layer->LayerType = type;
    layer->LayerName = name;
    layer->SystemName = system;
    return layer;
}

PipeNode* makeSystem(const wchar_t* name, const wchar_t* original = L"") {
    auto* system = new PipeNode;
    system->PipeName = name;
    system->PipeOriginalName = original;
    system->AddLayerNode(makeLayer(L"管线", (CString(name) + L"-pipe").GetString()));
    return system;
}

TEST(PipeNode, BorrowsTheLayerOfTheGenericType) {
    PipeNode system;
    LayerNode* dim = makeLayer(L"标注", L"P-Dim");
    system.AddLayerNode(dim);
    EXPECT_EQ(system.FindLayerNode(L"标高"), dim);
    EXPECT_EQ(system.FindLayerNode(L"管径文字"), nullptr);
    EXPECT_EQ(system.CountLayer(L"p-dim"), 13);  // its own type and the twelve that fall back to it
    PipeInfoNode info;
    system.GetPipeInfo(info, false);
    EXPECT_EQ(info.LayerNames.size(), 1u);
    system.GetPipeInfo(info, true);
    EXPECT_EQ(info.LayerNames.size(), 13u);

    LayerNode* level = makeLayer(L"标高", L"P-Level");
    system.AddLayerNode(level);
    EXPECT_EQ(system.FindLayerNode(L"标高"), level);
    EXPECT_FALSE(system.IsAlias(L"标高"));
    EXPECT_EQ(system.CountLayer(L"P-DIM"), 12);

    system.DelLayerNode(level);
    EXPECT_EQ(system.FindLayerNode(L"标高"), dim);
    LayerNode stranger;
    system.DelLayerNode(&stranger);
    system.DelLayerNode(nullptr);
    EXPECT_EQ(system.GetLayerNum(), 1);
    system.DelLayerNode(dim);
    EXPECT_EQ(system.FindLayerNode(L"标高"), nullptr);
    EXPECT_EQ(system.CountLayer(L"P-Dim"), 0);
}

TEST(PipeNode, MappingsOfItsOwnWinAndDoNotChain) {
    PipeNode system;
    LayerNode* dim = makeLayer(L"标注", L"dim");
    LayerNode* text = makeLayer(L"文字", L"text");
    system.AddLayerNode(dim);
    system.AddLayerNode(text);
    EXPECT_TRUE(system.IsDefaultMapping(L"标高"));
    system.SetLayerTypeMapping(L"标高", L"文字");
    system.SetLayerTypeMapping(L"室外标高", L"标高");  // an alias is no layer of its type
    system.SetLayerTypeMapping(L"零", L"坐标");
    system.UpdateLayerTypeMap();
    EXPECT_EQ(system.FindLayerNode(L"标高"), text);
    EXPECT_EQ(system.FindLayerNode(L"室外标高"), nullptr);
    EXPECT_EQ(system.FindLayerNode(L"零"), nullptr);
    EXPECT_FALSE(system.IsDefaultMapping(L"标高"));
    EXPECT_FALSE(system.IsDefaultMapping(L"室外标高"));
    EXPECT_TRUE(system.IsDefaultMapping(L"坐标"));
}

TEST(PipeNode, LaterLayerOfATypeAnswers) {
    PipeNode system;
    LayerNode* first = makeLayer(L"管线", L"first");
    LayerNode* second = makeLayer(L"管线", L"second");
    system.AddLayerNode(first);
    system.AddLayerNode(second);
    EXPECT_EQ(system.GetLayerNum(), 2);
    EXPECT_EQ(system.FindLayerNode(0), first);
    EXPECT_EQ(system.FindLayerNode(2), nullptr);
    EXPECT_EQ(system.FindLayerNode(L"管线"), second);
    EXPECT_EQ(system.FindLayerNode(L"扣弯"), second);
    system.DelLayerNode(second);
    EXPECT_EQ(system.FindLayerNode(L"管线"), first);
    EXPECT_EQ(system.FindLayerNode(L"扣弯"), first);
}

TEST(PipeNode, CopiesAreDeepAndUpdatesKeepIdentity) {
    PipeNode source;
    source.PipeName = L"J";
    source.LineWidth = 0.5;
    source.Status = -1;
    source.AddLayerNode(makeLayer(L"管线", L"pipe"));
    source.AddLayerNode(makeLayer(L"标注", L"dim"));
    source.SetLayerTypeMapping(L"井", L"标注");
    source.UpdateLayerTypeMap();
    const std::unique_ptr<PipeNode> copy(source.Clone());
    source.FindLayerNode(L"标注")->LayerName = L"changed";
    source.DelLayerNode(source.FindLayerNode(L"管线"));
    EXPECT_EQ(copy->FindLayerNode(L"井"), copy->FindLayerNode(1));
    EXPECT_EQ(copy->FindLayerNode(L"井")->LayerName, L"dim");
    EXPECT_EQ(copy->FindLayerNode(L"扣弯"), copy->FindLayerNode(0));
    EXPECT_EQ(copy->LayerTypeMap(), source.LayerTypeMap());
    EXPECT_FALSE(copy->IsDefaultMapping(L"井"));
    PipeInfoNode info;
    copy->GetPipeInfo(info, false);
    EXPECT_EQ(info.LineWidth, 0.5);
    EXPECT_EQ(info.Status, 0xFFFFFFFFu);

    PipeNode target;
    target.PipeName = L"RJ";
    LayerNode* own = makeLayer(L"标注", L"old");
    target.AddLayerNode(own);
    own->LineWeight = 35;
    copy->UpdateLayerTo(&target);  // updates the one, adds the other
    EXPECT_EQ(target.GetLayerNum(), 2);
    EXPECT_EQ(own->LayerName, L"dim");
    EXPECT_EQ(own->LineWeight, AcDb::kLnWtByLwDefault);
    EXPECT_EQ(own->SystemName, L"RJ");
    EXPECT_EQ(target.FindLayerNode(L"管线")->SystemName, L"RJ");
    LayerNode alias;
    alias.LayerType = L"标高";
    EXPECT_FALSE(target.UpdateLayer(alias));
}

class Group : public testing::Test {
  protected:
    Group() : group(L"给水系统", true) {
        for (const wchar_t* name : {L"J", L"RJ", L"ZJ"}) {
            group.AddPipeSystem(makeSystem(name, (CString(L"旧") + name).GetString()));
        }
    }
    std::vector<CString> names() const {
        std::vector<CString> all;
        group.GetAllPipeSystemNames(all);
        return all;
    }
    using Names = std::vector<CString>;
    PipeGroupNode group;
};

TEST_F(Group, MovesAndHandsOver) {
    bool found = false;
    EXPECT_FALSE(group.MovePipeSystem(L"j", true, found));
    EXPECT_FALSE(found);
    EXPECT_FALSE(group.MovePipeSystem(L"J", true, found));
    EXPECT_TRUE(found);
    EXPECT_FALSE(group.MovePipeSystem(L"ZJ", false, found));
    EXPECT_TRUE(group.MovePipeSystem(L"J", false, found));
    EXPECT_EQ(names(), (Names{L"RJ", L"J", L"ZJ"}));

    const std::unique_ptr<PipeNode> taken(group.FindPipeSystem(L"J"));
    EXPECT_FALSE(group.DeletePipeSystem(L"j"));
    EXPECT_TRUE(group.DeletePipeSystem(L"J"));
    EXPECT_FALSE(group.DeletePipeSystem(L"J"));
    EXPECT_EQ(taken->PipeName, L"J");
    EXPECT_EQ(names(), (Names{L"RJ", L"ZJ"}));
    EXPECT_EQ(group.FindPipeSystem(L"J"), nullptr);
    EXPECT_EQ(group.GetSystemIndex(L"ZJ"), 1);
    EXPECT_EQ(group.FindPipeSystem(2), nullptr);
}

TEST_F(Group, RenamesInTwoWays) {
    PipeNode* system = group.FindPipeSystem(L"J");
    system->AddLayerNode(makeLayer(L"文字", L"J-text", L"j"));
    EXPECT_FALSE(group.RenamePipeSystem(L"j", L"X"));
    EXPECT_TRUE(group.RenamePipeSystem(L"J", L"X"));
    EXPECT_EQ(group.FindPipeSystem(L"X"), system);
    EXPECT_EQ(group.FindPipeSystem(L"J"), nullptr);
    EXPECT_EQ(system->FindLayerNode(L"管线")->SystemName, L"X");
    EXPECT_EQ(system->FindLayerNode(L"文字")->SystemName, L"j");

    system->FindLayerNode(L"文字")->SystemName = L"x";
    EXPECT_TRUE(group.RenameSystemName(system->PipeName, L"Y"));
    EXPECT_EQ(system->FindLayerNode(L"管线")->SystemName, L"Y");
    EXPECT_EQ(system->FindLayerNode(L"文字")->SystemName, L"Y");

    EXPECT_TRUE(group.RenamePipeSystem(L"Y", L"ZJ"));  // a taken name: the index follows the renamed system
    EXPECT_EQ(group.FindPipeSystem(L"ZJ"), system);
    EXPECT_EQ(group.GetSystemNum(), 3);
}

TEST_F(Group, AnswersOverAllSystems) {
    CString current = L"untouched";
    EXPECT_FALSE(group.OldSystemNameToCurrentName(L"旧j", current));
    EXPECT_EQ(current, L"untouched");
    EXPECT_TRUE(group.OldSystemNameToCurrentName(L"旧RJ", current));
    EXPECT_EQ(current, L"RJ");

    group.FindPipeSystem(L"ZJ")->AddLayerNode(makeLayer(L"文字", L"j-PIPE"));
    EXPECT_EQ(group.CountLayer(L"J-Pipe"), 6);  // pipe and bend of J; text of ZJ and the three types that borrow it
    EXPECT_FALSE(group.CanRenameLayerName(L"j", L"J-pipe"));
    EXPECT_TRUE(group.CanRenameLayerName(L"rj", L"RJ-pipe"));
    std::vector<CString> layerNames;
    group.GetAllLayerName(layerNames);
    EXPECT_EQ(layerNames, (Names{L"J-pipe", L"RJ-pipe", L"ZJ-pipe"}));
    PipeBasicNode info;
    EXPECT_FALSE(group.GetSystemInfo(3, info) || group.GetSystemInfo(-1, info));
    EXPECT_TRUE(group.GetSystemInfo(1, info));
    EXPECT_EQ(info.PipeName + info.PipeOriginalName, L"RJ旧RJ");
    LayerNameMap map;
    group.InitLayers(map);
    EXPECT_EQ(map.size(), 3u);
    EXPECT_EQ(map.at(L"j-PIPE")->SystemName, L"J");
    EXPECT_EQ(group.FindPipeSystemByLayerName(L"zj-pipe"), group.FindPipeSystem(2));
    EXPECT_EQ(group.FindLayerNode(L"zj", L"管线"), group.FindPipeSystem(2)->FindLayerNode(L"管线"));
    EXPECT_EQ(group.FindLayerNodeByLayerType(L"文字", L"J-pipe")->SystemName, L"ZJ");
    CString out;
    EXPECT_TRUE(group.GetLayerNameByLayerTypeLayerName(L"管线", L"ZJ-PIPE", L"管径文字", out));
    EXPECT_EQ(out, L"j-PIPE");
    EXPECT_TRUE(group.GetLayerNameByLayerTypeLayerName(L"管线", L"RJ-pipe", L"管径文字", out));
    EXPECT_EQ(out, L"");
    EXPECT_FALSE(group.GetLayerNameByLayerTypeLayerName(L"立管", L"RJ-pipe", L"管线", out));

    PipeGroupNode copy;
    copy.CopyFrom(&group);
    group.RenamePipeSystem(L"RJ", L"gone");
    EXPECT_EQ(copy.GroupName(), L"给水系统");
    EXPECT_TRUE(copy.CanRename());
    EXPECT_EQ(copy.FindPipeSystem(L"RJ"), copy.FindPipeSystem(1));
    LayerNode edited = *copy.FindLayerNode(L"RJ", L"管线");
    edited.LayerName = L"new";
    EXPECT_TRUE(copy.UpdateLayer(edited));
    EXPECT_EQ(copy.FindLayerNode(L"new"), copy.FindPipeSystem(1)->FindLayerNode(0));
    EXPECT_EQ(copy.CountLayer(L"new"), 2);
}

TEST(OtherLayers, KeysMappingsAndAttachments) {
    OtherLayerNode others(L"建筑");
    LayerNode* wall = makeLayer(L"墙", L"A-Wall");
    wall->LayerAttachSet = {L"土建"};
    others.AddLayerNode(wall);
    others.AddMapping(L"剪力墙", L"墙", false);
    others.AddMapping(L"柱", L"墙", true);
    others.AddMapping(L"构造柱", L"柱", false);
    EXPECT_EQ(others.FindLayerNode(L"剪力墙"), wall);
    EXPECT_EQ(others.FindLayerNode(L"构造柱"), nullptr);
    EXPECT_TRUE(others.IsDefaultMapping(L"柱"));
    others.AddMapping(L"柱", L"梁", false);
    EXPECT_FALSE(others.IsDefaultMapping(L"柱"));
    EXPECT_FALSE(others.RenameLayerName(L"其他", L"A-WALL", L"X"));
    EXPECT_FALSE(others.RenameLayerName(L"建筑", L"B", L"X"));
    OtherLayerNode copy;
    copy.CopyFrom(&others);
    EXPECT_TRUE(others.RenameLayerName(L"建筑", L"a-wall", L"X"));
    EXPECT_EQ(wall->LayerName, L"X");
    EXPECT_EQ(copy.FindLayerNodeByLayerName(L"A-WALL"), copy.FindLayerNode(0));
    EXPECT_TRUE(copy.IsLayerType(L"建筑"));

    PipeNode system;
    for (const wchar_t* name : {L"P1", L"x", L"p1"}) {
        LayerNode* layer = makeLayer(name, name);
        layer->LayerAttachSet = {L"土建", L"其他"};
        system.AddLayerNode(layer);
    }
    LayerAttachNode info;
    system.GetLayerAttachInfo(L"土建", info);
    others.GetLayerAttachInfo(L"土建", info);
    others.GetLayerAttachInfo(L"其他", info);
    CString out = L"before";
    info.LayerNames(kPipeSystemLayer, out, L";");
    EXPECT_EQ(out, L"P1;x");
    info.LayerNames(kNonPipeSystemLayer, out, L";");
    EXPECT_EQ(out, L"X");
    info.LayerNames(kAllLayer, out, L", ");
    EXPECT_EQ(out, L"P1, x");
}

}  // namespace
