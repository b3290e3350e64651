/// @file
/// Building, finding and laying out a graph.
#include "viewkit/vkgraph.h"

#include <Xm/Form.h>
#include <Xm/PanedW.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "graphlayout/folding.h"
#include "graphlayout/layout.h"
#include "graphlayout/rearrange.h"
#include "picture/export.h"
#include "viewkit/forward.h"
#include "viewkit/graphfolds.h"
#include "viewkit/graphstrip.h"
#include "viewkit/vkmenu.h"

namespace {

bool isSameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}
bool isSame(std::string_view a, std::string_view b) { return std::ranges::equal(a, b, isSameLetter); }
bool begins(std::string_view text, std::string_view part) {
  return isSame(text.substr(0, part.size()), part);
}
bool hasPart(std::string_view text, std::string_view part) {
  return part.empty() || std::ranges::search(text, part, isSameLetter).begin() != text.end();
}

/// How well a text can mean a node: 0 is best. Nothing: it doesn't mean it.
constexpr std::size_t kMeanings = 4;
std::optional<std::size_t> meaningOf(const VkNode& node, std::string_view text) {
  if (isSame(node.name(), text)) return 0;
  if (begins(node.name(), text) || begins(node.label(), text)) return 1;
  const std::string title = node.title();
  if (!title.empty() && begins(title, text)) return 2;
  if (hasPart(node.name(), text) || hasPart(node.label(), text) || hasPart(title, text)) return 3;
  return std::nullopt;
}

/// While it lives, nodes are moved, to be seen gliding to their places afterwards.
class Moving {
 public:
  explicit Moving(Widget graph) : graph_(graph) { SgGraphBeginMove(graph); }
  ~Moving() { SgGraphEndMove(graph_); }
  Moving(const Moving&) = delete;
  Moving& operator=(const Moving&) = delete;

 private:
  Widget graph_;
};

}  // namespace

const char* const VkGraph::nodesMovedCallback = "nodesMovedCallback";
const char* const VkGraph::menuCallback = "menuCallback";
const char* const VkGraph::keyCallback = "keyCallback";

VkGraphContents::VkGraphContents() : folds_(std::make_unique<GraphFolds>()) {}
VkGraphContents::~VkGraphContents() = default;
VkGraphContents::VkGraphContents(VkGraphContents&&) noexcept = default;
VkGraphContents& VkGraphContents::operator=(VkGraphContents&&) noexcept = default;

VkGraph::VkGraph(const char* name, Widget parent) : VkComponent(name) {
  // A form that never asks for another size itself gives the strip the height it asks for.
  const Widget form =
      XtVaCreateManagedWidget(name, xmFormWidgetClass, parent, XmNresizePolicy, XmRESIZE_NONE, nullptr);
  setBaseWidget(form);
  split_ =
      XtVaCreateManagedWidget("split", xmPanedWindowWidgetClass, form, XmNorientation, XmHORIZONTAL, nullptr);
  constexpr int kLeast = 100, kMost = 32767;  // pixels; by itself a pane has 1,000 at most
  graph_ = SgCreateGraph(split_, "canvas", nullptr, 0);
  XtVaSetValues(graph_, XmNpaneMinimum, kLeast, XmNpaneMaximum, kMost, nullptr);
  XtAddCallback(graph_, SgNchangedCallback, &changedCallback, this);
  XtAddCallback(graph_, SgNnodesMovedCallback, &movedCallback, this);
  XtAddCallback(graph_, SgNfoldCallback, foldCallback, this);
  XtAddCallback(graph_, SgNmenuCallback, menuCallbackProc, this);
  XtAddCallback(graph_, SgNkeyCallback, keyCallbackProc, this);
  XtAddCallback(graph_, XtNdestroyCallback, &graphDestroyedCallback, this);
  strip_ = std::make_unique<GraphStrip>("strip", form, *this);
  XtVaSetValues(strip_->baseWidget(), XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM,
                XmNbottomAttachment, XmATTACH_FORM, nullptr);
  XtVaSetValues(split_, XmNtopAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                XmATTACH_FORM, XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget, strip_->baseWidget(),
                nullptr);
  strip_->show();
  XtManageChild(graph_);
}

VkGraph::~VkGraph() {
  clearAll();
  if (graph_) XtRemoveCallback(graph_, XtNdestroyCallback, &graphDestroyedCallback, this);
}

void VkGraph::graphDestroyedCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkGraph::graphDestroyed>::call(widget, self, data);
}

void VkGraph::graphDestroyed() { graph_ = nullptr; }

// Building

void VkGraph::keepWaiting(std::unique_ptr<VkNode> node) {
  const VkNode* key = node.get();
  waiting_.emplace(key, std::move(node));
}

void VkGraph::enter(std::unique_ptr<VkNode> node) {
  node->graph_ = this;
  node->number_ = nodes_.size();
  byName_[node->name()].add(node.get());
  layoutIsDue_ = true;
  folds_->showAlso(node.get());
  worked_ = node.get();
  noteEntry(node.get());
  nodes_.push_back(std::move(node));
  if (!graph_) return;
  nodes_.back()->build(graph_);
  if (nodes_.back()->placed_) SgGraphSetNodePosition(nodes_.back()->baseWidget(), nodes_.back()->corner_);
  if (showsTitles_) SgGraphSetNodeTitle(nodes_.back()->baseWidget(), nodes_.back()->title());
}

