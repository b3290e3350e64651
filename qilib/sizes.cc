/// @file
/// Size bookkeeping: which size words contain which record, and the sizes that follow from counts.
#include "qilib/sizes.h"

#include <limits>
#include <numeric>

namespace {

/// What a tag names: a record (its list's tag with 0x100), a list, or something that keeps no sizes.
enum class Named { record, list, other };

Named named(Word tag) {
  switch (tag & 0xFFFF) {
    case 0:
      return Named::list;
    case 0x100:
      return Named::record;
    default:
      return Named::other;
  }
}

/// One size change on its way through the words that contain it. Unsigned: a shrinkage wraps around.
struct Change {
  Word record_number;
  Word delta;
  Word tag;

  /// @returns whether the record exists; nothing is changed when it doesn't.
  template <class R>
  bool apply(qi::List<R>& list) const {
    if (named(tag) == Named::record) {
      if (record_number >= list.records.size() || record_number >= list.sizes.size()) return false;
      list.sizes[record_number] += delta;
      list.records[record_number].fixed.size += delta;
    }
    list.header.size += delta;
    return true;
  }

  template <class R>
  bool apply(Qis& scene, qi::List<R>& list, qi::CoreList entry) const {
    if (!apply(list)) return false;
    scene.header.fixed.list_num[static_cast<std::size_t>(entry)] += delta;
    return true;
  }

  template <class R>
  bool apply(Qis& scene, qi::List<R>& list, qi::ExtList entry) const {
    if (!apply(list)) return false;
    // The table stands apart from the header block that begins with it: a mode-1 save writes the block.
    if (qi::has_ext_sizes(scene.header)) {
      const auto i = static_cast<std::size_t>(entry);
      scene.header.ext_sizes[i] += delta;
      scene.header.block1[i] = scene.header.ext_sizes[i];
    }
    return true;
  }

  bool apply(Qis& scene) const {
    if (tag == qi::kSceneTag) {
      scene.scene.fixed.size += delta;
      scene.header.fixed.list_num[static_cast<std::size_t>(qi::CoreList::scene)] += delta;
      return true;
    }
    if (named(tag) == Named::other) return true;
    switch (qi::list_of(tag)) {
      case qi::list_of(qi::kObjTag):
        return apply(scene, scene.obj_list, qi::CoreList::obj);
      case qi::list_of(qi::kMatTag):
        return apply(scene, scene.mat_list, qi::CoreList::mat);
      case qi::list_of(qi::kNameTag):
        return apply(scene, scene.name_list, qi::CoreList::name);
      case qi::list_of(qi::kEnvelopeTag):
        return apply(scene, scene.ext.envelope_list, qi::ExtList::envelope);
      case qi::list_of(qi::kClusterTag):
        return apply(scene, scene.ext.cluster_list, qi::ExtList::cluster);
      case qi::list_of(qi::kWeightTag):
        return apply(scene, scene.ext.weight_list, qi::ExtList::weight);
      case qi::list_of(qi::kChainRootTag):
        return apply(scene, scene.ext.chain_root_list, qi::ExtList::chain_root);
      case qi::list_of(qi::kJointTag):
        return apply(scene, scene.ext.joint_list, qi::ExtList::joint);
      case qi::list_of(qi::kEffectorTag):
        return apply(scene, scene.ext.effector_list, qi::ExtList::effector);
      default:
        return true;
    }
  }
};

}  // namespace

void qiAdjustListSizeData(Qis& scene, Word record_number, std::int32_t delta, Word tag) {
  const Change change{record_number, static_cast<Word>(delta), tag};
  if (change.apply(scene)) scene.header.fixed.file_size += change.delta;
}

Word qiQUILver(const qi::Header& header) { return header.fixed.version & 0xFFFF; }

std::uint64_t qiSizeofQUIL1file(const qi::Header& header) {
  const auto& lists = header.fixed.list_num;
  return std::accumulate(lists.begin(), lists.end(), std::uint64_t{header.fixed.header_size});
}

std::uint64_t qiSizeofTeximg(const qi::List<qi::Teximg>& list, Word record_number) {
  if (record_number >= list.records.size()) return 0;
  const std::int64_t bytes = qi::Teximg::texel_bytes(list.records[record_number].fixed);
  return bytes < 0 ? 0 : static_cast<std::uint64_t>(bytes);
}

Word qiCiTileNum(const qi::Tex& tex) { return tex.fixed.tiled == 0 ? 1 : tex.table.tiled.tile_count; }

std::uint64_t qiSizeofPixelIndexArray(const qi::CiImg& image) { return qi::pixel_index_words(image.fixed); }

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
