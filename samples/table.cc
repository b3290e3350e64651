/// @file
/// A first scene to play with.
#include "samples/scenebuilder.h"
#include "samples/scenes.h"

namespace samples {

Qis table() {
  SceneBuilder b(qi::kVersion1);
  const Word wood =
      b.material("wood", {0.6f, 0.4f, 0.2f, 1}, {b.texture("boards", planks({0.7f, 0.45f, 0.25f, 1}, 4))});
  const Word paint = b.material("red_paint", {0.8f, 0.1f, 0.1f, 1});
  const Word top = b.shape("table_top", box(120, 4, 80), wood);
  const Word leg = b.shape("leg", box(6, 70, 6), wood);
  const Word cube = b.shape("cube", box(20, 20, 20), paint);

  Words legs;
  for (const char* name : {"leg_front_left", "leg_front_right", "leg_back_left", "leg_back_right"}) {
    legs.push_back(b.add_obj(name, {.shape = leg}));
  }
  const Word board = b.add_obj("table", {.shape = top, .children = legs});
  const Word still = b.anim("standing", SceneBuilder::kStatic, {{}});
  const Word red_box = b.add_obj("red_box", {.shape = cube, .anim = still});
  b.obj(board).children.push_back(red_box);
  b.add_obj("spare_box", {.shape = cube});
  const Word look = b.add_obj("camera_target"), eye = b.add_obj("camera_eye");
  return b.finish("table_with_a_box", {board, look, eye}, {}, {b.camera("front", look, eye, 40)},
                  {b.sun("window", {0.3f, 0.3f, 0.35f, 1}, {0.5f, -1, 0.2f})});
}

}  // namespace samples
