// What the module answers about pipes and sections of a drawing, and pipes put into a pipe system.
#include "host/objectarx/db/access.h"
#include "PipeSystemTool.h"
#include "qrs_pipewire.h"
#include "qrs_riser.h"
#include "qrs_select.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "support.h"

using namespace PipeSystemTool;
using namespace qrs::standard;
using namespace suitetest;

namespace {

// A standard with the system "给水", which has four layers, and "旧", which has pipe layers alone; a new drawing.
class PipeQueries : public testing::Test {
  protected:
    PipeQueries() {
        acdbHostApplicationServices()->setWorkingDatabase(&database);
        Standard standard;
        auto group = std::make_unique<PipeGroupNode>(L"Water");
        group->AddPipeSystem(makeSystem(L"给水", {L"管线", L"立管", L"管径文字", L"管线流向"}));
        group->AddPipeSystem(makeSystem(L"旧", {L"管线"}));
        standard.groups.push_back(std::move(group));
        StandardHolder::instance().adopt(std::move(standard), L"\\memory.qdsl");
    }
    ~PipeQueries() override { releaseStandard(); }

    static PipeNode* makeSystem(const wchar_t* name, std::initializer_list<const wchar_t*> types) {
        auto* system = new PipeNode;
        system->PipeName = name;
        for (const wchar_t* type : types) {
            auto* layer = new LayerNode;
            layer->LayerType = type;
            layer->LayerName = CString(name) + L"-" + type;
            system->AddLayerNode(layer);
        }
        return system;
    }
    AcDbObjectId addPipe(const TPipeCurve& curve) {
        auto* pipe = new TDbPipe;
        pipe->SetCurve(curve);
        return append(database, pipe);
    }
    static std::wstring nameOf(AcDbObjectId layer) {
        const AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
        const ACHAR* name = nullptr;
        return record.openStatus() == Acad::eOk && record->getName(name) == Acad::eOk ? name : L"-";
    }
    // Layer, diameter-text layer, arrow layer.
    static std::wstring layersOf(AcDbObjectId id) {
        const AcDbObjectPointer<TDbPipe> pipe(id);
        return nameOf(pipe->layerId()) + L" " + nameOf(pipe->GetDimLayerId()) + L" " + nameOf(pipe->GetArrowLayerId());
    }

    AcDbDatabase database;
};

}  // namespace

TEST_F(PipeQueries, TheSystemOfAPipe) {
    const AcDbObjectId id = addPipe(TPipeCurve());
    TEntitySet entity;
    acdbGetAdsName(entity.ent, id);
    EXPECT_EQ(GetPipeSystemName(id), L"未知系统");
    EXPECT_TRUE(SetPipeSystemName(id, L"给水"));
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(id)->GetPipeSysType(), GetSysType(L"给水"));
    EXPECT_EQ(GetPipeSystemName(entity), L"给水");
    {
        AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForWrite);
        EXPECT_EQ(GetPipeSystemName(id), L"未知系统") << "it cannot be opened";
        EXPECT_FALSE(SetPipeSystemName(id, L"污水"));
        pipe->SetPipeSystemName(L"");
        EXPECT_EQ(GetPipeSystemName(pipe.object()), L"给水") << "by its type code";
        SetPipeSystemName(pipe.object(), L"自定");
    }
    EXPECT_EQ(GetPipeSystemName(id), L"自定");
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(id)->GetPipeSysType(), kCustomSysType);

    const AcDbObjectId node = append(database, new TDbPipeNode);
    acdbGetAdsName(entity.ent, node);
    EXPECT_EQ(GetPipeSystemName(entity), L"未知系统");
    EXPECT_EQ(GetPipeSystemName(TEntitySet()), L"未知系统");
    EXPECT_FALSE(SetPipeSystemName(node, L"给水"));
    StandardHolder::release();
    EXPECT_EQ(GetPipeSystemName(id), L"未知系统") << "no standard";
    EXPECT_FALSE(SetPipeSystemName(id, L"给水"));
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(id)->GetPipeSystemName(), L"自定");
}

