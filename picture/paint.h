/// @file
/// What a graph looks like: its nodes and arcs in terms of boxes, lines, texts and pictures.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "picture/drawing.h"
#include "picture/frame.h"
#include "picture/surface.h"

namespace picture {

/// What a node shows.
struct NodeLook {
  std::string label;
  std::string title = {};  ///< a second line; empty: none
  Color tint;
  unsigned pictureWidth = 0, pictureHeight = 0;  ///< of the picture above the label; 0: there is none

  bool hasPicture() const { return pictureWidth != 0; }
};

/// How large a node is, with margins around what it shows.
/// @param textWidth,textHeight  of the wider of its lines at 100 %.
SgRectangle nodeBox(const NodeLook& look, double textWidth, double textHeight);

/// The graph's colours.
struct Inks {
  Color background = kWhite, text, arc, farArc, border, selection, handle;
};

/// How far from their places nodes are painted while they glide there, on the plane.
using Offsets = std::unordered_map<NodeId, SgPoint>;

/// A graph with all that is needed to paint it.
struct Content {
  const Drawing& drawing;
  const std::vector<NodeLook>& looks;                       ///< by NodeId
  const std::unordered_map<ArcId, std::string>& arcLabels;  ///< texts at the middles of arcs
  Inks inks;
  const Offsets* offsets = nullptr;  ///< null: all are where they are
};

/// What is painted beside nodes and arcs for who works on the graph; a printed picture has none of it.
struct Manner {
  bool selection = false;    ///< what is selected is marked, and folded nodes have their handle
  bool handles = false;      ///< the handles at the ends of selected arcs
  bool patchesOnly = false;  ///< nothing but a patch for each node
  bool partialArcs = false;  ///< of arcs that are longer than the frame, only the ends
  /// While nodes are selected, their arcs stand out, and nodes without an arc from or to them are pale.
  bool neighbourhood = false;
};

/// Below it boxes have no outline and arcs no heads.
inline constexpr double kOutlineZoom = 0.25;

/// What of the arcs is drawn in a frame: of one that is longer than the frame is wide or
/// high, its ends.
ArcDetail arcDetail(const Frame& frame);

/// Where a node has the handle that folds and unfolds it: at the left edge of its box, both in window
/// coordinates. Empty where it is too small to have one.
SgRectangle foldHandle(const SgRectangle& box, const Frame& frame);
struct FoldHandleInks {
  Color inside, edge, sign;
};
/// Draws it: a plus for a node that is folded, or else a minus.
void drawFoldHandle(Surface& surface, const SgRectangle& handle, bool folded, const FoldHandleInks& inks);

/// Paints what lies in the frame.
void paint(Surface& surface, const Content& content, const Frame& frame, const Manner& manner);

/// Arcs as lines and arrow heads in window coordinates.
class ArcBatch {
 public:
  /// @param headLength  of the arrow heads, in window units; 0: none.
  ArcBatch(const Frame& frame, double headLength) : frame_(frame), headLength_(headLength) {}

  /// @param head  the size of the head at the last point: 1 is usual, 0 none.
  /// @param shortest  lines below this length in window units are left out.
  void add(std::span<const SgPoint> path, double head = 1, double shortest = 0);
  /// A straight arc between two places of the window.
  void addStraight(SgPoint from, SgPoint to);
  /// @param width  of the lines, see Surface::drawLines.
  void draw(Surface& surface, Color color, unsigned width) const;

 private:
  void addLine(SgPoint a, SgPoint b);
  void addHead(SgPoint tip, SgPoint before, double size);

  const Frame& frame_;
  double headLength_;
  std::vector<Line> lines_;
  std::vector<Triangle> heads_;
};

/// Where the end handles of an arc are, in window coordinates.
struct HandlePlaces {
  SgPoint parent, child;
};
HandlePlaces handlePlaces(std::span<const SgPoint> path, const Frame& frame);

}  // namespace picture
