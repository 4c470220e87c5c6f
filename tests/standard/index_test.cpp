// Questions find what a walk through the tree finds, whatever was changed before them and by which way.
#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "PipeSystemTool.h"
#include "standard/holder.h"

namespace {

// Few names, so that many nodes share one, and one stands in two cases.
const CString kNames[] = {L"a", L"A", L"b", L"管线", L"给水", L""};
const CString kTypes[] = {L"管线", L"立管", L"扣弯", L"标注", L"标高"};

class Index : public testing::Test {
  protected:
    Index() {
        qrs::standard::Standard standard;
        for (const wchar_t* name : {L"一", L"二", L"三"}) {
            standard.groups.push_back(std::make_unique<PipeGroupNode>(name));
            for (int i = 0; i < 3; ++i)
                standard.groups.back()->AddPipeSystem(makeSystem());
        }
        standard.otherLayers.push_back(std::make_unique<OtherLayerNode>(L"其他"));
        for (int i = 0; i < 3; ++i)
            standard.otherLayers.back()->AddLayerNode(makeLayer());
        qrs::standard::StandardHolder::instance().adopt(std::move(standard), L"\\memory.qdsl");
    }
    ~Index() override { qrs::standard::StandardHolder::release(); }

    std::size_t roll(std::size_t end) { return random_() % end; }
    const CString& anyName() { return kNames[roll(std::size(kNames))]; }
    static qrs::standard::Standard& standard() { return *qrs::standard::currentStandard(); }

    LayerNode* makeLayer() {
        auto* layer = new LayerNode;
        layer->LayerType = kTypes[roll(std::size(kTypes))];
        layer->LayerName = anyName();
        return layer;
    }
    PipeNode* makeSystem() {
        auto* system = new PipeNode;
        system->PipeName = anyName();
        system->PipeOriginalName = anyName();
        for (int i = 0; i < 2; ++i)
            system->AddLayerNode(makeLayer());
        return system;
    }

    void changeName(NodeName& name, NodeName& another);
    void changeSystem(PipeNode& system, PipeNode& another);
    void changeGroup(PipeGroupNode& group);
    void compareGroup(const PipeGroupNode& group, const CString& name, const CString& type);
    void compareStandard(const CString& name, const CString& type);

