/// @file
/// Graphs of VkNodes: building, finding, laying out, the strip, printing.
#include <gtest/gtest.h>  // before X's headers

#include "viewkit/vkgraph.h"

#include <Xm/TextF.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include "graphlayout/compact.h"
#include "tests/support/files.h"
#include "tests/support/picturefile.h"
#include "tests/support/scene_like_graph.h"
#include "tests/viewkit/graph_test.h"

namespace {

using support::Point;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Counts those alive, and how often they were built.
class CountedNode : public VkNode {
 public:
  explicit CountedNode(const char* name) : VkNode(name) { ++alive; }
  ~CountedNode() override { --alive; }
  void build(Widget parent) override {
    VkNode::build(parent);
    ++built;
  }
  const char* tintName() const override { return "mat"; }

  int built = 0;
  static inline int alive = 0;
};

class Graph : public WindowTest {
 protected:
  void SetUp() override {
    graph_ = std::make_unique<VkGraph>("graph", window_->mainWindowWidget());
    window_->addView(graph_.get());
  }

  Widget canvas() { return graph_->graphWidget(); }
  VkNode* node(const char* name) {
    VkNode* known = graph_->find(name);
    return known ? known : graph_->make<>(name);
  }
  void link(const char* parent, const char* child) {
    VkNode* above = node(parent);
    graph_->add(above, node(child));
  }
  /// A root with three children, one of which has two.
  void fill() {
    link("root", "left");
    link("root", "middle");
    link("root", "right");
    link("left", "leaf_0");
    link("left", "leaf_1");
    graph_->displayAll();
    graph_->doLayout();
  }
  /// A tree of 301 nodes with two children each, displayed.
  void growTree() {
    for (int i = 0; i < 300; ++i)
      link(("n" + std::to_string(i / 2)).c_str(), ("n" + std::to_string(i + 1)).c_str());
    graph_->displayAll();
  }
  SgRectangle bounds(const char* name) { return SgGraphNodeBounds(graph_->find(name)->baseWidget()); }
  SgPoint inWindow(const char* name) {
    return SgGraphNodeRectangle(graph_->find(name)->baseWidget()).middle();
  }
  static std::vector<std::string> names(const VkNode* node, bool ofChildren) {
    std::vector<std::string> found;
    for (int i = 0; i < (ofChildren ? node->nChildren() : node->nParents()); ++i)
      found.push_back((ofChildren ? node->child(i) : node->parent(i))->name());
    return found;
  }

  /// All nodes in their order.
  std::vector<VkNode*> allNodes() { return graph_->findAll(""); }

