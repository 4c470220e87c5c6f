// The module's dialogs over the standard and the drawing, answered by scripts.
#include "afxwin.h"
#include "dbsymtb.h"
#include "layers/layerlistdlg.h"
#include "layers/layerpickupdlg.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "settings_support.h"
#include "standard/holder.h"
#include "standard/standard.h"

namespace qrs::test {

namespace {

class Dialogs : public Frame {
  protected:
    Dialogs() {
        system_ = folder.path() / "system";
        fs::create_directory(system_);
        fs::copy_file(fs::path(QRS_SOURCE_DIR) / "data" / "pwx.qdsl", standardFile());
        for (const char* table : {"linetype.dbf", "pipe.dbf", "userlayer.dbf"})
            fs::copy_file(fs::path(QRS_SOURCE_DIR) / "data" / table, system_ / table);
        addMaterial();
        application.setSystemFolder(platform::innerPath(system_));
        QrsExport::SetSystemFolder(platform::innerPath(system_));
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        open(drawingText({{"0"},
                          {"给排-生活给水-管线", 4, 3},
                          {"给排-生活给水-立管", 0, -3},
                          {"给排-雨水-管线", 1, 2},
                          {"新给水", 0, 6}},
                         {{"新给水"}, {"给排-生活给水-管线"}}));
    }
    ~Dialogs() override {
        acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
        QrsExport::SetSystemFolder({});
    }

    // An office's own pipe, "自制管", in the table that every test of this program sees.
    void addMaterial() const {
        std::string table, name;
        platform::Error error;
        ASSERT_TRUE(platform::readFile(system_ / "pipe.dbf", table, error)) << error.message;
        ASSERT_TRUE(platform::encode(936, L"自制管", name));
        const std::size_t length = static_cast<unsigned char>(table[10]);
        std::string record = table.substr(table.size() - length - 1, length);
        record.replace(1, 24, name + std::string(24 - name.size(), ' '));
        table.insert(table.size() - 1, record);
        ++table[4];
        folder.write("system/pipe.dbf", table);
    }
    fs::path standardFile() const { return system_ / "pwx.qdsl"; }
    std::string fileBytes() const {
        std::string bytes;
        platform::Error error;
        EXPECT_TRUE(platform::readFile(standardFile(), bytes, error)) << error.message;
        return bytes;
    }
    // What the file says, not what is in memory.
    standard::Standard saved() const {
        standard::Standard standard;
        platform::Error error;
        EXPECT_TRUE(standard::readStandard(platform::innerPath(standardFile()), standard, error)) << error.message;
        return standard;
    }
    AcDbObjectIdArray layers() const {
        AcDbObjectIdArray all;
        PwxTool::GetAllLayerIds(database(), all);
        return all;
    }

  private:
    fs::path system_;
};

PipeNode* system(const standard::Standard& standard, const wchar_t* name) {
    for (const auto& group : standard.groups)
        if (PipeNode* found = group->FindPipeSystem(CString(name))) return found;
    return nullptr;
}

}  // namespace

TEST_F(Dialogs, ListLayersToChooseFrom) {
    terminal.script = {L"给排-生活*", L"2", L"新给水", L"确定"};
    CLayerFilterDlg filter(L"解冻图层", layers());
    EXPECT_EQ(filter.DoModal(), IDOK);
    ASSERT_EQ(filter.ChosenLayers().length(), 2);
    EXPECT_EQ(filter.ChosenLayers()[0], layers()[2]);
    EXPECT_EQ(filter.ChosenLayers()[1], layers()[4]);
    EXPECT_EQ(terminal.transcript.find(L"解冻图层\n请选择图层\n"), 0u) << terminal.transcript;
    EXPECT_NE(terminal.transcript.find(L"   2 [ ] 给排-生活给水-管线  开 锁定"), std::wstring::npos);

    terminal.script = {L"4", L"取消"};
    CSelectLayerDlg select(layers(), filter.ChosenLayers());
    EXPECT_EQ(select.DoModal(), IDCANCEL);
    EXPECT_EQ(select.ChosenLayers().length(), 0);
    terminal.script = {L""};
    EXPECT_EQ(select.DoModal(), IDOK);
    EXPECT_EQ(select.ChosenLayers().length(), 2);
}

TEST_F(Dialogs, PickUpTakesALayerOverIntoTheStandard) {
    const std::string before = fileBytes();
    // Nothing is picked yet; the second target is refused, as the name then belongs to another system.
    run({L"tctq", L"应用", L"拾取", L"(handent \"100\")", L"取线型=0", L"图层类型=立管", L"应用", L"管线系统=热水给水",
         L"应用", L"取消"});
    EXPECT_EQ(fileBytes(), before);
    EXPECT_EQ(count(terminal.transcript, L"请先拾取图元。"), 1u) << terminal.transcript;
    EXPECT_EQ(PipeSystemTool::GetLayerName(L"生活给水", L"立管", false), CString(L"给排-生活给水-立管"));

    run({L"tctq", L"拾取<", L"(handent \"100\")", L"取线型=0", L"管线系统=生活给水", L"图层类型=立管", L""});
    const standard::Standard now = saved();
    const LayerNode* layer = system(now, L"生活给水")->FindLayerNode(CString(L"立管"));
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->LayerName, CString(L"新给水"));
    EXPECT_EQ(layer->LayerColor.colorIndex(), 6);
    EXPECT_EQ(PipeSystemTool::GetPipeSystemNameByLayer(L"新给水"), CString(L"生活给水"));
    run({L"tctq", L"拾取", L"(handent \"100\")", L"管线系统=热水给水", L"应用", L"取消"});
    EXPECT_NE(terminal.transcript.find(L"图层 新给水 已属于另一个管线系统。"), std::wstring::npos)
        << terminal.transcript;
}

