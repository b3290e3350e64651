/// @file
/// Size bookkeeping: which size words contain which record, and the sizes that follow from counts.
#include "qilib/sizes.h"

#include <limits>
#include <numeric>

#include "qilib/change.h"
#include "qilib/lists.h"

namespace {

/// Adds to the size that the scene record states.
bool resize(qi::Scene& scene, Word /*record_number*/, Word bytes, bool /*of_record*/) {
  scene.fixed.size += bytes;
  return true;
}

/// Adds to the size that a list states and, for a change of a record, to those of the record.
/// @returns whether the record exists; nothing is changed when it doesn't.
template <class R>
bool resize(qi::List<R>& list, Word record_number, Word bytes, bool of_record) {
  if (of_record) {
    if (record_number >= list.records.size() || record_number >= list.sizes.size()) return false;
    list.sizes[record_number] += bytes;
    if constexpr (requires(R record) { record.fixed.size; }) list.records[record_number].fixed.size += bytes;
  }
  list.header.size += bytes;
  return true;
}

/// Adds to the list's size in the directory, or in the extension table where there is one.
void resize_entry(qi::Header& header, const qi::ListInfo& info, Word bytes) {
  if (info.extension && !qi::has_ext_sizes(header)) return;
  Word& listed = qi::list_bytes(header, info);
  listed += bytes;
  // The header block that begins with the table is held as well, and written by a mode-1 save.
  if (info.extension) header.block1[info.entry] = listed;
}

}  // namespace

void qiAdjustListSizeData(Qis& scene, Word record_number, std::int32_t delta, Word tag) {
  const Word bytes = static_cast<Word>(delta);  // a shrinkage wraps around
  qi::about_to_change(scene, tag, record_number);
  bool exists = true;
  qi::for_each_list(scene, [&]<class L>(const qi::ListInfo& info, L& list) {
    if (info.resized == qi::Resized::no || (tag != info.tag && tag != info.record_tag)) return;
    // Lists of two kinds are none that edits change.
    if constexpr (requires { resize(list, record_number, bytes, true); }) {
      exists = resize(list, record_number, bytes, tag != info.tag);
      if (exists) resize_entry(scene.header, info, bytes);
    }
  });
  if (exists) scene.header.fixed.file_size += bytes;
}

Word qiQUILver(const qi::Header& header) { return header.fixed.version & 0xFFFF; }

std::uint64_t qiSizeofQUIL1file(const qi::Header& header) {
  const auto& lists = header.fixed.list_num;
  return std::accumulate(lists.begin(), lists.end(), std::uint64_t{header.fixed.header_size});
}

Word qiCiTileNum(const qi::Tex& tex) { return tex.fixed.tiled == 0 ? 1 : tex.table.tiled.tile_count; }

namespace qi {

std::uint64_t pixel_index_words(const CiImg::Fixed& fixed) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  const std::uint64_t pixels = std::uint64_t{fixed.width} * fixed.height;
  if (fixed.index_bits != 0 && pixels > (kMax - 31) / fixed.index_bits) return kMax;
  return (pixels * fixed.index_bits + 31) / 32;
}

bool has_ext_sizes(const Header& header) {
  return qiQUILver(header) == kVersion2 && header.block1.size() >= kExtLists;
}

}  // namespace qi
