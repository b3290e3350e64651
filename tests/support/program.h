/// @file
/// A built program on a virtual display: what it shows, what it prints, and a person who uses it.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/xdriver.h"
#include "tests/support/xserver.h"

namespace support {

/// A rectangle on the screen, in pixels.
struct Box {
  int x = 0, y = 0, width = 0, height = 0;
  Point centre() const { return {x + width / 2, y + height / 2}; }
};

/// A widget of the program as it was when asked for.
struct WidgetInfo {
  std::string id;          ///< names the widget in further questions
  std::string path;        ///< the names of the widget and those above it: "/app/window/form/ok"
  std::string class_name;  ///< "XmPushButtonGadget"
  Box box;                 ///< where it is on the screen; meaningful when viewable
  bool managed = false, viewable = false, sensitive = false;
  bool set = false;      ///< the state of a toggle
  bool active = false;   ///< keys go to the window that it is in
  bool focused = false;  ///< keys that go to its window go to it
  std::string label;     ///< a label's text, a message box's message, a shell's title
  std::string text;      ///< what stands in a text field; the rows of a list, each with a newline

  std::string_view name() const { return std::string_view(path).substr(path.rfind('/') + 1); }

  /// Whether this widget is named by the last of the names in `where` ("form/ok"), below widgets named by the
  /// others in their order, with any number of widgets between.
  bool isAt(std::string_view where) const;
};

/// A running program in a scratch directory, with a home of its own.
class Program {
 public:
  struct Start {
    std::filesystem::path executable;
    std::string name{};  ///< argv[0]; empty: the executable's path
    std::vector<std::string> arguments{};
    /// Set on top of the caller's; with QUIL_FAULTS among them, system calls of the program fail (faults.h).
    std::map<std::string, std::string> environment{};
    std::map<std::string, std::string> home_files{};  ///< name and contents of files in its home
    std::filesystem::path directory{};                ///< working directory; empty: a fresh one
  };

  /// Starts the program on the server's display. It may still be on its way up when this returns.
  Program(const XServer& server, const Start& start);

  const std::filesystem::path& directory() const { return directory_; }
  std::filesystem::path home() const { return scratch_.path() / "home"; }
  Process& process() { return *process_; }
  XDriver& driver() { return driver_; }

  /// What it has printed so far; while it runs, everything up to the last event that it has handled.
  std::string output();
  std::string errors();

  /// Waits until the program has handled every event that was made so far.
  void settle();

  /// All its widgets, parents first.
  std::vector<WidgetInfo> widgets();

  using Condition = std::function<bool(const WidgetInfo&)>;

  /// The first widget for which the condition holds.
  std::optional<WidgetInfo> find(const Condition& condition);

  /// The first widget at this place (WidgetInfo::isAt) for which the condition holds. Costs less than a look
  /// at all.
  std::optional<WidgetInfo> find(std::string_view where, const Condition& condition);

  /// Waits for such a widget. Throws std::runtime_error, saying `what` was awaited and what there is, when
  /// none comes.
  WidgetInfo await(std::string_view what, const Condition& condition);

  /// Waits until a widget at this place (WidgetInfo::isAt) can be seen and used.
  WidgetInfo await(std::string_view where);

  /// Waits for a widget at this place for which the condition holds.
  WidgetInfo awaitAt(std::string_view where, const Condition& condition);

  /// Waits for a widget like await() and clicks it.
  void click(std::string_view where);

  /// Clicks a text field, replaces what is in it, and waits until it holds the text.
  void fillIn(std::string_view where, const std::string& text);

  /// Drags open a pane of the menu bar, and submenus on the way, to an item named by its label, and chooses
  /// it.
  void chooseMenu(const std::vector<std::string>& labels);

  /// The same but for the choice: the pointer rests on the item with the button down. @returns the item.
  WidgetInfo openMenu(const std::vector<std::string>& labels);

  /// The value of a widget's resource, numbers in decimal.
  std::string resource(const WidgetInfo& widget, const std::string& name);

  /// The text in a variable of the program, or at its beginning, by the variable's name.
  std::string symbol(const std::string& name);

  /// Asks the probe in the program. @returns the lines of its answer. Throws std::runtime_error when the
  /// program has ended or refuses the question.
  std::vector<std::vector<std::string>> ask(const std::vector<std::string>& question);

 private:
  /// The widgets of a name; of all names when it is empty.
  std::vector<WidgetInfo> widgetsNamed(std::string_view name);
  WidgetInfo awaitBy(std::string_view what, const std::function<std::optional<WidgetInfo>()>& look);

  ScratchDirectory scratch_;
  std::filesystem::path directory_;
  XDriver driver_;
  Descriptor socket_;
  std::optional<Process> process_;
};

}  // namespace support