bool VkGraph::admit(VkNode* node) {
  if (!node) return false;
  if (const auto waiting = waiting_.find(node); waiting != waiting_.end()) {
    std::unique_ptr<VkNode> entering = std::move(waiting->second);
    waiting_.erase(waiting);
    if (withdrawn(node->name()) == node) withdrawn_.erase(node->name());
    enter(std::move(entering));
  }
  return node->graph() == this;
}

VkNode* VkGraph::add(std::unique_ptr<VkNode> node) {
  if (!node) return nullptr;
  enter(std::move(node));
  return nodes_.back().get();
}

void VkGraph::add(VkNode* node) { admit(node); }

void VkGraph::add(VkNode* parent, VkNode* child, const char* attribute) {
  if (!admit(parent) || !admit(child)) return;
  link(parent, child);
  worked_ = parent;
  layoutIsDue_ = true;
  if (!graph_) return;
  noteBends({parent, child});
  const SgArc arc = SgGraphAddArc(graph_, parent->baseWidget(), child->baseWidget(), attribute);
  SgGraphSetArcStyle(graph_, arc, styleOf(arrangement(), {}));
  newArcs_.insert(arc);
  // What a person links is to be seen.
  uncover({parent, child});
  for (const VkNode* const node : {parent, child}) folds_->showAlso(node);
  expand(parent);
}

void VkGraph::link(VkNode* parent, VkNode* child) {
  parent->children_.add(child);
  child->parents_.add(parent);
}

void VkGraph::unlink(VkNode* parent, VkNode* child) {
  parent->removeChild(child);
  child->removeParent(parent);
}

void VkGraph::remove(VkNode* parent, VkNode* child) {
  if (!parent || !child || parent->graph() != this || child->graph() != this) return;
  unlink(parent, child);
  layoutIsDue_ = true;
  if (!graph_) return;
  noteBends({parent, child});
  SgGraphRemoveArcBetweenNodes(graph_, parent->baseWidget(), child->baseWidget());
}

void VkGraph::addBlock(std::span<VkNode* const> nodes) {
  constexpr double kAspect = 1.6, kGap = 24, kAway = 80;  // plane units
  if (!graph_ || nodes.empty()) return;
  VkNode* const worked = worked_;
  const bool wasDue = layoutIsDue_;
  inOpenPicture(false, [&] {
    for (VkNode* const node : nodes) add(node);
    const SgRectangle others = SgGraphExtents(graph_);
    unhide({nodes.begin(), nodes.end()});
    double area = 0;
    for (const VkNode* const node : nodes) {
      const SgRectangle box = SgGraphNodeBounds(node->baseWidget());
      area += (box.width + kGap) * (box.height + kGap);
    }
    const double right = others.x + std::sqrt(area * kAspect);
    SgPoint next{others.x, others.bottom() + kAway};
    double below = next.y;
    std::string_view tint = nodes.front()->tintName();
    for (VkNode* const node : nodes) {
      const SgRectangle box = SgGraphNodeBounds(node->baseWidget());
      if (node->tintName() != tint || (next.x > others.x && next.x + box.width > right))
        next = {others.x, below};
      tint = node->tintName();
      SgGraphSetNodePosition(node->baseWidget(), next);
      node->placed_ = true;
      next.x += box.width + kGap;
      below = std::max(below, next.y + box.height + kGap);
    }
  });
  worked_ = worked;
  layoutIsDue_ = wasDue;
}

void VkGraph::withdraw(VkNode* node) {
  if (!graph_ || !node || node->graph() != this || node->nParents() + node->nChildren() > 0) return;
  const SgRectangle bounds = SgGraphNodeBounds(node->baseWidget());
  node->corner_ = folds_->placeOf(node).value_or(SgPoint{bounds.x, bounds.y});
  const bool wasDue = layoutIsDue_;
  withdrawn_[node->name()] = node;
  keepWaiting(take(node));
  layoutIsDue_ = wasDue;
}

VkNode* VkGraph::withdrawn(std::string_view name) const {
  const auto found = withdrawn_.find(name);
  return found == withdrawn_.end() ? nullptr : found->second;
}

void VkGraph::remove(VkNode* node) { take(node); }

std::unique_ptr<VkNode> VkGraph::take(VkNode* node) {
  if (!node || node->graph() != this) return nullptr;
  for (int i = 0; i < node->nParents(); ++i) node->parent(i)->removeChild(node);
  for (int i = 0; i < node->nChildren(); ++i) node->child(i)->removeParent(node);
  if (const Widget widget = node->baseWidget()) {
    node->setBaseWidget(nullptr);
    SgGraphRemoveNode(widget);
  }
  const auto name = byName_.find(std::string_view(node->name()));
  name->second.remove(node);
  if (name->second.empty()) byName_.erase(name);
  if (worked_ == node) worked_ = nullptr;
  folds_->forget(node);
  layoutIsDue_ = true;
  const std::size_t number = node->number_;
  std::swap(nodes_[number], nodes_.back());
  nodes_[number]->number_ = number;
  std::unique_ptr<VkNode> taken = std::move(nodes_.back());
  nodes_.pop_back();
  taken->graph_ = nullptr;
  return taken;
}

