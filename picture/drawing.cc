/// @file
/// Keeping nodes, arcs and their places together.
#include "picture/drawing.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace picture {

namespace {

StableId stableIdOf(std::uint32_t number, std::uint32_t generation) {
  return std::uint64_t{generation} << 32 | (std::uint64_t{number} + 1);
}

template <class Item>
std::uint32_t numberOf(StableId id, const std::vector<Item>& items) {
  const std::uint32_t number = static_cast<std::uint32_t>(id) - 1;  // 0, none, becomes kNone
  const bool valid = number < items.size() && items[number].used && items[number].generation == id >> 32;
  return valid ? number : kNone;
}

double held(double place) { return std::isfinite(place) ? std::clamp(place, -1e9, 1e9) : 0; }

/// A slot for a new item: one that was freed, or a new one at the end.
template <class Item>
std::uint32_t takeSlot(std::vector<Item>& items, std::vector<std::uint32_t>& freed,
                       std::uint32_t generation) {
  if (freed.empty()) {
    items.emplace_back().generation = generation;
    return static_cast<std::uint32_t>(items.size() - 1);
  }
  const std::uint32_t slot = freed.back();
  freed.pop_back();
  return slot;
}

/// Empties a slot so that stable ids of it become void.
template <class Item>
void freeSlot(Item& item) {
  const std::uint32_t generation = item.generation + 1;
  item = Item{};
  item.generation = generation;
}

}  // namespace

NodeId Drawing::addNode() {
  const NodeId node = takeSlot(nodes_, freeNodes_, firstGeneration_);
  nodes_[node].used = true;
  return node;
}

void Drawing::removeNode(NodeId node) {
  while (nodes_[node].firstOut != kNone) removeArc(nodes_[node].firstOut);
  while (nodes_[node].firstIn != kNone) removeArc(nodes_[node].firstIn);
  if (const auto members = folds_.extract(node))
    for (const NodeId member : members.mapped()) takeOver(member, kNone);
  if (nodes_[node].into != kNone) std::erase(folds_[nodes_[node].into], node);
  showNode(node, false);
  nodeIndex_.remove(node);
  if (nodes_[node].selected) selectedNodes_.erase(nodes_[node].selected);
  freeSlot(nodes_[node]);
  freeNodes_.push_back(node);
}

StableId Drawing::stableNodeId(NodeId node) const {
  return node == kNone ? 0 : stableIdOf(node, nodes_[node].generation);
}

NodeId Drawing::nodeOf(StableId id) const { return numberOf(id, nodes_); }

void Drawing::moveNode(NodeId node, SgPoint corner) {
  Node& moved = nodes_[node];
  moved.box.x = held(corner.x);
  moved.box.y = held(corner.y);
  if (moved.shown) nodeIndex_.put(node, moved.box);
  extentsStale_ = true;
  visitArcsOf(node, [&](ArcId arc) { arcs_[arc].bends.clear(); });
  makeArcsStale(node);
}

void Drawing::resizeNode(NodeId node, double width, double height) {
  Node& resized = nodes_[node];
  resized.box.width = width;
  resized.box.height = height;
  if (resized.shown) nodeIndex_.put(node, resized.box);
  extentsStale_ = true;
  makeArcsStale(node);
}

void Drawing::showNode(NodeId node, bool shown) {
  nodes_[node].wanted = shown;
  updateShown(node);
}

void Drawing::updateShown(NodeId node) {
  Node& changed = nodes_[node];
  const bool shown = changed.wanted && !changed.hidden && changed.into == kNone;
  if (changed.shown == shown) return;
  changed.shown = shown;
  extentsStale_ = true;
  if (shown) nodeIndex_.put(node, changed.box);
  makeArcsStale(node);
  stubsStale_ = true;
}

void Drawing::foldNode(NodeId node, NodeId into) {
  folds_[into].push_back(node);
  takeOver(node, into);
}

void Drawing::hideNode(NodeId node) {
  nodes_[node].hidden = true;
  hidden_.push_back(node);
  updateShown(node);
}

void Drawing::unfoldAll() {
  for (const NodeId node : std::exchange(hidden_, {})) {
    nodes_[node].hidden = false;
    updateShown(node);
  }
  for (const auto& [face, members] : std::exchange(folds_, {}))
    for (const NodeId member : members) takeOver(member, kNone);
}

void Drawing::takeOver(NodeId node, NodeId into) {
  nodes_[node].into = into;
  updateShown(node);
  makeArcsStale(node);
  stubsStale_ = true;
}

std::size_t Drawing::countFolded(NodeId node) const {
  const auto members = folds_.find(node);
  return members == folds_.end() ? 0 : members->second.size();
}

