/// @file
/// The one main window: what it consists of, and which part does what the menus and the graph ask for.
#pragma once

#include <memory>
#include <string>

#include "editor/canvasmenus.h"
#include "editor/converters.h"
#include "editor/editflags.h"
#include "editor/filecommands.h"
#include "editor/gestures.h"
#include "editor/model/history.h"
#include "editor/remembered.h"
#include "editor/settings.h"
#include "editor/structgraph.h"
#include "editor/texturedisplay.h"
#include "editor/unsavedwork.h"
#include "editor/windowprompts.h"
#include "viewkit/forward.h"
#include "viewkit/linkspane.h"
#include "viewkit/timer.h"
#include "viewkit/tooltip.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkgraph.h"
#include "viewkit/vkmenu.h"
#include "viewkit/vkwindow.h"

/// The editor's main window: owns the parts that do the work, and connects them. What the user asks for
/// arrives in a static member (menu and graph callbacks, with the window as their client data), which
/// forwards to the ordinary member of the same meaning, and this to the part.
class GraphWindow : public VkWindow, private SceneDisplay, private TextureDisplay {
 public:
  explicit GraphWindow(const char* name);
  ~GraphWindow() override;

  const char* className() const override { return "GraphWindow"; }

  /// Opens a scene as File > Open does once it is chosen.
  void openFile(const std::string& path) { files_.openFile(path); }

  /// Says something on the status line, before the help on gestures. Empty: nothing.
  void tell(const std::string& text);

  /// The window's view.
  VkGraph& graph() { return *graph_; }

  /// What a dialog's answer asks for; attached to every dialog's VkPrefDialog::prefCallback.
  /// @param reason  a `const VkDialogReason*`.
  void handlePrefs(VkComponent* dialog, void* clientData, void* reason);
  /// Writes what a property dialog shows into its record; the two numbers are not used.
  /// @returns 1, or 0 when there is no such kind of dialog or record.
  int applyChanges(VkPrefDialog* dialog, int, int);

  /// @name Forwards for their names, see windownames.cc.
  /// @{

  /// The functions of structgraph.h for the current scene.
  void struct_graph(VkGraph* graph);
  VkNode* getQuilVkNode(VkGraph* graph, const std::string& name) const;
  /// Adds the arc from `parent` to the node named `child_name`, which is made when the graph lacks it.
  void addChild(VkNode* parent, const std::string& child_name);

  /// The link rules (see modifygraph.h) for the records that nodes stand for. @returns 1, or 0 when refused.
  int quilAddLink(const VkNode* parent, const VkNode* child);
  int quilDeleteLink(const VkNode* parent, const VkNode* child);
  int quilModifyLink(const VkNode* old_parent, const VkNode* old_child, const VkNode* new_parent,
                     const VkNode* new_child);
  /// Changes of the picture alone, see VkGraph::remove and GraphGestures::displaced.
  void deleteLink(VkNode* parent, VkNode* child);
  void deleteDupChild(VkNode* parent, VkNode* child);

  /// The write-backs, one for each kind of node, see values::Dialog::write_back.
  int sceneChanged(VkPrefItem* top);
  int shapeChanged(VkPrefItem* top, unsigned long index);
  int texChanged(VkPrefItem* top, unsigned long index);
  int objChanged(VkPrefItem* top, unsigned long index);
  int matChanged(VkPrefItem* top, unsigned long index);
  int camChanged(VkPrefItem* top, unsigned long index);
  int envChanged(VkPrefItem* top, unsigned long index);
  int lightChanged(VkPrefItem* top, unsigned long index);
  int partChanged(VkPrefItem* top, unsigned long index);
  int animChanged(VkPrefItem* top, unsigned long index);
  int lodChanged(VkPrefItem* top, unsigned long index);
  int chrootChanged(VkPrefItem* top, unsigned long index);
  int jointChanged(VkPrefItem* top, unsigned long index);
  int effectorChanged(VkPrefItem* top, unsigned long index);