  std::unique_ptr<VkGraph> graph_;
};

TEST_F(Graph, RecordedPlacesAreWhatDiffersOfAllPlaces) {
  Random random(5);
  const auto any = [&] {
    return graph_->allNodes()[random.below(static_cast<std::uint32_t>(graph_->numNodes()))];
  };
  const auto expectSame = [](const VkPlaces& recorded, const VkPlaces& differing) {
    EXPECT_EQ(recorded.nodes, differing.nodes);
    EXPECT_EQ(recorded.arcs, differing.arcs);
    EXPECT_EQ(recorded.compact, differing.compact);
  };
  for (const VkGraph::Arrangement arrangement :
       {VkGraph::Arrangement::Layered, VkGraph::Arrangement::Compact}) {
    graph_->clearAll();
    graph_->setArrangement(arrangement);
    for (const auto& [parent, child] : scene_like_graph(60, 2).arcs)
      link(("n" + std::to_string(parent)).c_str(), ("n" + std::to_string(child)).c_str());
    graph_->displayAll();
    graph_->doLayout();
    std::size_t nodes = 0, arcs = 0;
    for (int i = 0; i < 60; ++i) {
      SCOPED_TRACE(i);
      if (i == 40) graph_->collapse(graph_->find("n3"));
      if (i == 50) graph_->expandAll();
      VkPlaces before = graph_->places();
      graph_->recordPlaces();
      VkNode* const one = any();
      switch (random.below(6)) {
        case 0:
          graph_->add(one, any());
          break;
        case 1:
          if (one->nChildren() > 0) graph_->remove(one, one->child(0));
          break;
        case 2:
          graph_->add(one, graph_->make<>(("new" + std::to_string(i)).c_str()));
          break;
        case 3:
          graph_->want(graph_->add(std::make_unique<VkNode>("free")), {50, 50});
          break;
        case 4:
          graph_->doSubtreeLayout(one);
          break;
        default:
          if (i % 3 == 0) graph_->arrangeAgain();
      }
      graph_->displayAll();
      graph_->doLayout();
      const VkGraph::Moved moved = graph_->recordedPlaces();
      VkPlaces after = graph_->places();
      keepDifferences(before, after);
      expectSame(moved.before, before);
      expectSame(moved.after, after);
      nodes += after.nodes.size();
      arcs += after.arcs.size();
    }
    EXPECT_GT(nodes, 20u);
    EXPECT_GT(arcs, 10u);
  }
}

TEST_F(Graph, NodesEnterWithTheirFirstArcParentsFirst) {
  VkNode* parent = graph_->make<>("obj_0");
  VkNode* child = graph_->make<>("mat_0", "a label");
  EXPECT_EQ(graph_->find("obj_0"), nullptr);
  EXPECT_EQ(graph_->numNodes(), 0u);
  graph_->add(parent, child);
  EXPECT_EQ(graph_->find("obj_0"), parent);
  EXPECT_THAT(allNodes(), ElementsAre(parent, child));
  EXPECT_STREQ(child->label(), "a label");
  EXPECT_EQ(viewkit::textResource(child->baseWidget(), XmNlabelString), "a label");
  EXPECT_EQ(VkNode::of(child->baseWidget()), child);
  EXPECT_EQ(countArcs(canvas(), parent->baseWidget(), child->baseWidget()), 1u);
  EXPECT_THAT(names(parent, true), ElementsAre("mat_0"));
  EXPECT_THAT(names(child, false), ElementsAre("obj_0"));
}

TEST_F(Graph, ANodeIsBuiltOnceWhenItEnters) {
  auto* entering = graph_->make<CountedNode>("mat_0");
  EXPECT_EQ(entering->built, 0);
  graph_->add(entering);
  graph_->add(entering);
  graph_->displayAll();
  EXPECT_EQ(entering->built, 1);
  EXPECT_EQ(resource<Pixel>(entering->baseWidget(), SgNtint), SgGraphTint(canvas(), "mat"));
}

TEST_F(Graph, IsSetAsideAndTakenBackAsItWas) {
  link("root", "left");
  link("root", "right");
  graph_->displayAll();
  graph_->doLayout();
  graph_->reveal(graph_->find("left"));
  SgGraphSetZoom(canvas(), 0.5);
  VkNode* const left = graph_->find("left");
  const SgRectangle place = bounds("left"), extents = SgGraphExtents(canvas());
  const SgPoint seen = inWindow("left");
  const auto arcs = SgGraphArcs(canvas());

  VkGraph::Kept kept = graph_->setAside();
  EXPECT_EQ(graph_->numNodes(), 0u);
  EXPECT_EQ(graph_->find("left"), nullptr);
  EXPECT_EQ(SgGraphZoom(canvas()), 1);
  EXPECT_FALSE(SgGraphGetArcNodes(canvas(), arcs[0], nullptr, nullptr)) << "numbers don't come back";
  graph_->add(std::make_unique<CountedNode>("left"));
  link("left", "stranger");
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_EQ(CountedNode::alive, 1);

  graph_->takeBack(std::move(kept));
  EXPECT_EQ(CountedNode::alive, 0);
  EXPECT_EQ(graph_->find("left"), left);
  EXPECT_EQ(graph_->find("stranger"), nullptr);
  EXPECT_EQ(VkNode::of(left->baseWidget()), left);
  EXPECT_EQ(bounds("left"), place);
  EXPECT_EQ(SgGraphExtents(canvas()), extents);
  EXPECT_EQ(inWindow("left"), seen);
  EXPECT_EQ(SgGraphArcs(canvas()), arcs);
  EXPECT_THAT(SgGraphGetSelectedNodes(canvas()), ElementsAre(left->baseWidget()));
  link("left", "late");
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_EQ(bounds("left"), place);
  EXPECT_EQ(countArcs(canvas(), left->baseWidget(), graph_->find("late")->baseWidget()), 1u);
}

TEST_F(Graph, ThatIsSetAsideFreesItsNodesWhenItGoes) {
  graph_->make<CountedNode>("waiting");
  graph_->add(std::make_unique<CountedNode>("a"));
  {
    const VkGraph::Kept kept = graph_->setAside();
    EXPECT_EQ(CountedNode::alive, 2);
  }
  EXPECT_EQ(CountedNode::alive, 0);
}

TEST_F(Graph, NodesThatNeverEnterAreFreed) {
  graph_->make<CountedNode>("a");
  auto* entered = graph_->make<CountedNode>("b");
  graph_->add(entered);
  EXPECT_EQ(CountedNode::alive, 2);
  graph_->clearAll();
  EXPECT_EQ(CountedNode::alive, 0);
  graph_->add(std::make_unique<CountedNode>("d"));
  graph_.reset();
  EXPECT_EQ(CountedNode::alive, 0);
}

TEST_F(Graph, ANameMayStandTwiceAndTheFirstIsFound) {
  VkNode* first = graph_->add(std::make_unique<VkNode>("newNode"));
  VkNode* second = graph_->add(std::make_unique<VkNode>("newNode"));
  EXPECT_EQ(graph_->find("newNode"), first);
  graph_->remove(first);
  EXPECT_EQ(graph_->find("newNode"), second);
  graph_->remove(second);
  EXPECT_EQ(graph_->find("newNode"), nullptr);
}

TEST_F(Graph, NodesOfOthersAreIgnored) {
  VkGraph other("other", window_->mainWindowWidget());
  VkNode* stranger = other.add(std::make_unique<VkNode>("stranger"));
  VkNode* mine = graph_->add(std::make_unique<VkNode>("mine"));
  graph_->add(mine, stranger);
  graph_->add(stranger, mine);
  graph_->add(nullptr, mine);
  graph_->remove(stranger);
  graph_->remove(mine, stranger);
  graph_->remove(mine, nullptr);
  graph_->display(stranger);
  graph_->doSubtreeLayout(stranger);
  graph_->reveal(nullptr);
  EXPECT_EQ(mine->nChildren() + mine->nParents(), 0);
  EXPECT_EQ(graph_->numNodes(), 1u);
  EXPECT_EQ(other.numNodes(), 1u);
}

TEST_F(Graph, LinksMayStandTwiceAndGoOneByOne) {
  link("a", "b");
  link("a", "c");
  link("a", "b");
  link("a", "a");
  VkNode *a = graph_->find("a"), *b = graph_->find("b");
  const auto arcs = [&] { return countArcs(canvas(), a->baseWidget(), b->baseWidget()); };
  EXPECT_THAT(names(a, true), ElementsAre("b", "c", "b", "a"));
  EXPECT_THAT(names(b, false), ElementsAre("a", "a"));
  graph_->remove(a, b);
  EXPECT_THAT(names(a, true), ElementsAre("b", "c", "a"));
  EXPECT_THAT(names(b, false), ElementsAre("a"));
  EXPECT_EQ(arcs(), 1u);
  graph_->remove(a, b);
  graph_->remove(a, b);
  EXPECT_THAT(names(a, true), ElementsAre("c", "a"));
  EXPECT_THAT(names(b, false), IsEmpty());
  EXPECT_EQ(arcs(), 0u);
  EXPECT_EQ(graph_->find("b"), b) << "the node stays";
  graph_->remove(a, a);
  EXPECT_THAT(names(a, true), ElementsAre("c"));
  EXPECT_THAT(names(a, false), IsEmpty());
  EXPECT_EQ(SgGraphArcs(canvas()).size(), 1u);
  EXPECT_EQ(a->child(7), nullptr);
  EXPECT_EQ(a->parent(-1), nullptr);
}

TEST_F(Graph, ARemovedNodeLeavesNoLinks) {
  fill();
  link("left", "left");
  VkNode *root = graph_->find("root"), *leaf = graph_->find("leaf_0");
  graph_->remove(graph_->find("left"));
  EXPECT_THAT(names(root, true), ElementsAre("middle", "right"));
  EXPECT_EQ(leaf->nParents(), 0);
  EXPECT_EQ(SgGraphArcs(canvas()).size(), 2u);
  EXPECT_EQ(graph_->numNodes(), 5u);
  for (VkNode* node : allNodes()) EXPECT_EQ(graph_->find(node->name()), node);
}

TEST_F(Graph, NodesAreHiddenUntilTheyAreDisplayed) {
  link("a", "b");
  link("a", "c");
  EXPECT_EQ(SgGraphExtents(canvas()), SgRectangle{});
  graph_->display(graph_->find("b"));
  EXPECT_TRUE(XtIsManaged(graph_->find("b")->baseWidget()));
  EXPECT_FALSE(XtIsManaged(graph_->find("a")->baseWidget()));
  graph_->displayWithChildren(graph_->find("a"));
  for (const char* name : {"a", "b", "c"}) EXPECT_TRUE(XtIsManaged(graph_->find(name)->baseWidget())) << name;
}

/// A node that people have a name for.
class TitledNode : public VkNode {
 public:
  TitledNode(const char* name, const char* kind, std::string title)
      : VkNode(name), kind_(kind), title_(std::move(title)) {}
  const char* tintName() const override { return kind_; }
  std::string title() const override { return title_; }

