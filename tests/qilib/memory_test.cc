/// @file
/// Memory: how much a file can make the library take, and what happens when there is no more.
#include <gmock/gmock.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <tuple>

#include "qilib/builders.h"
#include "qilib/change.h"
#include "qilib/checksizes.h"
#include "qilib/edit.h"
#include "qilib/names.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "qilib/smallblocks.h"
#include "tests/qilib/kinds.h"
#include "tests/qilib/smallrecords.h"
#include "tests/support/builtscene.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

/// What goes through operator new while it is watched.
struct Heap {
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
  bool watched = false;
  std::size_t allocations_left = kNever;  ///< the one after these fails, and all later ones
  std::size_t held = 0, most_held = 0;    ///< bytes
};
Heap heap;

class WatchedHeap {
 public:
  explicit WatchedHeap(std::size_t allocations_left = Heap::kNever) { heap = {true, allocations_left, 0, 0}; }
  ~WatchedHeap() { heap.watched = false; }
  WatchedHeap(const WatchedHeap&) = delete;
  WatchedHeap& operator=(const WatchedHeap&) = delete;
};

}  // namespace

namespace {

/// What the system's allocator takes for a block, its own word about it included.
std::size_t taken_by(void* block) { return malloc_usable_size(block) + sizeof(std::size_t); }

void* allocate(std::size_t size, std::size_t alignment) {
  if (heap.watched && heap.allocations_left != Heap::kNever) {
    if (heap.allocations_left == 0) throw std::bad_alloc();
    --heap.allocations_left;
  }
  void* const block = std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
  if (!block) throw std::bad_alloc();
  if (heap.watched) heap.most_held = std::max(heap.most_held, heap.held += taken_by(block));
  return block;
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size, alignof(std::max_align_t)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept {
  if (block && heap.watched) heap.held -= std::min(heap.held, taken_by(block));
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
void operator delete(void* block, std::align_val_t) noexcept { operator delete(block); }

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

/// A file of both versions' lists with something in all of them.
std::string file_with_all_lists() {
  FileBytes file;
  file.version = 0x0200;
  for (const KindCase& kind : kinds::all()) {
    const bool needs_structure = !kind.ext && (kind.name == "Cam" || kind.name == "Obj" ||
                                               kind.list == "ShapeList" || kind.list == "MatList");
    if (needs_structure && !kind.structure) continue;
    (kind.ext ? file.ext[kind.entry] : file.core[kind.entry]) = kind.bytes;
  }
  return file.bytes().str();
}

class ScarceMemory : public testing::Test {
 protected:
  const ScratchDirectory scratch_;
  const std::string file_ = scratch_ / "scene.quil";
  const std::string bytes_ = file_with_all_lists();
};

TEST_F(ScarceMemory, FailsAnOpenAtAnyPointAndLeavesAHarmlessScene) {
  write_file(file_, bytes_);
  int opened = 0;
  for (std::size_t allocations = 0; !opened; ++allocations) {
    SCOPED_TRACE(allocations);
    ASSERT_LT(allocations, 10000u);
    Qis scene;
    CaptureStderr();
    {
      const WatchedHeap scarce(allocations);
      opened = qiOpenQb(file_, scene);
    }
    const std::string printed = GetCapturedStderr();
    EXPECT_EQ(printed, opened ? "" : "Out of memory.\n");
    for (const int mode : {1, 2}) {
      written(scene, mode);
      qi::correct_sizes(scene, mode, ignore_message);
    }
    EXPECT_TRUE(!opened || allocations > (qi::kSmallBlocks ? 50 : 100)) << "a scene is made of many pieces";
  }
}

TEST_F(ScarceMemory, FailsASaveAtAnyPointAndLeavesTheOldFile) {
  write_file(file_, bytes_);
  Qis scene;
  ASSERT_EQ(qiOpenQb(file_, scene), 1);
  const std::string target = scratch_ / "a name that is too long to be held without memory of its own";
  write_file(target, "old");
  int saved = 0;
  for (std::size_t allocations = 0; !saved; ++allocations) {
    SCOPED_TRACE(allocations);
    ASSERT_LT(allocations, 10000u);
    Qis copy = scene;
    CaptureStderr();
    {
      const WatchedHeap scarce(allocations);
      saved = qiSaveAsQb2(copy, target);
    }
    EXPECT_EQ(GetCapturedStderr(), saved ? "" : "Out of memory.\n");
    EXPECT_TRUE(read_file(target) == (saved ? bytes_ : "old"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch_.path()), {}), 2);
  }
}

/// Arrays that grow and shrink, names, new records and lists, parts.
void edit_much(Qis& scene) {
  const qi::Reference& objs = *qi::find_reference(qi::kSceneTag, qi::kObjTag);
  for (Word obj = 0; obj < 4; ++obj) qi::add_reference(scene, objs, 0, obj);
  qi::delete_reference(scene, objs, 0, 1, ignore_message);
  std::string name = "a_name_that_is_longer_than_three_blanks";
  qiSetName(scene, qiAddName(scene) - 1, name);
  qiAddJoint(scene);
  const Word envelope = qiAddEnvelope(scene, 1, 1, 1, 2, 0) - 1;
  qiAddWeightedPart_Obj(scene, envelope, 0, 1, 50.0F);
}

TEST(ScarceMemoryInAnEdit, LeavesTheSceneAsItWas) {
  bool done = false;
  for (std::size_t allocations = 0; !done; ++allocations) {
    SCOPED_TRACE(allocations);
    ASSERT_LT(allocations, 10000u);
    const auto scene = built_scene();
    const std::string before = written(*scene, 2);
    try {
      const WatchedHeap scarce(allocations);
      qi::Recording recording(*scene);
      edit_much(*scene);
      recording.finish();
      done = true;
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(written(*scene, 2) == before);
    }
  }
}

TEST(ScarceMemoryInAnEdit, TakenBackOrMadeAgainLeavesTheSceneAsItWas) {
  const auto scene = built_scene();
  const std::string old = written(*scene, 2);
  qi::Recording recording(*scene);
  edit_much(*scene);
  const qi::Change change = recording.finish();
  const std::string edited = written(*scene, 2);
  for (const auto& [apply, before, after] :
       {std::tuple{&qi::Change::undo, edited, old}, std::tuple{&qi::Change::redo, old, edited}}) {
    bool done = false;
    for (std::size_t allocations = 0; !done; ++allocations) {
      SCOPED_TRACE(allocations);
      ASSERT_LT(allocations, 10000u);
      try {
        const WatchedHeap scarce(allocations);
        (change.*apply)(*scene);
        done = true;
      } catch (const std::bad_alloc&) {
      }
      EXPECT_TRUE(written(*scene, 2) == (done ? after : before));
    }
  }
}

class MemoryOf : public testing::TestWithParam<KindCase> {};

/// What one buffer and the slabs that are in use take beside the scene, however large the file is.
constexpr std::size_t kFixedPart = std::size_t{1} << 20;

/// The memory that opening a file of these contents takes at most.
std::size_t memory_of_opening(const std::string& bytes, int opens) {
  const ScratchDirectory scratch;
  const std::string name = scratch / "scene.quil";
  write_file(name, bytes);
  Qis scene;
  const WatchedHeap watched;
  const int opened = qi::open_scene(name, scene, ignore_message);
  EXPECT_GE(opened, opens);
  return heap.most_held;
}

/// Room for small counts to be believed, so that what one counted thing costs shows as well.
TEST_P(MemoryOf, AFileIsAtMostThreeTimesItAndAFixedPartWhateverItsCountsSay) {
  constexpr std::size_t kSpareWords = 50'000;
  KindCase roomy = GetParam();
  roomy.bytes.add(Bytes{}.fill(kSpareWords, 0));
  for (const std::size_t offset : GetParam().bytes.counts())
    for (const std::uint32_t count :
         {10u, 100u, 240u, 1000u, 4000u, 8000u, 0x10000u, 0x1000000u, 0x7FFFFFFCu, 0xFFFFFFFCu}) {
      KindCase hostile = roomy;
      hostile.bytes.put(offset, count);
      const std::string bytes = kinds::file_with(hostile).bytes().str();
      EXPECT_LE(memory_of_opening(bytes, 0), 3 * bytes.size() + kFixedPart) << count << " at " << offset;
    }
}

/// Many records of one kind with arrays of no, one, two or three items: they are the dearest.
class MemoryOfMany : public testing::TestWithParam<SmallRecords> {
 protected:
  void SetUp() override {
    if (!qi::kSmallBlocks) GTEST_SKIP() << "the address sanitizer's allocator takes more";
  }
  /// @param share  times the file, in percent
  static void expect_at_most(std::size_t share, bool strange_sizes,
                             std::initializer_list<std::uint32_t> lengths) {
    constexpr std::size_t kListBytes = std::size_t{4} << 20;
    for (const std::uint32_t items : lengths) {
      const std::string bytes = small_records::file(GetParam(), items, kListBytes, strange_sizes);
      const std::size_t most = memory_of_opening(bytes, 1);
      EXPECT_LE(most, share * bytes.size() / 100 + kFixedPart) << "arrays of " << items << " items";
    }
  }
};

TEST_P(MemoryOfMany, IsAtMostThreeTimesTheFileAndAFixedPart) { expect_at_most(300, false, {0, 1, 2, 3}); }

TEST_P(MemoryOfMany, OfWhichEachStatesASizeOfItsOwnIsAtMostHalfTheFileMore) {
  expect_at_most(350, true, {0, 2});
}

TEST(Memory, OfASceneThatIsClosedGoesBackToTheSystem) {
  const ScratchDirectory scratch;
  const std::string name = scratch / "scene.quil";
  const WatchedHeap watched;
  for (const SmallRecords& kind : small_records::all()) {
    write_file(name, small_records::file(kind, 2, std::size_t{1} << 20));
    Qis scene;
    EXPECT_EQ(qi::open_scene(name, scene, ignore_message), 1);
  }
  EXPECT_LT(heap.held, std::size_t{4} << 20) << "a slab for each size of blocks";
}

INSTANTIATE_TEST_SUITE_P(Kinds, MemoryOfMany, testing::ValuesIn(small_records::all()), CaseName{});
INSTANTIATE_TEST_SUITE_P(Each, MemoryOf, testing::ValuesIn(kinds::all()), CaseName{});

}  // namespace
