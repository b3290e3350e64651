/// @file
/// Putting a scene together: each call adds a record, with the values a modelling program would give it, and
/// returns the record's number.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "qilib/qis.h"
#include "samples/pictures.h"

namespace samples {

/// Corner points and the triangles between them.
struct Mesh {
  std::vector<std::array<float, 3>> points;
  std::vector<std::array<Word, 3>> triangles;
};
Mesh box(float width, float height, float depth);
/// An upright cylinder or cone.
Mesh tower(float bottom_radius, float top_radius, float height, Word sides);
Mesh plane(float width, float depth, Word cells);

struct ObjParts {
  Word shape = kUnset, mat = kUnset, anim = kUnset;
  Words children{};
};

class SceneBuilder {
 public:
  /// @param version  qi::kVersion1 or qi::kVersion2
  explicit SceneBuilder(Word version) : version_(version) {}

  /// The scene so far; records may be changed in it.
  Qis& scene() { return scene_; }
  qi::Obj& obj(Word number) { return scene_.obj_list.records.at(number); }

  Word name(const std::string& text);

  Word texture(const std::string& name, const Picture& picture);
  /// A colour-indexed texture, which version 2 alone has. @param bits  per index, 4 or 8.
  Word indexed_texture(const std::string& name, const Picture& picture, Word bits);
  Word material(const std::string& name, QisRGBA color, Words textures = {});
  /// A shape of its own triangles. @param mat  kUnset when its parts have materials.
  Word shape(const std::string& name, const Mesh& mesh, Word mat, Words parts = {});
  /// A shape without triangles, for a deformer.
  Word bare_shape(const std::string& name, Word mat, Words parts = {});
  /// The triangles `first` to `first + count - 1` of a shape, in a material of their own.
  Word part(const std::string& name, Word mat, Word first, Word count);

  /// Keys of an animation: a frame and how far the object has turned (degrees) and moved there.
  struct Key {
    float frame = 0;
    std::array<float, 3> turn{}, move{};
  };
  static constexpr Word kStatic = 0, kFullFrame = 2, kKeyFrame = 3, kBillboard = 4;
  /// @param loops  how often it plays; 0: for ever.
  Word anim(const std::string& name, Word type, const std::vector<Key>& keys, Word loops = 0);

  Word add_obj(const std::string& name, const ObjParts& parts = {});
  Word camera(const std::string& name, Word lookat, Word eye, float fovy);
  Word sun(const std::string& name, QisRGBA ambient, std::array<float, 3> direction);
  Word lamp(const std::string& name, QisRGBA ambient, std::array<float, 3> place);
  /// @param fog_color  0xRRGGBBAA  @param background  texture behind everything, or kUnset
  Word environment(const std::string& name, Word fog_color, Word fog_near, Word fog_far,
                   Word background = kUnset);

  Word chain_root(const std::string& name, Word joint, Words objs = {}, Word anim = kUnset);
  /// Either a child joint or, at the end of a chain, an effector.
  Word joint(const std::string& name, Words objs, Word child_joint, Word effector = kUnset);
  Word effector(const std::string& name, Words objs = {});

  /// Names the scene, puts its top together and completes it.
  Qis& finish(const std::string& name, Words objs, Words envs = {}, Words cams = {}, Words lights = {});

 private:
  template <class Record>
  static Word add(qi::List<Record>& list, Record record) {
    list.records.push_back(std::move(record));
    return static_cast<Word>(list.records.size() - 1);
  }
  Word add_texture(const std::string& name, Word type, Word width, Word height, Word image);
  Word add_light(const std::string& name, Word type, QisRGBA ambient, const qi::LightSub& sub);

  Word version_;
  Qis scene_;
};

}  // namespace samples
