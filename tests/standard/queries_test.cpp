// Questions about the current standard, and its layers in a drawing.
#include <gtest/gtest.h>

#include "../objectarx/support.h"
#include "host/platform/callrecord.h"
#include "host/platform/files.h"
#include "PipeSystemTool.h"
#include "standard/holder.h"
#include "standard/text.h"

using namespace PipeSystemTool;
using namespace qrs::standard;
using Names = std::vector<CString>;

namespace {

LayerNode* makeLayer(const wchar_t* type, const wchar_t* name) {
    auto* layer = new LayerNode;
    layer->LayerType = type;
    layer->LayerName = name;
    layer->LayerColor.setColorIndex(30);
    return layer;
}

PipeNode* makeSystem(const wchar_t* name, std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> layers) {
    auto* system = new PipeNode;
    system->PipeName = name;
    for (const auto& [type, layerName] : layers)
        system->AddLayerNode(makeLayer(type, layerName));
    return system;
}

// Two groups that share the system "J" and layer names; two groups of other layers, one named as a layer type.
class Queries : public testing::Test {
  protected:
    Queries() {
        Standard standard;
        auto water = std::make_unique<PipeGroupNode>(L"Water");
        water->AddPipeSystem(makeSystem(L"J", {{L"管线", L"J-Pipe"}, {L"立管", L"J-Riser"}, {L"标注", L"Dim"}}));
        water->AddPipeSystem(makeSystem(L"R", {{L"管线", L"R-Pipe"}, {L"立管", L"j-pipe"}, {L"扣弯", L"R-Bend"}}));
        auto fire = std::make_unique<PipeGroupNode>(L"Fire", true);
        fire->AddPipeSystem(makeSystem(L"j", {{L"管线", L"R-BEND"}, {L"井", L"j-Well"}}));
        fire->AddPipeSystem(makeSystem(L"J", {{L"管线", L"F-Pipe"}, {L"立管", L"J-RISER"}, {L"文字", L"DIM"}}));
        auto others = std::make_unique<OtherLayerNode>(L"其他");
        others->AddLayerNode(makeLayer(L"框", L"O-Frame"));
        others->AddMapping(L"边", L"框", false);
        auto notes = std::make_unique<OtherLayerNode>(L"标注");
        notes->AddLayerNode(makeLayer(L"J", L"N-J"));
        notes->AddLayerNode(makeLayer(L"框", L"dim"));
        notes->AddLayerNode(makeLayer(L"图名", L"N-Title"));
        standard.groups.push_back(std::move(water));
        standard.groups.push_back(std::move(fire));
        standard.otherLayers.push_back(std::move(others));
        standard.otherLayers.push_back(std::move(notes));
        StandardHolder::instance().adopt(std::move(standard), L"\\memory.qdsl");
    }
    ~Queries() override { StandardHolder::release(); }