VkGraph::Kept VkGraph::setAside() {
  Kept kept;
  if (graph_) kept.toFind_ = strip_->putAside();
  // The widgets go all at once; one by one they would take quadratic time.
  if (graph_) kept.picture_ = SgGraphSetAside(graph_);
  std::swap(kept.contents_, static_cast<VkGraphContents&>(*this));
  asked_ = {};
  if (graph_) showHowMany();
  return kept;
}

void VkGraph::takeBack(Kept kept) {
  if (graph_) {
    SgGraphTakeBack(graph_, std::move(kept.picture_));
    strip_->takeBack(kept.toFind_);
  }
  std::swap(kept.contents_, static_cast<VkGraphContents&>(*this));
  if (graph_) showHowMany();
}

void VkGraph::changedCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkGraph::changed>::call(widget, self, data);
}

void VkGraph::changed(Widget, XtPointer data) {
  const auto& change = *static_cast<const SgGraphCallbackStruct*>(data);
  if (change.reason == SgCR_NEW_NODE) {
    auto node = std::make_unique<VkNode>(SgNodeName(change.node));
    XtVaSetValues(change.node, XmNuserData, node.get(), nullptr);
    node->setBaseWidget(change.node);
    node->placed_ = true;
    enter(std::move(node));
    return;
  }
  VkNode *oldParent = VkNode::of(change.oldParent), *oldChild = VkNode::of(change.oldChild);
  if (oldParent && oldChild) unlink(oldParent, oldChild);
  const bool moved = change.reason == SgCR_ARC_MOVED;
  VkNode* parent = VkNode::of(moved ? change.newParent : change.parent);
  VkNode* child = VkNode::of(moved ? change.newChild : change.child);
  if (parent && child) link(parent, child);
}

void VkGraph::movedCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkGraph::nodesMoved>::call(widget, self, data);
}

void VkGraph::nodesMoved(Widget, XtPointer data) {
  const auto& call = *static_cast<const SgGraphCallbackStruct*>(data);
  Moved moved;
  moved.before.compact = moved.after.compact = compact_;
  std::vector<GraphFolds::Moved::Node> nodes;
  for (const SgMovedNode& node : call.movedNodes)
    if (VkNode* const found = VkNode::of(node.node)) {
      const SgRectangle now = SgGraphNodeBounds(node.node);
      nodes.push_back({found, node.from, {now.x, now.y}});
    }
  GraphFolds::Moved open;
  if (folds_->areClosed()) {
    open = folds_->moved(graph_, nodes);
  } else {
    open.nodes = std::move(nodes);
    for (const SgStraightenedArc& arc : call.straightenedArcs) open.arcs.push_back({arc.arc, arc.bends, {}});
  }
  for (const auto& [node, before, after] : open.nodes) {
    moved.before.nodes.push_back({node, before, node->byHand_});
    moved.after.nodes.push_back({node, after, true});
    node->byHand_ = true;
  }
  for (const auto& [arc, before, after] : open.arcs) {
    Widget from = nullptr, to = nullptr;
    if (!SgGraphGetArcNodes(graph_, arc, &from, &to)) continue;
    const VkPlaces::Ends ends{VkNode::of(from), VkNode::of(to)};
    moved.before.arcs[ends].push_back(before);
    std::vector<VkPlaces::Bends>& bends = moved.after.arcs[ends];
    if (!after.empty()) bends.push_back(after);
  }
  callCallbacks(nodesMovedCallback, &moved);
}

// Finding

VkNode* VkGraph::find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second.at(0);
}

std::vector<VkNode*> VkGraph::findAll(std::string_view text) const {
  const std::size_t colon = text.find(':');
  const std::string_view kind = text.substr(0, colon == text.npos ? 0 : colon);
  const bool filters = !kind.empty() && std::ranges::any_of(nodes_, [&](const auto& node) {
    return isSame(node->tintName(), kind);
  });
  if (filters) text.remove_prefix(colon + 1);
  std::array<std::vector<VkNode*>, kMeanings> found;
  for (const auto& node : nodes_) {
    if (filters && !isSame(node->tintName(), kind)) continue;
    if (const auto meaning = meaningOf(*node, text)) found[*meaning].push_back(node.get());
  }
  std::vector<VkNode*> all;
  for (const auto& some : found) all.insert(all.end(), some.begin(), some.end());
  return all;
}

void VkGraph::setShowsTitles(bool on) {
  showsTitles_ = on;
  updateTitles();
}

void VkGraph::updateTitles() {
  if (!graph_) return;
  for (const auto& node : nodes_)
    SgGraphSetNodeTitle(node->baseWidget(), showsTitles_ ? node->title() : std::string());
}

void VkGraph::startFind() { strip_->startFind(); }

void VkGraph::choose(VkNodeChoice choice) { strip_->startChoice(std::move(choice)); }

void VkGraph::reveal(VkNode* node) {
  if (!node || node->graph() != this || !graph_) return;
  unfold({node});
  if (folds_->hides(node)) changeFolds(node, [&] { folds_->showGuest(node); });
  SgGraphClearSelection(graph_);
  SgGraphSelectNode(graph_, node->baseWidget());
  SgGraphRevealNode(graph_, node->baseWidget());
}

VkNode* VkGraph::current() const { return graph_ ? VkNode::of(SgGraphCurrentNode(graph_)) : nullptr; }

