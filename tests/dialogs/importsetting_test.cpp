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
    // One of every file the groups carry; the standard has one system, whose name the content is.
    void install(const std::string& system, const std::string& content) {
        for (const char* name : {"CmdConfig.xml", "acad.pgp", "qrsdata.dbf", "linetype.dbf", "pipe.dbf", "VALVE_U.TK",
                                 "VALVE_U.SLB", "VALVE_U.DWB", "EVALVE_U.TK", "EVALVE_U.SLB", "EVALVE_U.DWB"})
            folder.write(system + "/" + name, content + name);
        std::string standard = fileBytes(fs::path(QRS_SOURCE_DIR) / "tests/standard/small.qdsl");
        const std::string name = "J &amp; &lt;1&gt;";
        folder.write(system + "/pwx.qdsl", standard.replace(standard.find(name), name.size(), content));
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
    EXPECT_EQ(fileBytes(folder.path() / "old/acad.pgp"), "later");
    EXPECT_EQ(fileBytes(folder.path() / "old/pipe.dbf"), "原pipe.dbf");
}

TEST_F(ImportSettings, AsksWhereAndCanBeCancelled) {
    install("old", "原");
    const Files installed = filesIn("old");
    for (const wchar_t* answer : {L"", L"1", L"22", L"x"})
        EXPECT_EQ(command({L"drsz", answer}), kMissing);
    EXPECT_NE(terminal.transcript.find(L"\n选择导入设置文件的位置[读取默认位置(1)/到指定目录读取(2)]:<1>x\n"),
              std::wstring::npos);
    EXPECT_EQ(command({L"drsz", ScriptTerminal::kEsc}).find(kMissing), std::string::npos);
    EXPECT_EQ(command({L"drsz", L"2", L""}), "") << "no folder was chosen";
    EXPECT_NE(terminal.transcript.find(L"指定导入目录: "), std::wstring::npos);
    EXPECT_EQ(importFrom("chosen"), kImported) << "nothing to copy, no restart";
    EXPECT_EQ(filesIn("old"), installed);
}

TEST_F(ImportSettings, WhatCannotBeCopiedStaysAndTheRestIsCopied) {
    install("new", "新");
    use("new");
    for (const char* name : {"acad.pgp", "VALVE_U.TK", "qrsdata.dbf"})
        fs::remove(folder.path() / "new" / name);
    fs::create_directory(folder.path() / "new/VALVE_U.TK");
    fs::permissions(folder.path() / "new/pipe.dbf", fs::perms::owner_read);
    folder.write("really.dbf", "behind a link");
    link("../really.dbf", "new/qrsdata.dbf");
    Files expected = filesIn("new");
    for (const char* name : {"acad.pgp", "VALVE_U.TK", "VALVE_U.SLB", "pipe.dbf", "qrsdata.dbf", "foreign.txt"})
        folder.write(std::string("chosen/") + name, "imported");
    folder.write("chosen/linetype.dbf", std::string(50'000, 'l'));
    fs::create_directory(folder.path() / "chosen/CmdConfig.xml");
    folder.write("chosen/PWX.qdsl", "<Morvel");
    folder.write("chosen/setting.ini",
                 "[管线设置]\n管线默认管径=80.0\n扣弯样式=1.5\n弯头曲率=99999999999\n立管标注样式=\n"
                 "[设备设置]\n喷头半径=nan\n阀门比例=0.5\n[其它]\n选择预览=0\n");
    SetPipeOption(*FindPipeOption(L"排水圆半径"), 4.0);
    auto options = optionValues();
    std::string shown;
    {
        const NotWritable linetypes(folder.path() / "new/linetype.dbf");
        shown = importFrom("chosen");
    }
    for (const char* told : {"“扣弯样式”的值“1.5”", "“弯头曲率”的值“99999999999”", "“立管标注样式”的值“”",
                             "“喷头半径”的值“nan”", "The one that is loaded serves on."})
        EXPECT_NE(shown.find(told), std::string::npos) << told << shown;
    EXPECT_EQ(shown.substr(shown.size() - std::string(kImported).size()), kImported) << "no restart: " << shown;
    expected["VALVE_U.SLB"] = "imported";
    expected["pwx.qdsl"] = "<Morvel";
    if (!kHasLinks) expected["qrsdata.dbf"] = "imported";
    EXPECT_EQ(filesIn("new"), expected) << "what is not installed is not brought in";
    EXPECT_EQ(fileBytes(folder.path() / (kHasLinks ? "really.dbf" : "new/qrsdata.dbf")), "imported")
        << "an installed link is followed";
    options[L"管线默认管径"] = 80.0;
    options[L"阀门比例"] = 0.5;
    EXPECT_EQ(optionValues(), options);
}

}  // namespace qrs::test
