/// @file
/// Fixture for tests that work a graph with pointer and keyboard.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "tests/support/wait.h"
#include "tests/support/xdriver.h"
#include "tests/viewkit/display_test.h"
#include "viewkit/sggraph/Graph.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/xraii.h"

/// A window with the keyboard focus under a window manager, one display for all tests of the process.
class WindowTest : public DisplayTest {
 protected:
  static void SetUpTestSuite() {
    DisplayTest::SetUpTestSuite();
    if (manager_) return;
    manager_ = std::make_unique<support::WindowManager>(*server);
    hands_ = std::make_unique<support::XDriver>(server->display());
  }

  static Display* display() { return app->display(); }
  static support::XDriver& hands() { return *hands_; }

  /// Handles all events that the server has made so far.
  static void settle() {
    XSync(display(), False);
    while (XtAppPending(app->appContext()) != 0) {
      while ((XtAppPending(app->appContext()) & XtIMXEvent) != 0)
        XtAppProcessEvent(app->appContext(), XtIMXEvent);
      if ((XtAppPending(app->appContext()) & ~XtInputMask{XtIMXEvent}) != 0)
        XtAppProcessEvent(app->appContext(), XtIMAll);
      XSync(display(), False);
    }
  }
  static bool eventually(const std::function<bool()>& condition) {
    return support::waitFor([&] {
      settle();
      return condition();
    });
  }

  /// Shows the window, and waits until it has the keyboard and a click on the graph in it arrives: the window
  /// manager takes presses until it has seen that the window has the focus.
  void show(Widget graph) {
    window_->show();
    ASSERT_TRUE(eventually([&] {
      ::Window focused = 0;
      int revert = 0;
      XGetInputFocus(display(), &focused, &revert);
      return isInWindow(focused) && SgGraphViewport(graph).width > 300;
    }));
    bool arrived = false;
    const auto note = [](Widget, XtPointer flag, XEvent*, Boolean*) { *static_cast<bool*>(flag) = true; };
    XtAddEventHandler(graph, ButtonPressMask, False, note, &arrived);
    ASSERT_TRUE(eventually([&] {
      if (!arrived) hands().click(onScreen(graph, {1, 1}));
      settle();
      return arrived;
    }));
    XtRemoveEventHandler(graph, ButtonPressMask, False, note, &arrived);
  }

  /// A place of a widget as a place on the screen.
  static support::Point onScreen(Widget widget, SgPoint place) {
    int x = 0, y = 0;
    ::Window ignored = 0;
    XTranslateCoordinates(display(), XtWindow(widget), DefaultRootWindow(display()),
                          static_cast<int>(std::lround(place.x)), static_cast<int>(std::lround(place.y)), &x,
                          &y, &ignored);
    return {x, y};
  }
  static Pixel pixelAt(Widget widget, SgPoint place) {
    const viewkit::ImagePtr image(
        XGetImage(display(), XtWindow(widget), static_cast<int>(std::lround(place.x)),
                  static_cast<int>(std::lround(place.y)), 1, 1, AllPlanes, ZPixmap));
    return image ? XGetPixel(image.get(), 0, 0) : 0;
  }

  /// Whether a pixel at or beside a place has that colour: a thin slanted line may miss the place itself.
  static bool hasPixelNear(Widget widget, SgPoint place, Pixel pixel) {
    for (const double dy : {-1.0, 0.0, 1.0})
      for (const double dx : {-1.0, 0.0, 1.0})
        if (pixelAt(widget, {place.x + dx, place.y + dy}) == pixel) return true;
    return false;
  }

  template <class Value>
  static Value resource(Widget widget, const char* name) {
    Value value{};
    XtVaGetValues(widget, name, &value, nullptr);
    return value;
  }

  /// How many arcs a graph has from one node to another.
  static std::size_t countArcs(Widget graph, Widget from, Widget to) {
    return static_cast<std::size_t>(std::ranges::count_if(SgGraphArcs(graph), [&](SgArc arc) {
      Widget parent = nullptr, child = nullptr;
      return SgGraphGetArcNodes(graph, arc, &parent, &child) && parent == from && child == to;
    }));
  }

  std::unique_ptr<VkSimpleWindow> window_ = std::make_unique<VkSimpleWindow>("window");

