/// @file
/// An array that takes the room of a pointer.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "qilib/smallblocks.h"

namespace qi {

/// Used like std::vector, for the arrays of records: most are empty or short, and a scene has millions. An
/// empty one takes 8 bytes, and so does one word alone; longer ones have a block that begins with their
/// length. An item that was alone moves with the array: what pointed at it no longer does.
template <class T>
class CompactArray {
 public:
  using value_type = T;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using reference = T&;
  using const_reference = const T&;
  using iterator = T*;
  using const_iterator = const T*;

  CompactArray() = default;
  explicit CompactArray(std::size_t n) : CompactArray() { resize(n); }
  CompactArray(std::initializer_list<T> items) : CompactArray(items.begin(), items.end()) {}
  template <std::forward_iterator I>
  CompactArray(I first, I last) : CompactArray() {
    assign(first, last);
  }
  CompactArray(const CompactArray& other) : CompactArray(other.begin(), other.end()) {}
  CompactArray(CompactArray&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
  CompactArray& operator=(const CompactArray& other) {
    if (this != &other) assign(other.begin(), other.end());
    return *this;
  }
  CompactArray& operator=(CompactArray&& other) noexcept {
    CompactArray taken(std::move(other));
    std::swap(handle_, taken.handle_);
    return *this;
  }
  ~CompactArray() { destroy(); }

  std::size_t size() const { return has_block() ? head()->size : mark() & 1; }
  bool empty() const { return size() == 0; }
  /// So many items have room before memory is taken again.
  std::size_t capacity() const { return has_block() ? head()->capacity : kAlone; }

  T* data() { return has_block() ? items_of(head()) : alone(*this); }
  const T* data() const { return has_block() ? items_of(head()) : alone(*this); }
  T* begin() { return data(); }
  T* end() { return data() + size(); }
  const T* begin() const { return data(); }
  const T* end() const { return data() + size(); }
  T& operator[](std::size_t i) { return data()[i]; }
  const T& operator[](std::size_t i) const { return data()[i]; }
  /// Throws std::out_of_range.
  T& at(std::size_t i) { return i < size() ? data()[i] : throw std::out_of_range("CompactArray::at"); }
  const T& at(std::size_t i) const {
    return i < size() ? data()[i] : throw std::out_of_range("CompactArray::at");
  }
  T& front() { return *begin(); }
  const T& front() const { return *begin(); }
  T& back() { return end()[-1]; }
  const T& back() const { return end()[-1]; }

  /// Makes room for n items and no more.
  void reserve(std::size_t n) {
    if (n > capacity()) move_to(n);
  }
  /// New items are copies of `value`. The memory of those that go is kept.
  void resize(std::size_t n, const T& value = {}) {
    if (n <= size()) {
      drop(size() - n);
    } else {
      append(n - size(), [&, more = n - size()](T* at) { std::uninitialized_fill_n(at, more, value); });
    }
  }
  void clear() { drop(size()); }
  void pop_back() { drop(1); }

  // What is put in, beyond what push_back takes, is not this array's own.

  template <std::forward_iterator I>
  void assign(I first, I last) {
    clear();
    insert(end(), first, last);
  }
  void assign(std::size_t n, const T& value) {
    clear();
    resize(n, value);
  }
  template <class... Args>
  T& emplace_back(Args&&... args) {
    T item(std::forward<Args>(args)...);  // first: the arguments may be of this array
    append(1, [&item](T* at) { std::construct_at(at, std::move(item)); });
    return back();
  }
  void push_back(const T& item) { emplace_back(item); }
  void push_back(T&& item) { emplace_back(std::move(item)); }
  template <std::forward_iterator I>
  T* insert(const T* before, I first, I last) {
    const std::ptrdiff_t at = before - begin();
    const auto n = static_cast<std::size_t>(std::distance(first, last));
    append(n, [&](T* end) { std::uninitialized_copy(first, last, end); });
    std::rotate(begin() + at, end() - n, end());
    return begin() + at;
  }
  T* insert(const T* before, T item) {
    const std::ptrdiff_t at = before - begin();
    push_back(std::move(item));
    std::rotate(begin() + at, end() - 1, end());
    return begin() + at;
  }
  T* erase(const T* first, const T* last) {
    T* const at = begin() + (first - begin());
    if (first == last) return at;  // items moved to where they are lose their contents
    std::move(begin() + (last - begin()), end(), at);
    drop(static_cast<std::size_t>(last - first));
    return at;
  }
  T* erase(const T* item) { return erase(item, item + 1); }

  friend bool operator==(const CompactArray& a, const CompactArray& b) requires std::equality_comparable<T> {
    return std::ranges::equal(a, b);
  }

 private:
  /// What a block begins with; the items follow.
  struct Head {
    std::uint32_t size, capacity;
  };
  static_assert(alignof(T) <= alignof(std::uintptr_t) && std::is_nothrow_move_constructible_v<T>);

  /// How many items have room in the handle: a word, beside a mark in the lowest bit, which no block's
  /// address has.
  static constexpr std::size_t kAlone =
      std::is_trivially_copyable_v<T> && sizeof(T) == 4 && sizeof(std::uintptr_t) == 8;
  static constexpr std::size_t kAloneAt = std::endian::native == std::endian::little ? 4 : 0;
  using Handle = std::array<std::byte, sizeof(std::uintptr_t)>;

  std::uintptr_t mark() const { return std::bit_cast<std::uintptr_t>(handle_); }
  bool has_block() const { return mark() != 0 && (mark() & 1) == 0; }
  Head* head() const { return std::bit_cast<Head*>(handle_); }
  static T* items_of(Head* head) { return reinterpret_cast<T*>(head + 1); }
  static std::size_t block_bytes(std::size_t capacity) { return sizeof(Head) + capacity * sizeof(T); }
  /// Where an item is that has no block; null for items that always have one.
  static auto alone(auto& array) {
    using Item = std::conditional_t<std::is_const_v<std::remove_reference_t<decltype(array)>>, const T, T>;
    if constexpr (kAlone != 0) {
      return reinterpret_cast<Item*>(array.handle_.data() + kAloneAt);
    } else {
      return static_cast<Item*>(nullptr);
    }
  }

  /// Appends n items, which `make(at)` constructs.
  template <class Make>
  void append(std::size_t n, Make make) {
    if (n == 0) return;
    const std::size_t wanted = size() + n;
    if (wanted > capacity()) move_to(std::max(wanted, empty() ? 0 : 2 * capacity()));
    if (!has_block()) handle_ = std::bit_cast<Handle>(std::uintptr_t{1});
    T* const all = wanted > kAlone ? items_of(head()) : data();  // said so, since compilers don't see it
    make(all + wanted - n);
    if (has_block()) head()->size = static_cast<std::uint32_t>(wanted);
  }
  /// The last n items go.
  void drop(std::size_t n) {
    if (n == 0) return;
    std::destroy(end() - n, end());
    if (has_block()) {
      head()->size -= static_cast<std::uint32_t>(n);
    } else {
      handle_ = {};
    }
  }
  void move_to(std::size_t new_capacity) {
    if (new_capacity > std::numeric_limits<std::uint32_t>::max()) throw std::bad_array_new_length();
    void* const block = take_block(block_bytes(new_capacity));
    Head* const moved =
        new (block) Head{static_cast<std::uint32_t>(size()), static_cast<std::uint32_t>(new_capacity)};
    std::uninitialized_move(begin(), end(), items_of(moved));
    destroy();
    handle_ = std::bit_cast<Handle>(moved);
  }
  void destroy() {
    if (!has_block()) return;
    std::destroy(begin(), end());
    give_block(head(), block_bytes(head()->capacity));
  }

  alignas(std::uintptr_t) Handle handle_{};  ///< a block's address, or an item and the mark, or zeros
};

}  // namespace qi
