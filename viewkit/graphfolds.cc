/// @file
/// From the open picture of a graph to the one with folded nodes, and back.
#include "viewkit/graphfolds.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "graphlayout/compact.h"
#include "graphlayout/folding.h"
#include "viewkit/vknode.h"

namespace {

SgPoint cornerOf(const VkNode* node) {
  const SgRectangle bounds = SgGraphNodeBounds(node->baseWidget());
  return {bounds.x, bounds.y};
}

/// The bends of an arc whose ends have come that far: each goes with the end that it is near to.
std::vector<SgPoint> shifted(std::vector<SgPoint> bends, SgPoint from, SgPoint to) {
  for (std::size_t i = 0; i < bends.size(); ++i) {
    const double part = static_cast<double>(i + 1) / static_cast<double>(bends.size() + 1);
    bends[i].x += from.x == to.x ? to.x : from.x + part * (to.x - from.x);
    bends[i].y += from.y == to.y ? to.y : from.y + part * (to.y - from.y);
  }
  return bends;
}

}  // namespace

bool GraphFolds::isFolded(const VkNode* node) const {
  return std::ranges::find(folded_, node) != folded_.end();
}

VkNode* GraphFolds::face(VkNode* node) const {
  const auto home = homes_.find(node);
  return home == homes_.end() || !home->second.into ? node : home->second.into;
}

void GraphFolds::forget(const VkNode* node) {
  unfold(node);
  only_.erase(node);
  if (guest_ == node) guest_ = nullptr;
  if (homes_.erase(node) == 0) return;
  for (auto& [other, home] : homes_)
    if (home.into == node) home.into = nullptr;
}

void GraphFolds::clear() {
  folded_.clear();
  showOnly({});
  homes_.clear();
  bends_.clear();
  closed_ = false;
}

SgPoint GraphFolds::shiftNear(SgPoint place, SgPoint (*at)(const Home&)) const {
  SgPoint shift;
  double least = HUGE_VAL;
  for (const auto& [node, home] : homes_) {
    const double away = picture::distance(at(home), place);
    if (!home.isSeen() || away >= least) continue;
    least = away;
    shift = home.shift;
  }
  return shift;
}

void GraphFolds::open(Widget graph, std::span<VkNode* const> nodes) {
  if (!closed_) return;
  // What is not seen and has no other home lies where it is.
  std::vector<const VkNode*> others;
  for (const VkNode* const node : nodes)
    if (SgGraphNodeIsSeen(node->baseWidget()) && !homes_.contains(node)) others.push_back(node);
  SgGraphFold(graph, {});
  for (const auto& [node, home] : homes_) SgGraphSetNodePosition(node->baseWidget(), home.open);
  for (const VkNode* const node : others) {
    const SgPoint seen = cornerOf(node);
    const SgPoint shift = shiftNear(seen, [](const Home& home) { return home.seen(); });
    SgGraphSetNodePosition(node->baseWidget(), {seen.x - shift.x, seen.y - shift.y});
  }
  for (const auto& [arc, bends] : bends_) SgGraphSetArcBends(graph, arc, bends.open);
  for (const auto& [arc, style] : std::exchange(styles_, {})) SgGraphSetArcStyle(graph, arc, style);
  closed_ = false;
}

std::vector<std::uint32_t> GraphFolds::faces(const GraphPicture& picture, bool afresh) const {
  if (folded_.empty()) return std::vector<std::uint32_t>(picture.nodes.size(), graphlayout::kShown);
  std::unordered_map<const VkNode*, std::uint32_t> numbers;
  for (std::uint32_t i = 0; i < picture.nodes.size(); ++i) numbers.emplace(picture.nodes[i], i);
  std::vector<std::uint32_t> folded;
  for (const VkNode* node : folded_)
    if (const auto number = numbers.find(node); number != numbers.end()) folded.push_back(number->second);
  std::vector<std::uint32_t> faces = graphlayout::fold(picture.nodes.size(), picture.arcs, folded);
  if (!afresh)
    for (std::uint32_t i = 0; i < faces.size(); ++i)
      if (face(picture.nodes[i]) == picture.nodes[i]) faces[i] = graphlayout::kShown;
  return faces;
}

void GraphFolds::close(Widget graph, const GraphPicture& picture, bool compact, bool afresh) {
  const std::vector<std::uint32_t> into = faces(picture, afresh);
  bool same = !afresh;
  std::vector<SgFoldedNode> hidden;
  for (std::uint32_t i = 0; i < into.size(); ++i) {
    VkNode* const node = picture.nodes[i];
    VkNode* const seen = into[i] == graphlayout::kShown ? node : picture.nodes[into[i]];
    same = same && face(node) == seen;
    if (hides(seen))
      hidden.push_back({node->baseWidget(), nullptr});
    else if (seen != node)
      hidden.push_back({node->baseWidget(), seen->baseWidget()});
  }
  SgGraphFold(graph, hidden);
  if (same)
    keepPlaces(picture);
  else if (!only_.empty())
    findPlacesOfSome(picture, into);
  else
    findPlaces(picture, into, compact);
  show(graph);
  closed_ = true;
}