void VkGraph::keyPressed(SgGraphCallbackStruct& call) {
  if (call.event) callCallbacks(keyCallback, &call.event->xkey);
}

// Looking around

void VkGraph::zoomIn() { strip_->zoomIn(); }

void VkGraph::zoomOut() { strip_->zoomOut(); }

void VkGraph::fit() { SgGraphZoomToFit(graph_); }

void VkGraph::fitSelected() {
  std::vector<Widget> nodes = SgGraphGetSelectedNodes(graph_);
  for (const SgArc arc : SgGraphGetSelectedArcs(graph_)) {
    Widget from = nullptr, to = nullptr;
    if (SgGraphGetArcNodes(graph_, arc, &from, &to)) nodes.insert(nodes.end(), {from, to});
  }
  if (nodes.empty()) {
    fit();
    return;
  }
  SgRectangle all = SgGraphNodeBounds(nodes.front());
  for (const Widget node : nodes) all = picture::united(all, SgGraphNodeBounds(node));
  SgGraphZoomToBox(graph_, all);
}

void VkGraph::showTop() {
  if (const VkNode* const top = someSeen(nullptr)) SgGraphShowTop(graph_, top->baseWidget());
}

// Selecting

bool VkGraph::isSeen(const VkNode* node) const {
  return isDisplayed(node) && SgGraphNodeIsSeen(node->baseWidget());
}

VkNode* VkGraph::someSeen(VkNode* wish) const {
  if (wish && isSeen(seen(wish))) return seen(wish);
  const auto found = std::ranges::find_if(nodes_, [&](const auto& node) { return isSeen(node.get()); });
  return found == nodes_.end() ? nullptr : found->get();
}

void VkGraph::selectAll() {
  VkNode* const before = current();
  for (const auto& node : nodes_)
    if (isSeen(node.get())) SgGraphSelectNode(graph_, node->baseWidget());
  if (before) SgGraphSelectNode(graph_, before->baseWidget());
}

void VkGraph::selectKin(Kin kin) {
  VkNode* const before = current();
  const bool up = kin == Kin::Parents || kin == Kin::AllAbove;
  const bool all = kin == Kin::AllAbove || kin == Kin::AllBelow;
  std::vector<VkNode*> reached;
  for (const Widget node : SgGraphGetSelectedNodes(graph_)) reached.push_back(VkNode::of(node));
  std::unordered_set<const VkNode*> known(reached.begin(), reached.end());
  const std::size_t selected = reached.size();
  for (std::size_t i = 0; i < (all ? reached.size() : selected); ++i) {
    const VkNode* const node = reached[i];
    for (int number = 0; number < (up ? node->nParents() : node->nChildren()); ++number) {
      VkNode* const next = up ? node->parent(number) : node->child(number);
      if (known.insert(next).second) reached.push_back(next);
    }
  }
  for (VkNode* const node : reached)
    if (isSeen(node)) SgGraphSelectNode(graph_, node->baseWidget());
  if (before) SgGraphSelectNode(graph_, before->baseWidget());
}

// Displaying

void VkGraph::unhide(const std::vector<VkNode*>& nodes) {
  std::vector<Widget> hidden;
  for (const VkNode* node : nodes)
    if (node->baseWidget() && !XtIsManaged(node->baseWidget())) hidden.push_back(node->baseWidget());
  std::ranges::sort(hidden);
  hidden.erase(std::unique(hidden.begin(), hidden.end()), hidden.end());
  if (hidden.empty()) return;
  XtManageChildren(hidden.data(), static_cast<Cardinal>(hidden.size()));
  layoutIsDue_ = true;
}

std::vector<VkNode*> VkGraph::allNodes() const {
  std::vector<VkNode*> all;
  all.reserve(nodes_.size());
  for (const auto& node : nodes_) all.push_back(node.get());
  return all;
}

void VkGraph::displayAll() { unhide(allNodes()); }

void VkGraph::display(VkNode* node) {
  if (node && node->graph() == this) unhide({node});
}

void VkGraph::displayWithChildren(VkNode* node) {
  if (!node || node->graph() != this) return;
  std::vector<VkNode*> family{node};
  for (int i = 0; i < node->nChildren(); ++i) family.push_back(node->child(i));
  unhide(family);
}

// Laying out

std::vector<VkGraph::ArcEnds> VkGraph::arcs() const {
  std::vector<ArcEnds> arcs;
  for (const SgArc arc : SgGraphArcs(graph_)) {
    Widget from = nullptr, to = nullptr;
    SgGraphGetArcNodes(graph_, arc, &from, &to);
    VkNode *const parent = VkNode::of(from), *const child = VkNode::of(to);
    if (parent && child && parent->graph() == this && child->graph() == this)
      arcs.push_back({arc, parent, child});
  }
  return arcs;
}

std::vector<VkNode*> VkGraph::displayed() const {
  std::vector<VkNode*> nodes;
  for (const auto& node : nodes_)
    if (node->baseWidget() && XtIsManaged(node->baseWidget())) nodes.push_back(node.get());
  return nodes;
}

