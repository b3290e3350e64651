/// @file
/// References between records: which word or index array of a record points into which list.
#pragma once

#include <span>

#include "qilib/lists.h"
#include "qilib/qis.h"

namespace qi {

/// Number of records with this record or list tag. A SceneList that is absent has no scene record to edit.
std::size_t record_count(const Qis& scene, Word tag);

/// Record `number` of the list that a member of the scene or of its extension lists holds; null when the list
/// has no such record. The scene record is number 0, where there is one.
template <class S, class Owner, class R>
auto* record_in(S& scene, List<R> Owner::*list, Word number) {
  auto& records = list_in(scene, list).records;
  return number < records.size() ? &records[number] : nullptr;
}
template <class S>
auto* record_in(S& scene, Scene Qis::*record, Word number) {
  return number < record_count(scene, kSceneTag) ? &(scene.*record) : nullptr;
}

/// Where one record keeps its references to records of one kind, ready to be changed.
struct Place {
  Words* entries = nullptr;     ///< the index array; null for a slot
  Word* count = nullptr;        ///< the word that counts it
  Word* block1_size = nullptr;  ///< for an array inside a version-2 structure: the bytes of its block
  Word* slot = nullptr;         ///< the single-valued reference; null for an array
  explicit operator bool() const { return entries || slot; }
};

/// One way in which records of a kind refer to records of a kind.
struct Reference {
  static constexpr Word kNoLimit = 0xFFFFFFFF;

  Word parent = 0, child = 0;  ///< record tags
  bool single = false;         ///< a slot, not an array
  Word unset = kUnset;         ///< what an empty slot holds
  Word limit = kNoLimit;       ///< an array of just this count takes no further entry
  /// A child that the array holds already is accepted again: no second entry, but the size grows.
  bool repeats = false;
  /// A parent that is among the child's own children is refused.
  bool refuses_two_loop = false;
  /// The place in record `number` of the parent kind; an empty one when there is no such record, when it has
  /// no version-2 structure for it, or when its count and array disagree (a file that was half read).
  Place (*place)(Qis& scene, Word number) = nullptr;
  /// What that place holds (a slot: its one word, set or not); nothing when the place doesn't exist.
  std::span<const Word> (*held)(const Qis& scene, Word number) = nullptr;
};

/// Every reference that the scene's graph shows, in the order of the graph's arcs: consecutive rows of one
/// parent kind are walked together, record by record. Those from the first version-2 row on are walked in
/// version-2 scenes only.
std::span<const Reference> references();

/// True for references to or from a kind that version-1 files don't have.
bool is_version2(const Reference& reference);

/// The row for this pair of record tags, or null.
const Reference* find_reference(Word parent, Word child);

}  // namespace qi
