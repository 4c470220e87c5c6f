// Exporting settings: which files go where, and what is never deleted.
#include "frame/cmdconfig.h"
#include "settings_support.h"

namespace qrs::test {

TEST_F(InstalledSettings, ExportsOptionsInTheirOrder) {
    EXPECT_EQ(command({L"dcsz", L"Cancel"}), "");
    EXPECT_TRUE(filesIn("tmp").empty()) << "cancelled";
    SetPipeOption(*FindPipeOption(L"管线默认管径"), 65);
    SetPipeOption(*FindPipeOption(L"检查井直径"), 1250);
    const std::string config =
        R"(<CmdConfig><Function Name="设备设置"><Item Name="喷头半径" Value="0.75"/><Item Name="阀门比例" Value="-1"/>)"
        R"(<Item Name="设备支持3D" Value="1"/></Function></CmdConfig>)";
    folder.write("old/CmdConfig.xml", config);
    frame::CmdConfig::read()->setDefaults();
    EXPECT_EQ(exportInto({}, L"初始设置"), kExported);
    const std::string options =
        "\xEF\xBB\xBF[管线设置]\r\n管线默认管径=65\r\n双线水管线宽=25\r\n单注标高随管线标高联动=1\r\n标注离管距离=2\r\n"
        "扣弯样式=0\r\n弯头曲率=150\r\n洁具数据读取=1\r\n立管楼号标注设置=0\r\n编号管径间距=3\r\n立管标注样式=0\r\n\r\n"
        "[设备设置]\r\n给水圆比例=1.0\r\n喷头半径=0.75\r\n阀门比例=1.0\r\n排水圆半径=1.5\r\n设备支持3D=1\r\n"
        "喷头间距模数=100\r\n\r\n"
        "[室外设置]\r\n检查井直径=1250.0\r\n室外标注样式=0\r\n\r\n"
        "[其它设置]\r\n工具条状态=1\r\n选择预览=1\r\n自动线型比例=1\r\n采用Morvel系统捕捉设置=0\r\n"
        "转K7Morvel文字中英文打断=0\r\n";
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (Files{{"CmdConfig.xml", config}, {"setting.ini", options}}));
}

TEST_F(InstalledSettings, DefaultFolderHoldsTheLastExportOnly) {
    folder.write("old/acad.pgp", "L, *LINE\n");
    folder.write("old/a.qdsl", "a");
    folder.write("old/B.QDSL", "b");
    fs::create_directory(folder.path() / "old/folder.qdsl");
    EXPECT_EQ(exportInto({}, L"图层设置"), kExported);
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (Files{{"B.QDSL", "b"}, {"a.qdsl", "a"}}));
    fs::permissions(folder.path() / "tmp/PwxSetting/a.qdsl", fs::perms::owner_read);
    if (kHasLinks) fs::create_directory_symlink(folder.path() / "old", folder.path() / "tmp/PwxSetting/link");
    EXPECT_EQ(exportInto({}, L"2,4"), kExported);
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (Files{{"acad.pgp", "L, *LINE\n"}}));
    EXPECT_EQ(exportInto({}, L"*=0"), kExported);
    EXPECT_TRUE(filesIn("tmp/PwxSetting").empty()) << "emptied without any group";
    EXPECT_EQ(filesIn("old").size(), 4u) << "nothing was deleted through the link";
}

