/// @file
/// A dog with bones inside and skin over them.
#include "qilib/edit.h"
#include "samples/scenebuilder.h"
#include "samples/scenes.h"

namespace samples {

namespace {

constexpr QisRGBA kFur{0.65f, 0.45f, 0.25f, 1}, kDark{0.25f, 0.15f, 0.1f, 1}, kCollar{0.8f, 0.1f, 0.15f, 1};

struct Limb {
  Word root;  ///< its chain
  Words bones;
};

/// A leg of two bones: a chain of two joints with an effector at the paw.
Limb leg(SceneBuilder& b, const std::string& name, Word bone_shape, Word paw_shape, Word walk) {
  const Word upper = b.add_obj(name + "_upper", {.shape = bone_shape});
  const Word lower = b.add_obj(name + "_lower", {.shape = bone_shape});
  const Word paw = b.add_obj(name + "_paw", {.shape = paw_shape});
  const Word knee = b.joint(name + "_knee", {lower}, kUnset, b.effector(name + "_ground", {paw}));
  const Word hip = b.joint(name + "_hip", {upper}, knee);
  return {b.chain_root(name + "_chain", hip, {}, walk), {upper, lower}};
}

Limb tail(SceneBuilder& b, Word bone_shape, Word wag) {
  Words bones;
  Word joint = kUnset, effector = b.effector("tail_tip");
  for (const char* name :
       {"tail_end", "tail_middle", "tail_start"}) {  // from the tip up: each names the next
    bones.push_back(b.add_obj(name, {.shape = bone_shape}));
    joint = b.joint(std::string(name) + "_joint", {bones.back()}, joint, effector);
    effector = kUnset;
  }
  return {b.chain_root("tail_chain", joint, {}, wag), bones};
}

/// Skin that follows each bone: wholly at its middle, by half where two meet.
Word skin(SceneBuilder& b, const std::vector<Limb>& limbs) {
  qi::Envelope envelope;
  envelope.fixed.name = b.name("skin");
  const auto head = [&](Word tag, std::size_t number) {
    return std::array<Word, 4>{tag, static_cast<Word>(number), 0, kUnset};
  };
  for (const Limb& limb : limbs) {
    for (const Word bone : limb.bones) {
      qi::FullWeightedPart part;
      const auto [tag, index, size, name] =
          head(qi::FullWeightedPart::kNewTag, envelope.full_weighted.size());
      part.fixed.tag = tag;
      part.fixed.index = index;
      part.fixed.name = name;
      part.fixed.node = {qi::list_of(qi::kObjTag), bone};
      envelope.full_weighted.push_back(part);
    }
    qi::WeightedPart joint;
    const auto [tag, index, size, name] = head(qi::WeightedPart::kNewTag, envelope.weighted.size());
    joint.fixed.tag = tag;
    joint.fixed.index = index;
    joint.fixed.name = name;
    for (const Word bone : limb.bones) {
      joint.nodes.push_back({qi::list_of(qi::kObjTag), bone});
      joint.weights.push_back(100.0f / static_cast<float>(limb.bones.size()));
      joint.polys.push_back({});
    }
    envelope.weighted.push_back(joint);
  }
  auto& envelopes = b.scene().ext.envelope_list.records;
  envelopes.push_back(envelope);
  return static_cast<Word>(envelopes.size() - 1);
}

}  // namespace

Qis dog() {
  SceneBuilder b(qi::kVersion2);
  const Word coat = b.indexed_texture("t_coat", planks(kFur, 9), 8);
  const Word collar_bands = b.indexed_texture("t_collar", stripes(kCollar, kDark, 6), 4);
  const Word sky_picture = b.texture("t_sky", sky({0.8f, 0.9f, 1, 1}, {0.3f, 0.5f, 0.9f, 1}));
  const Word fur = b.material("fur", kFur, {coat}), nose = b.material("nose", kDark);
  const Word collar_mat = b.material("collar", kCollar, {collar_bands});

  const Word walk =
      b.anim("walk", SceneBuilder::kKeyFrame,
             {{.frame = 0}, {.frame = 10, .turn = {25, 0, 0}}, {.frame = 20, .turn = {-25, 0, 0}}});
  const Word wag = b.anim("wag", SceneBuilder::kKeyFrame,
                          {{.frame = 0, .turn = {0, 20, 0}}, {.frame = 8, .turn = {0, -20, 0}}}, 4);
  b.scene().anim_list.records[walk].ext.emplace().head.flags = 0x2;  // turns around x
  const Word bone = b.shape("s_bone", tower(2, 1.5f, 12, 6), fur), paw = b.shape("s_paw", box(4, 2, 6), fur);

  std::vector<Limb> limbs;
  Words roots;
  for (const char* name : {"left_fore", "right_fore", "left_hind", "right_hind"}) {
    limbs.push_back(leg(b, name, bone, paw, walk));
  }
  limbs.push_back(tail(b, bone, wag));
  for (const Limb& limb : limbs) roots.push_back(limb.root);

  const Word head =
      b.add_obj("head", {.shape = b.shape("s_head", box(10, 9, 14), fur),
                         .children = {b.add_obj("nose", {.shape = b.shape("s_nose", box(3, 2, 2), nose)})}});
  const Word collar = b.add_obj("collar", {.shape = b.shape("s_collar", tower(6, 6, 2, 10), collar_mat)});
  const Word skin_shape = b.bare_shape("s_skin", fur);
  const Word body = b.add_obj("body", {.shape = skin_shape, .children = {head, collar}});
  b.obj(body).ext->chain_roots = roots;
  qiAddShape_Envelope(b.scene(), skin_shape, skin(b, limbs));

  const Word marker = b.add_obj("path_marker", {.mat = nose});
  const Word guide =
      b.chain_root("leash", b.joint("leash_joint", {marker}, kUnset, b.effector("hand")), {marker});
  b.scene().scene.ext.emplace().chain_roots = {guide};
  b.scene().ext.weight_list.records.emplace_back().weights.assign(8, 100.0f);
  b.scene().ext.weight_list.records[0].fixed.name = kUnset;
  const Word look = b.add_obj("camera_target"), eye = b.add_obj("camera_eye");
  return b.finish("walking_dog", {body, look, eye},
                  {b.environment("park", 0xccddffff, 500, 1000, sky_picture)},
                  {b.camera("beside", look, eye, 40)}, {b.sun("noon", {0.4f, 0.4f, 0.4f, 1}, {0, -1, 0})});
}

}  // namespace samples
