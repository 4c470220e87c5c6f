// Which standard is current, what is remembered, and what the start does with it.
#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/stat.h>

#include "tests/platform/limits.h"
#endif

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/settings.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_pipewire.h"
#include "qrs_standard.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"
#include "tests/folder.h"

using namespace qrs::standard;
namespace fs = std::filesystem;
namespace platform = qrs::platform;

namespace {

class Listener : public qrs::host::Terminal {
  public:
    qrs::host::Reply readLine(const std::wstring&, std::wstring&) override { return qrs::host::Reply::End; }
    void print(std::wstring_view text) override { printed += platform::toUtf8(text); }
    void error(std::wstring_view) override {}
    std::string printed;
};

class Selection : public testing::Test {
  protected:
    Selection() : application(listener), setting(GetRegLocation(L"PipeSystemSetting")) {
        fs::create_directory(folder / "sys");
        platform::Error error;
        EXPECT_TRUE(platform::Settings::user().useFile(folder / "settings.ini", error)) << error.message;
        QrsExport::SetSystemFolder(inner("sys"));
        releaseStandard();
    }
    ~Selection() override { releaseStandard(); }
    std::wstring inner(const std::string& name) const { return platform::innerPath(folder / name); }
    // A standard that is told by the name of its only group.
    void putStandard(const std::string& name, const std::string& group) const {
        folder.write(name, "<Morvel Comment=\"Morvel管线系统配置文件\"><PipeSystem><PipeGroup Name=\"" + group +
                               "\"/></PipeSystem></Morvel>");
    }
    void choose(const std::wstring& value) const { EXPECT_TRUE(setting.WriteString(L"StandardFile", value)); }
    std::wstring chosen() const { return setting.GetString(L"StandardFile", L"(none)"); }
    static std::string loadedGroup() {
        const Standard* standard = currentStandard();
        return standard != nullptr && !standard->groups.empty() ? toUtf8(standard->groups[0]->GroupName()) : "(none)";
    }
    // Each message is one line.
    int messages() const {
        std::istringstream lines(listener.printed);
        int count = 0;
        for (std::string line; std::getline(lines, line);)
            count += line.empty() ? 0 : 1;
        return count;
    }

    Listener listener;
    qrs::host::Application application;
    TRegKey setting;
    Folder folder;
};

TEST_F(Selection, TakesTheDefaultFileAndRemembersIt) {
    putStandard("sys/pwx.qdsl", "default");
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "default");
    EXPECT_EQ(chosen(), inner("sys/pwx.qdsl"));
    putStandard("sys/pwx.qdsl", "later");
    EXPECT_TRUE(loadCurrentStandard());  // loaded already
    EXPECT_EQ(loadedGroup(), "default");
    releaseStandard();
    EXPECT_EQ(PipeSystemTool::GetCurrentStandardName(), L"");
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "later");
    EXPECT_EQ(listener.printed, "");
}

TEST_F(Selection, TakesTheChosenFile) {
    putStandard("sys/pwx.qdsl", "default");
    putStandard("sys/bare.qdsl", "bare");
    putStandard("sys/a.b.qdsl", "full");
    choose(L"bare.qdsl");
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "bare");
    EXPECT_EQ(chosen(), inner("sys/bare.qdsl"));
    releaseStandard();
    choose(inner("sys/a.b.qdsl"));
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "full");
    EXPECT_EQ(PipeSystemTool::GetCurrentStandardName(), L"a");
    releaseStandard();
    choose(inner("gone.qdsl"));
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "default");
    EXPECT_EQ(chosen(), inner("sys/pwx.qdsl"));
    EXPECT_EQ(listener.printed, "");
}

