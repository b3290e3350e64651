/// @file
/// The editor of a person whose language writes numbers with a comma: it writes and reads them with a point.
#include <map>
#include <stdexcept>
#include <string>

#include "tests/window/editorfixture.h"

namespace {

using support::WidgetInfo;

/// The German locale, made for the test: few machines have it.
class GermanLocale {
 public:
  GermanLocale() {
    support::Process::Start make;
    make.command = {"localedef", "-i", "de_DE", "-f", "UTF-8", directory_ / "de_DE.UTF-8"};
    if (support::Process(make).waitForExit() != 0) throw std::runtime_error("localedef failed");
  }
  /// What a program is started with that is to use it.
  std::map<std::string, std::string> environment() const {
    return {{"LC_ALL", "de_DE.UTF-8"}, {"LOCPATH", directory_.path().string()}};
  }

 private:
  const ScratchDirectory directory_;
};

// The locale is made before the editor that uses it is started.
class InGerman : private GermanLocale, public EditorTest {
 protected:
  InGerman() : EditorTest(24, {.executable = {}, .environment = environment()}) {}

  /// How a program that asks for the user's language reads and writes one half.
  std::string half() const {
    support::Process::Start print;
    print.command = {"/usr/bin/printf", "%.1f", "0,5"};
    print.environment = environment();
    print.output = path("half");
    support::Process(print).waitForExit();
    return read_file(path("half"));
  }
};

TEST_F(InGerman, DialogsWriteAndReadNumbersWithAPoint) {
  ASSERT_EQ(half(), "0,5");
  const std::string scene = data("robot");
  write_file(scene, edited(scene, "set cam_0 clip.near=0.25\n").bytes);
  editor_.open(scene);
  editor_.toggleEditMode();
  editor_.doubleClickNode("cam_0");
  const std::string field = "camDialog/nearBase";
  const WidgetInfo near =
      editor_.await(field, [](const WidgetInfo& w) { return w.isAt("camDialog/nearBase") && w.viewable; });
  EXPECT_EQ(near.text, "0.25");
  editor_.driver().click(near.box.centre());
  editor_.driver().key("End");
  editor_.driver().key("BackSpace");
  editor_.driver().key("BackSpace");
  editor_.driver().type("75");
  editor_.settle();
  editor_.click("camDialog/buttons/OK");
  editor_.settle();
  editor_.saveAs(path("saved.quil"));
  EXPECT_THAT(quilscene({"show", path("saved.quil"), "cam_0"}),
              testing::HasSubstr("cam_0 clip.near = 0.75\n"));
}

}  // namespace