  /// Take the options of the display-list converter, or of the viewer-format converter, from their dialog,
  /// and write the options file.
  void applyOptions(VkPrefDialog* dialog);
  void applyOptions2(VkPrefDialog* dialog);

  /// Writes the picture of the whole graph as PostScript. @returns whether that worked.
  bool print(const std::string& path);

  /// Stops the loaders that send previews to a development board.
  static void killpbxsend();
  /// @}

 private:
  // File.
  void newGraph() { files_.clear(); }
  void open() { files_.open(); }
  void save() { files_.save(); }
  void saveAs() { files_.saveAs(); }
  void exportPicture() { files_.exportPicture(); }
  void recover() { files_.recover(); }
  template <std::size_t Place>
  void openRecent() {
    if (Place < remembered_.files().size()) openFile(std::string(remembered_.files()[Place]));
  }
  void quit();

  // Edit.
  void edit(XmToggleButtonCallbackStruct& toggle) { setEditing(toggle.set != XmUNSET); }
  void setEditing(bool on);
  void dialogKey(PropertyDialog* dialog, void* clientData, void* key);
  void tellIfUnwritten(const VkPrefDialog& dialog);
  void editModeWanted(PropertyDialog* dialog, void* clientData, void* callData);
  void deleteLinkMenu() { gestures_.deleteSelectedLink(); }
  void undo();
  void redo();
  void find() { graph_->startFind(); }
  void selectAll() { graph_->selectAll(); }
  void linkSelected() { gestures_.linkSelected(); }
  void linkToFound();
  /// Undo or Redo.
  struct Direction {
    const char* label;
    const Step* (History::*take)();
    const Step* (History::*give_back)();  ///< after a step that could not be carried out
    void (qi::Change::*change)(Qis&) const;
    void (StepPicture::*picture)();
  };
  /// Carries out the step that `take` gives, if there is one and Edit Mode is on.
  void carryOut(const Direction& way);
  /// Shows in the menu which step each would take back or make again.
  void showSteps();
  void historyChanged();

  // View.
  void setDefault();
  void recordNames(XmToggleButtonCallbackStruct& toggle);
  void neighbours(XmToggleButtonCallbackStruct& toggle) { highlightNeighbours(toggle.set != XmUNSET); }
  void highlightNeighbours(bool on);
  void hover(SgGraphCallbackStruct& call);
  void overview(XmToggleButtonCallbackStruct& toggle);
  void overviewKey(SgGraphCallbackStruct& call);
  void links(XmToggleButtonCallbackStruct& toggle) { showLinks(toggle.set != XmUNSET); }
  void showLinks(bool shown);
  void unlinkedRecords(XmToggleButtonCallbackStruct& toggle);
  /// Shows the scene in memory, with all that is known of the graph left where it is.
  void rebuildGraph();
  /// Builds the graph of the scene in place of the one that is there, which stays when that fails.
  /// @param places  of its nodes; null: arranged afresh
  void buildGraph(const std::function<void(double)>& progress, const NamedPlaces* places);
  /// Shows in the menu whether the map is on.
  void showOverview(bool shown);
  void dpyimg() { _displayTexImg = _displayTexImg > 0 ? 0 : 1; }

  void layered() { arrange(VkGraph::Arrangement::Layered); }
  void compact() { arrange(VkGraph::Arrangement::Compact); }
  void arrange(VkGraph::Arrangement arrangement);
  void arrangeAgain() { gestures_.arrangeAgain(); }
  /// Shows in the menu how the graph is arranged.
  void showArrangement();
  void expandAll() { graph_->expandAll(); }
  void showAll() { graph_->showAll(); }

  // KAVO tool.
  void setDir() { converters_.setOutputDirectory(); }
  void killpb() { converters_.killLoaders(); }
  void quickpvi() { converters_.quickPreview(kKavoDxViewer); }
  void quickpv() { converters_.quickPreview(kKavoEmuBoard); }
  void kavopvi() { converters_.fullPreview(kKavoDxViewer); }
  void kavopv() { converters_.fullPreview(kKavoEmuBoard); }
  void toDL() { converters_.convertToDisplayLists(); }
  void kavopvpp() { converters_.prepareDisplayLists(); }