 private:
  const char* kind_;
  std::string title_;
};

TEST_F(Graph, WhatATextMeansBestIsFoundFirst) {
  for (const auto& [name, kind, title] : {std::tuple{"obj_12", "obj", ""},
                                          {"obj_1", "obj", "the sea"},
                                          {"mat_1", "mat", "sea_water"},
                                          {"tex_1", "tex", "Seaside obj_1"}})
    graph_->add(std::make_unique<TitledNode>(name, kind, title));
  graph_->add(std::make_unique<VkNode>("lod_1", "LOD"));
  const auto found = [&](std::string_view text) {
    std::vector<std::string> names;
    for (const VkNode* node : graph_->findAll(text)) names.push_back(node->name());
    return names;
  };
  EXPECT_THAT(found("OBJ_1"), ElementsAre("obj_1", "obj_12", "tex_1")) << "itself, a beginning, a part";
  EXPECT_THAT(found("sea"), ElementsAre("mat_1", "tex_1", "obj_1")) << "beginnings of titles, then parts";
  EXPECT_THAT(found("LoD"), ElementsAre("lod_1"));
  EXPECT_THAT(found("mat:"), ElementsAre("mat_1"));
  EXPECT_THAT(found("Tex:sea"), ElementsAre("tex_1"));
  EXPECT_THAT(found("obj:1"), ElementsAre("obj_12", "obj_1"));
  EXPECT_THAT(found("nokind:sea"), IsEmpty());
  EXPECT_THAT(found("cube"), IsEmpty());
  EXPECT_EQ(found("").size(), 5u);
  graph_->clearAll();
  EXPECT_THAT(found(""), IsEmpty());
}

TEST_F(Graph, TitlesAreASecondLine) {
  VkNode* const node = graph_->add(std::make_unique<TitledNode>("obj_1", "obj", "a title of some length"));
  const SgRectangle before = SgGraphNodeBounds(node->baseWidget());
  graph_->setShowsTitles(true);
  const SgRectangle with = SgGraphNodeBounds(node->baseWidget());
  EXPECT_GT(with.height, before.height + 8);
  EXPECT_GT(with.width, before.width);
  VkNode* const other =
      graph_->add(std::make_unique<TitledNode>("obj_2", "obj", std::string(10'000, 'x') + "\n"));
  EXPECT_LT(SgGraphNodeBounds(other->baseWidget()).width, 400);
  graph_->setShowsTitles(false);
  EXPECT_EQ(SgGraphNodeBounds(node->baseWidget()), before);
}

// Layout

TEST_F(Graph, TheFirstLayoutShowsTheTop) {
  growTree();
  show(canvas());
  graph_->doLayout();
  const SgRectangle view = SgGraphViewport(canvas());
  const SgPoint root = inWindow("n0");
  EXPECT_TRUE(view.contains(root));
  EXPECT_LT(root.y, 100);
  EXPECT_NEAR(root.x, view.width / 2, view.width / 4);
}

TEST_F(Graph, LayoutPutsChildrenBelowAndNothingOnTopOfEachOther) {
  fill();
  for (const VkNode* node : allNodes())
    for (const VkNode* other : allNodes())
      EXPECT_EQ(bounds(node->name()).touches(bounds(other->name())), node == other);
  EXPECT_GT(bounds("leaf_0").y, bounds("left").bottom());
  EXPECT_GT(bounds("left").y, bounds("root").bottom());
}

TEST_F(Graph, ALayoutIsNotRedoneWithoutNeed) {
  fill();
  SgGraphSetNodePosition(graph_->find("right")->baseWidget(), {3000, 10});
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_EQ(bounds("right").x, 3000);
  link("right", "new");
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_EQ(bounds("right").x, 3000) << "what is there stays";
  EXPECT_GT(bounds("new").y, bounds("right").bottom());
}

TEST_F(Graph, WhatWasWorkedOnStaysInPlace) {
  show(canvas());
  growTree();
  graph_->doLayout();
  SgGraphSetZoom(canvas(), 0.7);
  graph_->reveal(graph_->find("n100"));
  const SgPoint before = inWindow("n100");
  for (int i = 0; i < 10; ++i) {
    link("n0", ("more" + std::to_string(i)).c_str());
    link(("more" + std::to_string(i)).c_str(), ("deeper" + std::to_string(i)).c_str());
  }
  link("n100", "mine");
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_NEAR(inWindow("n100").x, before.x, 1);
  EXPECT_NEAR(inWindow("n100").y, before.y, 1);
  EXPECT_EQ(SgGraphZoom(canvas()), 0.7);
}

TEST_F(Graph, ANewNodeComesIntoView) {
  show(canvas());
  growTree();
  graph_->doLayout();
  graph_->add(std::make_unique<VkNode>("newNode", "New Node"));
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_TRUE(SgGraphViewport(canvas()).contains(inWindow("newNode")));
}

TEST_F(Graph, ASubtreeLayoutLeavesTheRestWhereItIs) {
  fill();
  SgGraphSetNodePosition(graph_->find("leaf_0")->baseWidget(), {2000, -500});
  SgGraphSetNodePosition(graph_->find("right")->baseWidget(), {2500, 700});
  const SgRectangle root = bounds("root"), left = bounds("left");
  graph_->doSubtreeLayout(graph_->find("left"));
  EXPECT_GT(bounds("leaf_0").y, left.bottom());
  EXPECT_EQ(bounds("left"), left);
  EXPECT_EQ(bounds("root"), root);
  EXPECT_EQ(bounds("right").x, 2500);
}

TEST_F(Graph, ASubtreeLayoutLeavesAChildOfOthersInPlace) {
  link("root", "left");
  link("root", "right");
  link("left", "shared");
  link("right", "other");
  graph_->displayAll();
  graph_->doLayout();
  const SgRectangle shared = bounds("shared"), other = bounds("other");
  link("right", "shared");
  graph_->doSubtreeLayout(graph_->find("right"));
  EXPECT_EQ(bounds("shared"), shared);
  EXPECT_EQ(bounds("other"), other);
}

TEST_F(Graph, LargeGraphsAreCompactUntilSomebodyChooses) {
  const auto grow = [&](int nodes) {
    graph_->clearAll();
    for (int i = 1; i < nodes; ++i)
      link(("n" + std::to_string(i / 3)).c_str(), ("n" + std::to_string(i)).c_str());
    graph_->displayAll();
    graph_->doLayout();
  };
  using enum VkGraph::Arrangement;
  grow(graphlayout::kCompactFrom - 1);
  EXPECT_EQ(graph_->arrangement(), Layered);
  grow(graphlayout::kCompactFrom);
  EXPECT_EQ(graph_->arrangement(), Compact);
  const SgRectangle extents = SgGraphExtents(canvas());
  EXPECT_LT(extents.width, 3 * extents.height);
  const VkPlaces compact = graph_->places();

  const VkNode* const top = graph_->find("n0");
  EXPECT_TRUE(SgGraphNodeRectangle(top->baseWidget()).touches(SgGraphViewport(canvas())));
  graph_->setArrangement(Layered);
  EXPECT_EQ(graph_->arrangement(), Layered);
  EXPECT_GT(SgGraphExtents(canvas()).width, 3 * extents.width);
  EXPECT_TRUE(SgGraphNodeRectangle(top->baseWidget()).touches(SgGraphViewport(canvas())))
      << "nothing was worked on, so the top stays in sight";
  graph_->arrange(compact);
  EXPECT_EQ(graph_->arrangement(), Compact);
  EXPECT_EQ(graph_->places().nodes, compact.nodes);
  EXPECT_EQ(graph_->places().arcs, compact.arcs);
  grow(graphlayout::kCompactFrom);
  EXPECT_EQ(graph_->arrangement(), Layered) << "as it was chosen";
}

// What the widget does by itself

TEST_F(Graph, ChangesThatTheWidgetMakesAreMadeInTheLists) {
  fill();
  show(canvas());
  SgGraphScrollTo(canvas(), {0, 0}, {0, 0});
  XtVaSetValues(canvas(), SgNeditableArcs, True, SgNokToAdd, True, nullptr);
  settle();
  const auto at = [&](const char* name) { return onScreen(canvas(), inWindow(name)); };
  VkNode *middle = graph_->find("middle"), *leaf = graph_->find("leaf_1");

  hands().drag(at("middle"), at("leaf_1"), 1, {"Control_L"});
  settle();
  EXPECT_THAT(names(middle, true), ElementsAre("leaf_1"));
  EXPECT_THAT(names(leaf, false), ElementsAre("left", "middle"));

  SgArc arc = 0;
  for (const SgArc candidate : SgGraphArcs(canvas())) {
    Widget from = nullptr, to = nullptr;
    ASSERT_TRUE(SgGraphGetArcNodes(canvas(), candidate, &from, &to));
    if (VkNode::of(from) == middle) arc = candidate;
  }
  SgPoint place, childHandle;
  ASSERT_TRUE(SgGraphArcPoint(canvas(), arc, &place, nullptr, &childHandle));
  hands().click(onScreen(canvas(), place));
  settle();
  hands().drag(onScreen(canvas(), childHandle), at("right"));
  settle();
  EXPECT_THAT(names(middle, true), ElementsAre("right"));
  EXPECT_THAT(names(leaf, false), ElementsAre("left"));

  const SgRectangle view = SgGraphViewport(canvas());
  hands().doubleClick(onScreen(canvas(), {view.width - 60, view.height - 40}));
  settle();
  ASSERT_EQ(graph_->numNodes(), 7u);
  VkNode* made = allNodes().back();
  EXPECT_EQ(VkNode::of(made->baseWidget()), made);
}

TEST_F(Graph, ACallbackMayClearAndFillTheGraph) {
  fill();
  show(canvas());
  struct Refill {
    VkGraph& graph;
    static void callback(Widget, XtPointer self, XtPointer) {
      VkGraph& graph = static_cast<Refill*>(self)->graph;
      graph.clearAll();
      VkNode* parent = graph.make<>("root");
      graph.add(parent, graph.make<>("other"));
      graph.displayAll();
      graph.doLayout();
    }
  } refill{*graph_};
  XtAddCallback(canvas(), SgNdefaultActionCallback, &Refill::callback, &refill);
  settle();
  hands().doubleClick(onScreen(canvas(), inWindow("root")));
  settle();
  EXPECT_EQ(graph_->numNodes(), 2u);
  EXPECT_EQ(SgGraphArcs(canvas()).size(), 1u);
  EXPECT_EQ(SgGraphNodeAt(canvas(), inWindow("root")), graph_->find("root")->baseWidget());
}

TEST_F(Graph, OutlivesItsWidgets) {
  fill();
  XtDestroyWidget(graph_->baseWidget());
  EXPECT_EQ(canvas(), nullptr);
  EXPECT_EQ(graph_->find("root")->baseWidget(), nullptr);
  link("root", "late");
  graph_->displayAll();
  graph_->doLayout();
  graph_->doSubtreeLayout(graph_->find("root"));
  graph_->reveal(graph_->find("late"));
  EXPECT_FALSE(graph_->saveToFile("/dev/null"));
  graph_->remove(graph_->find("left"));
  graph_->clearAll();
  EXPECT_EQ(graph_->numNodes(), 0u);
}

// Large graphs

TEST_F(Graph, OfManyNodesIsBuiltLaidOutEditedAndCleared) {
  // Takes very long if anything but the first layout looks at all of it more than once.
  const SceneLikeGraph scene = scene_like_graph(25'000, 5);
  std::vector<VkNode*> nodes;
  const auto build = [&] {
    nodes.clear();
    for (const std::string& name : scene.names) nodes.push_back(graph_->make<>(name.c_str()));
    for (const auto& [parent, child] : scene.arcs) graph_->add(nodes[parent], nodes[child]);
    graph_->displayAll();
  };
  build();
  graph_->doLayout();
  const SgRectangle last = SgGraphNodeBounds(nodes.back()->baseWidget());
  graph_->add(nodes[0], graph_->make<>("newNode"));
  graph_->displayAll();
  graph_->doLayout();
  EXPECT_EQ(SgGraphNodeBounds(nodes.back()->baseWidget()), last) << "a large graph stays where it is";
  EXPECT_GT(bounds("newNode").y, SgGraphNodeBounds(nodes[0]->baseWidget()).y);
  graph_->doSubtreeLayout(nodes[0]);
  EXPECT_EQ(SgGraphNodeBounds(nodes.back()->baseWidget()), last);
  graph_->clearAll();
  EXPECT_EQ(graph_->numNodes(), 0u);
  build();
  EXPECT_EQ(SgGraphArcs(canvas()).size(), scene.arcs.size());
}

// The strip

class Strip : public Graph {
 protected:
  void SetUp() override {
    Graph::SetUp();
    fill();
    link("right", "leaf_2");
    graph_->displayAll();
    graph_->doLayout();
    show(canvas());
  }
  Widget part(const char* name) {
    return XtNameToWidget(graph_->baseWidget(), ("*strip." + std::string(name)).c_str());
  }
  void press(const char* name) {
    hands().click(middleOf(part(name)));
    settle();
    SgGraphUpdate(canvas());
  }
  Point middleOf(Widget widget) {
    return onScreen(
        widget, {resource<Dimension>(widget, XmNwidth) / 2.0, resource<Dimension>(widget, XmNheight) / 2.0});
  }
  void type(const char* text) {
    hands().click(middleOf(part("find")));
    settle();
    hands().type(text);
    settle();
  }
  std::vector<std::string> selected() {
    std::vector<std::string> names;
    for (const Widget node : SgGraphGetSelectedNodes(canvas())) names.push_back(VkNode::of(node)->name());
    return names;
  }
  std::string shownZoom() { return viewkit::textResource(part("zoomLevel"), XmNlabelString); }
};

TEST_F(Strip, ZoomsByButtonsAndShowsTheZoom) {
  EXPECT_EQ(shownZoom(), "100 %");
  press("zoomIn");
  EXPECT_GT(SgGraphZoom(canvas()), 1);
  EXPECT_EQ(shownZoom(), "140 %");
  SgGraphSetZoom(canvas(), 3.9);
  press("zoomIn");
  press("zoomIn");
  EXPECT_EQ(shownZoom(), "400 %");
  press("zoom100");
  EXPECT_EQ(SgGraphZoom(canvas()), 1);
  press("zoomOut");
  EXPECT_EQ(shownZoom(), "70 %");
  SgGraphSetZoom(canvas(), 0.11);
  press("zoomOut");
  press("zoomOut");
  EXPECT_EQ(shownZoom(), "10 %");
}

TEST_F(Strip, FitShowsEverything) {
  SgGraphSetNodePosition(graph_->find("right")->baseWidget(), {3000, 2000});
  press("zoomFit");
  const SgRectangle view = SgGraphViewport(canvas());
  for (const char* name : {"root", "left", "right", "leaf_1"})
    EXPECT_TRUE(view.contains(inWindow(name))) << name;
  EXPECT_LT(SgGraphZoom(canvas()), 1);
}

TEST_F(Strip, ShowsAZoomMadeWithTheWheel) {
  hands().wheel(onScreen(canvas(), {100, 100}), -20, {"Control_L"});
  settle();
  SgGraphUpdate(canvas());
  EXPECT_EQ(shownZoom(), "10 %");
}

TEST_F(Strip, TypingFindsAndReturnGoesOn) {
  SgGraphSetNodePosition(graph_->find("leaf_1")->baseWidget(), {5000, 4000});
  type("EAF_");
  EXPECT_THAT(selected(), ElementsAre("leaf_0"));
  hands().key("Return");
  settle();
  EXPECT_THAT(selected(), ElementsAre("leaf_1"));
  EXPECT_TRUE(SgGraphViewport(canvas()).contains(inWindow("leaf_1")));
  hands().key("Return");
  hands().key("Return");
  settle();
  EXPECT_THAT(selected(), ElementsAre("leaf_0"));
  EXPECT_FALSE(XtIsManaged(part("notFound")));
}

TEST_F(Strip, ControlCharactersDontEnterTheField) {
  type("left");
  hands().key("s", {"Control_L"});
  hands().key("e", {"Control_L"});
  settle();
  EXPECT_EQ(viewkit::XtText(XmTextFieldGetString(part("find"))).get(), std::string("left"));
  EXPECT_THAT(selected(), ElementsAre("left"));
}

TEST_F(Strip, SaysWhatIsNotFound) {
  type("left");
  EXPECT_THAT(selected(), ElementsAre("left"));
  type("x");
  EXPECT_TRUE(XtIsManaged(part("notFound")));
  EXPECT_THAT(selected(), ElementsAre("left"));
  hands().key("BackSpace");
  settle();
  EXPECT_FALSE(XtIsManaged(part("notFound")));
  XmTextFieldSetString(part("find"), const_cast<char*>(""));
  EXPECT_FALSE(XtIsManaged(part("notFound")));
}

TEST_F(Strip, TabGoesFromTheGraphToTheFieldAndBack) {
  hands().click(onScreen(canvas(), inWindow("root")));
  hands().key("Down");
  settle();
  EXPECT_THAT(selected(), ElementsAre("middle"));
  const auto focused = [&] { return XmGetFocusWidget(graph_->baseWidget()); };
  EXPECT_EQ(focused(), canvas());
  int tabs = 0;
  do {
    hands().key("Tab");
    settle();
  } while (focused() != part("find") && ++tabs < 10);
  EXPECT_EQ(focused(), part("find"));
  tabs = 0;
  do {
    hands().key("Tab", {"Shift_L"});
    settle();
  } while (focused() != canvas() && ++tabs < 10);
  EXPECT_EQ(focused(), canvas());
}

TEST_F(Strip, KeepsItsHeightInASmallWindow) {
  XtVaSetValues(window_->baseWidget(), XmNwidth, 400, XmNheight, 250, nullptr);
  ASSERT_TRUE(eventually([&] { return SgGraphViewport(canvas()).height < 250; }));
  EXPECT_GE(resource<Dimension>(part("find"), XmNheight), 18);
  EXPECT_GE(SgGraphViewport(canvas()).height, 50);
}

// Printing

TEST_F(Graph, SavesEveryNodeAndArcAsPostScript) {
  fill();
  const ScratchDirectory directory;
  ASSERT_TRUE(graph_->saveToFile((directory / "graph.ps").c_str()));
  const std::string document = read_file(directory / "graph.ps");
  EXPECT_THAT(document, testing::StartsWith("%!PS-Adobe-3.0\n"));
  EXPECT_THAT(support::wordsOfPostScript(directory / "graph.ps"),
              ElementsAre("leaf_0", "leaf_1", "left", "middle", "right", "root"));
  // Closed paths: the edges of the nodes and the heads of the arcs.
  std::istringstream page(document.substr(document.find("%%EndPageSetup")));
  EXPECT_EQ(std::count(std::istream_iterator<std::string>(page), {}, "h"), 6 + 5);
  EXPECT_FALSE(graph_->saveToFile("/dev/full"));
  EXPECT_FALSE(graph_->saveToFile((directory / "nowhere/graph.ps").c_str()));
}

}  // namespace
