// A growing array as the editor's interface hands them out.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

// Indices and lengths are int, as callers of this interface keep them. An index out of range is a programmer's error.
template <typename T>
class AcArray {
  public:
    AcArray() = default;
    // Room for that many elements; the array stays empty.
    explicit AcArray(int physicalLength) { items_.reserve(static_cast<std::size_t>(physicalLength)); }

    int length() const { return static_cast<int>(items_.size()); }
    bool isEmpty() const { return items_.empty(); }

    T& at(int index) { return items_[static_cast<std::size_t>(index)]; }
    const T& at(int index) const { return items_[static_cast<std::size_t>(index)]; }
    T& operator[](int index) { return at(index); }
    const T& operator[](int index) const { return at(index); }

    // The elements one after the other; null may come for an empty array.
    const T* asArrayPtr() const { return items_.data(); }
    T* asArrayPtr() { return items_.data(); }

    // The index of the new element.
    int append(const T& value) {
        items_.push_back(value);
        return length() - 1;
    }
    AcArray& append(const AcArray& other) {
        const std::size_t count = other.items_.size();
        items_.reserve(items_.size() + count);
        for (std::size_t i = 0; i < count; ++i)
            items_.push_back(other.items_[i]);
        return *this;
    }
    AcArray& removeAt(int index) {
        items_.erase(items_.begin() + index);
        return *this;
    }
    AcArray& removeAll() {
        items_.clear();
        return *this;
    }

    bool contains(const T& value, int start = 0) const { return find(value, start) >= 0; }
    // -1 when no element from start on equals the value.
    int find(const T& value, int start = 0) const {
        const auto found = std::find(items_.begin() + start, items_.end(), value);
        return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
    }
    AcArray& setLogicalLength(int length) {
        items_.resize(static_cast<std::size_t>(length));
        return *this;
    }

#ifndef QRS_PUBLISHED_ONLY
    auto begin() {
        return items_.begin();
    }
    auto begin() const {
        return items_.begin();
    }
    auto end() {
        return items_.end();
    }
    auto end() const {
        return items_.end();
    }
#endif  // QRS_PUBLISHED_ONLY

    bool operator==(const AcArray& other) const {
        return items_ == other.items_;
    }
    bool operator!=(const AcArray& other) const {
        return items_ != other.items_;
    }

  private:
    std::vector<T> items_;
};
