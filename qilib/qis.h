/// @file
/// The in-memory scene: one QUIL file's header, its 19 core lists and its nine extension lists.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qilib/extrecords.h"
#include "qilib/records.h"
#include "qilib/words.h"
#include "storage/fileidentity.h"

namespace qi {

inline constexpr Word kVersion1 = 0x0100;
inline constexpr Word kVersion2 = 0x0200;

inline constexpr std::size_t kCoreLists = 19;
inline constexpr std::size_t kExtLists = 9;

/// The file header, its two extension blocks and, in version 2, the extension list size table.
struct Header {
  /// Bytes of each extension list, in file order; 0: the list is absent.
  using ExtSizes = std::array<Word, kExtLists>;
  struct Fixed {
    Word version, file_size, header_tag, header_size;
    std::array<Word, kCoreLists> list_num;  ///< bytes of each core list; 0: absent. See lists.h
    Word ext_block1_size, ext_block2_size;
  } fixed{};
  Words block1, block2;
  ExtSizes ext_sizes{};
};
static_assert(sizeof(Header::Fixed) == 100);

/// The six words that begin every list but the SceneList, ColorList and VectorList.
struct ListHeader {
  Word tag, word1, size, count, block1_size, block2_size;
};
static_assert(sizeof(ListHeader) == 24);

/// A list of one kind of record. `header.count`, `sizes` and `records` agree at all times.
template <class R>
struct List {
  using Record = R;
  ListHeader header{};
  Words sizes;  ///< bytes of each record in the file
  std::vector<R> records;
  Words block1, block2;
  Words tail;  ///< words of the list after its last block
};

/// A list of two kinds of record, those of the first kind first.
template <class R1, class R2>
struct TwoKindList {
  struct Header {
    Word tag, word1, size, count1, count2, block1_size, block2_size;
  } header{};
  static_assert(sizeof(Header) == 28);
  Words sizes1, sizes2;
  std::vector<R1> records1;
  std::vector<R2> records2;
  Words block1, block2;
  Words tail;  ///< words of the list after its last block
};

/// The nine extension lists of a version-2 file.
struct ExtLists {
  List<CiImg> ciimg_list;
  List<ColorPalette> color_palette_list;
  List<Envelope> envelope_list;
  List<Cluster> cluster_list;
  List<Weight> weight_list;
  List<ChainRoot> chain_root_list;
  List<Joint> joint_list;
  List<Effector> effector_list;
  List<Name> external_name_list;
};

/// Where one of the size words that nothing reads stands.
struct SizeWord {
  enum Sort : std::uint8_t { kFullWeightedPart, kWeightedPart, kMorphPart, kRecord, kTableEntry };
  static constexpr Word kNone = 0xFFFFFFFF;
  std::uint8_t list = 0;  ///< the row of the table of lists
  bool second_kind = false;
  Sort sort = kRecord;
  Word record = kNone;  ///< its number; kNone: the size of the list itself
  Word part = 0;
  friend auto operator<=>(const SizeWord&, const SizeWord&) = default;
};

/// What the file stated in such a word beyond what the contents took, as far as that was something else.
struct CarriedSize {
  SizeWord word;
  Word difference;  ///< below 0 it wraps around
};

class Recording;

/// Leads from a scene to who records its edits just now. It belongs to the one scene: a copy is recorded by
/// nobody.
struct RecordingLink {
  Recording* recording = nullptr;

  RecordingLink() = default;
  RecordingLink(const RecordingLink& /*other*/) {}
  RecordingLink& operator=(const RecordingLink& /*other*/) { return *this; }
};

}  // namespace qi

/// One scene file in memory. A value: copying it copies every record; moving it is cheap.
struct Qis {
  // Compiled once, in qis.cc: 28 lists are a lot to copy and to destroy.
  Qis();
  Qis(const Qis& other);
  Qis(Qis&& other) noexcept;
  Qis& operator=(const Qis& other);
  Qis& operator=(Qis&& other) noexcept;
  ~Qis();

  std::string filename;
  qi::Header header;
  qi::Scene scene;
  qi::List<qi::Env> env_list;
  qi::List<qi::Cam> cam_list;
  qi::List<qi::Light> light_list;
  qi::List<qi::Obj> obj_list;
  qi::List<qi::Shape> shape_list;
  qi::List<qi::Vtx> vtx_list;
  qi::List<qi::Tri> tri_list;
  qi::TwoKindList<qi::Color1, qi::Color2> color_list;
  qi::TwoKindList<qi::Vector1, qi::Vector2> vector_list;
  qi::List<qi::St> st_list;
  qi::List<qi::Part> part_list;
  qi::List<qi::Mat> mat_list;
  qi::List<qi::Tex> tex_list;
  qi::List<qi::Teximg> teximg_list;
  qi::List<qi::Anim> anim_list;
  qi::List<qi::Coll> coll_list;
  qi::List<qi::Switch> switch_list;
  qi::List<qi::Name> name_list;
  qi::ExtLists ext;
  /// What the file's own sizes differed by when it was opened, sorted. No edit changes it: what an edit adds
  /// to the contents it adds to the size words.
  std::vector<qi::CarriedSize> carried_sizes;
  /// In version 2: the bytes after the last list that was read, as they stand in the file.
  std::vector<std::byte> trailing;
  /// The file that the core lists were read from: the extension lists must come from the same one.
  std::optional<storage::FileIdentity> read_from;
  qi::RecordingLink recording_link;  ///< see change.h
};
