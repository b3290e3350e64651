/// @file
/// The probe: a library that the tests load before an unmodified Xt program (LD_PRELOAD). It joins the
/// program's event loop, nested modal loops included, and answers questions about its widgets over an
/// inherited socket.
///
/// The socket's number stands in QUIL_PROBE_FD. A question is a line of words; the answer is lines of words,
/// the last one "end", or "error" and a text. A question is answered once the program has handled all events
/// that the X server has for it, with its standard output flushed: "nothing changed" can be told from
/// "nothing changed yet".
///
///     settle             (no lines)
///     tree [NAME]        widget ID PATH CLASS X Y WIDTH HEIGHT FLAGS LABEL TEXT, for every widget, or those
///     of a name symbol NAME        value TEXT, the text that a variable of the program begins with resource
///     ID NAME   value VALUE graph ID           see probe_graph.h
///
/// The library also hides the login name, so that a program under test falls back to HOME and never finds the
/// files of the person who runs the tests.
#include <X11/Intrinsic.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "tests/support/probe_graph.h"
#include "tests/support/probe_widgets.h"

namespace probe {
namespace {

/// The one conversation with the test, for the life of the process.
class Probe {
 public:
  Probe() {
    const char* number = std::getenv("QUIL_PROBE_FD");
    if (number == nullptr) return;
    fd_ = std::atoi(number);
    // Neither the socket nor this library is for the commands that the program runs.
    fcntl(fd_, F_SETFD, FD_CLOEXEC);
    unsetenv("QUIL_PROBE_FD");
    unsetenv("LD_PRELOAD");
  }

  /// Joins the event loop when the program first enters it.
  void join(XtAppContext app) {
    if (fd_ < 0 || app_ != nullptr) return;
    app_ = app;
    input_ = XtAppAddInput(
        app, fd_, reinterpret_cast<XtPointer>(XtInputReadMask),  // NOLINT: Xt takes the mask as a pointer
        [](XtPointer self, int*, XtInputId*) { static_cast<Probe*>(self)->read(); }, this);
  }

 private:
  void read() {
    char buffer[512];
    const ssize_t count = ::read(fd_, buffer, sizeof buffer);
    if (count <= 0) {
      XtRemoveInput(input_);
      return;
    }
    pending_.append(buffer, static_cast<std::size_t>(count));
    if (pending_.find('\n') == std::string::npos) return;
    XtAppAddWorkProc(
        app_,
        [](XtPointer self) { return static_cast<Boolean>(static_cast<Probe*>(self)->answerWhenIdle()); },
        this);
  }

  /// Runs whenever the loop has no event. @returns whether the question was answered.
  bool answerWhenIdle() {
    Display** displays = nullptr;
    Cardinal count = 0;
    XtGetDisplays(app_, &displays, &count);
    for (Cardinal i = 0; i < count; ++i) XSync(displays[i], False);
    XtFree(reinterpret_cast<char*>(displays));
    if ((XtAppPending(app_) & XtIMXEvent) != 0) return false;

    const std::size_t end = pending_.find('\n');
    const Words question = split(pending_.substr(0, end));
    pending_.erase(0, end + 1);
    std::fflush(nullptr);
    std::string reply;
    try {
      for (const Words& line : answer(question)) reply += joined(line) + "\n";
      reply += "end\n";
    } catch (const std::exception& problem) {
      reply = joined({"error", problem.what()}) + "\n";
    }
    send(reply);
    return true;
  }

  std::vector<Words> answer(const Words& question) {
    if (question[0] == "settle") return {};
    if (question[0] == "tree") return describeWidgets(app_, question.size() > 1 ? question[1] : "");
    if (question.size() < 2) throw std::invalid_argument("no such question: " + question[0]);
    if (question[0] == "symbol") {
      const void* place = dlsym(RTLD_DEFAULT, question[1].c_str());
      if (place == nullptr) throw std::invalid_argument("no variable " + question[1]);
      return {{"value", static_cast<const char*>(place)}};
    }
    const Widget widget = findWidget(app_, question[1]);
    if (widget == nullptr) throw std::invalid_argument("the widget is gone");
    if (question[0] == "resource" && question.size() == 3)
      return {{"value", resourceValue(widget, question[2])}};
    if (question[0] == "graph") return describeGraph(widget);
    throw std::invalid_argument("no such question: " + question[0]);
  }

  void send(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t count = ::write(fd_, text.data(), text.size());
      if (count < 0 && errno != EINTR) return;
      if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  int fd_ = -1;
  XtAppContext app_ = nullptr;
  XtInputId input_ = 0;
  std::string pending_;
};

Probe theProbe;

/// The toolkit's own function of a name that this library defines, too.
template <class Function>
Function* original(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace
}  // namespace probe

extern "C" {
#pragma GCC visibility push(default)

void XtAppMainLoop(XtAppContext app) {
  probe::theProbe.join(app);
  probe::original<decltype(XtAppMainLoop)>("XtAppMainLoop")(app);
}

void XtAppNextEvent(XtAppContext app, XEvent* event) {
  probe::theProbe.join(app);
  probe::original<decltype(XtAppNextEvent)>("XtAppNextEvent")(app, event);
}

void XtAppProcessEvent(XtAppContext app, XtInputMask mask) {
  probe::theProbe.join(app);
  probe::original<decltype(XtAppProcessEvent)>("XtAppProcessEvent")(app, mask);
}

char* getlogin() { return nullptr; }

int getlogin_r(char*, size_t) { return ENXIO; }

#pragma GCC visibility pop
}
