/// @file
/// Tab panels: one tab is selected.
#include <gtest/gtest.h>  // before X's headers

#include <Xm/ToggleB.h>

#include "tests/viewkit/graph_test.h"
#include "viewkit/vktabpanel.h"

namespace {

class TabPanelTest : public WindowTest {
 protected:
  Widget button(const char* tab) { return XtNameToWidget(panel_.baseWidget(), tab); }
  bool isPressedIn(const char* tab) { return XmToggleButtonGetState(button(tab)); }
  void click(const char* tab) {
    hands().click(onScreen(button(tab), {4, 4}));
    settle();
  }

  VkTabPanel panel_{"tab", window_->mainWindowWidget()};
};

TEST_F(TabPanelTest, TheFirstTabIsSelectedUntilAnotherIs) {
  panel_.addTab("default");
  panel_.addTab("other");
  window_->addView(&panel_);
  window_->show();
  EXPECT_TRUE(isPressedIn("default"));
  EXPECT_FALSE(isPressedIn("other"));
  EXPECT_TRUE(eventually([&] {  // until the window manager lets clicks through
    click("other");
    return isPressedIn("other");
  }));
  EXPECT_FALSE(isPressedIn("default"));
  click("other");  // stays pressed in
  EXPECT_TRUE(isPressedIn("other"));
}

}  // namespace