GraphPicture VkGraph::picture() const {
  GraphPicture picture;
  picture.nodes = displayed();
  picture.numberOf.assign(nodes_.size(), GraphPicture::kHidden);
  for (std::uint32_t i = 0; i < picture.nodes.size(); ++i) {
    const VkNode* const node = picture.nodes[i];
    picture.numberOf[node->number_] = i;
    const SgRectangle bounds = SgGraphNodeBounds(node->baseWidget());
    picture.sizes.push_back({bounds.width, bounds.height});
    picture.positions.push_back({bounds.x, bounds.y});
  }
  for (const auto& [arc, parent, child] : arcs()) {
    const graphlayout::Arc numbers{picture.numberOf[parent->number_], picture.numberOf[child->number_]};
    if (numbers.from == GraphPicture::kHidden || numbers.to == GraphPicture::kHidden) continue;
    picture.arcs.push_back(numbers);
    picture.arcIds.push_back(arc);
    picture.bends.push_back(SgGraphArcBends(graph_, arc));
  }
  return picture;
}

VkNode* VkGraph::workedOn() const {
  if (worked_) return seen(worked_);
  const std::vector<Widget> selected = SgGraphGetSelectedNodes(graph_);
  return selected.empty() ? nullptr : seen(VkNode::of(selected.front()));
}

bool VkGraph::isDisplayed(const VkNode* node) const {
  return graph_ && node && node->graph() == this && node->baseWidget() && XtIsManaged(node->baseWidget());
}

void VkGraph::doLayout() {
  if (!graph_ || !layoutIsDue_) return;
  if (laidOut_) {
    const Moving moving(graph_);
    inOpenPicture(false, [&] { placeNew(nullptr); });
    if (isDisplayed(worked_)) SgGraphRevealNode(graph_, seen(worked_)->baseWidget());
    return;
  }
  layoutIsDue_ = false;
  const GraphPicture shown = picture();
  if (shown.nodes.empty()) return;
  placeAll(shown);
  SgGraphShowTop(graph_, shown.nodes.front()->baseWidget());
  worked_ = nullptr;  // that was the building
  laidOut_ = true;
}

void VkGraph::doSubtreeLayout(VkNode* node) {
  if (!isDisplayed(node)) return;
  const Moving moving(graph_);
  inOpenPicture(false, [&] { placeNew(node); });
  SgGraphRevealNode(graph_, seen(node)->baseWidget());
}

void VkGraph::want(VkNode* node, SgPoint middle) {
  if (!graph_ || !node || node->graph() != this || node->placed_) return;
  const SgRectangle bounds = SgGraphNodeBounds(node->baseWidget());
  notePlace(node);
  SgGraphSetNodePosition(node->baseWidget(), {middle.x - bounds.width / 2, middle.y - bounds.height / 2});
  node->wanted_ = true;
}

void VkGraph::setArrangement(Arrangement arrangement) {
  chosen_ = arrangement;
  if (laidOut_ && this->arrangement() != arrangement) arrangeAgain();
}

void VkGraph::arrangeAgain() {
  if (!graph_) return;
  const GraphPicture shown = picture();
  if (shown.nodes.empty()) return;
  const VkNode* const worked = someSeen(workedOn());
  if (!worked) return;
  const Moving moving(graph_);
  const SgRectangle before = SgGraphNodeRectangle(worked->baseWidget());
  inOpenPicture(true, [&] { placeAll(picture()); });
  const SgRectangle after = SgGraphNodeBounds(worked->baseWidget());
  if (before.touches(SgGraphViewport(graph_)))
    SgGraphScrollTo(graph_, {after.x, after.y}, {before.x, before.y});
  SgGraphRevealNode(graph_, worked->baseWidget());
  layoutIsDue_ = false;
  laidOut_ = true;
}

void VkGraph::setBends(SgArc arc, std::span<const SgPoint> bends) {
  SgGraphSetArcBends(graph_, arc, bends);
  SgGraphSetArcStyle(graph_, arc, styleOf(arrangement(), bends));
}

void VkGraph::placeAll(const GraphPicture& shown) {
  noteAll();
  const bool wasCompact = compact_;
  const Arrangement wanted = chosen_.value_or(picture::usualArrangement(shown.nodes.size()));
  compact_ = wanted == Arrangement::Compact;
  const graphlayout::Layout layout = picture::freshLayout(wanted, shown.sizes, shown.arcs);
  for (std::size_t i = 0; i < shown.nodes.size(); ++i) {
    SgGraphSetNodePosition(shown.nodes[i]->baseWidget(), {layout.nodes[i].x, layout.nodes[i].y});
    shown.nodes[i]->placed_ = true;
    shown.nodes[i]->byHand_ = false;
  }
  // Moving a node straightens its arcs: bends come last.
  for (std::size_t i = 0; i < shown.arcs.size(); ++i) {
    if (wasCompact && !compact_) SgGraphSetArcStyle(graph_, shown.arcIds[i], SgARC_WHOLE);
    const auto bends = layout.bends.of(i);
    if (!bends.empty() || compact_) setBends(shown.arcIds[i], pointsOf(bends));
  }
  newArcs_.clear();
}

