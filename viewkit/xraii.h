/// @file
/// Owners for what X, Xt and Motif hand out and want back.
#pragma once

#include <X11/Intrinsic.h>
#include <Xm/Xm.h>

#include <memory>
#include <string>
#include <utility>

namespace viewkit {

struct FreeXmString {
  void operator()(XmString string) const noexcept { XmStringFree(string); }
};
/// A compound string.
using XmStr = std::unique_ptr<std::remove_pointer_t<XmString>, FreeXmString>;

struct FreeXt {
  void operator()(void* memory) const noexcept { XtFree(static_cast<char*>(memory)); }
};
/// Text that Xt or Motif allocated.
using XtText = std::unique_ptr<char, FreeXt>;

struct FreeX {
  void operator()(void* memory) const noexcept { XFree(memory); }
};
/// Memory that Xlib allocated.
template <class T>
using XMem = std::unique_ptr<T, FreeX>;

struct DestroyImage {
  void operator()(XImage* image) const noexcept { XDestroyImage(image); }
};
/// A client-side image with its data.
using ImagePtr = std::unique_ptr<XImage, DestroyImage>;

struct CloseDisplay {
  void operator()(Display* display) const noexcept { XCloseDisplay(display); }
};
/// A connection to a display that Xt knows nothing of.
using DisplayPtr = std::unique_ptr<Display, CloseDisplay>;

/// A server resource (pixmap, graphics context ...) and the display it lives on; move-only, freed once.
template <class Id, int (*Free)(Display*, Id)>
class ServerResource {
 public:
  ServerResource() = default;
  ServerResource(Display* display, Id id) : display_(display), id_(id) {}
  ServerResource(ServerResource&& other) noexcept
      : display_(std::exchange(other.display_, nullptr)), id_(std::exchange(other.id_, Id{})) {}
  ServerResource& operator=(ServerResource&& other) noexcept {
    std::swap(display_, other.display_);
    std::swap(id_, other.id_);
    return *this;
  }
  ~ServerResource() {
    if (display_ && id_) Free(display_, id_);
  }

  Id get() const { return id_; }
  explicit operator bool() const { return id_ != Id{}; }

 private:
  Display* display_ = nullptr;
  Id id_{};
};

using Gc = ServerResource<GC, XFreeGC>;
using PixmapId = ServerResource<::Pixmap, XFreePixmap>;
using WindowId = ServerResource<::Window, XDestroyWindow>;
using CursorId = ServerResource<::Cursor, XFreeCursor>;

/// While it lives, errors of requests are noted instead of reported. One per process at a time.
class QuietErrors {
 public:
  explicit QuietErrors(Display* display) : display_(display) {
    XSync(display_, False);
    failed_ = false;
    before_ = XSetErrorHandler([](Display*, XErrorEvent*) {
      failed_ = true;
      return 0;
    });
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
  ~QuietErrors() {
    XSync(display_, False);
    XSetErrorHandler(before_);
  }

  /// Whether a request made since has failed. Waits for the server.
  bool failed() const {
    XSync(display_, False);
    return failed_;
  }

 private:
  Display* display_;
  XErrorHandler before_;
  static inline bool failed_ = false;
};

/// A compound string of `text` in the user's locale; line feeds separate lines.
XmStr xmString(std::string text);

/// The plain text of a compound string, lines separated by line feeds; "" for null.
std::string plainText(XmString string);

/// The text of a widget's XmString resource, such as XmNlabelString or XmNdirSpec.
std::string textResource(Widget widget, const char* resource);

}  // namespace viewkit
