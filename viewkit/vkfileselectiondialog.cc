/// @file
/// The shared file selection dialog.
#include "viewkit/vkfileselectiondialog.h"

#include <Xm/FileSB.h>
#include <Xm/RowColumn.h>
#include <Xm/Text.h>
#include <Xm/TextF.h>
#include <Xm/ToggleB.h>
#include <pwd.h>

#include <algorithm>
#include <filesystem>

#include "storage/userfolders.h"
#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/xraii.h"

namespace fs = std::filesystem;

namespace {

/// "~" and "~/..." are the user's home, "~name" that of another; all else stays as it is.
std::string withHome(const std::string& text) {
  if (!text.starts_with('~')) return text;
  const std::size_t end = std::min(text.find('/'), text.size());
  const std::string user = text.substr(1, end - 1);
  const passwd* const other = user.empty() ? nullptr : getpwnam(user.c_str());
  const std::string home = other ? other->pw_dir : user.empty() ? storage::home_folder().string() : "";
  return home.empty() ? text : home + text.substr(end);
}

}  // namespace

Widget VkFileSelectionDialog::createDialog(Widget parent) {
  std::string widgetName = name();
  const Widget dialog = XmCreateFileSelectionDialog(parent, widgetName.data(), nullptr, 0);
  XtVaSetValues(dialog, XmNautoUnmanage, False, nullptr);
  XtAddCallback(dialog, XmNokCallback, &okCallback, this);
  XtAddCallback(dialog, XmNcancelCallback, &cancelCallback, this);
  XtUnmanageChild(XtNameToWidget(dialog, "Help"));
  const Widget choices =
      XtVaCreateManagedWidget("choices", xmRowColumnWidgetClass, dialog, XmNorientation, XmHORIZONTAL,
                              XmNmarginWidth, 0, XmNmarginHeight, 0, nullptr);
  showAllToggle_ = XtVaCreateManagedWidget("showAll", xmToggleButtonWidgetClass, choices, nullptr);
  optionToggle_ = XtVaCreateWidget("option", xmToggleButtonWidgetClass, choices, nullptr);
  XtAddCallback(showAllToggle_, XmNvalueChangedCallback, &showAllCallback, this);
  return dialog;
}

void VkFileSelectionDialog::widgetDestroyed() {
  showAllToggle_ = optionToggle_ = nullptr;
  VkDialogManager::widgetDestroyed();
}

void VkFileSelectionDialog::prepare(const char* message) {
  if (message) setTitle(message);
  XtVaSetValues(optionToggle_, XmNlabelString, viewkit::xmString(option_).get(), XmNset, XmUNSET, nullptr);
  if (option_.empty())
    XtUnmanageChild(optionToggle_);
  else
    XtManageChild(optionToggle_);
  option_.clear();
  std::error_code error;
  if (directory_.empty() || !fs::is_directory(directory_, error)) directory_ = fs::current_path(error);
  search(directory_);
  if (!selection_.empty()) showSelection();
  selection_.clear();
}

void VkFileSelectionDialog::showSelection() {
  XmTextFieldSetString(selectionText(), selection_.data());
  // The end of a long path is what matters.
  XmTextFieldSetInsertionPosition(selectionText(), XmTextFieldGetLastPosition(selectionText()));
}

void VkFileSelectionDialog::setSelection(const std::string& path) {
  std::error_code error;
  if (fs::is_directory(path, error))
    directory_ = path;
  else
    selection_ = fs::absolute(path, error);
}

Widget VkFileSelectionDialog::selectionText() const { return XtNameToWidget(baseWidget(), "Text"); }

void VkFileSelectionDialog::search(const std::string& directory) {
  const bool all = XmToggleButtonGetState(showAllToggle_);
  XtVaSetValues(baseWidget(), XmNdirectory, viewkit::xmString(directory).get(), XmNpattern,
                viewkit::xmString(all ? "*" : pattern_).get(), nullptr);
  XmFileSelectionDoSearch(baseWidget(), nullptr);
}

bool VkFileSelectionDialog::optionChosen() const {
  return optionToggle_ && XmToggleButtonGetState(optionToggle_);
}

void VkFileSelectionDialog::setFilterPattern(const char* pattern) {
  pattern_ = pattern;
  if (isPosted()) showAll();
}

void VkFileSelectionDialog::showAllCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkFileSelectionDialog::showAll>::call(widget, self, data);
}

void VkFileSelectionDialog::showAll() { search(viewkit::textResource(baseWidget(), XmNdirectory)); }

void VkFileSelectionDialog::ok() {
  const viewkit::XtText entered(XmTextFieldGetString(selectionText()));
  const std::string text = withHome(entered.get());
  const fs::path directory = viewkit::textResource(baseWidget(), XmNdirectory);
  const fs::path chosen = (directory / text).lexically_normal();
  std::error_code error;
  if (text.empty()) {
    XBell(XtDisplay(baseWidget()), 0);
  } else if (fs::is_directory(chosen, error)) {
    search(chosen);
  } else {
    fileName_ = chosen;
    directory_ = chosen.parent_path();
    answer(VkDialogReason::OK);
  }
}

void VkFileSelectionDialog::cancel() {
  directory_ = viewkit::textResource(baseWidget(), XmNdirectory);
  answer(VkDialogReason::CANCEL);
}

VkFileSelectionDialog* getTheFileSelectionDialog() {
  return theApplication->shared<VkFileSelectionDialog>("fileSelectionDialog");
}
