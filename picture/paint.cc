/// @file
/// Arcs in batches of lines, nodes as boxes, labels and pictures.
#include "picture/paint.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <string_view>
#include <utility>

#include "picture/utf8.h"

namespace picture {

namespace {

constexpr double kLabelPadding = 10, kLabelMargin = 5;  // plane units beside and above a label
constexpr double kLeastNodeWidth = 44;
constexpr double kPicturePadding = 4;  // plane units between a node's picture and the edge of its box

constexpr double kLineInset = 0.15;      // of two lines, towards each other, in parts of the half box
constexpr double kTextZoom = 0.4;        // below it nodes have no labels
constexpr double kLeastTextZoom = 0.55;  // of the smallest text that can be read
constexpr double kNameZoom = 0.9;        // of the names of what is large, where nodes have no labels
constexpr double kNameShare = 2;         // times the width of its name, something is large
constexpr double kNameAway = 3;          // window units from the edge of the window, at least
constexpr std::size_t kMostNames = 60;
constexpr std::size_t kMostNamesTried = 10 * kMostNames;  // many have no room
constexpr double kDetailZoom = 0.3;  // below it arcs that are seen better from near are left out
constexpr double kShortestLine = 6;  // window units: what such a right-angled arc's lines measure at least
constexpr double kVeryFarZoom = 0.1, kShortestVeryFar = 40;  // the same where thousands are in view
constexpr double kStubHead = 0.6;                            // times a usual arrow head
constexpr double kFarZoom = 0.4;        // below it arcs are paler, so as not to hide the nodes
constexpr double kCountZoom = 0.8;      // of the numbers of stubs that are not drawn, against other texts
constexpr double kFoldHandleReach = 6;  // window units to each side
constexpr double kBlockMargin = 4, kBlockRim = 2;  // plane units around a block, and for each in it
constexpr std::uint32_t kMostRims = 2;
constexpr double kLeastBlock = 12;        // window units that a block is wide and high at least to be shaded
constexpr std::uint32_t kMostDepths = 8;  // that are shaded below those that the window lies in
constexpr double kShade = 0.12;           // of the arcs' colour in a shaded block
constexpr double kHandleAway = 16;        // window units from the node to the handle of an arc

/// Paints one frame of one content.
class Painting {
 public:
  Painting(Surface& surface, const Content& content, const Frame& frame, const Manner& manner)
      : surface_(surface),
        drawing_(content.drawing),
        looks_(content.looks),
        arcLabels_(content.arcLabels),
        inks_(content.inks),
        offsets_(content.offsets),
        frame_(frame),
        manner_(manner),
        dims_(manner.neighbourhood && !drawing_.selectedNodes().empty()) {}

  void paint() {
    surface_.begin(frame_, inks_.background);
    if (manner_.patchesOnly) {
      drawPatches(nodesInView());
      return;
    }
    shadeBlocks();
    surface_.setTextZoom(std::max(frame_.zoom, kLeastTextZoom));
    drawArcs();
    if (showsText()) drawUndrawn();
    drawNodes();
    if (!showsText()) drawNames();
    if (manner_.handles) drawHandles();
  }

 private:
  bool showsText() const { return frame_.zoom >= kTextZoom; }
  bool selected(NodeId node) const { return manner_.selection && drawing_.nodeSelected(node); }
  bool isOfSelected(ArcId arc) const {
    return drawing_.nodeSelected(drawing_.drawnFrom(arc)) || drawing_.nodeSelected(drawing_.drawnTo(arc));
  }
  bool isPale(NodeId node) const {
    if (!dims_ || drawing_.nodeSelected(node)) return false;
    bool neighbour = false;
    drawing_.visitDrawnArcsOf(node, [&](ArcId arc) { neighbour = neighbour || isOfSelected(arc); });
    return !neighbour;
  }
  /// What becomes of colours where a node is pale.
  Color paleBox(Color tint) const { return surface_.anyColor() ? halfway(tint) : inks_.background; }
  Color paleInk(Color ink) const { return surface_.anyColor() ? halfway(ink) : inks_.farArc; }
  Color halfway(Color color) const { return mixed(color, inks_.background, 0.5); }
  /// @param share  of the second one, 0 to 1.
  static Color mixed(Color a, Color b, double share) {
    const auto part = [=](std::uint16_t of, std::uint16_t other) {
      return static_cast<std::uint16_t>(std::lround(of + share * (other - of)));
    };
    return {part(a.red, b.red), part(a.green, b.green), part(a.blue, b.blue)};
  }

