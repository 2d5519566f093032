#pragma once

#include "lookup/KeyedHash.h"
#include "lookup/PositionIndex.h"

#include <algorithm>
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
/// to date, so that n add-if-absent calls cost O(n). `Items` is the sequence that holds the
/// elements.
///
/// An empty list takes one pointer: most lists of a model are empty, and three bytes of an input
/// may make five of them.
template <typename T, typename KeyOf, typename Items = std::vector<T>>
class KeyedList {
 public:
  using Key = std::invoke_result_t<KeyOf, const T&>;
  using value_type = T;
  using const_iterator = typename Items::const_iterator;

  KeyedList() = default;

  explicit KeyedList(Items&& items) {
    if (!items.empty()) contents().items = std::move(items);
  }

  // Copies do not pay for an index before they are searched.
  KeyedList(const KeyedList& other) {
    if (!other.empty()) contents().items = other.contents_->items;
  }

  KeyedList(KeyedList&& other) noexcept = default;

  KeyedList& operator=(const KeyedList& other) {
    if (this != &other) *this = KeyedList(other);
    return *this;
  }

  KeyedList& operator=(KeyedList&& other) noexcept = default;

  ~KeyedList() = default;

  bool empty() const { return size() == 0; }

  std::size_t size() const { return contents_ ? contents_->items.size() : 0; }

  const_iterator begin() const { return contents_ ? contents_->items.cbegin() : const_iterator(); }

  const_iterator end() const { return contents_ ? contents_->items.cend() : const_iterator(); }

  const T& operator[](std::size_t position) const { return contents_->items[position]; }

  const T& front() const { return contents_->items.front(); }

  const T& back() const { return contents_->items.back(); }

  void reserve(std::size_t count) {
    if (count > 0) contents().items.reserve(count);
  }

  /// Removes all elements and keeps their room.
  void clear() {
    if (contents_) edit([](Items& items) { items.clear(); });
  }

  /// Appends an element, whether its key is present or not, and returns it. The caller must not
  /// change its key through the reference.
  T& append(T item) {
    Items& items = contents().items;
    if constexpr (requires { items.capacity(); }) {
      if (items.capacity() == 0) items.reserve(firstCapacity);
    }
    items.push_back(std::move(item));
    if (contents_->index) addToIndex(items.size() - 1);
    return items.back();
  }

  /// Returns the first element with this key, or null. The caller must not change its key.
  T* find(const Key& key) {
    const std::size_t position = positionOf(key);
    return position == PositionIndex::none ? nullptr : &contents_->items[position];
  }

  /// Whether no two elements have the same key.
  bool hasDistinctKeys() {
    if (empty()) return true;
    auto index = std::make_unique<PositionIndex>();
    const Items& items = contents_->items;
    for (std::size_t i = 0; i < items.size(); ++i) {
      const Key& key = KeyOf{}(items[i]);
      if (index->findOrAdd(KeyOf::hash(key), i, keyIs(key)) != i) return false;
    }
    if (items.size() >= indexedFrom) contents_->index = std::move(index);
    return true;
  }

  bool contains(const Key& key) { return positionOf(key) != PositionIndex::none; }

  /// Lets `change` rewrite the whole list (an `Items&`), keys included.
  template <typename Change>
  void edit(Change change) {
    contents().index.reset();
    change(contents_->items);
  }

  /// Moves the elements out and leaves the list empty.
  Items takeItems() {
    const std::unique_ptr<Contents> taken = std::move(contents_);
    return taken ? std::move(taken->items) : Items();
  }

  friend bool operator==(const KeyedList& a, const KeyedList& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }

 private:
  static constexpr std::size_t indexedFrom = 16;
  // Most lists need not grow beyond it: growing from one, a hierarchy takes 1.1 times the
  // instructions.
  static constexpr std::size_t firstCapacity = 4;

  struct Contents {
    Items items;
    std::unique_ptr<PositionIndex> index;  // most lists are too short to need one
  };

  Contents& contents() {
    if (!contents_) contents_ = std::make_unique<Contents>();
    return *contents_;
  }

  std::size_t positionOf(const Key& key) {
    if (!contents_) return PositionIndex::none;
    const Items& items = contents_->items;
    if (items.size() < indexedFrom) {
      for (std::size_t i = 0; i < items.size(); ++i) {
        if (KeyOf{}(items[i]) == key) return i;
      }
      return PositionIndex::none;
    }
    if (!contents_->index) {
      contents_->index = std::make_unique<PositionIndex>();
      for (std::size_t i = 0; i < items.size(); ++i) addToIndex(i);
    }
    return contents_->index->find(KeyOf::hash(key), keyIs(key));
  }

  auto keyIs(const Key& key) const {
    return [this, &key](std::size_t position) { return KeyOf{}((*this)[position]) == key; };
  }

  void addToIndex(std::size_t position) {
    const Key& key = KeyOf{}((*this)[position]);
    contents_->index->findOrAdd(KeyOf::hash(key), position, keyIs(key));
  }

  std::unique_ptr<Contents> contents_;
};

/// Hash of a text key, for the `KeyOf` of lists that are searched by one text.
struct TextKeyHash {
  static std::uint64_t hash(std::string_view key) { return keyedHash(key); }
};

}  // namespace consolidator