void VkGraph::placeNew(const VkNode* root) {
  layoutIsDue_ = false;
  // Arcs between nodes that have their places are stubs in a compact picture.
  const bool drawsArcs = !compact_ && (root || !newArcs_.empty());
  if (!drawsArcs && std::ranges::all_of(nodes_, [](const auto& node) { return node->placed_; })) {
    newArcs_.clear();
    return;
  }
  GraphPicture shown = picture();
  // Of a compact picture, only arcs that are drawn and those that lead to new nodes count: stubs are in
  // nobody's way.
  std::vector<std::uint32_t> newNodes, newArcs;
  std::vector<graphlayout::Arc> arcs;
  std::vector<SgArc> ids;
  graphlayout::Bends bends;
  bends.starts.push_back(0);
  std::unordered_set<const VkNode*> reached;
  const SgPoint inView = SgGraphToPlane(graph_, SgGraphViewport(graph_).middle());
  for (std::size_t i = 0; i < shown.arcs.size(); ++i) {
    const VkNode* const child = shown.nodes[shown.arcs[i].to];
    const VkNode* const parent = shown.nodes[shown.arcs[i].from];
    const std::vector<SgPoint>& drawn = shown.bends[i];
    bool isNew = newArcs_.contains(shown.arcIds[i]) || (parent == root && !compact_);
    if (compact_) isNew = isNew && !child->placed_ && reached.insert(child).second;
    if (compact_ && !isNew && drawn.empty()) continue;
    if (isNew) newArcs.push_back(static_cast<std::uint32_t>(arcs.size()));
    arcs.push_back(shown.arcs[i]);
    ids.push_back(shown.arcIds[i]);
    for (const SgPoint& p : drawn) bends.points.push_back({p.x, p.y});
    bends.starts.push_back(bends.points.size());
  }
  std::vector<bool> held;
  for (std::uint32_t i = 0; i < shown.nodes.size(); ++i) {
    const VkNode* const node = shown.nodes[i];
    held.push_back(node->byHand_ || (root && node->hasOtherParent(root)));
    if (node->placed_) continue;
    newNodes.push_back(i);
    if (node->wanted_) continue;
    shown.positions[i] = {inView.x - shown.sizes[i].width / 2, inView.y - shown.sizes[i].height / 2};
    if (node->nParents() + node->nChildren() > 0) shown.positions[i].x = std::nan("");
  }
  const graphlayout::Changes changes =
      graphlayout::rearrange(shown.sizes, arcs, {shown.positions, bends, newNodes, newArcs, std::move(held)});
  for (std::size_t i = 0; i < changes.nodes.size(); ++i) {
    VkNode* const node = shown.nodes[changes.nodes[i]];
    notePlace(node);
    SgGraphSetNodePosition(node->baseWidget(), {changes.positions[i].x, changes.positions[i].y});
    node->placed_ = true;
    node->wanted_ = false;
  }
  for (std::size_t i = 0; i < changes.arcs.size(); ++i) {
    const SgArc arc = ids[changes.arcs[i]];
    const auto& [from, to] = arcs[changes.arcs[i]];
    noteBends({shown.nodes[from], shown.nodes[to]});
    setBends(arc, pointsOf(changes.bends.of(i)));
    if (compact_) SgGraphSetArcStyle(graph_, arc, SgARC_WHOLE);
  }
  newArcs_.clear();
}

VkPlaces::Node VkGraph::placeOf(VkNode* node) const {
  const SgRectangle bounds = SgGraphNodeBounds(node->baseWidget());
  return {node, folds_->placeOf(node).value_or(SgPoint{bounds.x, bounds.y}), node->byHand_};
}

VkPlaces VkGraph::places() const {
  VkPlaces places;
  if (!graph_) return places;
  places.compact = compact_;
  places.nodes.reserve(nodes_.size());
  for (const auto& node : nodes_) places.nodes.push_back(placeOf(node.get()));
  for (const auto& [arc, parent, child] : arcs()) {
    auto open = folds_->bendsOf(arc);
    std::vector<SgPoint> bends = open ? *std::move(open) : SgGraphArcBends(graph_, arc);
    if (!bends.empty()) places.arcs[{parent, child}].push_back(std::move(bends));
  }
  return places;
}

std::vector<VkPlaces::Bends> VkGraph::bendsBetween(const VkPlaces::Ends& ends) const {
  std::vector<VkPlaces::Bends> all;
  for (const SgArc arc : SgGraphArcsBetween(graph_, ends.first->baseWidget(), ends.second->baseWidget()))
    if (auto bends = SgGraphArcBends(graph_, arc); !bends.empty()) all.push_back(std::move(bends));
  return all;
}

void VkGraph::recordPlaces() {
  record_ = std::make_unique<Record>();
  record_->compact = compact_;
  if (folds_->any() || folds_->areClosed()) noteAll();
}

void VkGraph::noteEntry(VkNode* node) {
  if (record_ && !record_->all) record_->nodes.try_emplace(node, std::nullopt);
}

void VkGraph::notePlace(VkNode* node) {
  if (!record_ || record_->all || !graph_ || !record_->nodes.try_emplace(node, placeOf(node)).second) return;
  // Moving it straightens its arcs.
  for (int i = 0; i < node->nParents(); ++i) noteBends({node->parent(i), node});
  for (int i = 0; i < node->nChildren(); ++i) noteBends({node, node->child(i)});
}

void VkGraph::noteBends(const VkPlaces::Ends& ends) {
  if (record_ && !record_->all && !record_->arcs.contains(ends)) record_->arcs[ends] = bendsBetween(ends);
}

