/// @file
/// Copies of unsaved work in the user's state folder, for the day when the program didn't end in order.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "storage/descriptor.h"
#include "storage/outputstream.h"
#include "storage/writeerror.h"

/// A recovery copy that can be read.
struct RecoveryCopy {
  int number = 0;              ///< from 1; its name as long as it exists
  std::filesystem::path path;  ///< the copy itself, a file like the one that it is a copy of
  std::string origin;          ///< what it is a copy of, an absolute path; empty: of something never saved
  std::chrono::system_clock::time_point time;  ///< when it was written
  std::uint64_t size = 0;                      ///< bytes
  pid_t process = 0;                           ///< what wrote it; 0: not known
  bool in_use = false;                         ///< a living process may replace it or take it away

  /// When it was written, in the user's time: "2026-11-21 23:38:09".
  std::string local_time() const;
};

/// The folder with a user's recovery copies: for number N "N.copy", written by a temporary file and so always
/// whole, and "N.info", which tells of it and is locked as long as its session lives. Whatever else lies
/// there is left alone.
class RecoveryStore {
 public:
  struct Limits {
    std::size_t copies = 20;
    std::uint64_t bytes = std::uint64_t{1} << 30;
  };

  /// The store of the user who runs the program: "quileditor/recovery" in XDG_STATE_HOME, or in
  /// ~/.local/state.
  RecoveryStore();
  /// @param folder  empty: there is none
  explicit RecoveryStore(std::filesystem::path folder) : RecoveryStore(std::move(folder), Limits{}) {}
  RecoveryStore(std::filesystem::path folder, Limits limits) : folder_(std::move(folder)), limits_(limits) {}

  const std::filesystem::path& folder() const { return folder_; }

  /// The copies, newest first, without those that are only half written. Where there is no folder there are
  /// none. @param error  why the folder can't be read
  std::vector<RecoveryCopy> list(std::error_code& error) const;

  std::optional<RecoveryCopy> find(int number) const;

  /// Takes a copy away. @returns why it could not: ENOENT when there is none, EBUSY when it is in use.
  std::error_code remove(int number) const;

  /// Removes the oldest copies until the limits are kept, but none that is in use, and what processes that
  /// were killed left of copies that were never completed.
  void trim() const;

 private:
  std::filesystem::path folder_;
  Limits limits_;
};

/// One number of the store, of one program and one file that is being worked on. Its copy stays when this
/// object or the program ends, unless it is removed. The object may be used in a forked child, which must end
/// by `_exit`; the number stays in use until the parent ends its session.
class RecoverySession {
 public:
  /// Makes the store if there is none yet.
  /// @param origin  what the copies are of; empty: something never saved
  RecoverySession(const RecoveryStore& store, const std::string& origin);
  ~RecoverySession();
  RecoverySession(const RecoverySession&) = delete;
  RecoverySession& operator=(const RecoverySession&) = delete;

  /// Why there is no session: then nothing can be written.
  const WriteError& error() const { return error_; }
  int number() const { return number_; }
  std::filesystem::path path() const;

  /// Takes the copy away, and leaves the session open for another one. A child that is still writing one must
  /// be waited for first.
  void remove();

 private:
  friend class RecoveryWriter;
  int open_folder();
  int take_number(const std::string& origin);
  bool take(int number);
  int describe(int number, const std::string& origin);
  std::string copy_name() const;

  RecoveryStore store_;
  storage::Descriptor folder_, info_;
  int number_ = 0;
  WriteError error_;
};

/// A copy while it is written; it takes the place of the session's last one when it is committed.
class RecoveryWriter {
 public:
  /// @param session  must outlive the writer, and no other writer of this process may be at work in it
  explicit RecoveryWriter(RecoverySession& session);
  /// What was not committed is gone.
  ~RecoveryWriter();
  RecoveryWriter(const RecoveryWriter&) = delete;
  RecoveryWriter& operator=(const RecoveryWriter&) = delete;

  /// Where to write; null on failure.
  std::FILE* stream() const { return stream_ ? stream_->get() : nullptr; }
  /// The same file for reading, also after the commit.
  int fd() const { return file_.get(); }

  /// Flushes everything to the disk and lists the copy; then the store's limits are kept.
  /// @returns whether the copy is complete and on the disk
  bool commit();

  /// What failed first, writes to the stream included.
  WriteError error() const;

 private:
  void fail(int number) { error_ = at(number); }
  WriteError at(int number) const { return {number, WriteStep::copy, session_.store_.folder().string()}; }

  RecoverySession& session_;
  std::string temporary_;  ///< empty: none
  storage::Descriptor file_;
  std::optional<storage::OutputStream> stream_;
  WriteError error_;
};
