/// @file
/// What the property dialogs share: building their items from a record's values.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dialogs/colorswatch.h"
#include "dialogs/values/dialog.h"
#include "viewkit/keys.h"
#include "viewkit/vkprefdialog.h"

/// A dialog that shows the values of one record of the current scene as they were when it was opened. It is
/// opened once; when it has closed, its items are gone with its windows.
class PropertyDialog : public VkPrefDialog {
 public:
  explicit PropertyDialog(const char* name) : VkPrefDialog(name) {}
  const char* className() const override { return "PropertyDialog"; }

  /// The list that is told when the user asks the dialog for Edit Mode; there is no call data.
  static const char* const editModeCallback;

  /// The list that is told of Ctrl with a key, unless that goes into a text field where it means something,
  /// with a `PropertyDialog::Key*` as call data.
  static const char* const keyCallback;
  struct Key {
    viewkit::PressedKey press;
    bool taken = false;  ///< to be set by a receiver that has done what the key asks for
  };

  /// The list that is told when the user wants the dialog opened afresh; there is no call data.
  static const char* const openAfreshCallback;

  /// Whether the record is as it was when it was opened, or when it was last noted.
  bool recordIsAsShown() const;
  /// What the record holds now is what the dialog wrote.
  void noteRecord();
  /// What the dialog shows stays as it is; but when the record has changed, a notice says so, with a button
  /// that asks for a fresh dialog. To be called when records may have changed.
  void showWhetherCurrent();

  /// Says whether what is entered will be written, which it is in Edit Mode only. While it won't be, the
  /// dialog shows a notice with a button that asks for Edit Mode.
  void showEditMode(bool on);

  /// The record's number in its list.
  virtual unsigned long index() const { return 0; }
  /// The node that stands for the record, such as "mat_0".
  virtual std::string node() const = 0;

 protected:
  /// Makes the dialog's items, filled from its record, and their widgets: the work of every createDialog.
  /// The record must exist.
  Widget createFrom(const values::Dialog& dialog, Widget parent);

  /// Keeps what else the dialog shows, while the windows are there.
  template <class Part>
  Part& keep(std::unique_ptr<Part> part) {
    Part& kept = *part;
    parts_.push_back(std::move(part));
    return kept;
  }
  /// Shows the colour of the item that a path leads to after it. Nothing happens when there is no
  /// such item.
  void addSwatch(std::string_view path, ColorSwatch::Read read);

  void widgetDestroyed() override;

 private:
  bool keyPressed(const viewkit::PressedKey& press);

  std::vector<std::unique_ptr<VkComponent>> parts_;
  viewkit::KeyListening keys_;
  const values::Dialog* described_ = nullptr;
  std::uint64_t shown_ = 0;  ///< the record's fingerprint
  bool saysChanged_ = false;
};

/// The dialog of a record that is a node of the graph.
class QuilNodeDialog : public PropertyDialog {
 public:
  QuilNodeDialog(const char* name, unsigned long index) : PropertyDialog(name), index_(index) {}
  const char* className() const override { return "QuilNodeDialog"; }

  unsigned long index() const override { return index_; }

 private:
  unsigned long index_;
};