    std::mt19937 random_{20240607};
};

void Index::changeName(NodeName& name, NodeName& another) {
    switch (roll(9)) {
        case 0:
            name = anyName();
            break;
        case 1:
            name = another;
            break;
        case 2:
            name += L"b";
            break;
        case 3:
            name.MakeUpper();
            break;
        case 4:
            name.Format(L"%ls", anyName().GetString());
            break;
        case 5:
            std::swap(name, another);
            break;
        case 6:
            name.Empty();
            break;
        case 7:
            name.Delete(0);
            break;
        default:
            *name.GetBuffer(1) = L'A';
            name.ReleaseBuffer(1);
    }
}

void Index::changeSystem(PipeNode& system, PipeNode& another) {
    LayerNode* layer = system.FindLayerNode(static_cast<int>(roll(3)));
    LayerNode* other = another.FindLayerNode(0);
    switch (roll(8)) {
        case 0:
            changeName(system.PipeName, another.PipeName);
            break;
        case 1:
            changeName(system.PipeOriginalName, another.PipeOriginalName);
            break;
        case 2:
            system.AddLayerNode(makeLayer());
            break;
        case 3:
            system.DelLayerNode(layer);
            break;
        case 4:
            if (other != nullptr) system.UpdateLayer(*other);
            break;
        case 5:
            system.SetLayerTypeMapping(kTypes[roll(std::size(kTypes))], kTypes[roll(std::size(kTypes))]);
            system.UpdateLayerTypeMap();
            break;
        case 6:
            system.CopyFrom(&another);
            break;
        default:
            if (layer != nullptr && other != nullptr) changeName(layer->LayerName, other->LayerName);
    }
}

void Index::changeGroup(PipeGroupNode& group) {
    const auto anySystem = [&] { return group.FindPipeSystem(static_cast<int>(roll(group.GetSystemNum()))); };
    if (group.IsEmpty() || group.GetSystemNum() < 2) group.AddPipeSystem(makeSystem());
    bool found = false;
    PipeNode* system = anySystem();
    switch (roll(8)) {
        case 0:
            group.AddPipeSystem(makeSystem());
            break;
        case 1:
            system = group.FindPipeSystem(system->PipeName);
            if (system != nullptr && group.DeletePipeSystem(CString(system->PipeName))) delete system;
            break;
        case 2:
            group.MovePipeSystem(system->PipeName, roll(2) == 0, found);
            break;
        case 3:
            group.RenamePipeSystem(system->PipeName, anyName());
            break;
        case 4:
            group.CopyFrom(standard().groups[roll(standard().groups.size())].get());
            break;
        default:
            changeSystem(*system, *anySystem());
    }
}

// What a group answers, and what its systems and their layers say when asked one after another.
void Index::compareGroup(const PipeGroupNode& group, const CString& name, const CString& type) {
    PipeNode* byLayer = nullptr;
    LayerNode* ofType = nullptr;
    LayerNode* ofSystem = nullptr;
    const PipeNode* byOldName = nullptr;
    int index = -1;
    int count = 0;
    for (int i = 0; i < group.GetSystemNum(); ++i) {
        PipeNode* system = group.FindPipeSystem(i);
        LayerNode* layer = system->FindLayerNode(type);
        if (byLayer == nullptr && system->FindLayerNodeByLayerName(name) != nullptr) byLayer = system;
        if (ofType == nullptr && layer != nullptr && layer->LayerName.CompareNoCase(name) == 0) ofType = layer;
        if (ofSystem == nullptr && system->PipeName.CompareNoCase(name) == 0) ofSystem = layer;
        if (byOldName == nullptr && system->PipeOriginalName == name) byOldName = system;
        if (index < 0 && system->PipeName == name) index = i;
        count += system->CountLayer(name);
    }
    EXPECT_EQ(group.FindPipeSystemByLayerName(name), byLayer);
    EXPECT_EQ(group.FindLayerNodeByLayerType(type, name), ofType);
    EXPECT_EQ(group.FindLayerNode(name, type), ofSystem);
    EXPECT_EQ(group.GetSystemIndex(name), index);
    EXPECT_EQ(group.CountLayer(name), count);
    CString current = L"-";
    EXPECT_EQ(group.OldSystemNameToCurrentName(name, current), byOldName != nullptr);
    EXPECT_EQ(current, byOldName != nullptr ? byOldName->PipeName : CString(L"-"));
}

// What the tool answers, and what its groups say when asked one after another.
void Index::compareStandard(const CString& name, const CString& type) {
    const PipeNode* byName = nullptr;
    const PipeNode* byLayer = nullptr;
    const LayerNode* ofType = nullptr;
    const LayerNode* definition = nullptr;
    const PipeGroupNode* group = nullptr;
    int kind = -1;
    for (const auto& one : standard().groups) {
        if (byName == nullptr) byName = one->FindPipeSystem(name);
        if (group == nullptr && one->FindPipeSystemByLayerName(name) != nullptr) group = one.get();
        if (byLayer == nullptr) byLayer = one->FindPipeSystemByLayerName(name);
        if (ofType == nullptr) ofType = one->FindLayerNodeByLayerType(type, name);
        if (definition == nullptr) definition = one->FindLayerNode(name, type);
        for (int k = 0; kind < 0 && k < 3; ++k) {
            if (one->FindLayerNodeByLayerType(kTypes[k], name) != nullptr) kind = k;
        }
    }
    const CString none;
    EXPECT_EQ(PipeSystemTool::CurrentSystemNameToOriginName(name), byName ? byName->PipeOriginalName : none);
    EXPECT_EQ(PipeSystemTool::IsPipeSystemOfCurrentStandard(name), byName != nullptr);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemNameByLayer(name), byLayer ? byLayer->PipeName : none);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemGroupName(name), group ? group->GroupName() : none);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemNameByLayer(name, type), ofType ? ofType->SystemName : none);
    EXPECT_EQ(PipeSystemTool::GetLayerName(name, type, false), definition ? definition->LayerName : none);
    int found = -1;
    PipeSystemTool::IsPipeLayer(name, &found);
    EXPECT_EQ(found, kind);
}

TEST_F(Index, AnswersAsAWalkThroughTheTreeAfterEveryChange) {
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        changeGroup(*standard().groups[roll(standard().groups.size())]);
        const CString name = roll(4) == 0 ? anyName() + L"b" : anyName();
        const CString type = kTypes[roll(std::size(kTypes))];
        compareStandard(name, type);
        for (const auto& group : standard().groups)
            compareGroup(*group, name, type);
        if (step % 100 == 0) {
            std::unique_ptr<PipeGroupNode> last = std::move(standard().groups.back());
            standard().groups.pop_back();
            compareStandard(name, type);
            compareGroup(*last, name, type);
            if (step % 200 == 0) standard().groups.push_back(std::move(last));
            if (standard().groups.size() < 2) standard().groups.push_back(std::make_unique<PipeGroupNode>(L"新"));
        }
    }
}

TEST_F(Index, GroupsOfOtherLayersSeeNewNamesAndKeys) {
    OtherLayerNode& others = *standard().otherLayers.front();
    others.FindLayerNode(0)->LayerName = L"first";
    others.FindLayerNode(1)->LayerName = L"second";
    EXPECT_EQ(others.FindLayerNodeByLayerName(L"SECOND"), others.FindLayerNode(1));
    std::swap(others.FindLayerNode(0)->LayerName, others.FindLayerNode(2)->LayerName);
    others.FindLayerNode(1)->LayerName = L"FIRST";
    EXPECT_EQ(others.FindLayerNodeByLayerName(L"first"), others.FindLayerNode(1));
    EXPECT_EQ(others.FindLayerNode(L"钥匙"), nullptr);
    others.FindLayerNode(0)->LayerType = L"钥匙";
    others.FindLayerNode(2)->LayerType = L"钥匙";
    EXPECT_EQ(others.FindLayerNode(L"钥匙"), others.FindLayerNode(2));
    *others.FindLayerNode(2) = *others.FindLayerNode(1);
    EXPECT_EQ(others.FindLayerNode(L"钥匙"), others.FindLayerNode(0));
}

}  // namespace
