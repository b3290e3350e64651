/// @file
/// Components, windows and menus from inside the process: who owns what, and who tells whom.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/wait.h"
#include "tests/viewkit/display_test.h"
#include "viewkit/forward.h"
#include "viewkit/look.h"
#include "viewkit/vkmessagedialogs.h"
#include "viewkit/vkwindow.h"
#include "viewkit/xraii.h"

#include <X11/Xutil.h>
#include <Xm/Label.h>
#include <Xm/RowColumn.h>
#include <Xm/ToggleBG.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using enum VkMenuItemType;

class Label : public VkComponent {
 public:
  explicit Label(Widget parent) : VkComponent("label") {
    setBaseWidget(XtVaCreateManagedWidget(name(), xmLabelWidgetClass, parent, nullptr));
  }
  int destroyed = 0;

 private:
  void widgetDestroyed() override { ++destroyed; }
};

class Listener : public VkCallbackObject {
 public:
  void componentGone(VkComponent* component, void*, void*) { goneName = component->name(); }
  std::string goneName;
};

using Component = DisplayTest;

TEST_F(Component, ADestroyedWidgetClearsItsComponent) {
  VkSimpleWindow window("window");
  Label label(window.mainWindowWidget());
  XtDestroyWidget(label.baseWidget());
  EXPECT_EQ(label.baseWidget(), nullptr);
  EXPECT_EQ(label.destroyed, 1);
  label.show();
  label.hide();
}

TEST_F(Component, AStatusThatIsTooLongLosesWholeParts) {
  const std::string separator = VkSimpleWindow::kStatusSeparator;
  const std::string first = "Click: select", two = first + separator + "wheel: scroll",
                    all = two + separator + std::string(60, 'm');
  VkSimpleWindow window("window");
  window.setStatus(all.c_str());
  window.show();
  const Widget status = XtNameToWidget(window.mainWindowWidget(), "status");
  const auto shows = [&](Dimension width, const std::string& expected) {
    XtVaSetValues(window.baseWidget(), XmNwidth, width, nullptr);
    return support::waitFor([&] {
      while (XtAppPending(app->appContext()) != 0) XtAppProcessEvent(app->appContext(), XtIMAll);
      return viewkit::textResource(status, XmNlabelString) == expected;
    });
  };
  EXPECT_TRUE(shows(1100, all));
  EXPECT_TRUE(shows(400, two));
  EXPECT_TRUE(shows(40, first));
  EXPECT_TRUE(shows(1100, all));
}

TEST_F(Component, ADestroyedComponentTakesItsWidgetAlong) {
  VkSimpleWindow window("window");
  auto label = std::make_unique<Label>(window.mainWindowWidget());
  label.reset();
  EXPECT_EQ(XtNameToWidget(window.mainWindowWidget(), "label"), nullptr);
}

TEST_F(Component, AWindowThatGoesClearsTheComponentsInIt) {
  auto window = std::make_unique<VkSimpleWindow>("window");
  Label label(window->mainWindowWidget());
  window.reset();
  EXPECT_EQ(label.baseWidget(), nullptr);
  EXPECT_EQ(label.destroyed, 1);
}

TEST_F(Component, TellsThatItGoes) {
  VkSimpleWindow window("window");
  Listener listener;
  {
    Label label(window.mainWindowWidget());
    label.addCallback(VkComponent::deleteCallback, &listener, &Listener::componentGone);
  }
  EXPECT_EQ(listener.goneName, "label");
}

TEST_F(Component, ShowAndHideManageTheWidget) {
  VkSimpleWindow window("window");
  Label label(window.mainWindowWidget());
  label.hide();
  EXPECT_FALSE(XtIsManaged(label.baseWidget()));
  label.show();
  EXPECT_TRUE(XtIsManaged(label.baseWidget()));
}

using SimpleWindow = DisplayTest;

TEST_F(SimpleWindow, TheFirstOneIsTheMainWindow) {
  EXPECT_EQ(app->mainWindow(), nullptr);
  VkSimpleWindow first("first");
  auto second = std::make_unique<VkSimpleWindow>("second");
  EXPECT_EQ(app->mainWindow(), &first);
  XtDestroyWidget(first.baseWidget());
  EXPECT_EQ(app->mainWindow(), second.get());
  EXPECT_EQ(first.mainWindowWidget(), nullptr);
  first.setTitle("nothing to show it");
  first.setStatus("nothing to show it");
  first.show();
  first.hide();
}