// A pipe drawn under an old name, or with a type code alone, belongs to the system that has the name now.
TEST_F(PipeQueries, OldNamesAreTheCurrentSystem) {
    const auto load = [](const wchar_t* oldName, const wchar_t* name) {
        Standard standard;
        standard.groups.push_back(std::make_unique<PipeGroupNode>(L"Water"));
        standard.groups.back()->AddPipeSystem(makeSystem(name, {L"立管"}));
        standard.groups.back()->FindPipeSystem(0)->PipeOriginalName = oldName;
        StandardHolder::instance().adopt(std::move(standard), L"\\memory.qdsl");
        convertOldSystemNames();
    };
    const TPipeCurve riser = TPipeCurve::Line({0, 0, 0}, {0, 0, 3000});
    const AcDbObjectId old = addPipe(riser);
    const AcDbObjectId typed = addPipe(riser);
    AcDbObjectPointer<TDbPipe>(old, AcDb::kForWrite)->SetPipeSystemName(L"给水");
    AcDbObjectPointer<TDbPipe>(typed, AcDb::kForWrite)->SetPipeSysType(GetSysType(L"给水"));
    load(L"给水", L"生活给水");
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(old)->GetPipeSystemName(), L"生活给水");
    EXPECT_EQ(AcDbObjectPointer<TDbPipe>(old)->GetDrawnSystemName(), L"给水") << "the drawing stays as it is";
    TDbPsConfig* shown = GetDwgPsGlobal(&database);
    shown->HideCustomPipeSystem(L"给水");
    EXPECT_FALSE(shown->IsCustomPipeSystemShown(L"生活给水"));
    shown->ShowCustomPipeSystem(L"生活给水");
    EXPECT_TRUE(shown->IsCustomPipeSystemShown(L"给水"));
    TRiserReader reader({});
    TRiser read;
    for (const AcDbObjectId& id : {old, typed}) {
        EXPECT_EQ(GetPipeSystemName(id), L"生活给水");
        ASSERT_TRUE(reader.Read(*AcDbObjectPointer<TDbPipe>(id).object(), read));
        EXPECT_EQ(read.systemName.empty() ? GetSystypeName(read.sysType) : read.systemName, L"生活给水");
        SetPipeLayer(id, GetPipeSystemName(id));
        EXPECT_EQ(layersOf(id), L"生活给水-立管 - -");
    }
    load(L"污水", L"生活污水");
    EXPECT_EQ(GetPipeSystemName(old), L"给水") << "the pairs of the standard before have gone";
    EXPECT_EQ(GetPipeSystemName(typed), L"给水");
    load(L"给水", L"生活给水");
    currentStandard()->groups.back()->AddPipeSystem(makeSystem(L"给水", {}));
    convertOldSystemNames();
    EXPECT_EQ(GetPipeSystemName(old), L"给水") << "a system of today comes before one of old";
}

TEST_F(PipeQueries, LayersFollowTheSystemAndThePath) {
    const double almost = 0.0999999;
    const struct {
        TPipeCurve curve;
        bool isVertical;
    } cases[] = {
        {TPipeCurve::Line({1, 1, 0}, {1 + almost, 1 - almost, 3000}), true},
        {TPipeCurve::Line({0, 0, 0}, {0.1, 0, 3000}), false},
        {TPipeCurve::Line({0, 0, 0}, {0, -0.1, 3000}), false},
        {TPipeCurve::Arc({0, 0, 0}, {0.01, 0, 3000}, 0.5), false},
    };
    for (const auto& one : cases) {
        const AcDbObjectId id = addPipe(one.curve);
        SetPipeLayer(id, L"给水");
        EXPECT_EQ(layersOf(id),
                  std::wstring(one.isVertical ? L"给水-立管" : L"给水-管线") + L" 给水-管径文字 给水-管线流向");
    }
    const AcDbObjectId id = addPipe(cases[0].curve);
    {
        // Open for reading: nothing changes, and no layer is made.
        AcDbObjectPointer<TDbPipe> pipe(id);
        SetPipeLayer(pipe.object(), L"旧");
        SetPipeLayer(id, L"旧");
    }
    EXPECT_EQ(layersOf(id), L"0 - -");
    AcDbObjectId old;
    AcDbLayerTablePointer(&database)->getAt(L"旧-管线", old);
    EXPECT_TRUE(old.isNull());
    SetPipeLayer(id, L"给水");
    SetPipeLayer(id, L"旧");
    EXPECT_EQ(layersOf(id), L"给水-立管 - -") << "no such definitions: its own layer stays, the others are none";
}

TEST_F(PipeQueries, FlagsOfSystemsThatCrossASection) {
    const AcDbObjectId sections[] = {append(database, new TDbVerticalSection),
                                     append(database, new TDbVerticalSectionFeed)};
    for (const AcDbObjectId& id : sections) {
        EXPECT_FALSE(IsShowCrossPipe(id, L"给水"));
        {
            // The code answers while there is no field of the name.
            AcDbObjectPointer<TDbSectionDrawing> section(id, AcDb::kForWrite);
            section->SetCrossPipeFlag(GetSysType(L"给水"), true);
        }
        EXPECT_TRUE(IsShowCrossPipe(id, L"给水"));
        EXPECT_FALSE(IsShowCrossPipe(id, L"污水"));
        SetShowCrossPipe(id, L"给水", false);
        EXPECT_FALSE(IsShowCrossPipe(id, L"给水"));
        EXPECT_FALSE(AcDbObjectPointer<TDbSectionDrawing>(id)->GetCrossPipeFlag(GetSysType(L"给水")));
        {
            AcDbObjectPointer<TDbSectionDrawing> section(id, AcDb::kForWrite);
            section->SetCrossPipeFlag(GetSysType(L"给水"), true);
        }
        EXPECT_FALSE(IsShowCrossPipe(id, L"给水")) << "the name goes before the code";
    }
    // Two systems that users defined share a code.
    AcDbObjectPointer<TDbVerticalSection> section(sections[0], AcDb::kForWrite);
    SetShowCrossPipe(section.object(), L"甲", true);
    EXPECT_TRUE(IsShowCrossPipe(section.object(), L"乙"));
    SetShowCrossPipe(sections[0], L"甲", false);  // open elsewhere
    EXPECT_FALSE(IsShowCrossPipe(sections[0], L"甲"));
    EXPECT_TRUE(IsShowCrossPipe(section.object(), L"甲"));
    EXPECT_FALSE(IsShowCrossPipe(addPipe(TPipeCurve()), L"甲"));
}
