/// @file
/// Preference dialogs used by mouse and keyboard under a window manager.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/places.h"
#include "tests/support/program.h"
#include "tests/support/wait.h"
#include "tests/support/xserver.h"

namespace {

using support::Program;
using support::WidgetInfo;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

class PrefDialog : public testing::Test {
 protected:
  explicit PrefDialog(std::vector<std::string> arguments = {})
      : program_(server_, {.executable = support::built_program("tests/viewkit/prefs_program"),
                           .arguments = std::move(arguments)}) {}

  /// Opens a dialog from the menu and waits until keys go to its first field.
  void open(const char* dialog, std::string_view first = "testDialog/nodeNameBase") {
    program_.chooseMenu({"Dialogs", dialog});
    awaitFocus(first);
    newOutput();
  }
  void awaitFocus(std::string_view where) {
    program_.await(std::string(where) + " with the focus",
                   [where](const WidgetInfo& w) { return w.isAt(where) && w.viewable && w.focused; });
  }
  WidgetInfo item(std::string_view where) {
    return program_.awaitAt(where, [](const WidgetInfo&) { return true; });
  }
  bool isShown(std::string_view where) {
    return program_.find(where, [](const WidgetInfo& w) { return w.viewable; }).has_value();
  }
  void expectClosed(std::string_view dialog) {
    EXPECT_TRUE(support::waitFor([&] { return !isShown(dialog); })) << dialog;
  }
  void key(std::string_view keysym, support::Held held = {}) {
    program_.driver().key(keysym, held);
    program_.settle();
  }
  void type(std::string_view text) {
    program_.driver().type(text);
    program_.settle();
  }
  void click(std::string_view where) {
    program_.click(where);
    program_.settle();
  }
  /// Picks an entry of the menu of options.
  void pick(std::string_view label) {
    program_.click("choiceBase/OptionButton");
    const auto entry = program_.await("an entry", [label](const WidgetInfo& w) {
      return w.isAt("choiceMenu/entry") && w.label == label && w.viewable;
    });
    program_.driver().clickInMenu(entry.box.centre());
    program_.settle();
  }
  /// What has been printed since the last call.
  std::string newOutput() {
    const std::string all = program_.output();
    const std::string fresh = all.substr(read_);
    read_ = all.size();
    return fresh;
  }

