/// @file
/// Any bytes as a scene file: a file that opens is saved in both modes, and what is saved opens as the same.
///
/// Run as `fuzz_scene CORPUS SEEDS tests/data`: CORPUS is a directory that keeps what it finds, SEEDS one
/// that write_seeds has filled.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

#include "qilib/byteorder.h"
#include "qilib/checksizes.h"
#include "qilib/container.h"
#include "qilib/writer.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

/// A file in memory that has a name.
class MemoryFile {
 public:
  MemoryFile() : fd_(memfd_create("scene", MFD_CLOEXEC)), name_("/proc/self/fd/" + std::to_string(fd_)) {
    if (fd_ < 0) std::abort();
  }
  ~MemoryFile() { close(fd_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void fill(std::string_view bytes) {
    if (ftruncate(fd_, 0) != 0 ||
        pwrite(fd_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
      std::abort();
  }
  const std::string& name() const { return name_; }

 private:
  int fd_;
  std::string name_;
};

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

std::string written(const Qis& scene, int mode) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* stream = open_memstream(&bytes, &size);
  require(qiWriteScene(stream, scene, mode) == 1, "what was opened can be saved");
  std::fclose(stream);
  const std::string result(bytes, size);
  std::free(bytes);
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static MemoryFile file;
  const std::string bytes(data, data + size);
  file.fill(bytes);
  Qis scene;
  if (!qiOpenQb(file.name(), scene)) return 0;
  for (const int mode : {qi::kBlocksAsRead, qi::kFromStructures}) {
    Qis saved = scene;
    const bool good_sizes = qiCheckSizes(saved, mode) == 0;
    const std::string first = written(saved, mode);
    if (good_sizes) require(first == bytes, "a file whose sizes are right comes back byte for byte");
    file.fill(first);
    Qis again;
    require(qiOpenQb(file.name(), again) == 1, "what was saved opens");
    require(qiCheckSizes(again, mode) == 0, "its sizes are right");
    require(written(again, mode) == first, "it comes back byte for byte");
  }
  return 0;
}

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
