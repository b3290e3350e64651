/// @file
/// The commands of the File menu.
#pragma once

#include <string>

#include "editor/prompts.h"

/// Where the scene and its file are shown.
class SceneDisplay {
 public:
  virtual ~SceneDisplay() = default;

  /// Shows the current scene; whatever belongs to another one goes.
  virtual void showScene() = 0;
  virtual void showNoScene() = 0;
  virtual void showFileName(const std::string& path) = 0;
};

/// Knows which file the current scene is of. Scene, picture and file name change together, and only when a
/// file is good.
class FileCommands {
 public:
  /// @param prompts, display  outlive this.
  FileCommands(Prompts& prompts, SceneDisplay& display) : prompts_(prompts), display_(display) {}

  /// Clears the picture alone: the scene stays in memory, and Save still writes it.
  void clear();
  void open();
  /// Without a file name that is a failure.
  void save();
  /// The chosen name is the scene's from then on, even if it can't be written.
  void saveAs();

 private:
  bool read(const std::string& path);
  void write();
  bool overwriteIsOk() { return prompts_.confirm("Overwrite OK?"); }

  Prompts& prompts_;
  SceneDisplay& display_;
  std::string file_name_;  ///< of the last Open or Save As; empty before
};
