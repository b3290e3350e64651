/// @file
/// The smallest edits of a scene.
#include "qilib/edit.h"

#include <algorithm>

#include "qilib/sizes.h"

namespace {

bool exists(const Qis& scene, Word tag, Word number) { return number < qi::record_count(scene, tag); }

int take_out(Word value, Words& array, Word& count, const qi::MessageSink& sink) {
  const auto entry = std::find(array.begin(), array.end(), value);
  if (entry == array.end()) {
    sink({.code = qi::MessageCode::no_link, .found = value});
    return 0;
  }
  array.erase(entry);
  --count;
  return 1;
}

int set_deformer(Qis& scene, Word shape_number, Word tag, Word deformer) {
  qi::Shape* const shape = qi::record_in(scene, &Qis::shape_list, shape_number);
  if (!shape || !shape->ext || !exists(scene, tag, deformer)) return 0;
  Word& held_tag = shape->ext->head.deformer_tag;
  if (held_tag == tag && shape->fixed.geometry == deformer) return 0;
  held_tag = tag;
  shape->fixed.geometry = deformer;
  return 1;
}

/// Part `number` of one of an envelope's part arrays, or null.
template <class Part>
Part* envelope_part(Qis& scene, Word envelope, qi::CompactArray<Part> qi::Envelope::*parts, Word number) {
  qi::Envelope* const record = qi::record_in(scene, &qi::ExtLists::envelope_list, envelope);
  return record && number < (record->*parts).size() ? &(record->*parts)[number] : nullptr;
}

int tie_full_weighted_part(Qis& scene, Word envelope, Word number, Word tag, Word node) {
  auto* part = envelope_part(scene, envelope, &qi::Envelope::full_weighted, number);
  if (!part || !exists(scene, tag, node)) return 0;
  return qiTestSetIndex(part->fixed.node, qi::list_of(tag), node);
}

}  // namespace

namespace qi {

void resize_place(Qis& scene, const Reference& kinds, const Place& place, Word parent, std::int32_t delta) {
  if (place.block1_size) *place.block1_size += static_cast<Word>(delta);
  qiAdjustListSizeData(scene, parent, delta, kinds.parent);
}

Refusal why_not_added(const Qis& scene, const Reference& kinds, Word parent, Word child) {
  const auto holds = [&](Word from, Word to) {
    const auto held = kinds.held(scene, from);
    return std::find(held.begin(), held.end(), to) != held.end();
  };
  if (!exists(scene, kinds.child, child) || !exists(scene, kinds.parent, parent)) return Refusal::no_record;
  if (!kinds.has_place(scene, parent)) return Refusal::no_place;
  if (!kinds.single && kinds.held(scene, parent).size() == kinds.limit) return Refusal::full;
  if (kinds.refuses_two_loop && holds(child, parent)) return Refusal::two_loop;
  if (!kinds.repeats && holds(parent, child)) return Refusal::held;
  return Refusal::none;
}

int add_reference(Qis& scene, const Reference& kinds, Word parent, Word child) {
  if (why_not_added(scene, kinds, parent, child) != Refusal::none) return 0;
  const Place place = kinds.place(scene, parent);
  if (place.slot) return qiTestSet(*place.slot, child);
  qiAddLink(child, *place.entries, *place.count);
  resize_place(scene, kinds, place, parent, sizeof(Word));
  return 1;
}

int delete_reference(Qis& scene, const Reference& kinds, Word parent, Word child, const MessageSink& sink) {
  const Place place = kinds.place(scene, parent);
  if (!place) return 0;
  if (place.slot) {
    *place.slot = kinds.unset;
    return 1;
  }
  if (!take_out(child, *place.entries, *place.count, sink)) return 0;
  resize_place(scene, kinds, place, parent, -static_cast<std::int32_t>(sizeof(Word)));
  return 1;
}

}  // namespace qi

std::unique_ptr<Qis> qiNewQis() { return std::make_unique<Qis>(); }

int qiAddLink(Word value, Words& array, Word& count) {
  if (std::find(array.begin(), array.end(), value) != array.end()) return 0;
  array.push_back(value);
  ++count;
  return 1;
}

int qiDeleteLink(Word value, Words& array, Word& count) {
  return take_out(value, array, count, qi::print_message);
}

void qiSetIndex(QisNodeIndex& node_index, Word tag, Word index) { node_index = {tag, index}; }

bool qiTestIndex(const QisNodeIndex& node_index, Word tag, Word /*index*/) {
  return node_index.tag == tag && node_index.index != 0;
}

int qiTestSetIndex(QisNodeIndex& node_index, Word tag, Word index) {
  if (qiTestIndex(node_index, tag, index)) return 0;
  qiSetIndex(node_index, tag, index);
  return 1;
}

int qiTestSet(Word& word, Word value) {
  if (word == value) return 0;
  word = value;
  return 1;
}

int qiAddShape_Envelope(Qis& scene, Word shape, Word envelope) {
  return set_deformer(scene, shape, qi::kEnvelopeTag, envelope);
}
int qiAddShape_ClusterShape(Qis& scene, Word shape, Word cluster) {
  return set_deformer(scene, shape, qi::kClusterTag, cluster);
}

int qiAddFullWeightedPart_Obj(Qis& scene, Word envelope, Word part, Word obj) {
  return tie_full_weighted_part(scene, envelope, part, qi::kObjTag, obj);
}
int qiAddFullWeightedPart_Joint(Qis& scene, Word envelope, Word part, Word joint) {
  return tie_full_weighted_part(scene, envelope, part, qi::kJointTag, joint);
}

int qiAddWeightedPart_Obj(Qis& scene, Word envelope, Word number, Word obj, float weight) {
  auto* part = envelope_part(scene, envelope, &qi::Envelope::weighted, number);
  if (!part || !exists(scene, qi::kObjTag, obj)) return 0;
  const std::size_t nodes = part->nodes.size();
  if (nodes != part->fixed.node_count || nodes > part->weights.size() || nodes > part->polys.size()) return 0;
  for (std::size_t i = 0; i < nodes; ++i)
    if (qiTestIndex(part->nodes[i], qi::list_of(qi::kObjTag), obj) && part->weights[i] == weight) return 0;

  part->nodes.push_back({qi::list_of(qi::kObjTag), obj});
  part->weights.insert(part->weights.begin() + static_cast<std::ptrdiff_t>(nodes), weight);
  part->polys.insert(part->polys.begin() + static_cast<std::ptrdiff_t>(nodes), QisPoly{});
  ++part->fixed.node_count;
  constexpr Word kEntryBytes = sizeof(QisNodeIndex) + sizeof weight + sizeof(QisPoly);
  static_assert(kEntryBytes == 32);
  part->fixed.size += kEntryBytes;
  qiAdjustListSizeData(scene, envelope, kEntryBytes, qi::kEnvelopeTag);
  return 1;
}

int qiAddMorphPart_Node(Qis& scene, Word envelope, Word number, Word tag_a, Word index_a, Word tag_b,
                        Word index_b) {
  auto* part = envelope_part(scene, envelope, &qi::Envelope::morphs, number);
  if (!part || !exists(scene, tag_a, index_a) || !exists(scene, tag_b, index_b)) return 0;
  qiSetIndex(part->fixed.node_a, tag_a, index_a);
  qiSetIndex(part->fixed.node_b, tag_b, index_b);
  return 1;
}
