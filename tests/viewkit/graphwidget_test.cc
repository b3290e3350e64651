/// @file
/// The graph widget's functions and resources, its looks, and very large graphs.
#include "tests/viewkit/graph_test.h"

#include <Xm/ScrollBar.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using GraphWidget = GraphTest;

TEST_F(GraphWidget, StartsReadOnlyAt100PerCent) {
  EXPECT_FALSE(resource<Boolean>(graph_, SgNeditableArcs));
  EXPECT_FALSE(resource<Boolean>(graph_, SgNokToAdd));
  EXPECT_EQ(resource<Dimension>(graph_, SgNarcWidth), 20);
  EXPECT_EQ(resource<int>(graph_, SgNarcDirection), 1);
  EXPECT_EQ(SgGraphZoom(graph_), 1);
  EXPECT_EQ(SgCR_DEFAULT_ACTION, 54);
}

TEST_F(GraphWidget, NodesAreWidgetsWithResources) {
  int mine = 0;
  const Widget n = node("obj_0", 0, 0);
  XtVaSetValues(n, XmNuserData, &mine, nullptr);
  EXPECT_EQ(resource<XtPointer>(n, XmNuserData), &mine);
  EXPECT_EQ(SgNodeGraph(n), graph_);
  EXPECT_EQ(viewkit::textResource(n, XmNlabelString), "obj_0");
  const double width = SgGraphNodeBounds(n).width;
  XtVaSetValues(n, XmNlabelString, viewkit::xmString("a label much longer than the name").get(), nullptr);
  EXPECT_EQ(viewkit::textResource(n, XmNlabelString), "a label much longer than the name");
  EXPECT_GT(SgGraphNodeBounds(n).width, width);
  XtVaSetValues(n, XmNlabelString, viewkit::xmString("two lines").get(), nullptr);
  const SgRectangle oneLine = SgGraphNodeBounds(n);
  XtVaSetValues(n, XmNlabelString, viewkit::xmString("two\nlines").get(), nullptr);
  EXPECT_EQ(SgGraphNodeBounds(n), oneLine);
  EXPECT_STREQ(SgNodeName(n), "obj_0");
}

TEST_F(GraphWidget, ARenditionWithoutAFontIsPassedOver) {
  const Widget n = node("a label of some length", 0, 0);
  const double width = SgGraphNodeBounds(n).width;
  const auto before = XmRenderTableCopy(resource<XmRenderTable>(graph_, XmNrenderTable), nullptr, 0);
  std::string tag = "fontless";
  XmRendition rendition = XmRenditionCreate(graph_, tag.data(), nullptr, 0);
  const auto fontless = XmRenderTableAddRenditions(nullptr, &rendition, 1, XmMERGE_NEW);
  XtVaSetValues(graph_, XmNrenderTable, fontless, nullptr);
  EXPECT_LT(SgGraphNodeBounds(n).width, width);
  XtVaSetValues(graph_, XmNrenderTable, before, nullptr);
  EXPECT_EQ(SgGraphNodeBounds(n).width, width);
  XmRenditionFree(rendition);
  XmRenderTableFree(fontless);
  XmRenderTableFree(before);
}

TEST_F(GraphWidget, ANodeShowsItsPictureAboveItsLabel) {
  const Widget n = node("tex_0", 20, 20);
  const SgRectangle named = SgGraphNodeBounds(n);
  const viewkit::PixmapId picture(display(),
                                  XCreatePixmap(display(), XtWindow(graph_), 50, 30,
                                                static_cast<unsigned>(resource<int>(graph_, XmNdepth))));
  const viewkit::Gc gc(display(), XCreateGC(display(), picture.get(), 0, nullptr));
  XSetForeground(display(), gc.get(), 0x123456);
  XFillRectangle(display(), picture.get(), gc.get(), 0, 0, 50, 30);
  XtVaSetValues(n, XmNlabelPixmap, picture.get(), nullptr);
  EXPECT_EQ(SgGraphNodeBounds(n), (SgRectangle{20, 20, 58, named.height + 28}));
  for (const double zoom : {1.0, 2.5, 0.4}) {
    SgGraphSetZoom(graph_, zoom);
    SgGraphRevealNode(graph_, n);
    SgGraphUpdate(graph_);
    EXPECT_EQ(pixelAt(graph_, middle(n)), 0x123456u) << zoom;
  }
  XtVaSetValues(n, XmNlabelPixmap, XmUNSPECIFIED_PIXMAP, nullptr);
  EXPECT_EQ(SgGraphNodeBounds(n), named);
}

