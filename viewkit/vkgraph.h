/// @file
/// A graph of VkNodes in a graph widget: building, finding, laying out, printing.
#pragma once

#include <X11/Intrinsic.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "picture/arrangement.h"
#include "viewkit/forward.h"
#include "viewkit/sggraph/Graph.h"
#include "viewkit/vkcomponent.h"
#include "viewkit/vknode.h"
#include "viewkit/vkplaces.h"

class GraphFolds;
class GraphStrip;
struct GraphPicture;
class VkPopupMenu;

/// What a node is to be chosen for, see VkGraph::choose.
struct VkNodeChoice {
  std::string label;  ///< stands before the field, such as "Link to:"
  /// This one would be chosen now; null: none, or the choice is over.
  std::function<void(VkNode*)> offered;
  /// This one was chosen.
  std::function<void(VkNode*)> chosen;
};

/// What a VkGraph holds of its nodes: what can be set aside for others.
struct VkGraphContents {
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
  };

  VkGraphContents();
  ~VkGraphContents();
  VkGraphContents(VkGraphContents&&) noexcept;
  VkGraphContents& operator=(VkGraphContents&&) noexcept;

  std::vector<std::unique_ptr<VkNode>> nodes_;
  std::unordered_map<std::string, viewkit::LinkList<VkNode>, NameHash, std::equal_to<>> byName_;
  std::unordered_map<const VkNode*, std::unique_ptr<VkNode>> waiting_;
  std::unordered_map<std::string, VkNode*, NameHash, std::equal_to<>> withdrawn_;  // of those
  VkNode* worked_ = nullptr;  // what was added or linked last
  std::unique_ptr<GraphFolds> folds_;
  std::unordered_set<SgArc> newArcs_;  // not drawn by a layout yet
  bool compact_ = false;               // the picture that is there
  bool laidOut_ = false;               // there was a layout since the graph was empty
  bool layoutIsDue_ = false;           // something was added, removed or displayed since the last one
};

/// Owns the nodes, keeps them findable by name, and shows them in a graph widget with a strip for zoom and
/// search under it. Adding is cheap and paints nothing: nodes stay hidden until one of the display functions
/// is called.
class VkGraph : public VkComponent, private VkGraphContents {
 public:
  using Arrangement = picture::Arrangement;

  /// The list that is told when the user has moved nodes; the call data is a `const Moved*`.
  static const char* const nodesMovedCallback;
  struct Moved {
    VkPlaces before, after;  ///< of the nodes that were moved
  };

  /// What a menu can be asked for.
  enum class Spot { Node, Arc, Background };
  /// The list that is told when a menu is about to come up, after menuAsked() has changed; the call data is a
  /// `const Asked*`.
  static const char* const menuCallback;
  struct Asked {
    Spot spot = Spot::Background;
    VkNode* node = nullptr;
    SgArc arc = 0;
    SgPoint position;  ///< of the pointer on the plane
  };

  VkGraph(const char* name, Widget parent);
  ~VkGraph() override;
  const char* className() const override { return "VkGraph"; }

  /// The graph widget (sgGraphWidgetClass) inside baseWidget(); null once it was destroyed.
  Widget graphWidget() const { return graph_; }
  /// The parent of what is to stand beside it, at its right; an XmPanedWindow.
  Widget side() const { return split_; }

  /// Makes a node which the graph owns but which is not in the graph: it can't be found, and enters the graph
  /// by add(). Those that never do are freed with the graph or by clearAll.
  template <class Node = VkNode, class... Arguments>
  Node* make(Arguments&&... arguments) {
    auto node = std::make_unique<Node>(std::forward<Arguments>(arguments)...);
    Node* made = node.get();
    keepWaiting(std::move(node));
    return made;
  }

  /// Brings a node into the graph, hidden. One that is in already stays as it is. Names need not be unique:
  /// find() gives the one that came first.
  VkNode* add(std::unique_ptr<VkNode> node);
  /// The same for a node of make(); nodes of other graphs are ignored.
  void add(VkNode* node);
  /// Links two nodes and draws the arc; nodes that aren't in the graph enter it, the parent first.
  /// @param attribute  a text at the arc; null for none.
  void add(VkNode* parent, VkNode* child, const char* attribute = nullptr);
  /// Takes away one link from `parent` to `child` with its arc: a selected arc if there is one, else the one
  /// that was added last. The nodes stay. Nodes of other graphs are ignored.
  void remove(VkNode* parent, VkNode* child);
  /// Shows nodes that have no arcs, of this graph or of make(), in a block of their own below all others, and
  /// starts a new row where the tint changes.
  void addBlock(std::span<VkNode* const> nodes);
  /// Takes a node without arcs out of the graph, but keeps it: add() brings it back where it was.
  void withdraw(VkNode* node);
  /// The withdrawn node of that name, or null.
  VkNode* withdrawn(std::string_view name) const;
  /// Takes a node out of the graph with all its links and arcs and frees it.
  void remove(VkNode* node);
  /// The same, but the node is handed over; add() brings it back. Null for nodes of other graphs.
  std::unique_ptr<VkNode> take(VkNode* node);
  /// Frees all nodes. Safe in any callback of the graph widget.
  void clearAll() { setAside(); }