TEST_F(SimpleWindow, OnlyTheMainWindowCarriesTheCommandLine) {
  VkSimpleWindow first("first");
  VkSimpleWindow second("second");
  first.show();
  second.show();
  char** words = nullptr;
  int count = 0;
  ASSERT_TRUE(XGetCommand(app->display(), XtWindow(first.baseWidget()), &words, &count));
  EXPECT_THAT(std::vector<std::string>(words, words + count),
              ElementsAre("some/path/displaytest", "-geometry", "700x500+10+20", "extra"));
  XFreeStringList(words);
  EXPECT_FALSE(XGetCommand(app->display(), XtWindow(second.baseWidget()), &words, &count));
}

TEST_F(SimpleWindow, TheGeometryOptionSizesTheMainWindow) {
  VkSimpleWindow window("window");
  window.show();
  Dimension width = 0;
  XtVaGetValues(window.baseWidget(), XmNwidth, &width, nullptr);
  EXPECT_EQ(width, 700);
}

std::string statusLine(const VkSimpleWindow& window) {
  return viewkit::textResource(XtNameToWidget(window.baseWidget(), "*status"), XmNlabelString);
}

TEST_F(SimpleWindow, ShowsTitleAndStatus) {
  VkSimpleWindow window("window");
  char* title = nullptr;
  XtVaGetValues(window.baseWidget(), XmNtitle, &title, nullptr);
  EXPECT_STREQ(title, "window");
  window.setTitle("a scene");
  XtVaGetValues(window.baseWidget(), XmNtitle, &title, nullptr);
  EXPECT_STREQ(title, "a scene");
  window.setStatus("9 nodes, 9 arcs");
  EXPECT_EQ(statusLine(window), "9 nodes, 9 arcs");
}

/// A window with two panes; counts what its items run.
class MenuWindow : public VkWindow {
 public:
  MenuWindow() : VkWindow("MenuWindow") {
    const VkMenuDesc deep[] = {{ACTION, "Deep", &ran}, {ACTION, "Twice", &ran}, {}};
    const VkMenuDesc file[] = {{ACTION, "Save As...", &ran, nullptr, &own},
                               {SEPARATOR},
                               {SUBMENU, "More", nullptr, deep},
                               {ACTION, "kill [pb]xsend", &ran},
                               {}};
    const VkMenuDesc view[] = {{TOGGLE, "Twice", &ran}, {TOGGLE, "View", &ran}, {}};
    addMenuPane("File", file, &shared);
    addMenuPane("View", view, &shared);
  }
  static void ran(Widget, XtPointer data, XtPointer) { ++*static_cast<int*>(data); }

  int own = 0;
  int shared = 0;
};

void activateWidget(const VkMenuItem& item) {
  XmPushButtonCallbackStruct data{};
  XtCallCallbacks(item.baseWidget(), XmNactivateCallback, &data);
}

bool isUsable(const VkMenuItem* item) { return XtIsSensitive(item->baseWidget()); }

using Menu = DisplayTest;

TEST_F(Menu, NamesItemsByLettersAndDigits) {
  MenuWindow window;
  for (const auto& [label, name] : {std::pair{"Save As...", "SaveAs"}, {"kill [pb]xsend", "killpbxsend"}}) {
    const auto* item = window.menu()->findNamedItem(label);
    ASSERT_TRUE(item) << label;
    EXPECT_STREQ(item->name(), name);
    EXPECT_STREQ(XtName(item->baseWidget()), name);
    EXPECT_EQ(viewkit::textResource(item->baseWidget(), XmNlabelString), label);
  }
}

TEST_F(Menu, FollowsItsTable) {
  MenuWindow window;
  const auto* file = window.menu()->findNamedItem<VkMenu>("File");
  ASSERT_TRUE(file);
  Widget pane = nullptr;
  XtVaGetValues(file->baseWidget(), XmNsubMenuId, &pane, nullptr);
  WidgetList items = nullptr;
  Cardinal count = 0;
  XtVaGetValues(pane, XmNchildren, &items, XmNnumChildren, &count, nullptr);
  std::vector<std::string> names;
  for (const Widget item : std::span(items, count))
    if (!XtIsShell(item)) names.emplace_back(XtName(item));
  EXPECT_THAT(names, ElementsAre("SaveAs", "separator", "More", "killpbxsend"));
}

TEST_F(Menu, FindsTheFirstItemOfALabelAndKind) {
  MenuWindow window;
  EXPECT_STREQ(window.menu()->findNamedItem("Twice")->className(), "VkMenuAction");
  EXPECT_TRUE(window.menu()->findNamedItem<VkMenuToggle>("Twice"));
  EXPECT_STREQ(window.menu()->findNamedItem("View")->className(), "VkSubMenu");
  auto* const view = window.menu()->findNamedItem<VkMenu>("View");
  ASSERT_TRUE(view);
  EXPECT_STREQ(view->findNamedItem("View")->className(), "VkMenuToggle");
  EXPECT_FALSE(view->findNamedItem("Deep"));
  EXPECT_FALSE(window.menu()->findNamedItem("Save As"));
}

