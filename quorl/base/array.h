// The host's growable array: the one sequence type that crosses interfaces of host and modules.
// Elements are held by value; an array of pointers never owns what they point to.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

#include "quorl/base/assert.h"

template<class T> class ZnArray {
public:
  using value_type = T;
  using iterator = typename std::vector<T>::iterator;
  using const_iterator = typename std::vector<T>::const_iterator;
  using reference = typename std::vector<T>::reference;
  using const_reference = typename std::vector<T>::const_reference;

  // growStep is the least number of elements by which a full array grows; growth stays geometric
  // beyond it, so that appending costs constant time on average.
  ZnArray() = default;
  explicit ZnArray(int physicalLength, int growStep = 8)
      : growStep_(growStep) {
    if (physicalLength > 0) items_.reserve(static_cast<size_t>(physicalLength));
  }
  ZnArray(std::initializer_list<T> items)
      : items_(items) {}

  // Size
  int length() const { return static_cast<int>(items_.size()); }
  bool isEmpty() const { return items_.empty(); }
  int physicalLength() const { return static_cast<int>(items_.capacity()); }
  void setPhysicalLength(int length) { items_.reserve(static_cast<size_t>(length)); }
  // New elements are default constructed.
  void setLogicalLength(int length) { items_.resize(static_cast<size_t>(length)); }
  void removeAll() { items_.clear(); }

  // Elements; an index outside the array is a bug of the caller.
  reference operator[](int index) { return items_[checked(index)]; }
  const_reference operator[](int index) const { return items_[checked(index)]; }
  reference at(int index) { return items_[checked(index)]; }
  const_reference at(int index) const { return items_[checked(index)]; }
  void setAt(int index, const T& item) { items_[checked(index)] = item; }
  reference first() { return items_[checked(0)]; }
  const_reference first() const { return items_[checked(0)]; }
  reference last() { return items_[checked(length() - 1)]; }
  const_reference last() const { return items_[checked(length() - 1)]; }

  // Change. append returns the new element's index.
  int append(const T& item) { return append(T(item)); } // a copy first: it may be one of this array
  int append(T&& item) {
    T held(std::move(item));
    grow();
    items_.push_back(std::move(held));
    return length() - 1;
  }
  void append(const ZnArray& other) {
    const size_t count = other.items_.size(); // of this very array, what stood there before
    items_.reserve(items_.size() + count);
    for (size_t i = 0; i < count; ++i) items_.push_back(other.items_[i]);
  }
  // Before the element at the index, or at the end for the length.
  void insertAt(int index, const T& item) {
    QUORL_ASSERT(index >= 0 && index <= length());
    items_.insert(items_.begin() + index, item);
  }
  void removeAt(int index) { items_.erase(items_.begin() + static_cast<int>(checked(index))); }
  // Takes out the first element equal to item; false when there is none.
  bool remove(const T& item) {
    const int index = find(item);
    if (index < 0) return false;
    removeAt(index);
    return true;
  }
  void removeFirst() { removeAt(0); }
  void removeLast() { removeAt(length() - 1); }
  void reverse() { std::reverse(items_.begin(), items_.end()); }

  // Search; -1 when absent.
  int find(const T& item, int from = 0) const {
    for (int i = from; i < length(); ++i)
      if (items_[static_cast<size_t>(i)] == item) return i;
    return -1;
  }
  bool contains(const T& item) const { return find(item) >= 0; }

  iterator begin() { return items_.begin(); }
  iterator end() { return items_.end(); }
  const_iterator begin() const { return items_.begin(); }
  const_iterator end() const { return items_.end(); }

  friend bool operator==(const ZnArray& a, const ZnArray& b) { return a.items_ == b.items_; }

private:
  size_t checked(int index) const {
    QUORL_ASSERT(index >= 0 && index < length());
    return static_cast<size_t>(index);
  }
  void grow() {
    if (items_.size() == items_.capacity())
      items_.reserve(std::max(items_.size() + static_cast<size_t>(growStep_), items_.size() * 2));
  }

  std::vector<T> items_;
  int growStep_ = 8;
};
