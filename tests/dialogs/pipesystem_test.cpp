// The dialog of the pipe systems over the standard and the drawing, answered by scripts.
#include <deque>

#include "../frame/standardframe.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_public.h"
#include "qrs_standard.h"
#include "standard/holder.h"

namespace qrs::test {

using PipeSystemDialogs = StandardFrame;

TEST_F(PipeSystemDialogs, SettingsAreEditedOnACopyAndSaved) {
    const std::string before = fileBytes(standardFile());
    const OtherLayerNode& others = *standard::currentStandard()->otherLayers[0];
    const CString own = others.FindLayerNode(0)->LayerName;
    const std::wstring taken = others.FindLayerNode(1)->LayerName.GetString();
    const std::deque<std::wstring> edits = {L"gxsz",
                                            L"生活给水",
                                            L"系统属性",
                                            L"系统名=雨水",
                                            L"系统名=市政给水",
                                            L"管线宽度=-1",
                                            L"管线宽度=0.7",
                                            L"室内管材=钢管",
                                            L"确定",
                                            L"系统图层",
                                            L"管线",
                                            L"修改",
                                            L"颜色=300",
                                            L"图层名=a|b",
                                            L"图层名=给排-雨水-管线",
                                            L"图层名=给水主管",
                                            L"颜色=1,2,3",
                                            L"线宽=0.70",
                                            L"打印=0",
                                            L"确定",
                                            L"确定",
                                            L"新建系统",
                                            L"市政给水",
                                            L"给水",
                                            L"消防",
                                            L"消火栓",
                                            L"生活给水",
                                            L"软化/水",
                                            L"系统名=软化水",
                                            L"",
                                            L"下移",
                                            L"其他图层...",
                                            L"修改",
                                            L"图层名=" + taken,
                                            L"备注=改过",
                                            L"确定",
                                            L"确定"};
    std::deque<std::wstring> cancelled = edits, confirmed = edits;
    cancelled.push_back(L"取消");
    confirmed.push_back(L"确定");
    run(cancelled);
    EXPECT_EQ(fileBytes(standardFile()), before);
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"生活给水"));

    run(confirmed);
    const standard::Standard now = savedStandard();
    const PipeNode* renamed = system(now, L"市政给水");
    ASSERT_NE(renamed, nullptr) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(system(now, L"生活给水"), nullptr);
    EXPECT_DOUBLE_EQ(renamed->LineWidth, 0.7);
    EXPECT_EQ(renamed->Material, CString(L"钢管"));
    const LayerNode* pipe = renamed->FindLayerNode(CString(L"管线"));
    EXPECT_EQ(pipe->LayerName, CString(L"给水主管"));
    EXPECT_TRUE(pipe->LayerColor.isByColor());
    EXPECT_EQ(pipe->LineWeight, 70);
    EXPECT_FALSE(pipe->CanPlot);
    // The new system has the layers that the standard's rules give it.
    const PipeNode* added = system(now, L"软化水");
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->FindLayerNode(CString(L"立管"))->LayerName, CString(L"给排-软化水-立管"));
    EXPECT_TRUE(added->PipeOriginalName.IsEmpty()) << "the older name is that of the system it was made from";
    EXPECT_TRUE(added->FindLayerNode(CString(L"立管"))->OldKey.IsEmpty());
    EXPECT_EQ(now.groups.size(), standard::currentStandard()->groups.size());
    // Another layer keeps its own name, and cannot take that of its neighbour.
    EXPECT_EQ(now.otherLayers[0]->FindLayerNode(0)->LayerName, own);
    EXPECT_EQ(now.otherLayers[0]->FindLayerNode(0)->Remark, CString(L"改过"));
    EXPECT_EQ(count(terminal.transcript, L"图层 " + taken + L" 已经存在。"), 1u);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemNameByLayer(L"给水主管"), CString(L"市政给水"));
    EXPECT_EQ(count(terminal.transcript, L"请输入 0 到 10000 的数值。"), 1u);
    EXPECT_EQ(count(terminal.transcript, L"给水 是系统 市政给水 的原名。"), 1u);
    EXPECT_EQ(count(terminal.transcript, L"系统 雨水 已经存在。"), 1u) << "in another group";
    EXPECT_EQ(count(terminal.transcript, L"系统 消火栓 已经存在。"), 1u);
    for (const wchar_t* layer : {L"给排-雨水-管线", L"给排-生活给水-立管"})
        EXPECT_EQ(count(terminal.transcript, L"图层 " + std::wstring(layer) + L" 已属于另一个管线系统。"), 1u);
    EXPECT_EQ(count(terminal.transcript, L"图层名不能含有"), 2u) << "typed, and made of a system's name";
    EXPECT_EQ(count(terminal.transcript, L"消防 是系统 消火栓 的原名。"), 1u) << "of another group";
    EXPECT_EQ(count(terminal.transcript, L"颜色应为 1 到 255"), 1u);
}