  /// Where blocks end together, the edges of the outer ones are seen, too.
  static double blockMargin(const Block& block) {
    return kBlockMargin + kBlockRim * std::min(block.height, kMostRims);
  }

  /// Shades every other depth of blocks, so that one sees what is in which.
  void shadeBlocks() {
    if (!surface_.anyColor()) return;
    const Color shades[] = {inks_.background, mixed(inks_.background, inks_.arc, kShade)};
    const SgRectangle window = frame_.window();
    std::vector<SgRectangle> boxes;  // of one depth
    std::uint32_t depth = 0, end = std::numeric_limits<std::uint32_t>::max();
    bool shaded = false;
    const auto fill = [&] {
      shaded = shaded || depth % 2 == 1;
      if (shaded) surface_.fillBoxes(boxes, shades[depth % 2]);
      boxes.clear();
    };
    for (const Block& block : drawing_.blocks()) {
      const SgRectangle box = frame_.toWindow(block.box.grownBy(blockMargin(block)));
      if (!box.touches(window) || std::min(box.width, box.height) < kLeastBlock) continue;
      const bool around = united(box, window) == box;
      if (around) {
        boxes.clear();  // nothing is seen of them
      } else {
        end = std::min(end, block.depth + kMostDepths);
        if (block.depth >= end) break;
        if (block.depth != depth) fill();
      }
      depth = block.depth;
      boxes.push_back(box);
    }
    fill();
  }

  ArcDetail arcDetail() const {
    ArcDetail detail = picture::arcDetail(frame_);
    if (!manner_.partialArcs) detail.longest = std::numeric_limits<double>::infinity();
    return detail;
  }

  void drawArcs() {
    const double headLength = frame_.zoom < kOutlineZoom ? 0 : std::clamp(9 * frame_.zoom, 4.0, 14.0);
    ArcBatch plain(frame_, headLength), near(frame_, headLength), selected(frame_, headLength);
    const ArcDetail detail = arcDetail();
    std::vector<std::pair<SgPoint, const std::string*>> labels;
    visitArcsInView([&](ArcId arc) {
      const bool square = drawing_.isSquare(arc);
      const double shortest = square && frame_.zoom < kDetailZoom ? shortestLine() : 0;
      const double head = square ? 0 : drawing_.inStubs(arc, detail) ? kStubHead : 1;
      ArcBatch& batch = manner_.selection && drawing_.arcSelected(arc) ? selected
                        : dims_ && isOfSelected(arc)                   ? near
                                                                       : plain;
      drawing_.visitPieces(arc, detail, [&](std::span<const SgPoint> piece, bool reachesChild) {
        const std::vector<SgPoint> gliding = moved(arc, piece);
        batch.add(gliding.empty() ? piece : gliding, reachesChild ? head : 0, shortest);
      });
      if (arcLabels_.empty() || !showsText()) return;
      if (const auto label = arcLabels_.find(arc); label != arcLabels_.end())
        labels.emplace_back(frame_.toWindow(pathPoint(drawing_.path(arc), 0.5)), &label->second);
    });
    plain.draw(surface_, dims_ || frame_.zoom < kFarZoom ? inks_.farArc : inks_.arc, 0);
    near.draw(surface_, inks_.selection, 0);
    selected.draw(surface_, inks_.selection, 3);
    for (const auto& [middle, label] : labels) {
      const double width = surface_.textWidth(*label) + 4, height = surface_.textHeight();
      const SgRectangle box{middle.x - width / 2, middle.y - height / 2, width, height};
      surface_.fillBoxes({&box, 1}, inks_.background);
      surface_.drawText(middle, *label, inks_.text);
    }
  }