void GraphFolds::keepPlaces(const GraphPicture& picture) {
  const auto before = homes_;
  for (std::uint32_t i = 0; i < picture.nodes.size(); ++i) {
    VkNode* const node = picture.nodes[i];
    const SgPoint open{picture.positions[i].x, picture.positions[i].y};
    const auto known = before.find(node);
    if (known == before.end() && hides(node)) continue;
    if (known == before.end())
      homes_[node] = {node, open, shiftNear(open, [](const Home& home) { return home.open; })};
    else
      homes_[node].open = open;
  }
  for (auto& [node, home] : homes_) {
    if (!home.into) continue;
    const SgPoint seen = homes_.at(home.into).seen();
    home.shift = {seen.x - home.open.x, seen.y - home.open.y};
  }
  std::unordered_map<SgArc, Bends> bends;
  for (std::size_t i = 0; i < picture.arcs.size(); ++i) {
    if (!touchesHome(picture, i)) continue;
    const auto known = bends_.find(picture.arcIds[i]);
    if (picture.bends[i].empty() && (known == bends_.end() || !known->second.open.empty())) continue;
    const auto shiftOf = [&](std::uint32_t node) {
      const auto home = homes_.find(picture.nodes[node]);
      return home == homes_.end() ? SgPoint{} : home->second.shift;
    };
    bends[picture.arcIds[i]] = {
        picture.bends[i],
        known != bends_.end() && known->second.open == picture.bends[i]
            ? known->second.seen
            : shifted(picture.bends[i], shiftOf(picture.arcs[i].from), shiftOf(picture.arcs[i].to))};
  }
  bends_ = std::move(bends);
}

void GraphFolds::findPlaces(const GraphPicture& picture, const std::vector<std::uint32_t>& faces,
                            bool compact) {
  std::vector<bool> hidden;
  std::vector<graphlayout::Size> sizes;
  for (std::size_t i = 0; i < picture.nodes.size(); ++i) {
    hidden.push_back(faces[i] != graphlayout::kShown);
    const SgRectangle bounds = SgGraphNodeBounds(picture.nodes[i]->baseWidget());
    sizes.push_back({bounds.width, bounds.height});
  }
  const graphlayout::Closing closing{hidden, sizes};
  std::vector<SgPoint> shifts(picture.nodes.size());
  bends_.clear();
  if (compact) {
    const auto [open, closed] = graphlayout::compact_folding(picture.sizes, picture.arcs, closing);
    for (std::size_t i = 0; i < shifts.size(); ++i)
      shifts[i] = {closed.nodes[i].x - open.nodes[i].x, closed.nodes[i].y - open.nodes[i].y};
    for (std::size_t i = 0; i < picture.arcs.size(); ++i) {
      if (picture.bends[i].empty()) continue;
      const auto& [from, to] = picture.arcs[i];
      const bool asLaidOut = picture.bends[i] == pointsOf(open.bends.of(i)) && !closed.bends.of(i).empty();
      bends_[picture.arcIds[i]] = {
          picture.bends[i],
          asLaidOut ? pointsOf(closed.bends.of(i)) : shifted(picture.bends[i], shifts[from], shifts[to])};
    }
  } else {
    graphlayout::Bends bends;
    bends.starts.push_back(0);
    for (const auto& points : picture.bends) {
      for (const SgPoint& p : points) bends.points.push_back({p.x, p.y});
      bends.starts.push_back(bends.points.size());
    }
    const graphlayout::Closed closed = close_up(picture.sizes, picture.positions, bends, closing);
    for (std::size_t i = 0; i < shifts.size(); ++i)
      shifts[i] = {closed.nodes[i].x - picture.positions[i].x, closed.nodes[i].y - picture.positions[i].y};
    for (std::size_t i = 0; i < picture.arcs.size(); ++i)
      if (!picture.bends[i].empty())
        bends_[picture.arcIds[i]] = {picture.bends[i], pointsOf(closed.bends.of(i))};
  }
  homes_.clear();
  for (std::size_t i = 0; i < shifts.size(); ++i) {
    const SgPoint open{picture.positions[i].x, picture.positions[i].y};
    Home home{picture.nodes[i], open, shifts[i]};
    if (hidden[i]) {
      const auto face = faces[i];
      home.into = picture.nodes[face];
      home.shift = {picture.positions[face].x + shifts[face].x - open.x,
                    picture.positions[face].y + shifts[face].y - open.y};
    }
    homes_.emplace(picture.nodes[i], home);
  }
}

bool GraphFolds::touchesHome(const GraphPicture& picture, std::size_t arc) const {
  const auto& [from, to] = picture.arcs[arc];
  return homes_.contains(picture.nodes[from]) || homes_.contains(picture.nodes[to]);
}