TEST_F(GraphWidget, APixmapThatIsGoneLeavesTheLabel) {
  const Widget n = node("tex_0", 20, 20);
  const SgRectangle named = SgGraphNodeBounds(n);
  Pixmap gone = 0;
  {
    const viewkit::PixmapId picture(display(), XCreatePixmap(display(), XtWindow(graph_), 50, 30, 1));
    gone = picture.get();
  }
  XtVaSetValues(n, XmNlabelPixmap, gone, nullptr);
  EXPECT_EQ(SgGraphNodeBounds(n), named);
}

TEST_F(GraphWidget, TintsComeFromTheNodeOrTheGraph) {
  const Widget n = node("a", 20, 20);
  const SgPoint inside{SgGraphNodeRectangle(n).x + 4, SgGraphNodeRectangle(n).y + 4};
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, inside), resource<Pixel>(graph_, SgNnodeColor));
  XtVaSetValues(n, SgNtint, Pixel{0xabcdef}, nullptr);
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, inside), 0xabcdefu);
  EXPECT_EQ(SgGraphTint(graph_, "nobodySetThis"), resource<Pixel>(graph_, SgNnodeColor));
  EXPECT_NE(SgGraphTint(graph_, "mat"), resource<Pixel>(graph_, SgNnodeColor));
}

TEST_F(GraphWidget, SelectedThingsLookDifferent) {
  const Widget a = node("a", 50, 40), b = node("b", 50, 240);
  const SgArc arc = SgGraphAddArc(graph_, a, b);
  const Pixel selection = resource<Pixel>(graph_, SgNselectionColor);
  const SgPoint border{SgGraphNodeRectangle(a).middle().x, SgGraphNodeRectangle(a).y};
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), resource<Pixel>(graph_, SgNnodeBorderColor));
  EXPECT_EQ(pixelAt(graph_, middle(arc)), resource<Pixel>(graph_, SgNarcColor));
  click(at(arc));
  SgGraphSelectNode(graph_, a);
  hands().moveTo(at(nowhere()));
  settle();
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), selection);
  EXPECT_EQ(pixelAt(graph_, middle(arc)), selection);
  SgGraphClearSelection(graph_);
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), resource<Pixel>(graph_, SgNnodeBorderColor));
}

TEST_F(GraphWidget, ThePointerLightsUpWhatItIsOver) {
  const Widget a = node("a", 50, 40);
  const SgPoint border{SgGraphNodeRectangle(a).middle().x, SgGraphNodeRectangle(a).y};
  hands().moveTo(at(a));
  settle();
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), resource<Pixel>(graph_, SgNhoverColor));
  hands().moveTo(at(nowhere()));
  settle();
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), resource<Pixel>(graph_, SgNnodeBorderColor));
}

TEST_F(GraphWidget, DuplicatesCanBePickedOneByOne) {
  const Widget a = node("a", 50, 40), b = node("b", 250, 240);
  const SgArc first = SgGraphAddArc(graph_, a, b), second = SgGraphAddArc(graph_, a, b),
              back = SgGraphAddArc(graph_, b, a), loop = SgGraphAddArc(graph_, a, a);
  for (const SgArc arc : {first, second, back, loop}) EXPECT_EQ(arcAt(middle(arc)), arc);
}

TEST_F(GraphWidget, RemovingBetweenNodesTakesOneOfDuplicates) {
  const Widget a = node("a", 50, 40), b = node("b", 50, 240);
  const SgArc first = SgGraphAddArc(graph_, a, b), second = SgGraphAddArc(graph_, a, b),
              third = SgGraphAddArc(graph_, a, b);
  SgGraphAddArc(graph_, b, a);
  click(at(second));
  EXPECT_TRUE(SgGraphRemoveArcBetweenNodes(graph_, a, b));
  EXPECT_THAT(selectedArcs(), IsEmpty());
  Widget from = nullptr, to = nullptr;
  EXPECT_FALSE(SgGraphGetArcNodes(graph_, second, &from, &to));
  EXPECT_TRUE(SgGraphRemoveArcBetweenNodes(graph_, a, b));
  EXPECT_FALSE(SgGraphGetArcNodes(graph_, third, &from, &to)) << "the one added last";
  EXPECT_TRUE(SgGraphGetArcNodes(graph_, first, &from, &to));
  EXPECT_TRUE(SgGraphRemoveArcBetweenNodes(graph_, a, b));
  EXPECT_FALSE(SgGraphRemoveArcBetweenNodes(graph_, a, b));
  EXPECT_EQ(countArcs(graph_, b, a), 1u);
}

TEST_F(GraphWidget, UnmanagedNodesAreInvisible) {
  const Widget a = node("a", 50, 40), b = node("b", 50, 240);
  const SgArc arc = SgGraphAddArc(graph_, a, b);
  const SgPoint onNode = middle(b), onArc = middle(arc);
  XtUnmanageChild(b);
  EXPECT_EQ(SgGraphNodeAt(graph_, onNode), nullptr);
  EXPECT_EQ(arcAt(onArc), 0u);
  EXPECT_EQ(SgGraphExtents(graph_), SgGraphNodeBounds(a));
  XtManageChild(b);
  EXPECT_EQ(SgGraphNodeAt(graph_, onNode), b);
  EXPECT_EQ(arcAt(onArc), arc);
}