bool Drawing::holdsAlone(NodeId node) const {
  const auto leadsFrom = [&](ArcId arc) { return from(arc) == node || from(arc) == to(arc); };
  for (ArcId arc = nodes_[node].firstOut; arc != kNone; arc = arcs_[arc].out.next) {
    if (to(arc) == node) continue;
    ArcId in = nodes_[to(arc)].firstIn;
    while (in != kNone && leadsFrom(in)) in = arcs_[in].in.next;
    if (in == kNone) return true;
  }
  return false;
}

ArcId Drawing::addArc(NodeId from, NodeId to) {
  const ArcId arc = takeSlot(arcs_, freeArcs_, firstGeneration_);
  Arc& added = arcs_[arc];
  added.used = true;
  added.from = from;
  added.to = to;
  link(nodes_[from].firstOut, arc, &Arc::out);
  link(nodes_[to].firstIn, arc, &Arc::in);
  const std::uint64_t key = pairKey(from, to);
  Pair& pair = pairs_[key];
  std::vector<ArcId>& side = direction(pair, from, to);
  added.place = static_cast<std::uint32_t>(side.size());
  side.push_back(arc);
  if (pair.forward.size() + pair.backward.size() > 1) makePairStale(key, pair);
  makeStale(arc);
  stubsStale_ = true;
  return arc;
}

void Drawing::removeArc(ArcId arc) {
  Arc& removed = arcs_[arc];
  unlink(nodes_[removed.from].firstOut, arc, &Arc::out);
  unlink(nodes_[removed.to].firstIn, arc, &Arc::in);

  const auto pair = pairs_.find(pairKey(removed.from, removed.to));
  std::vector<ArcId>& side = direction(pair->second, removed.from, removed.to);
  arcs_[side.back()].place = removed.place;
  side[removed.place] = side.back();
  side.pop_back();
  if (pair->second.forward.empty() && pair->second.backward.empty())
    pairs_.erase(pair);
  else
    makePairStale(pair->first, pair->second);

  if (removed.selected) selectedArcs_.erase(removed.selected);
  arcIndex_.remove(arc);
  stubbedIndex_.remove(arc);
  stubsStale_ = blocksStale_ = true;
  freeSlot(removed);
  freeArcs_.push_back(arc);
}

StableId Drawing::stableArcId(ArcId arc) const {
  return arc == kNone ? 0 : stableIdOf(arc, arcs_[arc].generation);
}

ArcId Drawing::arcOf(StableId id) const { return numberOf(id, arcs_); }

ArcId Drawing::findArc(NodeId from, NodeId to) const {
  const auto pair = pairs_.find(pairKey(from, to));
  if (pair == pairs_.end()) return kNone;
  const std::vector<ArcId>& arcs = direction(pair->second, from, to);
  if (arcs.empty()) return kNone;
  // Whichever list is shorter is searched: neither many duplicates nor a large selection cost much then.
  if (selectedArcs_.size() < arcs.size()) {
    for (const auto& [order, arc] : selectedArcs_)
      if (arcs_[arc].from == from && arcs_[arc].to == to) return arc;
  } else {
    for (const ArcId arc : arcs)
      if (arcSelected(arc)) return arc;
  }
  return arcs.back();
}

std::vector<ArcId> Drawing::arcsBetween(NodeId from, NodeId to) const {
  const auto pair = pairs_.find(pairKey(from, to));
  if (pair == pairs_.end()) return {};
  std::vector<ArcId> arcs = direction(pair->second, from, to);
  std::ranges::sort(arcs);
  return arcs;
}

void Drawing::setBends(ArcId arc, std::span<const SgPoint> bends) {
  std::vector<SgPoint>& kept = arcs_[arc].bends;
  kept.clear();
  for (const SgPoint& bend : bends) kept.push_back({held(bend.x), held(bend.y)});
  makeStale(arc);
}

void Drawing::setArcStyle(ArcId arc, ArcStyle style) {
  if (arcs_[arc].style == style) return;
  arcs_[arc].style = style;
  makeStale(arc);
  stubsStale_ = true;
}

bool Drawing::inStubs(ArcId arc, const ArcDetail& detail) const {
  if (isWhole(arc)) return false;
  bringUpToDate(detail.longest);
  return isStubbed(arc) || (arcs_[arc].partial && (detail.stubs || !isSquare(arc)));
}

std::span<const SgPoint> Drawing::path(ArcId arc) const {
  bringUpToDate();
  if (!arcs_[arc].shown) return {};
  return arcs_[arc].path;
}

void Drawing::setPorts(Ports ports) {
  if (ports_ == ports) return;
  ports_ = ports;
  visitAllArcs([&](ArcId arc) { makeStale(arc); });
}

void Drawing::selectNode(NodeId node) {
  if (nodes_[node].selected) return;
  nodes_[node].selected = ++selections_;
  selectedNodes_[selections_] = node;
}

