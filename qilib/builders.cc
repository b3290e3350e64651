/// @file
/// First values of new version-2 elements, and appending them.
#include "qilib/builders.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

#include "qilib/appendrecord.h"
#include "qilib/edit.h"
#include "qilib/sizes.h"

namespace {

using namespace qi;

constexpr Word kMorphEntries = 9;
constexpr float kFullWeight = 100.0f;

/// Bytes that a new record or part takes in the file: its fixed words, and what follows them from the start.
template <class R>
constexpr Word kNewBytes = sizeof(std::remove_reference_t<decltype(fixed_words(std::declval<R&>()))>);
template <>
constexpr Word kNewBytes<MorphPart> = sizeof(MorphPart::Fixed) + kMorphEntries * sizeof(QisPoly);

static_assert(kNewBytes<Envelope> == 44 && kNewBytes<FullWeightedPart> == 64 &&
              kNewBytes<WeightedPart> == 36 && kNewBytes<MorphPart> == 244 && kNewBytes<EnvelopeTri> == 116);
static_assert(kNewBytes<Cluster> == 36 && kNewBytes<ClusterEntry> == 56 && kNewBytes<ClusterTri> == 100);
static_assert(kNewBytes<Weight> == 28 && kNewBytes<ChainRoot> == 44 && kNewBytes<Joint> == 64 &&
              kNewBytes<Effector> == 40);

constexpr QisPoly poly_of(Word value) { return {{value, value, value, value, value}}; }
constexpr QisNodeIndex obj_node(Word obj) { return {list_of(kObjTag), obj}; }

/// Bytes of so many elements. Of too many it is more than kMaxNewBytes, too, and does not wrap around.
constexpr std::uint64_t bytes_of(std::int64_t count, Word bytes_each) {
  constexpr auto kMany = static_cast<std::int64_t>(kMaxNewBytes) + 1;
  return static_cast<std::uint64_t>(std::clamp<std::int64_t>(count, 0, kMany)) * bytes_each;
}

/// What a list may grow by beside its new record: its header, if it was absent, and a size table entry.
constexpr std::uint64_t kListBytes = sizeof(ListHeader) + sizeof(Word);

/// Whether the scene can grow by so many bytes of version-2 elements.
bool takes(const Qis& scene, std::uint64_t bytes) {
  return has_ext_sizes(scene.header) && bytes <= kMaxNewBytes &&
         bytes <= std::numeric_limits<Word>::max() - scene.header.fixed.file_size;
}

/// Appends a record to its list, all zero but for its head; `init(record)` does the rest.
/// @param more  bytes that it takes in the file after its fixed words.
template <class R, class Init>
Word add_record(Qis& scene, List<R>& list, Word more, Init&& init) {
  if (!takes(scene, kListBytes + kNewBytes<R> + more) || !bring_list(scene, list)) return 0;
  const Word growth = qiAddElementToList(list, [&](R& record) {
    record.fixed.tag = R::kTag;
    record.fixed.size = kNewBytes<R> + more;
    init(record);
    return record.fixed.size;
  });
  qiAdjustListSizeData(scene, list.header.count - 1, static_cast<std::int32_t>(growth), list_of(R::kTag));
  return list.header.count;
}

/// Where an owner keeps its parts of one kind.
template <class Owner, class Part>
struct Parts {
  List<Owner> ExtLists::*owners;
  Word Owner::Fixed::*count;
  CompactArray<Part> Owner::*parts;
};
template <class Owner, class Part>
Parts(List<Owner> ExtLists::*, Word Owner::Fixed::*, CompactArray<Part> Owner::*) -> Parts<Owner, Part>;

constexpr Parts kFullWeightedParts{&ExtLists::envelope_list, &Envelope::Fixed::full_weighted_count,
                                   &Envelope::full_weighted};
constexpr Parts kWeightedParts{&ExtLists::envelope_list, &Envelope::Fixed::weighted_count,
                               &Envelope::weighted};
constexpr Parts kMorphParts{&ExtLists::envelope_list, &Envelope::Fixed::morph_count, &Envelope::morphs};
constexpr Parts kEnvelopeTris{&ExtLists::envelope_list, &Envelope::Fixed::tri_count, &Envelope::tris};
constexpr Parts kClusters{&ExtLists::cluster_list, &Cluster::Fixed::cluster_count, &Cluster::clusters};
constexpr Parts kClusterTris{&ExtLists::cluster_list, &Cluster::Fixed::tri_count, &Cluster::tris};

void fill(FullWeightedPart& part) {
  const Word number = part.fixed.index;
  part.fixed.node = obj_node(number);
  part.fixed.poly = poly_of(number);
  part.fixed.part_index = number;
}

void fill(WeightedPart& part) { part.fixed.part_index = part.fixed.index; }

void fill(MorphPart& part) {
  part.fixed.node_a = obj_node(0);
  part.fixed.node_b = obj_node(1);
  part.fixed.part_index = part.fixed.index;
  part.fixed.entry_count = kMorphEntries;
  part.entries.reserve(kMorphEntries);
  for (Word i = 0; i < kMorphEntries; ++i) part.entries.push_back(poly_of(i));
}

void fill(EnvelopeTri& tri) {
  tri.node = {FullWeightedPart::kNewTag, 0};
  tri.word7 = kUnset;
  for (Word i = 0; i < tri.corners.size(); ++i)
    tri.corners[i] = {.node = {FullWeightedPart::kNewTag, 0}, .words = {i, i, i, i}, .word6 = kUnset};
}

void fill(ClusterEntry& cluster) {
  cluster.node = obj_node(cluster.index);
  cluster.poly = poly_of(cluster.index);
  cluster.cluster_index = cluster.index;
}

void fill(ClusterTri& tri) {
  tri.node = {ClusterEntry::kNewTag, 0};
  for (Word i = 0; i < tri.corners.size(); ++i)
    tri.corners[i] = {.node = {ClusterEntry::kNewTag, 0}, .words = {i, i, i, i}};
}

/// Appends a part or triangle to record `owner_number` of its owner's list.
template <class Owner, class Part>
Word add_part(Qis& scene, const Parts<Owner, Part>& where, Word owner_number) {
  Owner* const owner = record_in(scene, where.owners, owner_number);
  if (!owner || !takes(scene, kNewBytes<Part>)) return 0;
  Word& count = owner->fixed.*where.count;
  const Word growth = qiAddElementToList(count, nullptr, owner->*where.parts, [](Part& part) {
    auto& fixed = fixed_words(part);
    fixed.tag = Part::kNewTag;
    fixed.size = kNewBytes<Part>;
    fill(part);
    return kNewBytes<Part>;
  });
  qiAdjustListSizeData(scene, owner_number, static_cast<std::int32_t>(growth), Owner::kTag);
  return count;
}

template <class Owner, class Part>
void add_parts(Qis& scene, const Parts<Owner, Part>& where, Word owner_number, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) add_part(scene, where, owner_number);
}

