/// @file
/// Taking records out of a scene and putting copies in: for the kinds of which every reference is known.
///
/// These are materials, textures, texture images, colour-index images, palettes and animations. Objects,
/// shapes, geometry and names are never renumbered: words that are only carried may count on their numbers.
#pragma once

#include <compare>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "qilib/qis.h"

namespace qi {

/// A record by the tag of its kind and its number.
struct RecordId {
  Word tag = 0;
  Word number = 0;
  friend auto operator<=>(const RecordId&, const RecordId&) = default;
};

/// What it is called: "mat_3", "teximg_0".
std::string to_string(const RecordId& record);
/// The record of any list that is called so, whether or not it is there; nothing for other words.
std::optional<RecordId> find_record(std::string_view name);

/// Whether records of a kind may be renumbered.
bool is_renumberable(Word tag);

/// A record that refers to this one, of a renumberable kind; nothing when there is none.
std::optional<RecordId> referrer_of(const Qis& scene, const RecordId& record);

/// The records of renumberable kinds that no other record leads to but such ones, in the order of the lists.
std::vector<RecordId> unused_records(const Qis& scene);

/// Two records of which one serves as well.
struct EqualRecords {
  RecordId record, kept;
};

/// Has every reference to a record of a renumberable kind that is equal to an earlier one lead to that one:
/// nothing refers to it then. Records are equal when all their words are, but for their own numbers; names
/// are compared by their texts, and references as they are now. Two textures of one material stay two.
/// @param any_name  whether records are equal that have different names
/// @returns them, in the order of the lists.
std::vector<EqualRecords> join_equal_records(Qis& scene, bool any_name);

/// Takes out records of renumberable kinds that nothing refers to, or only others of them. Those after them
/// move up, and all references with them. Sizes stay what they are of the contents.
///
/// A Recording takes this back, but for what `carried_sizes` holds of records that moved.
void remove_records(Qis& scene, std::span<const RecordId> records);

/// Appends a record like that one, without a name, which only one record should have.
/// @returns its number; nothing when there is no such record, or not of a renumberable kind.
std::optional<Word> copy_record(Qis& scene, const RecordId& record);

}  // namespace qi
