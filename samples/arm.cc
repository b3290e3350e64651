/// @file
/// An arm without bones: an edit script builds them.
#include "samples/scenebuilder.h"
#include "samples/scenes.h"

namespace samples {

Qis arm() {
  SceneBuilder b(qi::kVersion2);
  const Word skin = b.material("skin", {0.85f, 0.65f, 0.5f, 1});
  const Word wool = b.material("wool", {0.2f, 0.3f, 0.6f, 1});
  const Word bone = b.shape("s_bone", tower(4, 3, 30, 8), skin), palm = b.shape("s_palm", box(8, 9, 3), skin);
  const Word sleeve = b.shape("s_sleeve", tower(7, 5, 62, 8), wool),
             glove = b.shape("s_glove", box(10, 11, 5), wool);

  Words limbs{b.add_obj("upper_arm", {.shape = bone}), b.add_obj("forearm", {.shape = bone}),
              b.add_obj("hand", {.shape = palm})};
  limbs.push_back(b.add_obj("sleeve", {.shape = sleeve}));
  limbs.push_back(b.add_obj("glove", {.shape = glove}));
  const Word shoulder = b.add_obj("shoulder", {.children = limbs});
  const Word look = b.add_obj("camera_target"), eye = b.add_obj("camera_eye");
  return b.finish("stiff_arm", {shoulder, look, eye}, {}, {b.camera("front", look, eye, 40)},
                  {b.sun("window", {0.3f, 0.3f, 0.35f, 1}, {0.5f, -1, 0.2f})});
}

}  // namespace samples
