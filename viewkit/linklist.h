/// @file
/// An ordered list of pointers in which anything is found and removed in constant time, however long it is.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

namespace viewkit {

/// Keeps pointers, the same one several times if need be, in the order in which they were added. Owns
/// nothing.
template <class T>
class LinkList {
 public:
  std::size_t size() const { return live_; }
  bool empty() const { return live_ == 0; }

  /// The entry of that number, from 0; null when there is none. The first call after entries were removed
  /// between others costs a pass over the list.
  template <class Number>
  T* at(Number number) const {
    if (number < 0 || static_cast<std::size_t>(number) >= live_) return nullptr;
    if (slots_.size() - head_ != live_) closeGaps();
    return slots_[head_ + static_cast<std::size_t>(number)];
  }

  void add(T* item) {
    slots_.push_back(item);
    ++live_;
    if (places_) {
      (*places_)[item].push_back(slots_.size() - 1);
    } else if (slots_.size() > kScanned) {
      indexPlaces();
    }
  }

  /// Takes out the entry of `item` that was added last.
  /// @returns whether there was one.
  bool remove(const T* item) {
    const std::size_t place = takePlace(item);
    if (place == slots_.size()) return false;
    slots_[place] = nullptr;
    --live_;
    while (!slots_.empty() && !slots_.back()) slots_.pop_back();
    head_ = std::min(head_, slots_.size());
    while (head_ < slots_.size() && !slots_[head_]) ++head_;
    if (slots_.size() > kScanned && slots_.size() > 2 * live_) closeGaps();
    return true;
  }

 private:
  static constexpr std::size_t kScanned = 16;  // lists up to this long are searched without an index
  using Places = std::unordered_map<const T*, std::vector<std::size_t>>;

  std::size_t takePlace(const T* item) {
    if (!item) return slots_.size();
    if (!places_) {
      const auto found = std::find(slots_.rbegin(), slots_.rend(), item);
      return found == slots_.rend() ? slots_.size() : static_cast<std::size_t>(slots_.rend() - found) - 1;
    }
    const auto found = places_->find(item);
    if (found == places_->end()) return slots_.size();
    const std::size_t place = found->second.back();
    found->second.pop_back();
    if (found->second.empty()) places_->erase(found);
    return place;
  }

  void closeGaps() const {
    std::erase(slots_, nullptr);
    head_ = 0;
    if (places_) indexPlaces();
  }

  void indexPlaces() const {
    if (!places_) places_ = std::make_unique<Places>();
    places_->clear();
    for (std::size_t i = head_; i < slots_.size(); ++i)
      if (slots_[i]) (*places_)[slots_[i]].push_back(i);
  }

  // Removed entries are null until gaps are closed, which changes nothing that can be seen from outside.
  mutable std::vector<T*> slots_;
  mutable std::size_t head_ = 0;  // all slots before it are null
  mutable std::unique_ptr<Places> places_;
  std::size_t live_ = 0;
};

}  // namespace viewkit