void GraphFolds::findPlacesOfSome(const GraphPicture& picture, const std::vector<std::uint32_t>& faces) {
  std::vector<std::uint32_t> numbers(picture.nodes.size(), GraphPicture::kHidden);
  std::vector<graphlayout::Size> sizes;
  for (std::size_t i = 0; i < picture.nodes.size(); ++i) {
    if (faces[i] != graphlayout::kShown || hides(picture.nodes[i])) continue;
    numbers[i] = static_cast<std::uint32_t>(sizes.size());
    const SgRectangle bounds = SgGraphNodeBounds(picture.nodes[i]->baseWidget());
    sizes.push_back({bounds.width, bounds.height});
  }
  std::vector<graphlayout::Arc> arcs;
  std::vector<std::size_t> places;  // of these among all arcs
  for (std::size_t i = 0; i < picture.arcs.size(); ++i) {
    const graphlayout::Arc arc{numbers[picture.arcs[i].from], numbers[picture.arcs[i].to]};
    if (arc.from == GraphPicture::kHidden || arc.to == GraphPicture::kHidden) continue;
    arcs.push_back(arc);
    places.push_back(i);
  }
  someArrangement_ = picture::usualArrangement(sizes.size());
  const graphlayout::Layout layout = picture::freshLayout(someArrangement_, sizes, arcs);

  homes_.clear();
  for (std::size_t i = 0; i < picture.nodes.size(); ++i) {
    const SgPoint open{picture.positions[i].x, picture.positions[i].y};
    Home home{picture.nodes[i], open, {}};
    const std::uint32_t face = faces[i] == graphlayout::kShown ? static_cast<std::uint32_t>(i) : faces[i];
    if (face != i) home.into = picture.nodes[face];
    home.hidden = hides(picture.nodes[face]);
    if (home.hidden && !home.into) continue;
    if (!home.hidden) {
      const graphlayout::Point& at = layout.nodes[numbers[face]];
      home.shift = {at.x - open.x, at.y - open.y};
    }
    homes_.emplace(picture.nodes[i], home);
  }
  bends_.clear();
  for (std::size_t i = 0; i < picture.arcs.size(); ++i)
    if (!picture.bends[i].empty() && touchesHome(picture, i))
      bends_[picture.arcIds[i]] = {picture.bends[i], picture.bends[i]};
  for (std::size_t i = 0; i < places.size(); ++i)
    bends_[picture.arcIds[places[i]]] = {picture.bends[places[i]], pointsOf(layout.bends.of(i))};
}

void GraphFolds::show(Widget graph) {
  for (const auto& [node, home] : homes_) SgGraphSetNodePosition(node->baseWidget(), home.seen());
  for (const auto& [arc, bends] : bends_) {
    SgGraphSetArcBends(graph, arc, bends.seen);
    if (only_.empty()) continue;
    styles_.emplace_back(arc, SgGraphArcStyle(graph, arc));
    SgGraphSetArcStyle(graph, arc, styleOf(someArrangement_, bends.seen));
  }
}

std::optional<SgPoint> GraphFolds::placeOf(const VkNode* node) const {
  const auto home = homes_.find(node);
  return closed_ && home != homes_.end() ? std::optional(home->second.open) : std::nullopt;
}

std::optional<std::vector<SgPoint>> GraphFolds::bendsOf(SgArc arc) const {
  const auto bends = bends_.find(arc);
  return closed_ && bends != bends_.end() ? std::optional(bends->second.open) : std::nullopt;
}

GraphFolds::Moved GraphFolds::moved(Widget graph, std::span<const Moved::Node> seen) {
  Moved moved;
  std::unordered_map<const VkNode*, SgPoint> ways;
  for (const auto& [node, before, after] : seen)
    ways.emplace(node, SgPoint{after.x - before.x, after.y - before.y});
  std::unordered_map<const VkNode*, VkNode*> faces;  // of all that has moved
  for (auto& [node, home] : homes_) {
    VkNode* const face = home.into ? home.into : home.node;
    const auto way = ways.find(face);
    if (way == ways.end()) continue;
    const SgPoint before = home.open;
    home.open = {before.x + way->second.x, before.y + way->second.y};
    moved.nodes.push_back({home.node, before, home.open});
    faces.emplace(node, face);
  }
  for (auto entry = bends_.begin(); entry != bends_.end();) {
    auto& [arc, bends] = *entry;
    Widget from = nullptr, to = nullptr;
    const bool there = SgGraphGetArcNodes(graph, arc, &from, &to);
    const auto parent = faces.find(VkNode::of(from)), child = faces.find(VkNode::of(to));
    if (there && parent == faces.end() && child == faces.end()) {
      ++entry;
      continue;
    }
    // Within a folded node all keeps its shape; other arcs become straight.
    const bool within = parent != faces.end() && child != faces.end() && parent->second == child->second;
    std::vector<SgPoint> after;
    if (within) after = shifted(bends.open, ways.at(parent->second), ways.at(parent->second));
    if (there && !bends.open.empty()) moved.arcs.push_back({arc, bends.open, after});
    bends.open = std::move(after);
    entry = within ? std::next(entry) : bends_.erase(entry);
  }
  return moved;
}
