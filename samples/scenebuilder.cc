/// @file
/// Records with everyday values.
#include "samples/scenebuilder.h"

#include <bit>
#include <cmath>
#include <utility>

#include "qilib/names.h"
#include "samples/completion.h"

namespace samples {

namespace {

constexpr Word bits(float value) { return std::bit_cast<Word>(value); }

// A texture's form (low byte) and depth: RGBA of 32 bits, colour-indexed of 4 and of 8 bits.
constexpr Word kRgba32 = 0x405, kIndexed4 = 0x002, kIndexed8 = 0x102;

// Combiner words in QUIL style: the colour comes from the vertex and the first texture, or from the primitive
// colour.
constexpr Word kVertexAndTexture = 0x00010009, kPrimitive = 0x00040004;

/// One triangle: its three corners as vertex numbers.
qi::TriSub triangle(Word number, const std::array<Word, 3>& corners) {
  qi::TriSub sub;
  sub.fixed.words[0] = 0x80110;
  sub.fixed.words[1] = number;
  for (std::size_t i = 0; i < corners.size(); ++i) sub.fixed.words[3 + i] = corners[i];
  return sub;
}

void adjoin(Mesh& mesh, Word a, Word b, Word c, Word d) {
  mesh.triangles.push_back({a, b, c});
  mesh.triangles.push_back({a, c, d});
}

/// Palette indices packed into words, the first in the most significant end.
Words packed(const std::vector<Word>& values, Word bits_each) {
  const Word per_word = 32 / bits_each;
  Words words((values.size() + per_word - 1) / per_word);
  for (std::size_t i = 0; i < values.size(); ++i) {
    words[i / per_word] |= values[i] << (32 - bits_each * (i % per_word + 1));
  }
  return words;
}

}  // namespace

Mesh box(float width, float height, float depth) {
  Mesh mesh;
  for (const float y : {0.0f, height}) {
    for (const auto& [x, z] : {std::pair{-0.5f, -0.5f}, {0.5f, -0.5f}, {0.5f, 0.5f}, {-0.5f, 0.5f}}) {
      mesh.points.push_back({x * width, y, z * depth});
    }
  }
  adjoin(mesh, 3, 2, 1, 0);
  adjoin(mesh, 4, 5, 6, 7);
  for (Word i = 0; i < 4; ++i) adjoin(mesh, i, (i + 1) % 4, 4 + (i + 1) % 4, 4 + i);
  return mesh;
}

Mesh tower(float bottom_radius, float top_radius, float height, Word sides) {
  constexpr float kTurn = 6.2831853f;
  Mesh mesh;
  for (Word i = 0; i < sides; ++i) {
    const float angle = kTurn * static_cast<float>(i) / static_cast<float>(sides);
    for (const auto& [radius, y] : {std::pair{bottom_radius, 0.0f}, {top_radius, height}}) {
      mesh.points.push_back({radius * std::cos(angle), y, radius * std::sin(angle)});
    }
  }
  for (Word i = 0; i < sides; ++i) {
    const Word next = (i + 1) % sides;
    adjoin(mesh, 2 * i, 2 * next, 2 * next + 1, 2 * i + 1);
  }
  return mesh;
}

Mesh plane(float width, float depth, Word cells) {
  Mesh mesh;
  const auto at = [cells](Word i) { return static_cast<float>(i) / static_cast<float>(cells) - 0.5f; };
  for (Word z = 0; z <= cells; ++z) {
    for (Word x = 0; x <= cells; ++x) mesh.points.push_back({width * at(x), 0, depth * at(z)});
  }
  for (Word z = 0; z < cells; ++z) {
    for (Word x = 0; x < cells; ++x) {
      const Word corner = z * (cells + 1) + x;
      adjoin(mesh, corner, corner + 1, corner + cells + 2, corner + cells + 1);
    }
  }
  return mesh;
}

Word SceneBuilder::name(const std::string& text) {
  std::string copy = text;
  const Word number = qiAddName(scene_) - 1;
  qiSetName(scene_, number, copy);
  return number;
}

Word SceneBuilder::add_texture(const std::string& name_text, Word type, Word width, Word height, Word image) {
  qi::Tex tex;
  tex.fixed.name = name(name_text);
  tex.fixed.tex_type = type;
  tex.table.untiled.width = width;
  tex.table.untiled.height = height;
  tex.table.untiled.image = image;
  return add(scene_.tex_list, std::move(tex));
}

Word SceneBuilder::texture(const std::string& name_text, const Picture& picture) {
  qi::Teximg image;
  for (const Word texel : picture.texels) {
    for (const int shift : {24, 16, 8, 0}) image.texels.push_back(static_cast<std::byte>(texel >> shift));
  }
  return add_texture(name_text, kRgba32, picture.width, picture.height,
                     add(scene_.teximg_list, std::move(image)));
}

Word SceneBuilder::indexed_texture(const std::string& name_text, const Picture& picture, Word index_bits) {
  const IndexedPicture drawn = indexed(picture, index_bits);
  qi::CiImg image;
  image.fixed.name = kUnset;
  image.fixed.width = drawn.width;
  image.fixed.height = drawn.height;
  image.fixed.index_bits = drawn.bits;
  image.pixels = packed(drawn.indices, drawn.bits);
  qi::ColorPalette palette;
  palette.fixed.name = kUnset;
  palette.colors = packed(drawn.palette, 16);
  palette.fixed.entry_count = static_cast<Word>(2 * palette.colors.size());

  const Word number = add_texture(name_text, index_bits == 8 ? kIndexed8 : kIndexed4, drawn.width,
                                  drawn.height, add(scene_.ext.ciimg_list, std::move(image)));
  qi::TexExt& ext = scene_.tex_list.records[number].ext.emplace();
  ext.head.color_palette = 1;
  ext.palettes = {add(scene_.ext.color_palette_list, std::move(palette))};
  return number;
}

Word SceneBuilder::material(const std::string& name_text, QisRGBA color, Words textures) {
  qi::Mat mat;
  mat.fixed.name = name(name_text);
  mat.fixed.shade_type = 0x11;  // local light, smooth
  mat.fixed.combiner = {textures.empty() ? kPrimitive : kVertexAndTexture, kUnset, kUnset, kUnset};
  mat.fixed.prim_color = color;
  mat.texs = std::move(textures);
  if (version_ == qi::kVersion2) {
    qi::MatExt::Head& head = mat.ext.emplace().head;
    head.ambient = {0.3f * color.red, 0.3f * color.green, 0.3f * color.blue, 1};
    head.diffuse = color;
    head.combiner_fog = mat.fixed.combiner;
    head.prim_color_fog = color;
  }
  return add(scene_.mat_list, std::move(mat));
}

Word SceneBuilder::shape(const std::string& name_text, const Mesh& mesh, Word mat, Words parts) {
  qi::Vtx vtx;
  for (const auto& [x, y, z] : mesh.points) vtx.vertices.push_back({bits(x), bits(y), bits(z)});
  qi::Tri tri;
  tri.fixed.word4 = add(scene_.vtx_list, std::move(vtx));
  tri.attributes.assign(qi::Tri::kGroups, kUnset);
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    tri.subs.push_back(triangle(static_cast<Word>(i), mesh.triangles[i]));
  }
  const Word number = bare_shape(name_text, mat, std::move(parts));
  scene_.shape_list.records[number].fixed.geometry = add(scene_.tri_list, std::move(tri));
  return number;
}