    static PipeNode& system(int group, int index) {
        return *currentStandard()->groups[static_cast<std::size_t>(group)]->FindPipeSystem(index);
    }
};

TEST_F(Queries, PropertiesOfTheFirstSystemOfTheName) {
    PipeNode& first = system(0, 0);
    first.LineWidth = 0.0;  // a zero that stands in the standard is an answer
    first.VPipeRaidus = 1.5;
    first.VPipeRaidus1 = 1.25;
    first.VPipeRaidus2 = 0.0;
    first.VPipeType = -2;
    first.Material = L"in";
    first.OutdoorMaterial = L"out";
    first.WaterFlowStatus = L"flow";
    first.Remark = L"note";
    first.Status = -1;
    EXPECT_EQ(GetPipeWaterFlowStatus(L"J"), L"flow");
    EXPECT_EQ(GetPipeRemark(L"J"), L"note");
    EXPECT_EQ(GetPipeLineWidth(L"J"), 0.0);
    EXPECT_EQ(GetPipeLineWidth(L"r"), 0.35);
    EXPECT_EQ(GetVPipeRadius(L"J"), 1.5);
    EXPECT_EQ(GetVPipeRadius1(L"J"), 1.25);
    EXPECT_EQ(GetVPipeRadius2(L"J"), 0.0);
    EXPECT_EQ(GetVPipeRadius(L"x"), 0.5);
    EXPECT_EQ(GetVPipeRadius1(L"x"), 0.5);
    EXPECT_EQ(GetVPipeRadius2(L"x"), 0.25);
    EXPECT_EQ(GetVPipeType(L"J"), -2);
    EXPECT_EQ(GetPipeMaterial(L"J", kIndoorMaterial), L"in");
    EXPECT_EQ(GetPipeMaterial(L"J", kOutdoorMaterial), L"out");
    EXPECT_EQ(GetPipeStatus(L"J"), 4294967295u);
    EXPECT_EQ(GetPipeStatus(L"x"), 0u);
    SetPipeStatus(L"J", 0x80000001u);
    EXPECT_EQ(GetPipeStatus(L"J"), 0x80000001u);
    EXPECT_EQ(static_cast<Adesk::UInt32>(system(1, 1).Status), 0x80000001u);
    EXPECT_EQ(system(1, 0).Status, 0);

    first.Dim = L"J//1//2";
    EXPECT_EQ(GetPipeDim(L"J", true, L"//"), L"J");
    EXPECT_EQ(GetPipeDim(L"J", false, L"//"), L"J12");
    EXPECT_EQ(GetPipeDim(L"J", true, L"|"), L"J//1//2");
    EXPECT_EQ(GetPipeDim(L"J", true, L""), L"J//1//2");
    EXPECT_EQ(GetPipeDimB(L"J", L"//"), L"1//2");
    EXPECT_EQ(GetPipeDimB(L"J", L"2"), L"");
    EXPECT_EQ(GetPipeDimB(L"J", L"|"), L"");
    EXPECT_EQ(GetPipeDimB(L"J", L""), L"");
    EXPECT_EQ(GetPipeDimB(L"x", L"/"), L"");
}

TEST_F(Queries, DefinitionsBySystemOrKey) {
    EXPECT_EQ(GetLayerName(L"J", L"管线", false), L"J-Pipe");
    EXPECT_EQ(GetLayerName(L"j", L"井", false), L"j-Well");        // "J" of the first group has none: the next that has
    EXPECT_EQ(GetLayerName(L"r", L"管径文字", false), L"");        // no text layer to borrow
    EXPECT_EQ(GetLayerName(L"J", L"管径文字", false), L"DIM");     // borrowed, in the second group
    EXPECT_EQ(GetLayerName(L"J", L"标注", false), L"Dim");         // systems come before the group named so
    EXPECT_EQ(GetLayerName(L"图名", L"标注", false), L"N-Title");  // key, then group
    EXPECT_EQ(GetLayerName(L"边", L"其他", false), L"O-Frame");
    EXPECT_EQ(GetLayerName(L"框", L"没有", false), L"");
    system(0, 1).FindLayerNode(L"管线")->LineStyle = L"DASHED";
    system(0, 1).FindLayerNode(L"管线")->Remark = L"hot";
    EXPECT_EQ(GetLinetypeName(L"r", L"管线"), L"DASHED");
    EXPECT_EQ(GetLayerRemark(L"R", L"管线"), L"hot");
    EXPECT_EQ(GetLinetypeName(L"R", L"井"), L"");
    EXPECT_EQ(GetLayerRemark(L"x", L"井"), L"");
    EXPECT_TRUE(ContainLayer(L"j-PIPE", L"j", L"管线"));
    EXPECT_FALSE(ContainLayer(L"R-Bend", L"j", L"管线"));
    EXPECT_TRUE(ContainLayer(L"", L"x", L"管线"));
    EXPECT_TRUE(SystemGroupContainLayer(L"Fire", L"r-bend", L"扣弯"));
    EXPECT_FALSE(SystemGroupContainLayer(L"fire", L"r-bend", L"管线"));
    EXPECT_FALSE(SystemGroupContainLayer(L"Fire", L"J-Pipe", L"管线"));
}

TEST_F(Queries, NamesInListsOnceEach) {
    EXPECT_EQ(GetLayerNames(L"管线", L", "), L"J-Pipe, R-Pipe, R-BEND, F-Pipe");
    EXPECT_EQ(GetLayerNames(L"标注", L";"), L"Dim;N-J;N-Title");  // with all layers of the group of that name
    EXPECT_EQ(GetLayerNames(L"扣弯", L";"), L"J-Pipe;R-Bend;F-Pipe");
    Names names = {L"f-pipe", L"x", L"x"};
    EXPECT_TRUE(GetLayerNames(L"没有", names));
    EXPECT_TRUE(GetLayerNames(L"扣弯", names));
    EXPECT_EQ(names, (Names{L"f-pipe", L"x", L"x", L"J-Pipe", L"R-Bend"}));

    EXPECT_EQ(GetPipeLayers(L"R", L"|"), L"R-Pipe|j-pipe|R-Bend");
    EXPECT_EQ(GetPipeLayers(L"r", L"|"), L"");
    const CString systems[] = {L"j", L"没有", L"J", L"R"};
    EXPECT_EQ(GetPipeLayers(systems, 4, L"|"), L"R-BEND|J-Pipe|J-Riser|R-Pipe");
    EXPECT_EQ(GetPipeLayers(systems, -1, L"|"), L"");
    EXPECT_EQ(GetPipeLayers(nullptr, 1, L"|"), L"");
    names = {L"R", L"r-pipe"};
    GetPipeLayers(names, names);
    EXPECT_EQ(names, (Names{L"R", L"r-pipe", L"j-pipe", L"R-Bend"}));
    EXPECT_EQ(GetSystemGroupPipeLayers(L"Water", L"|"), L"J-Pipe|J-Riser|R-Pipe|R-Bend");
    const CString groups[] = {L"Fire", L"water", L"Water"};
    EXPECT_EQ(GetSystemGroupPipeLayers(groups, 3, L"|"), L"R-BEND|F-Pipe|J-RISER|J-Pipe|R-Pipe");
    names.clear();
    GetSystemGroupPipeLayers(Names{L"Fire"}, names);
    EXPECT_EQ(names, (Names{L"R-BEND", L"F-Pipe", L"J-RISER"}));
    EXPECT_EQ(GetSystemGroupLayers(L"Water", L"标高", L"|"), L"Dim");
    EXPECT_EQ(GetSystemGroupLayers(L"标注", L"J", L"|"), L"");  // no group of pipe systems
    GetSystemGroupLayers(L"Fire", L"文字", names);
    EXPECT_EQ(names.back(), L"DIM");
    GetSystemLayerType(names);
    EXPECT_EQ(names,
              (Names{L"管线", L"立管", L"阀门", L"文字", L"标注", L"设备", L"电动阀", L"喷头", L"消火栓", L"井"}));
}

TEST_F(Queries, FromALayerToItsSystem) {
    EXPECT_EQ(GetPipeSystemNameByLayer(L"j-pipe"), L"J");
    EXPECT_EQ(GetPipeSystemNameByLayer(L"J-PIPE", L"立管"), L"R");
    EXPECT_EQ(GetPipeSystemNameByLayer(L"r-bend", L"管线"), L"j");
    EXPECT_EQ(GetPipeSystemNameByLayer(L"N-Title"), L"");
    system(0, 1).FindLayerNode(L"立管")->SystemName = L"recorded";
    EXPECT_EQ(GetPipeSystemNameByLayer(L"J-PIPE", L"立管"), L"recorded");
    EXPECT_EQ(GetPipeSystemNameByPipeLayer(L"J-pipe"), L"J");  // pipe before riser
    EXPECT_EQ(GetPipeSystemNameByPipeLayer(L"R-Bend"), L"R");  // the first group before the better type
    EXPECT_EQ(GetPipeSystemNameByPipeLayer(L"j-well"), L"");
    EXPECT_EQ(GetPipeSystemGroupName(L"dim"), L"Water");
    EXPECT_EQ(GetPipeSystemGroupName(L"J-WELL"), L"Fire");
    EXPECT_EQ(GetPipeSystemGroupName(L"O-Frame"), L"");

    EXPECT_EQ(GetLayerByVPipeLayer(L"j-riser", L"管线", false), L"J-Pipe");
    EXPECT_EQ(GetLayerByVPipeLayer(L"j-riser", L"管径文字", false), L"");  // though the second group could answer
    EXPECT_EQ(GetLayerByVPipeLayer(L"R-Pipe", L"管线", false), L"");
    system(1, 1).FindLayerNode(L"立管")->LayerName = L"F-Riser";
    EXPECT_EQ(GetLayerByVPipeLayer(L"f-riser", L"管径文字", false), L"DIM");
    EXPECT_EQ(GetLayerByPipeLayer(L"J-Pipe", L"立管", false), L"");

    int kind = 7;
    EXPECT_FALSE(IsPipeLayer(L"j-well", &kind));
    EXPECT_EQ(kind, 7);
    EXPECT_FALSE(IsPipeLayer(L"J-PIPE", &kind));
    EXPECT_EQ(kind, 0);
    EXPECT_FALSE(IsPipeLayer(L"J-RISER", &kind));
    EXPECT_EQ(kind, 1);
    EXPECT_FALSE(IsPipeLayer(L"r-bend", &kind));
    EXPECT_EQ(kind, 2);
    EXPECT_FALSE(IsPipeLayer(L"J-PIPE", nullptr));

    system(1, 0).FindLayerNode(L"井")->LayerAttachSet = {L"a"};
    currentStandard()->otherLayers[0]->FindLayerNode(L"框")->LayerAttachSet = {L"a", L"b"};
    LayerAttachNode info;
    GetLayerAttachInfo(L"a", info);
    CString layers;
    info.LayerNames(kAllLayer, layers, L",");
    EXPECT_EQ(layers, L"j-Well,O-Frame");
}

TEST_F(Queries, GroupsAndTheirSystems) {
    std::vector<PipeClassificationNode> groups(5);
    GetPipeSystems(groups, false);
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[1].Systems[1].LayerNames.count(L"扣弯"), 0u);
    GetPipeSystems(groups, true);
    EXPECT_EQ(groups[1].Systems[1].LayerNames[L"扣弯"], L"F-Pipe");
    PipeClassificationNode info;
    EXPECT_TRUE(GetPipeSystemGroup(L"FIRE", info));
    EXPECT_EQ(info.GroupName, L"Fire");
    EXPECT_EQ(info.Systems[1].LayerNames[L"扣弯"], L"F-Pipe");  // borrowed layers too
    EXPECT_TRUE(info.CanName);
    EXPECT_FALSE(GetPipeSystemGroup(L"其他", info));

