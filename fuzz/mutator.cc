/// @file
/// How scene files are spoilt.
#include <cstdint>
#include <cstring>
#include <random>

#include "qilib/byteorder.h"
#include "qilib/words.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

/// Mostly spoils single words, so that the sizes in the header stay true; else makes those that have to add
/// up follow the new length, or no spoilt file would pass the header's checks.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
  constexpr std::size_t kHeader = 100;
  std::minstd_rand random(seed);
  if (size < kHeader) return LLVMFuzzerMutate(data, size, max_size);
  const auto word_at = [&](std::size_t offset) {
    Word word;
    std::memcpy(&word, data + offset, sizeof word);
    endianSwap4(&word, sizeof word);
    return word;
  };
  const auto put = [&](std::size_t offset, Word word) {
    endianSwap4(&word, sizeof word);
    std::memcpy(data + offset, &word, sizeof word);
  };
  const auto any_word = [&] { return random() % (size / 4) * 4; };
  switch (random() % 8) {
    case 0: {
      size = LLVMFuzzerMutate(data, size, max_size);
      if (size < kHeader) return size;
      Word sum = word_at(12);
      for (std::size_t entry = 1; entry < 19; ++entry) sum += word_at(16 + 4 * entry);
      put(4, static_cast<Word>(size));
      put(16, static_cast<Word>(size) - sum);
      break;
    }
    case 1:
      put(any_word(), word_at(any_word()));
      break;
    case 2:
    case 3: {
      const std::size_t offset = any_word();
      put(offset, word_at(offset) + random() % 17 - 8);
      break;
    }
    case 4:
      put(any_word(), Word{1} << (random() % 32));
      break;
    default:
      LLVMFuzzerMutate(data + any_word(), 4, 4);
  }
  return size;
}