TEST_F(GraphWidget, ADestroyedNodeTakesItsArcsAlong) {
  const Widget a = node("a", 50, 40), b = node("b", 50, 240), c = node("c", 50, 440);
  SgGraphAddArc(graph_, a, b);
  SgGraphAddArc(graph_, b, c);
  SgGraphAddArc(graph_, b, b);
  const SgArc kept = SgGraphAddArc(graph_, a, c);
  SgGraphSelectNode(graph_, b);
  XtDestroyWidget(b);
  EXPECT_THAT(SgGraphArcs(graph_), ElementsAre(kept));
  EXPECT_THAT(selectedNodes(), IsEmpty());
  EXPECT_EQ(SgGraphNodeAt(graph_, SgGraphToWindow(graph_, {60, 250})), nullptr);
}

TEST_F(GraphWidget, StrangersAreRefused) {
  const Widget a = node("a", 50, 40);
  const Widget otherGraph = SgCreateGraph(window_->mainWindowWidget(), "other", nullptr, 0);
  const Widget stranger = SgGraphCreateNode(otherGraph, "stranger");
  for (const Widget who : {Widget{nullptr}, stranger, graph_, window_->mainWindowWidget()}) {
    EXPECT_EQ(SgGraphAddArc(graph_, a, who), 0u);
    EXPECT_EQ(SgGraphAddArc(graph_, who, a), 0u);
    EXPECT_FALSE(SgGraphRemoveArcBetweenNodes(graph_, a, who));
    EXPECT_EQ(countArcs(graph_, who, a), 0u);
    SgGraphSelectNode(graph_, who);
    SgGraphRevealNode(graph_, who);
  }
  for (const Widget who : {Widget{nullptr}, a, window_->mainWindowWidget()}) {
    EXPECT_EQ(SgGraphCreateNode(who, "n"), nullptr);
    EXPECT_EQ(SgGraphZoom(who), 1);
    EXPECT_THAT(SgGraphArcs(who), IsEmpty());
    SgGraphClear(who);
    SgGraphSetZoom(who, 2);
    SgGraphUpdate(who);
  }
  EXPECT_EQ(SgGraphNodeBounds(nullptr), SgRectangle{});
  EXPECT_EQ(SgNodeGraph(graph_), nullptr);
  EXPECT_THAT(selectedNodes(), IsEmpty());
  EXPECT_EQ(arcCount(), 0u);
  for (const SgArc arc : {SgArc{0}, SgArc{77}, ~SgArc{0}}) {
    SgPoint place;
    EXPECT_FALSE(SgGraphArcPoint(graph_, arc, &place));
  }
  XtDestroyWidget(otherGraph);
}

TEST_F(GraphWidget, ScrollBarsScroll) {
  node("a", 0, 0);
  node("z", 5000, 8000);
  SgGraphScrollTo(graph_, {0, 0}, {0, 0});
  SgGraphUpdate(graph_);
  for (const char* bar : {"horizontalBar", "verticalBar"}) {
    const Widget scrollBar = XtNameToWidget(graph_, bar);
    const SgPoint before = SgGraphToPlane(graph_, {0, 0});
    int value = 0, slider = 0, step = 0, page = 0;
    XmScrollBarGetValues(scrollBar, &value, &slider, &step, &page);
    XmScrollBarSetValues(scrollBar, value + 100, slider, step, page, True);
    const SgPoint after = SgGraphToPlane(graph_, {0, 0});
    EXPECT_NEAR(after.x - before.x + after.y - before.y, 100, 1);
  }
}

TEST_F(GraphWidget, TellsOnceWhatIsSeen) {
  int views = 0;
  const auto count = [](Widget, XtPointer counter, XtPointer) { ++*static_cast<int*>(counter); };
  XtAddCallback(graph_, SgNviewChangedCallback, count, &views);
  node("a", 0, 0);
  SgGraphUpdate(graph_);
  EXPECT_EQ(views, 1);
  SgGraphSetZoom(graph_, 2);
  SgGraphSetZoom(graph_, 0.5);
  SgGraphUpdate(graph_);
  SgGraphUpdate(graph_);
  EXPECT_EQ(views, 2);
}

TEST_F(GraphWidget, ClearingGoesBackToTheOriginAt100PerCent) {
  node("a", 0, 0);
  node("z", 5000, 8000);
  SgGraphSetZoom(graph_, 0.5);
  SgGraphClear(graph_);
  EXPECT_EQ(SgGraphZoom(graph_), 1);
  const Widget a = node("a", 0, 0);
  EXPECT_TRUE(SgGraphViewport(graph_).contains(middle(a)));
  EXPECT_EQ(SgGraphNodeAt(graph_, middle(a)), a);
}

