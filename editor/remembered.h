/// @file
/// What the editor remembers from one run to the next.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Numbers by name, such as the width of the window, and the files that were used last. They are kept as
/// lines of text in a folder: "window" has a name and a number on each, "recent" a path. What makes no sense
/// there is passed over, and what can't be written is not remembered.
class Remembered {
 public:
  static constexpr std::size_t kMostFiles = 10;

  /// Reads what is there. @param folder  empty: nothing is kept
  explicit Remembered(std::filesystem::path folder);

  /// The last files, newest first; absolute paths.
  const std::vector<std::string>& files() const { return files_; }
  /// Puts a file first among the last ones, and keeps that at once. Those that other runs of the program have
  /// added meanwhile stay.
  void addFile(const std::string& path);

  std::optional<int> number(std::string_view name) const;
  /// @param name  one word
  void setNumber(const std::string& name, int value) { numbers_[name] = value; }
  /// Keeps the numbers.
  void keepNumbers() const;

 private:
  void readFiles();

  const std::filesystem::path folder_;
  std::vector<std::string> files_;
  std::map<std::string, int, std::less<>> numbers_;
};