  /// Says how many arcs are not drawn: of those that lead to a node above its right corner, of those that
  /// start there below.
  void drawUndrawn() {
    surface_.setTextZoom(kCountZoom * std::max(frame_.zoom, kLeastTextZoom));
    const double height = surface_.textHeight();
    for (const NodeId node : nodesInView()) {
      const bool whole = selected(node) && drawing_.countFolded(node) == 0;
      const Drawing::Undrawn stubs = whole ? Drawing::Undrawn{} : drawing_.undrawnStubs(node, arcDetail());
      const Drawing::Undrawn hidden = drawing_.hiddenArcs(node);
      const SgRectangle box = frame_.toWindow(boxOf(node));
      const auto say = [&](std::uint32_t count, double y) {
        if (count == 0) return;
        const std::string text = "+" + std::to_string(count);
        surface_.drawText({box.right() - surface_.textWidth(text) / 2, y}, text, inks_.arc);
      };
      say(stubs.in + hidden.in, box.y - height / 2);
      say(stubs.out + hidden.out, box.bottom() + height / 2);
    }
    surface_.setTextZoom(std::max(frame_.zoom, kLeastTextZoom));
  }

  double shortestLine() const { return frame_.zoom < kVeryFarZoom ? kShortestVeryFar : kShortestLine; }

  /// In the same order at every repaint, the order in which nodeAt sees them.
  std::vector<NodeId> nodesInView() const {
    std::vector<NodeId> nodes;
    drawing_.visitNodes(frame_.visible(), [&](NodeId node) { nodes.push_back(node); });
    if (offsets_)
      for (const auto& [node, offset] : *offsets_)
        if (drawing_.shown(node)) nodes.push_back(node);
    sortOnce(nodes);
    return nodes;
  }

  template <class Visit>
  void visitArcsInView(Visit&& visit) const {
    const SgRectangle area = frame_.visible().grownBy(20);
    if (!offsets_) {
      drawing_.visitArcs(area, visit, arcDetail());
      return;
    }
    std::vector<ArcId> arcs;
    drawing_.visitArcs(
        area, [&](ArcId arc) { arcs.push_back(arc); }, arcDetail());
    for (const auto& [node, offset] : *offsets_)
      drawing_.visitDrawnArcsOf(node, [&](ArcId arc) {
        if (drawing_.arcShown(arc)) arcs.push_back(arc);
      });
    sortOnce(arcs);
    std::ranges::for_each(arcs, visit);
  }

  /// In ascending order, each once.
  static void sortOnce(std::vector<std::uint32_t>& ids) {
    std::ranges::sort(ids);
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  }

  SgPoint offsetOf(NodeId node) const {
    const auto offset = offsets_->find(node);
    return offset == offsets_->end() ? SgPoint{} : offset->second;
  }

  SgRectangle boxOf(NodeId node) const {
    SgRectangle box = drawing_.box(node);
    if (!offsets_) return box;
    const SgPoint offset = offsetOf(node);
    box.x += offset.x;
    box.y += offset.y;
    return box;
  }

  /// A piece of an arc whose nodes are on their way: each point goes with the end that it is near to. Empty
  /// where they are not.
  std::vector<SgPoint> moved(ArcId arc, std::span<const SgPoint> piece) const {
    if (!offsets_ || piece.size() < 2) return {};
    const SgPoint from = offsetOf(drawing_.drawnFrom(arc)), to = offsetOf(drawing_.drawnTo(arc));
    if (from == SgPoint{} && to == SgPoint{}) return {};
    std::vector<SgPoint> moved(piece.begin(), piece.end());
    for (std::size_t i = 0; i < moved.size(); ++i) {
      const double part = static_cast<double>(i) / static_cast<double>(moved.size() - 1);
      moved[i].x += from.x + part * (to.x - from.x);
      moved[i].y += from.y + part * (to.y - from.y);
    }
    return moved;
  }

