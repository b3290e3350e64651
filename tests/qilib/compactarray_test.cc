/// @file
/// The array of the records: like std::vector in all that it does, and small.
#include "qilib/compactarray.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "qilib/smallblocks.h"

namespace {

using qi::CompactArray;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

struct Triple {
  std::uint32_t a = 0, b = 0, c = 0;
  friend bool operator==(const Triple&, const Triple&) = default;
};

template <class T>
T item(std::uint32_t number) {
  if constexpr (std::is_same_v<T, Triple>) {
    return {number, number + 1, number + 2};
  } else if constexpr (std::is_same_v<T, std::string>) {
    return std::string(number % 40, 'x') + std::to_string(number);
  } else {
    return static_cast<T>(number);
  }
}

template <class T>
class LikeAVector : public testing::Test {};
using Items = testing::Types<std::uint32_t, float, std::byte, Triple, std::string>;
TYPED_TEST_SUITE(LikeAVector, Items);

TYPED_TEST(LikeAVector, WhateverIsDoneToIt) {
  std::mt19937 random(7);
  const auto below = [&random](std::size_t n) { return random() % n; };
  CompactArray<TypeParam> array;
  std::vector<TypeParam> vector;
  for (std::uint32_t step = 0; step < 20'000; ++step) {
    const TypeParam value = item<TypeParam>(step);
    const std::size_t place = below(vector.size() + 1), length = below(4);
    const auto at = static_cast<std::ptrdiff_t>(place);
    const auto count = static_cast<std::ptrdiff_t>(std::min(length, vector.size() - place));
    const std::vector<TypeParam> range(length, value);
    switch (below(vector.size() > 30 ? 14 : 11)) {
      case 0:
        array.push_back(value);
        vector.push_back(value);
        break;
      case 1:
        EXPECT_EQ(array.insert(array.begin() + at, value) - array.begin(), at);
        vector.insert(vector.begin() + at, value);
        break;
      case 2:
        EXPECT_EQ(array.insert(array.begin() + at, range.begin(), range.end()) - array.begin(), at);
        vector.insert(vector.begin() + at, range.begin(), range.end());
        break;
      case 3:
        EXPECT_EQ(array.erase(array.begin() + at, array.begin() + at + count), array.begin() + at);
        vector.erase(vector.begin() + at, vector.begin() + at + count);
        break;
      case 4:
        array.resize(length);
        vector.resize(length);
        break;
      case 5:
        array.resize(place + length, value);
        vector.resize(place + length, value);
        break;
      case 6: {
        CompactArray<TypeParam> copy = array;
        EXPECT_TRUE(copy == array);
        copy.push_back(value);
        EXPECT_FALSE(copy == array);
        array = std::move(copy);
        EXPECT_THAT(copy, IsEmpty());  // NOLINT: what was moved from can be used again
        vector.push_back(value);
        break;
      }
      case 7: {
        const CompactArray<TypeParam> other(range.begin(), range.end());
        array = other;
        vector = range;
        break;
      }
      case 8:
        array.reserve(place + 20);
        break;
      case 9:
        if (vector.empty()) break;
        array.erase(array.begin());
        vector.erase(vector.begin());
        break;
      case 10:
        if (vector.empty()) break;
        EXPECT_TRUE(array.front() == vector.front() && array.back() == vector.back());
        array.emplace_back(array.front());  // its own item, while it grows
        vector.emplace_back(TypeParam(vector.front()));
        break;
      case 11:
        array.assign(length, value);
        vector.assign(length, value);
        break;
      case 12:
        array.clear();
        vector.clear();
        break;
      default:
        array.pop_back();
        vector.pop_back();
    }
    ASSERT_THAT(array, ElementsAreArray(vector)) << step;
    ASSERT_GE(array.capacity(), array.size());
    ASSERT_EQ(array.empty(), vector.empty());
  }
}

TEST(CompactArray, TakesTheRoomOfAPointerAndOneWordNoMore) {
  EXPECT_EQ(sizeof(CompactArray<std::uint32_t>), sizeof(void*));
  EXPECT_EQ(sizeof(CompactArray<std::string>), sizeof(void*));
  const CompactArray<std::uint32_t> one{0x80000001};
  EXPECT_THAT(one, ElementsAre(0x80000001));
  const auto* const begin = reinterpret_cast<const std::byte*>(&one);
  const auto* const word = reinterpret_cast<const std::byte*>(one.data());
  EXPECT_TRUE(word >= begin && word < begin + sizeof one);
}

TEST(CompactArray, TakesNoMoreThanItIsGivenAtOnceAndTwiceAsMuchWhenItGrows) {
  CompactArray<std::uint32_t> array(1000);
  EXPECT_EQ(array.capacity(), 1000u);
  array.push_back(1);
  EXPECT_EQ(array.capacity(), 2000u);
}

TEST(CompactArray, KeepsTheMemoryOfWhatGoes) {
  CompactArray<std::uint32_t> array{1, 2, 3};
  const std::uint32_t* const items = array.data();
  array.clear();
  EXPECT_THAT(array, IsEmpty());
  array.resize(3);
  EXPECT_EQ(array.data(), items);
  EXPECT_THAT(array, ElementsAre(0, 0, 0));
}

TEST(CompactArray, IsAskedForAnItemThatItHasNot) {
  const CompactArray<std::uint32_t> one{5};
  EXPECT_EQ(one.at(0), 5u);
  EXPECT_THROW(one.at(1), std::out_of_range);
}

TEST(CompactArray, HoldsNoMoreThanItsLengthCanSay) {
  CompactArray<std::byte> array;
  EXPECT_THROW(array.reserve(std::size_t{1} << 32), std::bad_alloc);
  EXPECT_THAT(array, IsEmpty());
}

/// Copies fail once there were so many; the living are counted.
class Fragile {
 public:
  explicit Fragile(int number) : number_(number) { ++living; }
  Fragile(const Fragile& other) : number_(other.number_) {
    if (copies_left-- == 0) throw std::runtime_error("no copy");
    ++living;
  }
  Fragile(Fragile&& other) noexcept : number_(other.number_) { ++living; }
  Fragile& operator=(const Fragile&) = default;
  Fragile& operator=(Fragile&&) = default;
  ~Fragile() { --living; }
  operator int() const { return number_; }