  // QUIL2 tool.
  void zexview() { converters_.viewerPreview(ZexBoard::dx_viewer); }
  void zexviewg() { converters_.viewerPreview(ZexBoard::emu_board); }
  void quil2zexoption() { converters_.convertToViewerFile(); }
  void setDir2() { setDir(); }
  void q2view() { converters_.executeScript(); }
  void setscript() { converters_.chooseScript(); }
  void setfile() { converters_.chooseScriptScene(); }
  void zexpvpp() { converters_.prepareViewerFile(); }

  // The graph's gestures.
  void newNode(SgGraphCallbackStruct& call) { gestures_.newNode(call); }
  void newArc(SgGraphCallbackStruct& call) { gestures_.newArc(call); }
  void mayLink(SgGraphCallbackStruct& call) { GraphGestures::mayLink(call); }
  void target(SgGraphCallbackStruct& call);
  void arcMoved(SgGraphCallbackStruct& call) { gestures_.arcMoved(call); }
  void defaultAction(SgGraphCallbackStruct& call);
  void nodeAction(const SgGraphCallbackStruct& call);
  void nodesMoved(VkGraph* graph, void* clientData, void* moved);
  void openDialog(const std::string& node);
  void openAfresh(PropertyDialog* dialog, void* clientData, void* callData);

  template <auto Member>
  static constexpr XtCallbackProc forward = viewkit::Forward<Member>::call;

  static constexpr auto newCallback = forward<&GraphWindow::newGraph>;
  static constexpr auto openCallback = forward<&GraphWindow::open>;
  static constexpr auto saveCallback = forward<&GraphWindow::save>;
  static constexpr auto saveAsCallback = forward<&GraphWindow::saveAs>;
  static constexpr auto exportPictureCallback = forward<&GraphWindow::exportPicture>;
  template <std::size_t Place>
  static constexpr auto openRecentCallback = forward<&GraphWindow::openRecent<Place>>;
  static constexpr auto recoverCallback = forward<&GraphWindow::recover>;
  static constexpr auto quitCallback = forward<&GraphWindow::quit>;
  static constexpr auto editCallback = forward<&GraphWindow::edit>;
  static constexpr auto deleteLinkCallback = forward<&GraphWindow::deleteLinkMenu>;
  static constexpr auto undoCallback = forward<&GraphWindow::undo>;
  static constexpr auto linkSelectedCallback = forward<&GraphWindow::linkSelected>;
  static constexpr auto selectAllCallback = forward<&GraphWindow::selectAll>;
  static constexpr auto linkToFoundCallback = forward<&GraphWindow::linkToFound>;
  static constexpr auto findCallback = forward<&GraphWindow::find>;
  static constexpr auto recordNamesCallback = forward<&GraphWindow::recordNames>;
  static constexpr auto neighboursCallback = forward<&GraphWindow::neighbours>;
  static constexpr auto hoverCallback = forward<&GraphWindow::hover>;
  static constexpr auto redoCallback = forward<&GraphWindow::redo>;
  static constexpr auto setDefaultCallback = forward<&GraphWindow::setDefault>;
  static constexpr auto dpyimgCallback = forward<&GraphWindow::dpyimg>;
  static constexpr auto overviewCallback = forward<&GraphWindow::overview>;
  static constexpr auto overviewKeyCallback = forward<&GraphWindow::overviewKey>;
  static constexpr auto unlinkedRecordsCallback = forward<&GraphWindow::unlinkedRecords>;
  static constexpr auto rebuildGraphCallback = forward<&GraphWindow::rebuildGraph>;
  static constexpr auto linksCallback = forward<&GraphWindow::links>;
  static constexpr auto setDirCallback = forward<&GraphWindow::setDir>;
  static constexpr auto killpbCallback = forward<&GraphWindow::killpb>;
  static constexpr auto layeredCallback = forward<&GraphWindow::layered>;
  static constexpr auto compactCallback = forward<&GraphWindow::compact>;
  static constexpr auto arrangeAgainCallback = forward<&GraphWindow::arrangeAgain>;
  static constexpr auto expandAllCallback = forward<&GraphWindow::expandAll>;
  static constexpr auto showAllCallback = forward<&GraphWindow::showAll>;
  static constexpr auto quickpviCallback = forward<&GraphWindow::quickpvi>;
  static constexpr auto quickpvCallback = forward<&GraphWindow::quickpv>;
  static constexpr auto kavoiCallback = forward<&GraphWindow::kavopvi>;
  static constexpr auto kavoCallback = forward<&GraphWindow::kavopv>;
  static constexpr auto toDLCallback = forward<&GraphWindow::toDL>;
  static constexpr auto zexviewCallback = forward<&GraphWindow::zexview>;
  static constexpr auto zexviewgCallback = forward<&GraphWindow::zexviewg>;
  static constexpr auto quil2zexoptionCallback = forward<&GraphWindow::quil2zexoption>;
  static constexpr auto setDir2Callback = forward<&GraphWindow::setDir2>;
  static constexpr auto q2viewCallback = forward<&GraphWindow::q2view>;
  static constexpr auto setscriptCallback = forward<&GraphWindow::setscript>;
  static constexpr auto setfileCallback = forward<&GraphWindow::setfile>;
  static constexpr auto newNodeCallback = forward<&GraphWindow::newNode>;
  static constexpr auto mayLinkCallback = forward<&GraphWindow::mayLink>;
  static constexpr auto targetCallback = forward<&GraphWindow::target>;
  static constexpr auto newArcCallback = forward<&GraphWindow::newArc>;
  static constexpr auto arcMovedCallback = forward<&GraphWindow::arcMoved>;
  static constexpr auto defaultActionCallback = forward<&GraphWindow::defaultAction>;

