/// @file
/// Scenes as large as wanted.
#include <algorithm>

#include "samples/scenebuilder.h"
#include "samples/scenes.h"

namespace samples {

Qis city(std::uint32_t objects, std::uint64_t texture_bytes) {
  constexpr Word kSide = 512, kWidth = 8;
  SceneBuilder b(qi::kVersion1);

  // Pictures of a megabyte each, told apart by their first texel.
  Picture wall = picture(kSide, kSide, [](float u, float v) { return QisRGBA{u, v, 0.5f, 1}; });
  const std::uint64_t bytes = wall.texels.size() * sizeof(Word);
  Words textures;
  for (std::uint64_t i = 0; i * bytes < texture_bytes; ++i) {
    wall.texels[0] = static_cast<Word>(i);
    textures.push_back(b.texture("wall_" + std::to_string(i), wall));
  }
  if (textures.empty()) {
    textures.push_back(b.texture("bricks", bricks({0.6f, 0.3f, 0.2f, 1}, {0.8f, 0.8f, 0.8f, 1}, 6)));
  }

  const Word moving =
      b.anim("moving", SceneBuilder::kKeyFrame, {{.frame = 0}, {.frame = 30, .move = {10, 0, 0}}});
  const Word kinds = std::max<Word>({1, objects / 10, static_cast<Word>(textures.size())});
  Words shapes;
  for (Word i = 0; i < kinds; ++i) {
    const Word mat =
        b.material("mat_" + std::to_string(i), {0.5f, 0.5f, 0.5f, 1}, {textures[i % textures.size()]});
    shapes.push_back(b.shape("house_" + std::to_string(i), box(10, 10, 10), mat));
  }

  Words top;  // a tree, eight wide; every third object shows something
  for (Word i = 0; i < std::max<Word>(objects, 3 * kinds); ++i) {
    const Word obj = b.add_obj("obj_" + std::to_string(i));
    if (i % 3 == 0) b.obj(obj).fixed.shape = shapes[i / 3 * 7 % kinds];
    if (i % 16 == 0) b.obj(obj).fixed.anim = moving;
    if (i < kWidth) {
      top.push_back(obj);
    } else {
      b.obj(i / kWidth - 1).children.push_back(obj);
    }
  }
  return b.finish("city", top);
}

}  // namespace samples