TEST_F(PipeSystemDialogs, AMaterialOfTheOfficeIsInEveryList) {
    run({L"gxsz", L"系统属性", L"室内管材", L"自制管", L"确定", L"确定"});
    EXPECT_EQ(count(terminal.transcript, L"     双壁波纹管\n     自制管\n"), 1u)
        << platform::toUtf8(terminal.transcript);
    const int last = static_cast<int>(GetPipeMaterialList().size()) - 1;
    EXPECT_EQ(GetPipeMaterialList().back(), L"自制管");
    EXPECT_EQ(PipeSystemTool::GetMaterialIndex(L"自制管"), last);
    EXPECT_EQ(PipeSystemTool::GetIndexOfPIpeMaterial(L"自制管"), last);
    EXPECT_EQ(PipeSystemTool::GetPipeMaterialByIndex(last), CString(L"自制管"));
    EXPECT_EQ(PipeSystemTool::GetPipeMaterialIndex(L"生活给水", kIndoorMaterial), last);
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    EXPECT_TRUE(GetPipeMaterialList().empty()) << "of a module that has gone";
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
}

TEST_F(PipeSystemDialogs, LayerDefinitionsTakeNamesOfUserlayerDbf) {
    const std::deque<std::wstring> edits = {L"gxsz", L"生活给水", L"系统图层", L"管线", L"修改", L"用户图层..."};
    std::deque<std::wstring> chosen = edits;
    chosen.insert(chosen.end(), {L"给排-公用", L"确定", L"确定", L"确定", L"确定"});
    run(chosen);
    EXPECT_EQ(count(terminal.transcript, L"( ) 给排-公用      1\n"), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(system(savedStandard(), L"生活给水")->FindLayerNode(CString(L"管线"))->LayerName, CString(L"给排-公用"));
    std::deque<std::wstring> cancelled = edits, missing = edits;
    cancelled.insert(cancelled.end(), {L"给排-阀门", L"取消", L"用户图层", L"确定", L"确定", L"确定", L"确定"});
    run(cancelled);
    const std::wstring notFound = L"对不起，没有发现userlayer.dbf文件！\n";
    EXPECT_EQ(count(terminal.transcript, notFound), 0u);
    std::filesystem::remove(folder / "userlayer.dbf");
    missing.insert(missing.end(), {L"确定", L"确定", L"确定"});
    run(missing);
    EXPECT_EQ(count(terminal.transcript, notFound), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(system(savedStandard(), L"生活给水")->FindLayerNode(CString(L"管线"))->LayerName, CString(L"给排-公用"));
}

TEST_F(PipeSystemDialogs, OthersShowThemToUpdateTheDrawingOrToBeReadOnly) {
    terminal.script = {L"系统图层", L"管线", L"修改", L"颜色=1", L"确定", L"确定", L"确定"};
    EXPECT_TRUE(PipeSystemTool::ShowPipeSettingDlg(0, true, true));
    EXPECT_EQ(PipeSystemTool::GetLayerColor(L"给排-生活给水-管线").colorIndex(), 1) << "in the drawing";
    terminal.script = {L"系统属性", L"取消"};
    EXPECT_FALSE(PipeSystemTool::ShowPipeSettingDlg(0, false, true));
    EXPECT_EQ(count(terminal.transcript, L"There is no \"系统属性\"."), 1u) << platform::toUtf8(terminal.transcript);
}

TEST_F(PipeSystemDialogs, TheStandardCarriedInsideBecomesAFile) {
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    std::filesystem::remove(standardFile());
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    EXPECT_TRUE(QrsExport::GetStandardInUse().isBuiltIn);
    run({L"gxsz", L"生活给水", L"系统属性", L"标注=JJ", L"确定", L"确定"});
    EXPECT_FALSE(QrsExport::GetStandardInUse().isBuiltIn);
    EXPECT_EQ(system(savedStandard(), L"生活给水")->Dim, CString(L"JJ"));
}

TEST_F(PipeSystemDialogs, ASettingsFileThatCannotBeWrittenIsTold) {
    const std::string before = fileBytes(standardFile());
    std::filesystem::permissions(standardFile(), std::filesystem::perms::owner_read);
    run({L"gxsz", L"生活给水", L"系统属性", L"管线宽度=0.9", L"确定", L"确定", L"取消"});
    std::filesystem::permissions(standardFile(), std::filesystem::perms::owner_all);
    EXPECT_EQ(count(terminal.transcript, L"The standard cannot be saved: "), 1u)
        << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(fileBytes(standardFile()), before);
    EXPECT_DOUBLE_EQ(PipeSystemTool::GetPipeLineWidth(L"生活给水"), 0.5);
}

}  // namespace qrs::test