void Drawing::selectArc(ArcId arc) {
  if (arcs_[arc].selected) return;
  arcs_[arc].selected = ++selections_;
  selectedArcs_[selections_] = arc;
}

void Drawing::deselectAll() {
  for (const auto& [order, node] : selectedNodes_) nodes_[node].selected = 0;
  for (const auto& [order, arc] : selectedArcs_) arcs_[arc].selected = 0;
  selectedNodes_.clear();
  selectedArcs_.clear();
}

const SgRectangle& Drawing::extents() const {
  if (!extentsStale_) return extents_;
  extentsStale_ = false;
  extents_ = {};
  bool first = true;
  for (const Node& node : nodes_) {
    if (!node.shown) continue;
    extents_ = first ? node.box : united(extents_, node.box);
    first = false;
  }
  return extents_;
}

const std::vector<Block>& Drawing::blocks() const {
  if (std::exchange(blocksStale_, false)) blocks_ = blocksOf(*this);
  return blocks_;
}

NodeId Drawing::nodeAt(SgPoint point) const {
  NodeId top = kNone;
  visitNodes({point.x, point.y, 0, 0}, [&](NodeId node) {
    if (nodes_[node].box.contains(point) && (top == kNone || node > top)) top = node;
  });
  return top;
}

ArcId Drawing::arcAt(SgPoint point, double reach, const ArcDetail& detail) const {
  ArcId nearest = kNone;
  double least = reach;
  visitArcs(
      SgRectangle{point.x, point.y, 0, 0}.grownBy(reach),
      [&](ArcId arc) {
        double away = std::numeric_limits<double>::infinity();
        visitPieces(arc, detail, [&](std::span<const SgPoint> piece, bool) {
          away = std::min(away, distanceToPath(point, piece));
        });
        if (away < least || (away == least && (nearest == kNone || arc > nearest))) {
          least = away;
          nearest = arc;
        }
      },
      detail);
  return nearest;
}

NodeId Drawing::neighbour(NodeId node, int directionX, int directionY) const {
  const SgPoint middle = nodes_[node].box.middle();
  const SgRectangle& all = extents();
  const double farthest = all.width + all.height + 1;
  // Something in a straight line is preferred to something nearer that lies off it.
  const auto cost = [&](NodeId other) -> double {
    const SgPoint there = nodes_[other].box.middle();
    const double dx = there.x - middle.x, dy = there.y - middle.y;
    const double ahead = dx * directionX + dy * directionY;
    const double aside = std::abs(dx * directionY) + std::abs(dy * directionX);
    if (other == node || ahead < 1 || aside > 4 * ahead) return -1;
    return ahead + 2 * aside;
  };
  for (double reach = 200;; reach *= 2) {
    NodeId best = kNone;
    double least = 0;
    visitNodes(SgRectangle{middle.x, middle.y, 0, 0}.grownBy(reach), [&](NodeId other) {
      const double otherCost = cost(other);
      if (otherCost < 0) return;
      if (best == kNone || otherCost < least || (otherCost == least && other < best)) {
        best = other;
        least = otherCost;
      }
    });
    // Whatever lies outside the area searched costs more than `reach`.
    if ((best != kNone && least <= reach) || reach > farthest) return best;
  }
}

Drawing Drawing::emptied() const {
  Drawing empty;
  empty.ports_ = ports_;
  empty.firstGeneration_ = firstGeneration_;
  const auto follow = [&](const auto& item) {
    empty.firstGeneration_ = std::max(empty.firstGeneration_, item.generation + 1);
  };
  std::ranges::for_each(nodes_, follow);
  std::ranges::for_each(arcs_, follow);
  return empty;
}

std::uint64_t Drawing::pairKey(NodeId a, NodeId b) {
  return std::uint64_t{std::min(a, b)} << 32 | std::max(a, b);
}

void Drawing::link(ArcId& first, ArcId arc, ArcLinks Arc::*links) {
  (arcs_[arc].*links) = {first, kNone};
  if (first != kNone) (arcs_[first].*links).previous = arc;
  first = arc;
}

void Drawing::unlink(ArcId& first, ArcId arc, ArcLinks Arc::*links) {
  const ArcLinks around = arcs_[arc].*links;
  if (around.next != kNone) (arcs_[around.next].*links).previous = around.previous;
  if (around.previous != kNone)
    (arcs_[around.previous].*links).next = around.next;
  else
    first = around.next;
}

void Drawing::makeStale(ArcId arc) const {
  blocksStale_ = true;
  if (arcs_[arc].stale) return;
  arcs_[arc].stale = true;
  staleArcs_.push_back(arc);
}

void Drawing::makeArcsStale(NodeId node) const {
  visitDrawnArcsOf(node, [&](ArcId arc) { makeStale(arc); });
}

