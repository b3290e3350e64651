/// @file
/// The main window's construction, and what concerns more than one of its parts.
#include "editor/graphwindow.h"

#include <X11/keysym.h>
#include <Xm/ToggleB.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <new>
#include <utility>

#include "dialogs/values/dispatch.h"
#include "editor/colortable.h"
#include "editor/menuitems.h"
#include "editor/model/currentscene.h"
#include "editor/scenefiles.h"
#include "editor/structgraph.h"
#include "editor/tips.h"
#include "qilib/sizes.h"
#include "storage/userfolders.h"
#include "tools/cnvopts.h"
#include "tools/shell.h"

namespace {

/// Stands on the canvas while there is nothing else.
constexpr const char* kWelcome =
    "No scene is shown\n"
    "Ctrl+O opens one; a file can also be named when the program is started\n"
    "Ctrl+E turns Edit Mode on, in which links are drawn, moved and deleted\n"
    "F10 goes to the menus, F1 lists all keys and gestures";

constexpr const char* kOpenRecentLabel = "Open Recent";
constexpr const char* kRecentLabels[] = {"Recent 1", "Recent 2", "Recent 3", "Recent 4", "Recent 5",
                                         "Recent 6", "Recent 7", "Recent 8", "Recent 9", "Recent 10"};
static_assert(std::size(kRecentLabels) == Remembered::kMostFiles);
constexpr const char* kRecoverLabel = "Recover...";
constexpr const char* kEditModeLabel = "Edit Mode";
constexpr const char* kDeleteLinkLabel = "Delete Link";
constexpr const char* kLinkSelectedLabel = "Link Selected";
constexpr const char* kLinkToLabel = "Link to...";
constexpr const char* kUndoLabel = "Undo";
constexpr const char* kRedoLabel = "Redo";
constexpr const char* kLayeredLabel = "Layered";
constexpr const char* kCompactLabel = "Compact";
constexpr const char* kOverviewLabel = "Overview";
constexpr const char* kNeighboursLabel = "Highlight Neighbours";
constexpr const char* kLinksLabel = "Links";
constexpr const char* kUnlinkedLabel = "Unlinked Records";
constexpr const char* kRecordNamesLabel = "Record Names";
constexpr const char* kTextureImageLabel = "Display Texture Image";

/// The end of a path, which tells files apart, as far as it can be read on one line.
std::string shortened(const std::string& path) {
  constexpr std::size_t kMost = 70;  // bytes
  if (path.size() <= kMost) return path;
  std::size_t begin = path.size() - kMost;
  const std::size_t slash = path.find('/', begin);
  if (slash != path.npos) begin = slash;
  while (begin < path.size() && (path[begin] & 0xC0) == 0x80) ++begin;  // not into a character
  return "..." + path.substr(begin);
}

}  // namespace

GraphWindow::GraphWindow(const char* name)
    : VkWindow(name),
      remembered_(storage::state_folder()),
      graph_(makeView()),
      prompts_(*this),
      gestures_(*graph_, prompts_, history_),
      canvasMenus_(*graph_, gestures_, *menu(), [this](const std::string& node) { openDialog(node); }),
      unsaved_(history_, prompts_, write_scene, settings_.recovery_interval),
      files_(prompts_, *this, unsaved_, {settings_.confirm_unsaved_changes, settings_.backup_on_save}),
      converters_(
          prompts_, [this](const std::string& path, int mode) { return saveFor(path, mode); }, run_shell) {
  read_convert_options();
  if (auto* toggle = textureImageToggle()) toggle->setVisualState(false);
  make256table(theApplication->display(), c256);
  true_color_textures = settings_.true_color_textures;

  theApplication->addCallback(VkApp::displayLostCallback, this, &GraphWindow::displayLost);
  XtAddCallback(mainWindowWidget(), XmNhelpCallback, forward<&CanvasMenus::showKeys>, &canvasMenus_);
  history_.on_change([this] { historyChanged(); });
  graph_->addCallback(VkGraph::nodesMovedCallback, this, &GraphWindow::nodesMoved);
  takeUp();
  showRecent();
  showSteps();
  showArrangement();
  showFile();
  if (!unsaved_.copies().empty()) told_ = "Unsaved work of an earlier time is kept: File > Recover...";
  showStatus();
}