  void drawNodes() {
    const std::vector<NodeId> nodes = nodesInView();
    if (frame_.zoom < kOutlineZoom) {
      drawPatches(nodes);
      return;
    }
    for (const NodeId node : nodes) {
      const SgRectangle box = frame_.toWindow(boxOf(node));
      const bool pale = isPale(node);
      const Color tint = looks_[node].tint, ink = textOn(tint);
      surface_.fillInside(box, pale ? paleBox(tint) : tint);
      drawContents(node, box, pale ? paleInk(ink) : ink);
      if (selected(node))
        surface_.outlineBox(box, inks_.selection, 2);
      else
        surface_.outlineBox(box, pale ? paleInk(inks_.border) : inks_.border, 1);
      if (manner_.selection && drawing_.countFolded(node) > 0)
        drawFoldHandle(surface_, foldHandle(box, frame_), true, {inks_.handle, inks_.border, inks_.text});
    }
  }

  /// Nodes that are so many that their order doesn't matter: all of one colour at once.
  void drawPatches(const std::vector<NodeId>& nodes) {
    std::map<Color, std::vector<SgRectangle>> boxes;
    for (const NodeId node : nodes) {
      const Color tint = farTint(looks_[node].tint);
      const Color color = selected(node) ? inks_.selection : isPale(node) ? paleBox(tint) : tint;
      boxes[color].push_back(frame_.toWindow(boxOf(node)));
    }
    for (const auto& [tint, ofTint] : boxes) surface_.fillBoxes(ofTint, tint);
  }

  void drawContents(NodeId node, const SgRectangle& box, Color ink) {
    const NodeLook& look = looks_[node];
    SgRectangle lines = box;
    if (look.hasPicture()) {
      const double width = look.pictureWidth * frame_.zoom, height = look.pictureHeight * frame_.zoom;
      const double above = kPicturePadding * frame_.zoom;
      surface_.drawPicture(node, {box.x + std::floor((box.width - width) / 2), box.y + above, width, height},
                           ink, look.tint);
      lines.y += above + height;
      lines.height -= above + height;
    }
    if (!showsText()) return;
    if (look.title.empty()) {
      drawLabel(lines, look.label, ink);
    } else {
      const double half = lines.height / 2;
      drawLabel({lines.x, lines.y + half * kLineInset, lines.width, half}, look.label, ink);
      drawLabel({lines.x, lines.y + half * (1 - kLineInset), lines.width, half}, look.title, ink);
    }
  }

  /// Draws a text in a box, with an ellipsis for what it has no room for.
  void drawLabel(const SgRectangle& box, std::string_view text, Color color) {
    const double room = box.width - (frame_.zoom < kLeastTextZoom ? 2 : 4);
    if (surface_.textWidth(text) <= room) {
      surface_.drawText(box.middle(), text, color);
      return;
    }
    const auto shortened = [&](std::size_t size) { return std::string(beginning(text, size)) + "\u2026"; };
    std::size_t fits = 0;
    for (std::size_t step = std::bit_floor(text.size()); step > 0; step /= 2)
      if (fits + step < text.size() && surface_.textWidth(shortened(fits + step)) <= room) fits += step;
    if (fits > 0) surface_.drawText(box.middle(), shortened(fits), color);
  }

