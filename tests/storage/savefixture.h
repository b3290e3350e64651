/// @file
/// A folder with a file that is saved, and a state folder beside it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "storage/recovery.h"
#include "storage/replacefile.h"
#include "tests/support/files.h"

inline const std::string kOld = "the old contents", kNew(100'000, 'n');

/// An access list as the system keeps it: the owner may read and write, the group what `group` says, user
/// 70002 read and write, all but the owner no more than `mask`, others nothing.
inline std::string access_list(char group, char mask) {
  const auto entry = [](char tag, char may, std::uint32_t id = 0xFFFFFFFF) {
    std::string bytes{tag, 0, may, 0};
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(id >> shift);
    return bytes;
  };
  return std::string{2, 0, 0, 0} + entry(1, 6) + entry(2, 6, 70002) + entry(4, group) + entry(16, mask) +
         entry(32, 0);
}
inline constexpr char kAccessList[] = "system.posix_acl_access";

inline bool set_attribute(const std::string& path, const char* name, const std::string& value) {
  return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}
/// Empty: there is none.
inline std::string attribute(const std::string& path, const char* name) {
  std::string value(1000, 0);
  const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
  return value.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
}

/// A folder that flushes nothing to a disk, for tests that save very often.
inline std::filesystem::path memory_folder() {
  return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path();
}

class Saving : public testing::Test {
 protected:
  /// @param where  the scratch folder is made in
  explicit Saving(const std::filesystem::path& where = std::filesystem::temp_directory_path())
      : scratch_(where) {
    setenv("XDG_STATE_HOME", state_.c_str(), 1);
    std::filesystem::create_directory(dir_);
  }
  ~Saving() override { unsetenv("XDG_STATE_HOME"); }

  /// Saves the contents. @returns what went wrong, empty when all was well.
  static std::string save(const std::string& target, const std::string& contents = kNew) {
    ReplacingFile file{target};
    if (file.stream()) std::fwrite(contents.data(), 1, contents.size(), file.stream());
    return file.commit() ? "" : file.error().text();
  }
  std::string save() const { return save(target_); }

  /// What lies in the folder of the target, in order.
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir_))
      names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }
  /// How many files lie below a folder.
  static int files_in(const std::filesystem::path& folder) {
    if (!std::filesystem::exists(folder)) return 0;
    const std::filesystem::recursive_directory_iterator entries(folder);
    return static_cast<int>(
        std::count_if(begin(entries), end(entries), [](const auto& e) { return e.is_regular_file(); }));
  }
  std::vector<RecoveryCopy> copies() const {
    std::error_code error;
    auto found = RecoveryStore().list(error);
    EXPECT_FALSE(error) << error.message();
    return found;
  }
  static struct stat status(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found;
  }

  const ScratchDirectory scratch_;
  const std::filesystem::path dir_ = scratch_.path() / "scenes", state_ = scratch_.path() / "state";
  const std::string target_ = dir_ / "scene.quil";
};