  /// All nodes and their picture, set aside. They are freed with it; until they are taken back, none of them
  /// may be used.
  class Kept {
    friend class VkGraph;
    std::string toFind_;
    VkGraphContents contents_;
    SgKeptGraph picture_;  // goes first
  };
  /// Leaves the graph empty, as clearAll() does.
  Kept setAside();
  /// Frees the nodes that are there, and brings back those that were set aside. The graph widget must not
  /// have been destroyed since.
  void takeBack(Kept kept);

  /// The node of that name, or null. In constant time.
  VkNode* find(std::string_view name) const;
  /// The nodes that `text` may mean, upper and lower case alike: first those of just that name, then those
  /// whose name or label begins so, whose title does, and those that contain it somewhere; in the order in
  /// which they entered. "mat:red" looks among the nodes that are tinted as "mat" are. Linear.
  std::vector<VkNode*> findAll(std::string_view text) const;

  std::size_t numNodes() const { return nodes_.size(); }
  std::vector<VkNode*> allNodes() const;

  /// Whether nodes show their titles, as far as they have any.
  void setShowsTitles(bool on);
  bool showsTitles() const { return showsTitles_; }
  /// Shows the titles as they are now. Linear.
  void updateTitles();

  /// The user wants to type what is to be found.
  void startFind();
  /// Has the user choose a node in the find field: Return takes the one that was found, Escape gives up. What
  /// is selected now is selected again when `chosen` is called, and after a choice that is given up.
  void choose(VkNodeChoice choice);

  /// The list that is told of a key that was pressed in the graph and has no meaning there; the call data is
  /// the `const XKeyEvent*`.
  static const char* const keyCallback;
  /// The node that the keyboard works on, see SgGraphCurrentNode; null: none.
  VkNode* current() const;

  void zoomIn();
  void zoomOut();
  /// As large as it can be, up to 100 %: all, or what is selected. Without anything selected, all.
  void fit();
  void fitSelected();
  /// The top of the graph at 100 %, as when it was opened.
  void showTop();

  /// Selects all nodes that are seen.
  void selectAll();
  enum class Kin { Parents, Children, AllAbove, AllBelow };
  /// Selects beside the selected nodes those from which arcs lead to them, or to which arcs lead from them;
  /// AllAbove and AllBelow go on from these until there are no more.
  void selectKin(Kin kin);

  /// Show all nodes; one node; one node and its children. Arcs show when both their nodes do.
  void displayAll();
  void display(VkNode* node);
  void displayWithChildren(VkNode* node);

  /// Gives places to displayed nodes that have none and draws new arcs, if anything was added, removed or
  /// displayed since the last time. The first layout arranges all and shows the top of the graph. Later ones
  /// leave everything where it is but for what a new arc forces to move, and nothing that the user placed.
  void doLayout();
  /// The same for the arcs from one node, whose children then stand below it; those with other parents, too,
  /// stay in any case.
  void doSubtreeLayout(VkNode* node);
  /// Where a new node is wanted: the middle of it, on the plane. Counts until it has its place.
  void want(VkNode* node, SgPoint middle);

  /// Arranges all displayed nodes afresh, those that the user placed too. The node that was last worked on
  /// stays where it is in the window.
  void arrangeAgain();
  /// Chooses the arrangement, of graphs to come too, and arranges the present one so.
  void setArrangement(Arrangement arrangement);
  /// That of the picture that is there.
  Arrangement arrangement() const { return compact_ ? Arrangement::Compact : Arrangement::Layered; }

  /// Folds a node: what is reached through it only is not seen any more, and the other nodes close up. Arcs
  /// of hidden nodes are drawn from and to the folded one. All that is said of places elsewhere is about the
  /// open picture, which comes back when nothing is folded: edits, their steps and exports of the whole graph
  /// know of no folds. An edit hides nothing; one that links a folded node to another unfolds it.
  void collapse(VkNode* node);
  void expand(VkNode* node);
  void expandAll();
  bool isCollapsed(const VkNode* node) const;
  /// Whether it is open and would hide something. Linear.
  bool canCollapse(VkNode* node) const;
  /// Unfolds what hides one of the nodes, and shows them beside the others if only some are shown. @returns
  /// whether any was hidden.
  bool uncover(const std::vector<VkNode*>& nodes);

  /// Shows the selected nodes, and those that can be reached over so many arcs, whatever their direction, in
  /// a picture of their own; no others. All that is said of folding holds for it: the open picture comes back
  /// by showAll(). Nodes that are added, linked or looked for come beside those that are shown.
  void showOnlySelected(int steps);
  void showAll();

  /// The menu that the right button brings up, for the application to fill; one without items stays away.
  VkPopupMenu& popupMenu(Spot spot);
  /// What the last menu was asked for. Its node and arc may have gone since the menu's items were called.
  const Asked& menuAsked() const { return asked_; }

  /// Selects the node, and nothing else, and brings it into view; unfolds what hides it. Where only some are
  /// shown, it is beside them until another node comes so.
  void reveal(VkNode* node);
  /// Scrolls to the first of the nodes, unless one of them is in sight. Those that aren't in the graph don't
  /// count.
  void showOneOf(std::vector<VkNode*> nodes);

