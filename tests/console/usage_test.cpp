// The program's command line: help, version, wrong usage, and files that cannot be read.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

#include "../dxftext.h"
#include "program.h"

namespace {

using Arguments = std::vector<std::string>;

struct Misuse {
    Arguments arguments;
    std::string told;
};

bool isOneLine(const std::string& text) {
    return !text.empty() && std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

// The one line of an error: prefix, and what it must speak of.
void expectComplaint(const Outcome& outcome, int code, const std::string& told) {
    EXPECT_EQ(outcome.code, code) << outcome.error;
    EXPECT_TRUE(isOneLine(outcome.error)) << outcome.error;
    EXPECT_EQ(outcome.error.rfind("qrsconsole: ", 0), 0u) << outcome.error;
    EXPECT_NE(outcome.error.find(told), std::string::npos) << outcome.error;
}

}  // namespace

TEST(Usage, TellsAboutItself) {
    const Workplace place;
    const Outcome help = place.run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* option : {"--script", "--execute", "--output", "--in-place", "--plugin", "--system", "--settings",
                               "--support", "--no-module", "--codepage", "--timeout", "--keep-going", "--version"})
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    const Outcome version = place.run({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out.rfind("qrsconsole 0.", 0), 0u) << version.out;
}

TEST(Usage, SpeaksTheLocalesLanguageOrTheOneNamed) {
    const Workplace place;
#if defined(_WIN32)  // where a missing file is told in the system's own words
    const std::string wrong = "folder", inEnglish = "is a folder", inChinese = "是文件夹";
    std::filesystem::create_directory(place.path(wrong));
#else
    const std::string wrong = "none.dxf", inEnglish = "No such file", inChinese = "没有这个";
#endif
    struct Choice {
        std::vector<std::string> environment;
        Arguments arguments;
        bool isChinese;
    };
    const Choice choices[] = {
        {{"LC_ALL=zh_CN.UTF-8"}, {}, true},
        {{"LC_ALL=", "LC_MESSAGES=zh_CN", "LANG=en_US"}, {}, true},
        {{"LC_ALL=", "LC_MESSAGES=", "LANG=zh-CN.UTF-8"}, {}, true},
        {{"LC_ALL=en_US.UTF-8", "LANGUAGE=de:zh_CN:en"}, {}, true},
        {{"LC_ALL=C.UTF-8", "LANGUAGE=zh_CN"}, {}, false},
        {{"LC_ALL=de_DE.UTF-8", "LANG=zh_CN.UTF-8"}, {}, false},
        {{}, {"--language", "zh"}, true},
        {{"LC_ALL=zh_CN.UTF-8"}, {"--language=en_US"}, false},
    };
    for (const Choice& choice : choices) {
        Arguments arguments = {wrong};
        arguments.insert(arguments.end(), choice.arguments.begin(), choice.arguments.end());
        expectComplaint(place.run(arguments, {}, choice.environment), 3, choice.isChinese ? inChinese : inEnglish);
    }
    expectComplaint(place.run({"--language", "fr", "none.dxf"}), 2, "--language takes zh or en");
}

// What is said in Chinese holds no sentence of English.
TEST(Usage, SpeaksOneLanguage) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    const std::string other = std::regex_replace(building, std::regex("\nCIRCLE"), "\nUNKNOWN");
    place.write("cut.dxf", other.substr(0, other.rfind("EOF") - 5));
    const Misuse runs[] = {
        {{"--help"}, "用法"},
        {{"--colour"}, "不认识的参数"},
        {{"--info", "cut.dxf"}, "警告"},
        {{"--compare", "building.dxf", "cut.dxf"}, "只在第二个中"},
        {{"-e", "REGEN", "cut.dxf"}, "缺少 EOF"},
        {{"-e", "LIST", "-e", "(handent \"73\")", "-e", "", "building.dxf"}, "图层：\"建筑-轴线\"  空间：模型空间"},
        {{"-e", "-LAYER", "-e", "?", "-e", "", "-e", "", "building.dxf"}, "图层名"},
        {{"-e", "LIST", "-e", "(ssget \"Q\")", "building.dxf"}, "*取消*"},
        {{"-e", "ZOOM", "-e", "house", "building.dxf"}, "需要点、比例因子或选项关键字。"},
        {{"-e", "FOO", "--keep-going=drawings", "building.dxf", "none.dxf"}, "2 个图形文件：0 个完成，2 个失败"},
    };
    const std::regex sentence("[a-z]{2,} [a-z]{2,} [a-z]{2,}");
    for (const Misuse& run : runs) {
        const Outcome outcome = place.run(run.arguments, {}, {"LC_ALL=zh_CN.UTF-8"});
        const std::string all = outcome.out + outcome.error;
        EXPECT_NE(all.find(run.told), std::string::npos) << all;
        EXPECT_FALSE(std::regex_search(all, sentence)) << all;
    }
}

