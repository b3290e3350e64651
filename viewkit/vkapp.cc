/// @file
/// Start, event loop and end of an application, and its busy state.
#include "viewkit/vkapp.h"

#include <X11/StringDefs.h>
#include <X11/cursorfont.h>
#include <X11/keysym.h>
#include <Xm/Protocols.h>
#include <Xm/Xm.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include "viewkit/forward.h"
#include "viewkit/keys.h"
#include "viewkit/vkmessagedialogs.h"
#include "viewkit/vksimplewindow.h"

VkApp* theApplication = nullptr;

const char* const VkApp::displayLostCallback = "displayLostCallback";

namespace {

/// The user's language, but for numbers: files and dialogs write them with a point everywhere.
String setLanguage(Display*, String language, XtPointer) {
  if (!std::setlocale(LC_ALL, language)) std::setlocale(LC_ALL, "C");
  std::setlocale(LC_NUMERIC, "C");
  return std::setlocale(LC_CTYPE, nullptr);
}

/// The display named on the command line, or null for the one in the environment.
const char* displayName(std::span<char*> arguments) {
  for (std::size_t i = 1; i + 1 < arguments.size(); ++i)
    if (std::strcmp(arguments[i], "-display") == 0) return arguments[i + 1];
  return nullptr;
}

/// Puts the framework's and the application's own lines below what users and machines set. (Xt would leave
/// all of them out where there is a file of application defaults.)
void addFallbackResources(Display* display, viewkit::ResourceLines application) {
  std::string text;
  for (const std::string& line : viewkit::fallbackResources(viewkit::hasSmoothText(display), application))
    text += line + '\n';
  XrmDatabase database = XtDatabase(display);
  XrmCombineDatabase(XrmGetStringDatabase(text.c_str()), &database, False);
}

XtErrorMsgHandler printWarning;

/// The server's fonts rarely have all the characters of a locale; a warning at each start would help nobody.
void filterWarning(String name, String type, String className, String text, String* words, Cardinal* count) {
  if (std::strcmp(name, "missingCharsetList") != 0) printWarning(name, type, className, text, words, count);
}

/// Without this the first write to a lost display ends the process before Xlib can say so, and a reader of
/// the program's output who goes away takes the user's unsaved work along. A handler, unlike SIG_IGN, is not
/// inherited by the programs we start.
void survivePipeSignal() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  sigaction(SIGPIPE, &action, nullptr);
}

}  // namespace

void viewkit::tellOutOfMemory() noexcept {
  std::fputs("There is not enough memory for that.\n", stderr);
  try {
    if (theApplication && theApplication->mainWindow())
      getTheWarningDialog()->post("There is not enough memory for that!");
  } catch (const std::bad_alloc&) {
    // Even the message is too much.
  }
}

VkApp::VkApp(const char* className, int* argc, char** argv, XrmOptionDescRec* options, int optionCount,
             viewkit::ResourceLines resources)
    : className_(className), command_(argv, argv + *argc) {
  theApplication = this;
  survivePipeSignal();
  XtToolkitInitialize();
  context_ = XtCreateApplicationContext();
  XtSetLanguageProc(context_, &setLanguage, nullptr);
  printWarning = XtAppSetWarningMsgHandler(context_, &filterWarning);

  const char* const name = displayName({argv, static_cast<std::size_t>(*argc)});
  display_ = XtOpenDisplay(context_, name, nullptr, className, options, static_cast<Cardinal>(optionCount),
                           argc, argv);
  if (!display_) {
    std::fprintf(stderr, "%s: can't open display %s\n", className, XDisplayName(name));
    std::exit(1);
  }
  addFallbackResources(display_, resources);
  String applicationName = nullptr;
  String applicationClass = nullptr;
  XtGetApplicationNameAndClass(display_, &applicationName, &applicationClass);
  applicationName_ = applicationName;
  XSetErrorHandler(&reportError);
  XSetIOErrorHandler(&displayLost);
  viewkit::installKeyDispatcher(display_);
  endSignals_.emplace(context_, [this](int number) { heardEndSignal(number); });
}

VkApp::~VkApp() {
  announceDeletion();
  shared_.clear();
  const auto windows = windows_;
  for (auto* window : windows) XtDestroyWidget(window->baseWidget());
  covers_.clear();
  watch_ = {};
  endSignals_.reset();
  XtDestroyApplicationContext(context_);
  theApplication = nullptr;
}

int VkApp::run() {
  while (!quitting_) XtAppProcessEvent(context_, XtIMAll);
  return endSignal_ == 0 ? 0 : 128 + endSignal_;
}

void VkApp::heardEndSignal(int number) {
  if (endSignal_ == 0) endSignal_ = number;
  quitYourself();
}

VkSimpleWindow* VkApp::mainWindow() const { return windows_.empty() ? nullptr : windows_.front(); }

void VkApp::addWindow(VkSimpleWindow* window) { windows_.push_back(window); }

void VkApp::removeWindow(VkSimpleWindow* window) { std::erase(windows_, window); }

const char* VkApp::geometry() const {
  char* type = nullptr;
  XrmValue value{};
  const bool found = XrmGetResource(XtDatabase(display_), (applicationName_ + ".geometry").c_str(),
                                    (className_ + ".Geometry").c_str(), &type, &value);
  return found ? value.addr : nullptr;
}

