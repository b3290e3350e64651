/// @file
/// Dialogs in which the user looks at values and changes them.
#pragma once

#include <memory>

#include "viewkit/vkdialogmanager.h"
#include "viewkit/vkprefgroup.h"

/// A dialog around a tree of items, with OK, Apply and Cancel. Its windows are made when it is posted and
/// released when it closes; the items and what they show stay. It is never larger than the screen: what
/// doesn't fit is scrolled.
///
/// Apply tells VkDialogReason::APPLY. OK tells APPLY, so that nothing entered is lost, then OK, and closes.
/// Cancel tells CANCEL, puts the items back to what was last set or applied, and closes; so does the window
/// manager's close. Return presses OK, Escape Cancel; Tab walks the items.
class VkPrefDialog : public VkDialogManager {
 public:
  /// The list that is told of answers; the call data is a `const VkDialogReason*`. Its receivers may not
  /// destroy the dialog. While APPLY is told, the items still know which of them have changed.
  static const char* const prefCallback;

  explicit VkPrefDialog(const char* name, std::unique_ptr<VkPrefGroup> top = nullptr);
  ~VkPrefDialog() override;
  const char* className() const override { return "VkPrefDialog"; }

  /// The top item, or null.
  VkPrefGroup* item() const { return top_.get(); }
  /// Replaces the top item, while the dialog has no windows.
  void setItem(std::unique_ptr<VkPrefGroup> top);

  /// Closes the dialog without telling anybody; nothing is applied.
  void hide() override { close(VkDialogReason::CANCEL); }

  /// To be called by a receiver of APPLY who could not make use of the items: they keep their changes, for
  /// the next Apply.
  void refuseApply() { applyRefused_ = true; }

 protected:
  /// Makes the dialog with the widgets of the top item.
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;
  void ok() override;
  void cancel() override;
  void apply();

  /// Puts a widget, made below the base widget, between the items and the buttons.
  void addBelowItems(Widget widget);

  void widgetDestroyed() override;

 private:
  void tell(VkDialogReason reason);
  void close(VkDialogReason reason);
  void createButtons(Widget form);
  void fitItems();
  void focusFirstItem();

  std::unique_ptr<VkPrefGroup> top_;
  Widget scrolled_ = nullptr;
  Widget buttons_ = nullptr;
  Widget separator_ = nullptr;  // above the buttons
  Widget below_ = nullptr;      // what addBelowItems was given
  bool applyRefused_ = false;
};
