/// @file
/// The commands of the File menu.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "editor/prompts.h"
#include "editor/reasons.h"
#include "editor/unsavedwork.h"
#include "picture/export.h"
#include "storage/fileidentity.h"

/// Where the scene and its file are shown.
class SceneDisplay {
 public:
  virtual ~SceneDisplay() = default;

  /// Shows the current scene, and closes what belongs to the one before. Throws std::bad_alloc, with the one
  /// before still shown, when there is not enough memory; likewise what `progress` throws.
  /// @param progress  is told again and again how much of it is done, 0 to 1.
  virtual void showScene(const std::function<void(double)>& progress) = 0;
  virtual void showNoScene() = 0;
  /// Shows the file's name, and how it stands with the file.
  virtual void showFile() = 0;
  /// A scene has just been read from this file, or written to it.
  virtual void noteFile(const std::string& path) = 0;
  /// Writes a picture of the scene's graph. @returns what went wrong, a line; empty when nothing did.
  virtual std::string writePicture(const PictureChoice& choice, picture::FileFormat format) = 0;
};

/// Knows the current scene's file. Open changes scene, picture and file name together, and only when the file
/// could be read.
class FileCommands {
 public:
  /// What the user wants beside what is always done.
  struct Habits {
    bool confirm_unsaved_changes = false;  ///< ask before unsaved changes go
    bool backup_on_save = false;           ///< keep each file as it was before its first save
  };

  /// @param prompts, display, unsaved  outlive this.
  FileCommands(Prompts& prompts, SceneDisplay& display, UnsavedWork& unsaved, Habits habits)
      : prompts_(prompts), display_(display), unsaved_(unsaved), habits_(habits) {}

  /// Clears the picture alone: the scene stays in memory, and Save still writes it.
  void clear();
  void open();
  /// The same with the file already chosen.
  void openFile(const std::string& path);
  /// Saves under the current file name; when there is none yet, warns that it can't.
  void save();
  /// The chosen name becomes the current file name, even when the file can't be written.
  void saveAs();
  /// Writes the picture of the graph, beside the scene unless the user wants it elsewhere; the current file
  /// name stays.
  void exportPicture();
  /// Opens a recovery copy, as an unsaved change of its file.
  void recover();
  /// Whether the program may end; asks if the user wants to be asked.
  bool mayQuit() { return mayDrop("Quit without saving the changes?"); }

  /// Looks whether somebody else has written the scene's file, and says so when that is new.
  void lookAtDisk();
  bool changedOnDisk() const { return changed_on_disk_; }

  /// Of the last Open, Recover or Save As; empty before.
  const std::string& fileName() const { return file_name_; }

 private:
  bool mayDrop(const char* question);
  void read(const std::string& path);
  void read(const RecoveryCopy& copy);
  /// Reads a scene as that of a file, and says why that failed.
  /// @param shown  is called when the scene is shown; what it returns is told
  void read(const std::string& path, const std::string& file_name, const std::function<std::string()>& shown);
  enum class Shown { yes, failed, stopped };
  /// Reads a scene and shows it as that of a file. When that fails, the memory doesn't suffice or the user
  /// stops it, all is as it was.
  Shown show(const std::string& path, const std::string& file_name, Reasons& reasons);
  /// Takes a state of the scene's file for the one that the user knows.
  void know(storage::SeenFile seen);
  void write();
  bool writeFile(Reasons& reasons);
  void keepBackup(Reasons& reasons);
  bool overwriteIsOk(const std::string& path);

  Prompts& prompts_;
  SceneDisplay& display_;
  UnsavedWork& unsaved_;
  const Habits habits_;
  std::string file_name_;
  storage::SeenFile seen_;  ///< the scene's file as this program knows it
  bool changed_on_disk_ = false;
  std::string picture_ending_ = ".svg";  ///< of the picture that was exported last
  std::set<std::string> backed_up_;      ///< the files of which there is a backup of this run
};
