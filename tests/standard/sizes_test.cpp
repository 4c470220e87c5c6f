// Materials, sizes and prefixes: the shipped tables through the exported questions, odd tables through the readers.
#include <gtest/gtest.h>

#include <filesystem>

#include "../config/support.h"
#include "../folder.h"
#include "host/platform/files.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_public.h"
#include "standard/holder.h"
#include "standard/pipesizes.h"
#include "standard/startup.h"

using namespace PipeSystemTool;
using qrs::standard::MaterialPrefixTable;
using qrs::standard::PipeSizeTable;
namespace fs = std::filesystem;

namespace {

std::vector<int> dnOf(const wchar_t* material) {
    TDPtrList<int> list;
    GetPipeDnByMaterial(material, list);
    std::vector<int> sizes;
    for (const int* size : list)
        sizes.push_back(*size);
    return sizes;
}

// One program run sees one state of the tables, so one test asks them everything.
TEST(Sizes, ShippedTablesAnswerAndAreReadOnce) {
    const std::wstring data = qrs::platform::innerPath(fs::path(QRS_SOURCE_DIR) / "data");
    EXPECT_EQ(qrs::standard::currentStandard(), nullptr);
    QrsExport::SetSystemFolder(L"\\nowhere");
    EXPECT_EQ(GetPipeMaterialIndex(L"生活给水", kIndoorMaterial), -1);  // without a standard nothing is read
    QrsExport::SetSystemFolder(data);

    EXPECT_EQ(GetIndexOfPIpeMaterial(L"镀锌钢管"), 0);
    const int copper = GetIndexOfPIpeMaterial(L"铜管");
    EXPECT_GT(copper, 0);
    EXPECT_EQ(GetPipeMaterialByIndex(copper), L"铜管");
    EXPECT_EQ(GetIndexOfPIpeMaterial(L"ppr管"), -1);
    EXPECT_EQ(GetIndexOfPIpeMaterial(L""), -1);
    EXPECT_EQ(GetPipeMaterialByIndex(-1), L"");
    EXPECT_EQ(GetPipeMaterialByIndex(1000), L"");

    const std::vector<int> sizes = dnOf(L"铜管");
    ASSERT_GE(sizes.size(), 7u);
    EXPECT_EQ(std::vector<int>(sizes.begin(), sizes.begin() + 5), (std::vector<int>{6, 8, 10, 12, 15}));
    TDPtrList<int> list;
    EXPECT_FALSE(GetPipeDnByMaterial(L"木管", list));
    list.Append(6);
    EXPECT_TRUE(GetPipeDnByMaterial(L"木管", list));
    EXPECT_TRUE(GetPipeDnByMaterial(L"铜管", list));
    EXPECT_EQ(list.GetCount(), static_cast<int>(sizes.size()) + 1);
    EXPECT_EQ(*list.GetAt(1), 6);  // again

    EXPECT_DOUBLE_EQ(GetPipeOuterDn(L"镀锌钢管", 20), 26.9);
    EXPECT_DOUBLE_EQ(GetPipeInnerDn(L"镀锌钢管", 20.0005), 21.3);
    EXPECT_DOUBLE_EQ(GetPipeThick(L"镀锌钢管", 19.9995), 26.9 - 21.3);
    EXPECT_EQ(GetPipeOuterDn(L"镀锌钢管", 20.002), 20.002);
    EXPECT_EQ(GetPipeInnerDn(L"木管", 20), 20);
    EXPECT_EQ(GetPipeThick(L"镀锌钢管", 21), 0.0);

    // Every kind of prefix that practice writes, and what is written after it.
    const struct {
        const wchar_t* material;
        const wchar_t* prefix;
        double number, outer, walls;
    } written[] = {
        {L"镀锌钢管", L"DN", 100, 114.3, 8},
        {L"球墨铸铁管", L"DN", 350, 378, 15.4},
        {L"球墨铸铁管", L"DN", 450, 480, 17.2},
        {L"PPR管", L"dn", 110, 110, 24.6},
        {L"铜管", L"Dw", 67, 67, 4},
        {L"不锈钢管", L"Dw", 18, 18, 2},
        {L"无缝钢管", L"D", 108, 108, 8},
        {L"螺旋缝焊接钢管", L"D", 325, 323.9, 12},
        {L"钢筋混凝土管", L"d", 300, 360, 60},
    };
    for (const auto& [material, prefix, number, outer, walls] : written) {
        EXPECT_EQ(GetPrefixOfPipeMaterial(material), prefix);
        EXPECT_DOUBLE_EQ(GetPipeOuterDn(material, number), outer);
        EXPECT_NEAR(GetPipeThick(material, number), walls, 1e-9);
    }
    EXPECT_EQ(GetPrefixOfPipeMaterial(copper), L"Dw");
    EXPECT_EQ(GetPrefixOfPipeMaterial(-1), L"");
    EXPECT_EQ(GetPrefixOfPipeMaterial(L"DN15"), L"");  // another kind of record

    EXPECT_TRUE(GetPipeMaterialList().empty());
    qrs::standard::offerPipeMaterials();
    const int ppr = GetIndexOfPIpeMaterial(L"PPR管");
    EXPECT_EQ(GetMaterialIndex(L"ppr管"), ppr);
    EXPECT_EQ(GetPipeMaterialList()[static_cast<std::size_t>(ppr)], L"PPR管");
    EXPECT_EQ(GetMaterialIndex(L"木管"), 0);
    const TWCStringList own = {L"a", L"b", L"B"};
    EXPECT_EQ(GetMaterialIndex(own, L"B"), 1);
    EXPECT_EQ(GetMaterialIndex({}, L"B"), 0);

    QrsExport::SetSystemFolder(L"\\nowhere");
    EXPECT_EQ(dnOf(L"铜管"), sizes);
    EXPECT_EQ(GetPrefixOfPipeMaterial(copper), L"Dw");
}

TEST(Sizes, OddRecords) {
    const std::vector<HandField> fields = {{"gc", 'C', 4}, {"DN", 'N', 8, 3}, {"DJ", 'N', 6, 2}, {"D", 'N', 6, 2}};
    const Folder folder;
    const auto file =
        folder.write("table.dbf", tableBytes(3, fields,
                                             {
                                                 " b     20.900  1.00  2.00",
                                                 "       99.000  1.00  2.00",  // no material
                                                 " a     20.000  3.00  4.00",
                                                 "* b    20.901  5.00  6.00",  // deleted, and led by a space
                                                 " B      0.000            ",
                                                 " b    1.0e+30  0.00  0.00",
                                             }));
    PipeSizeTable table;
    EXPECT_FALSE(table.isRead());
    table.read(qrs::platform::innerPath(file));
    EXPECT_EQ(table.indexOf(L"b"), 0);
    EXPECT_EQ(table.indexOf(L"a"), 1);
    EXPECT_EQ(table.indexOf(L"B"), 2);
    EXPECT_EQ(table.indexOf(L""), -1);
    ASSERT_EQ(table.sizes(L"b").size(), 3u);
    EXPECT_TRUE(table.sizes(L"").empty());
    EXPECT_EQ(table.find(L"b", 20.9005)->outer, 2);  // both are near enough: the first
    EXPECT_EQ(table.find(L"b", 20.9015)->inner, 5);
    EXPECT_EQ(table.find(L"b", 20.898), nullptr);
    EXPECT_EQ(table.find(L"B", 0.001), nullptr);  // a whole thousandth away is another size
    EXPECT_NE(table.find(L"B", 0.000999), nullptr);
    EXPECT_EQ(table.find(L"B", 0)->outer, 0);  // a zero that stands there is found

    table.read(L"\\nowhere\\pipe.dbf");
    EXPECT_TRUE(table.isRead());
    EXPECT_EQ(table.indexOf(L"b"), -1);
    EXPECT_EQ(table.materialAt(0), L"");
    EXPECT_EQ(table.find(L"b", 20.9), nullptr);
    EXPECT_EQ(table.find(L"", 0), nullptr);
}

TEST(Sizes, LastPrefixOfAMaterialCounts) {
    const std::vector<HandField> fields = {{"TypeNumber", 'N', 3}, {"TypeValue", 'C', 3}, {"Remark", 'C', 3}};
    const Folder folder;
    const auto file =
        folder.write("table.dbf", tableBytes(3, fields, {"  40a  DN ", "  40a  De ", "  41a  x  ", "  40   y  "}));
    MaterialPrefixTable table;
    table.read(qrs::platform::innerPath(file));
    EXPECT_EQ(table.prefixOf(L"a"), L"De");
    EXPECT_EQ(table.prefixOf(L""), L"");
    EXPECT_EQ(table.prefixOf(L"A"), L"");
    table.read(L"");
    EXPECT_TRUE(table.isRead());
    EXPECT_EQ(table.prefixOf(L"a"), L"");
}

}  // namespace
