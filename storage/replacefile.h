/// @file
/// A file that takes the place of another only when it is complete, so that a failed save loses nothing.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "storage/attributes.h"
#include "storage/newfile.h"
#include "storage/outputstream.h"
#include "storage/recovery.h"
#include "storage/writeerror.h"

/// Writes a file without a name, for its owner only, and on `commit` puts it in the target's place. It has
/// then the group, the mode, the access list and the extended attributes of the target, and its owner where
/// the system allows that. A symbolic link stays and what it points at is replaced. A target that is no
/// regular file (a device, a pipe) can't be replaced and is written directly.
///
/// Where a replaced file would not be the file that it was (it has other names too, or its group or access
/// list can't be given to another file) or can't be replaced (its folder is not the user's to write, or is a
/// sticky one, or it is a mount point), the new contents first become a recovery copy, then are written in
/// place, and the copy goes.
class ReplacingFile {
 public:
  /// Opens for writing. On failure (the target can't be written, nothing can be made in its folder) `stream`
  /// is null.
  explicit ReplacingFile(const std::string& target);
  /// Gives up what was not committed; the target is as it was.
  ~ReplacingFile() = default;
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  /// Where to write; owned by this object, and null once committed.
  std::FILE* stream() const;

  /// Flushes everything to the disk and puts it in the target's place.
  /// @returns false when this or any write before it failed. The target is then as it was, but for two cases
  /// that `error` tells of: it could not be completed in place, or its folder could not be flushed.
  bool commit();

  /// What failed first, writes to the stream included.
  WriteError error() const;

 private:
  /// A recovery copy that is written to be put in place.
  struct SafeCopy {
    explicit SafeCopy(const std::string& origin) : session(RecoveryStore(), origin), writer(session) {}
    RecoverySession session;
    RecoveryWriter writer;
  };

  bool open_special();
  bool find_target();
  bool open_beside();
  bool open_stream(int fd);
  bool open_safe_copy();
  bool finish();
  bool replace();
  bool flush_folder();
  bool copy_beside();
  bool write_in_place();
  bool fail(WriteStep step, int number) { return fail({number, step, path_.string()}); }
  bool fail(WriteError error);  ///< @returns false

  std::filesystem::path path_;      ///< behind all links
  storage::Descriptor special_;     ///< what is written directly
  storage::Descriptor held_;        ///< the target, if there is one
  storage::Descriptor folder_;      ///< of the target
  storage::Attributes attributes_;  ///< that the new file gets
  std::optional<storage::NewFile> beside_;
  std::optional<SafeCopy> safe_copy_;
  std::optional<storage::OutputStream> stream_;  ///< into what is special or beside
  WriteError error_;
};
