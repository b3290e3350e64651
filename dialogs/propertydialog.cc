/// @file
/// Label lines, items, widgets: in that order.
#include "dialogs/propertydialog.h"

#include "editor/model/currentscene.h"

const char* const PropertyDialog::editModeCallback = "editModeCallback";
const char* const PropertyDialog::keyCallback = "keyCallback";

const char* const PropertyDialog::openAfreshCallback = "openAfreshCallback";

bool PropertyDialog::recordIsAsShown() const {
  return described_ && described_->fingerprint(*qis, static_cast<Word>(index())) == shown_;
}

void PropertyDialog::noteRecord() {
  if (described_) shown_ = described_->fingerprint(*qis, static_cast<Word>(index()));
}

void PropertyDialog::showWhetherCurrent() {
  const bool changed = !recordIsAsShown();
  if (saysChanged_ == changed) return;
  saysChanged_ = changed;
  if (changed)
    setNotice("changed", VkNotice{node() + " was changed after this was opened", "Open Afresh",
                                  [this] { callCallbacks(openAfreshCallback, nullptr); }});
  else
    setNotice("changed", std::nullopt);
}

void PropertyDialog::showEditMode(bool on) {
  if (on)
    setNotice("editMode", std::nullopt);
  else
    setNotice("editMode", VkNotice{"Edit Mode is off: nothing will be written", "Turn It On",
                                   [this] { callCallbacks(editModeCallback, nullptr); }});
}

Widget PropertyDialog::createFrom(const values::Dialog& dialog, Widget parent) {
  setDefaultResources(parent, dialog.lines());
  described_ = &dialog;
  noteRecord();
  if (auto items = dialog.open(*qis, static_cast<Word>(index())))
    setItem(std::make_unique<VkPrefList>(std::move(items)));
  const Widget form = VkPrefDialog::createDialog(parent);
  keys_ = viewkit::listenToKeys(XtParent(form),
                                [this](const viewkit::PressedKey& press) { return keyPressed(press); });
  return form;
}

bool PropertyDialog::keyPressed(const viewkit::PressedKey& press) {
  if (!press.ctrl || press.alt || isAnyAwaited()) return false;
  Key key{press};
  callCallbacks(keyCallback, &key);
  return key.taken;
}

void PropertyDialog::addSwatch(std::string_view path, ColorSwatch::Read read) {
  VkPrefItem* const shown = item() ? item()->find(path) : nullptr;
  if (shown) keep(std::make_unique<ColorSwatch>(*shown, read));
}

void PropertyDialog::widgetDestroyed() {
  keys_.reset();
  parts_.clear();
  VkPrefDialog::widgetDestroyed();
  setItem(nullptr);
}
