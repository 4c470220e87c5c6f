// What a drawing, a standard or settings name is a name: nothing is run, loaded or written for it outside the folders
// that the user named, and nothing is reached over the network.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <sstream>
#include <string>
#include <vector>

#include "program.h"

namespace fs = std::filesystem;

namespace {

// Paths out of the folder, whole ones, of devices, over the network, with commands in them, through a link, of a pipe
// that nobody writes to.
const std::vector<std::string>& badNames() {
    static const std::vector<std::string> names = {"../outside/canary.dxf",
                                                   "..\\outside\\canary",
                                                   "/tmp/qrs-canary.dxf",
                                                   "C:\\canary.dxf",
                                                   "\\\\server\\share\\canary.dxf",
                                                   "//server/share/canary.dxf",
                                                   "http://server/canary.dxf",
                                                   "..",
                                                   "CON",
                                                   "LPT1.dxf",
                                                   "/dev/stdout",
                                                   "/dev/zero",
                                                   "pipe",
                                                   "|touch canary",
                                                   "$(touch canary)",
                                                   "`touch canary`;touch canary",
                                                   "link/canary.dxf",
                                                   "canary.so"};
    return names;
}

std::string tag(int code, const std::string& value) {
    return std::to_string(code) + "\n" + value + "\n";
}

// The name wherever a drawing has one: external reference, image, plot style, page setup, printer, text style, layer,
// linetype, block, hyperlink, project.
std::string drawingThatNames(const std::string& name) {
    const std::string layer =
        tag(0, "LAYER") + tag(5, "10") + tag(2, "0") + tag(70, "0") + tag(62, "7") + tag(6, "CONTINUOUS");
    const auto table = [](const char* kind, const char* handle, const std::string& records) {
        return tag(0, "TABLE") + tag(2, kind) + tag(5, handle) + tag(70, "2") + records + tag(0, "ENDTAB");
    };
    const auto record = [](const char* handle, const char* block) {
        return tag(0, "BLOCK_RECORD") + tag(5, handle) + tag(2, block);
    };
    const auto space = [](const char* handle, const char* block) {
        return tag(0, "BLOCK") + tag(5, handle) + tag(8, "0") + tag(2, block) + tag(70, "0") + tag(10, "0") +
               tag(20, "0") + tag(0, "ENDBLK") + tag(8, "0");
    };
    return tag(0, "SECTION") + tag(2, "HEADER") + tag(9, "$ACADVER") + tag(1, "AC1015") + tag(9, "$PROJECTNAME") +
           tag(1, name) + tag(9, "$HYPERLINKBASE") + tag(1, name) + tag(9, "$STYLESHEET") + tag(1, name) +
           tag(9, "$MENU") + tag(1, name) + tag(9, "$HANDSEED") + tag(5, "FFFF") + tag(0, "ENDSEC") +
           tag(0, "SECTION") + tag(2, "TABLES") +
           table("LTYPE", "5",
                 tag(0, "LTYPE") + tag(5, "14") + tag(2, name) + tag(70, "0") + tag(3, name) + tag(72, "65") +
                     tag(73, "0") + tag(40, "0.0")) +
           table("LAYER", "2",
                 layer + tag(0, "LAYER") + tag(5, "11") + tag(2, name) + tag(70, "0") + tag(62, "7") + tag(6, name)) +
           table("BLOCK_RECORD", "4", record("50", "*Model_Space") + record("51", "*Paper_Space") + record("52", "X")) +
           table("STYLE", "3",
                 tag(0, "STYLE") + tag(5, "12") + tag(2, name) + tag(70, "0") + tag(40, "0") + tag(41, "1") +
                     tag(3, name) + tag(4, name)) +
           tag(0, "ENDSEC") + tag(0, "SECTION") + tag(2, "BLOCKS") + space("22", "*Model_Space") +
           space("23", "*Paper_Space") + tag(0, "BLOCK") + tag(5, "20") + tag(8, "0") + tag(2, "X") + tag(70, "4") +
           tag(10, "0") + tag(20, "0") + tag(1, name) + tag(0, "ENDBLK") + tag(5, "21") + tag(8, "0") +
           tag(0, "ENDSEC") + tag(0, "SECTION") + tag(2, "ENTITIES") + tag(0, "INSERT") + tag(5, "30") + tag(8, name) +
           tag(2, "X") + tag(10, "0") + tag(20, "0") + tag(0, "IMAGE") + tag(5, "32") + tag(8, "0") + tag(10, "0") +
           tag(20, "0") + tag(11, "1") + tag(22, "1") + tag(13, "9") + tag(23, "9") + tag(340, "40") + tag(0, "TEXT") +
           tag(5, "31") + tag(8, name) + tag(7, name) + tag(1, name) + tag(10, "0") + tag(20, "0") + tag(40, "1") +
           tag(1001, "PE_URL") + tag(1000, name) + tag(0, "ENDSEC") + tag(0, "SECTION") + tag(2, "OBJECTS") +
           tag(0, "IMAGEDEF") + tag(5, "40") + tag(1, name) + tag(0, "LAYOUT") + tag(5, "41") +
           tag(100, "AcDbPlotSettings") + tag(1, name) + tag(2, name) + tag(4, name) + tag(7, name) +
           tag(100, "AcDbLayout") + tag(1, name) + tag(71, "1") + tag(330, "51") + tag(0, "ENDSEC") + tag(0, "EOF");
}

class Names : public testing::Test {
  protected:
    Names() {
        for (const char* folder : {"work", "outside", "tmp"})
            fs::create_directory(place.path(folder));
        place.write("outside/canary.dxf", "0\nEOF\n");
        EXPECT_EQ(mkfifo(place.path("work/pipe").c_str(), 0600), 0);
        fs::create_directory_symlink(place.path("outside"), place.path("work/link"));
        fs::copy(fs::path(QRS_SOURCE_DIR) / "data", place.path("work/system"), fs::copy_options::recursive);
    }

