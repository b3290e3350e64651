/// @file
/// Posting the dialogs and waiting for their answers.
#include "editor/windowprompts.h"

#include <utility>

#include "dialogs/optionsdialog.h"
#include "editor/graphwindow.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkfileselectiondialog.h"
#include "viewkit/vklistdialog.h"
#include "viewkit/vkmessagedialogs.h"

void WindowPrompts::warn(const char* text) { getTheWarningDialog()->postAndWait(text); }

void WindowPrompts::tell(const std::string& text) { window_.tell(text); }

bool WindowPrompts::confirm(const char* question, const char* title) {
  getTheQuestionDialog()->setTitle(title);
  return getTheQuestionDialog()->postAndWait(question) == VkDialogReason::OK;
}

std::optional<std::size_t> WindowPrompts::chooseRow(const char* title, const std::vector<std::string>& rows) {
  return getTheListDialog()->choose(title, rows);
}

std::optional<std::string> WindowPrompts::chooseFile(const char* title, const FileStart& start) {
  auto* const chooser = getTheFileSelectionDialog();
  if (!start.directory.empty()) chooser->setDirectory(start.directory);
  if (!start.selection.empty()) chooser->setSelection(start.selection);
  chooser->setFilterPattern(start.pattern);
  if (chooser->postAndWait(title) != VkDialogReason::OK) return std::nullopt;
  return chooser->fileName();
}

std::optional<PictureChoice> WindowPrompts::choosePicture(const char* title, const std::string& selection) {
  constexpr const char* kPictures =
      "*.[spe][vdnps]*";  // those whose names end as pictures' do, and few others
  getTheFileSelectionDialog()->setOption("Only what the window shows");
  auto path = chooseFile(title, {.selection = selection, .pattern = kPictures});
  if (!path) return std::nullopt;
  return PictureChoice{std::move(*path), getTheFileSelectionDialog()->optionChosen()};
}

bool WindowPrompts::setOptions(Converter converter, const char* title) {
  const auto ask = [&](VkPrefDialog&& dialog) {
    dialog.addCallback(VkPrefDialog::prefCallback, &window_, &GraphWindow::handlePrefs);
    return dialog.postAndWait(title) == VkDialogReason::OK;
  };
  return converter == Converter::quil2gfx ? ask(Quil2gfxDialog("quil2gfxDialog"))
                                          : ask(Quil2zexDialog("quil2zexDialog"));
}

void WindowPrompts::busy(const char* message) { theApplication->busy(message); }

void WindowPrompts::notBusy() { theApplication->notBusy(); }

void WindowPrompts::progress(const char* message, double share) {
  if (theApplication->stopWanted(message, share)) throw StoppedByUser();
}