void VkGraph::noteAll() {
  if (!record_ || record_->all) return;
  VkPlaces all = places();
  all.compact = record_->compact;
  std::erase_if(all.nodes, [&](VkPlaces::Node& place) {
    const auto noted = record_->nodes.find(place.node);
    if (noted == record_->nodes.end()) return false;
    if (noted->second) place = *noted->second;
    return !noted->second;
  });
  for (auto& [ends, bends] : record_->arcs) {
    if (bends.empty())
      all.arcs.erase(ends);
    else
      all.arcs[ends] = std::move(bends);
  }
  record_->all = std::move(all);
}

VkGraph::Moved VkGraph::recordedPlaces() {
  const std::unique_ptr<Record> record = std::move(record_);
  Moved moved;
  if (!record || !graph_) return moved;
  if (record->all) {
    moved = {*std::move(record->all), places()};
    keepDifferences(moved.before, moved.after);
    return moved;
  }
  moved.before.compact = record->compact;
  moved.after.compact = compact_;
  std::unordered_set<const VkNode*> elsewhere;
  for (const auto& [node, before] : record->nodes) {
    const VkPlaces::Node after = placeOf(node);
    if (before == after) continue;
    elsewhere.insert(node);
    if (before) moved.before.nodes.push_back(*before);
    moved.after.nodes.push_back(after);
  }
  for (auto& [ends, before] : record->arcs) {
    auto after = bendsBetween(ends);
    const bool hasMoved = elsewhere.contains(ends.first) || elsewhere.contains(ends.second);
    if (before == after && (before.empty() || !hasMoved)) continue;
    moved.before.arcs[ends] = std::move(before);
    moved.after.arcs[ends] = std::move(after);
  }
  const auto inOrder = [](VkPlaces& places) {
    std::ranges::sort(places.nodes, {}, [](const VkPlaces::Node& place) { return place.node->number_; });
  };
  inOrder(moved.before);
  inOrder(moved.after);
  return moved;
}

void VkGraph::arrange(const VkPlaces& places) {
  if (!graph_) return;
  const Moving moving(graph_);
  inOpenPicture(places.compact != compact_, [&] { placeWithin(places); });
}

void VkGraph::placeWithin(const VkPlaces& places) {
  noteAll();
  for (const auto& [node, corner, byHand] : places.nodes) {
    if (node->baseWidget()) SgGraphSetNodePosition(node->baseWidget(), corner);
    node->corner_ = corner;
    node->placed_ = laidOut_ = true;
    node->byHand_ = byHand;
  }
  const bool restyle = places.compact != compact_;
  compact_ = places.compact;
  std::erase_if(newArcs_, [&](SgArc arc) {  // the others are where they were
    Widget from = nullptr, to = nullptr;
    return !SgGraphGetArcNodes(graph_, arc, &from, &to) ||
           (VkNode::of(from)->placed_ && VkNode::of(to)->placed_);
  });
  if (restyle)
    for (const SgArc arc : SgGraphArcs(graph_)) SgGraphSetArcStyle(graph_, arc, styleOf(arrangement(), {}));
  for (const auto& [ends, bends] : places.arcs) {
    const Widget from = ends.first->baseWidget(), to = ends.second->baseWidget();
    std::size_t number = 0;
    for (const SgArc arc : SgGraphArcsBetween(graph_, from, to)) {
      setBends(arc, number < bends.size() ? bends[number] : VkPlaces::Bends{});
      ++number;
    }
  }
}

void VkGraph::showOneOf(std::vector<VkNode*> nodes) {
  std::erase_if(nodes, [&](const VkNode* node) { return !isDisplayed(node); });
  if (nodes.empty()) return;
  if (std::ranges::none_of(nodes, [&](VkNode* node) { return isSeen(seen(node)); })) uncover({nodes.front()});
  const SgRectangle view = SgGraphViewport(graph_);
  const auto in_sight = [&](VkNode* node) {
    return isSeen(seen(node)) && SgGraphNodeRectangle(seen(node)->baseWidget()).touches(view);
  };
  if (std::ranges::none_of(nodes, in_sight)) SgGraphRevealNode(graph_, seen(nodes.front())->baseWidget());
}

// Folding

VkNode* VkGraph::seen(VkNode* node) const { return folds_->face(node); }

template <class Change>
void VkGraph::inOpenPicture(bool afresh, Change&& change) const {
  if (folds_->areClosed()) folds_->open(graph_, displayed());
  change();
  if (folds_->any())
    folds_->close(graph_, picture(), compact_, afresh);
  else
    folds_->clear();
  showHowMany();
}

template <class Change>
void VkGraph::changeFolds(VkNode* still, Change&& change) {
  const Moving moving(graph_);
  const bool wasSeen = isSeen(seen(still));
  const SgRectangle before = SgGraphNodeRectangle(seen(still)->baseWidget());
  inOpenPicture(true, change);
  const VkNode* const node = seen(still);
  if (!wasSeen || !isSeen(node)) return;
  const SgRectangle after = SgGraphNodeBounds(node->baseWidget());
  if (before.touches(SgGraphViewport(graph_)))
    SgGraphScrollTo(graph_, {after.x, after.y}, {before.x, before.y});
}

bool VkGraph::isCollapsed(const VkNode* node) const { return folds_->isFolded(node); }

bool VkGraph::canCollapse(VkNode* node) const {
  if (!isDisplayed(node) || isCollapsed(node) || seen(node) != node) return false;
  const GraphPicture shown = picture();
  const std::uint32_t number = shown.numberOf[node->number_];
  const auto into = graphlayout::fold(shown.nodes.size(), shown.arcs, std::span(&number, 1));
  return std::ranges::find(into, number) != into.end();
}

