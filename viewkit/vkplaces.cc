/// @file
/// Comparing where nodes and arcs lay with where they lie.
#include "viewkit/vkplaces.h"

#include <unordered_set>

std::size_t VkPlaces::bytes() const {
  constexpr std::size_t kMapNode = 64;  // what an entry takes beside its content, about
  std::size_t bytes = nodes.size() * sizeof(nodes[0]);
  for (const auto& [ends, all] : arcs) {
    bytes += sizeof ends + kMapNode;
    for (const Bends& bends : all) bytes += sizeof bends + bends.size() * sizeof(SgPoint);
  }
  return bytes;
}

void keepDifferences(VkPlaces& before, VkPlaces& after) {
  std::unordered_set<const VkNode*> moved;
  for (std::size_t i = 0; i < after.nodes.size(); ++i)
    if (i >= before.nodes.size() || before.nodes[i] != after.nodes[i]) moved.insert(after.nodes[i].node);
  for (VkPlaces* places : {&before, &after})
    std::erase_if(places->nodes, [&](const auto& place) { return !moved.contains(place.node); });

  // An arc that is bent in the one only is there, straight, in the other.
  for (const auto& [ends, bends] : before.arcs) after.arcs.try_emplace(ends);
  for (const auto& [ends, bends] : after.arcs) before.arcs.try_emplace(ends);
  const auto same = [&](const auto& arc) {
    const auto& [ends, bends] = arc;
    return !moved.contains(ends.first) && !moved.contains(ends.second) && after.arcs.at(ends) == bends;
  };
  std::vector<VkPlaces::Ends> unchanged;
  for (const auto& arc : before.arcs)
    if (same(arc)) unchanged.push_back(arc.first);
  for (const VkPlaces::Ends& ends : unchanged) {
    before.arcs.erase(ends);
    after.arcs.erase(ends);
  }
}
