/// @file
/// The one main window: menus, graph view, and the commands behind them.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "dialogs/propertydialog.h"
#include "editor/converters.h"
#include "editor/windowprompts.h"
#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkgraph.h"
#include "viewkit/vkmenu.h"
#include "viewkit/vkwindow.h"

/// The editor's main window. Menu and graph callbacks are static members that forward to the ordinary member
/// of the same meaning; their client data is the window.
class GraphWindow : public VkWindow {
 public:
  explicit GraphWindow(const char* name);
  ~GraphWindow() override;

  const char* className() const override { return "GraphWindow"; }

  /// The window's view.
  VkGraph& graph() { return *graph_; }

  /// @name How nodes show textures; asked when a node is built.
  /// @{
  /// Whether as pictures.
  bool displaysTextureImages() const { return _displayTexImg != 0; }
  /// Pixel values for the 8-bit colours that the pictures consist of, see make256table.
  std::span<const unsigned char, 256> colorTable() const { return c256; }
  /// Whether a TrueColor screen of depth 24, which has no pictures otherwise, shows them in their own
  /// colours: the application's resource "trueColorTextures".
  bool trueColorTextures() const { return true_color_textures_; }
  /// @}

  /// Builds the current scene into `graph`: a node per record that takes part in a reference and an arc per
  /// reference, in their fixed order. Nodes that the graph has already are reused, but those for levels of
  /// detail are always new.
  void struct_graph(VkGraph* graph);
  /// The node of that name in `graph`, or else a new one that is not in the graph yet; it enters with its
  /// first arc.
  VkNode* getQuilVkNode(VkGraph* graph, const std::string& name) const;
  /// Adds the arc from `parent` to the node named `child_name`, which is made when the graph lacks it.
  void addChild(VkNode* parent, const std::string& child_name);

  /// Makes the records refer to each other as an arc parent -> child says.
  /// @returns 1, or 0 when refused. The graph is the caller's to change; likewise for the two below.
  int quilAddLink(const VkNode* parent, const VkNode* child);
  /// Removes the reference behind an arc. @returns 1, or 0 when there is no rule for the pair.
  int quilDeleteLink(const VkNode* parent, const VkNode* child);
  /// Changes one end of the reference behind an arc. @returns 1, or 0 when refused.
  int quilModifyLink(const VkNode* old_parent, const VkNode* old_child, const VkNode* new_parent,
                     const VkNode* new_child);

  /// Removes one arc parent -> child from the graph only; the nodes stay.
  void deleteLink(VkNode* parent, VkNode* child);
  /// After a move to `parent`: removes the arc of the child that `child` displaced from a single slot.
  void deleteDupChild(VkNode* parent, VkNode* child);

  /// What a dialog's answer asks for; attached to every dialog's VkPrefDialog::prefCallback.
  /// @param reason  a `const VkDialogReason*`.
  void handlePrefs(VkComponent* dialog, void* clientData, void* reason);
  /// Writes what a property dialog shows into its record; the two numbers mean nothing.
  /// @returns 1, or 0 when there is no such kind of dialog or record.
  int applyChanges(VkPrefDialog* dialog, int, int);

  /// @name The write-backs, one for each kind of record.
  /// Writes what the items in `top` show into the record, the one of that number in its list, if any of them
  /// has changed. @returns 1, or 0 when there is no such record.
  /// @{
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
  /// @}

  /// Take the options of the display-list converter, or of the viewer-format converter, from their dialog,
  /// and write the options file.
  void applyOptions(VkPrefDialog* dialog);
  void applyOptions2(VkPrefDialog* dialog);

  /// Writes the picture of the whole graph as PostScript. @returns whether that worked.
  bool print(const std::string& path);

  /// Stops the loaders that send previews to a development board.
  static void killpbxsend();

 private:
  // The menu items' commands, in the order of the menus.
  void newGraph();
  void open();
  void save();
  void saveAs();
  void quit();
  void edit(Widget toggle, XtPointer data);
  void deleteLinkMenu();
  void setDefault();
  void dpyimg();

  // Display-list conversion and its previews on a board.
  void setDir() { converters_.setOutputDirectory(); }
  void killpb() { converters_.killLoaders(); }
  void quickpvi() { converters_.quickPreview(kKavoDxViewer); }
  void quickpv() { converters_.quickPreview(kKavoEmuBoard); }
  void kavopvi() { converters_.fullPreview(kKavoDxViewer); }
  void kavopv() { converters_.fullPreview(kKavoEmuBoard); }
  void toDL() { converters_.convertToDisplayLists(); }
  void kavopvpp() { converters_.prepareDisplayLists(); }

  // Viewer-format conversion, its previews, and the user's own script.
  void zexview() { converters_.viewerPreview(ZexBoard::dx_viewer); }
  void zexviewg() { converters_.viewerPreview(ZexBoard::emu_board); }
  void quil2zexoption() { converters_.convertToViewerFile(); }
  void setDir2() { setDir(); }
  void q2view() { converters_.executeScript(); }
  void setscript() { converters_.chooseScript(); }
  void setfile() { converters_.chooseScriptScene(); }
  void zexpvpp() { converters_.prepareViewerFile(); }

  // The graph's gestures; `data` is an SgGraphCallbackStruct.
  void newNode(Widget graph, XtPointer data);
  void newArc(Widget graph, XtPointer data);
  void arcMoved(Widget graph, XtPointer data);
  void defaultAction(Widget graph, XtPointer data);
  void nodeAction(const SgGraphCallbackStruct& action);

  template <auto Member>
  static constexpr XtCallbackProc forward = viewkit::Forward<Member>::call;

  static constexpr auto newCallback = forward<&GraphWindow::newGraph>;
  static constexpr auto openCallback = forward<&GraphWindow::open>;
  static constexpr auto saveCallback = forward<&GraphWindow::save>;
  static constexpr auto saveAsCallback = forward<&GraphWindow::saveAs>;
  static constexpr auto quitCallback = forward<&GraphWindow::quit>;
  static constexpr auto editCallback = forward<&GraphWindow::edit>;
  static constexpr auto deleteLinkCallback = forward<&GraphWindow::deleteLinkMenu>;
  static constexpr auto setDefaultCallback = forward<&GraphWindow::setDefault>;
  static constexpr auto dpyimgCallback = forward<&GraphWindow::dpyimg>;
  static constexpr auto setDirCallback = forward<&GraphWindow::setDir>;
  static constexpr auto killpbCallback = forward<&GraphWindow::killpb>;
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
  static constexpr auto newArcCallback = forward<&GraphWindow::newArc>;
  static constexpr auto arcMovedCallback = forward<&GraphWindow::arcMoved>;
  static constexpr auto defaultActionCallback = forward<&GraphWindow::defaultAction>;

  bool editsArcs() const;
  /// Takes down the dialogs for records of a scene that is no longer there.
  void closeDialogs();

  void addMenus();
  VkMenuToggle* textureImageToggle() const;
  /// Saves to the current file name, and says so when that fails.
  void saveToFileName();
  void showTitle();
  void showGestures(bool editing);
  void displayLost(VkApp* app, void* client_data, void* call_data);

  WindowPrompts prompts_;
  Converters converters_;
  std::unique_ptr<VkGraph> graph_;
  std::vector<std::unique_ptr<PropertyDialog>> dialogs_;  ///< every one that was ever opened
  std::string file_name_;                                 ///< of the last Open or Save As; empty before
  unsigned char _displayTexImg = 0;  ///< 1: nodes built from now on show their textures' pictures
  unsigned char c256[256] = {};      ///< the colour table
  bool true_color_textures_ = false;
};
