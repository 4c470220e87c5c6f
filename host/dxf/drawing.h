// A drawing file: mapped, indexed, edited record by record, saved without loss.
//
// The whole file is a row of records that lie end to end: a record is a tag with group code 0 (in the HEADER section:
// 9) and everything up to the next one, comments included. The index keeps one small Record each; a record's tags are
// read when somebody asks. Editing copies the record's bytes once and changes only the tags asked for; saving copies
// untouched stretches of the mapped file in bulk, so a drawing saved unchanged is byte-identical.
//
// Binary drawings work the same way and stay binary (see form.h): those who look at tags need not know which form a
// drawing has.
//
// A Drawing puts together what others hold: Index (what each record is), RecordOrder (where new ones stand), Contents
// (their bytes, and what these were), Form (how they read and are written), SaveGuard (what became of the file).
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dxf/contents.h"
#include "host/dxf/fault.h"
#include "host/dxf/form.h"
#include "host/dxf/handleindex.h"
#include "host/dxf/index.h"
#include "host/dxf/record.h"
#include "host/dxf/recordorder.h"
#include "host/dxf/saveguard.h"
#include "host/dxf/source.h"
#include "host/dxf/tags.h"
#include "host/dxf/tagsweep.h"
#include "host/dxf/version.h"
#include "host/platform/error.h"

namespace qrs::dxf {

class Drawing {
  public:
    // Reads and indexes a file. Null, with "path:line: reason" in error ("path: byte N: reason" for a binary one), when
    // it is truncated, no DXF, or cannot be cut into tags. What can be worked on in spite of an error opens with
    // faults; a file is truncated when it ends within a section, and only lacks its EOF when it ends after one.
    static std::unique_ptr<Drawing> open(const std::filesystem::path& native, platform::Error& error);
    // The same from bytes that the drawing keeps; name stands in for the path in messages.
    static std::unique_ptr<Drawing> fromBytes(std::string bytes, const std::string& name, platform::Error& error);

    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    // Writes everything. False, with the reason in error, when it cannot; the old file is then as it was. backups:
    // how many earlier states of an existing target stay, see platform::AtomicFile. Saving to the file that is mapped
    // is allowed. A save that succeeds clears isModified; the drawing goes on reading from the file it was opened from,
    // and cannot be saved any more when another program has changed that very file. A target this drawing was opened
    // from or saved to is refused when somebody else, another drawing of this program for one, has saved to it since:
    // that save would be lost.
    bool save(const std::filesystem::path& native, int backups, platform::Error& error);
    bool isModified() const { return contents_.isModified(); }
    const ChangeLog& changes() const { return contents_.changes(); }
    // What was wrong in the file, in its order: missing ends, counts too small, handles given twice, pointers to
    // nothing, blocks in themselves, numbers with a comma, an unknown version, a line end that is cut. The first
    // hundred, and then one that counts the others.
    const std::vector<Fault>& faults() const { return index_.faults.all(); }
    std::string faultSummary() const { return index_.faults.summary(); }
    // The drawing's whole text as it would be written; for tests and small drawings.
    std::string toBytes() const;

    // --- the index
    std::size_t recordCount() const { return index_.records.size(); }  // new ones included, erased ones too
    const Record& record(RecordId id) const { return index_.records[id]; }
    bool isErased(RecordId id) const { return (record(id).flags & kErased) != 0; }
    // The first record in drawing order, and the one after another; erased ones are passed over. kNoRecord at the end.
    RecordId first() const;
    RecordId next(RecordId id) const;
    // By handle (numbers, so "2a7" and "02A7" are one); kNoRecord when none is alive.
    RecordId findHandle(std::uint64_t handle) const;
    // Section by name ("ENTITIES"), table by name ("LAYER"), header variable by name ("$HANDSEED").
    RecordId findSection(std::string_view name) const;
    RecordId findTable(std::string_view name) const;
    RecordId findHeaderVariable(std::string_view name) const;
    // False for a record that names no other one but its owner, as most entities do; objects may always.
    bool mayRefer(RecordId id) const { return record(id).kind == RecordKind::Object || index_.refers(id); }
    // The record that closes a Section, Table or Block.
    RecordId endOf(RecordId head) const { return index_.endOf(head); }

