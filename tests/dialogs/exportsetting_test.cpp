// Exporting settings: which files go where, and what is never deleted.
#include <sys/stat.h>

#include "settings_support.h"

namespace qrs::test {

namespace {

class ExportSettings : public InstalledSettings {};

}  // namespace

TEST_F(ExportSettings, DialogAndOptionsFileStandAsStated) {
    answers.ok = false;
    EXPECT_EQ(exportInto({}, kAllGroups), "");
    EXPECT_EQ(answers.shown,
              L"导出设置|确定|取消|导出设置|初始设置|快捷命令 acad.pgp|工具条设置|线型库|图层设置|管材库|用户图库|"
              L"导出到指定文件夹");
    EXPECT_TRUE(filesIn("tmp").empty()) << "cancelled";
    answers.ok = true;

    SetPipeOption(*FindPipeOption(L"管线默认管径"), 65);
    SetPipeOption(*FindPipeOption(L"检查井直径"), 1250);
    TDwgSettingDefaults::Current().Set(L"设备设置", L"喷头半径", L"0.75");
    TDwgSettingDefaults::Current().Set(L"设备设置", L"阀门比例", L"-1");
    TDwgSettingDefaults::Current().Set(L"设备设置", L"设备支持3D", L"1");
    EXPECT_EQ(exportInto({}, {L"初始设置"}), kExported);
    EXPECT_EQ(filesIn("tmp/PwxSetting"),
              (std::map<std::string, std::string>{{"setting.ini",
                                                   "\xEF\xBB\xBF[管线设置]\r\n管线默认管径=65\r\n双线水管线宽=25\r\n"
                                                   "单注标高随管线标高联动=1\r\n标注离管距离=2\r\n扣弯样式=0\r\n"
                                                   "弯头曲率=150\r\n洁具数据读取=1\r\n立管楼号标注设置=0\r\n"
                                                   "编号管径间距=3\r\n立管标注样式=0\r\n\r\n"
                                                   "[设备设置]\r\n给水圆比例=1.0\r\n喷头半径=0.75\r\n阀门比例=1.0\r\n"
                                                   "排水圆半径=1.5\r\n设备支持3D=1\r\n喷头间距模数=100\r\n\r\n"
                                                   "[室外设置]\r\n检查井直径=1250.0\r\n室外标注样式=0\r\n\r\n"
                                                   "[其它设置]\r\n工具条状态=1\r\n选择预览=1\r\n自动线型比例=1\r\n"
                                                   "采用Morvel系统捕捉设置=0\r\n转K7Morvel文字中英文打断=0\r\n"}}));
}

TEST_F(ExportSettings, DefaultFolderHoldsTheLastExportOnly) {
    folder.write("old/acad.pgp", "L, *LINE\n");
    folder.write("old/a.qdsl", "a");
    folder.write("old/B.QDSL", "b");
    fs::create_directory(folder.path() / "old/folder.qdsl");
    folder.write("old.ini.keep", "outside");
    EXPECT_EQ(exportInto({}, {L"图层设置"}), kExported);
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (std::map<std::string, std::string>{{"B.QDSL", "b"}, {"a.qdsl", "a"}}));
    fs::permissions(folder.path() / "tmp/PwxSetting/a.qdsl", fs::perms::owner_read);
    fs::create_directory_symlink(folder.path() / "old", folder.path() / "tmp/PwxSetting/link");
    EXPECT_EQ(exportInto({}, {L"快捷命令 acad.pgp", L"线型库"}), kExported);
    EXPECT_EQ(filesIn("tmp/PwxSetting"), (std::map<std::string, std::string>{{"acad.pgp", "L, *LINE\n"}}));
    EXPECT_EQ(exportInto({}, {}), kExported);
    EXPECT_TRUE(filesIn("tmp/PwxSetting").empty());
    EXPECT_EQ(filesIn("old").size(), 4u) << "nothing was deleted through the link";
}

