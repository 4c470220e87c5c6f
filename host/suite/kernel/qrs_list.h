// Stand-ins for the lists of the kernel library.
//
//     TDPtrList<int> sizes;
//     sizes.Append(100);
//     for (const int* size : sizes) total += *size;
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using TWCStringList = std::vector<std::wstring>;

// A list of pointers that owns what they point to. A pointer handed out stays good until its element is removed.
template <class Element>
class TDPtrList {
  public:
    // Walks the pointers in the list's order.
    class Iterator {
      public:
        explicit Iterator(const std::unique_ptr<Element>* place) : place_(place) {}
        Element* operator*() const { return place_->get(); }
        Iterator& operator++() {
            ++place_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return place_ != other.place_; }

      private:
        const std::unique_ptr<Element>* place_;
    };

    // Appends a copy of the element; its pointer.
    Element* Append(Element element) {
        elements_.push_back(std::make_unique<Element>(std::move(element)));
        return elements_.back().get();
    }
    // The element at a position, from 0; null outside.
    Element* GetAt(int index) const {
        const bool inside = index >= 0 && static_cast<std::size_t>(index) < elements_.size();
        return inside ? elements_[static_cast<std::size_t>(index)].get() : nullptr;
    }
    int GetCount() const { return static_cast<int>(elements_.size()); }
    bool IsEmpty() const { return elements_.empty(); }
    void RemoveAll() { elements_.clear(); }

    Iterator begin() const { return Iterator(elements_.data()); }
    Iterator end() const { return Iterator(elements_.data() + elements_.size()); }

  private:
    std::vector<std::unique_ptr<Element>> elements_;
};
