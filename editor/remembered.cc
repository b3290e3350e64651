/// @file
/// The files in which the editor remembers.
#include "editor/remembered.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <memory>
#include <utility>

#include "storage/userfolders.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *kWindow = "window", *kRecent = "recent";

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

/// Whether there is a regular file of that name, or none. A pipe would keep us waiting.
bool is_ours(const fs::path& file) {
  std::error_code error;
  const fs::file_type type = fs::status(file, error).type();
  return type == fs::file_type::regular || type == fs::file_type::not_found;
}

/// The whole lines at the beginning of a file; none when there is no such file.
std::vector<std::string> lines_of(const fs::path& folder, const char* name) {
  constexpr std::size_t kEnough = 64 * 1024;
  const fs::path file = folder / name;
  if (folder.empty() || !is_ours(file)) return {};
  std::string text(kEnough, 0);
  std::ifstream stream(file, std::ios::binary);
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  std::vector<std::string> lines;
  for (std::size_t begin = 0, end = 0; (end = text.find('\n', begin)) != text.npos; begin = end + 1)
    lines.push_back(text.substr(begin, end - begin));
  return lines;
}

void write_lines(const fs::path& folder, const char* name, const std::vector<std::string>& lines) {
  if (folder.empty() || storage::make_folder(folder) != 0 || !is_ours(folder / name)) return;
  // Another run of the program may be reading it.
  const fs::path fresh = folder / (std::string(name) + "." + std::to_string(getpid()));
  const FilePtr file(std::fopen(fresh.c_str(), "we"));
  if (!file) return;
  for (const std::string& line : lines) std::fprintf(file.get(), "%s\n", line.c_str());
  std::error_code error;
  if (std::fflush(file.get()) == 0)
    fs::rename(fresh, folder / name, error);
  else
    fs::remove(fresh, error);
}

}  // namespace

Remembered::Remembered(fs::path folder) : folder_(std::move(folder)) {
  readFiles();
  for (const std::string& line : lines_of(folder_, kWindow)) {
    const std::size_t blank = line.find(' ');
    int value = 0;
    if (blank == line.npos) continue;
    const char* const end = line.data() + line.size();
    const auto [rest, problem] = std::from_chars(line.data() + blank + 1, end, value);
    if (rest == end && problem == std::errc{}) setNumber(line.substr(0, blank), value);
  }
}

void Remembered::readFiles() {
  if (folder_.empty()) return;
  files_.clear();
  for (std::string& line : lines_of(folder_, kRecent)) {
    if (files_.size() == kMostFiles) return;
    const bool sound = line.starts_with('/') && line.find('\0') == line.npos;
    if (sound && std::ranges::find(files_, line) == files_.end()) files_.push_back(std::move(line));
  }
}

void Remembered::addFile(const std::string& path) {
  if (path.find('\n') != path.npos) return;  // it would be read as two
  readFiles();
  std::erase(files_, path);
  files_.insert(files_.begin(), path);
  if (files_.size() > kMostFiles) files_.pop_back();
  write_lines(folder_, kRecent, files_);
}

std::optional<int> Remembered::number(std::string_view name) const {
  const auto found = numbers_.find(name);
  return found == numbers_.end() ? std::nullopt : std::optional(found->second);
}

void Remembered::keepNumbers() const {
  std::vector<std::string> lines;
  for (const auto& [name, value] : numbers_) lines.push_back(name + " " + std::to_string(value));
  write_lines(folder_, kWindow, lines);
}
