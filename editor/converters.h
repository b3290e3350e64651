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

/// Takes the scene through the console's converters and onto a development board, by the options in `ngops`.
/// A command ends when its programs have; only full previews are loaded, and the user's script runs, in the
/// background. What fails is told and does not stop the command, unless there is then nothing to load.
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
  /// Keeps the directory of a file that the user chooses as the one for output, in this run of the program.
  void setOutputDirectory();

  /// @name Display lists.
  /// @{
  void convertToDisplayLists();
  /// Makes the scene into a program of its own and loads that.
  void fullPreview(const KavoBoard& board);
  /// Loads the scene beside a previewer that is the same for all scenes.
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
  /// What a quick preview, or whatever came before us, left in the board's memory must be cleared before the
  /// next full preview.
  bool board_is_dirty_ = true;
};
