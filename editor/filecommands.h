/// @file
/// The commands of the File menu.
#pragma once

#include <string>

#include "editor/prompts.h"

/// Where the scene and its file are shown.
class SceneDisplay {
 public:
  virtual ~SceneDisplay() = default;

  /// Shows the current scene, and closes what belongs to the one before.
  virtual void showScene() = 0;
  virtual void showNoScene() = 0;
  virtual void showFileName(const std::string& path) = 0;
};

/// Knows the name of the current scene's file. Open changes scene, picture and file name together, and only
/// when the file could be read.
class FileCommands {
 public:
  /// @param prompts, display  outlive this.
  FileCommands(Prompts& prompts, SceneDisplay& display) : prompts_(prompts), display_(display) {}

  /// Clears the picture alone: the scene stays in memory, and Save still writes it.
  void clear();
  void open();
  /// Saves under the current file name; when there is none yet, warns that it can't.
  void save();
  /// The chosen name becomes the current file name, even when the file can't be written.
  void saveAs();

 private:
  bool read(const std::string& path);
  void write();
  bool overwriteIsOk() { return prompts_.confirm("Overwrite OK?"); }

  Prompts& prompts_;
  SceneDisplay& display_;
  std::string file_name_;  ///< of the last Open or Save As; empty before
};
