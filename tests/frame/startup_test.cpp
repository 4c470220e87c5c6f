// Start-up over what is there and what is missing; the files it reads.
#if !defined(_WIN32)
#include <sys/stat.h>
#endif

#include "accmd.h"
#include "FontTool.h"
#include "frame/specdata.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_fitting.h"
#include "qrs_public.h"
#include "rxregsvc.h"
#include "support.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

namespace {

class StartUp : public Frame {
  protected:
    StartUp() {
        InitAol(L"_QRS");
        TDwgSettingDefaults::Current().Clear();
        TDoublePipeFittingSpec::Current().Clear();
    }
    void load() {
        terminal.transcript.clear();
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        loaded_ = true;
    }
    void unload() {
        acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
        loaded_ = false;
    }
    ~StartUp() override {
        if (loaded_) unload();
    }

    static std::string config(const std::string& items) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CmdConfig>\n<Function Name=\"给水功能\">\n" + items +
               "\n</Function>\n</CmdConfig>\n";
    }
    std::size_t fittingsWith(const std::string& items) {
        folder.write("CmdConfig.xml", config(items));
        TDoublePipeFittingSpec::Current().Clear();
        load();
        unload();
        return TDoublePipeFittingSpec::Current().Count();
    }

  private:
    bool loaded_ = false;
};

const char* const kFittings =
    "<SpecData><DblPipeFittingSpec>"
    "<Fitting Name='弯头' Diameter1='100' Diameter2='80'><Point X='0' Y='0'/><Point X='0.0009' Y='0'/>"
    "<Point X='0.002' Y='0' Z='0'/><Point X='150' Y='0' Z='1.5'/></Fitting>"
    "<Fitting Name='三通' Diameter1='x' Diameter2='80'/>"
    "</DblPipeFittingSpec></SpecData>";

}  // namespace

TEST_F(StartUp, EveryStepRunsWithoutCommandStackStandardAndConfiguration) {
    // No command stack of the right class: registering does nothing, what follows runs all the same.
    AcRxDictionary* registry = acrxSysRegistry();
    Adesk::UInt32 id = 0;
    AcRxObject* commands = registry->atPut(L"ACAD_REGISTERED_COMMANDS", registry->at(L"AcEditor"), id);
    // A default standard that does not load: no standard at all.
    folder.write("pwx.qdsl", "no XML");
    ASSERT_TRUE(TRegKey(GetRegLocation(L"PWXConfig")).WriteInteger(L"nAlignTypeForVPipeDim4", 3));
    platform::CallRecorder recorder;
    load();
    EXPECT_EQ(g_nAlignTypeForVPipeDim4, 3);
    EXPECT_EQ(recorder.calls().back(), "AcEditor::addReactor()");
    EXPECT_TRUE(PipeSystemTool::GetCurrentStandardName().IsEmpty());
    g_nAlignTypeForVPipeDim4 = 5;
    unload();
    EXPECT_EQ(TRegKey(GetRegLocation(L"PWXConfig")).GetInteger(L"nAlignTypeForVPipeDim4", 0), 5);
    for (const std::string& call : recorder.calls())
        EXPECT_EQ(call.find("AcEdCommandStack::"), std::string::npos) << call;
    registry->atPut(L"ACAD_REGISTERED_COMMANDS", commands, id);
}

TEST_F(StartUp, CommandConfigurationSetsTheDefaultsOfDrawingSettings) {
    folder.write("CmdConfig.xml", config("<Item Name=\"法兰样式\" Value=\"2\"/><Item Name=\"法兰样式\" Value=\"9\"/>"
                                         "<Item Name=\"模数\" Value=\"3.5\"/>"));
    const Adesk::Int32 resetBefore = g_bResetFlangeSpace;
    load();
    EXPECT_EQ(g_nFlangeStyle, 2);
    EXPECT_EQ(g_bResetFlangeSpace, resetBefore);
    double module = 0;
    int whole = 0;
    EXPECT_TRUE(TDwgSettingDefaults::Current().GetDouble(L"给水功能", L"模数", module));
    EXPECT_EQ(module, 3.5);
    EXPECT_FALSE(TDwgSettingDefaults::Current().GetInteger(L"给水功能", L"模数", whole));
    unload();

    // A damaged one is told once, with its line, and then is as none.
    folder.write("CmdConfig.xml", "<CmdConfig>\n<Function Name=\"给水功能\">\n<Item Name=\n</CmdConfig>");
    load();
    EXPECT_EQ(count(terminal.transcript, L"CmdConfig.xml: line 4"), 1u) << platform::toUtf8(terminal.transcript);
    EXPECT_EQ(g_nFlangeStyle, 2);
}