Word SceneBuilder::bare_shape(const std::string& name_text, Word mat, Words parts) {
  qi::Shape shape;
  shape.fixed.name = name(name_text);
  shape.fixed.flags = 0x15;  // smooth edges, depth, back faces left out
  shape.fixed.geometry = kUnset;
  shape.fixed.mat = mat;
  shape.parts = std::move(parts);
  if (version_ == qi::kVersion2) shape.ext.emplace();
  return add(scene_.shape_list, std::move(shape));
}

Word SceneBuilder::part(const std::string& name_text, Word mat, Word first, Word count) {
  qi::Part part;
  part.fixed.name = name(name_text);
  part.fixed.mat = mat;
  for (Word i = 0; i < count; ++i) part.indices.push_back(first + i);
  return add(scene_.part_list, std::move(part));
}

Word SceneBuilder::anim(const std::string& name_text, Word type, const std::vector<Key>& keys, Word loops) {
  qi::Anim anim;
  anim.fixed.name = name(name_text);
  anim.fixed.type = type;
  anim.fixed.frame_rate = 30;
  anim.fixed.key_count = static_cast<Word>(keys.size());
  anim.fixed.anim_loop = loops;
  for (const Key& key : keys) {
    const std::size_t end = anim.keys.size() + qi::Anim::key_words(type);
    for (const float value : {key.frame, key.move[0], key.move[1], key.move[2], key.turn[0], key.turn[1],
                              key.turn[2], 1.0f, 1.0f, 1.0f})
      anim.keys.push_back(bits(value));
    anim.keys.resize(end);
  }
  return add(scene_.anim_list, std::move(anim));
}

