// Small texts in extended data, type marks, and the settings of pipe canals.
#include <tuple>

#include "../folder.h"
#include "../suite/support.h"
#include "host/platform/settings.h"
#include "PwxTool.h"
#include "qrs_reg.h"
#include "qrs_select.h"

using namespace PwxTool;
using namespace suitetest;

namespace {

constexpr unsigned kLine = 0x2A;

TEntitySet named(AcDbObjectId id) {
    TEntitySet set;
    acdbGetAdsName(set.ent, id);
    return set;
}

}  // namespace

TEST(Marks, LieInTheExtendedDataOfTheirName) {
    const Sample sample(dbtest::newerDrawing());
    EXPECT_EQ(ReadXdata(nullptr, L"PIPE-SERIAL"), L"");
    AcDbEntityPointer line(sample.byHandle(kLine), AcDb::kForWrite);
    EXPECT_EQ(ReadXdata(line.object(), L"PIPE-SERIAL"), L"JL-1");
    EXPECT_EQ(ReadXdata(line.object(), L"BUILDING-SERIAL"), L"");
    EXPECT_EQ(WriteXdata(line.object(), L"PIPE-SERIAL", L"JL-2"), 1);
    EXPECT_EQ(WriteXdata(line.object(), L"PIPE-SERIAL", L"立管-3"), 1);
    EXPECT_EQ(ReadXdata(line.object(), L"PIPE-SERIAL"), L"立管-3");
    // The other applications' data, and the table, which knew the name, are as they were.
    line.close();
    EXPECT_EQ(sample.changes(), " -1000=JL-1 +1000=立管-3");

    // A null entity takes nothing, but its name is registered.
    EXPECT_EQ(WriteXdata(nullptr, L"BUILDING-SERIAL", L"1#"), 0);
    EXPECT_FALSE(sample.in<AcDbRegAppTable>(L"BUILDING-SERIAL").isNull());
    // One that does not take it (here: is open for reading) gives 1 all the same.
    line.open(sample.byHandle(kLine), AcDb::kForRead);
    EXPECT_EQ(WriteXdata(line.object(), L"BUILDING-SERIAL", L"1#"), 1);
    EXPECT_EQ(ReadXdata(line.object(), L"BUILDING-SERIAL"), L"");
    line.close();
    // What stands first is no text.
    line.open(sample.byHandle(kLine), AcDb::kForWrite);
    resbuf* number = acutBuildList(AcDb::kDxfRegAppName, L"PIPE-SERIAL", AcDb::kDxfXdInteger16, 7,
                                   AcDb::kDxfXdAsciiString, L"JL-9", RTNONE);
    EXPECT_EQ(line->setXData(number), Acad::eOk);
    acutRelRb(number);
    EXPECT_EQ(ReadXdata(line.object(), L"PIPE-SERIAL"), L"");
}

TEST(Marks, TellWhatAnEntityStandsFor) {
    const Sample sample(dbtest::newerDrawing());
    const AcDbObjectId id = sample.byHandle(kLine);
    const AcDbObjectId gone(id.databaseNumber(), 99999);
    // Without a mark it is of the empty type.
    EXPECT_EQ(GetEntityType(id, L"ignored"), L"");
    EXPECT_EQ(IsEntityType(id, L""), 1);
    EXPECT_EQ(IsEntityType(gone, L""), 0);
    EXPECT_EQ(IsEntityType(TEntitySet(), L""), 0);
    EXPECT_EQ(SetEntityType(gone, L"PUMP"), 0);
    EXPECT_EQ(SetEntityType(TEntitySet(), L"PUMP"), 0);
    EXPECT_EQ(SetEntityType(static_cast<AcDbEntity*>(nullptr), L"PUMP"), 0);

    EXPECT_EQ(SetEntityType(id, L"PUMP"), 1);
    EXPECT_EQ(GetEntityType(id, L""), L"PUMP");
    EXPECT_EQ(SetEntityType(named(id), L"Valve"), 1);
    EXPECT_EQ(GetEntityType(named(id), L""), L"Valve");
    EXPECT_EQ(IsEntityType(named(id), L"Valve"), 1);
    EXPECT_EQ(IsEntityType(id, L"VALVE"), 0);
    AcDbEntityPointer line(id, AcDb::kForWrite);
    // Nobody else can open it now.
    EXPECT_EQ(SetEntityType(id, L"PUMP"), 0);
    EXPECT_EQ(GetEntityType(id, L""), L"");
    EXPECT_EQ(GetEntityType(line.object(), L""), L"Valve");
    EXPECT_EQ(SetEntityType(line.object(), L""), 1);
    EXPECT_EQ(IsEntityType(line.object(), L""), 1);
}

TEST(CanalSettings, AreKeptPerUserAndReadAfresh) {
    const Folder scratch;
    qrs::platform::Error error;
    qrs::platform::Settings& user = qrs::platform::Settings::user();
    ASSERT_TRUE(user.useFile(scratch / "settings.ini", error)) << error.message;
    const auto all = [] {
        return std::tuple(GetPipeCanalBreakDist(), GetPipeCanalElevationPrecision(), GetPipeCanalGradientDimType(),
                          GetPipeCanalLenDimType());
    };
    EXPECT_EQ(all(), std::tuple(2.0, 3, 0, 1));
    SetPipeCanalBreakDist(0.25);
    SetPipeCanalElevationPrecision(-4);
    SetPipeCanalGradientDimType(5);
    SetPipeCanalLendimType(6);
    EXPECT_EQ(all(), std::tuple(0.25, -4, 5, 6));

    // Somebody else's changes count at once; a value of another kind is none.
    const std::wstring key = GetRegLocation(L"PipeCanalSetting");
    EXPECT_EQ(user.integer(key, L"PipeCanalLenDimType"), 6);
    ASSERT_TRUE(user.setInteger(key, L"PipeCanalElevationPrecision", 2, error));
    ASSERT_TRUE(user.setText(key, L"PipeCanalGradientDimType", L"two", error));
    EXPECT_EQ(all(), std::tuple(0.25, 2, 0, 6));
}