TEST_F(Selection, AFileThatDoesNotLoadIsNeverRemembered) {
    folder.write("sys/bad.qdsl", "<Morvel>");
    putStandard("sys/pwx.qdsl", "default");
    choose(L"bad.qdsl");
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "default");
    EXPECT_EQ(chosen(), L"bad.qdsl");
    EXPECT_NE(listener.printed.find("bad.qdsl: line 1"), std::string::npos) << listener.printed;
    EXPECT_EQ(messages(), 1);

    releaseStandard();
    fs::remove(folder / "sys/pwx.qdsl");
    EXPECT_TRUE(loadCurrentStandard());  // the default file is missing: the one carried inside
    EXPECT_EQ(loadedGroup(), "给水系统");

    releaseStandard();
    folder.write("sys/pwx.qdsl", "<other/>");
    EXPECT_FALSE(loadCurrentStandard());
    EXPECT_EQ(currentStandard(), nullptr);
    EXPECT_EQ(chosen(), L"bad.qdsl");

    choose(L"PWX.qdsl");
    listener.printed.clear();
    EXPECT_FALSE(loadCurrentStandard());
    EXPECT_EQ(messages(), 1) << listener.printed;
    EXPECT_EQ(chosen(), L"PWX.qdsl");
    readOldLayerDefinitions();  // none of the later steps minds
    convertOldSystemNames();
    applyObjectColors();
    initLayerMaps();
    EXPECT_TRUE(setting.WriteString(L"x", L"y"));
    EXPECT_TRUE(TRegKey(GetRegLocation(L"PWXConfig")).WriteDouble(L"LineTypeHeight", 2.5));
    readLinetypeTextSettings();
    EXPECT_EQ(StandardHolder::instance().linetypeText().height, 2.5);
    EXPECT_EQ(StandardHolder::instance().linetypeText().scale, LinetypeTextSettings().scale);
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"污水"));
    EXPECT_EQ(PipeSystemTool::OriginSystemNameToCurrentName(L"消防"), L"");
}

#if !defined(_WIN32)  // has neither such permissions nor such kinds of files

// Whatever keeps a file from being read, but that it is not there, is told, and leaves the choice as it is.
class Unreadable : public Selection, public testing::WithParamInterface<const char*> {
  protected:
    ~Unreadable() override { fs::permissions(folder / "closed", fs::perms::owner_all); }

    void make(const fs::path& path) const {
        const std::string kind = GetParam();
        if (kind == "loop") fs::create_symlink(path.filename(), path);
        if (kind == "pipe") {
            ASSERT_EQ(mkfifo(path.c_str(), 0644), 0);
        }
        if (kind == "folder out of reach") fs::create_symlink(folder / "closed/any", path);
        if (kind == "no permission") std::ofstream(path.string()).flush(), fs::permissions(path, fs::perms::none);
        if (kind == "too large") std::ofstream(path.string()).flush(), fs::resize_file(path, (512u << 20) + 1);
    }
};

TEST_P(Unreadable, IsToldAndTheChoiceStays) {
    fs::create_directory(folder / "closed");
    folder.write("closed/any", "");
    fs::permissions(folder / "closed", fs::perms::none);
    putStandard("sys/pwx.qdsl", "default");
    make(folder / "sys/office.qdsl");
    choose(L"office.qdsl");
    const OrdinaryUser user;
    if (!user) GTEST_SKIP() << "no other user to be";
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "default");
    EXPECT_EQ(chosen(), L"office.qdsl");
    EXPECT_EQ(messages(), 1) << listener.printed;
    EXPECT_NE(listener.printed.find("office.qdsl"), std::string::npos) << listener.printed;
    EXPECT_FALSE(reloadCurrentStandard());
    EXPECT_EQ(messages(), 2) << listener.printed;
    EXPECT_EQ(loadedGroup(), "default");
}

TEST_P(Unreadable, DefaultFileIsNotReplacedByTheBuiltInStandard) {
    fs::create_directory(folder / "closed");
    folder.write("closed/any", "");
    fs::permissions(folder / "closed", fs::perms::none);
    make(folder / "sys/pwx.qdsl");
    const OrdinaryUser user;
    if (!user) GTEST_SKIP() << "no other user to be";
    EXPECT_FALSE(loadCurrentStandard());
    EXPECT_EQ(currentStandard(), nullptr);
    EXPECT_EQ(chosen(), L"(none)");
    EXPECT_EQ(messages(), 1) << listener.printed;
}