    // The name of a type number; empty for the one number that all names after the first 65,534 share. Of a record
    // typeNameOf is always right.
    std::string_view typeName(std::uint16_t type) const;
    std::string_view typeNameOf(RecordId id) const;
    std::string_view name(NameId id) const;  // raw bytes of an interned layer name
    std::size_t nameCount() const;

    // --- tags. Bytes, tags and cursors of a record hold until that record is changed; those of other records stay
    // good (in a binary drawing, until at least TextCache::kKept bytes of others have been read: do not gather them).
    // Places of tags count in these bytes, whose number is length(), not Record::stored.
    std::string_view bytes(RecordId id) const { return form_->textOf(stored(id)); }
    std::uint32_t length(RecordId id) const { return static_cast<std::uint32_t>(bytes(id).size()); }
    TagCursor tags(RecordId id) const { return TagCursor(bytes(id), index_.lineEnd); }
    // The tags as they are stored, for those who look at few of very many records. They hold until the record is
    // changed.
    StoredTags storedTags(RecordId id) const {
        // Before the first record stand no tags.
        const bool hasTags = record(id).kind != RecordKind::Preamble;
        return StoredTags(hasTags ? contents_.of(id) : std::string_view(), index_.lineEnd, index_.codeForm);
    }
    // The bytes that hold the tags of a record, as they are stored; likewise. Two drawings that store alike say the
    // same with the same bytes, but for their code pages.
    std::string_view storedBytes(RecordId id) const {
        const bool isSignature = isBinary() && record(id).kind == RecordKind::Preamble;
        return isSignature ? std::string_view() : contents_.of(id);
    }
    bool storesLike(const Drawing& other) const {
        return isBinary() == other.isBinary() && (!isBinary() || index_.codeForm == other.index_.codeForm);
    }
    // The nth tag with a code, counted from 0; xdata (codes from 1000 on) and tags inside 102 {...} groups are not
    // looked at unless the code itself is such. False when there is none.
    bool findTag(RecordId id, int code, Tag& tag, int nth = 0) const;

    // Walks through the whole drawing tell of each record they have passed, so that a large file does not fill the
    // memory with what was looked at once.
    SourceRelease beginRelease(RecordId from) const {
        SourceRelease release(*source_);
        if (from != kNoRecord && from != first()) release.beginAt(contents_.of(from));
        return release;
    }
    void release(SourceRelease& release, RecordId passed) const { release.done(contents_.of(passed)); }
    TagSweep beginSweep() const { return TagSweep(source_->bytes(), index_.lineEnd); }
    StoredSweep beginStoredSweep() const { return StoredSweep(source_->bytes(), index_.lineEnd, index_.codeForm); }

    // --- changes; the index (handle, layer, flags) follows what is written. New lines take the line end and the
    // indentation of group codes that the drawing has.
    // Line breaks in a value are written as drawings spell them, ^J and ^M. A value that a binary drawing cannot hold
    // under its group code is not written; the drawing then cannot be saved any more, and save tells why.
    void setValue(RecordId id, const Tag& tag, std::string_view value);
    // Puts an entity on the layer of a layer's record, whose name is spelled as it stands there. False when the entity
    // has no tag for it.
    bool setLayer(RecordId entity, RecordId layer);
    // Many changes of one record at once, in the order of its tags.
    void editTags(RecordId id, const std::vector<TagEdit>& edits);
    // Puts tags before the byte offset given (a Tag's begin, or the record's length for its end).
    void insertTags(RecordId id, std::uint32_t before, const std::vector<NewTag>& tags);
    // Removes the bytes [begin, end) of a record; both are tag bounds.
    void eraseTags(RecordId id, std::uint32_t begin, std::uint32_t end);
    // A new record before another; the first tag carries code 0 (or 9). Its owner follows from the record it then
    // stands after: that record itself when it is a head, otherwise what that one lies under; a VERTEX, ATTRIB or
    // SEQEND after a POLYLINE or INSERT belongs to it. An end closes what it lies under.
    RecordId insertRecord(RecordId before, RecordKind kind, const std::vector<NewTag>& tags);
    // Takes a record out of the drawing, or back into it with erase = false. The sub-entities of a main entity go with
    // it.
    void eraseRecord(RecordId id, bool erase = true);
    // Changes the count of records (code 70) in the head of a symbol table; a head without one stays without.
    void adjustTableCount(RecordId table, int by);

