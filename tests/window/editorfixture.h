/// @file
/// The built editor under a window manager, with sample scenes to open.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/editor.h"

/// The editor's dialogs, by their widgets' names.
inline constexpr auto kQuestion = support::Editor::kQuestion, kWarning = support::Editor::kWarning,
                      kFiles = support::Editor::kFiles;

/// Whether both hold the same bytes; told without printing them.
testing::AssertionResult sameBytes(const std::string& found, const std::string& expected);

/// Starts one editor per test. Its files lie in a directory of their own; the commands that the editor runs
/// are fakes that write their names down.
class EditorTest : public testing::Test {
 protected:
  /// @param depth          of the screen
  /// @param how            arguments and the like; see start()
  /// @param width, height  of the screen in pixels
  explicit EditorTest(int depth = 24, support::Program::Start how = {}, int width = 1280, int height = 1000);

  /// What a fresh editor is started with: `how`, and the fake commands in its PATH. A relative
  /// working directory lies in the test's, and so do the recovery copies of all its editors.
  support::Program::Start start(support::Program::Start how = {}) const;

  /// A path in the test's directory.
  std::string path(const std::string& name) const { return files_ / name; }
  /// A scene of tests/data, copied into the test's directory so that it may be overwritten.
  std::string data(const std::string& name) const;
  /// The sample scene of the table, written into the test's directory.
  std::string table() const;
  /// A scene with that many nodes, whose first object refers to objects that are not there.
  std::string dangling(std::uint32_t count) const;

  /// The names of the fake commands that were run so far, each followed by a newline.
  std::string commandsRun() const;

  /// What `quilscene` prints; it must end with `status`.
  std::string quilscene(const std::vector<std::string>& arguments, int status = 0) const;
  /// The file that `quilscene edit` makes of `scene` with these commands, and the trace lines that it prints.
  struct Edited {
    std::string bytes, trace;
  };
  /// @param accepted  whether every command is
  Edited edited(const std::string& scene, const std::string& commands, bool accepted = true) const;

  /// The arcs that the editor shows, as sorted lines "arc PARENT CHILD".
  std::vector<std::string> shownArcs();
  /// The same for the graph of a file.
  std::vector<std::string> arcsOf(const std::string& file) const;

  /// The nodes that are selected, in no order.
  std::vector<std::string> selected();
  /// Presses a key, and waits until the editor has done what it does.
  void press(std::string_view key, support::Held held = {});
  /// Clicks a node.
  void clickNode(std::string_view name, unsigned button = 1, support::Held held = {});
  /// Types into the field that finds nodes, from the graph.
  void find(const std::string& text);
  /// An item of a menu that the right button has brought up: "nodeMenu", "arcMenu", "backgroundMenu".
  support::WidgetInfo popupItem(const std::string& menu, const std::string& label);
  /// Chooses it with the pointer.
  void choosePopupItem(const std::string& menu, const std::string& label);

  /// The colour that is seen at a place: 0xRRGGBB.
  unsigned colorAt(support::Point place);

  /// What the editor has printed since the last call.
  std::string newOutput();

  const ScratchDirectory files_;
  support::XServer server_;
  support::WindowManager manager_{server_};
  support::Editor editor_;

 private:
  std::size_t read_ = 0;
};