INSTANTIATE_TEST_SUITE_P(Selection, Unreadable,
                         testing::Values("loop", "pipe", "folder out of reach", "no permission", "too large"));

TEST_F(Selection, OldLayerDefinitionsAreAnOrdinaryFile) {
    ASSERT_EQ(mkfifo((folder / "sys/LAYERDEF.DAT").c_str(), 0644), 0);
    ASSERT_TRUE(loadCurrentStandard());
    readOldLayerDefinitions();
    EXPECT_EQ(messages(), 1) << listener.printed;
}

TEST_F(Selection, SettingsThatCannotBeWrittenAreToldOnlyWhenTheChoiceIsLost) {
    putStandard("sys/pwx.qdsl", "default");
    for (const std::wstring& value : {inner("sys/pwx.qdsl"), std::wstring(L"pwx.qdsl"), std::wstring(L"gone.qdsl")}) {
        choose(value);
        fs::permissions(folder / "settings.ini", fs::perms(0444));
        {
            const OrdinaryUser user;
            if (!user) GTEST_SKIP() << "no other user to be";
            listener.printed.clear();
            EXPECT_TRUE(loadCurrentStandard());
            EXPECT_EQ(messages(), value == L"gone.qdsl" ? 1 : 0) << listener.printed;
            releaseStandard();
        }
        fs::permissions(folder / "settings.ini", fs::perms::owner_all);
    }
}

#endif

TEST_F(Selection, TellsTheHostWhatServes) {
    EXPECT_TRUE(QrsExport::GetStandardInUse().file.empty());
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(QrsExport::GetStandardInUse().file, inner("sys/pwx.qdsl"));
    EXPECT_TRUE(QrsExport::GetStandardInUse().isBuiltIn);
    putStandard("sys/office.qdsl", "office");
    putStandard("sys/pwx.qdsl", "default");
    choose(L"office.qdsl");
    EXPECT_TRUE(reloadCurrentStandard());
    EXPECT_EQ(QrsExport::GetStandardInUse().file, inner("sys/office.qdsl"));
    EXPECT_FALSE(QrsExport::GetStandardInUse().isBuiltIn);
    QrsExport::UseDefaultStandardFile();
    EXPECT_TRUE(reloadCurrentStandard());
    EXPECT_EQ(loadedGroup(), "default");
    platform::Error error;
    EXPECT_TRUE(platform::Settings::user().useFile(folder / "settings.ini", error));
    EXPECT_EQ(chosen(), inner("sys/office.qdsl")) << "that was for one run";
    releaseStandard();
    EXPECT_TRUE(QrsExport::GetStandardInUse().file.empty());
}

TEST_F(Selection, BuiltInStandardServesWithoutAFile) {
    EXPECT_TRUE(loadCurrentStandard());
    EXPECT_EQ(chosen(), L"(none)");
    EXPECT_EQ(listener.printed, "");
    EXPECT_EQ(PipeSystemTool::GetCurrentStandardName(), L"pwx");
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"生活给水"));
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"给水"));
    EXPECT_EQ(PipeSystemTool::CurrentSystemNameToOriginName(L"消火栓"), L"消防");
    EXPECT_EQ(PipeSystemTool::OriginSystemNameToCurrentName(L"消防"), L"消火栓");
    EXPECT_EQ(PipeSystemTool::OriginSystemNameToCurrentName(L"没有"), L"");

    convertOldSystemNames();
    EXPECT_EQ(CurrentPipeSystemName(L"循环回水"), L"循环冷却回水");
    initLayerMaps();
    AcCmColor red;
    red.setColorIndex(1);
    currentStandard()->objectColors = {{L"井", red}, {L"没有", red}};
    ObjectUtility::AllObjectColors()[0].color.setRGB(1, 2, 3);
    applyObjectColors();
    for (const TObjectColor& kind : ObjectUtility::AllObjectColors()) {
        EXPECT_NE(kind.color.colorMethod(), AcCmEntityColor::kByColor);
        if (kind.name == L"井") {
            EXPECT_TRUE(kind.color == red);
        }
    }
}

