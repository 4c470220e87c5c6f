// Importing settings: from one installation into another.
#include "PipeSystemTool.h"
#include "settings_support.h"

namespace qrs::test {

namespace {

class ImportSettings : public InstalledSettings {
  protected:
    static std::map<std::wstring, double> optionValues() {
        std::map<std::wstring, double> values;
        for (std::size_t i = 0; PipeOptionAt(i); ++i)
            values[PipeOptionAt(i)->name] = GetPipeOption(*PipeOptionAt(i));
        return values;
    }
    // One of every file the groups carry.
    void install(const std::string& system, const std::string& content) {
        for (const char* name : {"CmdConfig.xml", "acad.pgp", "qrsdata.dbf", "linetype.dbf", "pipe.dbf", "VALVE_U.TK",
                                 "VALVE_U.SLB", "VALVE_U.DWB", "EVALVE_U.TK", "EVALVE_U.SLB", "EVALVE_U.DWB"})
            folder.write(system + "/" + name, content + name);
        folder.write(system + "/pwx.qdsl", standard(content));
    }
};

}  // namespace

TEST_F(ImportSettings, TwoInstallationsBecomeEqual) {
    install("old", "原");
    folder.write("old/mine.qdsl", "of the old one only");
    for (std::size_t i = 0; PipeOptionAt(i); ++i) {
        const TPipeOption& option = *PipeOptionAt(i);
        EXPECT_TRUE(SetPipeOption(option, option.hasDecimals ? 2.125 + static_cast<double>(i) : option.least));
    }
    const auto options = optionValues();
    EXPECT_EQ(exportInto({}, kAllGroups), kExported);

    use("new");
    install("new", "新");
    EXPECT_NE(optionValues(), options);
    EXPECT_EQ(importFrom({}), std::string(kImported) + kRestart);
    EXPECT_EQ(filesIn("new"), filesIn("old"));
    EXPECT_EQ(optionValues(), options);
    EXPECT_TRUE(PipeSystemTool::IsPipeSystemOfCurrentStandard(L"原")) << "the standard is loaded again";

    // The same through a folder that the user chooses, from a new export.
    folder.write("new/acad.pgp", "later");
    fs::remove(folder.path() / "new/pipe.dbf");
    EXPECT_EQ(exportInto("chosen", kAllGroups), kExported);
    use("old");
    EXPECT_EQ(importFrom("chosen"), std::string(kImported) + kRestart);
    EXPECT_EQ(answers.folderTitle, L"指定导入目录");
    EXPECT_EQ(read(folder.path() / "old/acad.pgp"), "later");
    EXPECT_EQ(read(folder.path() / "old/pipe.dbf"), "原pipe.dbf");
}

TEST_F(ImportSettings, AsksWhereAndCanBeCancelled) {
    install("old", "原");
    const auto installed = filesIn("old");
    const std::string prompt = "选择导入设置文件的位置[读取默认位置(1)/到指定目录读取(2)]:<1>";
    const std::string missing = "没有找到导出的文件，请确认首先进行导出设置。\n";
    for (const wchar_t* answer : {L"", L"1", L"22", L"x"})
        EXPECT_EQ(command({L"drsz", answer}), prompt + platform::toUtf8(answer) + "\n" + missing);
    EXPECT_EQ(command({L"drsz", ScriptTerminal::kEsc}).find(missing), std::string::npos);
    EXPECT_EQ(command({L"drsz", L"2"}), prompt + "2\n") << "no folder was chosen";
    answers.folder = platform::innerPath(folder.path() / "gone");
    EXPECT_EQ(importFrom("gone"), missing);
    EXPECT_EQ(importFrom("chosen"), kImported) << "nothing to copy, no restart";
    EXPECT_EQ(filesIn("old"), installed);
}

TEST_F(ImportSettings, WhatCannotBeCopiedStaysAndTheRestIsCopied) {
    install("new", "新");
    use("new");
    fs::remove(folder.path() / "new/acad.pgp");
    fs::remove(folder.path() / "new/VALVE_U.TK");
    fs::create_directory(folder.path() / "new/VALVE_U.TK");
    fs::permissions(folder.path() / "new/pipe.dbf", fs::perms::owner_read);
    folder.write("really.dbf", "behind a link");
    fs::remove(folder.path() / "new/qrsdata.dbf");
    fs::create_symlink("../really.dbf", folder.path() / "new/qrsdata.dbf");
    for (const char* name : {"acad.pgp", "VALVE_U.TK", "VALVE_U.SLB", "pipe.dbf", "qrsdata.dbf", "foreign.txt"})
        folder.write(std::string("chosen/") + name, "imported");
    folder.write("chosen/linetype.dbf", std::string(50'000, 'l'));
    fs::create_directory(folder.path() / "chosen/CmdConfig.xml");
    folder.write("chosen/PWX.qdsl", "<Morvel");
    folder.write("chosen/setting.ini",
                 "[管线设置]\n管线默认管径=80.0\n扣弯样式=1.5\n弯头曲率=99999999999\n立管标注样式=\n"
                 "[设备设置]\n喷头半径=nan\n阀门比例=0.5\n[其它]\n选择预览=0\n");
    SetPipeOption(*FindPipeOption(L"排水圆半径"), 4.0);
    {
        rlimit limit{}, full{};
        getrlimit(RLIMIT_FSIZE, &limit);
        full = limit;
        full.rlim_cur = 10'000;
        setrlimit(RLIMIT_FSIZE, &full);
        const std::string shown = importFrom("chosen");
        setrlimit(RLIMIT_FSIZE, &limit);
        for (const char* refused :
             {"“扣弯样式”的值“1.5”", "“弯头曲率”的值“99999999999”", "“立管标注样式”的值“”", "“喷头半径”的值“nan”"})
            EXPECT_NE(shown.find(refused), std::string::npos) << shown;
        EXPECT_NE(shown.find("仍使用已载入的标准。"), std::string::npos) << shown;
        EXPECT_EQ(shown.substr(shown.size() - std::string(kImported).size()), kImported) << "no restart: " << shown;
    }
    std::map<std::string, std::string> after = filesIn("new");
    EXPECT_EQ(after.count("acad.pgp"), 0u) << "a file that is not installed is not brought in";
    EXPECT_EQ(after.count("foreign.txt"), 0u);
    EXPECT_EQ(after["VALVE_U.TK"], "<folder>");
    EXPECT_EQ(after["VALVE_U.SLB"], "imported");
    EXPECT_EQ(after["pipe.dbf"], "新pipe.dbf");
    EXPECT_EQ(after["qrsdata.dbf"], "<link>");
    EXPECT_EQ(read(folder.path() / "really.dbf"), "imported") << "an installed link is followed";
    EXPECT_EQ(after["linetype.dbf"], "新linetype.dbf") << "no room for the new one";
    EXPECT_EQ(after["CmdConfig.xml"], "新CmdConfig.xml");
    EXPECT_EQ(after["pwx.qdsl"], "<Morvel");
    EXPECT_EQ(GetPipeOption(L"管线默认管径"), 80.0);
    EXPECT_EQ(GetPipeOption(L"阀门比例"), 0.5);
    EXPECT_EQ(GetPipeOption(L"扣弯样式"), 0.0);
    EXPECT_EQ(GetPipeOption(L"选择预览"), 1.0) << "of another section";
    EXPECT_EQ(GetPipeOption(L"排水圆半径"), 4.0) << "missing in the file";
}

}  // namespace qrs::test
