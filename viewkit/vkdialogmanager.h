/// @file
/// What all dialogs share: posting, waiting for the answer, the window they belong to.
#pragma once

#include <memory>
#include <string>

#include "viewkit/vkcomponent.h"

/// How a dialog was answered. The values are those handed to callbacks.
enum class VkDialogReason { CANCEL = 0, OK = 1, APPLY = 2 };

/// A dialog whose widgets are made at its first posting and kept. It belongs to the application's main
/// window: in front of it, centred over it, gone with it. Return answers OK, Escape and the window manager's
/// close CANCEL.
class VkDialogManager : public VkComponent {
 public:
  ~VkDialogManager() override;
  const char* className() const override { return "VkDialogManager"; }

  /// Shows the dialog beside the running program; returns at once.
  void post(const char* message = nullptr);

  void show() override { post(); }
  void hide() override { unpost(); }

  /// Shows the dialog, keeps input from all other windows, and handles events until the user has answered.
  /// A dialog that is taken down, reposted or destroyed meanwhile, or an application that quits, answers
  /// CANCEL.
  VkDialogReason postAndWait(const char* message = nullptr);

  /// Whether somebody waits for the answer of a dialog, which keeps input from all other windows.
  static bool isAnyAwaited() { return awaited_ > 0; }

  /// Takes the dialog down; whoever waits for it gets CANCEL.
  void unpost();
  bool isPosted() const;

  /// Moves a posted dialog to where it leaves the title and the left edge of another one, posted too, in
  /// sight. It stays where it is when there it would not be all on the screen.
  void placeBeside(const VkDialogManager& other);

  /// The text of the dialog's title bar.
  void setTitle(const char* title);
  const std::string& title() const { return title_; }

 protected:
  explicit VkDialogManager(const char* name);

  /// Makes the dialog's widgets, unmanaged, in a dialog shell under `parent`.
  /// @returns the dialog: a bulletin board or a class derived from it.
  virtual Widget createDialog(Widget parent) = 0;
  /// Called before each showing, when the widgets exist.
  virtual void prepare(const char* message) = 0;

  /// To be called when the user has answered: takes the dialog down unless the answer is APPLY, and tells
  /// whoever waits.
  void answer(VkDialogReason reason);
  /// `answer` as callbacks for the dialog's buttons; the client data is the VkDialogManager.
  static void okCallback(Widget widget, XtPointer self, XtPointer data);
  static void cancelCallback(Widget widget, XtPointer self, XtPointer data);

  /// What the OK button does: answers OK.
  virtual void ok() { answer(VkDialogReason::OK); }
  virtual void cancel() { answer(VkDialogReason::CANCEL); }

  void widgetDestroyed() override;

 private:
  struct Waiting;

  void popUp(unsigned char style, const char* message);
  void showTitle();
  void endWaiting(VkDialogReason reason);

  static inline int awaited_ = 0;

  std::string title_;
  std::shared_ptr<Waiting> waiting_;
};