TEST_F(Dialogs, SettingsAreEditedOnACopyAndSaved) {
    const std::string before = fileBytes();
    const OtherLayerNode& others = *standard::currentStandard()->otherLayers[0];
    const CString own = others.FindLayerNode(0)->LayerName;
    const std::wstring taken = others.FindLayerNode(1)->LayerName.GetString();
    const std::deque<std::wstring> edits = {L"gxsz",
                                            L"生活给水",
                                            L"系统属性",
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
                                            L"图层名=给水主管",
                                            L"颜色=1,2,3",
                                            L"线宽=0.70",
                                            L"打印=0",
                                            L"确定",
                                            L"确定",
                                            L"新建系统",
                                            L"市政给水",
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
    EXPECT_EQ(fileBytes(), before);
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"生活给水"));

    run(confirmed);
    const standard::Standard now = saved();
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
    EXPECT_EQ(count(terminal.transcript, L"颜色应为 1 到 255"), 1u);
}

TEST_F(Dialogs, AMaterialOfTheOfficeIsInEveryList) {
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

TEST_F(Dialogs, LayerDefinitionsTakeNamesOfUserlayerDbf) {
    const std::deque<std::wstring> edits = {L"gxsz", L"生活给水", L"系统图层", L"管线", L"修改", L"用户图层..."};
    std::deque<std::wstring> chosen = edits;
    chosen.insert(chosen.end(), {L"给排-公用", L"确定", L"确定", L"确定", L"确定"});
    run(chosen);
    EXPECT_EQ(count(terminal.transcript, L"( ) 给排-公用      1\n"), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(system(saved(), L"生活给水")->FindLayerNode(CString(L"管线"))->LayerName, CString(L"给排-公用"));
    std::deque<std::wstring> cancelled = edits, missing = edits;
    cancelled.insert(cancelled.end(), {L"给排-阀门", L"取消", L"用户图层", L"确定", L"确定", L"确定", L"确定"});
    run(cancelled);
    const std::wstring notFound = L"对不起，没有发现userlayer.dbf文件！\n";
    EXPECT_EQ(count(terminal.transcript, notFound), 0u);
    fs::remove(standardFile().parent_path() / "userlayer.dbf");
    missing.insert(missing.end(), {L"确定", L"确定", L"确定"});
    run(missing);
    EXPECT_EQ(count(terminal.transcript, notFound), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(system(saved(), L"生活给水")->FindLayerNode(CString(L"管线"))->LayerName, CString(L"给排-公用"));
}

TEST_F(Dialogs, ASettingsFileThatCannotBeWrittenIsTold) {
    const std::string before = fileBytes();
    fs::permissions(standardFile(), fs::perms::owner_read);
    run({L"gxsz", L"生活给水", L"系统属性", L"管线宽度=0.9", L"确定", L"确定", L"取消"});
    fs::permissions(standardFile(), fs::perms::owner_all);
    EXPECT_EQ(count(terminal.transcript, L"不能保存管线系统标准："), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(fileBytes(), before);
    EXPECT_DOUBLE_EQ(PipeSystemTool::GetPipeLineWidth(L"生活给水"), 0.5);
}

}  // namespace qrs::test
