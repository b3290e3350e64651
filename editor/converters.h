/// @file
/// The commands of the KAVO tool and QUIL2 tool menus.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <utility>

#include "editor/prompts.h"
#include "tools/kavoprev.h"
#include "tools/quil2prev.h"

/// Converts the scene with the console's programs, as the options in `ngops` say, and loads it onto a
/// development board. A command waits for the programs that it runs, except for the loader of a full preview
/// and the user's script, which go on in the background. A failure is told to the user; the command goes on
/// all the same unless there is nothing that it could load.
class Converters {
 public:
  /// Writes the scene to a path, in a mode of the writer. @returns 0 when it is written.
  using Save = std::function<int(const std::string& path, int mode)>;
  /// Runs a shell command line to its end. @returns 0 when it succeeded.
  using Run = std::function<int(const std::string& line)>;

  /// @param prompts  outlives this.
  Converters(Prompts& prompts, Save save, Run run)
      : prompts_(prompts), save_(std::move(save)), run_(std::move(run)) {}

  /// Ends the loaders that send previews to a board.
  void killLoaders();
  /// Lets the user choose a file, and takes its directory for the converters' output. The options file is not
  /// written.
  void setOutputDirectory();

  /// @name Display lists.
  /// @{
  void convertToDisplayLists();
  /// Builds a previewer that contains the scene, and loads it.
  void fullPreview(const KavoBoard& board);
  /// Loads a previewer that is the same for all scenes, and then the scene as data.
  void quickPreview(const KavoBoard& board);
  /// What comes before every conversion: ends the loaders and writes the scratch scene.
  void prepareDisplayLists();
  /// @}

  /// @name Viewer files, and the user's own script.
  /// @{
  void convertToViewerFile();
  void viewerPreview(ZexBoard board);
  /// What comes before every conversion: writes the scratch scene.
  void prepareViewerFile();
  void executeScript();
  void chooseScript();
  void chooseScriptScene();
  /// @}

 private:
  int runBusy(const std::string& line, const char* message = nullptr);
  void writeScratch(const char* path);
  void choosePath(std::span<char> option, const char* title, const char* trace,
                  const char* pattern = FileStart{}.pattern);

  Prompts& prompts_;
  const Save save_;
  const Run run_;
  /// Whether the next full preview must clear the board's memory first: it may hold a quick preview or, when
  /// the program starts, anything.
  bool board_is_dirty_ = true;
};