TEST_F(ExportSettings, ChosenFolderIsOnlyAddedTo) {
    folder.write("old/acad.pgp", "new shortcuts");
    folder.write("old/pipe.dbf", "new sizes");
    folder.write("old/qrsdata.dbf", "new bars");
    folder.write("old/linetype.dbf", std::string(50'000, 'l'));
    folder.write("outside", "outside");
    folder.write("chosen/ACAD.PGP", "old shortcuts");
    folder.write("chosen/notes.txt", "mine");
    folder.write("chosen/linetype.dbf", "old linetypes");
    folder.write("chosen/setting.ini", "; mine\n[设备设置]\n喷头半径=7\nmine=1\n");
    fs::create_directories(folder.path() / "chosen/pipe.dbf");
    fs::create_symlink("../outside", folder.path() / "chosen/qrsdata.dbf");
    const auto before = filesIn("chosen");

    answers.folder.reset();
    answers.checked = {L"初始设置", kChooseFolder};
    EXPECT_EQ(command({L"dcsz"}), "");
    EXPECT_EQ(answers.folderTitle, L"指定保存目录");
    EXPECT_EQ(filesIn("chosen"), before);
    EXPECT_TRUE(filesIn("tmp").empty()) << "a cancelled choice of the folder does nothing";

    {
        rlimit limit{}, full{};
        getrlimit(RLIMIT_FSIZE, &limit);
        full = limit;
        full.rlim_cur = 10'000;
        setrlimit(RLIMIT_FSIZE, &full);
        EXPECT_EQ(exportInto("chosen", kAllGroups), kExported);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    std::map<std::string, std::string> after = filesIn("chosen");
    EXPECT_EQ(after["ACAD.PGP"], "new shortcuts") << "names match without regard to case";
    EXPECT_EQ(after["notes.txt"], "mine");
    EXPECT_EQ(after["linetype.dbf"], "old linetypes") << "no room for the new one";
    EXPECT_EQ(after["pipe.dbf"], "<folder>");
    EXPECT_EQ(after["qrsdata.dbf"], "new bars");
    EXPECT_EQ(read(folder.path() / "outside"), "outside") << "the link gave way";
    EXPECT_EQ(after["setting.ini"].substr(0, after["setting.ini"].find("给水圆比例")),
              "; mine\n[设备设置]\n喷头半径=1.0\nmine=1\n");
    EXPECT_EQ(after.size(), 6u);
    EXPECT_TRUE(filesIn("tmp").empty());

    // Onto itself: nothing is lost.
    const auto installed = filesIn("old");
    EXPECT_EQ(exportInto("old", kAllGroups), kExported);
    auto exported = filesIn("old");
    EXPECT_EQ(exported.erase("setting.ini"), 1u);
    EXPECT_EQ(exported, installed);
}

TEST_F(ExportSettings, DefaultFolderLeadsNowhereElse) {
    const fs::path taken = folder.path() / "tmp/PwxSetting";
    const std::string refusal = "不能使用默认设置目录 ";
    folder.write("chosen/kept", "kept");
    folder.write("old/acad.pgp", "installed");
    fs::create_directory_symlink(folder.path() / "chosen", taken);
    EXPECT_EQ(exportInto({}, kAllGroups).substr(0, refusal.size()), refusal);
    EXPECT_EQ(importFrom({}).substr(0, refusal.size()), refusal);
    EXPECT_EQ(filesIn("chosen").size(), 1u);
    fs::remove(taken);

    folder.write("tmp/PwxSetting", "a file");
    EXPECT_EQ(exportInto({}, kAllGroups).substr(0, refusal.size()), refusal);
    EXPECT_EQ(read(taken), "a file");
    fs::remove(taken);

    // Another folder but for the case of its letters.
    fs::create_directory(folder.path() / "tmp/pwxsetting");
    folder.write("tmp/pwxsetting/kept", "kept");
    EXPECT_EQ(exportInto({}, {}), kExported);
    EXPECT_EQ(filesIn("tmp/pwxsetting").size(), 1u);

    // An installed file that really lies in the folder, and an installation in it.
    folder.write("tmp/PwxSetting/acad.pgp", "the only one");
    fs::remove(folder.path() / "old/acad.pgp");
    fs::create_symlink(taken / "acad.pgp", folder.path() / "old/acad.pgp");
    EXPECT_EQ(exportInto({}, {L"快捷命令 acad.pgp"}).substr(0, refusal.size()), refusal);
    fs::create_directory(taken / "system");
    QrsExport::SetSystemFolder(platform::innerPath(taken / "system"));
    EXPECT_EQ(exportInto({}, {}).substr(0, refusal.size()), refusal);
    EXPECT_EQ(filesIn("tmp/PwxSetting").size(), 2u);
    EXPECT_EQ(read(taken / "acad.pgp"), "the only one");
}

}  // namespace qrs::test
