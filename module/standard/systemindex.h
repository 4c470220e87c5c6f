// Finds pipe systems by their names and by the names of their layers, at a cost that does not grow with their number.
//
// One index serves a group that stands alone, another one all groups of a standard. Nodes tell it what changed; what
// changed is put in its place anew before the next question is answered.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

#include "PipeNodes.h"

namespace qrs::standard {

// A system's place in an index.
struct IndexEntry {
    PipeNode* system = nullptr;
    PipeGroupNode* group = nullptr;
    int place = 0;                    // in the group
    CString nameInGroup;              // under which its group finds it
    bool isChanged = true;            // since it was put in
    std::vector<std::uint64_t> keys;  // it is put in under them
};

class SystemIndex {
  public:
    // The systems a question may mean, in order: groups, then systems of a group. Now and then one is among them that
    // is not meant, so each has to be asked. Valid until a node changes.
    class Candidates {
      public:
        using Iterator = IndexEntry* const*;
        Candidates(Iterator begin, Iterator end) : begin_(begin), end_(end) {}
        Iterator begin() const { return begin_; }
        Iterator end() const { return end_; }
        // Those of one group.
        Candidates of(const PipeGroupNode& group) const;

      private:
        Iterator begin_;
        Iterator end_;
    };

    // An index of these groups in their order. They leave the one they were in, and are in this one from now on.
    static std::shared_ptr<SystemIndex> over(const std::vector<std::unique_ptr<PipeGroupNode>>& groups);
    static std::shared_ptr<SystemIndex> over(PipeGroupNode& group);

    // Systems of that name, without regard to case, and those that their group finds under it.
    Candidates named(const CString& systemName);
    // Systems of that older name.
    Candidates onceNamed(const CString& oldName);
    // Systems with an own layer of that name.
    Candidates withLayer(const CString& layerName);
    // Systems in which a layer of that name answers for the type.
    Candidates withLayer(const CString& layerType, const CString& layerName);
    // Puts everything that changed in its place now.
    void refresh();

    std::size_t groupCount() const { return groups_.size(); }

    // What groups tell. A system is told of before its place among the others is another.
    void add(IndexEntry& entry);
    void change(IndexEntry& entry);
    void remove(IndexEntry& entry);
    void forget(PipeGroupNode& group);
    // Everything is to be put in anew.
    void clear();

  private:
    // One entry, or all of several in their order.
    struct Posting {
        IndexEntry* only = nullptr;
        std::unique_ptr<std::vector<IndexEntry*>> all;
    };

    static bool isBefore(const IndexEntry* a, const IndexEntry* b);
    static std::size_t mostKeysOf(const PipeNode& system);
    static std::vector<std::uint64_t> keysOf(const IndexEntry& entry);
    static void join(const std::shared_ptr<SystemIndex>& index, PipeGroupNode& group);
    Candidates find(std::uint64_t key);
    void put(std::uint64_t key, IndexEntry& entry);
    void take(std::uint64_t key, const IndexEntry& entry);
    void build();

    std::deque<PipeGroupNode*> groups_;
    std::unordered_map<std::uint64_t, Posting> postings_;
    std::vector<IndexEntry*> changed_;
    // False until the first question, and again when a group has gone: then everything is put in at the next one.
    bool isBuilt_ = false;
};

}  // namespace qrs::standard
