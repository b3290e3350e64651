/// @file
/// Slabs of blocks of one size. A block finds its slab by its address; an empty slab goes back to the system.
#include "qilib/smallblocks.h"

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace qi {
namespace {

constexpr std::size_t kStep = 4;  ///< sizes of blocks are multiples of this
constexpr std::size_t kLargest = 160;
constexpr std::align_val_t kSlabAlign{1 << 16};
/// What the system's allocator needs between two slabs comes off, so that it puts them side by side.
constexpr std::size_t kSlabBytes = static_cast<std::size_t>(kSlabAlign) - 64;

constexpr std::size_t size_class(std::size_t bytes) { return (bytes + kStep - 1) / kStep; }

/// A block that nobody has: where in the slab the next one is; 0: nowhere.
struct FreeBlock {
  std::uint32_t next;
};

/// The beginning of a slab; its blocks follow.
class Slab {
 public:
  static constexpr std::size_t kHead = 2 * sizeof(void*) + 4 * sizeof(std::uint32_t);

  explicit Slab(std::uint32_t block_bytes) : block_bytes_(block_bytes) {}

  void* take() {
    ++used_;
    std::byte* const begin = reinterpret_cast<std::byte*>(this);
    if (free_ == 0) return begin + std::exchange(fresh_, fresh_ + block_bytes_);
    void* const block = begin + free_;
    free_ = static_cast<FreeBlock*>(block)->next;
    return block;
  }
  void give(void* block) {
    new (block) FreeBlock{free_};
    free_ = offset_of(block);
    --used_;
  }
  bool empty() const { return used_ == 0; }
  bool full() const { return free_ == 0 && fresh_ + block_bytes_ > kSlabBytes; }

  static Slab& of(void* block) {
    return *reinterpret_cast<Slab*>(static_cast<std::byte*>(block) - offset_of(block));
  }

  Slab* before = nullptr;  ///< among those with room
  Slab* after = nullptr;

 private:
  static std::uint32_t offset_of(void* block) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(block) %
                                      static_cast<std::size_t>(kSlabAlign));
  }

  std::uint32_t block_bytes_;
  std::uint32_t free_ = 0;                                   ///< where the first free block is
  std::uint32_t fresh_ = static_cast<std::uint32_t>(kHead);  ///< where those begin that nobody ever had
  std::uint32_t used_ = 0;
};
static_assert(sizeof(Slab) == Slab::kHead);

/// The slabs of one block size that have room.
class Pool {
 public:
  void* take(std::uint32_t block_bytes) {
    if (!first_) link(*new (::operator new(kSlabBytes, kSlabAlign)) Slab(block_bytes));
    Slab& slab = *first_;
    void* const block = slab.take();
    if (slab.full()) unlink(slab);
    return block;
  }
  void give(void* block) {
    Slab& slab = Slab::of(block);
    const bool was_full = slab.full();
    slab.give(block);
    if (was_full) link(slab);
    // One is kept, so that a block that comes and goes does not take a slab along each time.
    if (!slab.empty() || (first_ == &slab && !slab.after)) return;
    unlink(slab);
    std::destroy_at(&slab);
    ::operator delete(&slab, kSlabAlign);
  }

 private:
  void link(Slab& slab) {
    slab.before = nullptr;
    slab.after = first_;
    if (first_) first_->before = &slab;
    first_ = &slab;
  }
  void unlink(Slab& slab) {
    (slab.before ? slab.before->after : first_) = slab.after;
    if (slab.after) slab.after->before = slab.before;
  }

  Slab* first_ = nullptr;
};

constinit std::array<Pool, size_class(kLargest) + 1> pools;
constinit std::mutex pools_mutex;

}  // namespace

void* take_block(std::size_t bytes) {
  if (!kSmallBlocks || bytes > kLargest) return ::operator new(bytes);
  const std::size_t words = size_class(bytes);
  const std::lock_guard lock(pools_mutex);
  return pools[words].take(static_cast<std::uint32_t>(words * kStep));
}

void give_block(void* block, std::size_t bytes) noexcept {
  if (!kSmallBlocks || bytes > kLargest) {
    ::operator delete(block);
    return;
  }
  const std::lock_guard lock(pools_mutex);
  pools[size_class(bytes)].give(block);
}

}  // namespace qi
