/// @file
/// Scene file bytes written by hand: words, lists and whole files, without the library's writer.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A row of big-endian words.
class Bytes {
 public:
  Bytes& u32(std::uint32_t word) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes_ += static_cast<char>(word >> shift);
    return *this;
  }
  Bytes& u32s(std::initializer_list<std::uint32_t> words) {
    for (const std::uint32_t word : words) u32(word);
    return *this;
  }
  Bytes& f32(float number) { return u32(std::bit_cast<std::uint32_t>(number)); }
  /// Text, filled up to whole words with zero bytes.
  Bytes& text(std::string_view characters) {
    bytes_ += characters;
    bytes_.resize((bytes_.size() + 3) / 4 * 4);
    return *this;
  }
  /// n words that are all different, and different from those of other calls with another `first`.
  Bytes& fill(std::size_t n, std::uint32_t first = 0xC0DE0000) {
    for (std::size_t i = 0; i < n; ++i) u32(first + static_cast<std::uint32_t>(i));
    return *this;
  }
  /// A word that says how much follows; where it stands is remembered in `counts`.
  Bytes& count(std::uint32_t word) {
    counts_.push_back(bytes_.size());
    return u32(word);
  }
  Bytes& add(const Bytes& other) {
    for (const std::size_t offset : other.counts_) counts_.push_back(bytes_.size() + offset);
    bytes_ += other.bytes_;
    return *this;
  }
  /// Replaces the word at a byte offset.
  Bytes& put(std::size_t offset, std::uint32_t word) {
    bytes_.replace(offset, 4, Bytes{}.u32(word).str());
    return *this;
  }

  std::uint32_t word_at(std::size_t offset) const {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i) word = word << 8 | static_cast<unsigned char>(bytes_.at(offset + i));
    return word;
  }
  std::uint32_t size() const { return static_cast<std::uint32_t>(bytes_.size()); }
  const std::string& str() const { return bytes_; }
  /// Byte offsets of the words that say how much follows.
  const std::vector<std::size_t>& counts() const { return counts_; }

 private:
  std::string bytes_;
  std::vector<std::size_t> counts_;
};

/// A list of records of one kind, with list blocks.
inline Bytes bytes_of_list(std::uint32_t tag, const std::vector<Bytes>& records, const Bytes& block1 = {},
                           const Bytes& block2 = {}) {
  Bytes body;
  for (const Bytes& record : records) body.u32(record.size());
  for (const Bytes& record : records) body.add(record);
  body.add(block1).add(block2);
  Bytes list;
  list.u32(tag).u32(0x77).u32(24 + body.size()).count(static_cast<std::uint32_t>(records.size()));
  return list.count(block1.size()).count(block2.size()).add(body);
}

/// A whole file. Lists are left out (absent) while they are empty.
struct FileBytes {
  std::uint32_t version = 0x0100;
  std::array<Bytes, 19> core;  ///< by directory entry: 4 the ObjList, 10 the TriList
  std::array<Bytes, 9> ext;    ///< by extension table entry; for version 2
  Bytes block1_tail;           ///< header block 1, behind the table in version 2
  Bytes block2;

  Bytes bytes() const {
    const bool version2 = (version & 0xFFFF) == 0x0200;
    Bytes block1;
    if (version2)
      for (const Bytes& list : ext) block1.u32(list.size());
    block1.add(block1_tail);
    Bytes lists;
    for (const std::size_t entry :
         {0u, 1u, 2u, 3u, 4u, 5u, 6u, 10u, 7u, 8u, 9u, 11u, 12u, 13u, 14u, 15u, 16u, 17u, 18u})
      lists.add(core[entry]);
    if (version2)
      for (const Bytes& list : ext) lists.add(list);

    const std::uint32_t header_size = 100 + block1.size() + block2.size();
    Bytes file;
    file.u32(version).u32(header_size + lists.size()).u32(0).u32(header_size);
    for (const Bytes& list : core) file.u32(list.size());
    file.u32(block1.size()).u32(block2.size());
    return file.add(block1).add(block2).add(lists);
  }
};
