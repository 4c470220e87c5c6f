// Freezing and thawing layers in viewports.
#include "dbents.h"
#include "support.h"

namespace qrs::test {

namespace {

class ViewportLayers : public LayerFrame {
  protected:
    std::string frozenIn(const wchar_t* viewport) const {
        AcDbObjectId id;
        database()->getAcDbObjectId(id, false, AcDbHandle(viewport));
        const AcDbObjectPointer<AcDbViewport> opened(id);
        AcDbObjectIdArray layers;
        EXPECT_EQ(opened->getFrozenLayerList(layers), Acad::eOk);
        std::string names;
        for (const AcDbObjectId& layer : layers) {
            const AcDbLayerTableRecordPointer record(layer);
            const ACHAR* name = nullptr;
            record->getName(name);
            names += (names.empty() ? "" : " ") + platform::toUtf8(name);
        }
        return names;
    }
};

const std::string kFreeze = "请选择需要冻结的视口或视口图层上的任意图元 <退出>:";

}  // namespace

TEST_F(ViewportLayers, AreFrozenAndThawedByChoice) {
    for (const char* version : {"AC1018", "AC1009"}) {
        open(planText(version, false));
        std::string shown =
            own(run({L"FrozenViewLayer", ent(L"181"), L"D,L", L"OK", ent(L"181"), L"D", L"B", L"", L""}));
        EXPECT_EQ(frozenIn(L"181"), "L D B") << version << shown;
        EXPECT_EQ(frozenLayers(), "");
        // Those that are frozen are not offered again.
        shown = own(run({L"FrozenViewLayer", ent(L"181"), ScriptTerminal::kEsc, L""}));
        EXPECT_EQ(shown.find(" L "), std::string::npos) << shown;
        open(saved());
        run({L"UnFrozenViewAllLayer", ent(L"190"), ent(L"181"), L"1,3", L"OK"});
        EXPECT_EQ(frozenIn(L"181"), "D") << version;
        run({L"UnFrozenViewAllLayer", ent(L"181"), L"D", L"OK"});
        EXPECT_EQ(frozenIn(L"181"), "");
        EXPECT_NE(own(run({L"UnFrozenViewAllLayer", ent(L"181")})).find("视口中没有冻结的图层！"), std::string::npos);
    }
}

// Any other object: its layer, in the viewport that it is picked through.
TEST_F(ViewportLayers, OfAnObjectAreFrozenInTheCurrentViewport) {
    open(planText("AC1018", false));
    run({L"MSPACE", L"FrozenViewLayer", ent(L"150"), L"", L"PSPACE"});
    EXPECT_EQ(frozenIn(L"181"), "D");
    EXPECT_EQ(frozenLayers(), "");
    // The sheet itself is no viewport to freeze in: nothing could thaw it there.
    const std::string shown = own(run({L"FrozenViewLayer", ent(L"190"), ScriptTerminal::kEsc}));
    EXPECT_EQ(shown, kFreeze +
                         "(handent \"190\")\n选中的图元在图纸上，没有可以冻结的视口！请选择视口，或进入视口后"
                         "选择图元。\n" +
                         kFreeze + "<esc>\n*Cancel*\n");
    EXPECT_NE(own(run({L"FrozenViewLayer", ent(L"150"), L""}))
                  .find(")\n没有可以冻结的视口！请选择视口，或进入视口后选择图元。\n"),
              std::string::npos);
    EXPECT_EQ(frozenIn(L"180") + frozenIn(L"181"), "D");
}

TEST_F(ViewportLayers, AreNotAskedForInModelSpace) {
    open(planText());
    EXPECT_EQ(own(run({L"FrozenViewLayer"})), "本命令必须在图纸布局中使用！\n");
    EXPECT_EQ(own(run({L"UnFrozenViewAllLayer"})), "本命令必须在图纸布局中使用！\n");
    EXPECT_FALSE(application.hasUnsavedChanges());
}

}  // namespace qrs::test
