/// @file
/// Tab panels: one tab is selected, and listeners learn of another.
#include <gtest/gtest.h>

#include <Xm/ToggleB.h>

#include "tests/viewkit/display_test.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/vktabpanel.h"

namespace {

class TabPanelTest : public DisplayTest, public VkCallbackObject {
 protected:
  TabPanelTest() { panel_.addCallback(VkTabPanel::tabSelectedCallback, this, &TabPanelTest::selected); }

  bool isPressedIn(const char* tab) {
    return XmToggleButtonGetState(XtNameToWidget(panel_.baseWidget(), tab));
  }
  void click(const char* tab) {
    XtCallCallbacks(XtNameToWidget(panel_.baseWidget(), tab), XmNvalueChangedCallback, nullptr);
  }
  void selected(VkTabPanel*, void*, void* tab) { selected_.push_back(*static_cast<const char*>(tab)); }

  VkSimpleWindow window_{"window"};
  VkTabPanel panel_{"tab", window_.mainWindowWidget()};
  std::string selected_;  ///< the first letters of the tabs that listeners were told of
};

TEST_F(TabPanelTest, TheFirstTabIsSelectedUntilAnotherIs) {
  char a = 'a', b = 'b';
  EXPECT_EQ(panel_.selectedTab(), -1);
  EXPECT_EQ(panel_.addTab("default", &a), 0);
  EXPECT_EQ(panel_.addTab("other", &b), 1);
  EXPECT_EQ(panel_.size(), 2);
  EXPECT_EQ(panel_.selectedTab(), 0);
  EXPECT_TRUE(isPressedIn("default"));
  click("other");
  EXPECT_EQ(panel_.selectedTab(), 1);
  EXPECT_FALSE(isPressedIn("default"));
  EXPECT_TRUE(isPressedIn("other"));
  EXPECT_EQ(selected_, "b");
  click("other");  // stays pressed in
  EXPECT_TRUE(isPressedIn("other"));
  EXPECT_EQ(selected_, "b");
}

TEST_F(TabPanelTest, IndicesWithoutATabAreIgnored) {
  char a = 'a';
  panel_.addTab("default", &a);
  panel_.selectTab(1);
  panel_.selectTab(-1);
  EXPECT_EQ(panel_.selectedTab(), 0);
  EXPECT_EQ(selected_, "");
}

}  // namespace