TEST(Usage, HelpTellsOfEveryCommand) {
    const Workplace place;
    const Outcome list = place.run({"-e", "?"});
    EXPECT_EQ(list.code, 0) << list.error;
    EXPECT_NE(list.out.find("\nFreezing\n  FrozenLayer           freezes the layers of picked objects\n"),
              std::string::npos)
        << list.out;
    const Outcome others = place.run({"--no-module", "-p", QRS_PLUGIN_BESIDE, "-e", "HELP"});
    EXPECT_EQ(others.out.find("FrozenLayer"), others.out.rfind("FrozenLayer"));
    EXPECT_NE(others.out.find("\nconsole_test_plugin"), std::string::npos) << others.out;
    EXPECT_NE(others.out.find("\n  ENDATONCE\n"), std::string::npos) << others.out;

    // Each of the commands listed, and each other name of one, has a page in both languages.
    std::vector<std::string> names = {"?",  "EXIT", "LAYER", "-LA", "LA", "-VPLAYER", "-LAYOUT", "LO",
                                      "MS", "PS",   "-LT",   "-ST", "LI", "Z",        "RE",      "REGENALL"};
    std::istringstream lines(list.out);
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("  ", 0) == 0 && line[2] != ' ') names.push_back(line.substr(2, line.find(' ', 2) - 2));
    EXPECT_GT(names.size(), 50u);
    std::string script;
    for (const std::string& name : names)
        script += "HELP " + name + "\n";
    for (const char* language : {"en", "zh"}) {
        const Outcome pages = place.run({"--language", language}, script);
        EXPECT_EQ(pages.code, 0) << pages.error;
        EXPECT_EQ(pages.error, "");
        EXPECT_EQ(pages.out.find("No page"), std::string::npos) << pages.out;
        for (const std::string& name : names)
            EXPECT_EQ(pages.out.find("Command: HELP " + name + "\nCommand: "), std::string::npos) << name;
    }
    const Outcome page = place.run({"-e", "HELP gxzs", "-e", "'help frozenLAYER", "--keep-going", "--language", "zh"});
    EXPECT_NE(page.error.find("gxzs"), std::string::npos) << page.error;
    EXPECT_NE(page.out.find("\nFrozenLayer：冻结所点图元的图层\n\n逐个点取图元"), std::string::npos) << page.out;
    EXPECT_NE(page.out.find("\n\n    FrozenLayer\n    6000,2000\n    1500,7000\n"), std::string::npos) << page.out;
    EXPECT_EQ(page.out.find('`'), std::string::npos) << page.out;
}

TEST(Usage, RefusesWhatMakesNoSense) {
    const Workplace place;
    place.example("building.dxf");
    const Misuse misuses[] = {
        {{"--colour"}, "--colour"},
        {{"-o", "x.dxf", "a.dxf", "b.dxf"}, "--output of several drawings"},
        {{"--converter", "convert {in}", "building.dxf"}, "{out} is missing"},
        {{"-o", "x.dwg", "building.dxf"}, "converter"},
        {{"-s"}, "--script"},
        {{"-o", "x.dxf", "-e", "LIST"}, "--output needs a drawing"},
        {{"--in-place"}, "--in-place needs a drawing"},
        {{"-o", "x.dxf", "--in-place", "building.dxf"}, "excludes"},
        {{"--codepage", "4711", "building.dxf"}, "4711"},
        {{"--timeout", "soon", "building.dxf"}, "--timeout"},
        {{"--timeout", "-1", "building.dxf"}, "--timeout"},
        {{""}, "empty"},
    };
    for (const Misuse& misuse : misuses)
        expectComplaint(place.run(misuse.arguments), 2, misuse.told);
    EXPECT_FALSE(place.has("x.dxf"));
}

