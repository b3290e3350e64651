/// @file
/// The picture of a graph on its plane: boxes, arcs between them, and what lies where.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

#include "picture/arcpath.h"
#include "picture/blocks.h"
#include "picture/boxindex.h"
#include "picture/geometry.h"

namespace picture {

using NodeId = std::uint32_t;
using ArcId = std::uint32_t;
inline constexpr std::uint32_t kNone = 0xffffffff;

/// A node or arc for keeping: 0 is none, and that of a removed one never becomes valid again. Plain ids, in
/// contrast, are small numbers that are used again.
using StableId = std::uint64_t;

/// What of the arcs is drawn, which depends on how the picture is seen.
struct ArcDetail {
  double longest = std::numeric_limits<double>::infinity();  ///< plane units: longer ones are drawn as stubs
  /// Whether stubs are drawn at all; otherwise arcs at right angles are whole however long they are.
  bool stubs = true;
};

/// Nodes and arcs with their places and selection. Ids given must exist unless a function says otherwise.
/// An arc is shown if both its nodes are, and only what is shown can be found by its place. The paths of arcs
/// are computed when somebody asks, so that many changes in a row cost one computation.
class Drawing {
 public:
  /// @name Nodes
  /// @{
  /// A hidden node of no size at the origin.
  NodeId addNode();
  /// Removes the node and all its arcs.
  void removeNode(NodeId node);
  /// 0 for kNone; likewise for arcs.
  StableId stableNodeId(NodeId node) const;
  /// kNone for the stable id of a node that is gone.
  NodeId nodeOf(StableId id) const;

  const SgRectangle& box(NodeId node) const { return nodes_[node].box; }
  /// Moving straightens the node's arcs.
  void moveNode(NodeId node, SgPoint corner);
  void resizeNode(NodeId node, double width, double height);
  void showNode(NodeId node, bool shown);
  /// Not while it is folded into another or hidden.
  bool shown(NodeId node) const { return nodes_[node].shown; }
  /// The same, once it is shown.
  bool isSeen(NodeId node) const { return !nodes_[node].hidden && nodes_[node].into == kNone; }
  /// @}

  /// @name Folding: one node can stand for others, which are not seen then. Their arcs are drawn from and to
  /// it instead, as stubs; those within it are not drawn at all.
  /// @{
  /// @param into  not folded itself.
  void foldNode(NodeId node, NodeId into);
  /// It is not seen at all, nor are its arcs.
  void hideNode(NodeId node);
  /// All are seen, hidden ones, too.
  void unfoldAll();
  /// The node that is seen for it: itself unless it is folded.
  NodeId face(NodeId node) const { return nodes_[node].into == kNone ? node : nodes_[node].into; }
  /// How many nodes it stands for besides itself.
  std::size_t countFolded(NodeId node) const;
  /// Calls `visit(node)` for every node that stands for others.
  template <class Visit>
  void visitFaces(Visit&& visit) const {
    for (const auto& [face, members] : folds_)
      if (!members.empty()) visit(face);
  }
  /// The nodes between which the arc is drawn.
  NodeId drawnFrom(ArcId arc) const { return face(arcs_[arc].from); }
  NodeId drawnTo(ArcId arc) const { return face(arcs_[arc].to); }
  /// Whether it stands for arcs of folded nodes.
  bool isRedirected(ArcId arc) const { return drawnFrom(arc) != from(arc) || drawnTo(arc) != to(arc); }
  /// Whether an arc leads from the node to another that no other node leads to.
  bool holdsAlone(NodeId node) const;
  /// @}

