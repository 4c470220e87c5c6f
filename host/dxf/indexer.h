// How the one pass over a file keeps its place; the parts of it lie in indexer.cpp (tags and records),
// indexsections.cpp (what records are, by where they stand) and indexchecks.cpp (what is wrong).
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/dxf/codecache.h"
#include "host/dxf/handlecheck.h"
#include "host/dxf/index.h"
#include "host/dxf/lines.h"

namespace qrs::dxf {

enum class Place { Outside, Header, Classes, Tables, Blocks, Entities, Objects, Unknown };

// A piece of a file as a message can show it.
std::string printable(std::string_view text);

// Kinds of records that have handles and name those of others.
bool hasPointers(RecordKind kind);

class Indexer {
  public:
    Indexer(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault);
    ~Indexer();

    // Reads the whole file. Another indexer reads what lies after the first record from the place second on, beside
    // this one; kAlone: none does.
    bool run(std::size_t second);

  private:
    enum class Step { Goes, Ends, Fails };
    class Second;

    bool text();
    bool binary();
    bool preamble(const char*& at);
    bool takePreamble(const char* at, const RawTag& tag);
    bool scan(const char* at);
    template <char lineEnd>
    bool scanText(const char* at);
    template <CodeForm form>
    bool scanBinary(const char* at);
    Step take(const char* at, const RawTag& tag, std::string_view value);
    bool atEnd(const char* at, Cut cut);
    bool cutFailure(const char* at, Cut cut);
    Cut cut(const char* at, RawTag& tag) const;
    Step startRecord(const char* at, const RawTag& tag);
    Step startOutside(const char* at, const RawTag& tag, std::uint16_t type);
    Step startSection(const char* at, const RawTag& tag);
    Step startInTables(const char* at, std::uint16_t type);
    Step startInBlocks(const char* at, std::uint16_t type);
    Step startEntity(const char* at, std::uint16_t type, RecordId container);
    Step endSection(const char* at, bool isThere);
    Step endGroup(const char* at, bool isThere);
    Step endOfFile(const char* at, const RawTag& tag);
    bool sectionName(const char* at, std::string_view& name) const;
    void closeMain(const char* at);
    std::string valueIn(const char* place, const char* end, int code, const char*& found) const;
    void checkCount(const char* at);
    void checkVertices(const char* at);
    void checkPointers();
    void checkBlocks();
    void checkNumbers(const char* end);
    void checkNumber(const char* comma);
    void checkLastLine();

    void share();
    const char* borderFrom(const char* at) const;
    bool isBorder(const char* at) const;
    Place placeToAssume(const char* at) const;
    void readSecondPart(const char* at);
    bool isInBlockAfterAll() const;
    void becomeBlocks();
    Step joinSecond(const char* at);
    void takeOver(Indexer& second);

    Step open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner);
    Step openHead(const char* at, RecordKind kind, std::uint16_t type, RecordId owner, std::size_t& slot);
    bool close(const char* at);
    Step fails(const char* at, std::string reason);
    void fault(const char* at, RecordId record, FaultKind kind, std::string text) {
        index_.faults.add(static_cast<std::size_t>(at - start_), record, kind, std::move(text));
    }
    RecordId lastId() const { return static_cast<RecordId>(index_.records.size() - 1); }

    const char* start_;
    const char* end_;
    const platform::MappedFile* file_;
    std::size_t released_ = 0;
    const char* numbersChecked_ = nullptr;  // up to here
    Index& index_;
    Fault& fault_;
    CodeCache cache_;
    FieldReader fields_;
    HandleSet given_;
    HandleSet pointedTo_;
    Record* current_ = nullptr;
    Place place_ = Place::Outside;
    RecordKind plainKind_ = RecordKind::Other;
    RecordId section_ = kNoRecord;
    RecordId group_ = kNoRecord;  // the open table or block
    RecordId main_ = kNoRecord;   // the polyline or block reference whose sub-entities may follow
    bool hasSubs_ = false;        // one of them did
    std::size_t sectionSlot_ = 0;
    std::size_t groupSlot_ = 0;
    std::string_view sectionName_;

    // Of the first of two that read side by side: the other one, and the place where it began, which need not be a
    // record.
    std::unique_ptr<Second> second_;
    const char* secondBegin_ = nullptr;
    // Of the second one: the section it has taken its part to begin in, whether it has read all of it and found nothing
    // wrong, and whether it may stop because nobody wants to know.
    Place assumed_ = Place::Outside;
    bool isDone_ = false;
    std::atomic<bool> isUnwanted_{false};
};

}  // namespace qrs::dxf