GraphWindow::~GraphWindow() {
  unsaved_.keep();
  leave();
  killpbxsend();
}

std::unique_ptr<VkGraph> GraphWindow::makeView() {
  addMenus();
  auto view = std::make_unique<VkGraph>("graph", mainWindowWidget());
  const Widget graph = view->graphWidget();
  XtVaSetValues(graph, SgNeditableArcs, False, SgNokToAdd, False, SgNarcWidth, 20, SgNarcDirection,
                SgARC_DOWN, nullptr);
  XtAddCallback(graph, SgNnewNodeCallback, newNodeCallback, this);
  XtAddCallback(graph, SgNnewArcCallback, newArcCallback, this);
  XtAddCallback(graph, SgNmayLinkCallback, mayLinkCallback, this);
  XtAddCallback(graph, SgNtargetCallback, targetCallback, this);
  XtAddCallback(graph, SgNarcMovedCallback, arcMovedCallback, this);
  XtAddCallback(graph, SgNdefaultActionCallback, defaultActionCallback, this);
  XtAddCallback(graph, SgNhoverCallback, hoverCallback, this);
  XtAddCallback(graph, SgNoverviewCallback, overviewKeyCallback, this);
  view->displayAll();
  view->doLayout();
  addView(view.get());
  return view;
}

void GraphWindow::addMenus() {
  static const auto recent = []<std::size_t... Place>(std::index_sequence<Place...>) {
    return std::array{VkMenuDesc{kAction, kRecentLabels[Place], openRecentCallback<Place>}..., kEnd};
  }
  (std::make_index_sequence<Remembered::kMostFiles>());
  static const VkMenuDesc file[] = {
      {kAction, "New", newCallback},
      {kAction, "Open", openCallback},
      {kAction, "Save", saveCallback},
      {kAction, "Save As...", saveAsCallback},
      {kSubmenu, kOpenRecentLabel, nullptr, recent.data()},
      {kAction, "Export Picture...", exportPictureCallback},
      {kAction, kRecoverLabel, recoverCallback},
      kSeparator,
      {kAction, "Quit", quitCallback},
      kEnd,
  };
  static const VkMenuDesc edit[] = {
      {kToggle, kEditModeLabel, editCallback},
      {kAction, kDeleteLinkLabel, deleteLinkCallback},
      kSeparator,
      {kAction, kUndoLabel, undoCallback},
      {kAction, kRedoLabel, redoCallback},
      kSeparator,
      {kAction, "Find", findCallback},
      {kAction, "Select All", selectAllCallback},
      {kAction, kLinkSelectedLabel, linkSelectedCallback},
      {kAction, kLinkToLabel, linkToFoundCallback},
      kEnd,
  };
  static const VkMenuDesc view[] = {
      {kAction, "Default", setDefaultCallback},
      {kToggle, kTextureImageLabel, dpyimgCallback},
      kSeparator,
      {kRadio, kLayeredLabel, layeredCallback},
      {kRadio, kCompactLabel, compactCallback},
      {kAction, "Arrange Again", arrangeAgainCallback},
      {kAction, "Expand All", expandAllCallback},
      {kAction, "Show All", showAllCallback},
      {kToggle, kOverviewLabel, overviewCallback},
      {kToggle, kRecordNamesLabel, recordNamesCallback},
      {kToggle, kNeighboursLabel, neighboursCallback},
      {kToggle, kLinksLabel, linksCallback},
      {kToggle, kUnlinkedLabel, unlinkedRecordsCallback},
      {kAction, "Rebuild Graph", rebuildGraphCallback},
      kEnd,
  };
  static const VkMenuDesc display_lists[] = {
      {kAction, "Set Options and Go", toDLCallback},
      {kAction, "Set Output Directory", setDirCallback},
      kEnd,
  };
  static const VkMenuDesc kavo_tool[] = {
      {kAction, "KAVO Quick preview(DX-VIEWER)", quickpviCallback},
      {kAction, "KAVO Quick preview(Emu-Board)", quickpvCallback},
      {kAction, "Kavo preview(DX-VIEWER)", kavoiCallback},
      {kAction, "Kavo preview(Emu-Board)", kavoCallback},
      {kSubmenu, "Convert to KAVO DL", nullptr, display_lists},
      {kAction, "kill [pb]xsend", killpbCallback},
      kEnd,
  };
  static const VkMenuDesc viewer_files[] = {
      {kAction, "Set Options and Go", quil2zexoptionCallback},
      {kAction, "Set Output Directory", setDir2Callback},
      kEnd,
  };
  static const VkMenuDesc quil2_tool[] = {
      {kAction, "Preview(DX-VIEWER)", zexviewCallback},
      {kAction, "Preview(Emu-Board)", zexviewgCallback},
      {kSubmenu, "Convert to ZEX", nullptr, viewer_files},
      kSeparator,
      {kAction, "Execute Script", q2viewCallback},
      {kAction, "Preview Script", setscriptCallback},
      {kAction, "Preview File", setfileCallback},
      {kAction, "kill [pb]xsend", killpbCallback},
      kEnd,
  };
  addMenuPane("File", file, this);
  addMenuPane("Edit", edit, this);
  addMenuPane("View", view, this);
  addMenuPane("KAVO tool", kavo_tool, this);
  addMenuPane("QUIL2 tool", quil2_tool, this);
}