  /// Where all nodes and arcs lie. Linear.
  VkPlaces places() const;
  /// Brings nodes and arcs back to such places. Costs what they are, as long as the arrangement stays.
  void arrange(const VkPlaces& places);
  /// From now on, takes down where nodes and arcs lie before they come to lie elsewhere. The user moves none
  /// meanwhile, and none is taken out that is in the graph.
  void recordPlaces();
  /// What has changed its place since recordPlaces(), as keepDifferences leaves it, and no longer records.
  /// Costs what has changed; all while nodes are folded, and where all were arranged.
  Moved recordedPlaces();
  /// No longer records.
  void dropRecord() { record_.reset(); }

  /// Writes the whole graph as one PostScript page.
  /// @returns whether all of it was written.
  bool saveToFile(const char* path) const;
  /// Writes the whole graph, or what the window shows of it.
  /// @returns what went wrong, a line without its end; empty when nothing did.
  std::string exportPicture(const std::string& path, picture::FileFormat format, bool viewOnly) const;

 protected:
  void widgetDestroyed() override;

 private:
  static void changedCallback(Widget widget, XtPointer self, XtPointer data);
  static void graphDestroyedCallback(Widget widget, XtPointer self, XtPointer data);
  void changed(Widget widget, XtPointer data);
  static void movedCallback(Widget widget, XtPointer self, XtPointer data);
  void nodesMoved(Widget widget, XtPointer data);
  void graphDestroyed();
  void foldWanted(SgGraphCallbackStruct& call);
  void keyPressed(SgGraphCallbackStruct& call);
  void menuWanted(SgGraphCallbackStruct& call);
  static constexpr XtCallbackProc foldCallback = viewkit::Forward<&VkGraph::foldWanted>::call;
  static constexpr XtCallbackProc keyCallbackProc = viewkit::Forward<&VkGraph::keyPressed>::call;
  static constexpr XtCallbackProc menuCallbackProc = viewkit::Forward<&VkGraph::menuWanted>::call;
  bool isDisplayed(const VkNode* node) const;
  /// Whether people see the node itself.
  bool isSeen(const VkNode* node) const;
  /// The node that is seen for `wish`, or if none is, another one that is seen.
  VkNode* someSeen(VkNode* wish) const;
  /// Unfolds what the nodes are folded into. @returns whether any was.
  bool unfold(const std::vector<VkNode*>& nodes);
  void showHowMany() const;
  /// The node that is seen for it.
  VkNode* seen(VkNode* node) const;
  /// Makes a change of the open picture. @param afresh  whether what is folded is looked for afresh.
  template <class Change>
  void inOpenPicture(bool afresh, Change&& change) const;
  /// Changes what is folded; the node stays where it is in the window.
  template <class Change>
  void changeFolds(VkNode* still, Change&& change);
  void keepWaiting(std::unique_ptr<VkNode> node);
  /// Lets a waiting node enter. @returns whether the node is in the graph now.
  bool admit(VkNode* node);
  void enter(std::unique_ptr<VkNode> node);
  static void link(VkNode* parent, VkNode* child);
  static void unlink(VkNode* parent, VkNode* child);
  /// The arcs with the nodes at their ends, in the order of the graph widget.
  struct ArcEnds {
    SgArc arc;
    VkNode *parent, *child;
  };
  std::vector<ArcEnds> arcs() const;
  void unhide(const std::vector<VkNode*>& nodes);
  std::vector<VkNode*> displayed() const;
  GraphPicture picture() const;
  void placeAll(const GraphPicture& picture);
  void placeWithin(const VkPlaces& places);
  /// Places and draws what is new in the picture. @param root  null, or the node whose arcs count as new.
  void placeNew(const VkNode* root);
  void setBends(SgArc arc, std::span<const SgPoint> bends);
  VkNode* workedOn() const;
  VkPlaces::Node placeOf(VkNode* node) const;
  /// The bends of the arcs between two nodes that have any.
  std::vector<VkPlaces::Bends> bendsBetween(const VkPlaces::Ends& ends) const;
  // Each is called before the change.
  void noteEntry(VkNode* node);
  void notePlace(VkNode* node);
  void noteBends(const VkPlaces::Ends& ends);
  void noteAll();

  /// Where what has changed its place lay before.
  struct Record {
    std::optional<VkPlaces> all;                                       ///< of all nodes and arcs
    std::unordered_map<VkNode*, std::optional<VkPlaces::Node>> nodes;  ///< nothing: it wasn't in the graph
    std::map<VkPlaces::Ends, std::vector<VkPlaces::Bends>> arcs;
    bool compact = false;
  };
  std::unique_ptr<Record> record_;
  Widget graph_ = nullptr, split_ = nullptr;
  std::unique_ptr<GraphStrip> strip_;
  std::map<Spot, std::unique_ptr<VkPopupMenu>> popups_;
  Asked asked_;
  std::optional<Arrangement> chosen_;
  bool showsTitles_ = false;
};
