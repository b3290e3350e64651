/// @file
/// Finding and making folders.
#include "storage/userfolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace fs = std::filesystem;

namespace storage {

namespace {

/// Such a folder is an absolute path; others are as good as none.
fs::path absolute(const char* path) { return path && *path == '/' ? fs::path(path) : fs::path(); }

}  // namespace

fs::path home_folder() {
  if (fs::path home = absolute(std::getenv("HOME")); !home.empty()) return home;
  const passwd* const user = getpwuid(geteuid());
  return user ? absolute(user->pw_dir) : fs::path();
}

fs::path state_folder() {
  if (const fs::path state = absolute(std::getenv("XDG_STATE_HOME")); !state.empty())
    return state / "quileditor";
  const fs::path home = home_folder();
  return home.empty() ? home : home / ".local/state/quileditor";
}

int make_folder(const fs::path& folder) {
  if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return 0;
  if (errno != ENOENT || !folder.has_relative_path()) return errno;
  if (const int error = make_folder(folder.parent_path())) return error;
  return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? 0 : errno;
}

}  // namespace storage
