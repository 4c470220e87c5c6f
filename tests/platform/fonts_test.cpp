// Installed fonts: what holds on every machine.
#include "host/platform/fonts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>

#include "host/platform/codepage.h"
#include "tests/folder.h"

using namespace qrs::platform;

TEST(Fonts, AreToldOncePerFaceAndScript) {
    const std::vector<InstalledFont> fonts = installedFonts(nullptr);
#if defined(_WIN32)
    EXPECT_FALSE(fonts.empty()) << "the system has fonts of its own";
#endif
    std::set<std::pair<std::wstring, std::wstring>> seen;
    std::map<std::wstring, int> charsets;
    for (const InstalledFont& font : fonts) {
        EXPECT_FALSE(font.face.empty());
        EXPECT_TRUE(seen.emplace(font.face, font.script).second) << toUtf8(font.face) << ' ' << toUtf8(font.script);
        EXPECT_EQ(charsets.emplace(font.script, font.charset).first->second, font.charset) << toUtf8(font.script);
        const int pitch = font.pitchAndFamily & 3;
        EXPECT_TRUE(pitch == 1 || pitch == 2) << font.pitchAndFamily;
        EXPECT_LE(font.pitchAndFamily & ~3, 0x50);
    }
    // What the numbers mean is the same on every machine.
    for (const auto& [script, charset] : std::map<std::wstring, int>{{L"CHINESE_GB2312", 134}, {L"Greek", 161}}) {
        const auto found = charsets.find(script);
        EXPECT_TRUE(found == charsets.end() || found->second == charset) << toUtf8(script);
    }
}

#if !defined(_WIN32)
TEST(Fonts, AreLookedForAnewAtEveryCall) {
    const std::size_t count = installedFonts(nullptr).size();
    {
        Folder scratch;
        scratch.write("fonts.conf", "<fontconfig></fontconfig>");
        setenv("FONTCONFIG_FILE", (scratch / "fonts.conf").c_str(), 1);
        EXPECT_TRUE(installedFonts(nullptr).empty());
        unsetenv("FONTCONFIG_FILE");
    }
    EXPECT_EQ(installedFonts(nullptr).size(), count);
}
#endif
