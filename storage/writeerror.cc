/// @file
/// Errors of writing, in words.
#include "storage/writeerror.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace {

const char* words(WriteStep step) {
  switch (step) {
    case WriteStep::backup:
      return "can't keep a backup of it";
    case WriteStep::open:
      return "can't be opened for writing";
    case WriteStep::create:
      return "can't create a file in its folder";
    case WriteStep::write:
      return "can't write the new contents";
    case WriteStep::flush:
      return "can't flush the new contents to the disk";
    case WriteStep::keep:
      return "can't keep the owner, the mode or the attributes";
    case WriteStep::replace:
      return "can't put the new file in place of the old one";
    case WriteStep::copy:
      return "can't keep a recovery copy in this folder";
    case WriteStep::rewrite:
      return "can't be written in place";
    case WriteStep::flush_folder:
      break;
  }
  return "can't flush its folder to the disk";
}

}  // namespace

std::string WriteError::text() const {
  std::string line = (path.empty() ? "(no file name)" : path) + ": " + words(step) + ": " +
                     std::generic_category().message(number);
  if (kept_copy != 0)
    line += "; the file may be incomplete, its new contents are recovery copy " + std::to_string(kept_copy);
  return line;
}

bool storage::is_refusal(int number) {
  constexpr std::array kRefusals{EPERM, EACCES, EROFS, EBUSY, EXDEV, EINVAL, ENOSYS, EOPNOTSUPP};
  return std::ranges::find(kRefusals, number) != kRefusals.end();
}
