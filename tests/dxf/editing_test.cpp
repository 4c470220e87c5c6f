// Editing and saving: only what is changed changes, in the drawing's own style, and the index follows.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "tests/dxf/sample.h"

namespace qrs::dxf::test {
namespace {

namespace fs = std::filesystem;

// What is in one list of tags and not in the other, "-" before what went and "+" before what came, in order.
std::vector<std::string> difference(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    std::size_t head = 0;
    while (head < before.size() && head < after.size() && before[head] == after[head])
        ++head;
    std::size_t tail = 0;
    while (tail < before.size() - head && tail < after.size() - head &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
        ++tail;
    }
    std::vector<std::string> result;
    for (std::size_t i = head; i < before.size() - tail; ++i)
        result.push_back("-" + before[i]);
    for (std::size_t i = head; i < after.size() - tail; ++i)
        result.push_back("+" + after[i]);
    return result;
}

// The index by handle exists before what it shall find: the first few are found without one.
void makeIndex(const Drawing& drawing) {
    for (int few = 0; few < 5; ++few)
        EXPECT_EQ(drawing.findHandle(0x51), kNoRecord);
}

TEST(Editing, ChangesOnlyTheTagsAskedFor) {
    const std::string bytes = lay(sampleTags(), 3, "\r\n");
    const auto drawing = parse(bytes);
    makeIndex(*drawing);
    const RecordId line = drawing->findHandle(0x18);
    EXPECT_FALSE(drawing->isModified());
    Tag tag;
    const auto set = [&](int code, std::string_view value) {
        ASSERT_TRUE(drawing->findTag(line, code, tag));
        drawing->setValue(line, tag, value);
    };
    set(8, "PIPE");  // as it was
    EXPECT_FALSE(drawing->isModified());
    set(10, "2.5");
    set(10, "-1234567890.12345678901234567890");
    std::string expected = bytes;
    expected.replace(expected.find("1.50"), 4, "-1234567890.12345678901234567890");
    EXPECT_EQ(drawing->toBytes(), expected);
    EXPECT_TRUE(drawing->isModified());

    set(8, "two\r\nlines");
    set(60, "0");
    set(5, "40");
    ASSERT_TRUE(drawing->findTag(line, 67, tag));
    drawing->eraseTags(line, tag.begin, tag.end);
    ASSERT_TRUE(drawing->findTag(line, 1001, tag));
    drawing->eraseTags(line, tag.begin, drawing->length(line));
    EXPECT_EQ(drawing->name(drawing->record(line).layer), "two^M^Jlines");
    EXPECT_EQ(drawing->record(line).flags, kEdited);
    EXPECT_EQ(drawing->findHandle(0x40), line);
    EXPECT_EQ(drawing->findHandle(0x18), kNoRecord);
    EXPECT_EQ(difference(allTags(*parse(bytes)), allTags(*parse(drawing->toBytes()))),
              (std::vector<std::string>{"-5=18", "-100=AcDbEntity", "-67=1", "-8=PIPE", "-60=1", "-100=AcDbLine",
                                        "-10=1.50", "-1001=QRS", "-1000=0", "-1003=PIPE", "-1005=15", "+5=40",
                                        "+100=AcDbEntity", "+8=two^M^Jlines", "+60=0", "+100=AcDbLine",
                                        "+10=-1234567890.12345678901234567890"}));

    // The table's count keeps its right-aligned spelling.
    drawing->adjustTableCount(drawing->findTable("LAYER"), 1);
    ASSERT_TRUE(drawing->findTag(drawing->findTable("LAYER"), 70, tag));
    EXPECT_EQ(tag.value, "     3");
}

// The short way to another layer writes and knows what the long one does.
TEST(Editing, PutsEntitiesOnLayers) {
    const Tags tags = replaced(sampleTags(), "18",
                               {{5, "18"}, {102, "{APP"}, {8, "group"}, {102, "}"}, {999, "8"}, {100, "AcDbFirst"}});
    const std::string named = lay(replaced(tags, "PIPE", {{2, "P\rIPE"}}));
    for (const std::string& bytes :
         {lay(tags), lay(tags, 3, "\r\n"), lay(tags, 1, "\r"), layBinary(tags, true), named}) {
        const auto drawing = parse(bytes);
        const auto slow = parse(bytes);
        const auto rename = [&](RecordId layer, const std::string& to) {
            Tag name;
            for (Drawing* one : {drawing.get(), slow.get()})
                if (one->findTag(layer, codes::kName, name)) one->setValue(layer, name, to);
        };
        for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
            const RecordId layer = drawing->findHandle(id / 4 % 2 ? 0x10 : 0x11);
            Tag tag, name;
            const bool has = slow->findTag(id, codes::kLayer, tag);
            if (has && slow->findTag(layer, codes::kName, name)) slow->setValue(id, tag, std::string(name.value));
            EXPECT_EQ(drawing->setLayer(id, layer), has);
            if (id % 4 == 1 && slow->record(layer).handle == 0x10) rename(layer, std::to_string(id));
            EXPECT_EQ(drawing->name(drawing->record(id).layer), slow->name(slow->record(id).layer));
            EXPECT_EQ(drawing->record(id).flags, slow->record(id).flags);
        }
        EXPECT_EQ(drawing->toBytes(), slow->toBytes());
        EXPECT_NE(drawing->toBytes(), bytes);
        // A name that was taken back is not written.
        const RecordId line = drawing->findHandle(0x18);
        const RecordId layer = drawing->findHandle(0x10);
        Tag name;
        ASSERT_TRUE(drawing->findTag(layer, codes::kName, name));
        const std::string before(name.value);
        drawing->beginStep(L"");
        rename(layer, "taken back");
        drawing->setLayer(line, layer);
        drawing->takeBack();
        drawing->setLayer(line, layer);
        EXPECT_EQ(drawing->name(drawing->record(line).layer), before);
    }
}

TEST(Editing, WhatChangesNothingIsNoChange) {
    // A table without its count, a seed without a value, and a code page that nobody knows.
    Tags tags = replaced(replaced(sampleTags(), "     2", {{71, "2"}}), "ANSI_936", {{3, "ANSI_99"}});
    tags = replaced(tags, "30", {{6, "30"}});
    const std::string bytes = lay(tags);
    const auto drawing = parse(bytes);
    EXPECT_EQ(drawing->codePage(), platform::ansiCodePage());
    const RecordId line = drawing->findHandle(0x18);
    drawing->insertTags(line, 0, {});
    drawing->eraseTags(line, 0, 0);
    drawing->editTags(line, {});
    drawing->eraseRecord(line, false);
    drawing->adjustTableCount(drawing->findTable("LAYER"), 1);
    drawing->adjustTableCount(drawing->findTable("DIMSTYLE"), 0);
    EXPECT_EQ(drawing->newHandle(), 0x28u);
    EXPECT_FALSE(drawing->takeBack());
    EXPECT_EQ(drawing->lastStep(), nullptr);
    EXPECT_EQ(drawing->keepStep(), 0u);
    EXPECT_FALSE(drawing->isModified());
    EXPECT_EQ(drawing->toBytes(), bytes);
    const RecordId second = drawing->next(drawing->first());
    drawing->eraseRecord(drawing->first());
    EXPECT_EQ(drawing->first(), second);
}

TEST(Editing, NewTagsTakeTheStyleOfTheDrawing) {
    const struct {
        int width;
        const char* lineEnd;
        const char* laid;
    } styles[] = {
        {3, "\r\n", " 62\r\n7\r\n1071\r\n8\r\n"}, {1, "\r", "62\r7\r1071\r8\r"}, {6, "\n", "    62\n7\n  1071\n8\n"}};
    for (const auto& style : styles) {
        const std::string bytes = lay(sampleTags(), style.width, style.lineEnd);
        const auto drawing = parse(bytes);
        const RecordId layer = drawing->findHandle(0x11);
        drawing->insertTags(layer, drawing->length(layer), {{62, "7"}, {1071, "8"}});
        EXPECT_TRUE(drawing->record(layer).flags & kHasXdata);
        const std::string after = std::string("frozen") + style.lineEnd;
        std::string expected = bytes;
        expected.insert(expected.find(after) + after.size(), style.laid);
        EXPECT_EQ(drawing->toBytes(), expected);

        const RecordId end = drawing->endOf(drawing->findTable("LAYER"));
        drawing->insertRecord(end, RecordKind::TableRecord, {{0, "LAYER"}, {62, "7"}, {1071, "8"}});
        EXPECT_EQ(parse(drawing->toBytes())->toBytes(), drawing->toBytes());
        EXPECT_NE(drawing->toBytes().find(std::string("LAYER") + style.lineEnd + style.laid), std::string::npos);
    }
    // The last line of a file may lack its end.
    const auto drawing = parse("0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF");
    const RecordId eof = drawing->next(drawing->endOf(drawing->findSection("ENTITIES")));
    drawing->insertTags(eof, drawing->length(eof), {{999, "bye"}});
    EXPECT_EQ(drawing->toBytes(), "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n999\nbye\n");
}

TEST(Editing, NewRecordsKeepTheirOrderAndTakeTheirPlace) {
    const auto drawing = parse(lay(sampleTags()));
    const RecordId end = drawing->endOf(drawing->findSection("ENTITIES"));
    const auto add = [&](RecordId before, const std::string& type, const std::string& handle) {
        return drawing->insertRecord(before, RecordKind::Entity, {{0, type}, {5, handle}, {8, "NEW"}});
    };
    makeIndex(*drawing);
    const RecordId second = add(end, "POLYLINE", "52");
    const RecordId third = add(end, "VERTEX", "53");
    const RecordId first = add(second, "LINE", "51");
    const RecordId fourth = add(end, "SEQEND", "54");
    add(end, "VERTEX", "55");
    add(drawing->findHandle(0x15), "POINT", "50");
    EXPECT_EQ(drawing->findHandle(0x51), first);
    EXPECT_EQ(drawing->record(third).owner, second);
    EXPECT_EQ(drawing->record(fourth).owner, second);
    EXPECT_FALSE(drawing->record(drawing->findHandle(0x55)).flags & kSubEntity);
    EXPECT_EQ(drawing->record(first).owner, drawing->findSection("ENTITIES"));

    // A whole block, its end first, then what lies in it.
    const RecordId afterBlocks = drawing->endOf(drawing->findSection("BLOCKS"));
    const RecordId block = drawing->insertRecord(afterBlocks, RecordKind::Block, {{0, "BLOCK"}, {5, "60"}});
    const RecordId blockEnd = drawing->insertRecord(afterBlocks, RecordKind::EndBlock, {{0, "ENDBLK"}, {5, "62"}});
    EXPECT_EQ(drawing->record(add(blockEnd, "LINE", "61")).owner, block);
    EXPECT_EQ(drawing->endOf(block), blockEnd);
    EXPECT_EQ(drawing->record(block).owner, drawing->findSection("BLOCKS"));

    const auto order = [&] {
        std::string types;
        for (RecordId id = drawing->findSection("BLOCKS"); id != drawing->next(end); id = drawing->next(id)) {
            types += std::string(drawing->typeNameOf(id)) + " ";
        }
        return types;
    };
    EXPECT_EQ(order(),
              "SECTION BLOCK LINE ENDBLK BLOCK LINE ENDBLK ENDSEC SECTION POINT INSERT ATTRIB SEQEND LINE WIDGET LINE "
              "POLYLINE VERTEX SEQEND VERTEX ENDSEC ");
    drawing->eraseRecord(drawing->findHandle(0x15));
    drawing->eraseRecord(second);
    drawing->eraseRecord(first);
    EXPECT_EQ(order(), "SECTION BLOCK LINE ENDBLK BLOCK LINE ENDBLK ENDSEC SECTION POINT LINE WIDGET VERTEX ENDSEC ");
    EXPECT_EQ(drawing->findHandle(0x16), kNoRecord);
    drawing->eraseRecord(second, false);
    EXPECT_EQ(order(),
              "SECTION BLOCK LINE ENDBLK BLOCK LINE ENDBLK ENDSEC SECTION POINT LINE WIDGET POLYLINE VERTEX SEQEND "
              "VERTEX ENDSEC ");
    // What is written reads back with the same structure.
    const auto again = parse(drawing->toBytes());
    EXPECT_EQ(allTags(*again), allTags(*drawing));
    for (RecordId id = again->first(); id != kNoRecord; id = again->next(id)) {
        const Record& record = again->record(id);
        if (record.handle == 0) continue;
        const Record& edited = drawing->record(drawing->findHandle(record.handle));
        EXPECT_EQ(record.kind, edited.kind);
        EXPECT_EQ(record.flags & kSubEntity, edited.flags & kSubEntity);
        EXPECT_EQ(again->name(record.layer), drawing->name(edited.layer));
        EXPECT_EQ(again->bytes(record.owner), drawing->bytes(edited.owner)) << record.handle;
    }
}

TEST(Editing, NewHandlesAreFree) {
    Tags tags = sampleTags();
    const auto seed = [](const Drawing& drawing) {
        Tag tag;
        return drawing.findTag(drawing.findHeaderVariable("$handseed"), 5, tag) ? std::string(tag.value) : "none";
    };
    const auto drawing = parse(lay(tags));
    EXPECT_EQ(drawing->newHandle(), 0x30u);
    EXPECT_EQ(drawing->newHandle(), 0x31u);
    EXPECT_EQ(seed(*drawing), "32");

    for (NewTag& tag : tags) {
        if (tag.value == "18" && tag.code == 5) tag.value = "FFF";               // above the seed
        if (tag.value == "1a" && tag.code == 5) tag.value = "FFFFFFFFFFFFFFFF";  // nothing comes after it
    }
    const auto late = parse(lay(tags));
    EXPECT_EQ(late->newHandle(), 0x1000u);
    EXPECT_EQ(seed(*late), "1001");

    // A seed that no program wrote in earnest is none; counting goes on from the greatest handle there is.
    for (const char* absurd : {"FFFFFFFFFFFFFFFF", "1000000000000000", "FFFFFFFFFFFFFFFFF", "0", "-1", "seed", ""}) {
        const Tags seeded = replaced(sampleTags(), "30", {{5, absurd}});
        for (const std::string& bytes : {lay(seeded), layBinary(seeded, true)}) {
            const auto odd = parse(bytes);
            EXPECT_EQ(odd->newHandle(), 0x28u) << absurd;
            EXPECT_EQ(odd->newHandle(), 0x29u) << absurd;
            EXPECT_EQ(seed(*odd), "2A") << absurd;
        }
    }

    const auto bare = parse("0\nSECTION\n2\nENTITIES\n0\nLINE\n5\nA\n8\n0\n0\nENDSEC\n0\nEOF\n");
    EXPECT_EQ(bare->newHandle(), 0xBu);
    EXPECT_EQ(bare->newHandle(), 0xCu);
    EXPECT_FALSE(bare->isModified());
}

// Somebody writes into the file while it is copied: what was copied is neither its old content nor the new one.
TEST(Editing, SavesNothingOfAFileThatChangesMeanwhile) {
    const Folder folder;
    const fs::path source = folder / "source.dxf";
    const fs::path target = folder / "target" / "a.dxf";
    fs::create_directories(target.parent_path());
    Tags tags = {{0, "SECTION"}, {2, "ENTITIES"}};
    tags.insert(tags.end(), 200, {0, "TEXT"});
    for (std::size_t i = 2; i < tags.size(); ++i)
        tags[i].value += std::string(100000, 'x');
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    std::ofstream(source, std::ios::binary) << lay(tags);
    std::ofstream(target, std::ios::binary) << "as it was";
    // The change may come too late once or twice, but not every time.
    bool isRefused = false;
    for (int attempt = 0; attempt < 50 && !isRefused; ++attempt) {
        platform::Error error;
        const auto drawing = Drawing::open(source, error);
        ASSERT_NE(drawing, nullptr) << error.message;
        const auto filesBeside = [&] { return std::distance(fs::directory_iterator(target.parent_path()), {}); };
        const auto before = filesBeside();
        std::atomic<bool> isOver{false};
        std::thread other([&] {
            while (filesBeside() == before && !isOver)
                std::this_thread::yield();
            fs::last_write_time(source, fs::last_write_time(source) - std::chrono::hours(1));
        });
        isRefused = !drawing->save(target, false, error);
        isOver = true;
        other.join();
        if (!isRefused) continue;
        EXPECT_EQ(error.message, source.u8string() + ": was changed by another program after it was opened; not saved");
        EXPECT_EQ(filesBeside(), before);
        if (attempt == 0) {
            EXPECT_EQ(fileBytes(target), "as it was");
        }
    }
    EXPECT_TRUE(isRefused);
}

TEST(Editing, SavesWholeOrNotAtAll) {
    const Folder folder;
    const fs::path path = folder / "a.dxf";
    const std::string bytes = lay(sampleTags(), 3, "\r\n");
    std::ofstream(path, std::ios::binary) << bytes;
    platform::Error error;
    auto drawing = Drawing::open(path, error);
    ASSERT_NE(drawing, nullptr) << error.message;
    Tag tag;
    const RecordId layer = drawing->findHandle(0x11);
    ASSERT_TRUE(drawing->findTag(layer, 70, tag));
    drawing->setValue(layer, tag, "0");
    const std::string changed = drawing->toBytes();
    EXPECT_FALSE(drawing->save(folder / "none" / "a.dxf", true, error));
    EXPECT_NE(error.message.find("a.dxf"), std::string::npos);
    EXPECT_TRUE(drawing->isModified());
    // Onto the file that is mapped, and once more after another change: the drawing goes on with what it has read.
    error = {};
    ASSERT_TRUE(drawing->save(path, true, error)) << error.message;
    EXPECT_FALSE(drawing->isModified());
    EXPECT_EQ(fileBytes(path), changed);
    EXPECT_EQ(fileBytes(folder / "a.dxf.bak"), bytes);
    drawing->eraseRecord(drawing->findHandle(0x18));
    ASSERT_TRUE(drawing->save(path, true, error)) << error.message;
    EXPECT_EQ(fileBytes(path), drawing->toBytes());
    EXPECT_EQ(fileBytes(folder / "a.dxf.bak"), changed);

    // Somebody writes into the file that is mapped, or cuts it: neither it nor a copy is to be had any more.
    for (const std::uintmax_t size : {bytes.size(), bytes.size() - 9}) {
        std::ofstream(folder / "shared.dxf", std::ios::binary) << bytes;
        fs::last_write_time(folder / "shared.dxf", fs::file_time_type::clock::now() - std::chrono::hours(1));
        const auto shared = Drawing::open(folder / "shared.dxf", error);
        ASSERT_NE(shared, nullptr) << error.message;
        std::fstream(folder / "shared.dxf", std::ios::binary | std::ios::in | std::ios::out) << "  0";
        fs::resize_file(folder / "shared.dxf", size);
        for (const char* target : {"shared.dxf", "copy.dxf"}) {
            EXPECT_FALSE(shared->save(folder / target, true, error));
            EXPECT_EQ(error.message, (folder / "shared.dxf").u8string() +
                                         ": was changed by another program after it was opened; not saved");
        }
        EXPECT_EQ(fs::file_size(folder / "shared.dxf"), size);
        EXPECT_FALSE(fs::exists(folder / "copy.dxf"));
        EXPECT_FALSE(fs::exists(folder / "shared.dxf.bak"));
    }

    // Of two drawings of one file the first to be saved wins; the other is not lost but needs another name.
    std::ofstream(folder / "twice.dxf", std::ios::binary) << bytes;
    const auto one = Drawing::open(folder / "twice.dxf", error);
    const auto other = Drawing::open(folder / "." / "twice.dxf", error);
    one->eraseRecord(one->findHandle(0x18));
    ASSERT_TRUE(one->save(folder / "twice.dxf", true, error)) << error.message;
    EXPECT_FALSE(other->save(folder / "twice.dxf", true, error));
    EXPECT_EQ(error.message, (folder / "twice.dxf").u8string() +
                                 ": was saved by somebody else since this drawing was opened; not saved");
    EXPECT_EQ(fileBytes(folder / "twice.dxf"), one->toBytes());
    ASSERT_TRUE(other->save(folder / "other.dxf", true, error)) << error.message;
    std::ofstream(folder / "other.dxf", std::ios::binary) << "shorter";
    EXPECT_FALSE(other->save(folder / "other.dxf", true, error));
    fs::remove(folder / "other.dxf");
    EXPECT_TRUE(other->save(folder / "other.dxf", true, error)) << error.message;

    EXPECT_EQ(Drawing::open(folder / "missing.dxf", error), nullptr);
    EXPECT_NE(error.message.find("missing.dxf"), std::string::npos);
    drawing.reset();
}

}  // namespace
}  // namespace qrs::dxf::test
