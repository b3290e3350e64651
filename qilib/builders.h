/// @file
/// New elements of version-2 scenes: skeletons, weights, and the deformers that pull shapes along.
///
/// Each builder appends an element with fixed first values and keeps all sizes current, so that the scene can
/// be saved at once. A list that the file didn't have comes into being with its first record. The answer is
/// the new count of such elements in the scene (of a part or triangle: in its owner), which is the element's
/// number plus 1; or 0, with nothing changed, when
///  - the scene is not of version 2 or has no extension list size table;
///  - the shape or owner does not exist;
///  - the element is larger than qi::kMaxNewBytes, or the file would outgrow its 32-bit size.
#pragma once

#include <array>
#include <cstdint>

#include "qilib/qis.h"

/// The axis that a new joint lies along.
inline constexpr std::array<float, 3> qisZ{0.0f, 0.0f, 1.0f};

namespace qi {

/// The most that one new element, its parts included, may take in the file: 16 MiB, 4 million weights. A
/// mistyped number in a script must not use up the memory.
inline constexpr std::uint64_t kMaxNewBytes = std::uint64_t{16} << 20;

}  // namespace qi

/// Appends a chain root. Its joint slot starts at joint 0, whether or not there is one.
Word qiAddChainRoot(Qis& scene);

/// Appends a joint. Its child-joint and effector slots start at 0, so that joint 0 is its own child at first.
Word qiAddJoint(Qis& scene);

Word qiAddEffector(Qis& scene);

/// Appends a group of `weights` weights of 100.0; a negative count makes none.
Word qiAddWeightGroup(Qis& scene, std::int64_t weights);

/// Appends an envelope with that many parts of each kind and triangles (negative counts make none) and makes
/// it the deformer of the shape.
Word qiAddEnvelope(Qis& scene, std::int64_t full_weighted, std::int64_t weighted, std::int64_t morph,
                   std::int64_t triangles, Word shape);

/// Append a part to an envelope. A full-weighted part follows the obj of its own number and a morph part the
/// objs 0 and 1, whether or not there are such; a weighted part follows none.
Word qiAddFullWeightedPart(Qis& scene, Word envelope);
Word qiAddWeightedPart(Qis& scene, Word envelope);
Word qiAddMorphPart(Qis& scene, Word envelope);

/// Appends a triangle to an envelope, all its corners in full-weighted part 0.
Word qiAddEnvelopeTri(Qis& scene, Word envelope);

/// Appends a cluster shape with that many clusters and triangles (negative counts make none) and makes it the
/// deformer of the shape.
Word qiAddClusterShape(Qis& scene, std::int64_t clusters, std::int64_t triangles, Word shape);

/// Appends a cluster to a cluster shape; it follows the obj of its own number.
Word qiAddCluster(Qis& scene, Word cluster_shape);

/// Appends a triangle to a cluster shape, all its corners in cluster 0.
Word qiAddClusterTri(Qis& scene, Word cluster_shape);