std::vector<char*> VkApp::commandLine() {
  std::vector<char*> words;
  for (auto& word : command_) words.push_back(word.data());
  return words;
}

void VkApp::addShell(Widget shell, XtCallbackProc closed, XtPointer clientData) {
  shells_.push_back(shell);
  const Atom close = XInternAtom(display_, "WM_DELETE_WINDOW", False);
  XtVaSetValues(shell, XmNdeleteResponse, XmDO_NOTHING, nullptr);
  XmAddWMProtocolCallback(shell, close, closed, clientData);
  XtAddCallback(shell, XtNdestroyCallback, &shellDestroyedCallback, this);
}

void VkApp::shellDestroyedCallback(Widget shell, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkApp::shellDestroyed>::call(shell, self, data);
}

void VkApp::shellDestroyed(Widget shell, XtPointer) {
  std::erase(shells_, shell);
  covers_.erase(shell);
}

void VkApp::cover(Widget shell) {
  if (!XtIsRealized(shell)) return;
  XSetWindowAttributes attributes{};
  attributes.cursor = watch_.get();
  attributes.do_not_propagate_mask =
      KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
  attributes.event_mask = KeyPressMask;  // for stopWanted()
  // As large as a window can be, so that it covers a shell that grows, too.
  const ::Window window =
      XCreateWindow(display_, XtWindow(shell), 0, 0, 32767, 32767, 0, 0, InputOnly, CopyFromParent,
                    CWCursor | CWDontPropagate | CWEventMask, &attributes);
  XMapRaised(display_, window);
  covers_.insert_or_assign(shell, viewkit::WindowId(display_, window));
}

void VkApp::showBusyMessage(const char* message) {
  if (busyDialog_)
    busyDialog_->post(message);
  else
    for (auto* window : windows_) window->showBusyMessage(message);
}

void VkApp::busy(const char* message) {
  if (busyDepth_++ == 0) {
    stopWanted_ = false;
    nextLook_ = Clock::now();
    nextProgress_ = nextLook_ + std::chrono::milliseconds(500);
    if (!watch_) watch_ = viewkit::CursorId(display_, XCreateFontCursor(display_, XC_watch));
    for (const Widget shell : shells_) cover(shell);
  }
  if (message) showBusyMessage(message);
  paintEverything();
}

bool VkApp::stopWanted(const char* message, double share) {
  constexpr auto kLookEvery = std::chrono::milliseconds(50), kShowEvery = std::chrono::milliseconds(250);
  const auto now = Clock::now();
  if (busyDepth_ == 0 || now < nextLook_) return stopWanted_;
  nextLook_ = now + kLookEvery;
  const auto is_escape = [](Display*, XEvent* event, XPointer) -> Bool {
    return event->type == KeyPress && XLookupKeysym(&event->xkey, 0) == XK_Escape;
  };
  XEvent escape;
  if (XCheckIfEvent(display_, &escape, is_escape, nullptr)) stopWanted_ = true;
  if (!stopWanted_ && now >= nextProgress_) {
    nextProgress_ = now + kShowEvery;
    const int percent = static_cast<int>(100 * std::clamp(share, 0.0, 1.0));
    showBusyMessage((std::string(message) + " " + std::to_string(percent) + " %  (Escape stops)").c_str());
    for (const Widget shell : shells_) XmUpdateDisplay(shell);
  }
  return stopWanted_;
}

void VkApp::notBusy() {
  if (busyDepth_ == 0 || --busyDepth_ > 0) return;
  covers_.clear();
  if (busyDialog_) busyDialog_->unpost();
  for (auto* window : windows_) window->hideBusyMessage();
  // What was typed and clicked while nobody could answer must not run now. Releases stay: they end grabs.
  XSync(display_, False);
  XEvent ignored;
  while (XCheckMaskEvent(display_, KeyPressMask | ButtonPressMask, &ignored)) {
  }
}

void VkApp::paintEverything() {
  // The window manager maps a new dialog and takes a closed one away in its own time, and only then are the
  // windows told what to paint: wait until it is quiet, though not for ever.
  constexpr int quietMilliseconds = 30;
  const auto deadline = Clock::now() + std::chrono::milliseconds(300);
  pollfd connection{ConnectionNumber(display_), POLLIN, 0};
  do {
    if (!shells_.empty()) XmUpdateDisplay(shells_.front());
  } while (poll(&connection, 1, quietMilliseconds) > 0 && Clock::now() < deadline);
  XSync(display_, False);
}

int VkApp::reportError(Display* display, XErrorEvent* error) {
  char text[256] = "";
  XGetErrorText(display, error->error_code, text, sizeof text);
  std::fprintf(stderr, "X error: %s (request %d.%d, resource 0x%lx)\n", text, error->request_code,
               error->minor_code, error->resourceid);
  return 0;
}

int VkApp::displayLost(Display*) {
  std::fprintf(stderr, "The connection to the display is lost.\n");
  if (theApplication) theApplication->callCallbacks(displayLostCallback, nullptr);
  std::fflush(nullptr);
  std::_Exit(1);
}
