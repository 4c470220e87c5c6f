// Drawings of many programs: each opens and comes back byte for byte, or its damage is told.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include "../folder.h"
#include "host/dxf/drawing.h"

namespace qrs::dxf {
namespace {

namespace fs = std::filesystem;

const fs::path kCorpus = fs::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dxf";

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

// The files of the corpus that are no whole drawing, and what must be said of them.
const std::map<std::string, std::string> kDamaged = {
    {"assorted.00.trunc.dxf", ":1409: the file is cut off: no value after the last group code"},
    {"assorted.02.dupline.dxf", ":1047: group code expected, found \"1.25\""},
    {"assorted.06.nul.dxf", ":809: NUL byte in a group code"},
    {"bin_dxf_r2000.00.trunc.dxf", ": byte 1499: the file is cut off: a group code or its value is not whole"},
    {"clusterfuzz-testcase-minimized-dxf_fuzzer-5400376672124928.dxf",
     ":1: not a DXF file: 0 SECTION expected, found SECTION?2"},
    {"clusterfuzz-testcase-minimized-shape_fuzzer-6126814756995072.dxf",
     ":1: not a DXF file: first line is no group code"},
    {"insert-too-many-errors.dxf", ":19: group code expected, found \"\""},
    {"misc_tests/diamond-bin.dxf", ":1: not a DXF file: first line is no group code"},
    {"lqh2307__gdal/ogr/ogrsf_frmts/dxf/data/header.dxf", ":1138: the file is cut off: 0 EOF is missing"},
};

// Files with errors that open all the same, and the first that must be said of them.
const std::map<std::string, std::string> kRecovered = {
    {"assorted.04.hugecode.dxf", "line 2029, handle 18: a number that is no group code"},
    {"bin_dxf_r2000.06.nul.dxf", "byte 8943, handle F: group code 350 points to 2C, which no record is"},
    {"spline_with_very_close_neg_to_zero_knot.dxf",
     "line 9, handle 3BF: group code 330 points to 2, which no record is"},
    {"autotest/ogr/data/dxf/text.dxf", "line 27: MTEXT outside of a section"},
    {"recover01.dxf", "line 1157: ENDSEC without a SECTION"},
    {"recover02.dxf", "line 1299, handle 8: group code 330 points to ABBA, which no record is"},
    {"block-insert-order.dxf", "line 703, handle 6EA: another record has this handle too"},
    {"supported_entities.dxf", "line 3725, handle 1: the table says 1 records and holds 19"},
};

std::string expectedOf(const std::map<std::string, std::string>& all, const fs::path& path) {
    for (const auto& [name, message] : all) {
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
        const std::string bytes = fileBytes(path);
        platform::Error error;
        const auto drawing = Drawing::open(path, error);
        const std::string damage = expectedOf(kDamaged, path);
        if (!damage.empty()) {
            EXPECT_EQ(drawing, nullptr);
            EXPECT_EQ(error.message, path.u8string() + damage);
            continue;
        }
        ASSERT_NE(drawing, nullptr) << error.message;
        EXPECT_TRUE(drawing->toBytes() == bytes);
        const std::string warning = expectedOf(kRecovered, path);
        if (!warning.empty()) {
            EXPECT_EQ(drawing->faults().front().message(), warning);
        }
        if (drawing->isBinary()) continue;
        std::vector<std::string> heads;
        for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
            const RecordKind kind = drawing->record(id).kind;
            if (kind != RecordKind::Preamble && drawing->record(id).type != 0 && drawing->record(id).stored != 0) {
                heads.emplace_back(drawing->typeNameOf(id));
            }
        }
        EXPECT_EQ(heads, plainHeads(bytes));
    }
}

// A drawing in both forms says the same, number for number.
TEST(Corpus, BinaryAndTextFormsAgree) {
    const std::pair<const char*, const char*> pairs[] = {
        {"derived/cn_gbk_AC1018.dxf", "derived/cn_gbk_AC1018_binary.dxf"},
    };
    for (const auto& [textName, binaryName] : pairs) {
        SCOPED_TRACE(binaryName);
        if (!fs::exists(kCorpus / textName)) GTEST_SKIP() << "no corpus beside the sources";
        platform::Error error;
        const auto text = Drawing::open(kCorpus / textName, error);
        const auto binary = Drawing::open(kCorpus / binaryName, error);
        ASSERT_TRUE(text != nullptr && binary != nullptr) << error.message;
        RecordId other = binary->next(binary->first());
        std::size_t same = 0;
        for (RecordId id = text->first(); id != kNoRecord; id = text->next(id), other = binary->next(other)) {
            ASSERT_NE(other, kNoRecord);
            ASSERT_EQ(text->record(id).handle, binary->record(other).handle);
            ASSERT_EQ(text->record(id).flags, binary->record(other).flags);
            // Times in the header, counts of classes and tables, and some pointers are those of two savings.
            const RecordKind kind = text->record(id).kind;
            if (kind != RecordKind::Entity && kind != RecordKind::TableRecord) continue;
            TagCursor theirs = binary->tags(other);
            Tag a;
            Tag b;
            for (TagCursor ours = text->tags(id); ours.next(a);) {
                ASSERT_TRUE(theirs.next(b));
                ASSERT_EQ(a.code, b.code);
                // Chunks have padding that was never set.
                if ((a.code >= 310 && a.code <= 369) || a.code == 1005) continue;
                const bool isSame =
                    trimmed(a.value) == trimmed(b.value) ||
                    std::fabs(toReal(a.value, 1) - toReal(b.value, 2)) <= 1e-9 * std::fabs(toReal(a.value));
                ASSERT_TRUE(isSame) << a.code << ": " << a.value << " " << b.value;
                ++same;
            }
        }
        EXPECT_EQ(other, kNoRecord);
        EXPECT_GT(same, 20000u);
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
