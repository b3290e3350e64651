/// @file
/// The smallest edits of a scene: one reference in or out of one record.
///
/// Every edit returns 1 when it was made and 0 when it was refused; a refusal changes nothing and is silent
/// but where said. Records are given by their number in their list, from 0. A parent number or a child to add
/// that is outside its list is refused, as is a version-2 structure that the record doesn't have. A child to
/// take out may be outside its list. Sizes (record, list, header, file) are kept current.
#pragma once

#include <memory>

#include "qilib/messages.h"
#include "qilib/qis.h"
#include "qilib/references.h"

/// A new scene with every field zero: no record, no list, version 0.
std::unique_ptr<Qis> qiNewQis();

/// Appends `value` to an index array unless it is there already (0).
/// @param count  the array's length; one more afterwards.
int qiAddLink(Word value, Words& array, Word& count);

/// Takes the first entry equal to `value` out of an index array; the later ones move down.
/// If there is none (0), prints "Error: no link to index %d.\n" on standard output.
int qiDeleteLink(Word value, Words& array, Word& count);

void qiSetIndex(QisNodeIndex& node_index, Word tag, Word index);

/// Whether `node_index` is set to some record of the list `tag`. The index asked for is not compared, and a
/// stored index of 0 counts as not set: who builds deformers relies on both.
bool qiTestIndex(const QisNodeIndex& node_index, Word tag, Word index);

/// Stores the pair unless qiTestIndex says that it is set already (0).
int qiTestSetIndex(QisNodeIndex& node_index, Word tag, Word index);

/// Stores `value` unless the word holds just this value (0). Whatever else it held is replaced.
int qiTestSet(Word& word, Word value);

// A shape's deformer; refused when the shape has this very one already.
int qiAddShape_Envelope(Qis& scene, Word shape, Word envelope);
int qiAddShape_ClusterShape(Qis& scene, Word shape, Word cluster);

/// Ties full-weighted part `part` of an envelope to an obj (or joint), unless qiTestIndex says it is tied.
int qiAddFullWeightedPart_Obj(Qis& scene, Word envelope, Word part, Word obj);
int qiAddFullWeightedPart_Joint(Qis& scene, Word envelope, Word part, Word joint);

/// Adds an obj with its weight and a zeroed polygon entry to weighted part `part` of an envelope: after
/// those of the other nodes, before those of the external references. +32 bytes.
/// Refused when an entry that is set to an obj (whichever) has the same weight.
int qiAddWeightedPart_Obj(Qis& scene, Word envelope, Word part, Word obj, float weight);

/// Sets the two nodes of morph part `part` of an envelope. Tags are those of lists, such as 0x20000.
int qiAddMorphPart_Node(Qis& scene, Word envelope, Word part, Word tag_a, Word index_a, Word tag_b,
                        Word index_b);

namespace qi {

/// Why an edit of a reference is refused.
enum class Refusal {
  none,
  no_record,     ///< one of the two is no record of its list
  no_place,      ///< the parent's record has no room for such references
  held,          ///< the parent refers to the child already
  taken,         ///< the parent refers to another one already
  full,          ///< the parent refers to as many as it may
  two_loop,      ///< the child refers to the parent
  no_rule,       ///< there are no links between such kinds
  other_kind,    ///< a child can't be exchanged for one of another kind
  not_one_end,   ///< both ends would move, or none
  not_referred,  ///< the parent doesn't refer to the child that would move
};

/// Why add_reference would refuse. Changes nothing.
Refusal why_not_added(const Qis& scene, const Reference& kinds, Word parent, Word child);

/// Adds a reference: `child` into an array or a slot, by its row of the table of references.
int add_reference(Qis& scene, const Reference& kinds, Word parent, Word child);

/// Takes a reference away: `child` out of an array, or a slot unset. A child that isn't in the array is
/// refused with a message.
int delete_reference(Qis& scene, const Reference& kinds, Word parent, Word child, const MessageSink& sink);

/// Grows (or shrinks) by `delta` bytes the record that `place` belongs to, with all that contains it.
void resize_place(Qis& scene, const Reference& kinds, const Place& place, Word parent, std::int32_t delta);

}  // namespace qi
