/// @file
/// An optional value that takes the room of a pointer while it is absent.
#pragma once

#include <memory>
#include <new>
#include <optional>

#include "qilib/smallblocks.h"

namespace qi {

/// Used like std::optional, for a large part that most records don't have: a scene of many records takes less
/// memory. Copying it copies the content.
template <class T>
class HeapOptional {
 public:
  HeapOptional() = default;
  HeapOptional(const HeapOptional& other) : content_(other ? make(*other) : nullptr) {}
  HeapOptional(HeapOptional&&) noexcept = default;
  HeapOptional& operator=(const HeapOptional& other) {
    if (this != &other) content_ = other ? make(*other) : nullptr;
    return *this;
  }
  HeapOptional& operator=(HeapOptional&&) noexcept = default;
  ~HeapOptional() = default;

  explicit operator bool() const { return has_value(); }
  bool has_value() const { return content_ != nullptr; }
  /// Throws std::bad_optional_access when it is absent.
  const T& value() const {
    if (!content_) throw std::bad_optional_access();
    return *content_;
  }
  T& operator*() { return *content_; }
  const T& operator*() const { return *content_; }
  T* operator->() { return content_.get(); }
  const T* operator->() const { return content_.get(); }

  T& emplace() {
    content_ = make();
    return *content_;
  }
  void reset() { content_.reset(); }

 private:
  static_assert(alignof(T) <= alignof(void*));

  struct Destroy {
    void operator()(T* content) const {
      std::destroy_at(content);
      give_block(content, sizeof(T));
    }
  };
  struct GiveBack {
    void operator()(void* block) const { give_block(block, sizeof(T)); }
  };
  template <class... Args>
  static std::unique_ptr<T, Destroy> make(const Args&... args) {
    std::unique_ptr<void, GiveBack> block(take_block(sizeof(T)));
    std::unique_ptr<T, Destroy> content(new (block.get()) T(args...));
    static_cast<void>(block.release());
    return content;
  }

  std::unique_ptr<T, Destroy> content_;
};

}  // namespace qi