void Drawing::makePairStale(std::uint64_t key, const Pair& pair) {
  if (pair.stale) return;
  pair.stale = true;
  stalePairs_.push_back(key);
}

void Drawing::bringUpToDate() const {
  for (const std::uint64_t key : stalePairs_) {
    const auto pair = pairs_.find(key);
    if (pair == pairs_.end() || !pair->second.stale) continue;
    pair->second.stale = false;
    for (const ArcId arc : pair->second.forward) makeStale(arc);
    for (const ArcId arc : pair->second.backward) makeStale(arc);
  }
  stalePairs_.clear();
  for (const ArcId arc : staleArcs_) {
    if (!arcs_[arc].stale) continue;
    arcs_[arc].stale = false;
    arcs_[arc].shown = arcShown(arc);
    if (!arcs_[arc].shown) continue;
    computePath(arc);
    arcs_[arc].length = pathLength(arcs_[arc].path);
    stubsStale_ = stubsStale_ || (arcs_[arc].length > stubsFor_) != arcs_[arc].partial;
    const bool stubbed = isStubbed(arc);
    (stubbed ? stubbedIndex_ : arcIndex_).put(arc, boundsOf(arcs_[arc].path));
    (stubbed ? arcIndex_ : stubbedIndex_).remove(arc);
  }
  staleArcs_.clear();
}

void Drawing::bringUpToDate(double longest) const {
  bringUpToDate();
  if (std::exchange(stubsFor_, longest) != longest || stubsStale_) chooseStubs();
}

void Drawing::chooseStubs() const {
  stubsStale_ = false;
  for (const Node& node : nodes_) {
    node.undrawn = node.toHidden = {};
    node.stubsOut.fill(kNone);
    node.stubsIn.fill(kNone);
  }
  std::unordered_set<std::uint64_t> redirected;  // one stub stands for all that lead from here to there
  for (ArcId arc = 0; arc < arcs_.size(); ++arc) {
    const Arc& chosen = arcs_[arc];
    chosen.stubOut = chosen.stubIn = true;
    chosen.partial = chosen.length > stubsFor_;
    if (!chosen.used) continue;
    const NodeId from = drawnFrom(arc), to = drawnTo(arc);
    if (nodes_[to].hidden) ++nodes_[from].toHidden.out;
    if (nodes_[from].hidden) ++nodes_[to].toHidden.in;
    if (!arcShown(arc)) continue;
    if (isRedirected(arc))
      chosen.stubOut = chosen.stubIn = redirected.insert(std::uint64_t{from} << 32 | to).second;
    else if ((chosen.style != ArcStyle::Stubs && !chosen.partial) || isSquare(chosen) || from == to)
      continue;
    if (!chosen.stubOut) continue;
    const std::uint32_t out = nodes_[from].undrawn.out++, in = nodes_[to].undrawn.in++;
    chosen.stubOut = out < kMostStubs;
    chosen.stubIn = in < kMostStubs;
    if (!isStubbed(arc)) continue;
    if (chosen.stubOut) nodes_[from].stubsOut[out] = arc;
    if (chosen.stubIn) nodes_[to].stubsIn[in] = arc;
  }
  for (const Node& node : nodes_)
    node.undrawn = {node.undrawn.in - std::min(node.undrawn.in, kMostStubs),
                    node.undrawn.out - std::min(node.undrawn.out, kMostStubs)};
}

Drawing::Undrawn Drawing::undrawnStubs(NodeId node, const ArcDetail& detail) const {
  bringUpToDate(detail.longest);
  return nodes_[node].undrawn;
}

Drawing::Undrawn Drawing::hiddenArcs(NodeId node) const {
  bringUpToDate(stubsFor_);
  return nodes_[node].toHidden;
}

void Drawing::computePath(ArcId id) const {
  const Arc& arc = arcs_[id];
  const SgRectangle &from = nodes_[drawnFrom(id)].box, &to = nodes_[drawnTo(id)].box;
  if (isRedirected(id)) {
    arc.path = arcPath(from, to, {}, ports_, {});
    return;
  }
  if (arc.from == arc.to) {
    arc.path = loopPath(from, arc.place);
    return;
  }
  if (isSquare(arc)) {
    arc.path = squarePath(from, to, arc.bends);
    return;
  }
  const Pair& pair = pairs_.find(pairKey(arc.from, arc.to))->second;
  const bool reversed = arc.from > arc.to;
  const std::size_t lane = arc.place + (reversed ? pair.forward.size() : 0);
  const double offset =
      laneOffset(lane, pair.forward.size() + pair.backward.size(), std::min(from.width, to.width));
  arc.path = arcPath(from, to, arc.bends, ports_, {offset, reversed});
}

}  // namespace picture