Word SceneBuilder::add_obj(const std::string& name_text, const ObjParts& parts) {
  qi::Obj obj;
  obj.fixed.name = name(name_text);
  obj.fixed.state = 1;
  obj.fixed.type = 1;
  obj.fixed.render = {.cycle_type = 0, .pri = 0x00d00000, .type0 = 0x100, .type1 = 0x200};
  obj.fixed.shape = parts.shape;
  obj.fixed.mat = parts.mat;
  obj.fixed.anim = parts.anim;
  obj.children = parts.children;
  if (version_ == qi::kVersion2) {
    qi::ObjExt::Head& head = obj.ext.emplace().head;
    head.fog_render = obj.fixed.render;
    head.fog_render.type0 = 0x112;
  }
  return add(scene_.obj_list, std::move(obj));
}

Word SceneBuilder::camera(const std::string& name_text, Word lookat, Word eye, float fovy) {
  qi::Cam cam;
  cam.fixed.name = name(name_text);
  cam.fixed.near = 10;
  cam.fixed.far = 10000;
  cam.fixed.right = cam.fixed.top = 1;
  cam.fixed.left = cam.fixed.bottom = -1;
  cam.fixed.fovy = fovy;
  cam.fixed.aspect = 4.0f / 3.0f;
  cam.fixed.scale = 1;
  cam.fixed.lookat = lookat;
  cam.fixed.eye = eye;
  cam.fixed.up = kUnset;
  return add(scene_.cam_list, std::move(cam));
}

Word SceneBuilder::add_light(const std::string& name_text, Word type, QisRGBA ambient,
                             const qi::LightSub& sub) {
  qi::Light light;
  light.fixed.name = name(name_text);
  light.fixed.type = type;
  light.fixed.ambient_red = ambient.red;
  light.fixed.ambient_green = ambient.green;
  light.fixed.ambient_blue = ambient.blue;
  light.subs = {sub};
  return add(scene_.light_list, std::move(light));
}

Word SceneBuilder::sun(const std::string& name_text, QisRGBA ambient, std::array<float, 3> direction) {
  const qi::LightSub sub{
      {0, bits(1.0f), bits(1.0f), bits(1.0f), bits(direction[0]), bits(direction[1]), bits(direction[2])}};
  return add_light(name_text, qi::Light::kDirectional, ambient, sub);
}

Word SceneBuilder::lamp(const std::string& name_text, QisRGBA ambient, std::array<float, 3> place) {
  const qi::LightSub sub{{0, bits(1.0f), bits(1.0f), bits(0.8f), bits(place[0]), bits(place[1]),
                          bits(place[2]), bits(0.0f), bits(500.0f)}};
  return add_light(name_text, 1, ambient, sub);
}

Word SceneBuilder::environment(const std::string& name_text, Word fog_color, Word fog_near, Word fog_far,
                               Word background) {
  qi::Env env;
  env.fixed.name = name(name_text);
  env.fixed.use_fog = 1;
  env.fixed.fog_color = fog_color;
  env.fixed.fog_near = fog_near;
  env.fixed.fog_far = fog_far;
  env.fixed.fill_color = fog_color;
  env.fixed.fill_depth = 0xfffcfffc;
  env.fixed.bg_color_image = background;
  env.fixed.bg_depth_image = kUnset;
  return add(scene_.env_list, std::move(env));
}

Word SceneBuilder::chain_root(const std::string& name_text, Word joint, Words objs, Word anim) {
  qi::ChainRoot root;
  root.fixed.name = name(name_text);
  root.fixed.anim = anim;
  root.fixed.joint = joint;
  root.objs = std::move(objs);
  return add(scene_.ext.chain_root_list, std::move(root));
}

Word SceneBuilder::joint(const std::string& name_text, Words objs, Word child_joint, Word effector) {
  qi::Joint joint;
  joint.fixed.name = name(name_text);
  joint.fixed.length = 1;
  joint.fixed.axis = {0, 0, 1};
  joint.fixed.child_joint = child_joint;
  joint.fixed.effector = effector;
  joint.fixed.anim = kUnset;
  joint.objs = std::move(objs);
  return add(scene_.ext.joint_list, std::move(joint));
}

Word SceneBuilder::effector(const std::string& name_text, Words objs) {
  qi::Effector effector;
  effector.fixed.name = name(name_text);
  effector.fixed.anim = kUnset;
  effector.objs = std::move(objs);
  return add(scene_.ext.effector_list, std::move(effector));
}

Qis& SceneBuilder::finish(const std::string& name_text, Words objs, Words envs, Words cams, Words lights) {
  qi::Scene& top = scene_.scene;
  top.fixed.name = name(name_text);
  top.fixed.video = 0x1c;  // NTSC with gamma, dither and divot
  top.objs = std::move(objs);
  top.envs = std::move(envs);
  top.cams = std::move(cams);
  top.lights = std::move(lights);
  complete(scene_, version_);
  return scene_;
}

}  // namespace samples