  /// Names the selected nodes, so that one sees what was found, and the nodes that stand at the head of the
  /// largest areas, so that one knows where one is.
  void drawNames() {
    struct Name {
      double area, width;  // of what the node and its children cover
      NodeId node;
    };
    std::vector<Name> names;
    drawing_.visitNodes(frame_.visible(), [&](NodeId node) {
      SgRectangle block = drawing_.box(node);
      drawing_.visitChildren(node, [&](NodeId child) { block = united(block, drawing_.box(child)); });
      if (block != drawing_.box(node)) names.push_back({block.width * block.height, block.width, node});
    });
    for (const Block& block : drawing_.blocks())
      if (drawing_.box(block.node).touches(frame_.visible()))
        names.push_back({block.box.width * block.box.height, block.box.width, block.node});
    const auto larger = [](const Name& a, const Name& b) {
      return a.area != b.area ? a.area > b.area : a.node < b.node;
    };
    const auto end = names.begin() + static_cast<std::ptrdiff_t>(std::min(names.size(), kMostNamesTried));
    std::ranges::partial_sort(names, end, larger);
    surface_.setTextZoom(kNameZoom);
    std::vector<SgRectangle> taken;
    for (const NodeId node : fewSelectedInView()) drawName(node, nameBox(node), taken);
    std::size_t left = kMostNames;
    for (auto name = names.begin(); name != end && left > 0; ++name) {
      const SgRectangle box = nameBox(name->node);
      if (name->width * frame_.zoom >= kNameShare * box.width && drawName(name->node, box, taken)) --left;
    }
  }

  /// None where so many are selected that names would tell nothing.
  std::vector<NodeId> fewSelectedInView() const {
    std::vector<NodeId> found;
    if (!manner_.selection) return found;
    for (const auto& [order, node] : drawing_.selectedNodes()) {
      if (drawing_.shown(node) && boxOf(node).touches(frame_.visible())) found.push_back(node);
      if (found.size() > kMostNamesTried) return {};
    }
    return found;
  }

  SgRectangle nameBox(NodeId node) const {
    const SgPoint middle = frame_.toWindow(boxOf(node)).middle();
    const double width = surface_.textWidth(looks_[node].label) + 4, height = surface_.textHeight();
    return inFrame({middle.x - width / 2, middle.y - height / 2, width, height});
  }

  /// Draws the node's name in its box unless another one, of `taken`, is there. @returns whether it did
  bool drawName(NodeId node, const SgRectangle& box, std::vector<SgRectangle>& taken) {
    if (std::ranges::any_of(taken, [&](const SgRectangle& other) { return other.touches(box); }))
      return false;
    taken.push_back(box);
    const Color tint = looks_[node].tint;
    surface_.fillInside(box, tint);
    if (selected(node))
      surface_.outlineBox(box, inks_.selection, 2);
    else
      surface_.outlineBox(box, inks_.border, 1);
    surface_.drawText(box.middle(), looks_[node].label, textOn(tint));
    return true;
  }

  /// The box as near as it can be to where it is without being cut off.
  SgRectangle inFrame(SgRectangle box) const {
    const auto held = [](double place, double extent, double end) {
      return std::max(std::min(place, end - extent - kNameAway), kNameAway);
    };
    box.x = held(box.x, box.width, frame_.width);
    box.y = held(box.y, box.height, frame_.height);
    return box;
  }

  void drawHandles() {
    for (const auto& [order, arc] : drawing_.selectedArcs()) {
      if (!drawing_.arcShown(arc)) continue;
      const HandlePlaces places = handlePlaces(drawing_.path(arc), frame_);
      for (const SgPoint& place : {places.parent, places.child})
        surface_.drawHandle(place, inks_.handle, inks_.selection);
    }
  }

  /// The colour for text on a tint.
  Color textOn(Color tint) const {
    const double brightness = (0.3 * tint.red + 0.59 * tint.green + 0.11 * tint.blue) / 65535;
    return brightness < 0.45 ? kWhite : inks_.text;
  }

  /// The tint of a node that is too small for an outline: darker, where that costs no colour cell.
  Color farTint(Color tint) const {
    if (!surface_.anyColor()) return tint;
    const auto darker = [](std::uint16_t part) { return static_cast<std::uint16_t>(part * 7 / 10); };
    return {darker(tint.red), darker(tint.green), darker(tint.blue)};
  }