  /// @name Arcs
  /// @{
  ArcId addArc(NodeId from, NodeId to);
  void removeArc(ArcId arc);
  StableId stableArcId(ArcId arc) const;
  /// kNone for the stable id of an arc that is gone.
  ArcId arcOf(StableId id) const;
  NodeId from(ArcId arc) const { return arcs_[arc].from; }
  NodeId to(ArcId arc) const { return arcs_[arc].to; }
  /// An arc from `from` to `to`: a selected one if there is, else the outermost; kNone without any.
  ArcId findArc(NodeId from, NodeId to) const;
  /// All arcs from `from` to `to`, in ascending order.
  std::vector<ArcId> arcsBetween(NodeId from, NodeId to) const;
  void setBends(ArcId arc, std::span<const SgPoint> bends);
  std::span<const SgPoint> bends(ArcId arc) const { return arcs_[arc].bends; }
  /// Calls `visit(node)` for every node, shown or not.
  template <class Visit>
  void visitAllNodes(Visit&& visit) const {
    for (NodeId node = 0; node < nodes_.size(); ++node)
      if (nodes_[node].used) visit(node);
  }
  std::size_t countNodes() const { return nodes_.size() - freeNodes_.size(); }
  /// Calls `visit(arc)` for every arc, oldest first as far as none was removed.
  template <class Visit>
  void visitAllArcs(Visit&& visit) const {
    for (ArcId arc = 0; arc < arcs_.size(); ++arc)
      if (arcs_[arc].used) visit(arc);
  }
  /// Calls `visit(arc)` for every arc that starts or ends at the node, twice for one that does both.
  template <class Visit>
  void visitArcsOf(NodeId node, Visit&& visit) const {
    for (ArcId arc = nodes_[node].firstOut; arc != kNone; arc = arcs_[arc].out.next) visit(arc);
    for (ArcId arc = nodes_[node].firstIn; arc != kNone; arc = arcs_[arc].in.next) visit(arc);
  }
  /// The same for every arc that is drawn from or to the node.
  template <class Visit>
  void visitDrawnArcsOf(NodeId node, Visit&& visit) const {
    visitArcsOf(node, visit);
    if (const auto folded = folds_.find(node); folded != folds_.end())
      for (const NodeId member : folded->second) visitArcsOf(member, visit);
  }
  /// Calls `visit(child)` for every arc that starts at the node and is shown, but for those of style Stubs.
  template <class Visit>
  void visitChildren(NodeId node, Visit&& visit) const {
    for (ArcId arc = nodes_[node].firstOut; arc != kNone; arc = arcs_[arc].out.next)
      if (arcShown(arc) && arcs_[arc].style != ArcStyle::Stubs) visit(drawnTo(arc));
  }
  bool arcShown(ArcId arc) const {
    const NodeId from = drawnFrom(arc), to = drawnTo(arc);
    return shown(from) && shown(to) && (from != to || !isRedirected(arc));
  }
  void setArcStyle(ArcId arc, ArcStyle style);
  ArcStyle arcStyle(ArcId arc) const { return arcs_[arc].style; }
  /// Whether it runs in right angles.
  bool isSquare(ArcId arc) const { return isSquare(arcs_[arc]); }
  /// The points that the arc is drawn through when it is drawn as a whole, valid until the next change; none
  /// while it isn't shown.
  std::span<const SgPoint> path(ArcId arc) const;
  /// Whether only the ends of the arc are drawn: not while it is selected, or a node of its is. A folded node
  /// may have thousands that are not its own: selecting it doesn't count for these.
  bool inStubs(ArcId arc, const ArcDetail& detail) const;
  /// Numbers of arcs that are not drawn: of those that lead to a node, and of those that start there.
  struct Undrawn {
    std::uint32_t in = 0, out = 0;
  };
  /// Arcs in stubs, since others at the same end of the same node are drawn.
  Undrawn undrawnStubs(NodeId node, const ArcDetail& detail = {}) const;
  /// Arcs between the node and hidden ones.
  Undrawn hiddenArcs(NodeId node) const;
  /// Calls `visit(points, reachesChild)` for every line that is drawn of the arc.
  template <class Visit>
  void visitPieces(ArcId arc, const ArcDetail& detail, Visit&& visit) const {
    if (!inStubs(arc, detail)) {
      visit(path(arc), true);
    } else if (isSquare(arc) && !isRedirected(arc)) {
      // Others share these lines: their ends are seen where they run. That at the child is more its own.
      visit(PathEnd(path(arc), true).points(), true);
      visit(PathEnd(path(arc), false).points(), false);
    } else if (detail.stubs) {
      const Stubs stubs = stubsBetween(box(drawnFrom(arc)), box(drawnTo(arc)));
      if (arcs_[arc].stubOut) visit(std::span<const SgPoint>(stubs.parent), false);
      if (arcs_[arc].stubIn) visit(std::span<const SgPoint>(stubs.child), true);
    }
  }
  void setPorts(Ports ports);
  /// @}