    Names names;
    EXPECT_FALSE(GetPipeSystemsBySystemGroup(L"fire", names));
    EXPECT_TRUE(GetPipeSystemsBySystemGroup(L"Fire", names));
    EXPECT_EQ(names, (Names{L"j", L"J"}));
    EXPECT_TRUE(GetPipeSystemsBySystemGroup(L"fire", names));  // the list is not empty
    EXPECT_TRUE(GetPipeSystemNamesOfGroupByPipeSystemName(L"J", names));
    EXPECT_EQ(names, (Names{L"j", L"J", L"R"}));
    EXPECT_TRUE(IsGroupIncludedSystem(L"Fire", L"j"));
    EXPECT_FALSE(IsGroupIncludedSystem(L"Water", L"j"));
    EXPECT_FALSE(IsGroupIncludedSystem(L"water", L"J"));
}

TEST_F(Queries, WithoutAStandardNothingIsTouched) {
    StandardHolder::release();
    EXPECT_EQ(GetPipeLineWidth(L"J"), 0.35);
    EXPECT_EQ(GetVPipeRadius2(L"J"), 0.25);
    EXPECT_EQ(GetLayerName(L"J", L"管线", true), L"");
    EXPECT_FALSE(ContainLayer(L"", L"J", L"管线"));
    Names names = {L"kept"};
    EXPECT_FALSE(GetLayerNames(L"管线", names));
    EXPECT_FALSE(GetPipeSystemsBySystemGroup(L"Water", names));
    EXPECT_FALSE(GetPipeSystemNamesOfGroupByPipeSystemName(L"J", names));
    GetSystemLayerType(names);
    GetPipeLayers(Names{L"J"}, names);
    EXPECT_EQ(names, Names{L"kept"});
    std::vector<PipeClassificationNode> groups(1);
    GetPipeSystems(groups, true);
    EXPECT_EQ(groups.size(), 1u);
    SetPipeStatus(L"J", 1);
    int kind = 7;
    EXPECT_FALSE(IsPipeLayer(L"J-Pipe", &kind));
    EXPECT_EQ(kind, 7);
    GetIndependentLayerKey(names);
    ASSERT_EQ(names.size(), 46u);
    EXPECT_EQ(names.front(), L"Morvel给排水");
    EXPECT_EQ(names.back(), L"表格");
    EXPECT_TRUE(InitLayer(L"0").isNull());  // no drawing either
    dbtest::Sample sample(dbtest::newerDrawing());
    EXPECT_EQ(InitLayer(L"pipe"), sample.layer(L"PIPE"));
    EXPECT_EQ(GetLayerColor(L"pipe").colorIndex(), 3);
    EXPECT_TRUE(GetLayerColor(L"J-Pipe").isByBlock());
}

