/// @file
/// The commands of the KAVO tool and QUIL2 tool menus: the scene through the console's converters onto a
/// development board.
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <string>

#include "dialogs/optionsdialog.h"
#include "dialogs/prefitems.h"
#include "editor/busy.h"
#include "editor/graphwindow.h"
#include "editor/scenefiles.h"
#include "tools/cnvopts.h"
#include "tools/kavoprev.h"
#include "tools/quil2prev.h"
#include "tools/shell.h"
#include "viewkit/vkfileselectiondialog.h"
#include "viewkit/vkmessagedialogs.h"

namespace {

/// 1: what a quick preview, or whatever came before us, left in the board's memory must be cleared before the
/// next full preview.
int clean_image_flag = 1;

void warn(const char* text) { getTheWarningDialog()->postAndWait(text); }

/// Runs a command line to its end, with the program shown as busy.
int run_busy(const std::string& line, const char* message = nullptr) {
  const Busy busy(message);
  return run_shell(line);
}

std::string working_directory() {
  char path[PATH_MAX];
  return getcwd(path, sizeof path) ? path : "";
}

/// Shows files of another pattern in the file selection dialog while it lives.
class Filter {
 public:
  explicit Filter(const char* pattern) { getTheFileSelectionDialog()->setFilterPattern(pattern); }
  ~Filter() { getTheFileSelectionDialog()->setFilterPattern(VkFileSelectionDialog::kScenes); }
  Filter(const Filter&) = delete;
  Filter& operator=(const Filter&) = delete;
};

/// Lets the user choose a file, and stores its path in an option.
void choose_path(std::span<char> option, const char* title, const char* trace) {
  auto* const chooser = getTheFileSelectionDialog();
  const std::string before = option.data();
  if (before.empty()) {
    chooser->setSelection(working_directory());
  } else {
    const std::string directory = getdir(before);
    std::printf("%s\n", directory.c_str());
    chooser->setDirectory(directory);
    chooser->setSelection(before);
  }
  if (chooser->postAndWait(title) != VkDialogReason::OK) return;
  set_option(option, chooser->fileName());
  std::printf("%s%s\n", trace, option.data());
  write_convert_options();
}

}  // namespace

void GraphWindow::killpbxsend() {
  run_shell("killpxsend");
  run_shell("killbxsend");
}

void GraphWindow::killpb() {
  const Busy busy;
  killpbxsend();
}

bool GraphWindow::setsOptions(VkPrefDialog& dialog, const char* title) {
  dialog.addCallback(VkPrefDialog::prefCallback, this, &GraphWindow::handlePrefs);
  return dialog.postAndWait(title) == VkDialogReason::OK;
}

void GraphWindow::applyOptions(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2gfx_dialog().apply(valuesOf(*dialog->item()));
}

void GraphWindow::applyOptions2(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2zex_dialog().apply(valuesOf(*dialog->item()));
}

void GraphWindow::writeScratch(const char* path) {
  const bool written = [&] {
    const Busy busy;
    run_shell(std::string("rm -f ") + path);
    return quilsave(path) == 0;
  }();
  // The converters run all the same, and say what they miss.
  if (!written) warn("Can't output QUIL data!");
}

void GraphWindow::kavopvpp() {
  killpb();
  writeScratch(kKavoScratch);
}

void GraphWindow::toDL() {
  Quil2gfxDialog dialog("quil2gfxDialog");
  if (!setsOptions(dialog, "Convert to KAVO DL")) return;
  kavopvpp();
  run_busy(cmd_kavo_dl());
}

void GraphWindow::fullPreview(const KavoBoard& board) {
  if (clean_image_flag == 1) {
    clean_image_flag = 0;
    run_busy(board.load_clean);
  }
  kavopvpp();
  const char* const problem = [&]() -> const char* {
    const Busy busy("making KAVO data...");
    if (run_shell(cmd_kavo_preview(board)) != 0) return "Can't make KAVO data.";
    if (board.check_rom && run_shell(board.check_rom) != 0) return "Can't make rom.";
    return nullptr;
  }();
  if (problem)
    warn(problem);
  else
    run_shell(board.load_preview);
}

void GraphWindow::kavopv() { fullPreview(kKavoEmuBoard); }

void GraphWindow::kavopvi() { fullPreview(kKavoDxViewer); }

void GraphWindow::quickPreview(const KavoBoard& board) {
  kavopvpp();
  clean_image_flag = 1;
  run_busy(board.quick_start);
  if (run_busy(cmd_kavo_quick_preview(), "making KAVO data...") != 0)
    warn("Can't make KAVO data.");
  else
    run_busy(board.quick_load);
}

void GraphWindow::quickpv() { quickPreview(kKavoEmuBoard); }

void GraphWindow::quickpvi() { quickPreview(kKavoDxViewer); }

void GraphWindow::zexpvpp() {
  std::printf("%s\n", working_directory().c_str());
  writeScratch(kZexScratch);
}

void GraphWindow::zexPreview(ZexBoard board) {
  killpb();
  zexpvpp();
  run_busy(cmd_zex_preview(board));
}

void GraphWindow::zexview() { zexPreview(ZexBoard::dx_viewer); }

void GraphWindow::zexviewg() { zexPreview(ZexBoard::emu_board); }

void GraphWindow::quil2zexoption() {
  Quil2zexDialog dialog("quil2zexDialog");
  if (!setsOptions(dialog, "Convert to ZEX")) return;
  zexpvpp();
  run_busy(cmd_zex());
}

void GraphWindow::setscript() {
  const Filter all_files("*");
  choose_path(ngops.script_path, "Preview Script", "set script = ");
}

void GraphWindow::setfile() { choose_path(ngops.preview_path, "Preview File", "set output filename = "); }

void GraphWindow::q2view() {
  std::printf("%s\n", ngops.preview_path);
  {
    // Unlike every other save: the scripts take version-2 structures as they were read.
    const Busy busy;
    quilsave(script_scene(), 1);
  }
  std::printf("%s\n", ngops.script_path);
  run_shell(cmd_script());
}
