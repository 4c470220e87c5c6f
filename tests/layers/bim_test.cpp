// The commands that speak of the standard's layers: the list of all of them, and the layers of BIM systems.
#include "PipeSystemTool.h"
#include "standard/holder.h"
#include "support.h"

namespace qrs::test {

namespace {

class StandardLayers : public LayerFrame {
  protected:
    void addSystem(const wchar_t* name, double width,
                   std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> layers) {
        auto* system = new PipeNode;
        system->PipeName = name;
        system->LineWidth = width;
        for (const auto& [type, layerName] : layers) {
            auto* layer = new LayerNode;
            layer->LayerType = type;
            layer->LayerName = layerName;
            layer->LineStyle = L"Continuous";
            system->AddLayerNode(layer);
        }
        standard::currentStandard()->groups.front()->AddPipeSystem(system);
    }
    static void removeSystem(const wchar_t* name) {
        for (const auto& group : standard::currentStandard()->groups) {
            PipeNode* system = group->FindPipeSystem(name);
            if (system && group->DeletePipeSystem(name)) delete system;
        }
    }
};

}  // namespace

TEST_F(StandardLayers, TcdcListsThoseOfAllSystemsAndOfTwoCategories) {
    open(drawingText({{"0"}}, {}));
    addSystem(L"测试系统", 0.5, {{L"管线", L"测试\t管线"}});
    LayerNode* layer = standard::currentStandard()->groups.front()->FindPipeSystem(L"测试系统")->FindLayerNode(0);
    layer->LayerColor.setRGB(1, 2, 3);
    layer->LineWeight = 18;
    const std::string shown = own(run({L"tcdc"}));
    const auto list = folder.path() / std::filesystem::u8path("drawing_图层.txt");
    const std::string text = fileBytes(list);
    EXPECT_NE(shown.find("drawing_图层.txt"), std::string::npos) << shown;
    EXPECT_EQ(text.find("\xEF\xBB\xBF类别\t系统\t图层名\t颜色\t线型\t线宽\r\n"), 0u);
    EXPECT_NE(text.find("\t测试系统\t测试 管线\t1,2,3\tContinuous\t0.18\r\n"), std::string::npos);

    std::size_t expected = 1;
    for (const auto& group : standard::currentStandard()->groups)
        for (int i = 0; i < group->GetSystemNum(); ++i)
            expected += static_cast<std::size_t>(group->FindPipeSystem(i)->GetLayerNum());
    for (const auto& group : standard::currentStandard()->otherLayers) {
        const bool listed = group->GroupName() == L"建筑" || group->GroupName() == L"其他";
        if (listed) expected += static_cast<std::size_t>(group->GetLayerNum());
    }
    EXPECT_EQ(count(platform::fromUtf8(text), L"\r\n"), expected);
    EXPECT_FALSE(application.hasUnsavedChanges());

    // A folder in the way: one message, the command failed.
    std::filesystem::remove(list);
    std::filesystem::create_directories(list / "full");
    EXPECT_EQ(count(run({L"tcdc"}), L"<error>The layer definitions were not written: "), 1u);
}

// Pipes that bear the system's name come with what follows them, but not from locked layers; the layer takes width and
// linetype of the standard also when the drawing has it already.
TEST_F(StandardLayers, GxfzBringsBimLayersAndTheirObjects) {
    open(planText("AC1021", true,
                  entity("QRS_PIPE", "200", "A", "100 TDbPipePrototype/1 BIM/330 201/330 202/100 TDbPipe/70 0") +
                      entity("QRS_PIPEATTACHMENT", "201", "D", "100 TDbPipeAttachment") +
                      entity("QRS_PIPEATTACHMENT", "202", "L", "100 TDbPipeAttachment") +
                      entity("QRS_PIPE", "203", "A", "100 TDbPipePrototype/1 BIM喷头/100 TDbPipe/70 0") +
                      entity("QRS_PIPE", "204", "A", "100 TDbPipePrototype/1 BIM2/100 TDbPipe/70 0")));
    addSystem(L"BIM", 0.68, {{L"管线", L"B"}});
    addSystem(L"BIM喷头", 0.3, {{L"管线", L"喷头管"}, {L"喷头", L"BIM-喷头"}});
    addSystem(L"BIM2", 0.3, {{L"管线", L"别的"}});
    platform::CallRecorder recorder;
    run({L"gxfz"});
    EXPECT_EQ(layersOf({L"200", L"201", L"202", L"203", L"204", L"100", L"130"}), "B B L BIM-喷头 A A B");
    EXPECT_EQ(database()->ltscale(), 500.0);
    const AcDbLayerTableRecordPointer old(L"B", database());
    EXPECT_EQ(old->lineWeight(), AcDb::kLnWt070);
    const AcDbLayerTableRecordPointer made(L"BIM-喷头", database());
    EXPECT_EQ(made->lineWeight(), AcDb::kLnWt030);
    EXPECT_EQ(AcDbLayerTableRecordPointer(L"别的", database()).openStatus(), Acad::eKeyNotFound);
    const auto sent = [&](const char* part) {
        return std::any_of(recorder.calls().begin(), recorder.calls().end(),
                           [&](const std::string& call) { return call.find(part) != std::string::npos; });
    };
    EXPECT_TRUE(sent("zoom e "));

    // One of the two is enough to work with; without both there is one line to say so.
    const wchar_t* told = L"当前标准中没有“BIM喷头”和“BIM”系统，没有图层可以处理！\n";
    removeSystem(L"BIM");
    EXPECT_EQ(count(run({L"gxfz"}), told), 0u);
    removeSystem(L"BIM喷头");
    EXPECT_EQ(own(run({L"gxfz"})), platform::toUtf8(told));
}

}  // namespace qrs::test
