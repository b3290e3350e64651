/// @file
/// A number that tells the contents of a record or a scene, the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "qilib/lists.h"
#include "qilib/writer.h"

namespace qi {

/// What an Emitter emits, as a number. (FNV-1a over the bytes as they stand in a file.)
class ChecksumSink {
 public:
  std::uint64_t sum() const { return sum_; }
  std::uint64_t bytes() const { return bytes_; }

  /// Words in host order.
  void words(std::span<const std::byte> bytes) {
    for (; bytes.size() >= sizeof(Word); bytes = bytes.subspan(sizeof(Word))) {
      Word word = 0;
      std::memcpy(&word, bytes.data(), sizeof word);
      for (const int shift : {24, 16, 8, 0}) add(word >> shift & 0xFF);
    }
  }
  /// Bytes in file order.
  void raw(std::span<const std::byte> bytes) {
    for (const std::byte byte : bytes) add(std::to_integer<std::uint64_t>(byte));
  }
  void zeros(std::uint64_t n) {
    for (; n != 0; --n) add(0);
  }

 private:
  void add(std::uint64_t byte) {
    sum_ = (sum_ ^ byte) * 0x100000001b3;
    ++bytes_;
  }

  std::uint64_t sum_ = 0xcbf29ce484222325, bytes_ = 0;
};

/// Of what a save in mode 2 writes of a record.
ChecksumSink checksum_of_record(const auto& record) {
  ChecksumSink sum;
  Emitter emitter(sum, kFromStructures);
  walk(emitter, record);
  return sum;
}

/// Of all that a save in mode 2 writes.
inline ChecksumSink checksum_of_scene(const Qis& scene) {
  ChecksumSink sum;
  Emitter emitter(sum, kFromStructures);
  emitter.fixed(scene.header.fixed);
  if (writes_table_alone(scene.header, kFromStructures)) {
    emitter.fixed(scene.header.ext_sizes);
  } else {
    emitter.block(scene.header.block1, scene.header.fixed.ext_block1_size);
  }
  emitter.block(scene.header.block2, scene.header.fixed.ext_block2_size);
  for_each_list(scene, [&](const ListInfo& info, const auto& list) {
    if (list_bytes(scene.header, info) != 0 && (!info.extension || has_ext_sizes(scene.header)))
      walk_list(emitter, list);
  });
  sum.raw(scene.trailing);
  return sum;
}

}  // namespace qi
