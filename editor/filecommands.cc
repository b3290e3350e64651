/// @file
/// Reading and writing the current scene as the user asks for it.
#include "editor/filecommands.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "editor/scenefiles.h"

namespace {

bool can_be_read(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);  // a pipe must not keep us waiting
  if (file >= 0) close(file);
  return file >= 0;
}

}  // namespace

void FileCommands::clear() {
  if (prompts_.confirm("All data is deleted. OK?")) display_.showNoScene();
}

void FileCommands::open() {
  const auto path = prompts_.chooseFile("Open");
  if (!path)
    std::printf("User canceled.\n");
  else if (!read(*path))
    prompts_.warn("Can't Read QUIL File!");
}

bool FileCommands::read(const std::string& path) {
  const Busy busy(prompts_, "Opening...");
  if (quilread(path) != 1) return false;
  std::printf("File name: %s\n", path.c_str());
  file_name_ = path;
  display_.showScene();
  display_.showFileName(path);
  return true;
}

void FileCommands::save() {
  if (overwriteIsOk()) write();
}

void FileCommands::saveAs() {
  const auto path = prompts_.chooseFile("Save As");
  if (!path || (can_be_read(*path) && !overwriteIsOk())) return;
  file_name_ = *path;
  display_.showFileName(file_name_);
  write();
}

void FileCommands::write() {
  const bool saved = !file_name_.empty() && [&] {
    const Busy busy(prompts_, "Saving...");
    return quilsave(file_name_) == 0;
  }();
  if (!saved) prompts_.warn("Can't write QUIL data!");
}