TEST_F(Queries, LayersAreMadeOnceAndThenLeftAlone) {
    dbtest::Sample sample(dbtest::newerDrawing());
    LayerNode& pipe = *system(0, 0).FindLayerNode(L"管线");
    pipe.LineWeight = 50;
    pipe.CanPlot = false;
    pipe.LineStyle = L"DASHED";  // the drawing lacks it
    pipe.LayerColor.setRGB(1, 2, 3);
    bool created = false;
    EXPECT_TRUE(GetLayerColor(L"J-pipe") == pipe.LayerColor);
    AcDbObjectId id;
    {
        const qrs::platform::CallRecorder recorder;
        id = pipe.CreateLayer(&created);
        std::string calls;
        for (const std::string& call : recorder.calls())
            calls += call.substr(call.find(':') + 2) + " ";
        EXPECT_EQ(calls,
                  "setName(J-Pipe) setColor(J-Pipe, 1, 2, 3) setLineWeight(J-Pipe, 50) setIsPlottable(J-Pipe, 0) "
                  "FindFile(linetype.dbf) "
                  "setLinetypeObjectId(J-Pipe, Continuous) add(LAYER, J-Pipe) ");
    }
    EXPECT_TRUE(created);
    {
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
        ASSERT_EQ(layer.openStatus(), Acad::eOk);
        EXPECT_TRUE(layer->color() == pipe.LayerColor);
        EXPECT_EQ(layer->lineWeight(), AcDb::kLnWt050);
        EXPECT_FALSE(layer->isPlottable());
        EXPECT_EQ(layer->linetypeObjectId(), sample.in<AcDbLinetypeTable>(L"Continuous"));
    }
    const std::string drawing = sample.text();
    pipe.LayerName = L"j-PIPE";
    pipe.LayerColor.setColorIndex(1);
    created = false;
    EXPECT_EQ(pipe.CreateLayer(&created), id);
    EXPECT_FALSE(created);
    CString name = L"J";
    EXPECT_EQ(InitLayer(name, L"扣弯", &name), id);
    EXPECT_EQ(name, L"j-PIPE");
    EXPECT_TRUE(GetLayerColor(L"J-PIPE").isByColor());  // the drawing wins
    EXPECT_EQ(GetPipeSystemNameByLayer(id), L"J");
    EXPECT_EQ(GetPipeSystemNameByPipeLayer(id), L"J");
    EXPECT_EQ(GetPipeSystemNameByLayer(id, L"立管"), L"R");
    EXPECT_EQ(GetPipeSystemNameByLayer(sample.in<AcDbLinetypeTable>(L"Continuous")), L"");
    EXPECT_EQ(GetPipeSystemNameByPipeLayer(AcDbObjectId()), L"");

    EXPECT_TRUE(InitLayer(L"x", L"管线", &name).isNull());
    EXPECT_EQ(name, L"");
    EXPECT_TRUE(InitLayer(L"没有").isNull());
    EXPECT_TRUE(InitIndependentLayer(L"没有", &name).isNull());
    bool found = false;
    EXPECT_TRUE(system(0, 0).CreateLayer(L"没有", &found).isNull());
    EXPECT_FALSE(found);
    system(1, 0).FindLayerNode(L"井")->LayerName = L"a*b";  // no name for a layer
    EXPECT_TRUE(InitLayer(L"A*B").isNull());
    {
        const AcDbLayerTablePointer held(sample.database.get(), AcDb::kForRead);
        EXPECT_TRUE(InitLayer(L"F-Pipe").isNull());  // the table cannot be opened for writing
    }
    EXPECT_EQ(sample.text(), drawing);

    EXPECT_TRUE(InitLayer(L"f-PIPE").isValid());
    EXPECT_TRUE(InitLayer(L"o-frame").isValid());
    EXPECT_TRUE(InitIndependentLayer(L"图名", &name).isValid());
    EXPECT_EQ(name, L"N-Title");
    EXPECT_EQ(GetIndependentLayerName(L"边", false), L"O-Frame");
    EXPECT_EQ(GetIndependentLayerName(L"J", true), L"N-J");
    EXPECT_EQ(GetLayerByVPipeLayer(L"J-RISER", L"标注", true), L"Dim");
    EXPECT_EQ(GetLayerByPipeLayer(L"R-Pipe", L"扣弯", true), L"");
    for (const wchar_t* layer : {L"F-Pipe", L"O-Frame", L"N-Title", L"N-J", L"Dim", L"R-Bend"}) {
        EXPECT_TRUE(sample.layer(layer).isValid()) << toUtf8(layer);
    }
    EXPECT_TRUE(sample.layer(L"J-Riser").isNull());
}

