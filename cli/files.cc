/// @file
/// Finding the files that are meant.
#include "cli/files.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "cli/writeall.h"
#include "qilib/filehandle.h"
#include "qilib/words.h"
#include "storage/descriptor.h"

namespace {

[[noreturn]] void cant_read(const std::string& what, int reason) {
  throw std::runtime_error("can't read " + what + ": " + std::strerror(reason));
}

/// Calls `take` with one piece of a stream after another.
template <class Take>
void read_all(std::FILE* file, const std::string& name, Take take) {
  std::array<char, 1 << 16> piece;
  errno = 0;
  for (std::size_t n = 0; (n = std::fread(piece.data(), 1, piece.size(), file)) != 0;)
    take(std::string_view(piece.data(), n));
  if (std::ferror(file)) cant_read(name, errno);
}

void add_list(const std::string& list, char end, std::vector<std::string>& files) {
  const bool standard = list == kStandardStream;
  const qi::File opened{standard ? nullptr : std::fopen(list.c_str(), "r")};
  if (!standard && !opened) cant_read(list, errno);
  std::string text;
  read_all(standard ? stdin : opened.get(), list, [&](std::string_view piece) { text += piece; });
  for (std::string_view left = text; !left.empty();) {
    const std::string_view name = left.substr(0, left.find(end));
    left.remove_prefix(std::min(name.size() + 1, left.size()));
    if (!name.empty()) files.emplace_back(name);
  }
}

void add_folder(const std::filesystem::path& folder, std::vector<std::string>& files) {
  namespace fs = std::filesystem;
  const auto first = static_cast<std::ptrdiff_t>(files.size());
  std::error_code error;
  for (fs::recursive_directory_iterator at{folder, error}, end; !error && at != end; at.increment(error)) {
    std::error_code none;
    if (at->path().extension() == ".quil" && at->is_regular_file(none)) files.push_back(at->path());
  }
  if (error) cant_read(folder, error.value());
  std::sort(files.begin() + first, files.end());
}

/// Keeps standard input in memory that has a name.
storage::Descriptor kept_input() {
  storage::Descriptor memory{memfd_create("standard input", MFD_CLOEXEC)};
  if (!memory) cant_read("standard input", errno);
  std::uint64_t bytes = 0;
  read_all(stdin, "standard input", [&](std::string_view piece) {
    bytes += piece.size();
    // No scene tells of more in its header.
    if (bytes > std::numeric_limits<Word>::max()) cant_read("standard input", EFBIG);
    write_all(memory.get(), piece);
  });
  return memory;
}

}  // namespace

void take_files(CLI::App& line, FileSet& set) {
  line.add_option("FILE", set.words, "Scenes; - is standard input, @LIST names files in lines")
      ->required()
      ->type_name("");
  take_file_options(line, set);
}

void take_file_options(CLI::App& line, FileSet& set) {
  line.add_flag("-r,--recursive", set.folders, "Folders stand for the *.quil files below them");
  line.add_flag("-0,--null", set.zeros, "Names in lists end with a zero byte, not with a line");
  line.add_option("--jobs", set.jobs, "So many files at a time (default: the number of cores)")
      ->check(no_whole_number)
      ->type_name("N");
}

std::vector<std::string> files_of(const FileSet& set) {
  std::vector<std::string> files;
  for (const std::string& word : set.words) {
    std::error_code none;
    if (word.starts_with('@')) {
      add_list(word.substr(1), set.zeros ? '\0' : '\n', files);
    } else if (set.folders && std::filesystem::is_directory(word, none)) {
      add_folder(word, files);
    } else {
      files.push_back(word);
    }
  }
  if (files.empty()) throw WrongUse("there is no file");
  const auto inputs = std::ranges::count(files, kStandardStream) + std::ranges::count(set.words, "@-");
  if (inputs > 1) throw WrongUse("standard input can be read once");
  return files;
}

std::string path_of(const std::string& file) {
  if (file != kStandardStream) return file;
  static const storage::Descriptor memory = kept_input();
  return "/proc/self/fd/" + std::to_string(memory.get());
}
