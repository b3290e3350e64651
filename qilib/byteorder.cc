/// @file
/// Byte order conversion of whole blocks.
#include "qilib/byteorder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "qilib/words.h"

void endianSwap4(void* buffer, std::size_t byte_count) {
  if constexpr (std::endian::native == std::endian::little) {
    auto* bytes = static_cast<std::byte*>(buffer);
    const std::size_t words = byte_count / sizeof(Word);
    for (std::size_t i = 0; i < words; ++i) {  // plain enough for the compiler to vectorise
      Word word;
      std::memcpy(&word, bytes + i * sizeof word, sizeof word);
      word = __builtin_bswap32(word);
      std::memcpy(bytes + i * sizeof word, &word, sizeof word);
    }
  }
}

std::size_t freadEndianSwap4(void* buffer, std::size_t byte_count, std::FILE* file) {
  const std::size_t read = std::fread(buffer, 1, byte_count, file);
  endianSwap4(buffer, read);
  return read;
}

std::size_t fwriteEndianSwap4(const void* buffer, std::size_t element_size, std::size_t count,
                              std::FILE* file) {
  std::array<std::byte, 16384> scratch;
  const auto* bytes = static_cast<const std::byte*>(buffer);
  const std::size_t total = element_size * count;
  for (std::size_t done = 0; done < total;) {
    const std::size_t n = std::min(scratch.size(), total - done);
    std::memcpy(scratch.data(), bytes + done, n);
    endianSwap4(scratch.data(), n);
    const std::size_t written = std::fwrite(scratch.data(), 1, n, file);
    done += written;
    if (written != n) return done / element_size;
  }
  return count;
}