// Every answer about every name that occurs, in one text.
std::string allAnswers() {
    Names systems, types;
    CString all;
    std::vector<PipeClassificationNode> groups;
    GetPipeSystems(groups, true);
    for (const PipeClassificationNode& group : groups) {
        GetPipeSystemsBySystemGroup(group.GroupName, systems);
        all += group.GroupName + L":" + GetSystemGroupPipeLayers(group.GroupName, L",") + L"\n";
    }
    GetSystemLayerType(types);
    types.insert(types.end(), {L"扣弯", L"管径文字", L"标高", L"建筑", L"默认"});
    for (const CString& type : types)
        all += GetLayerNames(type, L",") + L"\n";
    for (const CString& name : systems) {
        all.AppendFormat(L"%s %g %g %g %g %d %u ", name.GetString(), GetPipeLineWidth(name), GetVPipeRadius(name),
                         GetVPipeRadius1(name), GetVPipeRadius2(name), GetVPipeType(name), GetPipeStatus(name));
        for (const CString& answer : {GetPipeMaterial(name, kIndoorMaterial), GetPipeMaterial(name, kOutdoorMaterial),
                                      GetPipeRemark(name), GetPipeWaterFlowStatus(name), GetPipeDim(name, true, L"/")})
            all += answer + L"|";
        for (const CString& type : types) {
            const CString layer = GetLayerName(name, type, false);
            for (const CString& answer :
                 {layer, GetLinetypeName(name, type), GetLayerRemark(name, type), GetPipeSystemGroupName(layer),
                  GetPipeSystemNameByLayer(layer, type), GetPipeSystemNameByPipeLayer(layer)})
                all += answer + L"|";
            all += L"\n";
        }
    }
    GetIndependentLayerKey(types);
    for (const CString& key : types)
        all += GetIndependentLayerName(key, false) + L"\n";
    return toUtf8(all);
}