/// Whether the shape exists and has the structure that says what deforms it.
bool takes_deformer(const Qis& scene, Word shape) {
  const Shape* const record = record_in(scene, &Qis::shape_list, shape);
  return record && record->ext;
}

}  // namespace

Word qiAddChainRoot(Qis& scene) {
  return add_record(scene, scene.ext.chain_root_list, 0, [](ChainRoot& root) { root.fixed.anim = kUnset; });
}

Word qiAddJoint(Qis& scene) {
  return add_record(scene, scene.ext.joint_list, 0, [](Joint& joint) {
    joint.fixed.length = 1.0f;
    joint.fixed.axis = qisZ;
    joint.fixed.anim = kUnset;
  });
}

Word qiAddEffector(Qis& scene) {
  return add_record(scene, scene.ext.effector_list, 0,
                    [](Effector& effector) { effector.fixed.anim = kUnset; });
}

Word qiAddWeightGroup(Qis& scene, std::int64_t weights) {
  const std::uint64_t bytes = bytes_of(weights, sizeof(float));
  if (bytes > kMaxNewBytes) return 0;
  return add_record(scene, scene.ext.weight_list, static_cast<Word>(bytes), [bytes](Weight& group) {
    group.weights.assign(bytes / sizeof(float), kFullWeight);
    group.fixed.weight_count = static_cast<Word>(group.weights.size());
  });
}

Word qiAddEnvelope(Qis& scene, std::int64_t full_weighted, std::int64_t weighted, std::int64_t morph,
                   std::int64_t triangles, Word shape) {
  const std::uint64_t bytes =
      kListBytes + kNewBytes<Envelope> + bytes_of(full_weighted, kNewBytes<FullWeightedPart>) +
      bytes_of(weighted, kNewBytes<WeightedPart>) + bytes_of(morph, kNewBytes<MorphPart>) +
      bytes_of(triangles, kNewBytes<EnvelopeTri>);
  if (!takes_deformer(scene, shape) || !takes(scene, bytes)) return 0;
  const Word count = add_record(scene, scene.ext.envelope_list, 0, [](Envelope&) {});
  if (count == 0) return 0;
  add_parts(scene, kFullWeightedParts, count - 1, full_weighted);
  add_parts(scene, kWeightedParts, count - 1, weighted);
  add_parts(scene, kMorphParts, count - 1, morph);
  add_parts(scene, kEnvelopeTris, count - 1, triangles);
  qiAddShape_Envelope(scene, shape, count - 1);
  return count;
}

Word qiAddFullWeightedPart(Qis& scene, Word envelope) {
  return add_part(scene, kFullWeightedParts, envelope);
}
Word qiAddWeightedPart(Qis& scene, Word envelope) { return add_part(scene, kWeightedParts, envelope); }
Word qiAddMorphPart(Qis& scene, Word envelope) { return add_part(scene, kMorphParts, envelope); }
Word qiAddEnvelopeTri(Qis& scene, Word envelope) { return add_part(scene, kEnvelopeTris, envelope); }

Word qiAddClusterShape(Qis& scene, std::int64_t clusters, std::int64_t triangles, Word shape) {
  const std::uint64_t bytes = kListBytes + kNewBytes<Cluster> + bytes_of(clusters, kNewBytes<ClusterEntry>) +
                              bytes_of(triangles, kNewBytes<ClusterTri>);
  if (!takes_deformer(scene, shape) || !takes(scene, bytes)) return 0;
  const Word count = add_record(scene, scene.ext.cluster_list, 0, [](Cluster&) {});
  if (count == 0) return 0;
  add_parts(scene, kClusters, count - 1, clusters);
  add_parts(scene, kClusterTris, count - 1, triangles);
  qiAddShape_ClusterShape(scene, shape, count - 1);
  return count;
}

Word qiAddCluster(Qis& scene, Word cluster_shape) { return add_part(scene, kClusters, cluster_shape); }
Word qiAddClusterTri(Qis& scene, Word cluster_shape) { return add_part(scene, kClusterTris, cluster_shape); }