VkMenuToggle* GraphWindow::textureImageToggle() const {
  const auto* pane = menu()->findNamedItem<VkMenu>("View");
  return pane ? pane->findNamedItem<VkMenuToggle>(kTextureImageLabel) : nullptr;
}

void GraphWindow::recordNames(XmToggleButtonCallbackStruct& toggle) {
  const bool on = toggle.set != XmUNSET;
  remembered_.setNumber("recordNames", on);
  graph_->setShowsTitles(on);
  arrangeAgain();  // the nodes have other sizes now
}

void GraphWindow::highlightNeighbours(bool on) {
  remembered_.setNumber("highlightNeighbours", on);
  XtVaSetValues(graph_->graphWidget(), SgNneighbourhood, on, nullptr);
  menu()->findNamedItem<VkMenuToggle>(kNeighboursLabel)->setVisualState(on);
}

void GraphWindow::hover(SgGraphCallbackStruct& call) {
  tooltip_.hide();
  if (call.node) {
    tooltip_.showSoon([name = std::string(SgNodeName(call.node)), this] {
      const VkNode* const node = graph_->find(name);
      return node ? tip_of_node(*node) : std::string();
    });
  } else if (call.arc != 0) {
    tooltip_.showSoon([arc = call.arc, this] {
      Widget parent = nullptr, child = nullptr;
      if (!SgGraphGetArcNodes(graph_->graphWidget(), arc, &parent, &child)) return std::string();
      return tip_of_arc(*VkNode::of(parent), *VkNode::of(child));
    });
  }
}

void GraphWindow::overview(XmToggleButtonCallbackStruct& toggle) {
  XtVaSetValues(graph_->graphWidget(), SgNshowOverview, toggle.set != XmUNSET, nullptr);
}

void GraphWindow::showLinks(bool shown) {
  if (shown) {
    links_.show();
    links_.update();
  } else {
    links_.hide();
  }
}

void GraphWindow::overviewKey(SgGraphCallbackStruct&) {
  Boolean shown = False;
  XtVaGetValues(graph_->graphWidget(), SgNshowOverview, &shown, nullptr);
  showOverview(shown);
}

void GraphWindow::showOverview(bool shown) {
  menu()->findNamedItem<VkMenuToggle>(kOverviewLabel)->setVisualState(shown);
}

void GraphWindow::setEditing(bool on) {
  gestures_.setEditing(on);
  tell("");
  dialogs_.showEditMode(on);
  showSteps();
}

void GraphWindow::editModeWanted(PropertyDialog*, void*, void*) {
  if (auto* const toggle = menu()->findNamedItem<VkMenuToggle>(kEditModeLabel)) toggle->setVisualState(true);
  setEditing(true);
}

void GraphWindow::tell(const std::string& text) {
  told_ = text;
  showStatus();
}

void GraphWindow::showStatus() {
  std::string status;
  for (const std::string& part : {pointed_, told_})
    if (!part.empty()) status += part + kStatusSeparator;
  setStatus((status + gestures_.hint()).c_str());
}

void GraphWindow::linkToFound() {
  gestures_.linkToFound([this](const std::string& text) {
    pointed_ = text;
    showStatus();
  });
}

void GraphWindow::target(SgGraphCallbackStruct& call) {
  pointed_ = GraphGestures::whatWouldBe(call);
  showStatus();
}

