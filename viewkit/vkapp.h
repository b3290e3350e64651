/// @file
/// The application: display, event loop, shared dialogs, busy state.
#pragma once

#include <X11/Intrinsic.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <vector>

#include "viewkit/endsignals.h"
#include "viewkit/look.h"
#include "viewkit/vkcallbackobject.h"
#include "viewkit/vkcomponent.h"
#include "viewkit/xraii.h"

class VkDialogManager;
class VkSimpleWindow;

/// The one application object of the process; make it first and destroy it last.
class VkApp : public VkCallbackObject {
 public:
  /// Called when the connection to the display is lost, just before the process ends: the last chance to stop
  /// what the program started. No X, Xt or Motif call is allowed in it.
  static const char* const displayLostCallback;

  /// Connects to the display ("-display" or DISPLAY) and takes the options that the toolkit knows out of
  /// argv. Ends the process with status 1 and a message when there is no display.
  /// @param className  the application class, under which users write X resources.
  /// @param resources  the application's own fallback resources, such as the keys of its menus; null: none.
  VkApp(const char* className, int* argc, char** argv, XrmOptionDescRec* options = nullptr,
        int optionCount = 0, viewkit::ResourceLines resources = nullptr);
  ~VkApp() override;

  Display* display() const { return display_; }
  XtAppContext appContext() const { return context_; }
  const char* applicationClass() const { return className_.c_str(); }

  /// Runs the event loop until the application is told to end, by `quitYourself` or by SIGTERM, SIGINT or
  /// SIGHUP.
  /// @returns the exit status for main: 0, or 128 and the number of the signal.
  int run();

  /// Ends the event loop, and every dialog that somebody waits for.
  void quitYourself() { quitting_ = true; }
  bool quitting() const { return quitting_; }

  void setVersionString(const char* text) { versionString_ = text; }
  const char* versionString() const { return versionString_.c_str(); }

  /// The dialog that shows the busy message; null (as at first): the status line of the windows shows it.
  /// The dialog must live as long as it is set.
  void setBusyDialog(VkDialogManager* dialog) { busyDialog_ = dialog; }

  /// Shows a watch cursor and `message` and keeps pointer and keyboard from all windows until as many calls
  /// of notBusy. Everything is painted when it returns: the caller may block at once.
  void busy(const char* message = nullptr);
  void notBusy();
  /// Shows how far busy work is, but for work that is done soon. Call it often.
  /// @param share  what is done of all, 0 to 1.
  /// @returns whether Escape was pressed since busy().
  bool stopWanted(const char* message, double share);

  /// Makes the windows paint what has been uncovered, and returns when they have: call it before work that
  /// keeps the event loop waiting.
  void paintEverything();

  /// To be called for every top-level shell: the busy state covers it, and the window manager's close calls
  /// `closed` and does nothing else.
  void addShell(Widget shell, XtCallbackProc closed, XtPointer clientData);

  /// The window that dialogs belong to: the first one that still exists, or null.
  VkSimpleWindow* mainWindow() const;

  /// The application's one object of a class, made with `name` at first use, destroyed with the application.
  template <class Component>
  Component* shared(const char* name) {
    auto& slot = shared_[typeid(Component)];
    if (!slot) slot = std::make_unique<Component>(name);
    return static_cast<Component*>(slot.get());
  }

 private:
  friend class VkSimpleWindow;
  void addWindow(VkSimpleWindow* window);
  void removeWindow(VkSimpleWindow* window);
  /// The "-geometry" of the command line or the application's geometry resource, for the main window; or
  /// null.
  const char* geometry() const;
  /// The words the program was started with, for the WM_COMMAND property.
  std::vector<char*> commandLine();

  void heardEndSignal(int number);
  static void shellDestroyedCallback(Widget shell, XtPointer self, XtPointer data);
  void shellDestroyed(Widget shell, XtPointer data);
  void showBusyMessage(const char* message);
  /// Puts a window with a watch cursor over the shell that takes all input.
  void cover(Widget shell);
  static int reportError(Display* display, XErrorEvent* error);
  static int displayLost(Display* display);

  std::string className_;
  std::string applicationName_;
  std::string versionString_;
  std::vector<std::string> command_;
  XtAppContext context_ = nullptr;
  Display* display_ = nullptr;
  std::vector<VkSimpleWindow*> windows_;
  std::map<std::type_index, std::unique_ptr<VkComponent>> shared_;
  std::vector<Widget> shells_;
  std::map<Widget, viewkit::WindowId> covers_;
  viewkit::CursorId watch_;
  VkDialogManager* busyDialog_ = nullptr;
  int busyDepth_ = 0;
  using Clock = std::chrono::steady_clock;
  Clock::time_point nextLook_, nextProgress_;  ///< of stopWanted()
  bool stopWanted_ = false;
  bool quitting_ = false;
  int endSignal_ = 0;  ///< what told the application to end; 0: no signal
  std::optional<viewkit::EndSignals> endSignals_;
};

/// The application object; null before it is made and after it is gone.
extern VkApp* theApplication;
