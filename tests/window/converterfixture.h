/// @file
/// A working directory with its neighbours, and stand-ins for the console's programs that note how they were
/// called.
#pragma once

#include <string>
#include <vector>

#include "tests/window/editorfixture.h"

/// The editor runs in "scenes"; beside that are "kavoprev", "kavoprev/quickprev" and "zexview".
///
/// A stand-in notes a line
///
///     DIRECTORY: NAME ARGUMENTS | SCRATCH... &
///
/// where SCRATCH is "quilpv" or "model.quil" for each scratch scene that is there just then, with a "?"
/// after it when its bytes are not those of `expectScene`, and "&" stands when the editor doesn't wait for
/// it. ("| " is left out when there is no scratch scene.)
class ConverterTest : public EditorTest {
 protected:
  explicit ConverterTest(std::string dialog = {});

  /// @name The options dialog that the test names in its constructor.
  /// @{
  void press(const std::string& button) {
    editor_.click(dialog_ + "/" + button);
    editor_.settle();
  }
  void enter(const std::string& item, const std::string& text) {
    editor_.fillIn(dialog_ + "/" + item + "Base", text);
  }
  /// The field of an item, be it usable or not.
  support::WidgetInfo field(const std::string& item) {
    const std::string where = dialog_ + "/" + item + "Base";
    return editor_.awaitAt(where, [](const support::WidgetInfo&) { return true; });
  }
  /// Chooses the menu item that brings it up, and waits for it.
  void chooseDialog(const std::vector<std::string>& menu) {
    editor_.chooseMenu(menu);
    editor_.await(dialog_ + "/OK");
  }
  const std::string dialog_;
  /// @}

  /// Opens a copy of a scene of tests/data, which is then the one expected in the scratch files.
  void openScene(const std::string& name);
  void expectScene(const std::string& bytes) const { write_file(path("expected"), bytes); }

  /// What a stand-in does after it has noted its line: shell commands.
  void behave(const std::string& name, const std::string& commands) const {
    write_file(path("does-" + name), commands);
  }

  /// Makes the stand-in that is called like this ("kavoprev: pxsend") wait, before it notes its line, until
  /// `release`.
  void hold(const std::string& call) const { write_file(path("hold"), call); }
  void awaitHeld() const;
  void release() const;

  using Lines = std::vector<std::string>;
  /// The lines noted since the last call, once the editor has nothing more to do.
  Lines ran();
  /// The same, once there are as many as that.
  Lines ran(std::size_t count);

  /// Waits for a warning, and presses OK.
  void expectWarning(const std::string& text);

  /// Whether the watch pointer keeps input from the window.
  bool isBusy() const;

 private:
  Lines noted() const;

  std::string title_ = "QUILeditor2";
  std::size_t told_ = 0;
};