void GraphWindow::quit() {
  if (files_.mayQuit()) theApplication->quitYourself();
}

int GraphWindow::saveFor(const std::string& path, int mode) {
  Reasons reasons;
  const int saved = quilsave(path, mode, reasons.sink());
  tell(reasons.line());
  return saved;
}

void GraphWindow::historyChanged() {
  tending_.start({});  // the change may not have been made yet
  showSteps();
  dialogs_.showWhetherCurrent();
}

void GraphWindow::showSteps() {
  const auto show = [this](const char* label, const Step* step) {
    auto* const item = menu()->findNamedItem(label);
    item->showText((step ? std::string(label) + " " + step->label : label).c_str());
    item->setActive(step && gestures_.editing());
  };
  for (const char* const label : {kDeleteLinkLabel, kLinkSelectedLabel, kLinkToLabel}) {
    auto* const item = menu()->findNamedItem(label);
    if (gestures_.editing())
      item->activate();
    else
      item->deactivate();
  }
  show(kUndoLabel, history_.to_undo());
  show(kRedoLabel, history_.to_redo());
}

void GraphWindow::undo() {
  carryOut({kUndoLabel, &History::undo, &History::redo, &qi::Change::undo, &StepPicture::undo});
}

void GraphWindow::redo() {
  carryOut({kRedoLabel, &History::redo, &History::undo, &qi::Change::redo, &StepPicture::redo});
}

void GraphWindow::carryOut(const Direction& way) {
  const Step* const step = gestures_.editing() ? (history_.*way.take)() : nullptr;
  if (!step) return;
  std::printf("%s %s\n", way.label, step->label.c_str());
  try {
    (step->change.*way.change)(*qis);
  } catch (const std::bad_alloc&) {
    (history_.*way.give_back)();
    throw;
  }
  if (step->picture)
    (*step->picture.*way.picture)();
  else if (step->picture_forgotten && graph_->numNodes() > 0)
    rebuildGraph();
  showArrangement();
  dialogs_.showWhetherCurrent();
}

void GraphWindow::nodesMoved(VkGraph*, void*, void* moved) {
  gestures_.nodesMoved(*static_cast<const VkGraph::Moved*>(moved));
}

void GraphWindow::setDefault() {
  _displayTexImg = 0;
  if (auto* toggle = textureImageToggle()) toggle->setVisualState(false);
}

void GraphWindow::arrange(VkGraph::Arrangement arrangement) {
  gestures_.arrange(arrangement);
  showArrangement();
}

void GraphWindow::showArrangement() {
  const bool compact = graph_->arrangement() == VkGraph::Arrangement::Compact;
  for (const auto& [label, on] : {std::pair{kLayeredLabel, !compact}, {kCompactLabel, compact}})
    if (auto* const item = menu()->findNamedItem<VkMenuToggle>(label)) item->setVisualState(on);
}

void GraphWindow::defaultAction(SgGraphCallbackStruct& call) {
  std::printf("In defaultActionCallback\n");
  nodeAction(call);
}

void GraphWindow::nodeAction(const SgGraphCallbackStruct& call) {
  if (call.reason != SgCR_DEFAULT_ACTION) return;
  const VkNode* const node = VkNode::of(call.node);
  if (!node) return;
  std::printf("%s\n", node->label());
  openDialog(node->name());
}

void GraphWindow::openDialog(const std::string& node) {
  auto* const dialog = dialogs_.open(node.c_str(), gestures_.editing());
  if (!dialog) return;
  dialog->addCallback(VkPrefDialog::prefCallback, this, &GraphWindow::handlePrefs);
  dialog->addCallback(PropertyDialog::editModeCallback, this, &GraphWindow::editModeWanted);
  dialog->addCallback(PropertyDialog::keyCallback, this, &GraphWindow::dialogKey);
  dialog->addCallback(PropertyDialog::openAfreshCallback, this, &GraphWindow::openAfresh);
}

void GraphWindow::openAfresh(PropertyDialog* dialog, void*, void*) {
  dialog->hide();
  openDialog(dialog->node());
}

