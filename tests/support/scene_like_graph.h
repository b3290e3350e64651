/// @file
/// Graphs that look like scenes, of any size: for tests and measurements of what has to cope with large ones.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A small random generator whose numbers are the same everywhere and always.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
  }
  /// A number from 0 to `count` - 1. @param count  at least 1.
  std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(next() % count); }
  bool chance(std::uint32_t percent) { return below(100) < percent; }

 private:
  std::uint64_t state_;
};

struct SceneLikeGraph {
  std::vector<std::string> names;                             ///< "scene_0", "obj_0" ...
  std::vector<std::pair<std::uint32_t, std::uint32_t>> arcs;  ///< parent, child
};

/// A tree of objects (half of the nodes), many with a shape, and materials, textures and animations that they
/// share, half of the time with their neighbours: about 1.3 arcs per node. @param node_count  at least 20.
inline SceneLikeGraph scene_like_graph(std::uint32_t node_count, std::uint64_t seed) {
  SceneLikeGraph graph;
  Random random(seed);
  const auto add = [&](const char* prefix, std::uint32_t count) {
    const auto first = static_cast<std::uint32_t>(graph.names.size());
    for (std::uint32_t i = 0; i < count; ++i) graph.names.push_back(prefix + std::to_string(i));
    return first;
  };
  const std::uint32_t shapes = node_count / 5, materials = node_count / 8, textures = node_count / 10,
                      animations = node_count / 12;
  const std::uint32_t objects = node_count - 1 - shapes - materials - textures - animations;
  const std::uint32_t scene = add("scene_", 1), object = add("obj_", objects), shape = add("shape_", shapes),
                      material = add("mat_", materials), texture = add("tex_", textures),
                      animation = add("anim_", animations);
  const auto link = [&](std::uint32_t parent, std::uint32_t child) {
    graph.arcs.emplace_back(parent, child);
  };
  // One of `count`: near the place that corresponds to i of n, or anywhere.
  const auto shared = [&](std::uint32_t i, std::uint32_t n, std::uint32_t count) {
    if (random.chance(50)) return random.below(count);
    const auto place = static_cast<std::uint32_t>(std::uint64_t{i} * count / n);
    return (place + random.below(4)) % count;
  };

  for (std::uint32_t i = 0; i < objects; ++i) {
    const bool top = i < 4 || random.chance(2);
    link(top ? scene : object + i / 6 + random.below(i / 3 + 1), object + i);
    if (random.chance(20)) link(object + i, material + shared(i, objects, materials));
    if (random.chance(20)) link(object + i, animation + shared(i, objects, animations));
  }
  for (std::uint32_t i = 0; i < shapes; ++i) {
    link(object + static_cast<std::uint32_t>(std::uint64_t{i} * objects / shapes), shape + i);
    link(shape + i, material + shared(i, shapes, materials));
  }
  for (std::uint32_t i = 0; i < materials; ++i) {
    link(material + i, texture + shared(i, materials, textures));
    if (random.chance(30)) link(material + i, texture + shared(i, materials, textures));
  }
  return graph;
}