void VkGraph::collapse(VkNode* node) {
  if (!canCollapse(node)) return;
  changeFolds(node, [&] { folds_->fold(node); });
  // What is not seen any more is selected no longer.
  SgGraphClearSelection(graph_);
  SgGraphSelectNode(graph_, node->baseWidget());
}

void VkGraph::expand(VkNode* node) {
  if (graph_ && isCollapsed(node)) changeFolds(node, [&] { folds_->unfold(node); });
}

void VkGraph::expandAll() {
  if (!graph_ || !folds_->any()) return;
  if (VkNode* const still = someSeen(workedOn())) changeFolds(still, [&] { folds_->unfoldAll(); });
}

bool VkGraph::unfold(const std::vector<VkNode*>& nodes) {
  bool any = false;
  for (VkNode* const node : nodes)
    for (; seen(node) != node; any = true) expand(seen(node));
  return any;
}

bool VkGraph::uncover(const std::vector<VkNode*>& nodes) {
  const bool any = unfold(nodes);
  const auto hidden = [&](const VkNode* node) { return folds_->hides(node); };
  if (std::ranges::none_of(nodes, hidden)) return any;
  VkNode* const still = someSeen(nodes.front());
  changeFolds(still ? still : nodes.front(), [&] {
    for (const VkNode* const node : nodes) folds_->showAlso(node);
  });
  return true;
}

void VkGraph::showOnlySelected(int steps) {
  std::vector<VkNode*> reached;
  for (const Widget node : SgGraphGetSelectedNodes(graph_)) reached.push_back(VkNode::of(node));
  if (reached.empty()) return;
  const std::vector<VkNode*> selected = reached;
  std::unordered_set<const VkNode*> only(reached.begin(), reached.end());
  for (std::size_t begin = 0; steps > 0; --steps) {
    const std::size_t end = reached.size();
    for (; begin < end; ++begin) {
      const VkNode* const node = reached[begin];
      const auto reach = [&](VkNode* next) {
        if (only.insert(next).second) reached.push_back(next);
      };
      for (int i = 0; i < node->nParents(); ++i) reach(node->parent(i));
      for (int i = 0; i < node->nChildren(); ++i) reach(node->child(i));
    }
  }
  for (VkNode* const node : reached) only.insert(seen(node));
  VkNode* const before = current();
  changeFolds(selected.front(), [&] { folds_->showOnly(std::move(only)); });
  SgGraphClearSelection(graph_);  // of arcs that are not seen any more, too
  for (const VkNode* const node : selected)
    if (isSeen(node)) SgGraphSelectNode(graph_, node->baseWidget());
  if (before) SgGraphSelectNode(graph_, before->baseWidget());
  fit();
}

void VkGraph::showAll() {
  if (!graph_ || !folds_->countOnly()) return;
  VkNode* const still = someSeen(current());
  changeFolds(still ? still : nodes_.front().get(), [&] { folds_->showOnly({}); });
  if (still) SgGraphRevealNode(graph_, still->baseWidget());
}

void VkGraph::showHowMany() const { strip_->showHowMany(folds_->countOnly(), nodes_.size()); }

void VkGraph::foldWanted(SgGraphCallbackStruct& call) {
  VkNode* const node = VkNode::of(call.node);
  if (call.fold)
    collapse(node);
  else
    expand(node);
}

// Menus

VkPopupMenu& VkGraph::popupMenu(Spot spot) {
  std::unique_ptr<VkPopupMenu>& menu = popups_[spot];
  constexpr const char* kNames[] = {"nodeMenu", "arcMenu", "backgroundMenu"};
  if (!menu) menu = std::make_unique<VkPopupMenu>(graph_, kNames[static_cast<int>(spot)]);
  return *menu;
}

void VkGraph::menuWanted(SgGraphCallbackStruct& call) {
  asked_ = {.spot = call.node  ? Spot::Node
                    : call.arc ? Spot::Arc
                               : Spot::Background,
            .node = VkNode::of(call.node),
            .arc = call.arc,
            .position = call.position};
  const auto menu = popups_.find(asked_.spot);
  if (menu == popups_.end()) return;
  callCallbacks(menuCallback, &asked_);
  const SgPoint at = SgGraphToWindow(graph_, call.position);
  const int x = static_cast<int>(at.x), y = static_cast<int>(at.y);
  if (call.event && call.event->type == KeyPress) {
    for (const auto& [spot, other] : popups_) other->stayAwayAtMenuKey();
    menu->second->postAtMenuKey(x, y);
  } else {
    menu->second->post(x, y);
  }
}

// Out of the window

bool VkGraph::saveToFile(const char* path) const {
  return graph_ && exportPicture(path, picture::FileFormat::ps, false).empty();
}

std::string VkGraph::exportPicture(const std::string& path, picture::FileFormat format, bool viewOnly) const {
  std::string problem;
  const auto write = [&] { problem = SgGraphExport(graph_, path, format, viewOnly, name()); };
  if (viewOnly)
    write();
  else
    inOpenPicture(false, write);
  return problem;
}

void VkGraph::widgetDestroyed() {
  split_ = nullptr;
  strip_.reset();
  popups_.clear();
}