  Surface& surface_;
  const Drawing& drawing_;
  const std::vector<NodeLook>& looks_;
  const std::unordered_map<ArcId, std::string>& arcLabels_;
  const Inks& inks_;
  const Offsets* const offsets_;
  const Frame& frame_;
  const Manner& manner_;
  const bool dims_;  // what is no neighbour of a selected node is pale
};

}  // namespace

SgRectangle nodeBox(const NodeLook& look, double textWidth, double textHeight) {
  const double lines = (look.title.empty() ? 1 : 2) * textHeight;
  if (look.hasPicture())
    return {0, 0, std::max<double>(look.pictureWidth, textWidth) + 2 * kPicturePadding,
            look.pictureHeight + lines + 2 * kPicturePadding};
  return {0, 0, std::max(textWidth + 2 * kLabelPadding, kLeastNodeWidth), lines + 2 * kLabelMargin};
}

void ArcBatch::addLine(SgPoint a, SgPoint b) {
  if (clipLine(a, b, frame_.window().grownBy(2))) lines_.push_back({a, b});
}

void ArcBatch::addHead(SgPoint tip, SgPoint before, double size) {
  const double headLength = headLength_ * size;
  const double length = std::max(distance(before, tip), 1e-6);
  const double dx = (tip.x - before.x) / length * headLength, dy = (tip.y - before.y) / length * headLength;
  constexpr double kSlim = 0.4;
  heads_.push_back({tip,
                    {tip.x - dx - dy * kSlim, tip.y - dy + dx * kSlim},
                    {tip.x - dx + dy * kSlim, tip.y - dy - dx * kSlim}});
}

void ArcBatch::add(std::span<const SgPoint> path, double head, double shortest) {
  for (std::size_t i = 1; i < path.size(); ++i)
    if (shortest == 0 || distance(path[i - 1], path[i]) * frame_.zoom >= shortest)
      addLine(frame_.toWindow(path[i - 1]), frame_.toWindow(path[i]));
  if (path.size() < 2 || headLength_ == 0 || head == 0) return;
  const SgPoint tip = frame_.toWindow(path.back()), before = frame_.toWindow(path[path.size() - 2]);
  if (distance(before, tip) >= 1 && frame_.window().grownBy(22).contains(tip)) addHead(tip, before, head);
}

void ArcBatch::addStraight(SgPoint from, SgPoint to) {
  addLine(from, to);
  addHead(to, from, 1);
}

void ArcBatch::draw(Surface& surface, Color color, unsigned width) const {
  if (lines_.empty()) return;
  surface.drawLines(lines_, color, width);
  surface.fillTriangles(heads_, color);
}

ArcDetail arcDetail(const Frame& frame) {
  return {.longest = std::min(frame.width, frame.height) / frame.zoom, .stubs = frame.zoom >= kDetailZoom};
}

HandlePlaces handlePlaces(std::span<const SgPoint> path, const Frame& frame) {
  if (path.size() < 2) return {};
  const double away = kHandleAway / frame.zoom;
  return {frame.toWindow(along(path[0], path[1], away)),
          frame.toWindow(along(path[path.size() - 1], path[path.size() - 2], away))};
}

SgRectangle foldHandle(const SgRectangle& box, const Frame& frame) {
  if (frame.zoom < kTextZoom) return {};
  return SgRectangle{std::round(box.x), std::round(box.middle().y), 0, 0}.grownBy(kFoldHandleReach);
}

void drawFoldHandle(Surface& surface, const SgRectangle& handle, bool folded, const FoldHandleInks& inks) {
  if (handle.width == 0) return;
  surface.fillInside(handle, inks.inside);
  surface.outlineBox(handle, inks.edge, 1);
  constexpr double kAway = 3;
  const SgPoint middle = handle.middle();
  const Line across{{handle.x + kAway, middle.y}, {handle.right() - kAway, middle.y}};
  const Line down{{middle.x, handle.y + kAway}, {middle.x, handle.bottom() - kAway}};
  const Line both[] = {across, down};
  surface.drawLines(std::span(both, folded ? 2 : 1), inks.sign, 2);
}

void paint(Surface& surface, const Content& content, const Frame& frame, const Manner& manner) {
  Painting(surface, content, frame, manner).paint();
}

}  // namespace picture