TEST_F(StartUp, FittingsAreReadOnlyWhenTheItemThatDisablesThemIsThereAndZero) {
    folder.write("SpecData.xml", kFittings);
    load();  // no configuration
    unload();
    EXPECT_EQ(TDoublePipeFittingSpec::Current().Count(), 0u);
    EXPECT_EQ(fittingsWith("<Item Name=\"别的\" Value=\"0\"/>"), 0u);
    EXPECT_EQ(fittingsWith("<Item Name=\"禁用双管连接件规格\" Value=\"1\"/>"), 0u);
    EXPECT_EQ(fittingsWith("<Item Name=\"禁用双管连接件规格\" Value=\"\"/>"), 0u);
    EXPECT_EQ(fittingsWith("<Item Name=\"禁用双管连接件规格\" Value=\"否\"/>"), 0u);
    EXPECT_EQ(fittingsWith("<Item Name=\"禁用双管连接件规格\" Value=\" 0\"/>"), 1u);
    EXPECT_EQ(count(terminal.transcript, L"fittings without a name or a number, left out: 1"), 1u);
    const TDoublePipeFitting* bend = TDoublePipeFittingSpec::Current().Find(L"弯头", 100, 80);
    ASSERT_NE(bend, nullptr);
    ASSERT_EQ(bend->points.size(), 3u);  // the second point is the first one again
    EXPECT_EQ(bend->points[1].x, 0.002);
    EXPECT_EQ(bend->points[2].z, 1.5);
}

TEST_F(StartUp, AValueThatCannotBeSavedIsToldOnce) {
    TRegKey config(GetRegLocation(L"PWXConfig"));
    ASSERT_TRUE(config.WriteInteger(L"nAlignTypeForVPipeDim4", 3));
    load();
    std::filesystem::permissions(folder.path() / "settings.ini", std::filesystem::perms::owner_read);
    const std::wstring message = L"不能保存设置 nAlignTypeForVPipeDim4。";
    g_nAlignTypeForVPipeDim4 = 5;
    unload();
    EXPECT_EQ(count(terminal.transcript, message), 1u) << platform::toUtf8(terminal.transcript);
    load();
    unload();
    EXPECT_EQ(count(terminal.transcript, message), 0u) << "nothing is lost this time";
    EXPECT_EQ(g_nAlignTypeForVPipeDim4, 3);
}

#if !defined(_WIN32)  // has no pipes among files
TEST_F(StartUp, APipeInPlaceOfTheConfigurationIsNotWaitedFor) {
    ASSERT_EQ(mkfifo((folder.path() / "CmdConfig.xml").c_str(), 0644), 0);
    load();
    EXPECT_EQ(count(terminal.transcript, L"As if there were no CmdConfig.xml"), 1u)
        << platform::toUtf8(terminal.transcript);
}
#endif

TEST_F(StartUp, FilesAreFoundInTheSystemFolderFirst) {
    Folder support;
    application.addSupportFolder(platform::innerPath(support.path()));
    std::wstring path;
    EXPECT_FALSE(QrsExport::FindFile(L"pipe.dbf", path));
    support.write("pipe.dbf", "");
    ASSERT_TRUE(QrsExport::FindFile(L"PIPE.DBF", path));
    EXPECT_EQ(path.find(platform::innerPath(support.path())), 0u);
    folder.write("pipe.dbf", "");
    ASSERT_TRUE(QrsExport::FindFile(L"pipe.dbf", path));
    EXPECT_EQ(path, g_csSysPath.GetString() + std::wstring(L"pipe.dbf"));
}

TEST_F(StartUp, ShxFontsAreTakenByTheWordInTheirHeader) {
    Folder first, second;
    first.write("txt.shx", "Drawing-86 shapes 1.0\r\n");
    first.write("uni.SHX", "Drawing-86 UNIFONT 1.0\r\n");
    first.write("short.shx", "Drawing-86 shap");
    first.write("other.shx", "Drawing-86 lines 1.0\r\n");
    second.write("hztxt.shx", "Drawing-86 bigfont 1.0\r\n");
    second.write("TXT.SHX", "Drawing-86 shapes 1.1\r\n");
    application.addSupportFolder(platform::innerPath(first.path()));
    application.addSupportFolder(platform::innerPath(second.path()));
    std::vector<CString> shape, big;
    FontTool::GetShxFont(shape, big, true);
    std::sort(shape.begin(), shape.end());
    EXPECT_EQ(shape, (std::vector<CString>{L"TXT.SHX", L"UNI.SHX"}));
    EXPECT_EQ(big, std::vector<CString>{L"HZTXT.SHX"});
    first.write("late.shx", "Drawing-86 shapes 1.0\r\n");
    FontTool::GetShxFont(shape, big, false);
    EXPECT_EQ(shape.size(), 2u);
    FontTool::GetShxFont(shape, big, true);
    EXPECT_EQ(shape.size(), 3u);
}

}  // namespace qrs::test