    // Runs it in the folder "work", and looks at what it did.
    Outcome watch(const std::string& name, const std::vector<std::string>& arguments) {
        fs::remove(place.path("watched"));
        std::vector<std::string> all = {"--system", "work/system", "--settings", "work/settings.ini", "--keep-going"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Outcome outcome =
            place.run(all, {},
                      {"LD_PRELOAD=" QRS_WATCHER, "QRS_WATCHED=" + place.path("watched").string(),
                       "TMPDIR=" + place.path("tmp").string(), "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"});
        EXPECT_NE(outcome.code, -1) << name << outcome.error;
        std::istringstream lines(place.has("watched") ? place.read("watched") : std::string());
        bool hasSeen = false;
        for (std::string line; std::getline(lines, line); hasSeen = true)
            EXPECT_TRUE(isAllowed(line)) << name << ": " << line;
        EXPECT_TRUE(hasSeen) << name << ": not even the settings were written, or nobody watched";
        EXPECT_EQ(place.read("outside/canary.dxf"), "0\nEOF\n") << name;
        for (const char* canary : {"canary", "work/canary", "/tmp/qrs-canary.dxf"})
            EXPECT_FALSE(fs::exists(place.path(canary))) << name;
        EXPECT_EQ(std::distance(fs::directory_iterator(place.path("outside")), {}), 1) << name;
        return outcome;
    }

    Workplace place;

  private:
    // Plug-ins of the program, and what lies in the folders of this run: links and ".." do not lead out of them.
    bool isAllowed(const std::string& line) const {
        const std::size_t blank = line.find(' ');
        const std::string what = line.substr(0, blank), path = line.substr(blank + 1);
        if (what == "load") return path.find("canary") == std::string::npos;
        if (what != "write" && what != "make" && what != "rename" && what != "remove") return false;
        if (path == "/dev/tty") return true;
        const fs::path whole = fs::weakly_canonical(place.path("") / path);
        for (const char* folder : {"work", "tmp"}) {
            const std::string inside = fs::weakly_canonical(place.path(folder)).string() + "/";
            if (whole.string().compare(0, inside.size(), inside) == 0) return true;
        }
        return false;
    }
};

}  // namespace

TEST_F(Names, InDrawingsAreNeitherRunNorWritten) {
    for (const std::string& name : badNames()) {
        place.write("work/plan.dxf", drawingThatNames(name));
        watch(name, {"-e",           "SELECT",  "-e", "C",
                     "-e",           "-10,-10", "-e", "10,10",
                     "-e",           "",        "-e", "CloseSelLayer",
                     "-e",           "0.5,0.5", "-e", "",
                     "-e",           "gxgd",    "-e", "",
                     "-e",           "xxyh",    "-e", "ALL",
                     "-e",           "",        "-e", "LAYOUT",
                     "-e",           "S",       "-e", name,
                     "-e",           "-STYLE",  "-e", "?",
                     "-e",           "*",       "-e", "tcdc",
                     "-e",           "QSAVE",   "-o", "work/out.dxf",
                     "work/plan.dxf"});
        watch(name, {"--check", "--references", "work/plan.dxf"});
        // Pictures bear the layouts' names, in the user's folder: of the model and of this one.
        for (const char* folder : {"work/pictures", "work/Model"})
            fs::create_directory(place.path(folder));
        const Outcome plotted = watch(name, {"--plot", "work/pictures/{layout}.png", "work/plan.dxf"});
        EXPECT_EQ(plotted.code, 0) << name << plotted.error;
        EXPECT_EQ(std::distance(fs::directory_iterator(place.path("work/pictures")), {}), 2) << name;
        fs::remove_all(place.path("work/pictures"));
        watch(name, {"--plot", "work/{layout}/plan.svg", "work/plan.dxf"});
    }
}

TEST_F(Names, InStandardsAreNeitherRunNorWritten) {
    const std::string shipped = place.read("work/system/pwx.qdsl");
    for (const std::string& name : badNames()) {
        std::string standard = shipped;
        // Names of systems, layers, linetypes and fonts, all of them.
        for (const char* element : {"PipeName", "LayerName", "LineStyle", "FontName", "BigFontName", "Name"}) {
            const std::string open = std::string("<") + element;
            for (std::size_t at = standard.find(open); at != std::string::npos; at = standard.find(open, at + 1)) {
                const std::size_t begin = standard.find('>', at) + 1, end = standard.find('<', begin);
                if (begin != 0 && end != std::string::npos) standard.replace(begin, end - begin, name);
            }
        }
        place.write("work/system/pwx.qdsl", standard);
        fs::copy_file(fs::path(QRS_SOURCE_DIR) / "examples/pipes.dxf", place.path("work/plan.dxf"),
                      fs::copy_options::overwrite_existing);
        watch(name, {"-e", "gxsz", "-e", "OK", "-e", "gxgd", "-e", "", "-e", "tcdc", "-e", "dcsz", "-e", "OK", "-o",
                     "work/out.dxf", "work/plan.dxf"});
    }
}

// A file that an entity of XML names is not read, be it here or on the network.
TEST_F(Names, OfXmlEntitiesAreNotRead) {
    const std::string secret = place.path("work/secret.txt").string();
    place.write("work/secret.txt", "SECRETWORD");
    fs::copy_file(fs::path(QRS_SOURCE_DIR) / "examples/pipes.dxf", place.path("work/plan.dxf"));
    const std::string body =
        "<PipeSystem><PipeGroup "
        "Name='G'><Pipe><BaseInfo><PipeName>P&x;</PipeName></BaseInfo></Pipe></PipeGroup></PipeSystem>";
    for (const std::string& entity :
         {"<!ENTITY x SYSTEM 'file://" + secret + "'>", "<!ENTITY x SYSTEM '" + secret + "'>",
          std::string("<!ENTITY x PUBLIC 'a' 'http://server/secret'>"), "<!ENTITY % y SYSTEM '" + secret + "'> %y;"}) {
        for (const char* file : {"pwx.qdsl", "CmdConfig.xml"}) {
            fs::copy_file(fs::path(QRS_SOURCE_DIR) / "data/pwx.qdsl", place.path("work/system/pwx.qdsl"),
                          fs::copy_options::overwrite_existing);
            place.write(std::string("work/system/") + file,
                        "<!DOCTYPE Morvel [" + entity + "]><Morvel>" + body + "</Morvel>");
            const Outcome outcome = watch(entity, {"-e", "gxsz", "-e", "OK", "-e", "tcdc", "work/plan.dxf"});
            EXPECT_EQ((outcome.out + outcome.error).find("SECRETWORD"), std::string::npos) << entity;
        }
    }
}

// Names of exported files that are links already lead nowhere.
TEST_F(Names, OfExportedFilesAreNotFollowedOut) {
    fs::create_directory(place.path("work/export"));
    for (const char* name : {"pwx.qdsl", "linetype.dbf", "setting.ini", "pipe.dbf"})
        fs::create_symlink(place.path("outside/canary.dxf"), place.path("work/export") / name);
    watch("links", {"-e", "dcsz", "-e", "导出到指定文件夹", "-e", "OK", "-e", "work/export"});
    EXPECT_FALSE(fs::is_symlink(place.path("work/export/pwx.qdsl")));
    EXPECT_FALSE(fs::is_symlink(place.path("work/export/setting.ini")));
}