void GraphWindow::dialogKey(PropertyDialog* dialog, void*, void* data) {
  auto& key = *static_cast<PropertyDialog::Key*>(data);
  if (key.press.symbol != XK_s || key.press.shift) return;
  key.taken = true;
  if (dialog->apply() || !dialog->leftUnwritten())
    save();
  else
    tellIfUnwritten(*dialog);
}

void GraphWindow::tellIfUnwritten(const VkPrefDialog& dialog) {
  if (dialog.leftUnwritten() && !gestures_.editing())
    tell(dialog.title() + ": not written, Edit Mode is off");
}

void GraphWindow::handlePrefs(VkComponent* component, void*, void* reason) {
  auto* const dialog = dynamic_cast<VkPrefDialog*>(component);
  const auto answer = *static_cast<const VkDialogReason*>(reason);
  if (!dialog) return;
  if (answer == VkDialogReason::OK) tellIfUnwritten(*dialog);
  switch (values::handlePrefs(dialog->name(), static_cast<int>(answer))) {
    case values::PrefAction::nothing:
      break;
    case values::PrefAction::applyOptions:
      applyOptions(dialog);
      break;
    case values::PrefAction::applyOptions2:
      applyOptions2(dialog);
      break;
    case values::PrefAction::applyChanges:
      if (!gestures_.editing()) {
        dialog->setOutcome(VkPrefDialog::Outcome::refused);
      } else if (applyChanges(dialog, 0, 0) != 1) {
        dialog->setOutcome(VkPrefDialog::Outcome::faulty);
        prompts_.warn("Can't change the record!");
      }
  }
}

int GraphWindow::applyChanges(VkPrefDialog* dialog, int, int) {
  if (!dialog->item()) return 0;
  auto* const property = dynamic_cast<PropertyDialog*>(dialog);
  const unsigned long index = property ? property->index() : 0;
  items::Item& items = dialog->item()->model();
  const bool current = property && property->recordIsAsShown();
  qi::Recording recording(*qis);
  const int applied = values::applyChanges(*qis, dialog->name(), items, static_cast<Word>(index));
  qi::Change change = recording.finish();
  if (current) property->noteRecord();
  if (property && !change.empty()) history_.add({.label = property->node(), .change = std::move(change)});
  return applied;
}

void GraphWindow::showNoScene() {
  history_.forget_pictures();
  graph_->clearAll();
}

void GraphWindow::buildGraph(const std::function<void(double)>& progress, const NamedPlaces* places) {
  constexpr double kBuilt = 0.7;  // of all the time that it takes
  const SceneGraph scene = scene_graph(*qis);
  const std::vector<SceneGraph::Node> unlinked =
      showsUnlinked_ ? unlinked_records(*qis, scene) : std::vector<SceneGraph::Node>();
  require_memory_for(scene, unlinked.size());
  VkGraph::Kept former = graph_->setAside();
  try {
    ::struct_graph(scene, *graph_, *this, [&](double share) { progress(share * kBuilt); });
    graph_->displayAll();
    if (places) places->restore(*graph_);
    graph_->doLayout();
    show_unlinked(*graph_, unlinked, *this);
    progress(1);
  } catch (...) {
    graph_->takeBack(std::move(former));
    throw;
  }
}

void GraphWindow::rebuildGraph() {
  if (!has_scene()) return;
  const NamedPlaces places(*graph_);
  buildGraph([](double) {}, &places);
  history_.forget_pictures();
  showArrangement();
}

void GraphWindow::unlinkedRecords(XmToggleButtonCallbackStruct& toggle) {
  showsUnlinked_ = toggle.set != XmUNSET;
  remembered_.setNumber("unlinkedRecords", showsUnlinked_);
  if (graph_->numNodes() == 0) return;
  if (!showsUnlinked_) {
    hide_unlinked(*graph_);
    return;
  }
  const auto added = show_unlinked(*graph_, unlinked_records(*qis, scene_graph(*qis)), *this);
  tell(added.empty() ? "There are no unlinked records besides those that are shown" : "");
  graph_->showOneOf(added);
}

void GraphWindow::showScene(const std::function<void(double)>& progress) {
  buildGraph(progress, nullptr);
  history_.clear();
  dialogs_.closeAll();
  showArrangement();
  if (auto* kavo_tool = menu()->findNamedItem("KAVO tool")) {
    if (qiQUILver(qis->header) < qi::kVersion2)
      kavo_tool->activate();
    else
      kavo_tool->deactivate();
  }
}

