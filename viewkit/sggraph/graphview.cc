/// @file
/// Nodes, arcs, scroll bars and repainting of a graph widget.
#include "viewkit/sggraph/graphview.h"

#include <X11/cursorfont.h>
#include <Xm/ScrollBar.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <optional>
#include <utility>

#include "picture/utf8.h"

namespace sggraph {

namespace {

constexpr std::string_view kEditableMode = "Edit Mode";
constexpr int kScrollStep = 40;           // pixels per click on a scroll bar's arrow
constexpr unsigned long kFrameTime = 15;  // milliseconds between the frames of a glide

/// A label is shown in one line.
std::string oneLine(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  return text;
}

}  // namespace

GraphView::GraphView(SgGraphWidget widget)
    : widget_(widget), pixels_(display(), XtScreen(GraphView::widget()), widget->core.colormap) {
  const auto scrollBar = [&](const char* barName, unsigned char orientation) {
    std::array<Arg, 3> args{Arg{XmNorientation, orientation}, Arg{XmNtraversalOn, False},
                            Arg{XmNhighlightThickness, 0}};
    const Widget bar = XmCreateScrollBar(GraphView::widget(), name(barName), args.data(),
                                         static_cast<Cardinal>(args.size()));
    XtAddCallback(bar, XmNvalueChangedCallback, &scrollBarMoved, this);
    XtAddCallback(bar, XmNdragCallback, &scrollBarMoved, this);
    return bar;
  };
  horizontalBar_ = scrollBar("horizontalBar", XmHORIZONTAL);
  verticalBar_ = scrollBar("verticalBar", XmVERTICAL);
  XtManageChild(horizontalBar_);
  XtManageChild(verticalBar_);
  makeShelf();
  resourcesChanged(true, true);
  placeScrollBars();
}

GraphContents::~GraphContents() {
  for (const Widget widget : widgets_) {
    if (!widget) continue;
    SgNodePart& node = reinterpret_cast<SgNodeObject>(widget)->node;
    node.id = kNone;
    node.labelString = nullptr;
  }
}

GraphView::~GraphView() {
  endGlide();  // which is painted
  stopScrolling();
  unschedule();
  static_cast<void>(shelf_.release());  // the toolkit destroys the graph widget's children
}

void GraphView::makeShelf() {
  std::array<Arg, 2> args{Arg{XmNwidth, 1}, Arg{XmNheight, 1}};
  shelf_.reset(
      XtCreateWidget("shelf", sgShelfWidgetClass, widget(), args.data(), static_cast<Cardinal>(args.size())));
  // Only a realized shelf is told what is managed.
  if (XtIsRealized(widget())) XtRealizeWidget(shelf_.get());
}

// Nodes

Widget GraphView::makeNode(const char* nodeName, ArgList args, Cardinal count) {
  // All widgets of nodes share one name. The toolkit keeps every name for ever, and the table that it keeps
  // them in becomes quadratic for a million that differ in their numbers only.
  newName_ = nodeName;
  return XtCreateWidget("node", sgNodeObjectClass, shelf_.get(), args, count);
}

void GraphView::nodeMade(SgNodeObject node) {
  const NodeId id = drawing_.addNode();
  if (id >= looks_.size()) {
    looks_.resize(id + std::size_t{1});
    pictures_.resize(id + std::size_t{1});
    widgets_.resize(id + std::size_t{1});
    labels_.resize(id + std::size_t{1});
    names_.resize(id + std::size_t{1});
  }
  node->node.id = id;
  widgets_[id] = reinterpret_cast<Widget>(node);
  names_[id] = std::move(newName_);
  nodeLooksChanged(node);
}

void GraphView::nodeGone(SgNodeObject node) {
  const NodeId id = node->node.id;
  if (id == kNone || XtParent(reinterpret_cast<Widget>(node)) != shelf_.get()) return;
  glide_.forget(id);
  if (!arcLabels_.empty()) drawing_.visitArcsOf(id, [&](ArcId arc) { arcLabels_.erase(arc); });
  drawing_.removeNode(id);
  widgets_[id] = nullptr;
  looks_[id] = {};
  pictures_[id] = {};
  labels_[id].reset();
  names_[id].clear();
  node->node.id = kNone;
  node->node.labelString = nullptr;
  if (painter_) painter_->surface().dropPicture(id);
  contentsChanged();
  changed();
}

void GraphView::nodeLooksChanged(SgNodeObject node) {
  const NodeId id = node->node.id;
  NodeLook& look = looks_[id];
  // A string that was set just now is the caller's, to be copied; otherwise it is the copy made before. Where
  // none was set, the node shows its name, of which a string is made only for who asks: a million take long.
  if (node->node.labelString != labels_[id].get() || !labels_[id]) {
    labels_[id].reset(node->node.labelString ? XmStringCopy(node->node.labelString) : nullptr);
    node->node.labelString = labels_[id].get();
    setLabel(id);
  }
  look.tint = pixels_.colorOf(node->node.tint);
  if (pictures_[id].id != node->node.labelPixmap) {
    pictures_[id] = pixmapSource(display(), node->node.labelPixmap);
    look.pictureWidth = pictures_[id].width;
    look.pictureHeight = pictures_[id].height;
    if (painter_) painter_->surface().dropPicture(id);
  }
  measure(id);
  changed();
}

void GraphView::setLabel(NodeId node) {
  const std::size_t folded = drawing_.countFolded(node);
  looks_[node].label = oneLine(labels_[node] ? viewkit::plainText(labels_[node].get()) : names_[node]);
  if (folded > 0) looks_[node].label += " +" + std::to_string(folded);
}

void GraphView::measure(NodeId node) {
  const NodeLook& look = looks_[node];
  const double width = std::max(measuring_->width(look.label), measuring_->width(look.title));
  const SgRectangle box = nodeBox(look, width, measuring_->height());
  drawing_.resizeNode(node, box.width, box.height);
}

void GraphView::setTitle(NodeId node, const std::string& title) {
  constexpr std::size_t kMost = 28;  // bytes; more would make the graph too wide
  std::string shown(beginning(title, kMost));
  if (shown.size() < title.size()) shown += "\u2026";
  std::ranges::replace_if(
      shown, [](unsigned char c) { return c < ' '; }, ' ');
  if (looks_[node].title == shown) return;
  looks_[node].title = std::move(shown);
  measure(node);
  changed();
}

void GraphView::managedChanged() {
  managedStale_ = true;
  changed();
}

void GraphView::moveNode(NodeId node, SgPoint corner) {
  drawing_.moveNode(node, corner);
  changed();
}

void GraphView::fold(std::span<const FoldedNode> folded) {
  std::vector<NodeId> faces;
  drawing_.visitFaces([&](NodeId face) { faces.push_back(face); });
  drawing_.unfoldAll();
  for (const auto& [node, into] : folded) {
    if (into == kNone) {
      drawing_.hideNode(node);
      continue;
    }
    if (drawing_.countFolded(into) == 0) faces.push_back(into);
    drawing_.foldNode(node, into);
  }
  for (const NodeId face : faces) {
    setLabel(face);
    measure(face);
  }
  changed();
}

std::optional<SgRectangle> GraphView::foldHandleOf(NodeId node) {
  bringUpToDate();
  const bool has =
      drawing_.shown(node) && (drawing_.countFolded(node) > 0 ||
                               (hoverNode_ == drawing_.stableNodeId(node) && drawing_.holdsAlone(node)));
  if (!has) return std::nullopt;
  const SgRectangle handle = foldHandle(viewport_.toWindow(drawing_.box(node)), viewport_.frame());
  return handle.width > 0 ? std::optional(handle) : std::nullopt;
}

GraphContents GraphView::takeContents() {
  endGlide();
  endGesture();
  lastClick_ = {};
  hoverNode_ = hoverArc_ = 0;
  if (painter_) painter_->surface().dropPictures();
  return std::move(static_cast<GraphContents&>(*this));
}

SgKeptGraph GraphView::setAside() {
  SgKeptGraph kept(std::make_unique<GraphContents>(takeContents()).release());
  GraphContents fresh;
  fresh.drawing_ = kept->drawing_.emptied();
  fresh.viewport_.resize(kept->viewport_.width(), kept->viewport_.height());
  static_cast<GraphContents&>(*this) = std::move(fresh);
  makeShelf();
  contentsChanged();
  changed();
  return kept;
}

void GraphView::takeBack(SgKeptGraph kept) {
  const double width = viewport_.width(), height = viewport_.height();
  { const GraphContents gone = takeContents(); }
  static_cast<GraphContents&>(*this) = std::move(*kept);
  viewport_.resize(width, height);
  contentsChanged();
  managedChanged();
  viewChanged();
}

Pixel GraphView::tint(const char* tintName) {
  const auto known = tints_.find(tintName);
  if (known != tints_.end()) return known->second;
  std::string resource = std::string(tintName) + "Tint";
  Pixel pixel = widget_->graph.nodeColor;
  Pixel unset = pixel;
  XtResource row{resource.data(), name("Tint"), XmRPixel, sizeof(Pixel), 0, XmRPixel, &unset};
  XtGetApplicationResources(widget(), &pixel, &row, 1, nullptr, 0);
  return tints_.emplace(tintName, pixel).first->second;
}

// Arcs

ArcId GraphView::addArc(NodeId from, NodeId to, const std::string& label) {
  const ArcId arc = drawing_.addArc(from, to);
  if (!label.empty()) arcLabels_[arc] = label;
  contentsChanged();
  changed();
  return arc;
}

void GraphView::removeArc(ArcId arc) {
  arcLabels_.erase(arc);
  drawing_.removeArc(arc);
  contentsChanged();
  changed();
}

void GraphView::setBends(ArcId arc, std::span<const SgPoint> bends) {
  drawing_.setBends(arc, bends);
  changed();
}

void GraphView::setArcStyle(ArcId arc, ArcStyle style) {
  drawing_.setArcStyle(arc, style);
  changed();
}

NodeId GraphView::nodeAt(SgPoint window) {
  bringUpToDate();
  return drawing_.nodeAt(viewport_.toPlane(window));
}

ArcId GraphView::arcAt(SgPoint window) {
  bringUpToDate();
  return drawing_.arcAt(viewport_.toPlane(window), arcReach(), arcDetail(viewport_.frame()));
}

SgPoint GraphView::pickPoint(ArcId arc) {
  bringUpToDate();
  const ArcDetail detail = arcDetail(viewport_.frame());
  std::optional<SgPoint> free;
  drawing_.visitPieces(arc, detail, [&](std::span<const SgPoint> piece, bool) {
    for (const double fraction : {0.5, 0.4, 0.6, 0.3, 0.7, 0.2, 0.8, 0.95}) {
      const SgPoint place = pathPoint(piece, fraction);
      if (!free && drawing_.nodeAt(place) == kNone && drawing_.arcAt(place, arcReach(), detail) == arc)
        free = place;
    }
  });
  return viewport_.toWindow(free.value_or(pathPoint(drawing_.path(arc), 0.5)));
}

// Selection

void GraphView::selectNode(NodeId node) {
  drawing_.selectNode(node);
  contentsChanged();
  viewChanged();
}

void GraphView::selectArc(ArcId arc) {
  drawing_.selectArc(arc);
  contentsChanged();
  viewChanged();
}

void GraphView::deselectAll() {
  drawing_.deselectAll();
  contentsChanged();
  viewChanged();
}

void GraphView::makeCurrent(NodeId node) {
  current_ = drawing_.stableNodeId(node);
  overlayChanged();
}

// The view

void GraphView::bringUpToDate() {
  if (managedStale_ || !XtIsRealized(shelf_.get())) {
    managedStale_ = false;
    const CompositePart& shelf = reinterpret_cast<SgShelfWidget>(shelf_.get())->composite;
    for (Cardinal i = 0; i < shelf.num_children; ++i) {
      const auto* node = reinterpret_cast<SgNodeObject>(shelf.children[i]);
      if (node->node.id != kNone)
        drawing_.showNode(node->node.id, XtIsManaged(shelf.children[i]) && !node->object.being_destroyed);
    }
  }
  viewport_.setExtents(drawing_.extents());
}

const Viewport& GraphView::viewport() {
  bringUpToDate();
  return viewport_;
}

const SgRectangle& GraphView::extents() {
  bringUpToDate();
  return drawing_.extents();
}

void GraphView::changed() {
  mapStale_ = true;
  viewChanged();
}

void GraphView::viewChanged() {
  pictureStale_ = true;
  schedule();
}

void GraphView::overlayChanged() {
  overlayStale_ = true;
  schedule();
}

void GraphView::contentsChanged() {
  contentsStale_ = true;
  schedule();
}

void GraphView::schedule() {
  if (work_ == 0 && XtIsRealized(widget()))
    work_ = XtAppAddWorkProc(XtWidgetToApplicationContext(widget()), &updateWhenIdle, this);
}

void GraphView::unschedule() {
  if (work_ != 0) XtRemoveWorkProc(work_);
  work_ = 0;
}

void GraphView::beginMove() {
  if (moves_++ > 0 || !widget_->graph.glide || !painter_) return;
  bringUpToDate();
  glide_.note(drawing_, viewport_.frame());
}

void GraphView::endMove() {
  if (--moves_ > 0 || !widget_->graph.glide || !painter_) return;
  bringUpToDate();
  try {
    glide_.start(drawing_, viewport_.frame());
  } catch (const std::bad_alloc&) {
    glide_.stop();  // all are in their places at once
  }
  if (glide_.underWay()) viewChanged();
}

void GraphView::endGlide() {
  if (frame_ != 0) XtRemoveTimeOut(frame_);
  frame_ = 0;
  if (!glide_.underWay()) return;
  glide_.stop();
  viewChanged();
}

void GraphView::nextFrame(XtPointer self, XtIntervalId*) noexcept {
  auto* view = static_cast<GraphView*>(self);
  view->frame_ = 0;
  view->viewChanged();
}

Boolean GraphView::updateWhenIdle(XtPointer self) noexcept {
  auto* view = static_cast<GraphView*>(self);
  view->work_ = 0;
  view->update();
  return True;
}

void GraphView::update() {
  unschedule();
  if (!XtIsRealized(widget())) return;
  bringUpToDate();
  if (!painter_)
    painter_ =
        std::make_unique<Painter>(display(), XtWindow(widget()), renderTable_.get(), pixels_, pictures_);
  if (pictureStale_) {
    Content seen = content();
    if (glide_.underWay()) seen.offsets = &glide_.offsets();
    const bool gliding = glide_.underWay();
    painter_->paint(seen, viewport_.frame(),
                    {.selection = true,
                     .handles = editable() && !gliding,
                     .partialArcs = true,
                     .neighbourhood = widget_->graph.neighbourhood && !drawsOrMovesArc()});
    if (gliding && frame_ == 0)
      frame_ = XtAppAddTimeOut(XtWidgetToApplicationContext(widget()), kFrameTime, &nextFrame, this);
    setScrollBars();
  }
  if (pictureStale_ || overlayStale_) {
    // What is being dragged comes onto the map when it is dropped: a map of many nodes takes its time.
    const std::optional<Map> shown = map();
    if (shown && (mapStale_ || shown->frame != mapPainted_) && gesture_.kind != Gesture::Kind::MoveNodes) {
      painter_->paintMap(content(), shown->frame);
      mapPainted_ = shown->frame;
      mapStale_ = false;
    }
    pictureStale_ = overlayStale_ = false;
    painter_->paintOverlay(drawing_, viewport_.frame(), overlay(), overlayInks());
    painter_->show(0, 0, widget_->core.width, widget_->core.height);
  }
  if (std::exchange(contentsStale_, false)) {
    SgGraphCallbackStruct data{};
    data.reason = SgCR_CONTENTS;
    if (!call(&SgGraphPart::contentsCallback, data)) return;
  }
  const ViewState state{viewport_.zoom(), viewport_.visible(), drawing_.extents()};
  if (state == announced_) return;
  announced_ = state;
  SgGraphCallbackStruct data{};
  data.reason = SgCR_VIEW_CHANGED;
  call(&SgGraphPart::viewChangedCallback, data);
}

Content GraphView::content() {
  const SgGraphPart& graph = widget_->graph;
  return {drawing_,
          looks_,
          arcLabels_,
          {.background = pixels_.colorOf(widget_->core.background_pixel),
           .text = pixels_.colorOf(widget_->manager.foreground),
           .arc = pixels_.colorOf(graph.arcColor),
           .farArc = pixels_.colorOf(graph.farArcColor),
           .border = pixels_.colorOf(graph.nodeBorderColor),
           .selection = pixels_.colorOf(graph.selectionColor),
           .handle = pixels_.colorOf(graph.handleColor)}};
}

std::string GraphView::exportTo(const std::string& path, FileFormat format, bool viewOnly,
                                const std::string& title) {
  bringUpToDate();
  const Visual& visual = *DefaultVisualOfScreen(XtScreen(widget()));
  const Content shown = content();
  return exportPicture(
      path, format,
      {.content = shown,
       .part = viewOnly ? viewport_.frame() : wholeFrame(drawing_),
       .partialArcs = viewOnly,
       .font = measuring_->font(),
       .images = [&](NodeId node) { return imageOf(display(), pictures_[node], visual, pixels_); },
       .title = title});
}

OverlayInks GraphView::overlayInks() {
  const SgGraphPart& graph = widget_->graph;
  return {.text = pixels_.colorOf(widget_->manager.foreground),
          .border = pixels_.colorOf(graph.nodeBorderColor),
          .selection = pixels_.colorOf(graph.selectionColor),
          .hover = pixels_.colorOf(graph.hoverColor),
          .handle = pixels_.colorOf(graph.handleColor),
          .target = pixels_.colorOf(graph.targetColor),
          .refused = pixels_.colorOf(graph.refusedColor),
          .background = pixels_.colorOf(widget_->core.background_pixel),
          .focus = pixels_.colorOf(widget_->manager.highlight_color),
          .corner = pixels_.colorOf(verticalBar_->core.background_pixel)};
}

void GraphView::reveal(NodeId node) {
  changeViewport([&](Viewport&) { bringIntoView(node); });
}

void GraphView::zoom(double zoom) {
  changeViewport([&](Viewport& view) {
    const auto& chosen = drawing_.selectedNodes();
    const auto last = std::find_if(chosen.rbegin(), chosen.rend(), [&](const auto& entry) {
      return drawing_.shown(entry.second) && drawing_.box(entry.second).touches(view.visible());
    });
    if (last == chosen.rend()) {
      view.zoomAround(zoom, {view.width() / 2, view.height() / 2});
      return;
    }
    view.zoomAround(zoom, view.toWindow(drawing_.box(last->second).middle()));
    bringIntoView(last->second);
  });
}

void GraphView::bringIntoView(NodeId node) {
  const SgRectangle& box = drawing_.box(node);
  viewport_.reveal(box);
  const std::optional<Map> over = map();
  if (over && over->box.touches(viewport_.toWindow(box)))
    viewport_.scrollTo(box.middle(), {viewport_.width() / 2, viewport_.height() / 2});
}

std::optional<Map> GraphView::map() const {
  constexpr double kWidest = 220, kHighest = 150, kLeast = 16, kAway = 10;  // pixels
  constexpr double kShare = 0.3;                                            // of the window, at most
  const SgRectangle &all = drawing_.extents(), seen = viewport_.visible();
  const bool allSeen =
      all.x >= seen.x && all.y >= seen.y && all.right() <= seen.right() && all.bottom() <= seen.bottom();
  if (!widget_->graph.showOverview || allSeen) return std::nullopt;
  const double widest = std::min(kWidest, kShare * viewport_.width());
  const double highest = std::min(kHighest, kShare * viewport_.height());
  if (widest < 2 * kLeast || highest < 2 * kLeast) return std::nullopt;
  Map map;
  map.frame.zoom = std::min(widest / std::max(all.width, 1.0), highest / std::max(all.height, 1.0));
  map.frame.width = std::clamp(std::round(all.width * map.frame.zoom), kLeast, widest);
  map.frame.height = std::clamp(std::round(all.height * map.frame.zoom), kLeast, highest);
  const SgPoint middle = all.middle();
  map.frame.corner = {middle.x - map.frame.width / 2 / map.frame.zoom,
                      middle.y - map.frame.height / 2 / map.frame.zoom};
  map.box = {std::floor(viewport_.width() - map.frame.width - kAway),
             std::floor(viewport_.height() - map.frame.height - kAway), map.frame.width, map.frame.height};
  return map;
}

Overlay GraphView::overlay() {
  Overlay overlay;
  if (drawing_.extents() == SgRectangle{}) overlay.lines = emptyText_;
  if (editable()) overlay.mode = kEditableMode;
  overlay.map = map();
  overlay.focus = focused_;
  if (glide_.underWay()) return overlay;
  if (focused_) overlay.currentNode = drawing_.nodeOf(current_);
  if (overlay.currentNode != kNone && !drawing_.shown(overlay.currentNode)) overlay.currentNode = kNone;
  if (gesture_.kind == Gesture::Kind::Idle) {
    overlay.hoverNode = drawing_.nodeOf(hoverNode_);
    if (overlay.hoverNode != kNone && drawing_.countFolded(overlay.hoverNode) == 0 &&
        drawing_.holdsAlone(overlay.hoverNode))
      overlay.foldable = overlay.hoverNode;
    overlay.hoverArc = drawing_.arcOf(hoverArc_);
    return overlay;
  }
  if (!gesture_.dragging) return overlay;
  if (gesture_.kind == Gesture::Kind::DrawArc && drawing_.nodeOf(gesture_.node) != kNone) {
    overlay.rubberLine = true;
    overlay.rubberParent = viewport_.toWindow(drawing_.box(drawing_.nodeOf(gesture_.node)).middle());
    overlay.rubberChild = gesture_.pointer;
  }
  if (const ArcId arc = drawing_.arcOf(gesture_.arc);
      gesture_.kind == Gesture::Kind::MoveArcEnd && arc != kNone) {
    const NodeId stays = gesture_.childEnd ? drawing_.from(arc) : drawing_.to(arc);
    const SgPoint middle = viewport_.toWindow(drawing_.box(stays).middle());
    overlay.rubberLine = true;
    overlay.rubberParent = gesture_.childEnd ? middle : gesture_.pointer;
    overlay.rubberChild = gesture_.childEnd ? gesture_.pointer : middle;
  }
  overlay.target = drawing_.nodeOf(gesture_.target);
  if (!drawsOrMovesArc() || !widget_->graph.mayLinkCallback) return overlay;
  overlay.targetRefused = overlay.target != kNone && !allows(overlay.target);
  drawing_.visitNodes(viewport_.visible(), [&](NodeId node) {
    if (drawing_.shown(node)) (allows(node) ? overlay.allowed : overlay.dimmed).push_back(node);
  });
  return overlay;
}

// What Xt asks for

void GraphView::placeScrollBars() {
  const int width = widget_->core.width, height = widget_->core.height;
  const int across = reinterpret_cast<RectObj>(verticalBar_)->rectangle.width;
  const int down = reinterpret_cast<RectObj>(horizontalBar_)->rectangle.height;
  const int viewWidth = std::max(width - across, 1), viewHeight = std::max(height - down, 1);
  const auto place = [](Widget bar, int x, int y, int w, int h) {
    XtConfigureWidget(bar, static_cast<Position>(x), static_cast<Position>(y), static_cast<Dimension>(w),
                      static_cast<Dimension>(h), 0);
  };
  place(verticalBar_, viewWidth, 0, across, viewHeight);
  place(horizontalBar_, 0, viewHeight, viewWidth, down);
  viewport_.resize(viewWidth, viewHeight);
}

void GraphView::setScrollBars() {
  const auto set = [&](Widget bar, const ScrollRange& range, ScrollRange& shown) {
    if (range == shown) return;
    shown = range;
    const int step = std::clamp(static_cast<int>(kScrollStep / viewport_.zoom() / range.unit), 1,
                                std::max(range.maximum, 1));
    std::array<Arg, 6> args{Arg{XmNminimum, 0},
                            Arg{XmNmaximum, range.maximum},
                            Arg{XmNsliderSize, range.slider},
                            Arg{XmNvalue, range.value},
                            Arg{XmNincrement, step},
                            Arg{XmNpageIncrement, std::max(range.slider * 9 / 10, 1)}};
    XtSetValues(bar, args.data(), static_cast<Cardinal>(args.size()));
  };
  set(horizontalBar_, viewport_.horizontal(), horizontalShown_);
  set(verticalBar_, viewport_.vertical(), verticalShown_);
}

void GraphView::scrollBarMoved(Widget scrollBar, XtPointer self, XtPointer data) noexcept {
  static_cast<GraphView*>(self)->scrolled(scrollBar, static_cast<XmScrollBarCallbackStruct*>(data)->value);
}

void GraphView::scrolled(Widget scrollBar, int value) {
  changeViewport([&](Viewport& view) {
    if (scrollBar == horizontalBar_)
      view.setHorizontal(value);
    else
      view.setVertical(value);
  });
}

void GraphView::resized() {
  endGlide();
  placeScrollBars();
  changed();
}

void GraphView::exposed(const XEvent& event) {
  if (pictureStale_ || overlayStale_ || !painter_) {
    update();
    return;
  }
  const XExposeEvent& area = event.xexpose;
  painter_->show(area.x, area.y, static_cast<unsigned>(area.width), static_cast<unsigned>(area.height));
}

void GraphView::resourcesChanged(bool fonts, bool ports) {
  SgGraphPart& graph = widget_->graph;
  if (fonts) {
    const XmRenderTable table =
        graph.renderTable ? graph.renderTable : XmeGetDefaultRenderTable(widget(), XmLABEL_FONTLIST);
    RenderTable copy(XmRenderTableCopy(table, nullptr, 0));
    // The fonts use the old table until they are made from the new one.
    measuring_ = std::make_unique<TextFont>(XtScreen(widget()), copy.get());
    if (painter_) painter_->surface().setFonts(copy.get());
    renderTable_ = std::move(copy);
    graph.renderTable = renderTable_.get();
    for (NodeId node = 0; node < widgets_.size(); ++node)
      if (widgets_[node]) measure(node);
  }
  keepTexts();
  if (ports) drawing_.setPorts(graph.arcDirection == SgARC_DOWN ? Ports::Down : Ports::Any);
  if (!graph.editableArcs &&
      (gesture_.kind == Gesture::Kind::DrawArc || gesture_.kind == Gesture::Kind::MoveArcEnd))
    giveUp();
  changed();
}

void GraphView::keepTexts() {
  String& text = widget_->graph.emptyText;
  if (text == emptyText_.c_str()) return;
  emptyText_ = text ? text : "";
  text = emptyText_.data();
}

bool GraphView::call(XtCallbackList SgGraphPart::*list, SgGraphCallbackStruct& data) {
  const std::weak_ptr<const bool> alive = alive_;
  XtCallCallbackList(widget(), widget_->graph.*list, &data);
  return !alive.expired() && !widget_->core.being_destroyed;
}

}  // namespace sggraph