  support::XServer server_;
  support::WindowManager manager_{server_};
  Program program_;
  std::size_t read_ = 0;
};

TEST_F(PrefDialog, LabelsComeFromItsResourceLines) {
  open("All");
  EXPECT_EQ(item("prefListBase/titleLabel").label, "Test");
  EXPECT_EQ(item("titleBase/nodeNameLabel").label, "Name:");
  EXPECT_EQ(item("formBase/twoBase").label, "TWO");
  EXPECT_EQ(item("prefListBase/plainBase").label, "Plain");
  EXPECT_EQ(item("placeBase/yLabel").label, "the y");
  EXPECT_EQ(item("noteBase").label, "Note");
}

TEST_F(PrefDialog, AForcedLabelStandsInFrontOfAnUnlabelledButton) {
  open("All");
  EXPECT_EQ(item("forcedLabel").label, "Forced");
  EXPECT_THAT(item("forcedBase").label, testing::AnyOf("", " "));
  EXPECT_LT(item("forcedLabel").box.x, item("forcedBase").box.x);
  EXPECT_FALSE(isShown("plainLabel"));
}

TEST_F(PrefDialog, AnEmptyLabelTakesNoRoom) {
  open("All");
  EXPECT_FALSE(isShown("dialogNameBase"));
}

TEST_F(PrefDialog, LinesThatNameNoWidgetLeaveTheDefaultLabel) {
  open("All");
  EXPECT_EQ(item("placeLabel").label, "placeLabel");
  EXPECT_EQ(item("xLabel").label, "xLabel");
}

TEST_F(PrefDialog, LinesOfOneDialogDoNotReachAnother) {
  open("Two", "otherDialog/nodeNameBase");
  EXPECT_EQ(item("otherDialog/titleLabel").label, "Other");
  EXPECT_EQ(item("otherDialog/formLabel").label, "formLabel");
  EXPECT_EQ(item("testDialog/titleLabel").label, "Test");
  EXPECT_EQ(item("testDialog/nodeNameLabel").label, "Name:");
}

class PrefDialogWithUserResources : public PrefDialog {
 protected:
  PrefDialogWithUserResources()
      : PrefDialog({"-xrm", "*nodeNameLabel.labelString: Nom", "-xrm",
                    "*testDialog*twoBase.labelString: Deux", "-xrm", "*labelString: everything"}) {}
};

TEST_F(PrefDialogWithUserResources, TheUsersOwnLinesWin) {
  open("All");
  EXPECT_EQ(item("nodeNameLabel").label, "Nom");
  EXPECT_EQ(item("twoBase").label, "Deux");
  EXPECT_EQ(item("titleLabel").label, "Test");  // said of this widget, against something said of all
}

TEST_F(PrefDialog, LabelsAndFieldsStandInColumns) {
  open("All");
  const auto left = [&](std::string_view where) { return item(where).box.x; };
  EXPECT_EQ(left("titleLabel"), left("formLabel"));
  EXPECT_EQ(left("titleLabel"), left("placeLabel"));
  for (const char* label :
       {"choiceLabel", "forcedLabel", "xLabel", "yLabel", "plainBase", "oneBase", "noteBase"})
    EXPECT_EQ(left(label), left("nodeNameLabel")) << label;
  for (const char* field : {"forcedBase", "xBase", "yBase"})
    EXPECT_EQ(left(field), left("choiceBase")) << field;
}

TEST_F(PrefDialog, NothingOverlapsOrIsCutOff) {
  open("All");
  const WidgetInfo list = item("prefListBase");
  std::vector<WidgetInfo> leaves;
  for (const WidgetInfo& w : program_.widgets())
    if (w.path.find("prefListBase/") != w.path.npos && w.viewable && w.class_name != "XmDrawingArea" &&
        w.name() != "OptionButton")
      leaves.push_back(w);
  ASSERT_GT(leaves.size(), 10U);
  for (const WidgetInfo& a : leaves) {
    EXPECT_GE(a.box.x, list.box.x) << a.path;
    EXPECT_LE(a.box.x + a.box.width, list.box.x + list.box.width) << a.path;
    EXPECT_LE(a.box.y + a.box.height, list.box.y + list.box.height) << a.path;
    for (const WidgetInfo& b : leaves) {
      if (a.id == b.id) continue;
      EXPECT_TRUE(a.box.x + a.box.width <= b.box.x || b.box.x + b.box.width <= a.box.x ||
                  a.box.y + a.box.height <= b.box.y || b.box.y + b.box.height <= a.box.y)
          << a.path << " and " << b.path;
    }
  }
}

TEST_F(PrefDialog, AMenuIsWideEnoughForItsLongestEntry) {
  open("All");
  const int before = item("choiceBase/OptionButton").box.width;
  pick("THE LONGEST ENTRY");
  EXPECT_EQ(item("choiceBase/OptionButton").label, "THE LONGEST ENTRY");
  EXPECT_EQ(item("choiceBase/OptionButton").box.width, before);
}

TEST_F(PrefDialog, ApplyTellsWhatChangedAndStaysOpen) {
  open("All");
  type("new ");
  click("oneBase");
  click("plainBase");
  click("forcedBase");
  pick("LAST");
  click("yBase");
  type("7");
  click("buttons/Apply");
  EXPECT_EQ(newOutput(),
            "testDialog told 2\ntitle changed\nnodeName = new old name\nform changed\none = 1\nplain = 1\n"
            "forced = 1\nchoice = LAST\nplace changed\ny = 7\n");
  EXPECT_TRUE(isShown("testDialog"));
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), "testDialog told 2\n");
}

TEST_F(PrefDialog, ARefusedApplyKeepsTheChanges) {
  program_.chooseMenu({"Dialogs", "Refuse"});
  open("All");
  type("x");
  const std::string told = "testDialog told 2\ntitle changed\nnodeName = xold name\n";
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), told);
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), told);
}

TEST_F(PrefDialog, OkAppliesFirstThenClosesAndReleasesItsWindows) {
  open("All");
  type("x");
  click("buttons/OK");
  expectClosed("testDialog");
  EXPECT_EQ(newOutput(), "testDialog told 2\ntitle changed\nnodeName = xold name\ntestDialog told 1\n");
  EXPECT_FALSE(program_.find([](const WidgetInfo& w) { return w.isAt("testDialog"); }));
}

struct Cancel {
  const char* name;
  const char* keysym;  ///< null: the button
  bool alt = false;
};

class PrefDialogCancel : public PrefDialog, public testing::WithParamInterface<Cancel> {};

TEST_P(PrefDialogCancel, TellsItAloneAndCloses) {
  open("All");
  type("x");
  if (!GetParam().keysym)
    click("buttons/Cancel");
  else if (GetParam().alt)
    key(GetParam().keysym, {"Alt_L"});
  else
    key(GetParam().keysym);
  expectClosed("testDialog");
  EXPECT_EQ(newOutput(), "testDialog told 0\ntitle changed\nnodeName = xold name\n");
}