  void showScene(const std::function<void(double)>& progress) override;
  void showNoScene() override;
  void showFile() override { tendUnsavedWork(); }
  void noteFile(const std::string& path) override;
  std::string writePicture(const PictureChoice& choice, picture::FileFormat format) override;
  void handleWmDeleteMessage() override { quit(); }
  void handleFocus() override;

  void addMenus();
  /// Adds the menus and then the view, which is the order that the window's widgets have.
  std::unique_ptr<VkGraph> makeView();
  VkMenuToggle* textureImageToggle() const;
  void showTitle();
  /// Shows the last files in the menu and on the empty canvas.
  void showRecent();
  /// Brings back what the window was like in the last run, or keeps it for the next.
  void takeUp();
  void leave();
  void showStatus();
  /// Saves for a converter, and tells why it could not.
  int saveFor(const std::string& path, int mode);
  /// Follows the scene's state: the mark in the title, the recovery copies.
  void tendUnsavedWork();
  void displayLost(VkApp* app, void* client_data, void* call_data);

  Remembered remembered_;
  // A part may use those that stand before it, which outlive it.
  std::unique_ptr<VkGraph> graph_;
  LinksPane links_{"links", *graph_};
  const Settings settings_{read_settings(baseWidget())};
  WindowPrompts prompts_;
  History history_;
  GraphGestures gestures_;
  CanvasMenus canvasMenus_;
  NodeDialogs dialogs_;
  UnsavedWork unsaved_;
  FileCommands files_;
  Converters converters_;
  viewkit::Tooltip tooltip_{baseWidget()};
  viewkit::Timer tending_{[this] { tendUnsavedWork(); }};
  bool showsUnlinked_ = false;
  std::string pointed_;  ///< of what is under the pointer; stands on the status line before the rest
  std::string told_;     ///< what stands on the status line before the help
};
