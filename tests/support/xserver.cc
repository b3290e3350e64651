/// @file
/// Starting Xvfb and mwm and knowing when they are ready.
#include "tests/support/xserver.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>

namespace support {

namespace {

/// The number that the server writes once it takes clients; empty when it fails to.
std::string readDisplayNumber(int fd) {
  std::string number;
  pollfd ready{fd, POLLIN, 0};
  while (poll(&ready, 1, static_cast<int>(kPatience.count())) > 0) {
    char c = 0;
    if (read(fd, &c, 1) != 1) return "";
    if (c == '\n') return number;
    number += c;
  }
  return "";
}

/// Whether the root window says that a Motif window manager runs.
bool managed(Display* display) {
  const Atom property = XInternAtom(display, "_MOTIF_WM_INFO", False);
  Atom type = 0;
  int format = 0;
  unsigned long count = 0, left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, DefaultRootWindow(display), property, 0, 0, False, AnyPropertyType, &type,
                     &format, &count, &left, &data);
  if (data != nullptr) XFree(data);
  return type != 0;
}

}  // namespace

XServer::XServer(int depth, int width, int height) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe for the X server");
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const std::string screen =
      std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(depth);
  Process::Start start;
  start.command = {"Xvfb",       "-displayfd", std::to_string(ends[1]),
                   "-screen",    "0",          screen,
                   "-nolisten",  "tcp",        "-noreset",
                   "-extension", "GLX"};  // GLX would load a compiler of shaders
  start.kept_fd = ends[1];
  start.end_signal = SIGTERM;  // so that it removes its lock file
  process_.emplace(start);
  writing = Descriptor();
  const std::string number = readDisplayNumber(reading.get());
  if (number.empty()) throw std::runtime_error("the virtual X server did not start");
  display_ = ":" + number;
}

void XServer::screenshot(const std::filesystem::path& file, const std::string& part) const {
  if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
  Process::Start start;
  start.command = {
      "sh", "-c",     R"(xwd -root -silent -display "$1" | convert xwd:- ${3:+-crop "$3"} +repage "png:$2")",
      "sh", display_, std::filesystem::absolute(file).string(),
      part};
  if (Process(start).waitForExit() != 0) throw std::runtime_error("no screenshot " + file.string());
}

WindowManager::WindowManager(const XServer& server) {
  Process::Start start;
  start.command = {"mwm", "-display", server.display()};
  start.directory = home_.path();
  start.environment = {{"HOME", home_.path().string()}};
  process_.emplace(start);
  const std::unique_ptr<Display, int (*)(Display*)> display(XOpenDisplay(server.display().c_str()),
                                                            &XCloseDisplay);
  if (!display || !waitFor([&] { return managed(display.get()); })) {
    throw std::runtime_error("the window manager did not start");
  }
}

}  // namespace support