TEST_F(Menu, ClientDataIsTheItemsOwnOrTheTables) {
  MenuWindow window;
  activateWidget(*window.menu()->findNamedItem("Save As..."));
  EXPECT_EQ(window.own, 1);
  EXPECT_EQ(window.shared, 0);
  activateWidget(*window.menu()->findNamedItem("Deep"));
  EXPECT_EQ(window.shared, 1);
}

TEST_F(Menu, AVisualStateCallsNothing) {
  MenuWindow window;
  auto* const toggle = window.menu()->findNamedItem<VkMenuToggle>("Twice");
  const auto state = [toggle] { return XmToggleButtonGadgetGetState(toggle->baseWidget()); };
  EXPECT_FALSE(state());
  toggle->setVisualState(true);
  EXPECT_TRUE(state());
  toggle->setVisualState(false);
  EXPECT_FALSE(state());
  EXPECT_EQ(window.shared, 0);
}

TEST_F(Menu, GreysItemsAndWholePanes) {
  MenuWindow window;
  auto* const pane = window.menu()->findNamedItem("File");
  auto* const inside = window.menu()->findNamedItem("Deep");
  pane->deactivate();
  EXPECT_FALSE(isUsable(pane));
  EXPECT_FALSE(isUsable(window.menu()->findNamedItem("Save As...")));
  pane->activate();
  EXPECT_TRUE(isUsable(pane));
  EXPECT_TRUE(isUsable(inside));
  inside->deactivate();
  EXPECT_FALSE(isUsable(inside));
  EXPECT_TRUE(isUsable(pane));
}

TEST_F(Menu, OutlivesItsWidgetsHarmlessly) {
  MenuWindow window;
  auto* const toggle = window.menu()->findNamedItem<VkMenuToggle>("Twice");
  auto* const pane = window.menu()->findNamedItem("File");
  XtDestroyWidget(window.baseWidget());
  EXPECT_EQ(toggle->baseWidget(), nullptr);
  toggle->setVisualState(true);
  pane->activate();
  pane->deactivate();
}

using Dialog = DisplayTest;

/// Runs `procedure` in the first turn of the next event loop.
void soon(XtTimerCallbackProc procedure, XtPointer data = nullptr) {
  XtAppAddTimeOut(theApplication->appContext(), 0, procedure, data);
}

TEST_F(Dialog, IsOneOfEachForTheApplication) {
  EXPECT_EQ(getTheQuestionDialog(), getTheQuestionDialog());
  EXPECT_EQ(getTheWarningDialog(), getTheWarningDialog());
}

TEST_F(Dialog, WithoutAWindowAnswersCancel) {
  EXPECT_EQ(getTheQuestionDialog()->postAndWait("Anybody?"), VkDialogReason::CANCEL);
}

TEST_F(Dialog, TakenDownAnswersCancel) {
  VkSimpleWindow window("window");
  window.show();
  soon([](XtPointer, XtIntervalId*) { getTheQuestionDialog()->unpost(); });
  EXPECT_EQ(getTheQuestionDialog()->postAndWait("Really?"), VkDialogReason::CANCEL);
  EXPECT_FALSE(getTheQuestionDialog()->isPosted());
}

TEST_F(Dialog, RepostedAnswersCancelToTheFirst) {
  VkSimpleWindow window("window");
  window.show();
  soon([](XtPointer, XtIntervalId*) { getTheQuestionDialog()->post("And this?"); });
  EXPECT_EQ(getTheQuestionDialog()->postAndWait("Really?"), VkDialogReason::CANCEL);
  EXPECT_TRUE(getTheQuestionDialog()->isPosted());
  EXPECT_EQ(viewkit::textResource(getTheQuestionDialog()->baseWidget(), XmNmessageString), "And this?");
  getTheQuestionDialog()->unpost();
}

TEST_F(Dialog, DestroyedWhileWaitingAnswersCancel) {
  VkSimpleWindow window("window");
  window.show();
  auto question = std::make_unique<VkQuestionDialog>("own");
  soon(
      [](XtPointer owner, XtIntervalId*) { static_cast<std::unique_ptr<VkQuestionDialog>*>(owner)->reset(); },
      &question);
  EXPECT_EQ(question->postAndWait("Really?"), VkDialogReason::CANCEL);
  EXPECT_FALSE(question);
}

