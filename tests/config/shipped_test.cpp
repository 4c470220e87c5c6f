// The shipped tables read back through the table library, and agree with each other and with the shipped standard.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <regex>
#include <set>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "tests/config/support.h"

namespace {

const std::filesystem::path kData = std::filesystem::path(QRS_SOURCE_DIR) / "data";

std::wstring trimmedText(CDBFRecordset& table, std::wstring_view name) {
    const std::wstring text = textOf(table, name);
    return text.substr(0, text.find_last_not_of(L' ') + 1);
}

bool openShipped(CDBFRecordset& table, const char* name) {
    return table.Open(qrs::platform::innerPath(kData / name)) && table.MoveFirst();
}

// The values of an attribute or element of the standard file.
std::set<std::wstring> valuesInStandard(const std::string& pattern) {
    const std::string content = fileBytes(kData / "pwx.qdsl");
    const std::regex value(pattern);
    std::set<std::wstring> values;
    for (std::sregex_iterator at(content.begin(), content.end(), value), end; at != end; ++at) {
        values.insert(qrs::platform::fromUtf8((*at)[1].str()));
    }
    return values;
}

TEST(Shipped, EveryMaterialHasSizesAndAPrefix) {
    CDBFRecordset store;
    ASSERT_TRUE(openShipped(store, "DATASTORE.dbf"));  // names match without regard to case
    std::map<std::wstring, std::wstring> prefixes;
    for (; !store.IsEOF(); store.MoveNext()) {
        if (integerOf(store, L"TypeNumber") == 40) {
            prefixes[trimmedText(store, L"TypeValue")] = trimmedText(store, L"Remark");
        }
    }
    CDBFRecordset pipes;
    ASSERT_TRUE(openShipped(pipes, "pipe.dbf"));
    std::map<std::wstring, double> lastDn;
    for (; !pipes.IsEOF(); pipes.MoveNext()) {
        const std::wstring material = trimmedText(pipes, L"GC");
        const std::wstring prefix = prefixes[material];
        const double dn = doubleOf(pipes, L"DN");
        const double inner = doubleOf(pipes, L"DJ");
        const double outer = doubleOf(pipes, L"D");
        SCOPED_TRACE(qrs::platform::toUtf8(material) + " " + std::to_string(dn));
        EXPECT_FALSE(prefix.empty());
        EXPECT_GT(dn, lastDn[material]);  // rows of a material lie together, sizes grow
        lastDn[material] = dn;
        EXPECT_TRUE(0.5 * outer < inner && inner < outer) << inner << " " << outer;
        // The number after the prefix: "dn" names the outer, "d" the inner diameter, "DN" one near them; "D" and "Dw"
        // name the outer one in whole millimetres, as nobody asks for half of one.
        const double named = prefix == L"d" ? inner : prefix == L"DN" ? (inner + outer) / 2 : outer;
        EXPECT_NEAR(dn, named, prefix == L"DN" ? 2 + 0.3 * dn : prefix == L"D" ? 1.2 : prefix == L"Dw" ? 0.5 : 0);
        EXPECT_EQ(dn, std::floor(dn));
    }
    const std::set<std::wstring> used = valuesInStandard("<(?:Outdoor)?Material [^>]*>([^<]+)<");
    EXPECT_GT(used.size(), 5u);
    for (const std::wstring& name : used)
        EXPECT_EQ(lastDn.count(name), 1u) << qrs::platform::toUtf8(name);
}

TEST(Shipped, LinetypesOfTheStandardHavePatternsThatReadAsDescribed) {
    static const std::wregex pattern(LR"((-?[0-9.]+(\[[^,\]]+\])?,)*-[0-9.]+(\[[^,\]]+\])?)");
    CDBFRecordset table;
    ASSERT_TRUE(openShipped(table, "linetype.dbf"));
    std::set<std::wstring> names;
    for (; !table.IsEOF(); table.MoveNext()) {
        const std::wstring content = trimmedText(table, L"Content");
        EXPECT_TRUE(names.insert(trimmedText(table, L"Name")).second);
        EXPECT_EQ(std::regex_match(content, pattern), integerOf(table, L"Num") > 0) << integerOf(table, L"Num");
        EXPECT_EQ(content.empty(), doubleOf(table, L"Length") == 0);
        EXPECT_EQ(doubleOf(table, L"Scale"), 1);
    }
    const std::set<std::wstring> used = valuesInStandard("<LineStyle [^>]*>([^<]+)<");
    EXPECT_GT(used.size(), 2u);
    for (const std::wstring& name : used)
        EXPECT_EQ(names.count(name), 1u) << qrs::platform::toUtf8(name);
}

}  // namespace
