// The dialogs of the layer commands, answered by scripts.
#include "../frame/standardframe.h"
#include "afxwin.h"
#include "layers/layerlistdlg.h"
#include "layers/layerpickupdlg.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"

namespace qrs::test {

namespace {

class LayerDialogs : public StandardFrame {
  protected:
    AcDbObjectIdArray layers() const {
        AcDbObjectIdArray all;
        PwxTool::GetAllLayerIds(database(), all);
        return all;
    }
};

}  // namespace

TEST_F(LayerDialogs, ListLayersToChooseFrom) {
    terminal.script = {L"给排-生活*", L"2", L"新给水", L"确定"};
    CLayerFilterDlg filter(L"解冻图层", layers());
    EXPECT_EQ(filter.show(), platform::kDialogOk);
    ASSERT_EQ(filter.ChosenLayers().length(), 2);
    EXPECT_EQ(filter.ChosenLayers()[0], layers()[2]);
    EXPECT_EQ(filter.ChosenLayers()[1], layers()[4]);
    EXPECT_EQ(terminal.transcript.find(L"解冻图层\n请选择图层\n"), 0u) << terminal.transcript;
    EXPECT_NE(terminal.transcript.find(L"   2 [ ] 给排-生活给水-管线  开 锁定"), std::wstring::npos);

    terminal.script = {L"4", L"取消"};
    CSelectLayerDlg select(layers(), filter.ChosenLayers());
    EXPECT_EQ(select.show(), platform::kDialogCancel);
    EXPECT_EQ(select.ChosenLayers().length(), 0);
    terminal.script = {L""};
    EXPECT_EQ(select.show(), platform::kDialogOk);
    EXPECT_EQ(select.ChosenLayers().length(), 2);
}

TEST_F(LayerDialogs, PickUpTakesALayerOverIntoTheStandard) {
    const std::string before = fileBytes(standardFile());
    // Nothing is picked yet; the second target is refused, as the name then belongs to another system.
    run({L"tctq", L"应用", L"拾取", L"(handent \"100\")", L"取线型=0", L"图层类型=立管", L"应用", L"管线系统=热水给水",
         L"应用", L"取消"});
    EXPECT_EQ(fileBytes(standardFile()), before);
    EXPECT_EQ(count(terminal.transcript, L"请先拾取图元。"), 1u) << terminal.transcript;
    EXPECT_EQ(PipeSystemTool::GetLayerName(L"生活给水", L"立管", false), CString(L"给排-生活给水-立管"));

    run({L"tctq", L"拾取<", L"(handent \"100\")", L"取线型=0", L"管线系统=生活给水", L"图层类型=立管", L""});
    const standard::Standard now = savedStandard();
    const LayerNode* layer = system(now, L"生活给水")->FindLayerNode(CString(L"立管"));
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->LayerName, CString(L"新给水"));
    EXPECT_EQ(layer->LayerColor.colorIndex(), 6);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemNameByLayer(L"新给水"), CString(L"生活给水"));
    run({L"tctq", L"拾取", L"(handent \"100\")", L"管线系统=热水给水", L"应用", L"系统组=排水系统", L"应用", L"取消"});
    EXPECT_EQ(count(terminal.transcript, L"图层 新给水 已属于另一个管线系统。"), 2u)
        << terminal.transcript;  // in the group, and in another one
}

}  // namespace qrs::test
