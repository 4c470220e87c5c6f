// Every layer, linetype and text style of the shipped standard, made in empty drawings of every version and in real
// ones.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "../folder.h"
#include "../objectarx/support.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/settings.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"

using namespace qrs::standard;
namespace fs = std::filesystem;
namespace platform = qrs::platform;

namespace {

const fs::path kSource = QRS_SOURCE_DIR;
const fs::path kPython = "/usr/bin/python3";

class Drawings : public testing::Test {
  protected:
    Drawings() {
        platform::Error error;
        EXPECT_TRUE(platform::Settings::user().useFile(scratch / "settings.ini", error)) << error.message;
        QrsExport::SetSystemFolder(platform::innerPath(kSource / "data"));
        releaseStandard();
        EXPECT_TRUE(loadCurrentStandard());
    }
    ~Drawings() override { releaseStandard(); }
    // False when the script, or what it needs, is not there.
    bool runScript(const std::string& task) const {
        const fs::path script = kSource / "tests/standard/drawings.py";
        const std::string command = kPython.string() + " '" + script.string() + "' " + task + " '" +
                                    scratch.path().string() + "' > '" + (scratch / "told.txt").string() + "'";
        // Such a path is not absolute on Windows.
        return kPython.is_absolute() && fs::exists(kPython) && std::system(command.c_str()) == 0;
    }

    Folder scratch;
};

// Through every way in which layers are asked for; also every linetype and text style there is, and an application.
void makeAll() {
    std::vector<LinetypeNode> linetypes;
    EXPECT_TRUE(PwxTool::GetAllLinetype(linetypes));
    EXPECT_GT(linetypes.size(), 40u);
    for (const LinetypeNode& linetype : linetypes)
        EXPECT_TRUE(PwxTool::LoadQdLineType(linetype.Name).isValid()) << toUtf8(linetype.Name);
    std::vector<TextStyleNode> styles;
    EXPECT_TRUE(PipeSystemTool::GetAllTextStyleInfo(styles));
    EXPECT_EQ(styles.size(), 10u);
    for (const TextStyleNode& style : styles)
        EXPECT_TRUE(PipeSystemTool::InitTextStyle(style.Name).isValid()) << toUtf8(style.Name);
    acdbRegApp(L"PWX-\u7BA1\u7EBF");
    for (const auto& group : currentStandard()->groups) {
        for (int i = 0; const PipeNode* system = group->FindPipeSystem(i); ++i) {
            for (int k = 0; const LayerNode* layer = system->FindLayerNode(k); ++k) {
                CString name;
                const AcDbObjectId id = PipeSystemTool::InitLayer(system->PipeName, layer->LayerType, &name);
                EXPECT_TRUE(id.isValid()) << toUtf8(name);
                EXPECT_FALSE(PipeSystemTool::InitLinetyle(system->PipeName, layer->LayerType).isNull());
            }
        }
    }
    for (const auto& group : currentStandard()->otherLayers)
        for (int i = 0; const LayerNode* layer = group->FindLayerNode(i); ++i)
            EXPECT_TRUE(PipeSystemTool::InitLayer(layer->LayerName).isValid()) << toUtf8(layer->LayerName);
    std::vector<CString> keys;
    PipeSystemTool::GetIndependentLayerKey(keys);
    EXPECT_EQ(keys.size(), 46u);
    for (const CString& key : keys)
        EXPECT_TRUE(PipeSystemTool::InitIndependentLayer(key).isValid()) << toUtf8(key);
}

// What layers and linetypes the drawing has: their names in one case and their settings.
std::map<std::wstring, std::wstring> settingsIn(AcDbDatabase& database) {
    std::map<std::wstring, std::wstring> settings;
    AcDbLayerTablePointer table(&database);
    AcDbLayerTableIterator* made = nullptr;
    table->newIterator(made);
    const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        iterator->getRecordId(id);
        const AcDbLayerTableRecordPointer layer(id);
        const ACHAR* name = nullptr;
        layer->getName(name);
        const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(layer->linetypeObjectId());
        const ACHAR* linetypeName = L"-";
        if (linetype.openStatus() == Acad::eOk) linetype->getName(linetypeName);
        settings.emplace(platform::foldCase(name), std::to_wstring(layer->color().colorIndex()) + L" " + linetypeName +
                                                       L" " + std::to_wstring(layer->lineWeight()) +
                                                       (layer->isPlottable() ? L" plots" : L""));
    }
    return settings;
}

// The first drawings of each version, not larger than a test bears, and all the Chinese ones.
std::vector<fs::path> realDrawings() {
    std::vector<fs::path> all;
    const fs::path corpus = kSource.parent_path() / "shared/corpus/dxf";
    if (fs::exists(corpus))
        for (const auto& entry : fs::recursive_directory_iterator(corpus))
            if (entry.path().extension() == ".dxf" && entry.file_size() < 900'000) all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    std::map<std::string, int> taken;
    std::vector<fs::path> chosen{kSource / "examples/building.dxf", kSource / "examples/building-r12.dxf"};
    for (const fs::path& file : all) {
        const std::string text = fileBytes(file);
        const std::size_t version = text.find("$ACADVER");
        if (version == std::string::npos || text.compare(0, 6, "AutoCA") == 0) continue;
        if (file.string().find("malformed") != std::string::npos) continue;
        const std::size_t begin = text.find("AC1", version);
        const bool isChinese = file.filename().string().compare(0, 3, "cn_") == 0;
        if (begin != std::string::npos && (taken[text.substr(begin, 6)]++ < 2 || isChinese)) chosen.push_back(file);
    }
    return chosen;
}

}  // namespace

TEST_F(Drawings, TakeEveryLayerOfTheStandardOnce) {
    std::vector<fs::path> drawings = realDrawings();
    const bool canAudit = runScript("make");
    for (const auto& entry : fs::directory_iterator(scratch.path()))
        if (entry.path().extension() == ".dxf") drawings.push_back(entry.path());
    for (const fs::path& file : drawings) {
        SCOPED_TRACE(file.string());
        platform::Error error;
        const std::string before = fileBytes(file);
        const auto database = dbtest::DatabaseAccess::openBytes(before, file.string(), error);
        if (!database) continue;  // damaged
        acdbHostApplicationServices()->setWorkingDatabase(database.get());
        const auto present = settingsIn(*database);
        makeAll();
        const std::string after = dbtest::DatabaseAccess::bytes(*database);
        const auto all = settingsIn(*database);
        EXPECT_GT(all.size(), present.size());
        for (const auto& [name, settings] : present) {
            // Except that a linetype which the drawing only named may now be there.
            if (settings.find(L" - ") != std::wstring::npos) continue;
            EXPECT_EQ(all.at(name), settings) << platform::toUtf8(name);
        }
        makeAll();
        EXPECT_EQ(dbtest::DatabaseAccess::bytes(*database), after);

        // Read again, it says the same; every layer has a linetype.
        const auto again = dbtest::DatabaseAccess::openBytes(after, file.string(), error);
        ASSERT_TRUE(again) << error.message;
        EXPECT_TRUE(settingsIn(*again) == all);
        for (const auto& [name, settings] : all)
            EXPECT_TRUE(settings.find(L" - ") == std::wstring::npos || present.count(name) == 1);
        const std::string stem = std::to_string(&file - drawings.data()) + "_" + file.stem().string();
        scratch.write(stem + ".before.dxf", before);
        scratch.write(stem + ".after.dxf", after);
    }
    if (!canAudit) GTEST_SKIP() << "no auditor";
    EXPECT_TRUE(runScript("compare"));
    EXPECT_EQ(scratch.read("told.txt"), "");
}
