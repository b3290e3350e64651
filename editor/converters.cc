/// @file
/// The order of the steps of each conversion, and what is on the screen meanwhile.
#include "editor/converters.h"

#include <cstdio>
#include <filesystem>

#include "tools/cnvopts.h"

namespace {

std::string working_directory() {
  std::error_code error;
  return std::filesystem::current_path(error);
}

}  // namespace

int Converters::runBusy(const std::string& line, const char* message) {
  const Busy busy(prompts_, message);
  return run_(line);
}

void Converters::killLoaders() {
  const Busy busy(prompts_);
  for (const char* const line : kKillLoaders) run_(line);
}

void Converters::setOutputDirectory() {
  if (const auto file = prompts_.chooseFile("Set Output Directory"))
    set_option(ngops.output_dir, getdir(*file));
}

void Converters::writeScratch(const char* path) {
  const bool written = [&] {
    const Busy busy(prompts_);
    run_(std::string("rm -f ") + path);
    return save_(path, 2) == 0;
  }();
  // The converter is run all the same; it says itself what it misses.
  if (!written) prompts_.warn("Can't output QUIL data!");
}

void Converters::prepareDisplayLists() {
  killLoaders();
  writeScratch(kKavoScratch);
}

void Converters::convertToDisplayLists() {
  if (!prompts_.setOptions(Converter::quil2gfx, "Convert to KAVO DL")) return;
  prepareDisplayLists();
  runBusy(cmd_kavo_dl());
}

void Converters::fullPreview(const KavoBoard& board) {
  if (board_is_dirty_) {
    board_is_dirty_ = false;
    runBusy(board.load_clean);
  }
  prepareDisplayLists();
  const char* const problem = [&]() -> const char* {
    const Busy busy(prompts_, "making KAVO data...");
    if (run_(cmd_kavo_preview(board)) != 0) return "Can't make KAVO data.";
    if (board.check_rom && run_(board.check_rom) != 0) return "Can't make rom.";
    return nullptr;
  }();
  if (problem)
    prompts_.warn(problem);
  else
    run_(board.load_preview);
}

void Converters::quickPreview(const KavoBoard& board) {
  prepareDisplayLists();
  board_is_dirty_ = true;
  runBusy(board.quick_start);
  if (runBusy(cmd_kavo_quick_preview(), "making KAVO data...") != 0)
    prompts_.warn("Can't make KAVO data.");
  else
    runBusy(board.quick_load);
}

void Converters::prepareViewerFile() {
  std::printf("%s\n", working_directory().c_str());
  writeScratch(kZexScratch);
}

void Converters::convertToViewerFile() {
  if (!prompts_.setOptions(Converter::quil2zex, "Convert to ZEX")) return;
  prepareViewerFile();
  runBusy(cmd_zex());
}

void Converters::viewerPreview(ZexBoard board) {
  killLoaders();
  prepareViewerFile();
  runBusy(cmd_zex_preview(board));
}

void Converters::executeScript() {
  std::printf("%s\n", ngops.preview_path);
  const bool written = [&] {
    // Unlike in every other save, the version-2 structures are written as they were read: scripts expect
    // that.
    const Busy busy(prompts_);
    return save_(script_scene(), 1) == 0;
  }();
  if (!written) prompts_.tell("No scene was written for the script");
  std::printf("%s\n", ngops.script_path);
  run_(cmd_script());
}

void Converters::chooseScript() { choosePath(ngops.script_path, "Preview Script", "set script = ", "*"); }

void Converters::chooseScriptScene() {
  choosePath(ngops.preview_path, "Preview File", "set output filename = ");
}

void Converters::choosePath(std::span<char> option, const char* title, const char* trace,
                            const char* pattern) {
  FileStart start{.selection = option.data(), .pattern = pattern};
  if (start.selection.empty()) {
    start.selection = working_directory();
  } else {
    start.directory = getdir(start.selection);
    std::printf("%s\n", start.directory.c_str());
  }
  const auto chosen = prompts_.chooseFile(title, start);
  if (!chosen) return;
  set_option(option, *chosen);
  std::printf("%s%s\n", trace, option.data());
  write_convert_options();
}
