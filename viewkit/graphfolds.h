/// @file
/// Which nodes of a graph are folded, and the open picture that it has without that.
#pragma once

#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "picture/arrangement.h"
#include "viewkit/graphpicture.h"

/// The open picture is the one that edits and their steps are about. The one that is seen is made of it:
/// folded nodes lie where the node lies that stands for them, and the others have closed up. Where only some
/// nodes are wanted, these are laid out by themselves. Whoever changes places calls open() before, and
/// close() after it.
class GraphFolds {
 public:
  bool any() const { return !folded_.empty() || !only_.empty(); }
  /// Whether the folded picture is shown.
  bool areClosed() const { return closed_; }
  bool isFolded(const VkNode* node) const;
  /// The node that is seen for it: itself unless it is hidden.
  VkNode* face(VkNode* node) const;

  void fold(VkNode* node) { folded_.push_back(node); }
  void unfold(const VkNode* node) { std::erase(folded_, node); }
  void unfoldAll() { folded_.clear(); }

  /// Which nodes are shown at all; none: all.
  void showOnly(std::unordered_set<const VkNode*> nodes) {
    only_ = std::move(nodes);
    guest_ = nullptr;
  }
  /// A node is to be seen beside those.
  void showAlso(const VkNode* node) {
    if (!only_.empty()) only_.insert(node);
    if (guest_ == node) guest_ = nullptr;
  }
  /// The same, until there is another such guest.
  void showGuest(const VkNode* node) {
    only_.erase(guest_);
    only_.insert(guest_ = node);
  }
  bool hides(const VkNode* node) const { return !only_.empty() && !only_.contains(node); }
  /// How many are shown at all; nothing: all.
  std::optional<std::size_t> countOnly() const {
    return only_.empty() ? std::nullopt : std::optional(only_.size());
  }

  /// The node leaves the graph.
  void forget(const VkNode* node);
  /// All nodes are gone.
  void clear();

  /// Shows the open picture. @param nodes  all that are displayed.
  void open(Widget graph, std::span<VkNode* const> nodes);
  /// Shows the folded picture.
  /// @param picture  the open one, which is shown.
  /// @param afresh   whether what is hidden is looked for afresh. Otherwise this hides no node that was seen,
  /// and moves none without need.
  void close(Widget graph, const GraphPicture& picture, bool compact, bool afresh);

  /// Where a node lies in the open picture, and an arc's bends there; none of what lies there as it is seen.
  std::optional<SgPoint> placeOf(const VkNode* node) const;
  std::optional<std::vector<SgPoint>> bendsOf(SgArc arc) const;

  /// What has changed of the open picture.
  struct Moved {
    struct Node {
      VkNode* node;
      SgPoint before, after;
    };
    struct Arc {
      SgArc arc;
      std::vector<SgPoint> before, after;
    };
    std::vector<Node> nodes;
    std::vector<Arc> arcs;
  };
  /// While the folded picture is shown, nodes of it were moved: those of the open one follow, and with each
  /// all that is folded into it.
  Moved moved(Widget graph, std::span<const Moved::Node> seen);

 private:
  struct Home {
    VkNode* node = nullptr;
    SgPoint open;            // upper left corner
    SgPoint shift;           // from there to where it is seen
    VkNode* into = nullptr;  // the node that stands for it
    bool hidden = false;     // nothing stands for it
    bool isSeen() const { return !into && !hidden; }
    SgPoint seen() const { return {open.x + shift.x, open.y + shift.y}; }
  };
  struct Bends {
    std::vector<SgPoint> open, seen;
  };

  std::vector<std::uint32_t> faces(const GraphPicture& picture, bool afresh) const;
  /// How far the seen node nearest to a place has come; `at` says where nodes are.
  SgPoint shiftNear(SgPoint place, SgPoint (*at)(const Home&)) const;
  void findPlaces(const GraphPicture& picture, const std::vector<std::uint32_t>& faces, bool compact);
  void keepPlaces(const GraphPicture& picture);
  /// Puts nodes and arcs where they are seen.
  void show(Widget graph);

  /// Whether a node of the arc has a home: otherwise both lie where they are.
  bool touchesHome(const GraphPicture& picture, std::size_t arc) const;
  /// The same where only some nodes are shown.
  void findPlacesOfSome(const GraphPicture& picture, const std::vector<std::uint32_t>& faces);

  std::vector<VkNode*> folded_;
  std::unordered_set<const VkNode*> only_;
  const VkNode* guest_ = nullptr;                     // in it, for a while
  std::unordered_map<const VkNode*, Home> homes_;     // of those that are seen or folded
  std::unordered_map<SgArc, Bends> bends_;            // of those that have any
  bool closed_ = false;                               // the folded picture is shown
  picture::Arrangement someArrangement_{};            // of some nodes
  std::vector<std::pair<SgArc, SgArcStyle>> styles_;  // in the open picture, of arcs that have others now
};
