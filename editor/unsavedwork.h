/// @file
/// What the scene has and its file has not.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>

#include "editor/model/history.h"
#include "editor/prompts.h"
#include "storage/recovery.h"

/// Knows whether the scene has changes that its file has not, and keeps a recovery copy of them. A copy is
/// written, and taken away, by a forked process, so that the user can go on: it has the scene as it was at
/// that moment, and to remove a large file takes a while, too.
///
/// Copies are written some time after a change, all changes until then together; a scene that is in its file
/// has none. A copy stays when this object or the program ends.
class UnsavedWork {
 public:
  using Clock = std::chrono::steady_clock;
  /// Writes the current scene. @returns whether all of it could be written
  using Write = std::function<bool(std::FILE*)>;

  /// @param history, prompts  outlive this.
  /// @param write  runs in a process of its own, in which nothing of the window may be used
  /// @param pause  between a change and the copy that has it
  UnsavedWork(const History& history, Prompts& prompts, Write write, Clock::duration pause);
  ~UnsavedWork() { waitForHelper(); }
  UnsavedWork(const UnsavedWork&) = delete;
  UnsavedWork& operator=(const UnsavedWork&) = delete;

  /// Whether the scene differs from its file.
  bool exists() const { return in_file_ != history_.state(); }

  /// @name What became of the scene.
  /// @{
  /// It has just been read from this file. What is kept of the scene before stays.
  void opened(const std::string& file);
  /// It is a recovery copy, an unsaved change of that copy's file.
  void recovered(const RecoveryCopy& copy);
  /// It has just been written to this file: the copies of it go.
  void saved(const std::string& file);
  /// It could not be written to this file.
  void notSaved(const std::string& file);
  /// @}

  /// Does what is due: to be called after every change, and when the time has come that it returned.
  /// @returns the time after which to call it again; nothing: after the next change
  std::optional<Clock::duration> tend(Clock::time_point now);

  /// Has a copy on the disk when it returns, if there is unsaved work. Shows nothing.
  void keep();

  /// The copies that the user can have back: those that no program is working on, newest first.
  std::vector<RecoveryCopy> copies() const;

 private:
  void begin(const std::string& file, std::optional<History::State> in_file);
  bool needsCopy() const { return exists() && in_copy_ != history_.state(); }
  bool hasCopy() const { return in_copy_ || replaced_ != 0; }
  void startCopy();
  void startRemoval();
  void start(int (UnsavedWork::*work)(), void (UnsavedWork::*then)(int));
  int writeCopy();
  void copyWritten(int error);
  int removeCopies();
  void copiesRemoved(int error);
  void waitForHelper();
  void reapHelper(int options);

  const History& history_;
  Prompts& prompts_;
  const Write write_;
  const Clock::duration pause_;
  const RecoveryStore store_;
  std::string file_;                             ///< of the scene; empty: none yet
  std::optional<History::State> in_file_;        ///< what the file has; nothing: another scene
  std::optional<History::State> in_copy_;        ///< what the copy has
  std::optional<RecoverySession> session_;       ///< of the copy; begins with the first one
  int replaced_ = 0;                             ///< a copy that goes as soon as a newer one is kept
  pid_t helper_ = 0;                             ///< the process that writes or removes; 0: none does
  void (UnsavedWork::*then_)(int) = nullptr;     ///< what follows it; is given 0 or the errno of its failure
  std::optional<History::State> being_written_;  ///< what it writes
  std::optional<Clock::time_point> due_;         ///< when the next copy is to be written
  WriteError error_;                             ///< of a copy, for the user to hear of
};