  static inline int living = 0;
  static inline int copies_left = 0;

 private:
  int number_;
};

class FragileArray : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 3; ++i) array_.emplace_back(i);
  }
  ~FragileArray() override {
    array_ = {};
    more_.clear();
    EXPECT_EQ(Fragile::living, 0);
  }
  /// Copies fail at each point until none does.
  void fail_everywhere(const std::function<void(CompactArray<Fragile>&)>& edit, bool stays) {
    for (int copies = 0;; ++copies) {
      Fragile::copies_left = 1000;
      CompactArray<Fragile> edited = array_;
      Fragile::copies_left = copies;
      try {
        edit(edited);
        EXPECT_GT(copies, 0);
        return;
      } catch (const std::runtime_error&) {
        EXPECT_TRUE(!stays || testing::Matches(ElementsAre(0, 1, 2))(edited));
        EXPECT_EQ(Fragile::living, static_cast<int>(array_.size() + more_.size() + edited.size()));
      }
    }
  }

  CompactArray<Fragile> array_;
  std::vector<Fragile> more_ = [] {
    std::vector<Fragile> more;
    more.reserve(2);
    more.emplace_back(7);
    more.emplace_back(8);
    return more;
  }();
};

TEST_F(FragileArray, IsAsItWasWhenNothingCouldBePutIn) {
  fail_everywhere([&](auto& array) { array.push_back(more_[0]); }, true);
  fail_everywhere([&](auto& array) { array.insert(array.begin() + 1, more_.begin(), more_.end()); }, true);
  fail_everywhere([&](auto& array) { CompactArray<Fragile> copy = array; }, true);
  fail_everywhere([&](auto& array) { array.resize(6, more_[0]); }, true);
}

TEST_F(FragileArray, LosesNothingWhenItCouldNotBeReplaced) {
  fail_everywhere([&](auto& array) { array.assign(more_.begin(), more_.end()); }, false);
  const CompactArray<Fragile> other(std::move(array_));
  for (int i = 0; i < 2; ++i) array_.emplace_back(i);
  Fragile::copies_left = 1;
  EXPECT_THROW(array_ = other, std::runtime_error);
}

TEST(SmallBlocks, AreTheirOwnersAlone) {
  struct Held {
    std::size_t bytes;
    std::uint8_t filling;
  };
  std::mt19937 random(11);
  std::map<void*, Held> held;
  const auto give = [&](std::map<void*, Held>::iterator at) {
    const auto [block, size] = *at;
    const auto* const bytes = static_cast<const std::uint8_t*>(block);
    EXPECT_TRUE(std::all_of(bytes, bytes + size.bytes, [&](auto byte) { return byte == size.filling; }));
    qi::give_block(block, size.bytes);
    return held.erase(at);
  };
  for (int round = 0; round < 4; ++round) {
    for (int i = 0; i < 20'000; ++i) {
      const Held size{1 + random() % 300, static_cast<std::uint8_t>(random())};
      void* const block = qi::take_block(size.bytes);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % (size.bytes % 8 == 0 ? 8 : 4), 0u);
      std::fill_n(static_cast<std::uint8_t*>(block), size.bytes, size.filling);
      EXPECT_TRUE(held.emplace(block, size).second);
    }
    for (auto at = held.begin(); at != held.end();) at = random() % 3 == 0 ? std::next(at) : give(at);
  }
  for (auto at = held.begin(); at != held.end();) at = give(at);
}

}  // namespace