  /// @name Selection, in the order in which things were selected
  /// @{
  void selectNode(NodeId node);
  void selectArc(ArcId arc);
  void deselectAll();
  bool nodeSelected(NodeId node) const { return nodes_[node].selected != 0; }
  bool arcSelected(ArcId arc) const { return arcs_[arc].selected != 0; }
  const std::map<std::uint64_t, NodeId>& selectedNodes() const { return selectedNodes_; }
  const std::map<std::uint64_t, ArcId>& selectedArcs() const { return selectedArcs_; }
  /// @}

  /// @name What lies where
  /// @{
  /// Bounds of all shown nodes; linear after a change, and empty at the origin without any.
  const SgRectangle& extents() const;
  template <class Visit>
  void visitNodes(const SgRectangle& area, Visit&& visit) const {
    nodeIndex_.visit(area, [&](NodeId node) {
      if (shown(node)) visit(node);
    });
  }
  /// Visits arcs whose bounds touch the area, which they may miss all the same; of those that are in stubs
  /// whatever the detail, the ones with a stub near it. Each once. @param detail  that they are looked at
  /// with.
  template <class Visit>
  void visitArcs(const SgRectangle& area, Visit&& visit, const ArcDetail& detail = {}) const {
    bringUpToDate(detail.longest);
    const auto visitShown = [&](ArcId arc) {
      if (arcs_[arc].shown) visit(arc);
    };
    arcIndex_.visit(area, visitShown);
    // In a large picture thousands of arcs lead over any place, and next to none has its end there.
    constexpr std::size_t kFewSelected = 1000;
    if (selectedNodes_.size() + selectedArcs_.size() > kFewSelected) {
      stubbedIndex_.visit(area, visitShown);
      return;
    }
    const SgRectangle near = area.grownBy(kStubLength);
    nodeIndex_.visit(near, [&](NodeId node) {
      for (const ArcId arc : nodes_[node].stubsOut)
        if (arc != kNone && !isWhole(arc)) visit(arc);
      for (const ArcId arc : nodes_[node].stubsIn) {
        if (arc == kNone || isWhole(arc)) continue;
        const bool seenAlready = arcs_[arc].stubOut && box(drawnFrom(arc)).touches(near);
        if (!seenAlready) visit(arc);
      }
    });
    for (const auto& [order, arc] : selectedArcs_)
      if (stubbedIndex_.touches(arc, area)) visitShown(arc);
    for (const auto& [order, node] : selectedNodes_)
      visitArcsOf(node, [&](ArcId arc) {
        const bool seenAlready = arcSelected(arc) || (nodeSelected(from(arc)) && node != from(arc));
        if (!seenAlready && stubbedIndex_.touches(arc, area)) visitShown(arc);
      });
  }
  /// What right-angled arcs hold together; linear after a change.
  const std::vector<Block>& blocks() const;
  /// The topmost node, that is the one added last, at a point; kNone for none.
  NodeId nodeAt(SgPoint point) const;
  /// The nearest arc at most `reach` away, by what is drawn of it; kNone for none.
  ArcId arcAt(SgPoint point, double reach, const ArcDetail& detail = {}) const;
  /// The shown node next to `node` in the direction (-1, 0, 1 each); kNone when nothing is there.
  NodeId neighbour(NodeId node, int directionX, int directionY) const;
  /// @}

  /// An empty drawing in the place of this one: stable ids of this one are void in it.
  Drawing emptied() const;