TEST_F(GraphWidget, WorksBeforeItIsRealized) {
  const auto other = std::make_unique<VkSimpleWindow>("other");
  const Widget graph = SgCreateGraph(other->mainWindowWidget(), "canvas", nullptr, 0);
  const Widget a = SgGraphCreateNode(graph, "a"), b = SgGraphCreateNode(graph, "b");
  SgGraphSetNodePosition(b, {100, 200});
  SgGraphAddArc(graph, a, b);
  EXPECT_EQ(SgGraphExtents(graph), SgRectangle{});
  XtManageChild(a);
  XtManageChild(b);
  EXPECT_EQ(SgGraphExtents(graph).bottom(), SgGraphNodeBounds(b).bottom());
  SgGraphZoomToFit(graph);
  SgGraphClear(graph);
  EXPECT_EQ(SgGraphExtents(graph), SgRectangle{});
}

TEST_F(GraphWidget, CoordinatesBeyond16BitsAreDrawnWhereTheyAre) {
  const Widget a = node("a", -3e8, 50), b = node("b", 3e8, 50), c = node("c", 0, 50);
  const SgArc arc = SgGraphAddArc(graph_, a, b);
  XtUnmanageChild(c);
  SgGraphSelectNode(graph_, a);  // shows the arc whole
  SgGraphScrollTo(graph_, {0, 0}, {50, 0});
  SgGraphUpdate(graph_);
  const double y = SgGraphNodeRectangle(a).middle().y;
  EXPECT_EQ(pixelAt(graph_, {200, y}), resource<Pixel>(graph_, SgNarcColor));
  click(at(SgPoint{200, y}), {"Shift_L"});
  EXPECT_THAT(selectedArcs(), ElementsAre(arc));
  SgGraphRevealNode(graph_, b);
  SgGraphUpdate(graph_);
  EXPECT_EQ(SgGraphNodeAt(graph_, middle(b)), b);
}

/// 20,000 nodes in rows, each linked to its neighbour and the one below.
class LargeGraph : public GraphTest {
 protected:
  static constexpr std::size_t kNodes = 20000, kRow = 200;

  void fill() {
    nodes_.clear();
    for (std::size_t i = 0; i < kNodes; ++i) {
      nodes_.push_back(SgGraphCreateNode(graph_, ("n" + std::to_string(i)).c_str()));
      SgGraphSetNodePosition(nodes_[i],
                             {static_cast<double>(i % kRow) * 90, static_cast<double>(i / kRow) * 70});
      if (i > 0) SgGraphAddArc(graph_, nodes_[i - 1], nodes_[i]);
      if (i >= kRow) SgGraphAddArc(graph_, nodes_[i - kRow], nodes_[i]);
    }
    XtManageChildren(nodes_.data(), static_cast<Cardinal>(nodes_.size()));
  }

  std::vector<Widget> nodes_;
};

TEST_F(LargeGraph, BuildsScrollsAndClears) {
  fill();
  EXPECT_EQ(arcCount(), kNodes - 1 + kNodes - kRow);
  for (const double zoom : {1.0, 0.5, 0.1}) {
    SgGraphSetZoom(graph_, zoom);
    for (const std::size_t i : {kNodes - 1, kNodes / 2, std::size_t{0}}) {
      SgGraphRevealNode(graph_, nodes_[i]);
      SgGraphUpdate(graph_);
      EXPECT_EQ(SgGraphNodeAt(graph_, middle(nodes_[i])), nodes_[i]);
    }
  }
  SgGraphClear(graph_);
  EXPECT_EQ(arcCount(), 0u);
  EXPECT_EQ(SgGraphExtents(graph_), SgRectangle{});
  fill();
  EXPECT_STREQ(SgNodeName(nodes_.back()), "n19999");
  EXPECT_STREQ(XtName(nodes_.front()), XtName(nodes_.back())) << "the toolkit keeps every name for ever";
}

TEST_F(LargeGraph, IsClearedInsideOfACallback) {
  fill();
  settle();
  reactions_[SgCR_DEFAULT_ACTION] = [&](auto&) { SgGraphClear(graph_); };
  hands().doubleClick(at(nodes_[0]));
  settle();
  EXPECT_EQ(calls_.size(), 1u);
  EXPECT_EQ(arcCount(), 0u);
}

TEST_F(LargeGraph, IsTakenApartNodeByNode) {
  // Takes many minutes if anything searches what it needn't.
  fill();
  for (std::size_t i = 0; i < kNodes; ++i) SgGraphRemoveNode(nodes_[(i * 7919) % kNodes]);
  EXPECT_EQ(arcCount(), 0u);
  EXPECT_EQ(SgGraphExtents(graph_), SgRectangle{});
}

}  // namespace
