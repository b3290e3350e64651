/// @file
/// Dialogs in which the user looks at values and changes them.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "viewkit/preflayout.h"
#include "viewkit/vkdialogmanager.h"
#include "viewkit/vkprefgroup.h"

/// A line between the items and the buttons of a dialog that tells what the user has to know of it.
struct VkNotice {
  std::string text;
  std::string button = {};             ///< the label of a button beside the text; empty: there is none
  std::function<void()> pressed = {};  ///< what that button does; it may change the notices
};

/// A dialog around a tree of items, with OK, Apply and Cancel. Its windows are made when it is posted and
/// released when it closes; the items and what they show stay. It is never larger than the screen: what
/// doesn't fit is scrolled.
///
/// Apply tells VkDialogReason::APPLY. OK tells APPLY, so that nothing entered is lost, then OK, and closes.
/// A text that is too long for its item is refused while it is typed, and a notice tells its limit until
/// something else is entered. Cancel tells CANCEL, puts the items back to what was last set or applied, and
/// closes; so does the window manager's close. Return presses OK, Escape Cancel; Tab walks the items.
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

  /// Shows a notice, in place of the one that was shown under that name; without one, none any more. It comes
  /// up with the dialog's windows if they are not there yet. Its row is the widget `<name>Notice`, with the
  /// label `text` and the button `button`.
  void setNotice(const std::string& name, std::optional<VkNotice> notice);

  /// Closes the dialog without telling anybody; nothing is applied.
  void hide() override { close(VkDialogReason::CANCEL); }

  /// Does what the Apply button does. @returns whether the items were applied.
  bool apply();

  /// What a receiver of APPLY may have made of the items. `refused`: nothing; they keep their changes, for
  /// the next Apply. `faulty`: the same, and they are to be corrected: OK doesn't close the dialog, nor is it
  /// told.
  enum class Outcome { applied, refused, faulty };
  /// To be called by a receiver of APPLY, unless it has applied the items.
  void setOutcome(Outcome outcome) { outcome_ = outcome; }
  /// Whether the last Apply was refused although something had been entered.
  bool leftUnwritten() const { return outcome_ != Outcome::applied && top_ && top_->changed(); }

 protected:
  /// Makes the dialog with the widgets of the top item.
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;
  void ok() override;
  void cancel() override;

  /// Puts a widget, made below the base widget, between the items and the buttons.
  void addBelowItems(Widget widget);

  void widgetDestroyed() override;

 private:
  /// A notice, and what shows it while the dialog has windows.
  struct ShownNotice {
    VkNotice notice;
    Widget row = nullptr;
  };

  void applyPressed() { apply(); }
  void tell(VkDialogReason reason);
  void close(VkDialogReason reason);
  void itemRefused(VkPrefItem* sender, void* clientData, void* item);
  void itemShown(VkPrefItem* sender, void* clientData, void* callData);
  void createButtons(Widget form);
  void createNoticeRow(const std::string& name, ShownNotice& shown);
  viewkit::PrefSize noticesSize() const;
  /// Makes the dialog, which is up, higher by that many pixels, but no higher than the screen, or lower; and
  /// as wide as its notices are.
  void makeRoom(int difference);
  void noticePressed(Widget button, XtPointer data);
  /// Attaches what stands between the items and the buttons, as far as it is shown.
  void stackAboveButtons();
  void fitItems();
  void focusFirstItem();

  std::unique_ptr<VkPrefGroup> top_;
  Widget scrolled_ = nullptr;
  Widget buttons_ = nullptr;
  Widget separator_ = nullptr;  // above the buttons
  Widget notices_ = nullptr;    // managed while there are any
  Widget below_ = nullptr;      // what addBelowItems was given
  std::map<std::string, ShownNotice> shownNotices_;
  Outcome outcome_ = Outcome::applied;
};
