/// @file
/// Opening and saving a scene on behalf of a command.
#include "cli/scenefile.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "cli/files.h"
#include "cli/printable.h"
#include "qilib/checksizes.h"
#include "qilib/filehandle.h"
#include "qilib/opensave.h"
#include "storage/fileidentity.h"

namespace {

namespace fs = std::filesystem;

/// Standard output as it was before what is printed was sent elsewhere; nothing while it is not.
qi::File& results() {
  static qi::File stream;
  return stream;
}

bool is_same_file(const std::string& one, const std::string& other) {
  std::error_code none;
  return fs::equivalent(one, other, none);
}

int save(Qis& scene, const std::string& file, int mode) {
  if (file != kStandardStream) return mode == 1 ? qiSaveAsQb(scene, file) : qiSaveAsQb2(scene, file);
  return results() && qiWriteScene(results().get(), scene, mode) == 1 && std::fflush(results().get()) == 0;
}

bool save_scene(Qis& scene, const std::string& file, int mode) {
  qiCheckSizes(scene, mode);
  if (save(scene, file, mode) == 1) return true;
  std::fprintf(stderr, "quilscene: can't write %s\n", printable(file).c_str());
  return false;
}

}  // namespace

bool open_scene(const std::string& file, Qis& scene) {
  if (qiOpenQb(path_of(file), scene) == 1) return true;
  std::fprintf(stderr, "quilscene: can't read %s\n", printable(file).c_str());
  return false;
}

std::string open_quietly(const std::string& file, Qis& scene) {
  std::string told;
  const auto add = [&](const std::string& text) {
    if (!text.empty()) told += (told.empty() ? "" : "\n") + text;
  };
  const bool opened = qi::open_scene(path_of(file), scene, [&](const qi::Message& message) {
    add(text_of(message));
    add(reason_of(message));
  });
  if (opened) return {};
  return told.empty() ? "can't be opened" : told;
}

std::string Target::of(const std::string& file) const {
  if (in_place) return file;
  if (folder.empty()) return output;
  return (fs::path(folder) / fs::path(file).relative_path()).lexically_normal();
}

void take_target(CLI::App& line, Target& target) {
  auto* const output =
      take_output(line, target.output, "The file to write, which may be FILE; - is standard output");
  auto* const in_place = line.add_flag("-i,--in-place", target.in_place, "Write each FILE itself");
  auto* const folder = line.add_option("-C,--directory", target.folder,
                                       "Write each FILE below this folder, under the path that it has")
                           ->type_name("DIR");
  output->excludes(in_place)->excludes(folder);
  in_place->excludes(folder);
  take_mode(line, target.mode);
}

void require_target(const Target& target, const std::vector<std::string>& files) {
  if (target.output.empty() && !target.in_place && target.folder.empty())
    throw WrongUse("--output OUT is missing");
  if (!target.output.empty() && files.size() > 1)
    throw WrongUse("one FILE too many: " + files[1] + " (-i and -C take many)");
  std::vector<std::string> written;
  for (const std::string& file : files) {
    if (file == kStandardStream && target.output.empty()) throw WrongUse("standard input can't be written");
    const auto path = fs::path(file);
    if (!target.folder.empty() && std::ranges::find(path, fs::path("..")) != path.end())
      throw WrongUse("a path with \"..\" leads out of the folder: " + file);
    written.push_back(target.of(file));
  }
  std::ranges::sort(written);
  const auto twice = std::ranges::adjacent_find(written);
  if (twice != written.end()) throw WrongUse("two files would be written to " + *twice);
  if (target.output != kStandardStream) return;
  std::fflush(stdout);
  results().reset(fdopen(dup(STDOUT_FILENO), "wb"));
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

void make_folder_of(const std::string& output) {
  std::error_code told_by_the_save;
  fs::create_directories(fs::path(output).parent_path(), told_by_the_save);
}

Outcome rewrite(const std::string& file, const Target& target, const std::function<Changed(Qis&)>& change) {
  Qis scene;
  const std::string output = target.of(file);
  const bool overwrites = is_same_file(file, output);
  const storage::SeenFile seen(file);
  if (!open_scene(file, scene)) return Outcome::failed;
  const Changed changed = change(scene);
  if (!changed.save) return changed.outcome;
  if (overwrites && seen.changed()) {
    std::fprintf(stderr, "quilscene: %s changed on disk since it was opened, nothing is written\n",
                 printable(file).c_str());
    return Outcome::failed;
  }
  if (!target.folder.empty()) make_folder_of(output);
  return save_scene(scene, output, target.mode) ? changed.outcome : Outcome::failed;
}
