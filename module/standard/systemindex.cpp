// Finds pipe systems by their names and by the names of their layers.
#include "standard/systemindex.h"

#include <algorithm>

#include "host/platform/codepage.h"
#include "standard/text.h"

namespace qrs::standard {
namespace {

// What is asked by. Two questions about one text are two keys.
enum class Question : std::uint64_t { SystemName = 1, OldName, LayerName, LayerOfType };

std::uint64_t mixed(std::uint64_t a, std::uint64_t b) {
    // Spreads every bit of both over the whole number.
    std::uint64_t key = (a ^ (b + 0x9E3779B97F4A7C15u)) * 0xBF58476D1CE4E5B9u;
    key = (key ^ (key >> 29)) * 0x94D049BB133111EBu;
    return key ^ (key >> 32);
}

std::uint64_t keyOf(Question question, const CString& text) {
    return mixed(static_cast<std::uint64_t>(question), platform::hashNoCase(view(text)));
}

// Texts that differ in case alone share a key; whoever asks looks at what was found.
std::uint64_t keyOfType(const CString& layerType, const CString& layerName) {
    return mixed(keyOf(Question::LayerOfType, layerType), platform::hashNoCase(view(layerName)));
}

}  // namespace

bool SystemIndex::isBefore(const IndexEntry* a, const IndexEntry* b) {
    return a->group != b->group ? a->group->place_ < b->group->place_ : a->place < b->place;
}

SystemIndex::Candidates SystemIndex::Candidates::of(const PipeGroupNode& group) const {
    const auto groupPlace = [](const IndexEntry* entry) { return entry->group->place_; };
    const Iterator first =
        std::partition_point(begin_, end_, [&](const IndexEntry* entry) { return groupPlace(entry) < group.place_; });
    const Iterator last =
        std::partition_point(first, end_, [&](const IndexEntry* entry) { return groupPlace(entry) == group.place_; });
    return {first, last};
}

void SystemIndex::join(const std::shared_ptr<SystemIndex>& index, PipeGroupNode& group) {
    if (group.index_ != nullptr) group.index_->forget(group);
    group.index_ = index;
    group.place_ = static_cast<int>(index->groups_.size());
    index->groups_.push_back(&group);
}

std::shared_ptr<SystemIndex> SystemIndex::over(const std::vector<std::unique_ptr<PipeGroupNode>>& groups) {
    const auto index = std::make_shared<SystemIndex>();
    for (const auto& group : groups)
        join(index, *group);
    return index;
}

std::shared_ptr<SystemIndex> SystemIndex::over(PipeGroupNode& group) {
    const auto index = std::make_shared<SystemIndex>();
    join(index, group);
    return index;
}

std::size_t SystemIndex::mostKeysOf(const PipeNode& system) {
    return 3 + system.layers_.size() + system.layersByType_.size();
}

std::vector<std::uint64_t> SystemIndex::keysOf(const IndexEntry& entry) {
    const PipeNode& system = *entry.system;
    std::vector<std::uint64_t> keys;
    keys.reserve(mostKeysOf(system));
    keys.push_back(keyOf(Question::SystemName, system.PipeName));
    keys.push_back(keyOf(Question::SystemName, entry.nameInGroup));
    keys.push_back(keyOf(Question::OldName, system.PipeOriginalName));
    for (const auto& layer : system.layers_)
        keys.push_back(keyOf(Question::LayerName, layer->LayerName));
    for (const auto& [type, answer] : system.layersByType_)
        keys.push_back(keyOfType(type, answer.layer->LayerName));
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

void SystemIndex::put(std::uint64_t key, IndexEntry& entry) {
    Posting& posting = postings_[key];
    if (posting.only == nullptr && posting.all == nullptr) {
        posting.only = &entry;
        return;
    }
    if (posting.all == nullptr) {
        posting.all = std::make_unique<std::vector<IndexEntry*>>(1, posting.only);
        posting.only = nullptr;
    }
    std::vector<IndexEntry*>& all = *posting.all;
    all.insert(isBefore(all.back(), &entry) ? all.end() : std::upper_bound(all.begin(), all.end(), &entry, isBefore),
               &entry);
}

void SystemIndex::take(std::uint64_t key, const IndexEntry& entry) {
    const auto found = postings_.find(key);
    if (found == postings_.end()) return;
    Posting& posting = found->second;
    if (posting.all != nullptr) {
        // By identity: the places of entries that changed may be out of order just now.
        std::vector<IndexEntry*>& all = *posting.all;
        all.erase(std::remove(all.begin(), all.end(), &entry), all.end());
        if (!all.empty()) return;
    }
    postings_.erase(found);
}

void SystemIndex::build() {
    std::size_t keys = 0;
    for (const PipeGroupNode* group : groups_) {
        for (const auto& system : group->systems_) {
            changed_.push_back(system->entry_.get());
            keys += mostKeysOf(*system);
        }
    }
    postings_.reserve(keys);
    isBuilt_ = true;
}

void SystemIndex::refresh() {
    if (!isBuilt_) build();
    for (IndexEntry* entry : changed_) {
        for (const std::uint64_t key : entry->keys)
            take(key, *entry);
        entry->keys.clear();
    }
    for (IndexEntry* entry : changed_) {
        entry->keys = keysOf(*entry);
        for (const std::uint64_t key : entry->keys)
            put(key, *entry);
        entry->isChanged = false;
    }
    changed_.clear();
}

void SystemIndex::clear() {
    if (!isBuilt_) return;
    for (const PipeGroupNode* group : groups_) {
        for (const auto& system : group->systems_) {
            system->entry_->isChanged = true;
            system->entry_->keys.clear();
        }
    }
    postings_.clear();
    changed_.clear();
    isBuilt_ = false;
}

void SystemIndex::add(IndexEntry& entry) {
    if (isBuilt_) changed_.push_back(&entry);
}

void SystemIndex::change(IndexEntry& entry) {
    if (entry.isChanged) return;
    entry.isChanged = true;
    changed_.push_back(&entry);
}

void SystemIndex::remove(IndexEntry& entry) {
    if (!isBuilt_) return;
    for (const std::uint64_t key : entry.keys)
        take(key, entry);
    if (entry.isChanged) changed_.erase(std::remove(changed_.begin(), changed_.end(), &entry), changed_.end());
}

void SystemIndex::forget(PipeGroupNode& group) {
    clear();
    // In the order of their places. They leave from the front when a standard ends.
    const auto found = std::partition_point(groups_.begin(), groups_.end(),
                                            [&](const PipeGroupNode* other) { return other->place_ < group.place_; });
    if (found != groups_.end() && *found == &group) groups_.erase(found);
}

SystemIndex::Candidates SystemIndex::find(std::uint64_t key) {
    refresh();
    const auto found = postings_.find(key);
    if (found == postings_.end()) return {nullptr, nullptr};
    const Posting& posting = found->second;
    if (posting.all != nullptr) return {posting.all->data(), posting.all->data() + posting.all->size()};
    return {&posting.only, &posting.only + 1};
}

SystemIndex::Candidates SystemIndex::named(const CString& systemName) {
    return find(keyOf(Question::SystemName, systemName));
}

SystemIndex::Candidates SystemIndex::onceNamed(const CString& oldName) {
    return find(keyOf(Question::OldName, oldName));
}

SystemIndex::Candidates SystemIndex::withLayer(const CString& layerName) {
    return find(keyOf(Question::LayerName, layerName));
}

SystemIndex::Candidates SystemIndex::withLayer(const CString& layerType, const CString& layerName) {
    return find(keyOfType(layerType, layerName));
}

}  // namespace qrs::standard
