/// @file
/// A stdio stream into a descriptor that knows why it failed.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>

namespace storage {

/// Writes all of the bytes. @returns 0, or the errno of what failed.
int write_all(int fd, const char* bytes, std::size_t count);

/// stdio forgets why a write failed, and writes on after a failure: this stream does neither.
class OutputStream {
 public:
  /// @param fd  is closed by somebody else, after this object's end
  explicit OutputStream(int fd);
  /// What stands in the buffer is not written.
  ~OutputStream();
  OutputStream(const OutputStream&) = delete;
  OutputStream& operator=(const OutputStream&) = delete;

  /// Null when there is no memory for it.
  std::FILE* get() const { return file_.get(); }

  /// The errno of the first write that failed; 0: none.
  int error() const { return error_; }

  /// Writes what stands in the buffer. @returns `error`.
  int flush();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  static ssize_t write(void* self, const char* bytes, std::size_t count);
  static int seek(void* self, off64_t* offset, int whence);

  int fd_;
  int error_ = 0;  ///< the first one; nothing is written after it
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace storage
