// Drawings of many programs: each opens and comes back byte for byte, or its damage is told.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "host/dxf/drawing.h"

namespace qrs::dxf {
namespace {

namespace fs = std::filesystem;

const fs::path kCorpus = fs::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dxf";

std::string content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<fs::path> drawings() {
    std::vector<fs::path> found;
    std::error_code none;
    for (const auto& entry : fs::recursive_directory_iterator(kCorpus, none)) {
        std::string extension = entry.path().extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) { return c | 0x20; });
        if (extension == ".dxf") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

// The files of the corpus that are no whole text drawing, and what must be said of them.
const std::map<std::string, std::string> kDamaged = {
    {"assorted.00.trunc.dxf", ":1409: the file is cut off: no value behind the last group code"},
    {"assorted.02.dupline.dxf", ":1047: group code expected, found \"1.25\""},
    {"assorted.04.hugecode.dxf", ":2029: group code expected, found \"99999999999999\""},
    {"assorted.06.nul.dxf", ":809: NUL byte in a group code"},
    {"clusterfuzz-testcase-minimized-dxf_fuzzer-5400376672124928.dxf", ":1: SECTION?2 outside of a section"},
    {"clusterfuzz-testcase-minimized-shape_fuzzer-6126814756995072.dxf",
     ":1: not a DXF file: first line is no group code"},
    {"insert-too-many-errors.dxf", ":7: BLOCKS outside of a section"},
    {"spline_with_very_close_neg_to_zero_knot.dxf", ":86: the file is cut off: 0 EOF is missing"},
    {"text.dxf", ":27: MTEXT outside of a section"},
    {"lqh2307__gdal/ogr/ogrsf_frmts/dxf/data/header.dxf", ":1138: the file is cut off: 0 EOF is missing"},
    {"recover01.dxf", ":1157: ENDSEC without a SECTION"},
    {"recover02.dxf", ":1979: ENDTAB without a TABLE"},
};

std::string expectedDamage(const fs::path& path, const std::string& bytes) {
    if (bytes.rfind("AutoCAD Binary", 0) == 0)
        return ": binary drawings cannot be read yet, only drawings in text form";
    for (const auto& [name, message] : kDamaged) {
        const std::string end = "/" + name;
        const std::string whole = path.generic_string();
        if (whole.size() > end.size() && whole.compare(whole.size() - end.size(), end.size(), end) == 0) return message;
    }
    return {};
}

// The first tags of all records, found the plain way: line by line.
std::vector<std::string> plainHeads(const std::string& bytes) {
    const char lineEnd = bytes.find('\n') == std::string::npos ? '\r' : '\n';
    std::vector<std::string> heads;
    bool inHeader = false;
    std::string code;
    std::string value;
    for (std::size_t at = 0; at < bytes.size();) {
        for (std::string* line : {&code, &value}) {
            const std::size_t end = std::min(bytes.find(lineEnd, at), bytes.size());
            *line = bytes.substr(at, end - at);
            while (!line->empty() && (line->back() == '\r' || line->back() == ' '))
                line->pop_back();
            at = end + 1;
        }
        const int number = std::atoi(code.c_str());
        if (number == 2 && !heads.empty() && heads.back() == "SECTION") inHeader = value == "HEADER";
        if (number == 0 || (number == 9 && inHeader)) heads.push_back(value);
        if (number == 0 && value == "EOF") break;
    }
    return heads;
}

TEST(Corpus, EveryDrawingComesBackOrIsRefused) {
    const auto files = drawings();
    if (files.empty()) GTEST_SKIP() << "no corpus beside the sources";
    for (const fs::path& path : files) {
        SCOPED_TRACE(path.filename());
        const std::string bytes = content(path);
        platform::Error error;
        const auto drawing = Drawing::open(path, error);
        const std::string damage = expectedDamage(path, bytes);
        if (!damage.empty()) {
            EXPECT_EQ(drawing, nullptr);
            EXPECT_EQ(error.message, path.u8string() + damage);
            continue;
        }
        ASSERT_NE(drawing, nullptr) << error.message;
        EXPECT_TRUE(drawing->toBytes() == bytes);
        std::vector<std::string> heads;
        for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
            const RecordKind kind = drawing->record(id).kind;
            if (kind != RecordKind::Preamble && drawing->record(id).type != 0) {
                heads.emplace_back(drawing->typeNameOf(id));
            }
        }
        EXPECT_EQ(heads, plainHeads(bytes));
    }
}

TEST(Corpus, OneTextInThreeSpellings) {
    const fs::path folder = kCorpus / "derived";
    if (!fs::exists(folder)) GTEST_SKIP() << "no corpus beside the sources";
    for (const std::string version : {"AC1009", "AC1015"}) {
        std::map<std::string, std::vector<std::wstring>> texts;
        for (const std::string spelling : {"raw", "uni", "mif"}) {
            platform::Error error;
            const auto drawing = Drawing::open(folder / ("cn_trail_" + version + "_" + spelling + ".dxf"), error);
            ASSERT_NE(drawing, nullptr) << error.message;
            Tag tag;
            for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
                for (TagCursor cursor = drawing->tags(id); cursor.next(tag);) {
                    texts[spelling].push_back(drawing->decode(tag.value));
                }
            }
        }
        EXPECT_EQ(texts["uni"], texts["raw"]);
        EXPECT_EQ(texts["mif"], texts["raw"]);
    }
}

// Everything lies on layer "0" and thaws: of a real drawing nothing but these tags changes.
TEST(Corpus, EditsOfARealDrawingTouchNothingElse) {
    const fs::path path = kCorpus / "derived" / "cn_gbk_AC1018.dxf";
    if (!fs::exists(path)) GTEST_SKIP() << "no corpus beside the sources";
    platform::Error error;
    const auto drawing = Drawing::open(path, error);
    ASSERT_NE(drawing, nullptr) << error.message;
    Tag tag;
    std::size_t moved = 0;
    for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
        if (drawing->record(id).kind != RecordKind::Entity) continue;
        ASSERT_TRUE(drawing->findTag(id, 8, tag));
        if (tag.value != "moved") ++moved;
        drawing->setValue(id, tag, "moved");
    }
    const auto again = Drawing::fromBytes(drawing->toBytes(), "again", error);
    const auto before = Drawing::open(path, error);
    ASSERT_NE(again, nullptr) << error.message;
    ASSERT_EQ(again->recordCount(), before->recordCount());
    std::size_t changed = 0;
    for (RecordId id = before->first(); id != kNoRecord; id = before->next(id)) {
        TagCursor old = before->tags(id);
        TagCursor now = again->tags(id);
        Tag newTag;
        while (old.next(tag)) {
            ASSERT_TRUE(now.next(newTag));
            ASSERT_EQ(tag.code, newTag.code);
            if (tag.value == newTag.value) continue;
            ASSERT_EQ(tag.code, 8);
            ASSERT_EQ(before->record(id).kind, RecordKind::Entity);
            ++changed;
        }
        ASSERT_FALSE(now.next(newTag));
    }
    EXPECT_EQ(changed, moved);
    EXPECT_EQ(changed, 3461u);
}

}  // namespace
}  // namespace qrs::dxf
