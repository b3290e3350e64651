/// @file
/// Finding the widgets of dialogs by the paths of their items.
#include "tests/window/dialogfixture.h"

#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

using support::WidgetInfo;

void Dialogs::edit(const std::string& file) {
  file_ = file;
  editor_.open(file);
  editor_.toggleEditMode();
  newOutput();
}

void Dialogs::openDialog(const std::string& node, const std::string& dialog) {
  editor_.doubleClickNode(node);
  awaitDialog(dialog);
}

void Dialogs::awaitDialog(const std::string& dialog) {
  dialog_ = dialog;
  editor_.await("the focus in " + dialog, [&](const WidgetInfo& w) {
    return w.focused && w.viewable && w.path.find(dialog) != w.path.npos;
  });
}

WidgetInfo Dialogs::widget(const std::string& item, const std::string& part) {
  std::string where = dialog_;
  std::istringstream names(item);
  for (std::string name; std::getline(names, name, '.');) where += "/" + name + (names.eof() ? part : "Base");
  return editor_.awaitAt(where, [](const WidgetInfo&) { return true; });
}

std::string Dialogs::shown(const std::string& item) {
  const WidgetInfo found = widget(item);
  if (found.class_name == "XmToggleButton") return found.set ? "1" : "0";
  if (found.class_name == "XmRowColumn") return widget(item, "Base/OptionButton").label;
  return found.class_name == "XmTextField" ? found.text : found.label;
}

void Dialogs::enter(const std::string& item, const std::string& value) {
  const WidgetInfo field = widget(item);
  if (field.class_name == "XmToggleButton") {
    if (field.set != (value == "1")) editor_.driver().click(field.box.centre());
  } else if (field.class_name == "XmTextField") {
    editor_.driver().click(field.box.centre());
    editor_.driver().key("End");
    editor_.driver().key("Home", {"Shift_L"});
    editor_.driver().key("BackSpace");
    editor_.driver().type(value);
  } else {
    editor_.driver().click(field.box.centre());
    const WidgetInfo entry = editor_.await("the entry " + value, [&](const WidgetInfo& w) {
      return w.name() == "entry" && w.label == value && w.viewable && w.path.find(dialog_) != w.path.npos;
    });
    editor_.driver().clickInMenu(entry.box.centre());
  }
  editor_.settle();
}

void Dialogs::press(const std::string& button) {
  editor_.click(dialog_ + "/buttons/" + button);
  editor_.settle();
}

bool Dialogs::isOpen() {
  editor_.settle();
  return editor_.find(dialog_, [](const WidgetInfo& w) { return w.viewable; }).has_value();
}

std::string Dialogs::notice(const std::string& name) {
  editor_.settle();
  const std::string where = dialog_ + "/notices/" + name + "Notice/text";
  const auto found = editor_.find(where, [](const WidgetInfo& w) { return w.viewable; });
  return found ? found->label : "";
}

std::string Dialogs::saved() {
  fs::remove(path("saved.quil"));
  editor_.saveAs(path("saved.quil"));
  return read_file(path("saved.quil"));
}

std::string Dialogs::trace(const std::string& command) const {
  const std::string all = edited(file_, command + "\n").trace;
  return all.substr(all.find("APPLY.\n"), all.rfind("-> ") - all.find("APPLY.\n"));
}
