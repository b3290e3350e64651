/// @file
/// Any bytes as a scene file: a file that opens is saved in both modes, and what is saved opens as the same.
///
/// Run as `fuzz_scene CORPUS SEEDS tests/data`: CORPUS is a directory that keeps what it finds, SEEDS one
/// that write_seeds has filled.
#include <cstdint>
#include <string>

#include "fuzz/scenefile.h"
#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"

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