INSTANTIATE_TEST_SUITE_P(All, PrefDialogCancel,
                         testing::Values(Cancel{"Button", nullptr}, Cancel{"Escape", "Escape"},
                                         Cancel{"WindowManagersClose", "F4", true}),
                         [](const auto& row) { return row.param.name; });

TEST_F(PrefDialog, CancelPutsTheItemsBackToWhatWasLastApplied) {
  open("All");
  type("applied ");
  click("oneBase");
  click("buttons/Apply");
  awaitFocus("buttons/Apply");
  click("twoBase");
  click("plainBase");
  pick("LAST");
  click("nodeNameBase");
  type("forgotten");
  click("buttons/Cancel");
  expectClosed("testDialog");
  open("Again");
  EXPECT_EQ(item("nodeNameBase").text, "applied old name");
  EXPECT_TRUE(item("oneBase").set);
  EXPECT_FALSE(item("twoBase").set);
  EXPECT_FALSE(item("plainBase").set);
  EXPECT_NE(item("choiceBase/OptionButton").label, "LAST");
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), "testDialog told 2\n");
}

TEST_F(PrefDialog, ReturnInATextPressesOk) {
  open("All");
  type("x");
  key("Return");
  expectClosed("testDialog");
  EXPECT_THAT(newOutput(), AllOf(HasSubstr("nodeName = xold name\n"), EndsWith("testDialog told 1\n")));
}

TEST_F(PrefDialog, TabWalksTheItemsInReadingOrder) {
  open("All");
  for (const char* next :
       {"oneBase", "twoBase", "threeBase", "plainBase", "forcedBase", "choiceBase/OptionButton", "xBase",
        "yBase", "OK", "Apply", "Cancel", "nodeNameBase"}) {
    key("Tab");
    awaitFocus(next);
  }
}

TEST_F(PrefDialog, KeysTurnTogglesAndTurnOffTheOthersOfARadio) {
  open("All");
  key("Tab");
  key("space");
  key("Tab");
  key("space");
  EXPECT_FALSE(item("oneBase").set);
  EXPECT_TRUE(item("twoBase").set);
  key("space");  // on already
  EXPECT_TRUE(item("twoBase").set);
}

TEST_F(PrefDialog, AnIndexBeyondTheMenuIsShownAsItsNumberUntilAnEntryIsPicked) {
  open("Beyond");
  EXPECT_EQ(item("choiceBase/OptionButton").label, "77");
  type("x");
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), "testDialog told 2\ntitle changed\nnodeName = xold name\n");
  pick("LAST");
  EXPECT_EQ(item("choiceBase/OptionButton").label, "LAST");
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), "testDialog told 2\nchoice = LAST\n");
}

TEST_F(PrefDialog, ALongListScrollsAndFollowsTheFocus) {
  open("Many", "manyDialog/text0Base");
  const WidgetInfo dialog = item("manyDialog");
  EXPECT_LE(dialog.box.y + dialog.box.height, 1000);
  EXPECT_LE(dialog.box.width, 1280);
  const auto isInView = [&](std::string_view where) {
    const auto view = item("items/ClipWindow").box, field = item(where).box;
    return field.y >= view.y && field.y + field.height <= view.y + view.height;
  };
  EXPECT_TRUE(isInView("text0Base"));
  EXPECT_FALSE(isInView("text79Base"));
  EXPECT_TRUE(isShown("buttons/OK"));
  for (int i = 0; i < 79; ++i) program_.driver().key("Tab");
  awaitFocus("text79Base");
  EXPECT_TRUE(isInView("text79Base"));
  program_.driver().wheel(item("items/ClipWindow").box.centre(), 60);
  program_.settle();
  EXPECT_TRUE(isInView("text0Base"));
  program_.driver().wheel(item("items/ClipWindow").box.centre(), -1);
  program_.settle();
  EXPECT_FALSE(isInView("text0Base"));
}

TEST_F(PrefDialog, WhoeverWaitsGetsOkAfterTheApplies) {
  open("Wait");
  type("x");
  click("buttons/Apply");
  EXPECT_EQ(newOutput(), "testDialog told 2\ntitle changed\nnodeName = xold name\n");
  click("buttons/OK");
  expectClosed("testDialog");
  EXPECT_TRUE(support::waitFor([&] { return program_.output().ends_with("waited: 1\n"); }));
  EXPECT_EQ(newOutput(), "testDialog told 2\ntestDialog told 1\nwaited: 1\n");
}

TEST_F(PrefDialog, WhoeverWaitsGetsCancel) {
  open("Wait");
  program_.driver().click(item("view").box.centre());  // the window under the dialog gets nothing
  key("Escape");
  expectClosed("testDialog");
  EXPECT_TRUE(support::waitFor([&] { return program_.output().ends_with("waited: 0\n"); }));
}

}  // namespace
