#pragma once

#include "model/KeyedHash.h"
#include "model/PositionIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace consolidator {

/// A list in insertion order whose elements can be found by key, first match first. It is never
/// sorted and may hold equal keys (plain appends do not check).
///
/// `KeyOf` is a function object that returns the key of an element: a value that compares with
/// `==` and for which `KeyOf::hash(key)` gives a keyed hash. Short lists are searched linearly;
/// from `indexedFrom` elements on the first search builds a hash index, which later appends keep up
/// to date, so that n add-if-absent calls cost O(n).
template <typename T, typename KeyOf>
class KeyedList {
 public:
  using Key = std::invoke_result_t<KeyOf, const T&>;
  using value_type = T;
  using const_iterator = typename std::vector<T>::const_iterator;

  KeyedList() = default;

  explicit KeyedList(std::vector<T>&& items) : items_(std::move(items)) {}

  // Copies do not pay for an index before they are searched.
  KeyedList(const KeyedList& other) : items_(other.items_) {}

  KeyedList(KeyedList&& other) noexcept = default;

  KeyedList& operator=(const KeyedList& other) {
    if (this != &other) *this = KeyedList(other);
    return *this;
  }

  KeyedList& operator=(KeyedList&& other) noexcept = default;

  ~KeyedList() = default;

  bool empty() const { return items_.empty(); }

  std::size_t size() const { return items_.size(); }

  const_iterator begin() const { return items_.begin(); }

  const_iterator end() const { return items_.end(); }

  const T& operator[](std::size_t position) const { return items_[position]; }

  const T& front() const { return items_.front(); }

  const T& back() const { return items_.back(); }

  void reserve(std::size_t count) { items_.reserve(count); }

  void clear() {
    items_.clear();
    index_.reset();
  }

  /// Appends an element, whether its key is present or not, and returns it. The caller must not
  /// change its key through the reference.
  T& append(T item) {
    if (items_.capacity() == 0) items_.reserve(firstCapacity);
    items_.push_back(std::move(item));
    if (index_) addToIndex(items_.size() - 1);
    return items_.back();
  }

  /// Returns the first element with this key, or null. The caller must not change its key.
  T* find(const Key& key) {
    const std::size_t position = positionOf(key);
    return position == PositionIndex::none ? nullptr : &items_[position];
  }

  /// Whether no two elements have the same key.
  bool hasDistinctKeys() {
    auto index = std::make_unique<PositionIndex>(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const Key& key = KeyOf{}(items_[i]);
      if (index->findOrAdd(KeyOf::hash(key), i, keyIs(key)) != i) return false;
    }
    if (items_.size() >= indexedFrom) index_ = std::move(index);
    return true;
  }

  bool contains(const Key& key) { return positionOf(key) != PositionIndex::none; }

  /// Lets `change` rewrite the whole list (a `std::vector<T>&`), keys included.
  template <typename Change>
  void edit(Change change) {
    index_.reset();
    change(items_);
  }

  /// Gives the elements up; the list is empty then.
  std::vector<T> takeItems() {
    index_.reset();
    return std::exchange(items_, {});
  }

  friend bool operator==(const KeyedList& a, const KeyedList& b) { return a.items_ == b.items_; }

 private:
  static constexpr std::size_t indexedFrom = 16;
  static constexpr std::size_t firstCapacity = 4;  // spares most lists to grow three times

  std::size_t positionOf(const Key& key) {
    if (items_.size() < indexedFrom) {
      for (std::size_t i = 0; i < items_.size(); ++i) {
        if (KeyOf{}(items_[i]) == key) return i;
      }
      return PositionIndex::none;
    }
    if (!index_) {
      index_ = std::make_unique<PositionIndex>();
      for (std::size_t i = 0; i < items_.size(); ++i) addToIndex(i);
    }
    return index_->find(KeyOf::hash(key), keyIs(key));
  }

  auto keyIs(const Key& key) const {
    return [this, &key](std::size_t position) { return KeyOf{}(items_[position]) == key; };
  }

  void addToIndex(std::size_t position) {
    const Key& key = KeyOf{}(items_[position]);
    index_->findOrAdd(KeyOf::hash(key), position, keyIs(key));
  }

  std::vector<T> items_;
  std::unique_ptr<PositionIndex> index_;  // most lists are too short to need one
};

/// Hash of a text key, for the `KeyOf` of lists that are searched by one text.
struct TextKeyHash {
  static std::uint64_t hash(std::string_view key) { return keyedHash(key); }
};

}  // namespace consolidator
