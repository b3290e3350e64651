/// @file
/// Reading and writing the current scene as the user asks for it.
#include "editor/filecommands.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <new>
#include <utility>

#include "editor/model/currentscene.h"
#include "editor/scenefiles.h"
#include "storage/backup.h"

namespace {

bool can_be_read(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);  // a pipe must not keep us waiting
  if (file >= 0) close(file);
  return file >= 0;
}

/// A name for a new file gets the ending that scenes have when it has none.
std::string with_ending(const std::string& path) {
  std::error_code error;
  const bool complete = std::filesystem::path(path).has_extension() || std::filesystem::exists(path, error);
  return complete ? path : path + ".quil";
}

constexpr const char* kDropQuestion = "Open another scene without saving the changes?";

}  // namespace

void FileCommands::clear() {
  if (prompts_.confirm("All data is deleted. OK?")) display_.showNoScene();
}

bool FileCommands::mayDrop(const char* question) {
  return !habits_.confirm_unsaved_changes || !unsaved_.exists() || prompts_.confirm(question);
}

void FileCommands::open() {
  if (!mayDrop(kDropQuestion)) return;
  if (const auto path = prompts_.chooseFile("Open"))
    read(*path);
  else
    std::printf("User canceled.\n");
}

void FileCommands::openFile(const std::string& path) {
  if (mayDrop(kDropQuestion)) read(path);
}

void FileCommands::read(const std::string& path) {
  const bool drops = unsaved_.exists();
  const std::string before = file_name_;
  const storage::SeenFile seen(path);
  read(path, path, [&] {
    unsaved_.opened(path);
    display_.noteFile(path);
    know(seen);
    return drops ? "What was not saved of " + before + " is in File > Recover..." : "";
  });
}

void FileCommands::read(const RecoveryCopy& copy) {
  read(copy.path, copy.origin, [&] {
    unsaved_.recovered(copy);
    know(storage::SeenFile(copy.origin, copy.time));
    return std::string();
  });
  lookAtDisk();
}

void FileCommands::read(const std::string& path, const std::string& file_name,
                        const std::function<std::string()>& shown) {
  Reasons reasons;
  std::string told;
  const Shown answer = [&] {
    const Busy busy(prompts_, "Opening...");
    unsaved_.keep();
    const Shown was = show(path, file_name, reasons);
    if (was == Shown::yes) told = shown();
    return was;
  }();
  prompts_.tell(told.empty() ? reasons.line() : told);
  if (answer == Shown::failed) prompts_.warn("Can't Read QUIL File!");
}

FileCommands::Shown FileCommands::show(const std::string& path, const std::string& file_name,
                                       Reasons& reasons) {
  Shown answer = Shown::failed;
  auto former = std::exchange(qis, nullptr);
  std::string former_name = std::exchange(file_name_, file_name);
  try {
    if (quilread(path, reasons.sink()) == 1) {
      if (path == file_name) std::printf("File name: %s\n", path.c_str());
      display_.showScene([&](double share) { prompts_.progress("Opening...", share); });
      return Shown::yes;
    }
  } catch (const std::bad_alloc&) {
    reasons.add(path + ": there is not enough memory to show it");
  } catch (const StoppedByUser&) {
    reasons.add(path + ": stopped, nothing was opened");
    answer = Shown::stopped;
  }
  qis = std::move(former);
  file_name_ = std::move(former_name);
  return answer;
}

void FileCommands::recover() {
  if (!mayDrop("Open a recovery copy without saving the changes?")) return;
  unsaved_.keep();  // before the choice: the oldest copy may go for it
  const auto copies = unsaved_.copies();
  std::vector<std::string> rows;
  for (const RecoveryCopy& copy : copies)
    rows.push_back(copy.local_time() + "   " + (copy.origin.empty() ? "(never saved)" : copy.origin));
  if (const auto row = prompts_.chooseRow("Recover", rows)) read(copies[*row]);
}

void FileCommands::know(storage::SeenFile seen) {
  seen_ = std::move(seen);
  changed_on_disk_ = false;
  display_.showFile();
}

void FileCommands::lookAtDisk() {
  const bool changed = seen_.changed();
  if (changed == changed_on_disk_) return;
  changed_on_disk_ = changed;
  display_.showFile();
  if (changed)
    prompts_.tell(file_name_ + " has changed on disk since it was opened: Save would overwrite that");
}

bool FileCommands::overwriteIsOk(const std::string& path) {
  const bool changed = path == file_name_ && changed_on_disk_;
  return prompts_.confirm("Overwrite OK?", changed ? "Question: changed on disk" : "Question");
}

void FileCommands::save() {
  lookAtDisk();
  if (overwriteIsOk(file_name_)) write();
}

void FileCommands::saveAs() {
  const auto chosen = prompts_.chooseFile("Save As", {.selection = file_name_});
  if (!chosen) return;
  const std::string path = with_ending(*chosen);
  lookAtDisk();
  if (can_be_read(path) && !overwriteIsOk(path)) return;
  file_name_ = path;
  know(storage::SeenFile(file_name_));
  write();
}

void FileCommands::exportPicture() {
  std::filesystem::path suggested = file_name_;
  if (!suggested.empty()) suggested.replace_extension(picture_ending_);
  const auto choice = prompts_.choosePicture("Export Picture", suggested);
  if (!choice) return;
  Reasons reasons;
  if (const auto format = picture::formatOf(choice->path); !format) {
    reasons.add(choice->path + ": the name of a picture ends in " + std::string(picture::kFormatNames));
  } else if (!can_be_read(choice->path) || prompts_.confirm("Overwrite OK?")) {
    picture_ending_ = std::filesystem::path(choice->path).extension();
    const Busy busy(prompts_, "Exporting...");
    const std::string problem = display_.writePicture(*choice, *format);
    if (!problem.empty()) reasons.add(problem);
  }
  prompts_.tell(reasons.line());
  if (!reasons.line().empty()) prompts_.warn("Can't export the picture!");
}

void FileCommands::write() {
  Reasons reasons;
  const bool known = !seen_.changed();
  const bool saved = writeFile(reasons);
  if (saved) {
    unsaved_.saved(file_name_);
    display_.noteFile(file_name_);
  } else if (has_scene()) {
    unsaved_.notSaved(file_name_);
  }
  // After a failure, too, the file may be another: what has changed now was this program.
  if (saved || known)
    know(storage::SeenFile(file_name_));
  else
    display_.showFile();
  prompts_.tell(reasons.line());
  if (!saved) prompts_.warn("Can't write QUIL data!");
}

bool FileCommands::writeFile(Reasons& reasons) {
  if (file_name_.empty()) {
    reasons.add("The scene has no file name yet: Save As... gives it one");
    return false;
  }
  if (!has_scene()) {
    reasons.add("No scene is open");
    return false;
  }
  const Busy busy(prompts_, "Saving...");
  if (habits_.backup_on_save) keepBackup(reasons);
  return quilsave(file_name_, 2, reasons.sink()) == 0;
}

void FileCommands::keepBackup(Reasons& reasons) {
  if (backed_up_.contains(file_name_)) return;
  const WriteError error = storage::keep_backup(file_name_);
  if (error)
    reasons.add(error.text());
  else
    backed_up_.insert(file_name_);
}