TEST_F(Selection, ReadsOldLayerDefinitions) {
    std::string lines;
    ASSERT_TRUE(platform::encode(platform::ansiCodePage(),
                                 L"; 旧图层\r\n给水管线 = 水管, 5, DASHED\r\nbad line\r\n\r\n=x\r\n给水立管=,256\r\n"
                                 L"给水阀门=V,300\r\n给水文字=T,1,2,3\r\n没有=x",
                                 lines));
    std::string damaged;
    ASSERT_TRUE(platform::encode(platform::ansiCodePage(), L"\r\n给水设备=D", damaged));
    folder.write("sys/layerdef.dat", lines + damaged + '\xFF');
    ASSERT_TRUE(loadCurrentStandard());
    readOldLayerDefinitions();
    const PipeNode& system = *currentStandard()->groups[0]->FindPipeSystem(L"生活给水");
    EXPECT_EQ(system.FindLayerNode(L"管线")->LayerName, L"水管");
    EXPECT_EQ(system.FindLayerNode(L"管线")->LayerColor.colorIndex(), 5);
    EXPECT_EQ(system.FindLayerNode(L"管线")->LineStyle, L"DASHED");
    EXPECT_EQ(system.FindLayerNode(L"立管")->LayerName, L"给排-生活给水-立管");
    EXPECT_TRUE(system.FindLayerNode(L"立管")->LayerColor.isByLayer());
    EXPECT_EQ(system.FindLayerNode(L"阀门")->LayerName, L"给排-生活给水-阀门");
    EXPECT_EQ(system.FindLayerNode(L"设备")->LayerName, L"给排-生活给水-设备");
    EXPECT_EQ(messages(), 1);
    EXPECT_NE(listener.printed.find("cannot read line 3, 5, 7, 8, 10, 5 left out"), std::string::npos)
        << listener.printed;
}

TEST_F(Selection, RecognisesAndListsStandardFiles) {
    putStandard("sys/a.qdsl", "a");
    folder.write("sys/B.QDSL", "<Morvel/>");
    folder.write("sys/c.qdsl", "<x Comment='Morvel管线系统配置文件'/>");
    folder.write("sys/d.qdsl.bak", "");
    fs::create_directory(folder / "sys/folder.qdsl");
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemStandardFile(makeText(inner("sys/a.qdsl"))));
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemStandardFile(makeText(inner("sys/B.QDSL"))));
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemStandardFile(makeText(inner("sys/c.qdsl"))));
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemStandardFile(makeText(inner("sys/d.qdsl.bak"))));
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemStandardFile(makeText(inner("sys/folder.qdsl"))));
    EXPECT_FALSE(PipeSystemTool::IsPipeSystemStandardFile(L""));

    std::vector<CString> files = {L"kept"};
    PipeSystemTool::GetPipeSystemStandardFiles(makeText(inner("none")), files, true);
    EXPECT_EQ(files.size(), 1u);
    PipeSystemTool::GetPipeSystemStandardFiles(g_csSysPath, files, false);
    EXPECT_EQ(files[0], L"kept");
    std::sort(files.begin(), files.end());
    EXPECT_EQ(files, (std::vector<CString>{L"B.QDSL", L"a.qdsl", L"c.qdsl", L"kept"}));
    files.clear();
    PipeSystemTool::GetPipeSystemStandardFiles(makeText(inner("sys")), files, true);
    EXPECT_EQ(std::count(files.begin(), files.end(), makeText(inner("sys/a.qdsl"))), 1);
}

}  // namespace