TEST_F(Dialog, IsMadeAnewForAnotherWindow) {
  {
    VkSimpleWindow window("window");
    window.show();
    getTheWarningDialog()->post("First.");
    EXPECT_TRUE(getTheWarningDialog()->isPosted());
  }
  EXPECT_FALSE(getTheWarningDialog()->isPosted());
  VkSimpleWindow window("window");
  window.show();
  getTheWarningDialog()->setTitle("Trouble");
  getTheWarningDialog()->post("Second.");
  EXPECT_EQ(viewkit::textResource(getTheWarningDialog()->baseWidget(), XmNdialogTitle), "Trouble");
  getTheWarningDialog()->unpost();
}

using Busy = DisplayTest;

/// The pixels of a widget.
std::string pixels(Widget widget) {
  Dimension width = 0;
  Dimension height = 0;
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  const viewkit::ImagePtr image(
      XGetImage(XtDisplay(widget), XtWindow(widget), 0, 0, width, height, AllPlanes, ZPixmap));
  return {image->data, static_cast<std::size_t>(image->bytes_per_line) * height};
}

TEST_F(Busy, NestsAndShowsTheFirstMessageUntilTheEnd) {
  VkSimpleWindow window("window");
  window.show();
  window.setStatus("Ready.");
  app->busy("making KAVO data...");
  EXPECT_EQ(statusLine(window), "making KAVO data...");
  app->busy();
  app->notBusy();
  EXPECT_EQ(statusLine(window), "making KAVO data...");
  app->notBusy();
  EXPECT_EQ(statusLine(window), "Ready.");
  app->notBusy();  // one too many
  app->busy("again");
  EXPECT_EQ(statusLine(window), "again");
  app->notBusy();
  EXPECT_EQ(statusLine(window), "Ready.");
}

TEST_F(Busy, EverythingIsPaintedOnReturn) {
  VkSimpleWindow window("window");
  window.show();
  app->paintEverything();
  const Widget line = XtNameToWidget(window.baseWidget(), "*status");
  const std::string before = pixels(line);
  app->busy("making KAVO data...");
  const std::string during = pixels(line);
  EXPECT_TRUE(during != before);
  app->paintEverything();
  EXPECT_TRUE(pixels(line) == during);
  app->notBusy();
}

TEST_F(Busy, ADialogMayShowTheMessage) {
  VkSimpleWindow window("window");
  window.show();
  VkWarningDialog dialog("busyDialog");
  app->setBusyDialog(&dialog);
  app->busy("making KAVO data...");
  EXPECT_TRUE(dialog.isPosted());
  EXPECT_EQ(statusLine(window), " ");
  app->notBusy();
  EXPECT_FALSE(dialog.isPosted());
  app->setBusyDialog(nullptr);
}

TEST_F(Busy, AWindowMayGoMeanwhile) {
  auto window = std::make_unique<VkSimpleWindow>("window");
  window->show();
  testing::internal::CaptureStderr();
  app->busy("working");
  window.reset();
  app->notBusy();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

using App = DisplayTest;

TEST_F(App, KeepsItsVersionString) {
  EXPECT_STREQ(app->versionString(), "");
  app->setVersionString("QUILeditor Version2.02\nrights");
  EXPECT_STREQ(app->versionString(), "QUILeditor Version2.02\nrights");
}

TEST_F(App, PrintsProtocolErrorsAndGoesOn) {
  testing::internal::CaptureStderr();
  XDestroyWindow(app->display(), 1);
  XSync(app->display(), False);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("X error: BadWindow"));
}

TEST(Look, SmoothedTextOnlyWhereTheScreenCanDoIt) {
  EXPECT_THAT(viewkit::fallbackResources(true), Contains("*rt.fontType: FONT_IS_XFT"));
  EXPECT_THAT(viewkit::fallbackResources(false), Not(Contains(HasSubstr("XFT"))));
  EXPECT_THAT(viewkit::fallbackResources(false), Contains("*rt.fontType: FONT_IS_FONTSET"));
}

TEST(Look, TheApplicationsOwnLinesComeLastAndSoWin) {
  const auto application = [](bool smoothText) {
    return std::vector<std::string>{smoothText ? "*rt.fontSize: 12" : "*rt.fontName: 7x13"};
  };
  EXPECT_EQ(viewkit::fallbackResources(true, application).back(), "*rt.fontSize: 12");
  EXPECT_EQ(viewkit::fallbackResources(false, application).back(), "*rt.fontName: 7x13");
}

}  // namespace
