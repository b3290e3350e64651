/// @file
/// The main window's construction: menus, graph view, options, colour table.
#include "editor/graphwindow.h"

#include <Xm/ToggleB.h>

#include "editor/colortable.h"
#include "editor/scenefiles.h"
#include "tools/cnvopts.h"
#include "tools/shell.h"

namespace {

constexpr auto kAction = VkMenuItemType::ACTION;
constexpr auto kToggle = VkMenuItemType::TOGGLE;
constexpr auto kSubmenu = VkMenuItemType::SUBMENU;
constexpr VkMenuDesc kSeparator = {VkMenuItemType::SEPARATOR};
constexpr VkMenuDesc kEnd = {VkMenuItemType::END};

constexpr const char* kTextureImageLabel = "Display Texture Image";

bool true_color_textures(Widget shell) {
  struct Resources {
    Boolean on;
  } resources{};
  static char name[] = "trueColorTextures", class_name[] = "TrueColorTextures";
  static XtResource table[] = {
      {name, class_name, XtRBoolean, sizeof(Boolean), XtOffsetOf(Resources, on), XtRImmediate, nullptr}};
  XtGetApplicationResources(shell, &resources, table, XtNumber(table), nullptr, 0);
  return resources.on != False;
}

}  // namespace

GraphWindow::GraphWindow(const char* name)
    : VkWindow(name), prompts_(*this), converters_(prompts_, quilsave, run_shell) {
  addMenus();

  graph_ = std::make_unique<VkGraph>("graph", mainWindowWidget());
  const Widget graph = graph_->graphWidget();
  XtVaSetValues(graph, SgNeditableArcs, False, SgNokToAdd, False, SgNarcWidth, 20, SgNarcDirection,
                SgARC_DOWN, nullptr);
  XtAddCallback(graph, SgNnewNodeCallback, newNodeCallback, this);
  XtAddCallback(graph, SgNnewArcCallback, newArcCallback, this);
  XtAddCallback(graph, SgNarcMovedCallback, arcMovedCallback, this);
  XtAddCallback(graph, SgNdefaultActionCallback, defaultActionCallback, this);
  graph_->displayAll();
  graph_->doLayout();
  addView(graph_.get());

  read_convert_options();
  if (auto* toggle = textureImageToggle()) toggle->setVisualState(false);
  make256table(theApplication->display(), c256);
  true_color_textures_ = true_color_textures(baseWidget());

  theApplication->addCallback(VkApp::displayLostCallback, this, &GraphWindow::displayLost);
  showTitle();
  showGestures(false);
}

GraphWindow::~GraphWindow() { killpbxsend(); }

void GraphWindow::addMenus() {
  static const VkMenuDesc file[] = {
      {kAction, "New", newCallback},
      {kAction, "Open", openCallback},
      {kAction, "Save", saveCallback},
      {kAction, "Save As...", saveAsCallback},
      kSeparator,
      {kAction, "Quit", quitCallback},
      kEnd,
  };
  static const VkMenuDesc edit[] = {
      {kToggle, "Edit Mode", editCallback},
      {kAction, "Delete Link", deleteLinkCallback},
      kEnd,
  };
  static const VkMenuDesc view[] = {
      {kAction, "Default", setDefaultCallback},
      {kToggle, kTextureImageLabel, dpyimgCallback},
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

void GraphWindow::edit(Widget, XtPointer data) {
  const bool on = static_cast<const XmToggleButtonCallbackStruct*>(data)->set != XmUNSET;
  const Boolean editable = on ? True : False;
  XtVaSetValues(graph_->graphWidget(), SgNeditableArcs, editable, SgNokToAdd, editable, nullptr);
  showGestures(on);
}

void GraphWindow::setDefault() {
  _displayTexImg = 0;
  if (auto* toggle = textureImageToggle()) toggle->setVisualState(false);
}

void GraphWindow::dpyimg() { _displayTexImg = _displayTexImg > 0 ? 0 : 1; }

void GraphWindow::killpbxsend() {
  for (const char* const line : kKillLoaders) run_shell(line);
}

void GraphWindow::displayLost(VkApp*, void*, void*) { killpbxsend(); }

void GraphWindow::showGestures(bool editing) {
  setStatus(
      editing
          ? "Ctrl+drag node to node: new arc  |  drag end of selected arc: move it  |  "
            "double-click background: new node  |  Delete: delete link"
          : "Click: select, Shift adds  |  drag: move a node, pan  |  wheel: scroll, Ctrl+wheel: zoom  |  "
            "double-click, Return: open  |  Ctrl+E: edit mode");
}