 private:
  bool isInWindow(::Window focused) const {
    if (focused == None || focused == PointerRoot) return false;
    const Widget widget = XtWindowToWidget(display(), focused);
    for (Widget w = widget; w; w = XtParent(w))
      if (w == window_->baseWidget()) return true;
    return false;
  }

  static inline std::unique_ptr<support::WindowManager> manager_;
  static inline std::unique_ptr<support::XDriver> hands_;
};

/// A graph widget that fills a window, with notes of what its callbacks were told.
class GraphTest : public WindowTest {
 protected:
  void SetUp() override {
    graph_ = SgCreateGraph(window_->mainWindowWidget(), "canvas", nullptr, 0);
    for (const char* list : {SgNnewNodeCallback, SgNnewArcCallback, SgNarcMovedCallback,
                             SgNdefaultActionCallback, SgNchangedCallback})
      XtAddCallback(graph_, list, &noteCallback, this);
    XtAddCallback(graph_, XtNdestroyCallback, &destroyedCallback, this);
    window_->addView(graph_);
    show(graph_);
  }

  void TearDown() override { window_.reset(); }  // its callbacks speak to this object

  /// A managed node with its upper left corner at a place of the plane.
  Widget node(const char* name, double x, double y) {
    const Widget made = SgGraphCreateNode(graph_, name);
    SgGraphSetNodePosition(made, {x, y});
    XtManageChild(made);
    return made;
  }
  void editMode(bool on) { XtVaSetValues(graph_, SgNeditableArcs, on, SgNokToAdd, on, nullptr); }

  SgPoint middle(Widget node) { return SgGraphNodeRectangle(node).middle(); }
  SgPoint middle(SgArc arc) {
    SgPoint place;
    EXPECT_TRUE(SgGraphArcPoint(graph_, arc, &place));
    return place;
  }
  support::Point at(SgPoint place) { return onScreen(graph_, place); }
  support::Point at(Widget node) { return at(middle(node)); }
  support::Point at(SgArc arc) { return at(middle(arc)); }
  /// A place with nothing around it.
  SgPoint nowhere() {
    const SgRectangle view = SgGraphViewport(graph_);
    return {view.width - 15, view.height - 15};
  }

  void click(support::Point place, support::Held held = {}) {
    hands().click(place, 1, held);
    settle();
  }
  /// The arc that a click at a place picks; 0 for none.
  SgArc arcAt(SgPoint place) {
    click(at(nowhere()));
    click(at(place));
    return selectedArcs().empty() ? 0 : selectedArcs().front();
  }
  void drag(support::Point from, support::Point to, unsigned button = 1, support::Held held = {}) {
    hands().drag(from, to, button, held);
    settle();
  }
  /// Presses button 1 and moves, slowly enough for every step to be seen.
  void beginDrag(support::Point from, support::Point to) {
    hands().moveTo(from);
    hands().press();
    settle();
    hands().moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    settle();
    hands().moveTo(to);
    settle();
  }
  void drop() {
    hands().release();
    settle();
  }
  void key(const char* name, support::Held held = {}) {
    hands().key(name, held);
    settle();
  }

  std::size_t arcCount() { return SgGraphArcs(graph_).size(); }
  std::vector<Widget> selectedNodes() { return SgGraphGetSelectedNodes(graph_); }
  std::vector<SgArc> selectedArcs() { return SgGraphGetSelectedArcs(graph_); }

  /// What callbacks shall do besides being noted, by reason; may change the call data.
  std::map<int, std::function<void(SgGraphCallbackStruct&)>> reactions_;
  std::vector<SgGraphCallbackStruct> calls_;
  Widget graph_ = nullptr;  // null once it was destroyed

 private:
  static void noteCallback(Widget, XtPointer self, XtPointer data) {
    auto& test = *static_cast<GraphTest*>(self);
    auto& call = *static_cast<SgGraphCallbackStruct*>(data);
    test.calls_.push_back(call);
    if (const auto reaction = test.reactions_.find(call.reason); reaction != test.reactions_.end())
      reaction->second(call);
  }
  static void destroyedCallback(Widget, XtPointer self, XtPointer) {
    static_cast<GraphTest*>(self)->graph_ = nullptr;
  }
};