 private:
  static constexpr std::uint32_t kMostStubs = 3;  // at each end of a node
  struct Node {
    SgRectangle box;
    ArcId firstOut = kNone, firstIn = kNone;
    std::uint32_t generation = 0;
    NodeId into = kNone;  // the node that it is folded into
    bool used = false;
    bool wanted = false, hidden = false;
    bool shown = false;          // wanted, and neither hidden nor folded
    std::uint64_t selected = 0;  // key in selectedNodes_, 0 for not selected
    mutable Undrawn undrawn, toHidden;
    using Stubs = std::array<ArcId, kMostStubs>;
    mutable Stubs stubsOut{kNone, kNone, kNone}, stubsIn = stubsOut;  // those that are drawn; kNone: less
  };
  struct ArcLinks {
    ArcId next = kNone, previous = kNone;
  };
  struct Arc {
    NodeId from = kNone, to = kNone;
    ArcLinks out, in;  // the lists of all arcs of the two nodes
    std::uint32_t generation = 0;
    std::uint32_t place = 0;  // in the list of its direction in its pair
    bool used = false;
    std::uint64_t selected = 0;
    ArcStyle style = ArcStyle::Whole;
    std::vector<SgPoint> bends;
    mutable std::vector<SgPoint> path;
    mutable double length = 0;                   // of `path`
    mutable bool stale = false;                  // `path` isn't right any more
    mutable bool shown = false;                  // what `arcShown` said then; if it wasn't, `path` is older
    mutable bool partial = false;                // too long to be whole when stubs were chosen
    mutable bool stubOut = true, stubIn = true;  // which of its stubs are drawn when it is in stubs
  };
  /// The arcs between two nodes; a < b but for loops, which are all forward.
  struct Pair {
    std::vector<ArcId> forward, backward;
    mutable bool stale = false;  // none of their paths is right any more
  };

  static std::uint64_t pairKey(NodeId a, NodeId b);
  /// The arcs of a pair that lead from `from` to `to`.
  template <class P>
  static auto& direction(P& pair, NodeId from, NodeId to) {
    return from <= to ? pair.forward : pair.backward;
  }
  void link(ArcId& first, ArcId arc, ArcLinks Arc::*links);
  void unlink(ArcId& first, ArcId arc, ArcLinks Arc::*links);
  void makeStale(ArcId arc) const;
  void makeArcsStale(NodeId node) const;
  void updateShown(NodeId node);
  void takeOver(NodeId node, NodeId into);
  void makePairStale(std::uint64_t key, const Pair& pair);
  static bool isSquare(const Arc& arc) { return arc.style == ArcStyle::Square && !arc.bends.empty(); }
  void bringUpToDate() const;
  /// The same, and which stubs are drawn where arcs of that length are in stubs.
  void bringUpToDate(double longest) const;
  void chooseStubs() const;
  void computePath(ArcId id) const;
  /// Whether it is in stubs whatever the detail, but for isWhole().
  bool isStubbed(ArcId arc) const {
    return (isRedirected(arc) || arcs_[arc].style == ArcStyle::Stubs) && from(arc) != to(arc);
  }
  /// Whether it is drawn whole whatever the detail.
  bool isWhole(ArcId arc) const {
    return arcSelected(arc) || from(arc) == to(arc) || nodeSelected(from(arc)) || nodeSelected(to(arc));
  }

  std::vector<Node> nodes_;
  std::vector<Arc> arcs_;
  std::vector<NodeId> freeNodes_;
  std::vector<ArcId> freeArcs_;
  std::unordered_map<std::uint64_t, Pair> pairs_;
  std::vector<NodeId> hidden_;
  std::unordered_map<NodeId, std::vector<NodeId>> folds_;  // by the node that stands for them
  // What is hidden again stays in the indices, for hiding most of a large picture, and showing it as it was,
  // is to cost little: whoever visits these skips it.
  BoxIndex nodeIndex_;
  std::map<std::uint64_t, NodeId> selectedNodes_;
  std::map<std::uint64_t, ArcId> selectedArcs_;
  std::uint64_t selections_ = 0;
  std::uint32_t firstGeneration_ = 0;  // of a new slot
  Ports ports_ = Ports::Down;

  // Computed when somebody asks, which changes nothing that can be seen from outside.
  mutable std::vector<ArcId> staleArcs_;
  mutable std::vector<std::uint64_t> stalePairs_;
  mutable BoxIndex arcIndex_, stubbedIndex_;  // each arc that was shown is in one, by its whole path
  mutable SgRectangle extents_;
  mutable bool extentsStale_ = false;
  mutable std::vector<Block> blocks_;
  mutable bool blocksStale_ = false;
  mutable bool stubsStale_ = false;
  mutable double stubsFor_ = std::numeric_limits<double>::infinity();  // the length that they were chosen for
};

}  // namespace picture