std::string GraphWindow::writePicture(const PictureChoice& choice, picture::FileFormat format) {
  return graph_->exportPicture(choice.path, format, choice.view_only);
}

void GraphWindow::noteFile(const std::string& path) {
  remembered_.addFile(path);
  showRecent();
}

void GraphWindow::showRecent() {
  const auto& files = remembered_.files();
  for (std::size_t i = 0; i < std::size(kRecentLabels); ++i) {
    auto* const item = menu()->findNamedItem(kRecentLabels[i]);
    if (i < files.size()) {
      item->showText((std::to_string(i + 1) + "  " + shortened(files[i])).c_str());
      item->show();
    } else {
      item->hide();
    }
  }
  auto* const submenu = menu()->findNamedItem(kOpenRecentLabel);
  if (files.empty())
    submenu->deactivate();
  else
    submenu->activate();

  std::string welcome = kWelcome;
  if (!files.empty()) welcome += "\nLast, in File > Open Recent:";
  for (std::size_t i = 0; i < std::min<std::size_t>(files.size(), 3); ++i)
    welcome += "\n" + shortened(files[i]);
  XtVaSetValues(graph_->graphWidget(), SgNemptyText, welcome.c_str(), nullptr);
}

void GraphWindow::takeUp() {
  const auto value = [&](const char* name) { return remembered_.number(name); };
  const auto x = value("x"), y = value("y"), width = value("width"), height = value("height");
  if (x && y && width && height) setPlace({*x, *y, *width, *height});
  const bool map = value("overview").value_or(1) != 0;
  XtVaSetValues(graph_->graphWidget(), SgNshowOverview, map, nullptr);
  showOverview(map);
  const bool names = value("recordNames").value_or(settings_.record_names) != 0;
  graph_->setShowsTitles(names);
  menu()->findNamedItem<VkMenuToggle>(kRecordNamesLabel)->setVisualState(names);
  highlightNeighbours(value("highlightNeighbours").value_or(settings_.highlight_neighbours) != 0);
  if (const auto across = value("linksWidth")) links_.setWidth(*across);
  showsUnlinked_ = value("unlinkedRecords").value_or(0) != 0;
  menu()->findNamedItem<VkMenuToggle>(kUnlinkedLabel)->setVisualState(showsUnlinked_);
  const bool with_links = value("links").value_or(0) != 0;
  showLinks(with_links);
  menu()->findNamedItem<VkMenuToggle>(kLinksLabel)->setVisualState(with_links);
}

void GraphWindow::leave() {
  const auto last = place();
  if (!last) return;  // it was never shown
  remembered_.setNumber("x", last->x);
  remembered_.setNumber("y", last->y);
  remembered_.setNumber("width", last->width);
  remembered_.setNumber("height", last->height);
  Boolean map = False;
  XtVaGetValues(graph_->graphWidget(), SgNshowOverview, &map, nullptr);
  remembered_.setNumber("overview", map);
  remembered_.setNumber("links", XtIsManaged(links_.baseWidget()));
  remembered_.setNumber("linksWidth", links_.width());
  remembered_.keepNumbers();
}

void GraphWindow::showTitle() {
  const std::string& path = files_.fileName();
  const std::string file = path.substr(path.rfind('/') + 1);
  const std::string mark = unsaved_.exists() ? "*" : "";
  const std::string disk = files_.changedOnDisk() ? " (changed on disk)" : "";
  setTitle((mark + file + disk + (file.empty() ? "" : " - ") + name()).c_str());
  setIconName((mark + (file.empty() ? name() : file)).c_str());
}

void GraphWindow::tendUnsavedWork() {
  if (graph_->showsTitles()) graph_->updateTitles();
  links_.update();
  showTitle();
  const auto pause = unsaved_.tend(UnsavedWork::Clock::now());
  if (pause)
    tending_.start(std::chrono::ceil<std::chrono::milliseconds>(std::max(*pause, {})));
  else
    tending_.stop();
  menu()->findNamedItem(kRecoverLabel)->setActive(!unsaved_.copies().empty());
}

void GraphWindow::handleFocus() {
  files_.lookAtDisk();
  tendUnsavedWork();
}

void GraphWindow::displayLost(VkApp*, void*, void*) {
  unsaved_.keep();
  killpbxsend();
}