TEST(Usage, TellsWhichFileCannotBeRead) {
    const Workplace place;
    const std::string building = fileBytes(place.example("building.dxf"));
    const std::string half = building.substr(0, building.size() / 2);
    place.write("half.dxf", half);
    place.write("letter.dxf", "Dear Sir or Madam,\nplease find enclosed\n");
    place.write("plugin.so", "no library");
    place.write("settings.ini", "[Software\\QRS\nbroken");
    const Misuse misuses[] = {
        {{"none.dxf"}, "none.dxf"},
        {{"."}, "."},
        {{"half.dxf", "--in-place", "-e", "UnFrozenAllLayer"}, "half.dxf:"},
        {{"letter.dxf"}, "letter.dxf:1"},
        {{"-s", "none.scr", "building.dxf"}, "none.scr"},
        {{"-p", "none.so", "building.dxf"}, "none.so"},
        {{"-p", "plugin.so", "building.dxf"}, "plugin.so"},
        {{"-p", QRS_HOST_LIBRARY, "building.dxf"}, "acrxEntryPoint"},
        {{"--settings", "settings.ini", "building.dxf"}, "settings.ini:1"},
        {{"--system", "nowhere", "building.dxf"}, "nowhere"},
        {{"--support", "nowhere", "building.dxf"}, "nowhere"},
    };
    for (const Misuse& misuse : misuses)
        expectComplaint(place.run(misuse.arguments), 3, misuse.told);
    // Whatever was given, the complaint about it is one line that can be read.
    expectComplaint(place.run({"-e", "two\nlines"}), 1, "\"two?lines\"");
    const Outcome endless = place.run({}, std::string(100'000, 'x'));
    expectComplaint(endless, 1, "xxx ... xxx");
    EXPECT_LT(endless.error.size(), 10'000u);
    EXPECT_EQ(place.read("half.dxf"), half);
    EXPECT_FALSE(place.has("half.dxf.bak"));
    EXPECT_EQ(place.read("settings.ini"), "[Software\\QRS\nbroken");
}

TEST(Usage, GoesOnWithAStandardThatCannotBeUsed) {
    const Workplace place;
    place.example("building.dxf");
    std::filesystem::create_directory(place.path("system"));
    // In the form of paths here, whatever the module's own.
    const std::string told = place.path("system/pwx.qdsl").make_preferred().u8string();
    for (const std::string content : {"not XML at all", "<?xml version=\"1.0\"?><Other Comment=\"x\" />"}) {
        place.write("system/pwx.qdsl", content);
        const Outcome outcome =
            place.run({"--system", "system", "-e", "UnFrozenAllLayer", "-o", "thawed.dxf", "building.dxf"});
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        EXPECT_NE(outcome.error.find(told), std::string::npos) << outcome.error;
        EXPECT_EQ(place.read("system/pwx.qdsl"), content);
        EXPECT_TRUE(place.has("thawed.dxf"));
    }
}

TEST(Usage, TakesAStandardNamedWithSlashes) {
    const Workplace place;
    place.example("building.dxf");
    const std::filesystem::path standard = place.write("mine.qdsl", "<Morvel/>");
    const std::string head = "[Software\\QRS\\PWX\\PipeSystemSetting]\nStandardFile=s:";
    place.write("settings.ini", head + standard.generic_u8string() + "\n");
    const Outcome outcome = place.run({"--settings", "settings.ini", "-e", "REGEN", "building.dxf"});
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    // The module has not fallen back to another standard and remembered that one.
    const std::string settings = place.read("settings.ini");
    EXPECT_NE(settings.find("\\\\mine.qdsl"), std::string::npos) << settings;
    EXPECT_EQ(settings.find('/'), std::string::npos) << settings;
}

// A folder named on the command line serves with its own standard, once; else the standard chosen before.
TEST(Usage, NamesTheStandardInUse) {
    const Workplace place;
    place.example("building.dxf");
    std::filesystem::create_directory(place.path("system"));
    std::filesystem::create_directory(place.path("empty"));
    place.write("system/pwx.qdsl", "<Morvel/>");
    const std::string office = place.write("office.qdsl", "<Morvel/>").u8string();
    const auto inner = [&place](const char* name) { return place.path(name).make_preferred().u8string(); };
    const std::string inSystem = inner("system/pwx.qdsl");
    place.write("chosen.ini", "[Software\\QRS\\PWX\\PipeSystemSetting]\nStandardFile=s:" +
                                  std::regex_replace(office, std::regex("\\\\"), "\\\\") + "\n");
    const Arguments settings = {"--settings", "chosen.ini"};
    struct Case {
        Arguments arguments;
        std::string named;
    };
    const Case cases[] = {
        {{}, office},
        {{"--system", "system"}, inSystem},
        {{"--system", "empty"}, "built in (there is no " + inner("empty/pwx.qdsl") + ")"},
    };
    const auto with = [&settings](Arguments arguments, const Arguments& more) {
        arguments.insert(arguments.end(), settings.begin(), settings.end());
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    };
    for (const Case& one : cases) {
        const Outcome told = place.run(with(one.arguments, {"-e", "STANDARD"}));
        EXPECT_EQ(told.out, "Command: STANDARD\nStandard: " + one.named + "\n") << told.error;
        const Outcome info = place.run(with(one.arguments, {"--info", "building.dxf"}));
        EXPECT_NE(info.out.find("\n  standard      " + one.named + "\n"), std::string::npos) << info.out << info.error;
        EXPECT_EQ(place.run(with(one.arguments, {"-e", "STANDARD"})).out, told.out) << "nothing else is remembered";
    }
#if !defined(_WIN32)  // where a user has no links to make
    // What cannot be read does not serve; the report names what does, and says why, as a run would.
    std::filesystem::remove(place.path("office.qdsl"));
    std::filesystem::create_symlink("office.qdsl", place.path("office.qdsl"));
    const std::string told = place.run(with({}, {"-e", "STANDARD"})).out;
    const Outcome info = place.run(with({}, {"--info", "building.dxf"}));
    EXPECT_NE(info.out.find("\n  standard      " + told.substr(told.rfind(": ") + 2)), std::string::npos)
        << told << info.out;
    EXPECT_EQ(std::count(info.error.begin(), info.error.end(), '\n'), 1) << info.error;
    EXPECT_NE(info.error.find("office.qdsl"), std::string::npos) << info.error;
#endif
    const Outcome without = place.run(with({"--no-module"}, {"-e", "STANDARD"}));
    EXPECT_EQ(without.out, "Command: STANDARD\nNo pipe-system standard is loaded.\n");
    expectComplaint(place.run({"--info", "building.dxf", "--system", "nowhere"}), 3, "nowhere");
}

// Plug-ins come after the module; a bare name may lie beside the program.
TEST(Usage, LoadsPluginsBesideTheModule) {
    const Workplace place;
    const std::string module = std::filesystem::path(QRS_MODULE).filename().u8string();
    const std::string plugin = std::filesystem::path(QRS_PLUGIN_BESIDE).filename().u8string();
    const Arguments list = {"-e", "ARX ?"};
    const auto listed = [&](Arguments arguments) {
        arguments.insert(arguments.end(), list.begin(), list.end());
        const Outcome outcome = place.run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        return outcome.out.substr(outcome.out.find("]: ?\n") + 5);
    };
    EXPECT_EQ(listed({}), module + "\n");
    EXPECT_EQ(listed({"-p", plugin}), module + "\n" + plugin + "\n");
    EXPECT_EQ(listed({"-p", plugin, "--no-module"}), plugin + "\n");
    EXPECT_EQ(listed({"-p", plugin, "-p", QRS_MODULE}), plugin + "\n" + module + "\n");
    EXPECT_EQ(listed({"-e", "ARX Load", "-e", plugin}), module + "\n" + plugin + "\n");
    // Without one that failed in its start the commands would not do what they should.
    place.example("building.dxf");
    const Outcome failed = place.run({"-p", plugin, "-e", "UnFrozenAllLayer", "-o", "out.dxf", "building.dxf"}, {},
                                     {"TEST_FAILING_START=1"});
    EXPECT_EQ(failed.code, 1);
    EXPECT_NE(failed.error.find("the start failed"), std::string::npos) << failed.error;
    EXPECT_FALSE(place.has("out.dxf"));
}

TEST(Usage, GoesOnWithSettingsThatCannotBeWritten) {
    const Workplace place;
    place.example("building.dxf");
    std::filesystem::create_directory(place.path("locked"));
    const std::filesystem::path settings = place.write("locked/settings.ini", "");
    std::filesystem::permissions(settings, std::filesystem::perms::owner_read);
    const Outcome outcome = place.run({"--settings", "locked/settings.ini", "-e", "REGEN", "building.dxf"});
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    // One line in front of the transcript says so.
    EXPECT_NE(outcome.out.find("pwx.qdsl\nCommand: REGEN\n"), std::string::npos) << outcome.out;
    EXPECT_EQ(fileBytes(settings), "");
}

TEST(Usage, GivesUpInTime) {
    const Workplace place;
    place.example("building.dxf");
    std::string script;
    for (int i = 0; i < 300000; ++i)
        script += "REGEN\n";
    place.write("long.scr", script);
    expectComplaint(place.run({"--timeout", "0.2", "-s", "long.scr", "--in-place", "building.dxf"}), 1, "0.2 seconds");
    EXPECT_FALSE(place.has("building.dxf.bak"));
}

TEST(Usage, PlotsDrawings) {
    const Workplace place;
    place.example("building.dxf");
    struct Row {
        std::vector<std::string> arguments;
        int code;
        std::string error;
    };
#if defined(_WIN32)
    const Row row{{"building.dxf", "--plot", "a.svg"}, 2, "plotting is not in this build (--help lists the options)"};
    const Outcome outcome = place.run(row.arguments);
    EXPECT_EQ(outcome.code, row.code);
    EXPECT_NE(outcome.error.find(row.error), std::string::npos) << outcome.error;
#else
    const std::string help = " (--help lists the options)";
    place.write("own.svg", place.read("building.dxf"));
    place.write("referring.dxf", dxfText("0=SECTION;2=BLOCKS;0=BLOCK;8=0;2=R;70=4;10=0;20=0;1=own.svg;0=ENDBLK;8=0;"
                                         "0=ENDSEC;0=SECTION;2=ENTITIES;0=INSERT;8=0;2=R;10=0;20=0;0=ENDSEC;0=EOF"));
    for (const Row& row :
         {Row{{"building.dxf", "--plot", "a.gif"}, 2, "a.gif: the name of a picture ends in .svg, .pdf or .png" + help},
          Row{{"building.dxf", "--plot", "a.png", "--dpi", "5"},
              2,
              "dots per inch are a number from 10 to 2400" + help},
          Row{{"building.dxf", "--plot", "a.png", "--dpi", "abc"},
              2,
              "dots per inch are a number from 10 to 2400" + help},
          Row{{"building.dxf", "--plot", "a.png", "--paper", "0.5x99"}, 2, "0.5x99 is no paper"},
          Row{{"building.dxf", "--plot", "{name}-{sheet}.png"}, 2, "--plot: {sheet} in the file's name is not known"},
          Row{{"building.dxf", "--paper", "A3"}, 2, "--paper needs --plot or --plot-compare" + help},
          Row{{"a.dxf", "b.dxf", "--plot", "a.png"},
              2,
              "--plot of several drawings needs {name} in the name of its file" + help},
          Row{{"building.dxf", "--plot", "a.svg", "--layout", "none"},
              2,
              "there is no layout \"none\"; the drawing has Model, 布局1"},
          Row{{"building.dxf", "--plot", "a.png", "--paper", "20000x20000"},
              4,
              "a.png: an image of 118110 x 118110 dots is too large; fewer dots per inch (--dpi) make it smaller"},
          Row{{"building.dxf", "-o", "saved.svg", "--plot", "./saved.svg"},
              4,
              "./saved.svg is the drawing or another picture of this run"},
          Row{{"--plot-compare", "building.dxf", "own.svg", "-o", "own.svg"},
              4,
              "own.svg is a drawing that is plotted"},
          Row{{"referring.dxf", "--plot", "./own.svg"}, 4, "./own.svg is a drawing that is plotted"},
          Row{{"--plot-compare", "building.dxf", "missing.dxf", "-o", "a.png"}, 3, ""}}) {
        const Outcome outcome = place.run(row.arguments);
        EXPECT_EQ(outcome.code, row.code) << outcome.error;
        EXPECT_NE(outcome.error.find("qrsconsole: " + row.error), std::string::npos) << outcome.error;
    }
    EXPECT_FALSE(place.has("a.png") || place.has("a.svg"));
    EXPECT_EQ(place.read("saved.svg"), place.read("building.dxf")) << "the drawing, not the picture";
    EXPECT_EQ(place.run({"building.dxf", "--plot", "nowhere/a.svg"}).code, 4);

    // The library that draws lies beside the program; without it all else works.
    std::filesystem::copy(QRS_CONSOLE, place.path("alone"));
    const std::string alone = "cd '" + place.path("").string() + "' && ./alone --no-module building.dxf ";
    EXPECT_EQ(WEXITSTATUS(std::system((alone + "--plot a.svg 2>told").c_str())), 4);
    EXPECT_NE(place.read("told").find("pictures cannot be drawn, as a library is missing: "), std::string::npos);
    EXPECT_EQ(std::system((alone + "-o other.dxf").c_str()), 0);

    // Each layout, after the script; the sheet on its own paper, in points.
    const Outcome each = place.run({"building.dxf", "-e", "CLAYER 0", "--plot", "{name}-{layout}.svg"});
    EXPECT_EQ(each.code, 0) << each.error;
    EXPECT_NE(place.read("building-布局1.svg").find("width=\"1190.551181pt\" height=\"841.889764pt\""),
              std::string::npos);
    EXPECT_TRUE(place.has("building-Model.svg"));

    // Saved elsewhere, without what it refers to.
    place.example("residence.dxf");
    place.example("residence-site.dxf");
    const Outcome elsewhere = place.run({"residence.dxf", "-o", "out/", "--plot", "a.svg"});
    EXPECT_TRUE(place.has("out/residence.dxf") && place.has("a.svg"));
    EXPECT_EQ((elsewhere.out + elsewhere.error).find("cannot be found"), std::string::npos);

    EXPECT_NE(place.run({"own.svg"}, "PLOTFILE\n./own.svg\n\n\n\n").error.find("own.svg is a drawing that is plotted"),
              std::string::npos);
    EXPECT_EQ(place.read("own.svg"), place.read("building.dxf"));

    // Layouts whose names are the same in names of files, and begin like a device.
    std::string sheets = place.read("residence.dxf");
    const std::string mark = "AcDbLayout\r\n  1\r\n";
    std::size_t at = sheets.find(mark);
    for (const char* name : {"com\u00B9.a/b", "COM\u00B9.A:B"}) {
        at = sheets.find(mark, at + 1) + mark.size();
        sheets.replace(at, sheets.find('\r', at) - at, name);
    }
    place.write("sheets.dxf", sheets);
    EXPECT_EQ(place.run({"sheets.dxf", "--plot", "{layout}.svg"}).code, 0);
    EXPECT_TRUE(place.has("-com\u00B9.a-b.svg") && place.has("-COM\u00B9.A-B-2.svg"));

    const Outcome script = place.run({"building.dxf"}, "PLOTFILE\nplan.svg\n\nA4\n\nPLOTFILE\nplan.gif\n");
    EXPECT_EQ(script.code, 1);
    EXPECT_NE(script.out.find("Layout \"Model\" plotted to plan.svg: 297 x 210 mm, 112 entities."), std::string::npos)
        << script.out;
    EXPECT_NE(place.read("plan.svg").find("rgb(100%,0%,0%)"), std::string::npos) << "axes are red";
#endif
}