TEST_F(Queries, AnswerTheSameFromFileDefaultAndMemory) {
    StandardHolder& holder = StandardHolder::instance();
    qrs::platform::Error error;
    Standard read;
    const auto file = std::filesystem::path(QRS_SOURCE_DIR) / "data" / "pwx.qdsl";
    ASSERT_TRUE(readStandard(qrs::platform::innerPath(file), read, error)) << error.message;
    holder.adopt(std::move(read), L"");
    const std::string fromFile = allAnswers();
    EXPECT_NE(fromFile.find("给排-生活给水-立管"), std::string::npos);
    // The shipped standard's first group has the independent layers, in the order of their keys: what the water supply
    // has of its own is found before what the architect calls the same.
    Names keys;
    GetIndependentLayerKey(keys);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(currentStandard()->otherLayers.front()->FindLayerNode(static_cast<int>(i))->LayerType, keys[i]);
    }
    EXPECT_EQ(GetIndependentLayerName(L"洁具", false), L"给排-洁具");
    EXPECT_EQ(GetIndependentLayerName(L"尺寸", false), L"公用-标注");
    EXPECT_EQ(GetLayerName(L"洁具", L"建筑", false), L"建筑-洁具");

    Standard builtin;
    ASSERT_TRUE(parseStandard(builtinStandard(), "built-in", builtin, error)) << error.message;
    holder.adopt(std::move(builtin), L"");
    EXPECT_EQ(allAnswers(), fromFile);

    // Edited in memory: other names and settings answer at once, and as they do when written and read again.
    PipeGroupNode& group = *currentStandard()->groups[0];
    ASSERT_TRUE(group.RenamePipeSystem(L"生活给水", L"市政给水"));
    PipeNode& edited = *group.FindPipeSystem(L"市政给水");
    edited.LineWidth = 0.75;
    edited.DelLayerNode(edited.FindLayerNode(L"管径文字"));
    edited.FindLayerNode(L"文字")->LayerName = L"新文字";
    EXPECT_EQ(GetPipeLineWidth(L"市政给水"), 0.75);
    EXPECT_EQ(GetLayerName(L"市政给水", L"管径文字", false), L"新文字");
    EXPECT_EQ(GetPipeSystemNameByLayer(L"新文字", L"管径文字"), L"市政给水");
    const std::string inMemory = allAnswers();
    EXPECT_NE(inMemory, fromFile);
    std::string bytes;
    Standard again;
    ASSERT_TRUE(formatStandard(*currentStandard(), bytes, error) && parseStandard(bytes, "again", again, error));
    holder.adopt(std::move(again), L"");
    EXPECT_EQ(allAnswers(), inMemory);
}

}  // namespace