TEST_F(InstalledSettings, ChosenFolderIsOnlyAddedTo) {
    for (const char* name : {"acad.pgp", "pipe.dbf", "qrsdata.dbf"})
        folder.write(std::string("old/") + name, "installed");
    folder.write("old/linetype.dbf", std::string(50'000, 'l'));
    folder.write("outside", "outside");
    for (const char* name : {"ACAD.PGP", "notes.txt", "linetype.dbf"})
        folder.write(std::string("chosen/") + name, "mine");
    folder.write("chosen/setting.ini", "; mine\n[设备设置]\n喷头半径=7\nmine=1\n");
    fs::create_directories(folder.path() / "chosen/pipe.dbf");
    link("../outside", "chosen/qrsdata.dbf");
    Files expected = filesIn("chosen");

    EXPECT_EQ(command({L"dcsz", L"导出到指定文件夹", L"OK", L""}), "");
    EXPECT_NE(terminal.transcript.find(L"指定保存目录: "), std::wstring::npos);
    EXPECT_EQ(filesIn("chosen"), expected) << "no folder was chosen";
    {
        const NotWritable linetypes(folder.path() / "chosen/linetype.dbf");
        const std::string told = exportInto("chosen", kAllGroups);
        for (const char* fault : {"linetype.dbf was not exported: ", "pipe.dbf was not exported: ", kExported})
            EXPECT_NE(told.find(fault), std::string::npos) << told;
    }
    Files after = filesIn("chosen");
    EXPECT_EQ(after["setting.ini"].find("; mine\n[设备设置]\n喷头半径=1.0\nmine=1\n给水圆比例=1.0\n"), 0u);
    expected["setting.ini"] = after["setting.ini"];
    expected["ACAD.PGP"] = "installed";     // names match without regard to case
    expected["qrsdata.dbf"] = "installed";  // the link gave way
    EXPECT_EQ(after, expected);
    EXPECT_EQ(fileBytes(folder.path() / "outside"), "outside");
    EXPECT_TRUE(filesIn("tmp").empty());

    // Onto itself: nothing is lost.
    expected = filesIn("old");
    EXPECT_NE(exportInto("old", kAllGroups).find("is the file to be copied itself"), std::string::npos);
    after = filesIn("old");
    EXPECT_EQ(after.erase("setting.ini"), 1u);
    EXPECT_EQ(after, expected);
}

TEST_F(InstalledSettings, AnInstallationInTheDefaultFolderIsNotEmptied) {
    folder.write("old/acad.pgp", "installed");
    EXPECT_EQ(exportInto({}, L"2"), kExported);
    const fs::path taken = folder.path() / "tmp/PwxSetting";
    fs::create_directory(taken / "system");
    const fs::path spelled = kHasLinks ? taken / "system" : folder.path() / "TMP/pwxsetting/SYSTEM";
    QrsExport::SetSystemFolder(platform::innerPath(spelled));
    EXPECT_EQ(exportInto({}, L"*=0").find(kRefused), 0u);
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (Files{{"acad.pgp", "installed"}, {"system", "<folder>"}}));
}

#if !defined(_WIN32)  // where neither links nor the case of letters lead elsewhere
TEST_F(InstalledSettings, DefaultFolderLeadsNowhereElse) {
    const fs::path taken = folder.path() / "tmp/PwxSetting";
    const auto isRefused = [](const std::string& shown) { return shown.find(kRefused) == 0; };
    folder.write("chosen/acad.pgp", "kept");
    folder.write("old/acad.pgp", "installed");
    fs::create_directory_symlink(folder.path() / "chosen", taken);
    EXPECT_TRUE(isRefused(exportInto({}, kAllGroups)));
    EXPECT_TRUE(isRefused(importFrom({})));
    EXPECT_EQ(filesIn("chosen"), (Files{{"acad.pgp", "kept"}}));
    fs::remove(taken);

    folder.write("tmp/PwxSetting", "a file");
    EXPECT_TRUE(isRefused(exportInto({}, kAllGroups)));
    EXPECT_EQ(importFrom({}), kMissing);
    EXPECT_EQ(fileBytes(taken), "a file");
    fs::remove(taken);

    // Another folder but for the case of its letters.
    fs::rename(folder.path() / "chosen", folder.path() / "tmp/pwxsetting");
    EXPECT_EQ(importFrom({}), kMissing);
    EXPECT_EQ(exportInto({}, L"*=0"), kExported);
    EXPECT_EQ(filesIn("tmp/pwxsetting").size(), 1u);
    EXPECT_EQ(fileBytes(folder.path() / "old/acad.pgp"), "installed");

    // An installed file that really lies in the folder.
    fs::rename(folder.path() / "old/acad.pgp", taken / "acad.pgp");
    fs::create_symlink(taken / "acad.pgp", folder.path() / "old/acad.pgp");
    EXPECT_TRUE(isRefused(exportInto({}, L"2")));
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (Files{{"acad.pgp", "installed"}}));
}
#endif

}  // namespace qrs::test
