/// @file
/// Tab panels: one tab is selected, as a click or a key would.
#include <gtest/gtest.h>

#include <Xm/ToggleB.h>

#include "tests/viewkit/display_test.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/vktabpanel.h"

namespace {

class TabPanelTest : public DisplayTest {
 protected:
  Widget button(const char* tab) { return XtNameToWidget(panel_.baseWidget(), tab); }
  bool isPressedIn(const char* tab) { return XmToggleButtonGetState(button(tab)); }
  void click(const char* tab) {
    for (const char* action : {"Arm", "Select", "Disarm"}) {
      XEvent event{};
      event.xbutton.type = action[0] == 'A' ? ButtonPress : ButtonRelease;
      event.xbutton.display = app->display();
      event.xbutton.window = XtWindow(button(tab));
      XtCallActionProc(button(tab), action, &event, nullptr, 0);
    }
  }

  VkSimpleWindow window_{"window"};
  VkTabPanel panel_{"tab", window_.mainWindowWidget()};
};

TEST_F(TabPanelTest, TheFirstTabIsSelectedUntilAnotherIs) {
  panel_.addTab("default");
  panel_.addTab("other");
  window_.addView(&panel_);
  window_.show();
  EXPECT_TRUE(isPressedIn("default"));
  EXPECT_FALSE(isPressedIn("other"));
  for (int twice = 0; twice < 2; ++twice) {  // the second time it stays pressed in
    click("other");
    EXPECT_FALSE(isPressedIn("default"));
    EXPECT_TRUE(isPressedIn("other"));
  }
}

}  // namespace