    // --- taking changes back
    // Begins a step: what changes from now on can be taken back together. A step in which nothing has changed is none.
    // Before the first one nothing is remembered.
    void beginStep(std::wstring name);
    // The step at work is one although nothing changes in it: something outside the drawing does, which its number
    // tells apart. 0 when no step was begun.
    std::uint64_t keepStep() { return contents_.keepStep(); }
    // The step that would be taken back next; null when there is none.
    const Journal::Step* lastStep() const { return contents_.lastStep(); }
    // Everything is again as it was when the last step began: its new records are erased, the others have their bytes,
    // and the next handle is the same. False when there is no step.
    bool takeBack();

    // --- what the whole drawing says of itself
    // Bytes of the file as it was opened.
    std::uint64_t fileSize() const { return source_->bytes().size(); }
    bool isBinary() const { return form_->isBinary(); }
    Version version() const { return version_; }                     // R12's when the header does not say
    const std::string& versionText() const { return versionText_; }  // "AC1024", as the header spells it
    bool hasHandles() const;                                         // records carry handles ($HANDLING or from R13 on)
    unsigned codePage() const { return codePage_; }                  // kUtf8 from R2007 on
    // A handle nobody has; moves $HANDSEED on (the variable is written when the drawing has one).
    std::uint64_t newHandle();
    std::wstring decode(std::string_view value) const;
    std::string encode(std::wstring_view text) const;

  private:
    struct LayerName {
        RecordId layer = kNoRecord;
        std::string spelled;
        NameId name = kNoName;  // none when it goes over a line's end
    };

    explicit Drawing(std::unique_ptr<Source> source) : source_(std::move(source)) {}
    bool load(const std::string& name, platform::Error& error);
    void readHeader();
    StoredRecord stored(RecordId id) const { return {id, contents_.of(id)}; }
    RecordId previous(RecordId id) const;
    RecordId findNamed(const std::vector<RecordId>& heads, std::string_view name) const;
    RecordId nearestWithBytes(RecordId id) const;
    void endLastLine(RecordId next);
    void noteProblem();
    void takeDraft(RecordId id);
    bool sweepTo(RecordId id, int code, Tag& tag);
    const LayerName& nameOfLayer(RecordId layer);
    void reindex(RecordId id);
    void settle(RecordId id);
    // Hands the drawing's bytes in order to a sink, untouched neighbours in one piece.
    template <typename Sink>
    void emit(Sink&& sink) const;

    std::unique_ptr<Source> source_;
    SourceRelease changed_{*source_};  // what was read of it to be changed is in memory of its own
    Index index_;
    RecordOrder order_{index_.records};
    Contents contents_{index_.records};
    std::unique_ptr<Form> form_;
    SaveGuard guard_;
    mutable HandleIndex handles_;
    Version version_ = Version::R12;
    std::string versionText_ = "AC1009";
    unsigned codePage_ = 0;
    bool handling_ = false;
    std::uint64_t seed_ = 0;           // next handle to be given, once one was asked for
    Draft draft_;                      // of the change at work
    std::unique_ptr<TagSweep> sweep_;  // knows the codes that changes have met
    LayerName layerName_;              // of the layer that entities were put on last
    std::string unwritable_;           // why the drawing cannot be saved any more
};

}  // namespace qrs::dxf
