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
    int logicalLength() const { return length(); }
    int physicalLength() const { return static_cast<int>(items_.capacity()); }
    bool isEmpty() const { return items_.empty(); }

    T& at(int index) { return items_[static_cast<std::size_t>(index)]; }
    const T& at(int index) const { return items_[static_cast<std::size_t>(index)]; }
    T& operator[](int index) { return at(index); }
    const T& operator[](int index) const { return at(index); }
    T& first() { return items_.front(); }
    const T& first() const { return items_.front(); }
    T& last() { return items_.back(); }
    const T& last() const { return items_.back(); }
    AcArray& setAt(int index, const T& value) {
        at(index) = value;
        return *this;
    }
    AcArray& setAll(const T& value) {
        std::fill(items_.begin(), items_.end(), value);
        return *this;
    }

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
    AcArray& insertAt(int index, const T& value) {
        items_.insert(items_.begin() + index, value);
        return *this;
    }
    AcArray& removeAt(int index) {
        items_.erase(items_.begin() + index);
        return *this;
    }
    // False when no element equals the value; the first that does goes.
    bool remove(const T& value, int start = 0) {
        const int index = find(value, start);
        if (index < 0) return false;
        removeAt(index);
        return true;
    }
    AcArray& removeFirst() { return removeAt(0); }
    AcArray& removeLast() {
        items_.pop_back();
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
    bool find(const T& value, int& index, int start) const {
        const int found = find(value, start);
        if (found >= 0) index = found;
        return found >= 0;
    }

    AcArray& reverse() {
        std::reverse(items_.begin(), items_.end());
        return *this;
    }
    AcArray& swap(int first, int second) {
        std::swap(at(first), at(second));
        return *this;
    }
    AcArray& setLogicalLength(int length) {
        items_.resize(static_cast<std::size_t>(length));
        return *this;
    }
    AcArray& setPhysicalLength(int length) {
        if (length < logicalLength()) setLogicalLength(length);
        items_.reserve(static_cast<std::size_t>(length));
        return *this;
    }

    T* asArrayPtr() { return items_.data(); }
    const T* asArrayPtr() const { return items_.data(); }
    auto begin() { return items_.begin(); }
    auto begin() const { return items_.begin(); }
    auto end() { return items_.end(); }
    auto end() const { return items_.end(); }

    bool operator==(const AcArray& other) const { return items_ == other.items_; }
    bool operator!=(const AcArray& other) const { return items_ != other.items_; }

  private:
    std::vector<T> items_;
};
